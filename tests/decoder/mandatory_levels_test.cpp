// Section 2: the surface and the standard isobaric surfaces of parts A and C, and the heights of their three digits.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

const char* const WRONG_CODE = "The mandatory significant observation is incorrectly coded.";

struct HeightRow {
    int part;
    const char* code;
    double digits;
    double height;
};

const HeightRow HEIGHTS[] = {
    // part A, 1000 hPa: from 500 on, below sea level
    {0, "00", 0, 0},
    {0, "00", 120, 120},
    {0, "00", 499, 499},
    {0, "00", 500, 0},
    {0, "00", 501, -1},
    {0, "00", 620, -120},
    {0, "00", 999, -499},
    // part A, 925 hPa and the surface: as reported
    {0, "92", 0, 0},
    {0, "92", 500, 500},
    {0, "92", 805, 805},
    {0, "99", 501, 501},
    // part A, 850 hPa: one thousand
    {0, "85", 0, 1000},
    {0, "85", 500, 1500},
    {0, "85", 501, 1501},
    {0, "85", 999, 1999},
    // part A, 700 hPa: two or three thousand
    {0, "70", 0, 3000},
    {0, "70", 12, 3012},
    {0, "70", 499, 3499},
    {0, "70", 500, 3500},
    {0, "70", 501, 2501},
    {0, "70", 990, 2990},
    // part A, 500 and 400 hPa: tens of metres
    {0, "50", 0, 0},
    {0, "50", 500, 5000},
    {0, "50", 501, 5010},
    {0, "50", 560, 5600},
    {0, "40", 499, 4990},
    {0, "40", 500, 5000},
    {0, "40", 760, 7600},
    // part A, 300 and 250 hPa: below or above ten kilometres
    {0, "30", 499, 14990},
    {0, "30", 500, 15000},
    {0, "30", 501, 5010},
    {0, "30", 950, 9500},
    {0, "25", 40, 10400},
    {0, "25", 499, 14990},
    {0, "25", 500, 15000},
    {0, "25", 501, 5010},
    // part A, 200 to 100 hPa: above ten kilometres
    {0, "20", 0, 10000},
    {0, "20", 240, 12400},
    {0, "20", 501, 15010},
    {0, "15", 420, 14200},
    {0, "15", 501, 15010},
    {0, "10", 660, 16600},
    {0, "10", 999, 19990},
    // part A has no other surface
    {0, "07", 501, 501},
    {0, "01", 501, 501},
    {0, "XX", 17, 17},
    {0, "", 17, 17},
    // part C, 70 hPa
    {2, "70", 850, 18500},
    {2, "70", 0, 10000},
    {2, "70", 500, 15000},
    {2, "70", 501, 15010},
    // part C, 50 hPa: below or above twenty kilometres
    {2, "50", 499, 24990},
    {2, "50", 500, 25000},
    {2, "50", 501, 15010},
    {2, "50", 60, 20600},
    {2, "50", 990, 19900},
    // part C, 30 and 20 hPa
    {2, "30", 380, 23800},
    {2, "30", 501, 25010},
    {2, "20", 640, 26400},
    {2, "20", 500, 25000},
    {2, "20", 501, 25010},
    // part C, 10 hPa: below or above thirty kilometres
    {2, "10", 100, 31000},
    {2, "10", 499, 34990},
    {2, "10", 500, 35000},
    {2, "10", 501, 25010},
    // part C, 7 and 5 hPa
    {2, "07", 350, 33500},
    {2, "07", 501, 35010},
    {2, "05", 590, 35900},
    {2, "05", 500, 35000},
    // part C, 3 and 2 hPa: below or above forty kilometres
    {2, "03", 499, 44990},
    {2, "03", 500, 45000},
    {2, "03", 501, 35010},
    {2, "02", 499, 44990},
    {2, "02", 500, 45000},
    {2, "02", 501, 35010},
    // part C, 1 hPa: below or above fifty kilometres
    {2, "01", 499, 54990},
    {2, "01", 500, 55000},
    {2, "01", 501, 45010},
    {2, "01", 780, 47800},
    // part C has no other surface
    {2, "00", 620, 620},
    {2, "85", 501, 501},
    {2, "99", 13, 13},
    // parts B and D: as reported
    {1, "00", 620, 620},
    {1, "85", 540, 540},
    {1, "70", 12, 12},
    {3, "70", 850, 850},
    {3, "10", 100, 100},
    {3, "01", 780, 780},
};

