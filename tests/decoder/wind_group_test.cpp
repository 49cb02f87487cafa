// The wind group ddfff: direction and speed; and a temperature group and a wind group in a row.
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
    bool knots;
    int flags;  // 1: direction written, 2: speed written
    double dir;
    double speed;
};

const Row ROWS[] = {
    // directions in tens of degrees
    {"27015", false, 3, 270.0, 15.0},
    {"00000", false, 3, 0.0, 0.0},
    {"36001", false, 3, 360.0, 1.0},
    {"01100", false, 3, 10.0, 100.0},
    // knots
    {"27015", true, 3, 270.0, 15.0 * KNOT},
    {"00000", true, 3, 0.0, 0.0},
    {"27499", true, 3, 270.0, 499.0 * KNOT},
    // 500 added to the speed: a direction that ends in 5
    {"27499", false, 3, 270.0, 499.0},
    {"27500", false, 3, 275.0, 0.0},
    {"27501", false, 3, 275.0, 1.0},
    {"27615", false, 3, 275.0, 115.0},
    {"09523", false, 3, 95.0, 23.0},
    {"00504", false, 3, 5.0, 4.0},
    {"27999", false, 3, 275.0, 499.0},
    {"27500", true, 3, 275.0, 0.0},
    {"27615", true, 3, 275.0, 115.0 * KNOT},
    // there is no range check
    {"99015", false, 3, 990.0, 15.0},
    {"99515", false, 3, 995.0, 15.0},
    {"37015", false, 3, 370.0, 15.0},
    // a direction without speed, a speed without direction and solidi only are no wind
    {"27///", false, 0, UNTOUCHED, UNTOUCHED},
    {"//015", false, 0, UNTOUCHED, UNTOUCHED},
    {"/////", false, 0, UNTOUCHED, UNTOUCHED},
    {"//", false, 0, UNTOUCHED, UNTOUCHED},
    {"///", false, 0, UNTOUCHED, UNTOUCHED},
    {"27////", false, 0, UNTOUCHED, UNTOUCHED},
    {"///15", false, 0, UNTOUCHED, UNTOUCHED},
    {"27///", true, 0, UNTOUCHED, UNTOUCHED},
    // solidi among the digits: the leading number counts
    {"2/015", false, 3, 20.0, 15.0},
    {"/7015", false, 3, 0.0, 15.0},
    {"270/5", false, 3, 270.0, 0.0},
    {"27//5", false, 3, 270.0, 0.0},
    {"2701/", false, 3, 270.0, 1.0},
    {"2750/", false, 3, 270.0, 50.0},
    {"27//", false, 3, 270.0, 0.0},
    // letters
    {"XX015", false, 3, 0.0, 15.0},
    {"2X015", false, 3, 20.0, 15.0},
    {"27ABC", false, 3, 270.0, 0.0},
    {"27O15", false, 3, 270.0, 0.0},
    {"27inf", false, 3, 270.0, 0.0},
    {"27nan", false, 3, 270.0, 0.0},
    // signs
    {"+5015", false, 3, 50.0, 15.0},
    {"-5015", false, 3, -50.0, 15.0},
    {"27+15", false, 3, 270.0, 15.0},
    {"27-15", false, 3, 270.0, -15.0},
    {"27-15", true, 3, 270.0, -15.0 * KNOT},
    // points
    {".5015", false, 3, 5.0, 15.0},
    {"5.015", false, 3, 50.0, 15.0},
    {"271.5", false, 3, 270.0, 1.5},
    {"27-5.", false, 3, 270.0, -5.0},
    {"27.50", true, 3, 270.0, 0.5 * KNOT},
    // exponents: a complete one counts, an incomplete one makes the number zero
    {"271e1", false, 3, 270.0, 10.0},
    {"275e2", false, 3, 275.0, 0.0},
    {"271e3", false, 3, 275.0, 500.0},
    {"1e015", false, 3, 0.0, 15.0},
    {"2715e", false, 3, 270.0, 0.0},
    // hexadecimal digits are not read
    {"270x5", false, 3, 270.0, 0.0},
    {"0x015", false, 3, 0.0, 15.0},
    // with two characters there is no speed, with three and four its first digits
    {"27", false, 3, 270.0, 0.0},
    {"27", true, 3, 270.0, 0.0},
    {"271", false, 3, 270.0, 1.0},
    {"2715", false, 3, 270.0, 15.0},
    // what follows the fifth character is not read
    {"270159", false, 3, 270.0, 15.0},
    {"27615///", false, 3, 275.0, 115.0},
};

struct PairRow {
    const char* groups;
    int flags;
    double temp;
    double dewpoint;
    double dir;
    double speed;
};

