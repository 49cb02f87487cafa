// The temperature group TTTDD: air temperature, and the dew point from its depression.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

// The value of the outputs before the call.
constexpr double UNTOUCHED = -7777.0;

struct Row {
    const char* group;
    int flags;  // 1: temperature written, 2: dew point written
    double temp;
    double dewpoint;
};

const Row ROWS[] = {
    // even tenths: above zero
    {"12456", 3, 12.4, 12.4 - 6.0},
    {"00000", 3, 0.0, 0.0},
    {"00800", 3, 0.8, 0.8},
    {"32259", 3, 32.2, 32.2 - 9.0},
    {"01010", 3, 1.0, 0.0},
    {"99899", 3, 99.8, 99.8 - 49.0},
    // odd tenths: below zero
    {"12305", 3, -12.3, -12.3 - 0.5},
    {"00100", 3, -0.1, -0.1},
    {"00310", 3, -0.3, -0.3 - 1.0},
    {"00510", 3, -0.5, -0.5 - 1.0},
    {"00710", 3, -0.7, -0.7 - 1.0},
    {"00910", 3, -0.9, -0.9 - 1.0},
    {"99999", 3, -99.9, -99.9 - 49.0},
    // depression in tenths up to 50
    {"12400", 3, 12.4, 12.4},
    {"12401", 3, 12.4, 12.4 - 0.1},
    {"12449", 3, 12.4, 12.4 - 4.9},
    {"12450", 3, 12.4, 12.4 - 5.0},
    // depression in whole degrees from 56
    {"12457", 3, 12.4, 12.4 - 7.0},
    {"12499", 3, 12.4, 12.4 - 49.0},
    // no dew point
    {"124//", 1, 12.4, UNTOUCHED},
    {"123//", 1, -12.3, UNTOUCHED},
    {"124///", 1, 12.4, UNTOUCHED},
    // no temperature: the depression is not read
    {"/////", 0, UNTOUCHED, UNTOUCHED},
    {"///56", 0, UNTOUCHED, UNTOUCHED},
    {"///53", 0, UNTOUCHED, UNTOUCHED},
    {"///", 0, UNTOUCHED, UNTOUCHED},
    {"////", 0, UNTOUCHED, UNTOUCHED},
    {"////////", 0, UNTOUCHED, UNTOUCHED},
    // solidi among the digits: the leading number counts, and "/" as tenths is odd
    {"12/05", 3, -1.2, -1.2 - 0.5},
    {"1//05", 3, -0.1, -0.1 - 0.5},
    {"//405", 3, 0.0, -0.5},
    {"//505", 3, -0.0, -0.5},
    // so does every character with an odd code, also above 127
    {"12X05", 3, 1.2, 1.2 - 0.5},
    {"12Y05", 3, -1.2, -1.2 - 0.5},
    {"12\xB2"
     "05",
     3, 1.2, 1.2 - 0.5},
    {"12\xB3"
     "05",
     3, -1.2, -1.2 - 0.5},
    {"12\xFF"
     "05",
     3, -1.2, -1.2 - 0.5},
    {"/2405", 3, 0.0, -0.5},
    {"1245/", 3, 12.4, 12.4 - 0.5},
    {"124/5", 3, 12.4, 12.4},
    // letters
    {"ABD05", 3, 0.0, -0.5},
    {"ABC05", 3, -0.0, -0.5},
    {"124XY", 3, 12.4, 12.4},
    {"1O405", 3, 0.1, 0.1 - 0.5},
    {"inf00", 3, 0.0, 0.0},
    {"nan00", 3, 0.0, 0.0},
    // signs: a minus and odd tenths cancel
    {"+1205", 3, 1.2, 1.2 - 0.5},
    {"-1205", 3, -1.2, -1.2 - 0.5},
    {"-1305", 3, 1.3, 1.3 - 0.5},
    {"+1305", 3, -1.3, -1.3 - 0.5},
    {"124+5", 3, 12.4, 12.4 - 0.5},
    {"124-5", 3, 12.4, 12.4 + 0.5},
    {"--205", 3, 0.0, -0.5},
    // points
    {"-5.05", 3, -0.5, -0.5 - 0.5},
    {".5005", 3, 0.05, 0.05 - 0.5},
    {"1.505", 3, -0.15, -0.15 - 0.5},
    {"1,205", 3, 0.1, 0.1 - 0.5},
    {"124.5", 3, 12.4, 12.4 - 0.05},
    {"1245.", 3, 12.4, 12.4 - 0.5},
    // exponents: a complete one counts, an incomplete one makes the number zero
    {"1e105", 3, -1.0, -1.0 - 0.5},
    {"1e205", 3, 10.0, 10.0 - 0.5},
    {"1E405", 3, 1000.0, 1000.0 - 0.5},
    {"12e05", 3, -0.0, -0.5},
    {"e1205", 3, 0.0, -0.5},
    {"1241e", 3, 12.4, 12.4},
    // hexadecimal digits are not read
    {"0x105", 3, -0.0, -0.5},
    {"0x205", 3, 0.0, -0.5},
    // with three characters there is no depression, with four its first digit
    {"124", 3, 12.4, 12.4},
    {"123", 3, -12.3, -12.3},
    {"1244", 3, 12.4, 12.4 - 0.4},
    {"124/", 3, 12.4, 12.4},
    // what follows the fifth character is not read
    {"124567", 3, 12.4, 12.4 - 6.0},
    {"12450999", 3, 12.4, 12.4 - 5.0},
};

}  // namespace

