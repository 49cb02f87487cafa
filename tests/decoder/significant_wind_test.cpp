// Section 6: significant levels of wind behind 21212, nnPPP ddfff, in parts B and D.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct PressureRow {
    const char* group;
    double partB;
    double partD;
    double elsewhere;
};

const PressureRow PRESSURES[] = {
    // part B: a thousand is left out below 100; part D: tenths
    {"00015", 1015, 1.5, 15},
    {"00000", 1000, 0, 0},
    {"00099", 1099, 9.9, 99},
    {"11100", 100, 10.0, 100},
    {"11101", 101, 10.1, 101},
    {"11850", 850, 85.0, 850},
    {"11500", 500, 50.0, 500},
    {"99999", 999, 99.9, 999},
    // any two characters number the level
    {"//850", 850, 85.0, 850},
    {"AB850", 850, 85.0, 850},
    {"21212", 212, 21.2, 212},
    {"41414", 414, 41.4, 414},
    {"51515", 515, 51.5, 515},
    {"69696", 696, 69.6, 696},
    // no number: zero
    {"11///", 1000, 0, 0},
    {"11/50", 1000, 0, 0},
    {"11ABC", 1000, 0, 0},
    // a leading number, as it stands: signs, points, exponents
    {"1185/", 1085, 8.5, 85},
    {"11+12", 1012, 1.2, 12},
    {"11-5.", 995, -0.5, -5},
    {"11.5", 1000.5, 0.05, 0.5},
    {"111e1", 1010, 1.0, 10},
    {"111e2", 100, 10.0, 100},
    {"1112e", 1000, 0, 0},
    {"110x1", 1000, 0, 0},
    // fewer than three figures
    {"118", 1008, 0.8, 8},
    {"1185", 1085, 8.5, 85},
    // what stands behind the fifth character is not read
    {"118509", 850, 85.0, 850},
};

}  // namespace

TEST(SectionSix, PressureIsScaledByPart) {
    for (const PressureRow& row : PRESSURES) {
        SCOPED_TRACE(row.group);
        for (const int part : {0, 1, 2, 3, 4}) {
            SCOPED_TRACE(part);
            const double pressure = part == 1 ? row.partB : part == 3 ? row.partD : row.elsewhere;
            OpenDecoder decoder = OpenDecoder::inPart(part, "21212 " + std::string(row.group) + " 27010");
            decoder.decodeSection6();
            EXPECT_TRUE(
                sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, pressure}, {WDIR, 270}, {WSPD, 10}})}));
            EXPECT_EQ(decoder.rest(), "");
        }
    }
}

TEST(SectionSix, LevelsAreFiledInReportOrderUpToSectionSeven) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "21212 00015 27010 11850 28520 22850 29530 31313 58708 81102");
    decoder.decodeSection6();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1015}, {WDIR, 270}, {WSPD, 10}}),
                                                 levelOf(SIGNIFICANT, {{PRES, 850}, {WDIR, 285}, {WSPD, 20}}),
                                                 levelOf(SIGNIFICANT, {{PRES, 850}, {WDIR, 295}, {WSPD, 30}})}));
    EXPECT_EQ(decoder.rest(), "31313 58708 81102");
}

TEST(SectionSix, KnotsAreConverted) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "21212 11850 27010");
    decoder._windsInKnots = true;
    decoder.decodeSection6();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 850}, {WDIR, 270}, {WSPD, 10 * KNOT}})}));
}

TEST(SectionSix, LevelWithoutWindIsFiledWithItsPressure) {
    for (const std::string wind : {"/////", "27///", "//015"}) {
        SCOPED_TRACE(wind);
        OpenDecoder decoder = OpenDecoder::inPart(1, "21212 11850 " + wind);
        decoder.decodeSection6();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 850}})}));
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(SectionSix, EmptyQueueHasNoLevels) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "");
    decoder.decodeSection6();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
}

TEST(SectionSix, SectionSevenInFrontMeansThatTheSectionIsAbsent) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "31313 58708 81102");
    decoder.decodeSection6();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "31313 58708 81102");
}

TEST(SectionSix, OpenerAloneIsTaken) {
    OpenDecoder last = OpenDecoder::inPart(1, "21212");
    last.decodeSection6();
    EXPECT_TRUE(sameLevels(last.allLevels(), {}));
    EXPECT_EQ(last.rest(), "");

    OpenDecoder followed = OpenDecoder::inPart(1, "21212 31313 58708");
    followed.decodeSection6();
    EXPECT_TRUE(sameLevels(followed.allLevels(), {}));
    EXPECT_EQ(followed.rest(), "31313 58708");
}