struct SurfaceRow {
    const char* group;
    double pressure;
};

const SurfaceRow SURFACES[] = {
    // below 100: one thousand is left out
    {"99013", 1013},
    {"99000", 1000},
    {"99099", 1099},
    // 100 and above: as reported
    {"99100", 100},
    {"99101", 101},
    {"99987", 987},
    {"99999", 999},
    // no number: zero, so 1000
    {"99ABC", 1000},
    {"99/13", 1000},
    {"99", 1000},
    // a leading number, taken as written: signs, points, exponents
    {"9987/", 1087},
    {"99+12", 1012},
    {"99-12", 988},
    {"99.5", 1000.5},
    {"991e1", 1010},
    {"991e2", 100},
    {"990x1", 1000},
    {"995", 1005},
    // what follows the fifth character is not read
    {"999871", 987},
};

// The pressures of a reference table.
std::vector<double> pressuresOf(const std::vector<OpenDecoder::MandatoryInfo>& table) {
    std::vector<double> pressures;
    for (const OpenDecoder::MandatoryInfo& entry : table) {
        pressures.push_back(entry.pressure);
    }
    return pressures;
}

}  // namespace

TEST(MandatoryHeight, FollowsTheTableOfThePart) {
    for (const HeightRow& row : HEIGHTS) {
        SCOPED_TRACE("part " + std::to_string(row.part) + ", " + row.code + " with " + std::to_string(row.digits));
        const OpenDecoder decoder = OpenDecoder::inPart(row.part, "");
        EXPECT_DOUBLE_EQ(decoder.mandatoryHeight(row.code, row.digits), row.height);
    }
}

TEST(MandatoryHeight, FractionsAreComparedWithFiveHundredUnrounded) {
    const OpenDecoder partA = OpenDecoder::inPart(0, "");
    EXPECT_DOUBLE_EQ(partA.mandatoryHeight("00", 499.5), 499.5);
    EXPECT_DOUBLE_EQ(partA.mandatoryHeight("70", 500.5), 2500.5);
    EXPECT_DOUBLE_EQ(partA.mandatoryHeight("00", -12.0), -12.0);
}

TEST(MandatoryLevel, SurfacePressureBelowOneHundredLeavesOutTheThousand) {
    for (const SurfaceRow& row : SURFACES) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = OpenDecoder::inPart(0, std::string(row.group) + " 124// ///// 00120");
        decoder.decodeMandatory(decoder.mandatoryA, 0);
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SURFACE, {{PRES, row.pressure}, {TDRY, 12.4}})}));
        EXPECT_EQ(decoder.rest(), "00120");
    }
}

TEST(MandatoryLevel, StandardSurfaceHoldsPressureHeightTemperatureDewPointAndWind) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "85540 12456 27615 70012");
    decoder.decodeMandatory(decoder.mandatoryA, 3);
    EXPECT_TRUE(sameLevels(
        decoder.allLevels(),
        {levelOf(MANDATORY, {{PRES, 850}, {HEIGHT, 1540}, {TDRY, 12.4}, {DP, 12.4 - 6.0}, {WDIR, 275}, {WSPD, 115}})}));
    EXPECT_EQ(decoder.rest(), "70012");
}

TEST(MandatoryLevel, KnotsAreConverted) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "85540 12456 27015");
    decoder._windsInKnots = true;
    decoder.decodeMandatory(decoder.mandatoryA, 3);
    EXPECT_TRUE(sameLevels(
        decoder.allLevels(),
        {levelOf(MANDATORY,
                 {{PRES, 850}, {HEIGHT, 1540}, {TDRY, 12.4}, {DP, 12.4 - 6.0}, {WDIR, 270}, {WSPD, 15 * KNOT}})}));
}

