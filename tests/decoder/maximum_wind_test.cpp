// Section 4: maximum winds 77PPP or 66PPP ddfff, perhaps with a shear group 4vbvbvava; or 77999 when there is none.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

using Fields = std::map<Corvane::LEVEL_FIELD, double>;

// The fields of a maximum wind at 250 hPa of 85 m/s from the west, and these.
Fields westerly(Fields more) {
    more.insert({{PRES, 250}, {WDIR, 270}, {WSPD, 85}});
    return more;
}

struct PressureRow {
    const char* digits;
    double pressure;
};

const PressureRow PRESSURES[] = {
    // hectopascals as reported
    {"250", 250},
    {"150", 150},
    {"000", 0},
    {"099", 99},
    {"998", 998},
    // no number: zero
    {"", 0},
    {"ABC", 0},
    {"/50", 0},
    // a leading number, taken as written
    {"25/", 25},
    {"+12", 12},
    {"-5.", -5},
    {".5", 0.5},
    {"1e1", 10},
    {"1e", 0},
    {"0x1", 0},
    // what follows the fifth character is not read
    {"2501", 250},
    {"9990", 999},
};

struct ShearRow {
    const char* group;
    Fields shear;
};

const ShearRow SHEARS[] = {
    // both values, one of them, none
    {"40510", {{VA, 5}, {VB, 10}}},
    {"49900", {{VA, 99}, {VB, 0}}},
    {"4//10", {{VB, 10}}},
    {"405//", {{VA, 5}}},
    {"4////", {}},
    // a value that is not a number is zero; a leading number counts
    {"4AB10", {{VA, 0}, {VB, 10}}},
    {"4/510", {{VA, 0}, {VB, 10}}},
    {"45/1/", {{VA, 5}, {VB, 1}}},
    {"4+5-5", {{VA, 5}, {VB, -5}}},
    {"4.55.", {{VA, 0.5}, {VB, 5}}},
    {"41e0x", {{VA, 0}, {VB, 0}}},
    // three and four characters: the second value is zero, or its first digit
    {"405", {{VA, 5}, {VB, 0}}},
    {"4//", {{VB, 0}}},
    {"4051", {{VA, 5}, {VB, 1}}},
    {"405/", {{VA, 5}, {VB, 0}}},
    // what follows the fifth character is not read
    {"405109", {{VA, 5}, {VB, 10}}},
    // an opener that begins with 4 is taken for shears
    {"41414", {{VA, 14}, {VB, 14}}},
};

}  // namespace

TEST(MaximumWind, PressureIsNotScaledInAnyPart) {
    for (const PressureRow& row : PRESSURES) {
        for (const std::string indicator : {"77", "66"}) {
            for (const int part : {0, 1, 2, 3}) {
                SCOPED_TRACE(indicator + row.digits + " in part " + std::to_string(part));
                OpenDecoder decoder = OpenDecoder::inPart(part, indicator + row.digits + " 27085 31313");
                decoder.decodeMaxWind();
                EXPECT_TRUE(sameLevels(decoder.allLevels(),
                                       {levelOf(MAXWIND, {{PRES, row.pressure}, {WDIR, 270}, {WSPD, 85}})}));
                EXPECT_EQ(decoder.rest(), "31313");
            }
        }
    }
}

TEST(MaximumWind, ShearGroupGivesTheValueBelowAndThenTheValueAbove) {
    for (const ShearRow& row : SHEARS) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = OpenDecoder::inPart(0, "77250 27085 " + std::string(row.group) + " 31313");
        decoder.decodeMaxWind();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MAXWIND, westerly(row.shear))}));
        EXPECT_EQ(decoder.rest(), "31313");
    }
}

TEST(MaximumWind, KnotsOfSpeedAndShearAreConverted) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "77250 27085 40510");
    decoder._windsInKnots = true;
    decoder.decodeMaxWind();
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(),
                   {levelOf(MAXWIND, {{PRES, 250}, {WDIR, 270}, {WSPD, 85 * KNOT}, {VA, 5 * KNOT}, {VB, 10 * KNOT}})}));
    const Corvane::Level level = decoder.allLevels().at(0);
    EXPECT_DOUBLE_EQ(level.fields.at(WSPD), 43.724);
    EXPECT_DOUBLE_EQ(level.fields.at(VA), 2.572);
    EXPECT_DOUBLE_EQ(level.fields.at(VB), 5.144);
}

TEST(MaximumWind, OnlyAGroupThatBeginsWithFourIsAShearGroup) {
    for (const std::string next : {"31313", "51515", "77999", "66180", "X4", "04"}) {
        SCOPED_TRACE(next);
        OpenDecoder decoder = OpenDecoder::inPart(0, "77250 27085 " + next);
        decoder.decodeMaxWind();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MAXWIND, westerly({}))}));
        EXPECT_EQ(decoder.rest(), next);
    }
}

TEST(MaximumWind, EndOfTheReportAfterTheWindMeansNoShear) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "77250 27085");
    decoder.decodeMaxWind();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MAXWIND, westerly({}))}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(MaximumWind, LevelWithoutAnyFieldIsFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "66/// ///// 31313");
    decoder.decodeMaxWind();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MAXWIND)}));
    EXPECT_EQ(decoder.rest(), "31313");
}

