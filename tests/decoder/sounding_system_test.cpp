// Section 7, the sounding system and the time of launch after 31313; section 8, the clouds after 41414.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const char* const WRONG_TIME =
    "The first character of the observation time code group in section 7 must be \"8\". Error detected at ";

struct SystemRow {
    const char* group;
    const char* sr;
    const char* rara;
    const char* sasa;
};

const SystemRow SYSTEMS[] = {
    // srrarasasa
    {"58708", "5", "87", "08"},
    {"00000", "0", "00", "00"},
    {"/////", "/", "//", "//"},
    {"ABCDE", "A", "BC", "DE"},
    // in a short group the last indicator is short or empty
    {"5870", "5", "87", "0"},
    {"587", "5", "87", ""},
    // what follows the fifth character is not read
    {"587081", "5", "87", "08"},
};

struct TimeRow {
    const char* group;
    int time;
};

const TimeRow TIMES[] = {
    // hours and minutes as one number
    {"81102", 1102},
    {"80930", 930},
    {"80000", 0},
    {"82359", 2359},
    {"89999", 9999},
    // no number: zero
    {"8////", 0},
    {"8/930", 0},
    {"8ABCD", 0},
    {"8", 0},
    // a leading number
    {"809//", 9},
    {"8093O", 93},
    {"809", 9},
    // signs count; a point, an exponent or an x ends the number
    {"8+930", 930},
    {"8-930", -930},
    {"8.930", 0},
    {"89.30", 9},
    {"81e10", 1},
    {"80x10", 0},
    // what follows the fifth character is not read
    {"8093045", 930},
};

}  // namespace

TEST(SectionSeven, SystemAndLaunchTimeAreReadAndTheTimeGroupStays) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "31313 58708 81102");
    decoder.decodeSection7();
    EXPECT_EQ(decoder.sr, "5");
    EXPECT_EQ(decoder.rara, "87");
    EXPECT_EQ(decoder.sasa, "08");
    EXPECT_EQ(decoder.obsTime(), 1102);
    EXPECT_EQ(decoder.rest(), "81102");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
}

TEST(SectionSeven, SystemGroupFollowsTheTable) {
    for (const SystemRow& row : SYSTEMS) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = OpenDecoder::inPart(1, "31313 " + std::string(row.group) + " 81102 51515");
        decoder.decodeSection7();
        EXPECT_EQ(decoder.sr, row.sr);
        EXPECT_EQ(decoder.rara, row.rara);
        EXPECT_EQ(decoder.sasa, row.sasa);
        EXPECT_EQ(decoder.rest(), "81102 51515");
    }
}

TEST(SectionSeven, LaunchTimeFollowsTheTable) {
    for (const TimeRow& row : TIMES) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = OpenDecoder::inPart(1, "31313 58708 " + std::string(row.group));
        decoder._obsTime = 7777;
        decoder.decodeSection7();
        EXPECT_EQ(decoder.obsTime(), row.time);
        EXPECT_EQ(decoder.rest(), row.group);
    }
}

TEST(SectionSeven, AbsentSectionChangesNothing) {
    for (const std::string groups :
         {"", "81102", "51515 10164", "41414 12345", "3131 58708 81102", "313131 58708 81102"}) {
        SCOPED_TRACE(groups);
        OpenDecoder decoder = OpenDecoder::inPart(0, groups);
        decoder.decodeSection7();
        EXPECT_EQ(decoder.sr, "");
        EXPECT_EQ(decoder.rara, "");
        EXPECT_EQ(decoder.sasa, "");
        EXPECT_EQ(decoder.obsTime(), -1);
        EXPECT_EQ(decoder.rest(), groups);
    }
}

TEST(SectionSeven, ThreeGroupsMustRemain) {
    OpenDecoder two = OpenDecoder::inPart(0, "31313 58708");
    EXPECT_EQ(faultOf([&] { two.decodeSection7(); }),
              "At least 3 code groups are required. Error detected at31313 58708  ...");
    EXPECT_EQ(two.rest(), "31313 58708");
    EXPECT_EQ(two.sr, "");

    OpenDecoder one = OpenDecoder::inPart(0, "31313");
    EXPECT_EQ(faultOf([&] { one.decodeSection7(); }),
              "At least 3 code groups are required. Error detected at31313  ...");
    EXPECT_EQ(one.rest(), "31313");
}

