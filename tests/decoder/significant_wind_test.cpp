// Section 6: significant levels of wind after 21212, nnPPP ddfff, in parts B and D.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"
#include "support/SignificantPressures.h"

#include <gtest/gtest.h>

#include <string>

TEST(SectionSix, PressureIsScaledByPart) {
    for (const SignificantPressure& row : SIGNIFICANT_PRESSURES) {
        SCOPED_TRACE(row.group);
        for (const int part : {0, 1, 2, 3, 4}) {
            SCOPED_TRACE(part);
            OpenDecoder decoder = OpenDecoder::inPart(part, "21212 " + std::string(row.group) + " 27010");
            decoder.decodeSection6();
            EXPECT_TRUE(sameLevels(decoder.allLevels(),
                                   {levelOf(SIGNIFICANT, {{PRES, row.in(part)}, {WDIR, 270}, {WSPD, 10}})}));
            EXPECT_EQ(decoder.rest(), "");
        }
    }
}

TEST(SectionSix, SecondOpenerIsReadAsAPressure) {
    for (const int part : {0, 1, 2, 3, 4}) {
        SCOPED_TRACE(part);
        OpenDecoder decoder = OpenDecoder::inPart(part, "21212 21212 27010");
        decoder.decodeSection6();
        EXPECT_TRUE(sameLevels(decoder.allLevels(),
                               {levelOf(SIGNIFICANT, {{PRES, part == 3 ? 21.2 : 212}, {WDIR, 270}, {WSPD, 10}})}));
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

TEST(SectionSix, OpenerWithoutLevelsIsTaken) {
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

TEST(SectionSix, PairWithoutPressureDigitsIsTakenAndNotFiled) {
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

TEST(SectionSix, GroupOfOneCharacterIsOutOfRangeAfterTheOpener) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "21212 2 27010");
    EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeSection6(); }));
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "2 27010");
}

TEST(SectionSix, WindGroupOfOneCharacterIsOutOfRangeAfterThePressureGroup) {
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

TEST(SectionSix, WholePartBWithTheOpenerAtItsEndHasOnlyTemperatures) {
    const Corvane report("TTBB 0600/ 72201 00014 322// 21212");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}})}));
}

TEST(SectionSix, WholePartBWithoutOpenerHasOnlyTemperatures) {
    const Corvane report("TTBB 0600/ 72201 00014 322// 11850 124//");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}}),
                                                levelOf(SIGNIFICANT, {{PRES, 850}, {TDRY, 12.4}})}));
}
