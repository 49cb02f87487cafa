// Section 5: significant levels of temperature and humidity, nnPPP TTTDD, in parts B and D.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"
#include "support/SignificantPressures.h"

#include <gtest/gtest.h>

#include <string>

TEST(SectionFive, PressureIsScaledByPart) {
    for (const SignificantPressure& row : SIGNIFICANT_PRESSURES) {
        SCOPED_TRACE(row.group);
        for (const int part : {0, 1, 2, 3, 4}) {
            SCOPED_TRACE(part);
            OpenDecoder decoder = OpenDecoder::inPart(part, std::string(row.group) + " 124//");
            decoder.decodeSection5();
            EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, row.in(part)}, {TDRY, 12.4}})}));
            EXPECT_EQ(decoder.rest(), "");
        }
    }
}

TEST(SectionFive, SurfaceIsASignificantLevelLikeEveryOther) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "00012 10658");
    decoder.decodeSection5();
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1012}, {TDRY, 10.6}, {DP, 10.6 - 8.0}})}));
}

TEST(SectionFive, LevelsAreFiledInReportOrder) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "00012 10658 11850 12305 22850 124// 31313 58708 81102");
    decoder.decodeSection5();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1012}, {TDRY, 10.6}, {DP, 10.6 - 8.0}}),
                                                 levelOf(SIGNIFICANT, {{PRES, 850}, {TDRY, -12.3}, {DP, -12.3 - 0.5}}),
                                                 levelOf(SIGNIFICANT, {{PRES, 850}, {TDRY, 12.4}})}));
    EXPECT_EQ(decoder.rest(), "31313 58708 81102");
}

TEST(SectionFive, PairWithoutTemperatureIsTakenAndNotFiled) {
    for (const std::string temperature : {"/////", "///56"}) {
        SCOPED_TRACE(temperature);
        OpenDecoder decoder = OpenDecoder::inPart(1, "11100 " + temperature + " 21212");
        decoder.decodeSection5();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
        EXPECT_EQ(decoder.rest(), "21212");
    }
}

TEST(SectionFive, EmptyQueueHasNoLevels) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "");
    decoder.decodeSection5();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
}

TEST(SectionFive, OpenersOfTheNextSectionsEndItAndStay) {
    for (const std::string opener : {"21212", "31313"}) {
        SCOPED_TRACE(opener);
        OpenDecoder absent = OpenDecoder::inPart(1, opener);
        absent.decodeSection5();
        EXPECT_TRUE(sameLevels(absent.allLevels(), {}));
        EXPECT_EQ(absent.rest(), opener);

        OpenDecoder present = OpenDecoder::inPart(3, "11700 124// " + opener + " 00015 27010");
        present.decodeSection5();
        EXPECT_TRUE(sameLevels(present.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 70.0}, {TDRY, 12.4}})}));
        EXPECT_EQ(present.rest(), opener + " 00015 27010");
    }
}

TEST(SectionFive, NoOtherGroupEndsIt) {
    for (const std::string group : {"41414", "51515", "59595", "61616", "62626", "69696", "TTDD", "212121"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::inPart(1, "11850 124// " + group + " 122// 21212");
        decoder.decodeSection5();
        EXPECT_EQ(decoder.allLevels().size(), 2U);
        EXPECT_EQ(decoder.rest(), "21212");
    }
}

TEST(SectionFive, CloudSectionAfterTheLevelsIsReadAsALevel) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "00012 10658 41414 12345");
    decoder.decodeSection5();
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1012}, {TDRY, 10.6}, {DP, 10.6 - 8.0}}),
                                         levelOf(SIGNIFICANT, {{PRES, 414}, {TDRY, -12.3}, {DP, -12.3 - 4.5}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(SectionFive, OddGroupTakesTheOpenerOfSectionSixAsItsTemperature) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "00012 10658 11850 21212 00015 27010");
    decoder.decodeSection5();
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1012}, {TDRY, 10.6}, {DP, 10.6 - 8.0}}),
                                         levelOf(SIGNIFICANT, {{PRES, 850}, {TDRY, 21.2}, {DP, 21.2 - 1.2}}),
                                         levelOf(SIGNIFICANT, {{PRES, 1015}, {TDRY, 27.0}, {DP, 27.0 - 1.0}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(SectionFive, OddGroupAtTheEndIsAFaultAndEarlierLevelsStayFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "00012 10658 11850");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection5(); }),
              "At least 2 code groups are required. Error detected at11850  ...");
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1012}, {TDRY, 10.6}, {DP, 10.6 - 8.0}})}));
    EXPECT_EQ(decoder.rest(), "11850");
}

