// The merged profile of a sounding and its dump as text on standard output.
#include "support/CapturedOutput.h"
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>
#include <ios>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Fields = std::map<Corvane::LEVEL_FIELD, double>;

void file(OpenDecoder& decoder, Corvane::LEVEL_TYPE kind, const Fields& fields) {
    decoder.addLevel(levelOf(kind, fields));
}

// What a dump writes to standard output.
std::string dumpOf(const Corvane& decoder) {
    return outputOf([&] { std::cout << decoder; });
}

}  // namespace

TEST(Profile, NoLevelsGiveNoProfile) {
    EXPECT_TRUE(Corvane().profile().empty());
    EXPECT_TRUE(Corvane("").profile().empty());
}

TEST(Profile, OnlySurfaceStandardAndSignificantLevelsAreMerged) {
    OpenDecoder decoder;
    for (int kind = 0; kind <= 12; ++kind) {
        file(decoder, static_cast<Corvane::LEVEL_TYPE>(kind), {{Corvane::LF_PRES, 100.0 + kind}});
    }
    const std::vector<Corvane::Level> profile = decoder.profile();
    ASSERT_EQ(profile.size(), 3u);
    EXPECT_EQ(profile[0].fields.at(Corvane::LF_PRES), 101.0);
    EXPECT_EQ(profile[1].fields.at(Corvane::LF_PRES), 102.0);
    EXPECT_EQ(profile[2].fields.at(Corvane::LF_PRES), 103.0);
}

TEST(Profile, LevelWithoutPressureIsDropped) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_SURFACE, {{Corvane::LF_TDRY, 20.0}});
    file(decoder, Corvane::LT_MANDATORY, {});
    file(decoder, Corvane::LT_SIGNIFICANT, {{Corvane::LF_PRES2, 850.0}});
    EXPECT_TRUE(decoder.profile().empty());
    EXPECT_EQ(decoder.allLevels().size(), 3u);
}

TEST(Profile, PressuresAscendInAnyKindAndFilingOrder) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_SIGNIFICANT, {{Corvane::LF_PRES, 925.0}});
    file(decoder, Corvane::LT_SIGNIFICANT, {{Corvane::LF_PRES, 9.5}});
    file(decoder, Corvane::LT_MANDATORY, {{Corvane::LF_PRES, 1000.0}});
    file(decoder, Corvane::LT_MANDATORY, {{Corvane::LF_PRES, 500.0}});
    file(decoder, Corvane::LT_SURFACE, {{Corvane::LF_PRES, 1013.0}});
    std::vector<double> pressures;
    for (const Corvane::Level& level : decoder.profile()) {
        pressures.push_back(level.fields.at(Corvane::LF_PRES));
        EXPECT_EQ(level.type, Corvane::LT_GENERIC);
    }
    EXPECT_EQ(pressures, (std::vector<double>{9.5, 500.0, 925.0, 1000.0, 1013.0}));
}

TEST(Profile, SignificantLevelPrevailsOverStandardLevelFieldByField) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_SIGNIFICANT, {{Corvane::LF_PRES, 850.0}, {Corvane::LF_TDRY, 12.6}});
    file(decoder, Corvane::LT_MANDATORY,
         {{Corvane::LF_PRES, 850.0},
          {Corvane::LF_HEIGHT, 1457.0},
          {Corvane::LF_TDRY, 12.4},
          {Corvane::LF_WSPD, 15.0},
          {Corvane::LF_WDIR, 270.0}});
    const std::vector<Corvane::Level> profile = decoder.profile();
    ASSERT_EQ(profile.size(), 1u);
    EXPECT_EQ(profile[0].type, Corvane::LT_GENERIC);
    EXPECT_EQ(profile[0].fields, (Fields{{Corvane::LF_PRES, 850.0},
                                         {Corvane::LF_TDRY, 12.6},
                                         {Corvane::LF_WSPD, 15.0},
                                         {Corvane::LF_WDIR, 270.0},
                                         {Corvane::LF_HEIGHT, 1457.0}}));
}