TEST(SectionSix, AnyOtherGroupInFrontIsAFault) {
    for (const std::string group : {"41414", "00015", "51515", "TTDD", "2", "212121"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(1, group + " 27010 g3 g4 g5 g6 g7");
        EXPECT_EQ(faultOf([&] { decoder.decodeSection6(); }),
                  "Section 6 must begin with 21212. Error detected at " + group + " 27010 g3 g4 g5 g6 ...");
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
        EXPECT_EQ(decoder.rest(), group + " 27010 g3 g4 g5 g6 g7");
    }
}

TEST(SectionSix, OnlySectionSevenEndsIt) {
    for (const std::string group : {"21212", "41414", "51515", "59595", "61616", "62626", "69696", "TTDD"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(1, "21212 11850 27010 " + group + " 28020 31313");
        decoder.decodeSection6();
        EXPECT_EQ(decoder.allLevels().size(), 2U);
        EXPECT_EQ(decoder.rest(), "31313");
    }
}

TEST(SectionSix, OddGroupTakesTheOpenerOfSectionSevenAsItsWind) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "21212 11850 31313");
    decoder.decodeSection6();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 850}, {WDIR, 310}, {WSPD, 313}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(SectionSix, OddGroupAtTheEndIsAFaultAndEarlierLevelsStayFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "21212 00015 27010 11850");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection6(); }),
              "At least 2 code groups are required. Error detected at11850  ...");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1015}, {WDIR, 270}, {WSPD, 10}})}));
    EXPECT_EQ(decoder.rest(), "11850");
}

TEST(SectionSix, LevelNumberAloneTakesThePairAndFilesNothing) {
    for (const int part : {1, 3}) {
        SCOPED_TRACE(part);
        OpenDecoder decoder = OpenDecoder::inPart(part, "21212 11700 27010 22 28020 33500 /////");
        decoder.decodeSection6();
        EXPECT_TRUE(sameLevels(decoder.allLevels(),
                               {levelOf(SIGNIFICANT, {{PRES, part == 1 ? 700.0 : 70.0}, {WDIR, 270}, {WSPD, 10}}),
                                levelOf(SIGNIFICANT, {{PRES, part == 1 ? 500.0 : 50.0}})}));
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(SectionSix, GroupOfOneCharacterIsOutOfRangeBehindTheOpener) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "21212 2 27010");
    EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeSection6(); }));
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "2 27010");
}

TEST(SectionSix, WindGroupOfOneCharacterIsOutOfRangeBehindThePressureGroup) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "21212 11850 2 31313");
    EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeSection6(); }));
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "2 31313");
}

TEST(SectionSix, WholePartBHoldsTemperaturesThenWinds) {
    const Corvane report("TTBB 0600/ 72201 00014 32259 21212 00014 11504 11850 ///// 31313 58708 81102");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}, {DP, 32.2 - 9.0}}),
                                                levelOf(SIGNIFICANT, {{PRES, 1014}, {WDIR, 115}, {WSPD, 4}}),
                                                levelOf(SIGNIFICANT, {{PRES, 850}})}));
    EXPECT_EQ(report.obsTime(), 1102);
}

TEST(SectionSix, WholePartDGivesItsPressuresInTenths) {
    const Corvane report("TTDD 5600/ 72201 11700 601// 21212 11500 27010 22035 28520");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 70.0}, {TDRY, -60.1}}),
                                                levelOf(SIGNIFICANT, {{PRES, 50.0}, {WDIR, 270}, {WSPD, 10 * KNOT}}),
                                                levelOf(SIGNIFICANT, {{PRES, 3.5}, {WDIR, 285}, {WSPD, 20 * KNOT}})}));
}

TEST(SectionSix, WholePartBWithTheOpenerAtItsEndHasTemperaturesAlone) {
    const Corvane report("TTBB 0600/ 72201 00014 322// 21212");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}})}));
}

TEST(SectionSix, WholePartBWithoutOpenerHasTemperaturesAlone) {
    const Corvane report("TTBB 0600/ 72201 00014 322// 11850 124//");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}}),
                                                levelOf(SIGNIFICANT, {{PRES, 850}, {TDRY, 12.4}})}));
}

TEST(SectionSix, OddGroupAtTheEndRejectsAWholeReport) {
    EXPECT_EQ(faultOf([] { Corvane("TTBB 0600/ 72201 21212 00014 11504 11850"); }),
              "At least 2 code groups are required. Error detected at11850  ...");
}