const PairRow PAIRS[] = {
    // both groups complete
    {"12456 27015", 3, 12.4, 12.4 - 6.0, 270.0, 15.0},
    {"12305 27615", 3, -12.3, -12.3 - 0.5, 275.0, 115.0},
    // no wind: the flags are those of the temperature group
    {"12456 /////", 3, 12.4, 12.4 - 6.0, UNTOUCHED, UNTOUCHED},
    {"124// /////", 1, 12.4, UNTOUCHED, UNTOUCHED, UNTOUCHED},
    {"///// /////", 0, UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED},
    {"///56 27///", 0, UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED},
    {"124// //015", 1, 12.4, UNTOUCHED, UNTOUCHED, UNTOUCHED},
    // a wind sets the same two flags, whether the temperature group stored its outputs or not
    {"///// 27015", 3, UNTOUCHED, UNTOUCHED, 270.0, 15.0},
    {"124// 27015", 3, 12.4, UNTOUCHED, 270.0, 15.0},
};

}  // namespace

TEST(WindGroup, DirectionAndSpeedFollowTheTable) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.group) + (row.knots ? " in knots" : " in metres per second"));
        OpenDecoder decoder = OpenDecoder::withGroups(std::string(row.group) + " 31313");
        decoder._windsInKnots = row.knots;
        double dir = UNTOUCHED;
        double speed = UNTOUCHED;
        EXPECT_EQ(decoder.decodeDDFFF(dir, speed), row.flags);
        EXPECT_DOUBLE_EQ(dir, row.dir);
        EXPECT_DOUBLE_EQ(speed, row.speed);
        EXPECT_EQ(decoder.rest(), "31313");
    }
}

TEST(WindGroup, FifteenKnotsAreSevenPointSevenMetresPerSecond) {
    OpenDecoder decoder = OpenDecoder::withGroups("27015");
    decoder._windsInKnots = true;
    double dir = UNTOUCHED;
    double speed = UNTOUCHED;
    EXPECT_EQ(decoder.decodeDDFFF(dir, speed), 3);
    EXPECT_DOUBLE_EQ(speed, 7.716);
}

TEST(WindGroup, OneCharacterIsTooFewAndNothingIsWritten) {
    for (const std::string group : {"2", "/", "X"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::withGroups(group + " 31313");
        double dir = UNTOUCHED;
        double speed = UNTOUCHED;
        EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeDDFFF(dir, speed); }));
        EXPECT_DOUBLE_EQ(dir, UNTOUCHED);
        EXPECT_DOUBLE_EQ(speed, UNTOUCHED);
        EXPECT_EQ(decoder.rest(), group + " 31313");
    }
}

TEST(WindGroup, OnlyFiveCharactersOfAVeryLongGroupCount) {
    OpenDecoder decoder = OpenDecoder::withGroups("27015" + std::string(100000, '9') + " 31313");
    double dir = UNTOUCHED;
    double speed = UNTOUCHED;
    EXPECT_EQ(decoder.decodeDDFFF(dir, speed), 3);
    EXPECT_DOUBLE_EQ(dir, 270.0);
    EXPECT_DOUBLE_EQ(speed, 15.0);
    EXPECT_EQ(decoder.rest(), "31313");
}

TEST(TemperatureAndWindGroups, FlagsOfTheTwoAreNotDistinguished) {
    for (const PairRow& row : PAIRS) {
        SCOPED_TRACE(row.groups);
        OpenDecoder decoder = OpenDecoder::withGroups(std::string(row.groups) + " 77999");
        double temp = UNTOUCHED;
        double dewpoint = UNTOUCHED;
        double dir = UNTOUCHED;
        double speed = UNTOUCHED;
        EXPECT_EQ(decoder.decodeTTTDDandDDFFF(temp, dewpoint, dir, speed), row.flags);
        EXPECT_DOUBLE_EQ(temp, row.temp);
        EXPECT_DOUBLE_EQ(dewpoint, row.dewpoint);
        EXPECT_DOUBLE_EQ(dir, row.dir);
        EXPECT_DOUBLE_EQ(speed, row.speed);
        EXPECT_EQ(decoder.rest(), "77999");
    }
}

TEST(TemperatureAndWindGroups, KnotsAreConverted) {
    OpenDecoder decoder = OpenDecoder::withGroups("12456 27615");
    decoder._windsInKnots = true;
    double temp = UNTOUCHED;
    double dewpoint = UNTOUCHED;
    double dir = UNTOUCHED;
    double speed = UNTOUCHED;
    EXPECT_EQ(decoder.decodeTTTDDandDDFFF(temp, dewpoint, dir, speed), 3);
    EXPECT_DOUBLE_EQ(temp, 12.4);
    EXPECT_DOUBLE_EQ(dir, 275.0);
    EXPECT_DOUBLE_EQ(speed, 115.0 * KNOT);
    EXPECT_EQ(decoder.rest(), "");
}