TEST(Profile, StandardLevelPrevailsOverSurface) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_MANDATORY, {{Corvane::LF_PRES, 1000.0}, {Corvane::LF_TDRY, 20.0}});
    file(decoder, Corvane::LT_SURFACE, {{Corvane::LF_PRES, 1000.0}, {Corvane::LF_TDRY, 21.0}, {Corvane::LF_DP, 15.0}});
    const std::vector<Corvane::Level> profile = decoder.profile();
    ASSERT_EQ(profile.size(), 1u);
    EXPECT_EQ(profile[0].fields,
              (Fields{{Corvane::LF_PRES, 1000.0}, {Corvane::LF_TDRY, 20.0}, {Corvane::LF_DP, 15.0}}));
}

TEST(Profile, LaterLevelOfOneKindPrevails) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_SIGNIFICANT,
         {{Corvane::LF_PRES, 850.0}, {Corvane::LF_TDRY, 12.4}, {Corvane::LF_DP, 6.4}});
    file(decoder, Corvane::LT_SIGNIFICANT, {{Corvane::LF_PRES, 700.0}, {Corvane::LF_TDRY, 2.0}});
    file(decoder, Corvane::LT_SIGNIFICANT, {{Corvane::LF_PRES, 850.0}, {Corvane::LF_TDRY, 12.8}});
    const std::vector<Corvane::Level> profile = decoder.profile();
    ASSERT_EQ(profile.size(), 2u);
    EXPECT_EQ(profile[1].fields, (Fields{{Corvane::LF_PRES, 850.0}, {Corvane::LF_TDRY, 12.8}, {Corvane::LF_DP, 6.4}}));
}

TEST(Profile, AlmostEqualPressuresAreNotMerged) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_SIGNIFICANT, {{Corvane::LF_PRES, 850.0000001}});
    file(decoder, Corvane::LT_SIGNIFICANT, {{Corvane::LF_PRES, 850.0}});
    const std::vector<Corvane::Level> profile = decoder.profile();
    ASSERT_EQ(profile.size(), 2u);
    EXPECT_EQ(profile[0].fields.at(Corvane::LF_PRES), 850.0);
    EXPECT_EQ(profile[1].fields.at(Corvane::LF_PRES), 850.0000001);
}

TEST(Dump, EmptyProfileWritesNothingAtAll) {
    EXPECT_EQ(dumpOf(Corvane()), "");
    OpenDecoder decoder;
    file(decoder, Corvane::LT_MAXWIND, {{Corvane::LF_PRES, 250.0}});
    file(decoder, Corvane::LT_TROPOPAUSE, {{Corvane::LF_PRES, 200.0}});
    file(decoder, Corvane::LT_SURFACE, {{Corvane::LF_TDRY, 20.0}});
    EXPECT_EQ(dumpOf(decoder), "");
}

TEST(Dump, NameInSixAndValueInEightCharacters) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_MANDATORY,
         {{Corvane::LF_PRES, 850.0}, {Corvane::LF_TDRY, 12.4}, {Corvane::LF_HEIGHT, 1457.0}});
    EXPECT_EQ(dumpOf(decoder), "  pres: 850       tdry: 12.4    height: 1457    \n");
}

TEST(Dump, QuantitiesAscendByTheirNumber) {
    OpenDecoder decoder;
    Fields fields;
    for (int field = 0; field <= 11; ++field) {
        fields[static_cast<Corvane::LEVEL_FIELD>(field)] = field + 0.5;
    }
    file(decoder, Corvane::LT_SIGNIFICANT, fields);
    EXPECT_EQ(dumpOf(decoder), "  pres: 0.5     "
                               "  tdry: 1.5     "
                               "    dp: 2.5     "
                               "  wspd: 3.5     "
                               "  wdir: 4.5     "
                               "height: 5.5     "
                               "    va: 6.5     "
                               "    vb: 7.5     "
                               "unknown: 8.5     "
                               "unknown: 9.5     "
                               "unknown: 10.5    "
                               "unknown: 11.5    \n");
}

