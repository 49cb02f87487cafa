// Section 3: tropopauses 88PPP TTTDD ddfff, or 88999 when none was observed.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct PressureRow {
    const char* group;
    double partA;
    double partC;
};

const PressureRow PRESSURES[] = {
    // whole hectopascals in part A, tenths in part C
    {"88250", 250, 25.0},
    {"88925", 925, 92.5},
    {"88000", 0, 0},
    {"88099", 99, 9.9},
    {"88998", 998, 99.8},
    // no number: zero
    {"88", 0, 0},
    {"88ABC", 0, 0},
    {"88/50", 0, 0},
    // a leading number, taken as written
    {"8825/", 25, 2.5},
    {"88+12", 12, 1.2},
    {"88-5.", -5, -0.5},
    {"88.5", 0.5, 0.05},
    {"881e1", 10, 1.0},
    {"881e", 0, 0},
    {"880x1", 0, 0},
    // what follows the fifth character is not read
    {"882501", 250, 25.0},
    {"889990", 999, 99.9},
};

}  // namespace

TEST(Tropopause, PressureIsInTenthsInPartCOnly) {
    for (const PressureRow& row : PRESSURES) {
        SCOPED_TRACE(row.group);
        for (const int part : {0, 1, 2, 3}) {
            SCOPED_TRACE(part);
            OpenDecoder decoder = OpenDecoder::inPart(part, std::string(row.group) + " 124// ///// 77999");
            decoder.decodeTrop();
            EXPECT_TRUE(sameLevels(decoder.allLevels(),
                                   {levelOf(TROPOPAUSE, {{PRES, part == 2 ? row.partC : row.partA}, {TDRY, 12.4}})}));
            EXPECT_EQ(decoder.rest(), "77999");
        }
    }
}

TEST(Tropopause, TemperatureAndDewPointAreFiledAndTheWindNever) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88250 58156 27015 77999");
    decoder._windsInKnots = true;
    decoder.decodeTrop();
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, -58.1}, {DP, -58.1 - 6.0}})}));
    EXPECT_EQ(decoder.rest(), "77999");
}

TEST(Tropopause, TemperatureNeedsNeitherDewPointNorWind) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88250 123// 27///");
    decoder.decodeTrop();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, -12.3}})}));
}

TEST(Tropopause, WindCountsTheDewPointAsGiven) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88250 123// 27015");
    decoder.decodeTrop();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, -12.3}, {DP, NOT_GIVEN}})}));
}

TEST(Tropopause, WindCountsTemperatureAndDewPointAsGiven) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88250 ///// 27015");
    decoder.decodeTrop();
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, NOT_GIVEN}, {DP, NOT_GIVEN}})}));
}

TEST(Tropopause, LevelWithoutAnyFieldIsFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88/// ///// ///// 77999");
    decoder.decodeTrop();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE)}));
    EXPECT_EQ(decoder.rest(), "77999");
}

TEST(Tropopause, LevelWithOnlyAPressureOrOnlyATemperatureIsFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88250 ///// ///// 88/// 124// /////");
    decoder.decodeTrop();
    decoder.decodeTrop();
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 250}}), levelOf(TROPOPAUSE, {{TDRY, 12.4}})}));
}

TEST(Tropopause, OneGroupMustRemain) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "");
    EXPECT_EQ(faultOf([&] { decoder.decodeTrop(); }), "At least 1 code groups are required. Error detected at ...");
}

TEST(Tropopause, AnotherIndicatorIsAFault) {
    for (const std::string group : {"77250", "8", "99250", "X8825"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(0, group + " 58156 27015 g4 g5 g6 g7 g8");
        EXPECT_EQ(faultOf([&] { decoder.decodeTrop(); }), "The tropopause observation is incorrectly coded. "
                                                          "Error detected at " +
                                                              group + " 58156 27015 g4 g5 g6 ...");
        EXPECT_EQ(decoder.rest(), group + " 58156 27015 g4 g5 g6 g7 g8");
    }
}

TEST(Tropopause, TwoGroupsMustFollowThePressure) {
    OpenDecoder one = OpenDecoder::inPart(0, "88250 58156");
    EXPECT_EQ(faultOf([&] { one.decodeTrop(); }), "At least 2 code groups are required. Error detected at58156  ...");
    EXPECT_EQ(one.rest(), "58156");
    EXPECT_TRUE(sameLevels(one.allLevels(), {}));

    OpenDecoder none = OpenDecoder::inPart(0, "88250");
    EXPECT_EQ(faultOf([&] { none.decodeTrop(); }), "At least 2 code groups are required. Error detected at ...");
    EXPECT_EQ(none.rest(), "");
}

TEST(Tropopause, ForbiddenDepressionIsAFaultAfterThePressureGroup) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88250 58151 27015 77999");
    EXPECT_EQ(faultOf([&] { decoder.decodeTrop(); }),
              "Dewpoint depression code may not be between 51 to 56. Error detected at 58151 27015 77999 ...");
    EXPECT_EQ(decoder.rest(), "58151 27015 77999");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
}