TEST(MandatoryLevel, QuantityOfSolidiIsAbsent) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "85/// 124// 27/// 70012 ///// 27015 50560 ///// /////");
    decoder.decodeMandatory(decoder.mandatoryA, 3);
    decoder.decodeMandatory(decoder.mandatoryA, 4);
    decoder.decodeMandatory(decoder.mandatoryA, 5);
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(MANDATORY, {{PRES, 850}, {TDRY, 12.4}}),
                                         levelOf(MANDATORY, {{PRES, 700}, {HEIGHT, 3012}, {WDIR, 270}, {WSPD, 15}}),
                                         levelOf(MANDATORY, {{PRES, 500}, {HEIGHT, 5600}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(MandatoryLevel, SurfaceOfSolidiIsTakenAndNotFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "99/// ///// ///// 00120");
    decoder.decodeMandatory(decoder.mandatoryA, 0);
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "00120");
}

TEST(MandatoryLevel, StandardSurfaceOfSolidiIsTakenAndNotFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "85/// ///// ///// 70012");
    decoder.decodeMandatory(decoder.mandatoryA, 3);
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "70012");
}

TEST(MandatoryLevel, SurfaceWithOnlyAPressureIsNotFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "99013 ///// ///// 00120");
    decoder.decodeMandatory(decoder.mandatoryA, 0);
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "00120");
}

TEST(MandatoryLevel, SurfaceWithoutPressureIsFiledAsAMandatoryLevelAtZero) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "99/// 12456 27015");
    decoder.decodeMandatory(decoder.mandatoryA, 0);
    EXPECT_TRUE(sameLevels(decoder.allLevels(),
                           {levelOf(MANDATORY, {{PRES, 0}, {TDRY, 12.4}, {DP, 12.4 - 6.0}, {WDIR, 270}, {WSPD, 15}})}));
}

TEST(MandatoryLevel, HeightThatIsNotANumberIsReadAsZero) {
    for (const std::string group : {"85", "85ABC", "85/40"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(0, group + " 124// /////");
        decoder.decodeMandatory(decoder.mandatoryA, 3);
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MANDATORY, {{PRES, 850}, {HEIGHT, 1000}, {TDRY, 12.4}})}));
    }
}

TEST(MandatoryLevel, WindIsReadUpToAndIncludingTheLastWindLevel) {
    for (const int lastWind : {700, 701, 699}) {
        SCOPED_TRACE(lastWind);
        OpenDecoder decoder = OpenDecoder::inPart(0, "70012 124// 27015");
        decoder.lastWindPresA = lastWind;
        decoder.lastWindPresC = 9999;
        decoder.decodeMandatory(decoder.mandatoryA, 4);
        EXPECT_EQ(decoder.rest(), lastWind > 700 ? "27015" : "");
        EXPECT_EQ(decoder.allLevels().at(0).fields.count(WSPD), lastWind > 700 ? 0U : 1U);
    }
}

TEST(MandatoryLevel, PartCHasALastWindLevelOfItsOwn) {
    for (const int lastWind : {30, 31, 29}) {
        SCOPED_TRACE(lastWind);
        OpenDecoder decoder = OpenDecoder::inPart(2, "30380 124// 27015");
        decoder.lastWindPresA = 9999;
        decoder.lastWindPresC = lastWind;
        decoder.decodeMandatory(decoder.mandatoryC, 2);
        EXPECT_EQ(decoder.rest(), lastWind > 30 ? "27015" : "");
    }
}

TEST(MandatoryLevel, SurfaceHasAWindEvenWhenNoOtherLevelHas) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "99013 12456 27015 00120 124// 92805");
    decoder.lastWindPresA = 9999;
    decoder.decodeMandatory(decoder.mandatoryA, 0);
    decoder.decodeMandatory(decoder.mandatoryA, 1);
    EXPECT_TRUE(sameLevels(decoder.allLevels(),
                           {levelOf(SURFACE, {{PRES, 1013}, {TDRY, 12.4}, {DP, 12.4 - 6.0}, {WDIR, 270}, {WSPD, 15}}),
                            levelOf(MANDATORY, {{PRES, 1000}, {HEIGHT, 120}, {TDRY, 12.4}})}));
    EXPECT_EQ(decoder.rest(), "92805");
}

