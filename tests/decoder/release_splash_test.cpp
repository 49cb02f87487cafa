// The remarks REL, SPG and SPL: where and when a dropsonde was released, and where and when it reached the surface.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

// The value of the outputs before the call.
constexpr double UNTOUCHED = -7777.0;

const char* const WRONG_POSITION = "REL and SPG position must be coded as 3233N06956W.";

struct PositionRow {
    const char* group;
    double lat;
    double lon;
};

const PositionRow POSITIONS[] = {
    // the four quadrants: the digits divided by a hundred
    {"3233N06956W", 32.33, -69.56},
    {"3233N06956E", 32.33, 69.56},
    {"3232S06955E", -32.32, 69.55},
    {"3232S06955W", -32.32, -69.55},
    {"9000N18000W", 90.0, -180.0},
    {"9999N99999E", 99.99, 999.99},
    // zero keeps the sign of its hemisphere
    {"0000N00000E", 0.0, 0.0},
    {"0000S00000W", -0.0, -0.0},
    // one valid hemisphere is enough; the other counts as south or west
    {"3233X06956W", -32.33, -69.56},
    {"3233X06956E", -32.33, 69.56},
    {"3233N06956/", 32.33, -69.56},
    {"3233N06956X", 32.33, -69.56},
    {"3233S06956N", -32.33, -69.56},
    {"3233/06956E", -32.33, 69.56},
    {"3233n06956E", -32.33, 69.56},
    {"3233W06956W", -32.33, -69.56},
    // misplaced digits: each run of digits is one number
    {"32330N6956W", 323.30, -69.56},
    {"3N06956789W", 0.03, -69567.89},
    {"3N6W", 0.03, -0.06},
    // a sign or a point in the place of a hemisphere
    {"3.2E06956W1", -0.03, 0.02},
    {"3-2E0695678", -0.03, 0.02},
    // what follows the second hemisphere is not read
    {"3233N6956W1", 32.33, -69.56},
    {"3233N06956WNW", 32.33, -69.56},
    {"3233N06956W3233S", 32.33, -69.56},
};

const char* const NO_POSITIONS[] = {
    // no valid hemisphere
    "3233X06956Y",
    "3233/06956/",
    "3233n06956w",
    "3233E06956N",
    // a piece is missing
    "32330006956",
    "3233N069561",
    "3233N",
    "3233",
    "3233NW06956",
    "3233NN06956",
    "N323306956W",
    "N3233W06956",
    "NW",
    "///////////",
    "",
    // a sign or a point where digits begin
    "-233N06956W",
    "+233N06956W",
    ".233N06956W",
    "3233N-6956W",
    "3.2N06956W1",
};

struct TimeRow {
    const char* group;
    double time;
};

const TimeRow TIMES[] = {
    // the digits as one number
    {"194730", 194730},
    {"000000", 0},
    {"081233", 81233},
    {"999999", 999999},
    // no leading digits: zero
    {"//////", 0},
    {"ABCDEF", 0},
    {"/94730", 0},
    // the leading number
    {"1947//", 1947},
    {"19473O", 19473},
    {"1947.5", 1947.5},
    {"+19473", 19473},
    {"-19473", -19473},
    {".19473", 0.19473},
    {"1e0005", 100000},
    {"1e////", 1},
    {"0x1A2B", 6699},
};

struct Keyword {
    const char* word;
    Corvane::LEVEL_TYPE kind;
    const char* time;
    double timeValue;
};

const Keyword KEYWORDS[] = {
    {"REL", RELEASE, "194730", 194730},
    {"SPG", SPLASH_GPS, "195640", 195640},
    {"SPL", SPLASH_INTEG, "1956", 1956},
};

}  // namespace

TEST(ReleaseAndSplashPosition, LatitudeAndLongitudeFollowTheTable) {
    for (const PositionRow& row : POSITIONS) {
        SCOPED_TRACE(row.group);
        const OpenDecoder decoder = OpenDecoder::withGroups("");
        double lat = UNTOUCHED;
        double lon = UNTOUCHED;
        decoder.decodeRelSpgSplLatLon(row.group, lat, lon);
        EXPECT_DOUBLE_EQ(lat, row.lat);
        EXPECT_DOUBLE_EQ(lon, row.lon);
        EXPECT_EQ(std::signbit(lat), std::signbit(row.lat));
        EXPECT_EQ(std::signbit(lon), std::signbit(row.lon));
    }
}