TEST(Dump, OneLineForEachPressure) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_SURFACE, {{Corvane::LF_PRES, 1013.0}, {Corvane::LF_TDRY, 20.0}});
    file(decoder, Corvane::LT_MANDATORY, {{Corvane::LF_PRES, 850.0}, {Corvane::LF_HEIGHT, 1457.0}});
    file(decoder, Corvane::LT_SIGNIFICANT, {{Corvane::LF_PRES, 850.0}, {Corvane::LF_TDRY, -0.5}});
    file(decoder, Corvane::LT_MAXWIND, {{Corvane::LF_PRES, 250.0}});
    EXPECT_EQ(dumpOf(decoder), "  pres: 850       tdry: -0.5    height: 1457    \n"
                               "  pres: 1013      tdry: 20      \n");
}

TEST(Dump, NumbersHaveSixSignificantDigitsAndAreNeverTruncated) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_MANDATORY,
         {{Corvane::LF_PRES, 92.5},
          {Corvane::LF_TDRY, -12.345678},
          {Corvane::LF_WSPD, 43.724},
          {Corvane::LF_HEIGHT, 1234567.0}});
    EXPECT_EQ(dumpOf(decoder), "  pres: 92.5      tdry: -12.3457  wspd: 43.724  height: 1.23457e+06\n");
}

TEST(Dump, DecodedReportIsMerged) {
    // 1014: temperature 32.0 of part B over 32.2 of part A, dew point 7 below it; 1000 hPa from part A alone.
    const Corvane report("TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88250 51256 27015 77180 27085 "
                         "TTBB 56007 72201 00014 32057 11850 12456 21212 11850 27010");
    EXPECT_EQ(dumpOf(report), "  pres: 850       tdry: 12.4        dp: 6.4       wspd: 5.144     wdir: 270     \n"
                              "  pres: 1000      tdry: 30          dp: 23        wspd: 3.0864    wdir: 115     "
                              "height: 140     \n"
                              "  pres: 1014      tdry: 32          dp: 25        wspd: 2.0576    wdir: 115     \n");
}

TEST(Dump, AnotherStreamStaysEmptyAndTheTextGoesToStandardOutput) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_SURFACE, {{Corvane::LF_PRES, 1013.0}});
    std::ostringstream given;
    const std::ios_base::fmtflags givenFlags = given.flags();
    const CapturedOutput output;
    std::ostream& returned = given << decoder;
    EXPECT_EQ(&returned, &given);
    EXPECT_EQ(given.str(), "");
    EXPECT_EQ(given.flags(), givenFlags);
    EXPECT_TRUE(given.good());
    EXPECT_EQ(output.text(), "  pres: 1013    \n");
}

TEST(Dump, StandardOutputIsLeftLeftAligned) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_SURFACE, {{Corvane::LF_PRES, 1013.0}});
    const CapturedOutput output;
    std::cout.setf(std::ios_base::right, std::ios_base::adjustfield);
    std::cout << decoder;
    EXPECT_EQ(std::cout.flags() & std::ios_base::adjustfield, std::ios_base::left);
    EXPECT_EQ(std::cout.width(), 0);
}

TEST(Dump, SecondDumpReadsLikeTheFirst) {
    OpenDecoder decoder;
    file(decoder, Corvane::LT_SURFACE, {{Corvane::LF_PRES, 1013.0}, {Corvane::LF_DP, 6.0}});
    const CapturedOutput output;
    std::cout << decoder << decoder;
    EXPECT_EQ(output.text(), "  pres: 1013        dp: 6       \n"
                             "  pres: 1013        dp: 6       \n");
}

TEST(Dump, EveryLineIsFlushed) {
    const OpenDecoder decoder = OpenDecoder::holding(
        {levelOf(SURFACE, {{PRES, 1013}}), levelOf(MANDATORY, {{PRES, 850}}), levelOf(MANDATORY, {{PRES, 700}})});
    const CapturedOutput output;
    std::cout << decoder;
    EXPECT_EQ(output.flushed(), (std::vector<std::string>{"  pres: 700     \n", "  pres: 700     \n  pres: 850     \n",
                                                          "  pres: 700     \n  pres: 850     \n  pres: 1013    \n"}));
}