TEST(TemperatureAndWindGroups, TwoGroupsMustRemain) {
    OpenDecoder decoder = OpenDecoder::withGroups("12456");
    double temp = UNTOUCHED;
    double dewpoint = UNTOUCHED;
    double dir = UNTOUCHED;
    double speed = UNTOUCHED;
    EXPECT_EQ(faultOf([&] { decoder.decodeTTTDDandDDFFF(temp, dewpoint, dir, speed); }),
              "At least 2 code groups are required. Error detected at12456  ...");
    EXPECT_DOUBLE_EQ(temp, UNTOUCHED);
    EXPECT_DOUBLE_EQ(dewpoint, UNTOUCHED);
    EXPECT_EQ(decoder.rest(), "12456");
}

TEST(TemperatureAndWindGroups, EmptyQueueIsAFault) {
    OpenDecoder decoder = OpenDecoder::withGroups("");
    double unused = UNTOUCHED;
    EXPECT_EQ(faultOf([&] { decoder.decodeTTTDDandDDFFF(unused, unused, unused, unused); }),
              "At least 2 code groups are required. Error detected at ...");
    EXPECT_DOUBLE_EQ(unused, UNTOUCHED);
}

TEST(TemperatureAndWindGroups, ForbiddenDepressionLeavesBothGroups) {
    OpenDecoder decoder = OpenDecoder::withGroups("12455 27015 g3 g4 g5 g6 g7");
    double temp = UNTOUCHED;
    double dewpoint = UNTOUCHED;
    double dir = UNTOUCHED;
    double speed = UNTOUCHED;
    EXPECT_EQ(faultOf([&] { decoder.decodeTTTDDandDDFFF(temp, dewpoint, dir, speed); }),
              "Dewpoint depression code may not be between 51 to 56. Error detected at 12455 27015 g3 g4 g5 g6 ...");
    EXPECT_DOUBLE_EQ(dir, UNTOUCHED);
    EXPECT_DOUBLE_EQ(speed, UNTOUCHED);
    EXPECT_EQ(decoder.rest(), "12455 27015 g3 g4 g5 g6 g7");
}

TEST(TemperatureAndWindGroups, WindGroupOfOneCharacterIsFoundAfterTheTemperature) {
    OpenDecoder decoder = OpenDecoder::withGroups("12456 2");
    double temp = UNTOUCHED;
    double dewpoint = UNTOUCHED;
    double dir = UNTOUCHED;
    double speed = UNTOUCHED;
    EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeTTTDDandDDFFF(temp, dewpoint, dir, speed); }));
    EXPECT_DOUBLE_EQ(temp, 12.4);
    EXPECT_DOUBLE_EQ(dewpoint, 12.4 - 6.0);
    EXPECT_DOUBLE_EQ(dir, UNTOUCHED);
    EXPECT_EQ(decoder.rest(), "2");
}

TEST(TemperatureAndWindGroups, GivenQuantitiesReplaceThoseOfTheLevel) {
    OpenDecoder decoder = OpenDecoder::withGroups("12456 27015");
    Corvane::Level level = levelOf(SIGNIFICANT, {{PRES, 850}, {TDRY, 1}, {DP, 2}, {WSPD, 3}, {WDIR, 4}, {HEIGHT, 5}});
    decoder.takeTemperature(level);
    decoder.takeWind(level);
    EXPECT_TRUE(sameLevels(
        {level},
        {levelOf(SIGNIFICANT, {{PRES, 850}, {TDRY, 12.4}, {DP, 12.4 - 6.0}, {WSPD, 15}, {WDIR, 270}, {HEIGHT, 5}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(TemperatureAndWindGroups, QuantitiesThatAreNotGivenStayInTheLevel) {
    OpenDecoder decoder = OpenDecoder::withGroups("124// 27///");
    Corvane::Level level = levelOf(SIGNIFICANT, {{TDRY, 1}, {DP, 2}, {WSPD, 3}, {WDIR, 4}});
    decoder.takeTemperature(level);
    decoder.takeWind(level);
    EXPECT_TRUE(sameLevels({level}, {levelOf(SIGNIFICANT, {{TDRY, 12.4}, {DP, 2}, {WSPD, 3}, {WDIR, 4}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(WindGroup, WholeReportConvertsKnotsWhenTheDayIsAboveFifty) {
    const Corvane knots("TTBB 5600/ 72201 21212 00014 27615 11850 27015 22700 27///");
    EXPECT_TRUE(sameLevels(knots.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {WDIR, 275}, {WSPD, 115 * KNOT}}),
                                               levelOf(SIGNIFICANT, {{PRES, 850}, {WDIR, 270}, {WSPD, 15 * KNOT}}),
                                               levelOf(SIGNIFICANT, {{PRES, 700}})}));
    const Corvane metres("TTBB 0600/ 72201 21212 00014 27615 11850 27015 22700 //015");
    EXPECT_TRUE(sameLevels(metres.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {WDIR, 275}, {WSPD, 115}}),
                                                levelOf(SIGNIFICANT, {{PRES, 850}, {WDIR, 270}, {WSPD, 15}}),
                                                levelOf(SIGNIFICANT, {{PRES, 700}})}));
}
