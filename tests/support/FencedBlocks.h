// The fenced blocks of a Markdown document, so that a test can run what a document shows.
#ifndef CORVANE_TESTS_FENCED_BLOCKS_H
#define CORVANE_TESTS_FENCED_BLOCKS_H

#include <sstream>
#include <string>
#include <vector>

struct FencedBlock {
    std::string kind;  // the word after the opening fence
    std::string text;
};

inline std::vector<FencedBlock> fencedBlocks(const std::string& document) {
    std::vector<FencedBlock> blocks;
    bool inside = false;
    std::istringstream lines(document);
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 3, "```") == 0) {
            inside = !inside;
            if (inside) {
                blocks.push_back({line.substr(3), ""});
            }
        } else if (inside) {
            blocks.back().text += line + '\n';
        }
    }
    return blocks;
}

// The texts of the blocks of one kind.
inline std::vector<std::string> fencedBlocks(const std::string& document, const std::string& kind) {
    std::vector<std::string> texts;
    for (const FencedBlock& block : fencedBlocks(document)) {
        if (block.kind == kind) {
            texts.push_back(block.text);
        }
    }
    return texts;
}

#endif