TEST(SectionFive, PairWithoutPressureDigitsIsTakenAndNotFiled) {
    for (const int part : {1, 3}) {
        SCOPED_TRACE(part);
        OpenDecoder decoder = OpenDecoder::inPart(part, "11700 124// 22 122// 33500 120//");
        decoder.decodeSection5();
        EXPECT_TRUE(
            sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, part == 1 ? 700.0 : 70.0}, {TDRY, 12.4}}),
                                             levelOf(SIGNIFICANT, {{PRES, part == 1 ? 500.0 : 50.0}, {TDRY, 12.0}})}));
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(SectionFive, GroupOfOneCharacterIsOutOfRangeAndThePairStays) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "11850 124// 2 122//");
    EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeSection5(); }));
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 850}, {TDRY, 12.4}})}));
    EXPECT_EQ(decoder.rest(), "2 122//");
}

TEST(SectionFive, GroupOfOneCharacterAtTheEndIsAMissingPairFirst) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "2");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection5(); }),
              "At least 2 code groups are required. Error detected at2  ...");
    EXPECT_EQ(decoder.rest(), "2");
}

TEST(SectionFive, ForbiddenDepressionIsAFaultAfterThePressureGroup) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "00012 10658 11850 12455 22700 10105 33600 10305 44500 20505");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection5(); }), "Dewpoint depression code may not be between 51 to 56. "
                                                          "Error detected at 12455 22700 10105 33600 10305 44500 ...");
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1012}, {TDRY, 10.6}, {DP, 10.6 - 8.0}})}));
    EXPECT_EQ(decoder.rest(), "12455 22700 10105 33600 10305 44500 20505");
}

TEST(SectionFive, TemperatureGroupTooShortIsOutOfRangeAfterThePressureGroup) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "11850 12 22700");
    EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeSection5(); }));
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    EXPECT_EQ(decoder.rest(), "12 22700");
}

TEST(SectionFive, WholePartBHoldsItsTemperatures) {
    const Corvane report("TTBB 5600/ 72201 00014 32259 11000 30057 22850 ///// 33700 008// 31313 58708 81102");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}, {DP, 32.2 - 9.0}}),
                                                levelOf(SIGNIFICANT, {{PRES, 1000}, {TDRY, 30.0}, {DP, 30.0 - 7.0}}),
                                                levelOf(SIGNIFICANT, {{PRES, 700}, {TDRY, 0.8}})}));
    EXPECT_EQ(report.obsTime(), 1102);
}

TEST(SectionFive, WholePartDGivesItsPressuresInTenths) {
    const Corvane report("TTDD 5600/ 72201 11700 63561 22035 007//");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 70.0}, {TDRY, -63.5}, {DP, -63.5 - 11.0}}),
                                                levelOf(SIGNIFICANT, {{PRES, 3.5}, {TDRY, -0.7}})}));
}

TEST(SectionFive, WholePartBWithoutOpenersReadsEveryGroupAsAPair) {
    const Corvane report("TTBB 5600/ 72201 00014 32259 41414 12345 51515 10164");
    EXPECT_TRUE(
        sameLevels(report.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}, {DP, 32.2 - 9.0}}),
                                        levelOf(SIGNIFICANT, {{PRES, 414}, {TDRY, -12.3}, {DP, -12.3 - 4.5}}),
                                        levelOf(SIGNIFICANT, {{PRES, 515}, {TDRY, -10.1}, {DP, -10.1 - 14.0}})}));
}