TEST(TemperatureGroup, TemperatureAndDewPointFollowTheTable) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = OpenDecoder::withGroups(std::string(row.group) + " 27015");
        double temp = UNTOUCHED;
        double dewpoint = UNTOUCHED;
        EXPECT_EQ(decoder.decodeTTTDD(temp, dewpoint), row.flags);
        EXPECT_DOUBLE_EQ(temp, row.temp);
        EXPECT_EQ(std::signbit(temp), std::signbit(row.temp));
        EXPECT_DOUBLE_EQ(dewpoint, row.dewpoint);
        EXPECT_EQ(std::signbit(dewpoint), std::signbit(row.dewpoint));
        EXPECT_EQ(decoder.rest(), "27015");
    }
}

TEST(TemperatureGroup, KnotsAndPartMakeNoDifference) {
    for (int part = 0; part <= 4; ++part) {
        SCOPED_TRACE(part);
        OpenDecoder decoder = OpenDecoder::inPart(part, "12305");
        decoder._windsInKnots = true;
        double temp = UNTOUCHED;
        double dewpoint = UNTOUCHED;
        EXPECT_EQ(decoder.decodeTTTDD(temp, dewpoint), 3);
        EXPECT_DOUBLE_EQ(temp, -12.3);
        EXPECT_DOUBLE_EQ(dewpoint, -12.3 - 0.5);
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(TemperatureGroup, DepressionCodesBetweenFiftyAndFiftySixAreFaults) {
    for (const std::string depression : {"51", "52", "53", "54", "55"}) {
        SCOPED_TRACE(depression);
        OpenDecoder decoder = OpenDecoder::withGroups("124" + depression + " 27015");
        double temp = UNTOUCHED;
        double dewpoint = UNTOUCHED;
        EXPECT_EQ(faultOf([&] { decoder.decodeTTTDD(temp, dewpoint); }),
                  "Dewpoint depression code may not be between 51 to 56. Error detected at 124" + depression +
                      " 27015 ...");
        EXPECT_DOUBLE_EQ(temp, 12.4);
        EXPECT_DOUBLE_EQ(dewpoint, UNTOUCHED);
        EXPECT_EQ(decoder.rest(), "124" + depression + " 27015");
    }
}

TEST(TemperatureGroup, DepressionCodesNextToTheForbiddenOnesAreValid) {
    for (const std::string depression : {"50", "56"}) {
        SCOPED_TRACE(depression);
        OpenDecoder decoder = OpenDecoder::withGroups("124" + depression);
        double temp = UNTOUCHED;
        double dewpoint = UNTOUCHED;
        EXPECT_EQ(faultOf([&] { decoder.decodeTTTDD(temp, dewpoint); }), NOTHING_THROWN);
        EXPECT_DOUBLE_EQ(dewpoint, depression == "50" ? 12.4 - 5.0 : 12.4 - 6.0);
    }
}

TEST(TemperatureGroup, FaultShowsSixGroupsAtMost) {
    OpenDecoder decoder = OpenDecoder::withGroups("12452 g2 g3 g4 g5 g6 g7 g8");
    double temp = UNTOUCHED;
    double dewpoint = UNTOUCHED;
    EXPECT_EQ(faultOf([&] { decoder.decodeTTTDD(temp, dewpoint); }),
              "Dewpoint depression code may not be between 51 to 56. Error detected at 12452 g2 g3 g4 g5 g6 ...");
    EXPECT_EQ(decoder.rest(), "12452 g2 g3 g4 g5 g6 g7 g8");
}

TEST(TemperatureGroup, TwoCharactersAreTooFewButTheTemperatureIsStored) {
    OpenDecoder decoder = OpenDecoder::withGroups("12 27015");
    double temp = UNTOUCHED;
    double dewpoint = UNTOUCHED;
    EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeTTTDD(temp, dewpoint); }));
    EXPECT_DOUBLE_EQ(temp, 1.2);
    EXPECT_DOUBLE_EQ(dewpoint, UNTOUCHED);
    EXPECT_EQ(decoder.rest(), "12 27015");
}

