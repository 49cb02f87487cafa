// What README.md and doc/feed.md show of corvane-feed is what the program does, and nothing that they have to name is
// missing from them.
#include "FeedTable.h"
#include "support/FencedBlocks.h"
#include "support/Places.h"
#include "support/ProgramRun.h"
#include "support/Samples.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

ProgramRun feed(const std::string& bulletins) {
    Streams streams;
    streams.program = feedPath();
    streams.input = bulletins;
    return runProgram({}, streams);
}

// The table of parts without its header.
std::string partsOf(const std::string& bulletins) {
    Streams streams;
    streams.program = feedPath();
    streams.input = bulletins;
    const std::string file = testing::TempDir() + "/parts-of-an-example.csv";
    EXPECT_EQ(runProgram({"--parts", file}, streams).exitStatus, 0);
    const std::string parts = contentOf(file);
    std::remove(file.c_str());
    return parts.substr(parts.find('\n') + 1);
}

// Standard error without the summary in its last line.
std::string withoutSummary(std::string errors) {
    errors.erase(errors.rfind("corvane-feed: "));
    return errors;
}

TEST(FeedDocuments, TheBulletinOfTheReadmeGivesItsRows) {
    const std::string readme = contentOf(sourceFile("README.md"));
    const std::vector<std::string> bulletins = fencedBlocks(readme, "bulletin");
    ASSERT_EQ(bulletins.size(), 1U);
    const ProgramRun run = feed(bulletins.front());
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(std::vector<std::string>{run.output}, fencedBlocks(readme, "rows"));
    EXPECT_EQ(std::vector<std::string>{run.errors}, fencedBlocks(readme, "said"));
}

TEST(FeedDocuments, EveryExampleSaysWhatIsShown) {
    const std::vector<FencedBlock> blocks = fencedBlocks(contentOf(sourceFile("doc/feed.md")));
    std::size_t examples = 0;
    for (std::size_t i = 0; i + 1 < blocks.size(); ++i) {
        if (blocks[i].kind != "feed") {
            continue;
        }
        ++examples;
        const ProgramRun run = feed(blocks[i].text);
        if (blocks[i + 1].kind == "parts") {
            EXPECT_EQ(partsOf(blocks[i].text), blocks[i + 1].text);
        } else if (blocks[i + 1].kind == "rows") {
            EXPECT_EQ(run.output.substr(0, blocks[i + 1].text.size()), blocks[i + 1].text);
        } else {
            EXPECT_EQ(blocks[i + 1].kind, "said");
            EXPECT_EQ(withoutSummary(run.errors), blocks[i + 1].text);
        }
    }
    EXPECT_EQ(examples, 20U);
}

TEST(FeedDocuments, EveryMendAndEveryCheckIsExplainedAndShown) {
    const std::string document = contentOf(sourceFile("doc/feed.md"));
    std::set<std::string> shown;
    for (const std::string& said : fencedBlocks(document, "said")) {
        for (const std::string name : {"mended: ", "lost: ", "doubtful: "}) {
            for (std::size_t at = said.find(name); at != std::string::npos; at = said.find(name, at + 1)) {
                const std::size_t begin = at + name.size();
                shown.insert(said.substr(begin, said.find(':', begin) - begin));
            }
        }
    }
    for (const std::string mend : {"marks", "join", "elevation", "tail", "id", "level", "closer", "section-7", "gap",
                                   "depression", "remark", "wind", "leftover", "height"}) {
        EXPECT_NE(document.find("### " + mend + '\n'), std::string::npos) << mend;
        EXPECT_EQ(shown.count(mend), 1U) << mend;
    }
    for (const std::string check : {"hydrostatic", "tropopause", "lapse-rate"}) {
        EXPECT_NE(document.find("| `" + check + "` |"), std::string::npos) << check;
        EXPECT_EQ(shown.count(check), 1U) << check;
    }
}

// The messages in the table of reasons, without the code marks.
std::vector<std::string> messagesOfTheDocument() {
    std::istringstream lines(contentOf(sourceFile("doc/feed.md")));
    std::vector<std::string> messages;
    bool inTable = false;
    for (std::string line; std::getline(lines, line);) {
        inTable = line == "| message | what it means | what to look at |" || (inTable && !line.empty());
        if (inTable && line.compare(0, 3, "| `") == 0) {
            messages.push_back(line.substr(3, line.find("` |") - 3));
        }
    }
    return messages;
}

// The texts in the sources that begin or end a message: they begin with a word in upper case or end with a full stop.
// Not those that are only compared with the decoder's messages.
std::vector<std::string> textsOfMessages() {
    std::vector<std::string> texts;
    for (const std::filesystem::path& file : filesIn("src/feed")) {
        std::string source = std::regex_replace(contentOf(file), std::regex("//[^\n]*|#include[^\n]*"), "");
        source = std::regex_replace(source, std::regex(R"re(beginsWith\(fault\.message, "[^"]*"\))re"), "");
        const std::regex text(R"re("([A-Z][a-z]* [^"\n]*|[^"\n]* [^"\n]*[a-z]\.)")re");
        for (std::sregex_iterator match(source.begin(), source.end(), text); match != std::sregex_iterator(); ++match) {
            texts.push_back((*match)[1].str());
        }
    }
    return texts;
}

TEST(FeedDocuments, EveryReasonOfARefusalIsExplained) {
    const std::vector<std::string> messages = messagesOfTheDocument();
    const std::vector<std::string> texts = textsOfMessages();
    EXPECT_EQ(messages.size(), 32U);
    for (std::string text : texts) {
        text = text.substr(0, text.find(" Error detected at"));
        const bool explained = std::any_of(messages.begin(), messages.end(), [&](const std::string& message) {
            return message.find(text) != std::string::npos;
        });
        EXPECT_TRUE(explained) << text;
    }
    for (const std::string& message : messages) {
        const bool given = std::any_of(texts.begin(), texts.end(), [&](const std::string& text) {
            return message.compare(0, text.size(), text) == 0 || text.compare(0, message.size(), message) == 0;
        });
        EXPECT_TRUE(given) << "no such message: " << message;
    }
}

TEST(FeedDocuments, EveryColumnIsExplained) {
    const std::string document = contentOf(sourceFile("doc/feed.md"));
    const std::string manual = contentOf(sourceFile("doc/corvane-feed.1"));
    for (const std::string_view column : corvane::table::PART_COLUMNS) {
        EXPECT_NE(document.find('`' + std::string(column) + '`'), std::string::npos) << column;
        EXPECT_NE(manual.find(column), std::string::npos) << column;
    }
    std::string header;
    corvane::table::appendPartsHeader(header);
    header.pop_back();
    EXPECT_NE(document.find('`' + header + '`'), std::string::npos);
    EXPECT_NE(manual.find(header), std::string::npos);
}

}  // namespace