TEST(ReleaseAndSplashPosition, MissingPieceOrNoValidHemisphereIsAFault) {
    for (const std::string group : NO_POSITIONS) {
        SCOPED_TRACE(group);
        const OpenDecoder decoder = OpenDecoder::withGroups("g1 g2 g3 g4 g5 g6 g7");
        double lat = UNTOUCHED;
        double lon = UNTOUCHED;
        EXPECT_EQ(faultOf([&] { decoder.decodeRelSpgSplLatLon(group, lat, lon); }),
                  std::string(WRONG_POSITION) + " Error detected at g1 g2 g3 g4 g5 g6 ...");
        EXPECT_DOUBLE_EQ(lat, UNTOUCHED);
        EXPECT_DOUBLE_EQ(lon, UNTOUCHED);
        EXPECT_EQ(decoder.rest(), "g1 g2 g3 g4 g5 g6 g7");
    }
}

TEST(ReleaseAndSplashPoint, EachKeywordHasItsKindAndItsTimeGroup) {
    for (const Keyword& keyword : KEYWORDS) {
        SCOPED_TRACE(keyword.word);
        OpenDecoder decoder =
            OpenDecoder::inPart(0, std::string(keyword.word) + " 3232S06955E " + keyword.time + " XXBB");
        decoder.decodeRELSPGSPL();
        EXPECT_TRUE(sameLevels(decoder.allLevels(),
                               {levelOf(keyword.kind, {{LAT, -32.32}, {LON, 69.55}, {TIME, keyword.timeValue}})}));
        EXPECT_EQ(decoder.rest(), "XXBB");
    }
}

TEST(ReleaseAndSplashPoint, TimeIsTheNumberThatItsDigitsMake) {
    for (const TimeRow& row : TIMES) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = OpenDecoder::inPart(0, "REL 3233N06956W " + std::string(row.group));
        decoder.decodeRELSPGSPL();
        EXPECT_TRUE(
            sameLevels(decoder.allLevels(), {levelOf(RELEASE, {{LAT, 32.33}, {LON, -69.56}, {TIME, row.time}})}));
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(ReleaseAndSplashPoint, StrayBlankInPositionOrTimeIsJoined) {
    for (const std::string groups : {"REL 3233N 06956W 194730", "REL 3 233N06956W 194730", "REL 3233N06956W 194 730",
                                     "REL 3233N06956 W 19473 0"}) {
        SCOPED_TRACE(groups);
        OpenDecoder decoder = OpenDecoder::inPart(0, groups + " SPL");
        decoder.decodeRELSPGSPL();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(RELEASE, {{LAT, 32.33}, {LON, -69.56}, {TIME, 194730}})}));
        EXPECT_EQ(decoder.rest(), "SPL");
    }
}

TEST(ReleaseAndSplashPoint, FirstOfEachKindIsKept) {
    for (const Keyword& keyword : KEYWORDS) {
        SCOPED_TRACE(keyword.word);
        const std::string word = keyword.word;
        const std::string time = keyword.time;
        OpenDecoder decoder = OpenDecoder::inPart(0, word + " 3233N06956W " + time + " " + word + " 1111S02222E " +
                                                         std::string(time.size(), '7') + " XXBB");
        decoder.decodeRELSPGSPL();
        decoder.decodeRELSPGSPL();
        EXPECT_TRUE(sameLevels(decoder.allLevels(),
                               {levelOf(keyword.kind, {{LAT, 32.33}, {LON, -69.56}, {TIME, keyword.timeValue}})}));
        EXPECT_EQ(decoder.rest(), "XXBB");
    }
}