TEST(Tropopause, GroupsTooShortAreOutOfRange) {
    OpenDecoder temperature = OpenDecoder::inPart(0, "88250 58 27015");
    EXPECT_TRUE(findsGroupTooShort([&] { temperature.decodeTrop(); }));
    EXPECT_EQ(temperature.rest(), "58 27015");
    OpenDecoder wind = OpenDecoder::inPart(0, "88250 58156 2");
    EXPECT_TRUE(findsGroupTooShort([&] { wind.decodeTrop(); }));
    EXPECT_EQ(wind.rest(), "2");
    EXPECT_TRUE(sameLevels(wind.allLevels(), {}));
}

TEST(SectionThree, EmptyQueueHasNoTropopause) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "");
    decoder.decodeSection3();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
}

TEST(SectionThree, AnotherGroupInFrontMeansThatTheSectionIsAbsent) {
    for (const std::string group : {"77999", "66250", "31313", "51515", "TTBB", "8", "X"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(0, group + " 58156 27015");
        decoder.decodeSection3();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
        EXPECT_EQ(decoder.rest(), group + " 58156 27015");
    }
}

TEST(SectionThree, NoTropopauseObservedTakesOnlyItsGroup) {
    OpenDecoder alone = OpenDecoder::inPart(0, "88999");
    alone.decodeSection3();
    EXPECT_TRUE(sameLevels(alone.allLevels(), {}));
    EXPECT_EQ(alone.rest(), "");

    OpenDecoder followed = OpenDecoder::inPart(0, "88999 88250 58156 27015 77999");
    followed.decodeSection3();
    EXPECT_TRUE(sameLevels(followed.allLevels(), {}));
    EXPECT_EQ(followed.rest(), "88250 58156 27015 77999");
}

TEST(SectionThree, OneTropopauseBeforeTheMaximumWind) {
    for (const std::string next : {"77999", "77250", "66250", "77", "66"}) {
        SCOPED_TRACE(next);
        OpenDecoder decoder = OpenDecoder::inPart(0, "88250 58156 27015 " + next);
        decoder.decodeSection3();
        EXPECT_TRUE(
            sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, -58.1}, {DP, -58.1 - 6.0}})}));
        EXPECT_EQ(decoder.rest(), next);
    }
}

TEST(SectionThree, TropopausesAreFiledInReportOrder) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88250 58156 27015 88150 601// ///// 77999");
    decoder.decodeSection3();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, -58.1}, {DP, -58.1 - 6.0}}),
                                                 levelOf(TROPOPAUSE, {{PRES, 150}, {TDRY, -60.1}})}));
    EXPECT_EQ(decoder.rest(), "77999");
}

TEST(SectionThree, NoFurtherTropopauseIsTakenAfterATropopause) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88250 124// ///// 88999 31313");
    decoder.decodeSection3();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, 12.4}})}));
    EXPECT_EQ(decoder.rest(), "31313");
}

TEST(SectionThree, EndOfTheReportEndsItWithoutAFault) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88250 124// /////");
    decoder.decodeSection3();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, 12.4}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(SectionThree, AnythingElseAfterATropopauseIsAFault) {
    for (const std::string group : {"31313", "51515", "TTBB", "7", "8"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(0, "88250 124// ///// " + group + " g2 g3 g4 g5 g6 g7");
        EXPECT_EQ(faultOf([&] { decoder.decodeSection3(); }), "The tropopause observation is incorrectly coded. "
                                                              "Error detected at " +
                                                                  group + " g2 g3 g4 g5 g6 ...");
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, 12.4}})}));
        EXPECT_EQ(decoder.rest(), group + " g2 g3 g4 g5 g6 g7");
    }
}

TEST(SectionThree, NoTropopauseGroupWithAnythingMoreInItIsATropopause) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "88999X 124// ///// 77999");
    decoder.decodeSection3();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 999}, {TDRY, 12.4}})}));
    EXPECT_EQ(decoder.rest(), "77999");
}

TEST(SectionThree, WholePartAHoldsItsTropopauses) {
    const Corvane report("TTAA 5612/ 72201 99014 32259 11504 88250 58156 27015 88150 601// ///// 77999");
    EXPECT_TRUE(
        sameLevels(report.levels({TROPOPAUSE}), {levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, -58.1}, {DP, -58.1 - 6.0}}),
                                                 levelOf(TROPOPAUSE, {{PRES, 150}, {TDRY, -60.1}})}));
    EXPECT_EQ(report.allLevels().size(), 3U);
}

TEST(SectionThree, WholePartCGivesItsTropopauseInTenths) {
    const Corvane report("TTCC 5612/ 72201 88925 58156 27015 77999");
    EXPECT_TRUE(
        sameLevels(report.allLevels(), {levelOf(TROPOPAUSE, {{PRES, 92.5}, {TDRY, -58.1}, {DP, -58.1 - 6.0}})}));
}