TEST(MandatoryLevel, TwoGroupsMustRemain) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "99013");
    EXPECT_EQ(faultOf([&] { decoder.decodeMandatory(decoder.mandatoryA, 0); }),
              "At least 2 code groups are required. Error detected at99013  ...");
    EXPECT_EQ(decoder.rest(), "99013");
}

TEST(MandatoryLevel, MissingWindGroupIsAFaultAndTheLevelIsNotFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "99013 12456");
    EXPECT_EQ(faultOf([&] { decoder.decodeMandatory(decoder.mandatoryA, 0); }),
              "At least 1 code groups are required. Error detected at ...");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(MandatoryLevel, AnotherCodeThanTheExpectedOneIsAFault) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "70012 12456 27015 50560 12456 27015 40760 15912");
    EXPECT_EQ(faultOf([&] { decoder.decodeMandatory(decoder.mandatoryA, 3); }),
              std::string(WRONG_CODE) + " Error detected at 70012 12456 27015 50560 12456 27015 ...");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "70012 12456 27015 50560 12456 27015 40760 15912");
}

TEST(MandatoryLevel, GroupOfOneCharacterIsNotASurface) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "9 12456 27015");
    EXPECT_EQ(faultOf([&] { decoder.decodeMandatory(decoder.mandatoryA, 0); }),
              std::string(WRONG_CODE) + " Error detected at 9 12456 27015 ...");
    EXPECT_EQ(decoder.rest(), "9 12456 27015");
}

TEST(MandatoryLevel, ForbiddenDepressionLeavesTheTemperatureGroupInFront) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "99013 12453 27015");
    EXPECT_EQ(faultOf([&] { decoder.decodeMandatory(decoder.mandatoryA, 0); }),
              "Dewpoint depression code may not be between 51 to 56. Error detected at 12453 27015 ...");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "12453 27015");
}

TEST(MandatoryLevel, TemperatureOrWindGroupTooShortIsOutOfRange) {
    OpenDecoder temperature = OpenDecoder::inPart(0, "99013 12 27015");
    EXPECT_TRUE(findsGroupTooShort([&] { temperature.decodeMandatory(temperature.mandatoryA, 0); }));
    EXPECT_EQ(temperature.rest(), "12 27015");
    OpenDecoder wind = OpenDecoder::inPart(0, "99013 12456 2 00120");
    EXPECT_TRUE(findsGroupTooShort([&] { wind.decodeMandatory(wind.mandatoryA, 0); }));
    EXPECT_EQ(wind.rest(), "2 00120");
    EXPECT_TRUE(sameLevels(wind.allLevels(), {}));
}

TEST(SectionTwo, EmptyQueueIsAFault) {
    for (const int part : {0, 2}) {
        SCOPED_TRACE(part);
        OpenDecoder decoder = OpenDecoder::inPart(part, "");
        EXPECT_EQ(faultOf([&] { decoder.decodeSection2(); }),
                  "At least 2 code groups are required. Error detected at ...");
    }
}

TEST(SectionTwo, TropopauseGroupAtOnceEndsItWithoutLevels) {
    for (const int part : {0, 2}) {
        for (const std::string group : {"88999", "88250", "88///", "88"}) {
            SCOPED_TRACE(group);
            OpenDecoder decoder = OpenDecoder::inPart(part, group);
            decoder.decodeSection2();
            EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
            EXPECT_EQ(decoder.rest(), group);
        }
    }
}