TEST(SectionSeven, TimeGroupMustBeginWithEight) {
    for (const std::string group : {"11102", "/1102", "X", "91102", "08110"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(0, "31313 58708 " + group + " g2 g3 g4 g5 g6 g7");
        EXPECT_EQ(faultOf([&] { decoder.decodeSection7(); }), WRONG_TIME + group + " g2 g3 g4 g5 g6 ...");
        EXPECT_EQ(decoder.sr, "5");
        EXPECT_EQ(decoder.rara, "87");
        EXPECT_EQ(decoder.sasa, "08");
        EXPECT_EQ(decoder.obsTime(), -1);
        EXPECT_EQ(decoder.rest(), group + " g2 g3 g4 g5 g6 g7");
    }
}

TEST(SectionSeven, SystemGroupOfOneOrTwoCharactersIsOutOfRange) {
    for (const std::string group : {"5", "58"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(0, "31313 " + group + " 81102");
        EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeSection7(); }));
        EXPECT_EQ(decoder.obsTime(), -1);
        EXPECT_EQ(decoder.rest(), group + " 81102");
    }
}

TEST(SectionSeven, SeaTemperatureOfAShipStaysAfterItsTimeGroup) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "31313 58708 81102 90251 51515");
    decoder.wmoMessageType = Corvane::WMO_TEMP_SHIP;
    decoder.decodeSection7();
    EXPECT_EQ(decoder.obsTime(), 1102);
    EXPECT_EQ(decoder.rest(), "81102 90251 51515");
}

TEST(SectionEight, CloudGroupIsTakenUnread) {
    for (const std::string cloud : {"12345", "/", "TTBB", "41414", "/////"}) {
        SCOPED_TRACE(cloud);
        OpenDecoder decoder = OpenDecoder::inPart(1, "41414 " + cloud + " 51515 10164");
        decoder.decodeSection8();
        EXPECT_EQ(decoder.rest(), "51515 10164");
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
        EXPECT_EQ(decoder.obsTime(), -1);
    }
}

TEST(SectionEight, AbsentSectionChangesNothing) {
    for (const std::string groups : {"", "81102 41414 12345", "51515", "4141 12345", "414141 12345"}) {
        SCOPED_TRACE(groups);
        OpenDecoder decoder = OpenDecoder::inPart(1, groups);
        decoder.decodeSection8();
        EXPECT_EQ(decoder.rest(), groups);
    }
}

TEST(SectionEight, CloudGroupMustFollowAndTheOpenerIsGone) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "41414");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection8(); }), "At least 1 code groups are required. Error detected at ...");
    EXPECT_EQ(decoder.rest(), "");
}

TEST(SectionEight, TimeGroupLeftBySectionSevenHidesTheClouds) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "31313 58708 81102 41414 12345");
    decoder.decodeSection7();
    decoder.decodeSection8();
    EXPECT_EQ(decoder.rest(), "81102 41414 12345");
}

TEST(SectionSeven, WholeReportsOfEveryPartGiveTheLaunchTime) {
    const std::string reports[] = {
        "TTAA 5612/ 72201 88999 77999 31313 58708 81102",
        "TTBB 5612/ 72201 00014 322// 31313 58708 81102 41414 12345 51515 10164",
        "TTCC 5612/ 72201 88999 77999 31313 58708 81102 =",
        "TTDD 5612/ 72201 11700 601// 21212 11700 27010 31313 58708 81102 61616 X",
    };
    for (const std::string& report : reports) {
        SCOPED_TRACE(report);
        const OpenDecoder decoder(report);
        EXPECT_EQ(decoder.obsTime(), 1102);
        EXPECT_EQ(decoder.sr, "5");
        EXPECT_EQ(decoder.rara, "87");
        EXPECT_EQ(decoder.sasa, "08");
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(SectionSeven, WholeShipReportSkipsItsSeaTemperature) {
    const OpenDecoder decoder("UUBB SHIP 5612/ 99241 70830 08183 00014 322// 31313 58708 81102 90251");
    EXPECT_EQ(decoder.obsTime(), 1102);
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(SectionSeven, LaterPartOverwritesTheLaunchTime) {
    const Corvane report("TTAA 5612/ 72201 88999 77999 31313 58708 81102 "
                         "TTBB 5612/ 72201 00014 322// 31313 58708 81103");
    EXPECT_EQ(report.obsTime(), 1103);
}

TEST(SectionEight, WholePartBWithCloudsAfterItsLevelsReadsThemAsALevel) {
    const Corvane report("TTBB 0612/ 72201 00014 322// 21212 00014 27010 41414 12345");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}}),
                                                levelOf(SIGNIFICANT, {{PRES, 1014}, {WDIR, 270}, {WSPD, 10}}),
                                                levelOf(SIGNIFICANT, {{PRES, 414}, {WDIR, 120}, {WSPD, 345}})}));
}