TEST(ReleaseAndSplashPoint, KindsAreFiledIndependently) {
    OpenDecoder decoder = OpenDecoder::inPart(
        0, "SPL 3233N06956W 1956 SPG 3233N06956W 195640 REL 3233N06956W 194730 SPL 1111S02222E 0000");
    for (int remark = 0; remark < 4; ++remark) {
        decoder.decodeRELSPGSPL();
    }
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(RELEASE, {{LAT, 32.33}, {LON, -69.56}, {TIME, 194730}}),
                                                 levelOf(SPLASH_INTEG, {{LAT, 32.33}, {LON, -69.56}, {TIME, 1956}}),
                                                 levelOf(SPLASH_GPS, {{LAT, 32.33}, {LON, -69.56}, {TIME, 195640}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(ReleaseAndSplashPoint, ThreeGroupsMustRemain) {
    OpenDecoder two = OpenDecoder::inPart(0, "REL 3233N06956W");
    EXPECT_EQ(faultOf([&] { two.decodeRELSPGSPL(); }),
              "At least 3 code groups are required. Error detected atREL 3233N06956W  ...");
    EXPECT_EQ(two.rest(), "REL 3233N06956W");
    OpenDecoder none = OpenDecoder::inPart(0, "");
    EXPECT_EQ(faultOf([&] { none.decodeRELSPGSPL(); }), "At least 3 code groups are required. Error detected at ...");
}

TEST(ReleaseAndSplashPoint, AnotherKeywordIsAFault) {
    for (const std::string word : {"AEV", "rel", "RELX", "SP", "62626"}) {
        SCOPED_TRACE(word);
        OpenDecoder decoder = OpenDecoder::inPart(0, word + " 3233N06956W 194730 g4 g5 g6 g7");
        EXPECT_EQ(faultOf([&] { decoder.decodeRELSPGSPL(); }),
                  "REL, SPG or SPL is expected Error detected at " + word + " 3233N06956W 194730 g4 g5 g6 ...");
        EXPECT_EQ(decoder.rest(), word + " 3233N06956W 194730 g4 g5 g6 g7");
    }
}

TEST(ReleaseAndSplashPoint, PositionMustHaveElevenCharacters) {
    OpenDecoder shortGroup = OpenDecoder::inPart(0, "REL 3233N0695W 194730 g3 g4 g5 g6 g7");
    EXPECT_EQ(faultOf([&] { shortGroup.decodeRELSPGSPL(); }), "This code group requires exactly 11 characters. "
                                                              "Error detected near 3233N0695W 194730 g3 g4 g5 g6  ...");
    EXPECT_EQ(shortGroup.rest(), "3233N0695W 194730 g3 g4 g5 g6 g7");

    OpenDecoder longGroup = OpenDecoder::inPart(0, "SPG 03233N06956W 194730");
    EXPECT_EQ(faultOf([&] { longGroup.decodeRELSPGSPL(); }),
              "This code group requires exactly 11 characters. Error detected near 03233N06956W 194730  ...");
    EXPECT_TRUE(sameLevels(longGroup.allLevels(), {}));
}

TEST(ReleaseAndSplashPoint, TimeMustHaveSixCharactersOrFourForSpl) {
    OpenDecoder release = OpenDecoder::inPart(0, "REL 3233N06956W 1947 SPG");
    EXPECT_EQ(faultOf([&] { release.decodeRELSPGSPL(); }),
              "This code group requires exactly 6 characters. Error detected near 1947 SPG  ...");
    EXPECT_EQ(release.rest(), "1947 SPG");

    OpenDecoder splashGps = OpenDecoder::inPart(0, "SPG 3233N06956W 1956");
    EXPECT_EQ(faultOf([&] { splashGps.decodeRELSPGSPL(); }),
              "This code group requires exactly 6 characters. Error detected near 1956  ...");

    OpenDecoder splash = OpenDecoder::inPart(0, "SPL 3233N06956W 195640 XXBB");
    EXPECT_EQ(faultOf([&] { splash.decodeRELSPGSPL(); }),
              "This code group requires exactly 4 characters. Error detected near 195640 XXBB  ...");
    EXPECT_EQ(splash.rest(), "195640 XXBB");
    EXPECT_TRUE(sameLevels(splash.allLevels(), {}));
}

TEST(ReleaseAndSplashPoint, SplitPositionAtTheEndLeavesNoTimeGroup) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "REL 3233N 06956W");
    EXPECT_EQ(faultOf([&] { decoder.decodeRELSPGSPL(); }),
              "At least 1 code groups are required. Error detected at ...");
    EXPECT_EQ(decoder.rest(), "");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
}

TEST(ReleaseAndSplashPoint, WrongPositionIsAFaultAtThePosition) {
    for (const Keyword& keyword : KEYWORDS) {
        SCOPED_TRACE(keyword.word);
        OpenDecoder decoder =
            OpenDecoder::inPart(0, std::string(keyword.word) + " 32330006956 " + keyword.time + " XXBB");
        EXPECT_EQ(faultOf([&] { decoder.decodeRELSPGSPL(); }),
                  std::string(WRONG_POSITION) + " Error detected at 32330006956 " + keyword.time + " XXBB ...");
        EXPECT_EQ(decoder.rest(), "32330006956 " + std::string(keyword.time) + " XXBB");
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    }
}

TEST(ReleaseAndSplashPoint, LaterOneOfAKindIsStillChecked) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "REL 3233N06956W 194730 REL 32330006956 194730");
    decoder.decodeRELSPGSPL();
    EXPECT_EQ(faultOf([&] { decoder.decodeRELSPGSPL(); }),
              std::string(WRONG_POSITION) + " Error detected at 32330006956 194730 ...");
}

TEST(ReleaseAndSplashPoint, WholeReportKeepsTheFirstOfEachKind) {
    const Corvane report("XXAA 57081 99241 70830 08183 88999 77999 31313 09608 80812 61616 AF305 "
                         "62626 REL 3233N 06956W 194730 SPG 3232N06955W 195640 REL 1111S02222E 000000 "
                         "SPL 3232S06955E 1956");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(RELEASE, {{LAT, 32.33}, {LON, -69.56}, {TIME, 194730}}),
                                                levelOf(SPLASH_INTEG, {{LAT, -32.32}, {LON, 69.55}, {TIME, 1956}}),
                                                levelOf(SPLASH_GPS, {{LAT, 32.32}, {LON, -69.55}, {TIME, 195640}})}));
}