TEST(SectionTwo, PartAEndsAfterOneHundredHectopascals) {
    OpenDecoder decoder = OpenDecoder::inPart(
        0, "99013 124// 00120 122// 92805 120// 85540 118// 70012 102// 50560 101// 40760 303// 30950 505// "
           "25040 507// 20240 509// 15420 601// 10660 703// 12345 67890");
    decoder.lastWindPresA = 9999;
    decoder.tokenQueue.insert(decoder.tokenQueue.begin() + 2, "27015");
    decoder.decodeSection2();
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(SURFACE, {{PRES, 1013}, {TDRY, 12.4}, {WDIR, 270}, {WSPD, 15}}),
                                         levelOf(MANDATORY, {{PRES, 1000}, {HEIGHT, 120}, {TDRY, 12.2}}),
                                         levelOf(MANDATORY, {{PRES, 925}, {HEIGHT, 805}, {TDRY, 12.0}}),
                                         levelOf(MANDATORY, {{PRES, 850}, {HEIGHT, 1540}, {TDRY, 11.8}}),
                                         levelOf(MANDATORY, {{PRES, 700}, {HEIGHT, 3012}, {TDRY, 10.2}}),
                                         levelOf(MANDATORY, {{PRES, 500}, {HEIGHT, 5600}, {TDRY, -10.1}}),
                                         levelOf(MANDATORY, {{PRES, 400}, {HEIGHT, 7600}, {TDRY, -30.3}}),
                                         levelOf(MANDATORY, {{PRES, 300}, {HEIGHT, 9500}, {TDRY, -50.5}}),
                                         levelOf(MANDATORY, {{PRES, 250}, {HEIGHT, 10400}, {TDRY, -50.7}}),
                                         levelOf(MANDATORY, {{PRES, 200}, {HEIGHT, 12400}, {TDRY, -50.9}}),
                                         levelOf(MANDATORY, {{PRES, 150}, {HEIGHT, 14200}, {TDRY, -60.1}}),
                                         levelOf(MANDATORY, {{PRES, 100}, {HEIGHT, 16600}, {TDRY, -70.3}})}));
    EXPECT_EQ(decoder.rest(), "12345 67890");
}

TEST(SectionTwo, PartCEndsAfterOneHectopascal) {
    OpenDecoder decoder = OpenDecoder::inPart(2, "70850 601// 50060 603// 30380 505// 20640 507// 10100 409// "
                                                 "07350 401// 05590 303// 03120 105// 01780 007// 12345 67890");
    decoder.lastWindPresC = 9999;
    decoder.decodeSection2();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MANDATORY, {{PRES, 70}, {HEIGHT, 18500}, {TDRY, -60.1}}),
                                                 levelOf(MANDATORY, {{PRES, 50}, {HEIGHT, 20600}, {TDRY, -60.3}}),
                                                 levelOf(MANDATORY, {{PRES, 30}, {HEIGHT, 23800}, {TDRY, -50.5}}),
                                                 levelOf(MANDATORY, {{PRES, 20}, {HEIGHT, 26400}, {TDRY, -50.7}}),
                                                 levelOf(MANDATORY, {{PRES, 10}, {HEIGHT, 31000}, {TDRY, -40.9}}),
                                                 levelOf(MANDATORY, {{PRES, 7}, {HEIGHT, 33500}, {TDRY, -40.1}}),
                                                 levelOf(MANDATORY, {{PRES, 5}, {HEIGHT, 35900}, {TDRY, -30.3}}),
                                                 levelOf(MANDATORY, {{PRES, 3}, {HEIGHT, 41200}, {TDRY, -10.5}}),
                                                 levelOf(MANDATORY, {{PRES, 1}, {HEIGHT, 47800}, {TDRY, -0.7}})}));
    EXPECT_EQ(decoder.rest(), "12345 67890");
}

TEST(SectionTwo, EndsWithoutAFaultWhenTheQueueIsEmptyAfterTheLastSurface) {
    OpenDecoder decoder = OpenDecoder::inPart(2, "70850 601// 50060 603// 30380 505// 20640 507// 10100 409// "
                                                 "07350 401// 05590 303// 03120 105// 01780 007//");
    decoder.lastWindPresC = 9999;
    decoder.decodeSection2();
    EXPECT_EQ(decoder.allLevels().size(), 9U);
    EXPECT_EQ(decoder.rest(), "");
}

TEST(SectionTwo, QueueThatIsEmptyBeforeThatIsAFaultAndTheLevelsStayFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "99013 124// 27015");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection2(); }), "At least 2 code groups are required. Error detected at ...");
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(SURFACE, {{PRES, 1013}, {TDRY, 12.4}, {WDIR, 270}, {WSPD, 15}})}));
}

