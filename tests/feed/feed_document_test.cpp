// What README.md and doc/feed.md show of corvane-feed is what the program does, and nothing that they have to name is
// missing from them.
#include "FeedTable.h"
#include "support/FencedBlocks.h"
#include "support/ProgramRun.h"
#include "support/Samples.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace {

ProgramRun feed(const std::string& bulletins) {
    Streams streams;
    streams.program = CORVANE_FEED_PATH;
    streams.input = bulletins;
    return runProgram({}, streams);
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
        if (blocks[i + 1].kind == "rows") {
            EXPECT_EQ(run.output.substr(0, blocks[i + 1].text.size()), blocks[i + 1].text);
        } else {
            EXPECT_EQ(blocks[i + 1].kind, "said");
            EXPECT_EQ(withoutSummary(run.errors), blocks[i + 1].text);
        }
    }
    EXPECT_EQ(examples, 16U);
}

TEST(FeedDocuments, EveryMendIsExplainedAndShown) {
    const std::string document = contentOf(sourceFile("doc/feed.md"));
    std::set<std::string> shown;
    for (const std::string& said : fencedBlocks(document, "said")) {
        for (const std::string name : {"mended: ", "lost: ", "doubtful: "}) {
            const std::size_t at = said.find(name);
            if (at != std::string::npos) {
                const std::size_t begin = at + name.size();
                shown.insert(said.substr(begin, said.find(':', begin) - begin));
            }
        }
    }
    for (const std::string mend : {"marks", "join", "elevation", "tail", "id", "level", "closer", "section-7", "gap",
                                   "depression", "remark", "leftover", "height"}) {
        EXPECT_NE(document.find("### " + mend + '\n'), std::string::npos) << mend;
        EXPECT_EQ(shown.count(mend), 1U) << mend;
    }
    for (const std::string check : {"hydrostatic", "tropopause", "lapse-rate"}) {
        EXPECT_NE(document.find("| `" + check + "` |"), std::string::npos) << check;
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