TEST(TemperatureGroup, OneCharacterIsTooFewButTheTemperatureIsStored) {
    OpenDecoder decoder = OpenDecoder::withGroups("4 27015");
    double temp = UNTOUCHED;
    double dewpoint = UNTOUCHED;
    EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeTTTDD(temp, dewpoint); }));
    EXPECT_DOUBLE_EQ(temp, 0.4);
    EXPECT_DOUBLE_EQ(dewpoint, UNTOUCHED);
    EXPECT_EQ(decoder.rest(), "4 27015");
}

TEST(TemperatureGroup, OneOrTwoSolidiAreTooFew) {
    for (const std::string group : {"/", "//"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::withGroups(group);
        double temp = UNTOUCHED;
        double dewpoint = UNTOUCHED;
        EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeTTTDD(temp, dewpoint); }));
        EXPECT_EQ(temp, 0.0);
        EXPECT_DOUBLE_EQ(dewpoint, UNTOUCHED);
        EXPECT_EQ(decoder.rest(), group);
    }
}

TEST(TemperatureGroup, OnlyFiveCharactersOfAVeryLongGroupCount) {
    OpenDecoder decoder = OpenDecoder::withGroups("12305" + std::string(100000, '7') + " 27015");
    double temp = UNTOUCHED;
    double dewpoint = UNTOUCHED;
    EXPECT_EQ(decoder.decodeTTTDD(temp, dewpoint), 3);
    EXPECT_DOUBLE_EQ(temp, -12.3);
    EXPECT_DOUBLE_EQ(dewpoint, -12.3 - 0.5);
    EXPECT_EQ(decoder.rest(), "27015");
}

TEST(TemperatureGroup, WholeReportGivesTemperatureAndDewPointOfItsLevels) {
    const Corvane report("TTBB 0600/ 72201 00014 32259 11850 12305 22700 008// 33600 /////");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}, {DP, 32.2 - 9.0}}),
                                                levelOf(SIGNIFICANT, {{PRES, 850}, {TDRY, -12.3}, {DP, -12.3 - 0.5}}),
                                                levelOf(SIGNIFICANT, {{PRES, 700}, {TDRY, 0.8}})}));
}