TEST(SectionTwo, SurfaceCanNeitherBeSkippedNorRepeated) {
    OpenDecoder skipped = OpenDecoder::inPart(0, "99013 124// 27015 92805 120// 27015 88999");
    EXPECT_EQ(faultOf([&] { skipped.decodeSection2(); }),
              std::string(WRONG_CODE) + " Error detected at 92805 120// 27015 88999 ...");
    EXPECT_EQ(skipped.allLevels().size(), 1U);
    EXPECT_EQ(skipped.rest(), "92805 120// 27015 88999");

    OpenDecoder repeated = OpenDecoder::inPart(0, "99013 124// 27015 99013 124// 27015");
    EXPECT_EQ(faultOf([&] { repeated.decodeSection2(); }),
              std::string(WRONG_CODE) + " Error detected at 99013 124// 27015 ...");
    EXPECT_EQ(repeated.rest(), "99013 124// 27015");
}

TEST(SectionTwo, OnlyTheTropopauseIndicatorEndsItEarly) {
    for (const std::string group : {"77999", "66250", "31313", "TTBB", "8"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(0, "99013 124// 27015 " + group + " 81102");
        EXPECT_EQ(faultOf([&] { decoder.decodeSection2(); }),
                  std::string(WRONG_CODE) + " Error detected at " + group + " 81102 ...");
        EXPECT_EQ(decoder.rest(), group + " 81102");
    }
}

TEST(SectionTwo, PartCReplacesTheTableOfPartA) {
    OpenDecoder decoder = OpenDecoder::inPart(2, "88999");
    decoder.decodeSection2();
    const std::vector<double> partC = {70, 50, 30, 20, 10, 7, 5, 3, 1};
    EXPECT_EQ(pressuresOf(decoder.mandatoryA), partC);
    EXPECT_EQ(pressuresOf(decoder.mandatoryC), partC);
    EXPECT_EQ(decoder.mandatoryA.at(0).code, "70");
    EXPECT_EQ(decoder.mandatoryA.at(8).code, "01");

    decoder.part = 0;
    decoder.queue("99013 124// 27015 88999");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection2(); }),
              std::string(WRONG_CODE) + " Error detected at 99013 124// 27015 88999 ...");
}

TEST(SectionTwo, PartALeavesBothTablesAsTheyAre) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88999");
    decoder.decodeSection2();
    EXPECT_EQ(pressuresOf(decoder.mandatoryA),
              (std::vector<double>{0, 1000, 925, 850, 700, 500, 400, 300, 250, 200, 150, 100}));
    EXPECT_EQ(pressuresOf(decoder.mandatoryC), (std::vector<double>{70, 50, 30, 20, 10, 7, 5, 3, 1}));
}

TEST(SectionTwo, EveryPartButAUsesTheTableOfPartC) {
    OpenDecoder decoder = OpenDecoder::inPart(3, "70850 124// 27015 88999");
    decoder.lastWindPresA = 9999;
    decoder.decodeSection2();
    EXPECT_TRUE(sameLevels(decoder.allLevels(),
                           {levelOf(MANDATORY, {{PRES, 70}, {HEIGHT, 850}, {TDRY, 12.4}, {WDIR, 270}, {WSPD, 15}})}));
    EXPECT_EQ(decoder.rest(), "88999");
}

TEST(SectionTwo, WholePartAHasWindsUpToTheIndicatedLevel) {
    const Corvane report("TTAA 56127 72201 99014 32259 11504 00140 30057 11506 92805 25058 12010 85540 20050 13015 "
                         "70160 10030 14020 50588 05705 40760 15912 88999 77999");
    EXPECT_TRUE(sameLevels(
        report.allLevels(),
        {levelOf(SURFACE, {{PRES, 1014}, {TDRY, 32.2}, {DP, 32.2 - 9.0}, {WDIR, 115}, {WSPD, 4 * KNOT}}),
         levelOf(MANDATORY,
                 {{PRES, 1000}, {HEIGHT, 140}, {TDRY, 30.0}, {DP, 30.0 - 7.0}, {WDIR, 115}, {WSPD, 6 * KNOT}}),
         levelOf(MANDATORY,
                 {{PRES, 925}, {HEIGHT, 805}, {TDRY, 25.0}, {DP, 25.0 - 8.0}, {WDIR, 120}, {WSPD, 10 * KNOT}}),
         levelOf(MANDATORY,
                 {{PRES, 850}, {HEIGHT, 1540}, {TDRY, 20.0}, {DP, 20.0 - 5.0}, {WDIR, 130}, {WSPD, 15 * KNOT}}),
         levelOf(MANDATORY,
                 {{PRES, 700}, {HEIGHT, 3160}, {TDRY, 10.0}, {DP, 10.0 - 3.0}, {WDIR, 140}, {WSPD, 20 * KNOT}}),
         levelOf(MANDATORY, {{PRES, 500}, {HEIGHT, 5880}, {TDRY, -5.7}, {DP, -5.7 - 0.5}}),
         levelOf(MANDATORY, {{PRES, 400}, {HEIGHT, 7600}, {TDRY, -15.9}, {DP, -15.9 - 1.2}})}));
}

