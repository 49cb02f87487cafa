// The examples of doc/soundings.md give the rows that stand there, and the pictures in doc/ are those that are drawn.
#include "RealSoundings.h"
#include "SoundingTable.h"
#include "support/FencedBlocks.h"
#include "support/Samples.h"

#include <corvane/SkewT.h>
#include <corvane/Sounding.h>

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string tableOf(const std::string& bulletins) {
    std::string table;
    corvane::table::appendSoundingHeader(table);
    for (const corvane::Sounding& sounding : soundingsIn(bulletins, "-")) {
        corvane::table::appendSoundingRows(table, sounding);
    }
    return table;
}

TEST(SoundingDocuments, ExamplesGiveTheRowsThatAreShown) {
    const std::string document = contentOf(sourceFile("doc/soundings.md"));
    const std::vector<std::string> bulletins = fencedBlocks(document, "feed");
    const std::vector<std::string> tables = fencedBlocks(document, "rows");
    ASSERT_EQ(bulletins.size(), 3U);
    ASSERT_EQ(tables.size(), bulletins.size());
    for (std::size_t index = 0; index < bulletins.size(); ++index) {
        EXPECT_EQ(tableOf(bulletins[index]), tables[index]);
    }
}

TEST(SoundingDocuments, NameEveryColumn) {
    const std::string document = contentOf(sourceFile("doc/soundings.md"));
    std::string header;
    corvane::table::appendSoundingHeader(header);
    header.pop_back();
    std::istringstream columns(header);
    int count = 0;
    for (std::string column; std::getline(columns, column, ','); ++count) {
        EXPECT_NE(document.find('`' + column + '`'), std::string::npos) << column;
    }
    EXPECT_EQ(count, 18);
}

void expectPicture(const std::string& picture, const std::string& bulletins, const std::string& station) {
    int drawn = 0;
    for (const corvane::Sounding& sounding : soundingsIn(contentOf(sourceFile(bulletins)), "-")) {
        if (sounding.station == station) {
            EXPECT_TRUE(corvane::skewT(sounding) == contentOf(sourceFile(picture))) << picture << " is out of date";
            ++drawn;
        }
    }
    EXPECT_EQ(drawn, 1) << station;
}

TEST(SoundingDocuments, PicturesAreUpToDate) {
    expectPicture("doc/skewt-72201.svg", "tests/reports/temp-key-west-2022.txt", "72201");
    expectPicture("doc/skewt-83779.svg", "tests/reports/temp-sao-paulo-2023.txt", "83779");
}

}  // namespace