TEST(MaximumWind, ShearIsReadEvenWithoutPressureAndWind) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "77/// 27/// 4//10");
    decoder.decodeMaxWind();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MAXWIND, {{VB, 10}})}));
}

TEST(MaximumWind, TwoGroupsMustRemain) {
    OpenDecoder one = OpenDecoder::inPart(0, "77250");
    EXPECT_EQ(faultOf([&] { one.decodeMaxWind(); }),
              "At least 2 code groups are required. Error detected at77250  ...");
    EXPECT_EQ(one.rest(), "77250");
    OpenDecoder none = OpenDecoder::inPart(0, "");
    EXPECT_EQ(faultOf([&] { none.decodeMaxWind(); }), "At least 2 code groups are required. Error detected at ...");
}

TEST(MaximumWind, AnotherIndicatorIsAFault) {
    for (const std::string group : {"88250", "7", "67250", "X7725"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(0, group + " 27085 g3 g4 g5 g6 g7");
        EXPECT_EQ(faultOf([&] { decoder.decodeMaxWind(); }), "The max wind observation is incorrectly coded. "
                                                             "Error detected at " +
                                                                 group + " 27085 g3 g4 g5 g6 ...");
        EXPECT_EQ(decoder.rest(), group + " 27085 g3 g4 g5 g6 g7");
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    }
}

TEST(MaximumWind, ShearGroupOfOneOrTwoCharactersIsOutOfRange) {
    for (const std::string group : {"4", "40", "4/"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(0, "77250 27085 " + group + " 31313");
        EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeMaxWind(); }));
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
        EXPECT_EQ(decoder.rest(), group + " 31313");
    }
}

TEST(MaximumWind, WindGroupOfOneCharacterIsOutOfRange) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "77250 2 31313");
    EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeMaxWind(); }));
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "2 31313");
}

TEST(SectionFour, EmptyQueueHasNoMaximumWind) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "");
    decoder.decodeSection4();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
}

TEST(SectionFour, AnotherGroupInFrontMeansThatTheSectionIsAbsent) {
    for (const std::string group : {"31313", "88250", "51515", "TTBB", "7", "40510"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(0, group + " 27085");
        decoder.decodeSection4();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
        EXPECT_EQ(decoder.rest(), group + " 27085");
    }
}

TEST(SectionFour, NoMaximumWindTakesOnlyItsGroup) {
    OpenDecoder alone = OpenDecoder::inPart(0, "77999");
    alone.decodeSection4();
    EXPECT_TRUE(sameLevels(alone.allLevels(), {}));
    EXPECT_EQ(alone.rest(), "");

    OpenDecoder followed = OpenDecoder::inPart(0, "77999 77250 27085");
    followed.decodeSection4();
    EXPECT_TRUE(sameLevels(followed.allLevels(), {}));
    EXPECT_EQ(followed.rest(), "77250 27085");
}

TEST(SectionFour, NoFurtherMaximumWindIsTakenAfterAMaximumWind) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "77250 27085 77999 66180 28040");
    decoder.decodeSection4();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MAXWIND, westerly({}))}));
    EXPECT_EQ(decoder.rest(), "66180 28040");
}

TEST(SectionFour, OnlySeventySevensSayThatThereIsNoMaximumWind) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "66999 27085 31313");
    decoder.decodeSection4();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MAXWIND, {{PRES, 999}, {WDIR, 270}, {WSPD, 85}})}));
    EXPECT_EQ(decoder.rest(), "31313");
}

TEST(SectionFour, MaximumWindsAreFiledInReportOrderUntilAnotherGroup) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "77250 27085 40510 66180 28590 77400 30060 4//07 31313 58708 81102");
    decoder.decodeSection4();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MAXWIND, westerly({{VA, 5}, {VB, 10}})),
                                                 levelOf(MAXWIND, {{PRES, 180}, {WDIR, 285}, {WSPD, 90}}),
                                                 levelOf(MAXWIND, {{PRES, 400}, {WDIR, 300}, {WSPD, 60}, {VB, 7}})}));
    EXPECT_EQ(decoder.rest(), "31313 58708 81102");
}

TEST(SectionFour, MissingWindGroupIsAFaultAndEarlierLevelsStayFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "77250 27085 66180");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection4(); }),
              "At least 2 code groups are required. Error detected at66180  ...");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MAXWIND, westerly({}))}));
    EXPECT_EQ(decoder.rest(), "66180");
}

TEST(SectionFour, WholePartAHoldsItsMaximumWinds) {
    const Corvane report("TTAA 5612/ 72201 99014 32259 11504 88999 77250 27085 40510 66180 28590 31313 58708 81102");
    EXPECT_TRUE(
        sameLevels(report.levels({MAXWIND}),
                   {levelOf(MAXWIND, {{PRES, 250}, {WDIR, 270}, {WSPD, 85 * KNOT}, {VA, 5 * KNOT}, {VB, 10 * KNOT}}),
                    levelOf(MAXWIND, {{PRES, 180}, {WDIR, 285}, {WSPD, 90 * KNOT}})}));
    EXPECT_EQ(report.allLevels().size(), 3U);
    EXPECT_EQ(report.obsTime(), 1102);
}

TEST(SectionFour, WholePartCDoesNotScaleThePressure) {
    const Corvane report("TTCC 0612/ 72201 88999 77150 27085");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(MAXWIND, {{PRES, 150}, {WDIR, 270}, {WSPD, 85}})}));
}