TEST(SectionTwo, WholeReportTakesTheStandardSurfacesOfPartAThenThoseOfPartC) {
    const Corvane report("TTAA 0612/ 72201 99987 32259 11004 00620 124// 88999 77999 "
                         "TTCC 06123 72201 70850 63561 27030 50060 57760 28040 30380 52160 29050 20640 48159 88999 "
                         "77999");
    EXPECT_TRUE(sameLevels(
        report.allLevels(),
        {levelOf(SURFACE, {{PRES, 987}, {TDRY, 32.2}, {DP, 32.2 - 9.0}, {WDIR, 110}, {WSPD, 4}}),
         levelOf(MANDATORY, {{PRES, 1000}, {HEIGHT, -120}, {TDRY, 12.4}}),
         levelOf(MANDATORY, {{PRES, 70}, {HEIGHT, 18500}, {TDRY, -63.5}, {DP, -63.5 - 11.0}, {WDIR, 270}, {WSPD, 30}}),
         levelOf(MANDATORY, {{PRES, 50}, {HEIGHT, 20600}, {TDRY, -57.7}, {DP, -57.7 - 10.0}, {WDIR, 280}, {WSPD, 40}}),
         levelOf(MANDATORY, {{PRES, 30}, {HEIGHT, 23800}, {TDRY, -52.1}, {DP, -52.1 - 10.0}, {WDIR, 290}, {WSPD, 50}}),
         levelOf(MANDATORY, {{PRES, 20}, {HEIGHT, 26400}, {TDRY, -48.1}, {DP, -48.1 - 9.0}})}));
}

TEST(SectionTwo, IndicatorZeroOfPartCGivesEveryLevelAWind) {
    const Corvane report("TTCC 06120 72201 70850 601// 27030 50060 603// 28040 30380 505// 29050 20640 507// 30060 "
                         "10100 409// 31070 07350 401// 32080 05590 303// 33090 03120 105// 34100 01780 007// 35110");
    const std::vector<Corvane::Level> levels = report.allLevels();
    ASSERT_EQ(levels.size(), 9U);
    for (std::size_t index = 0; index < levels.size(); ++index) {
        SCOPED_TRACE(index);
        EXPECT_DOUBLE_EQ(levels[index].fields.at(WDIR), 270.0 + 10.0 * static_cast<double>(index));
        EXPECT_DOUBLE_EQ(levels[index].fields.at(WSPD), 30.0 + 10.0 * static_cast<double>(index));
    }
}

TEST(MandatoryHeight, TheSignOfZeroIsKeptWhereNothingIsAdded) {
    // "-00" is read as minus zero, and ten times that is minus zero.
    OpenDecoder decoder = OpenDecoder::inPart(0, "");
    EXPECT_TRUE(std::signbit(decoder.mandatoryHeight("50", -0.0)));
    EXPECT_TRUE(std::signbit(decoder.mandatoryHeight("40", -0.0)));
    EXPECT_TRUE(std::signbit(decoder.mandatoryHeight("92", -0.0)));
    EXPECT_TRUE(std::signbit(decoder.mandatoryHeight("00", -0.0)));
    EXPECT_DOUBLE_EQ(decoder.mandatoryHeight("30", -0.0), 10000.0);
}
