// The remarks of a dropsonde after 62626: their words, which groups each one takes, and where the remarks end.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct WordRow {
    const char* groups;
    const char* rest;
};

// Remarks that file nothing, and the groups that they leave.
const WordRow WORDS[] = {
    // nothing after the opener
    {"", ""},
    // a storm feature is a single word
    {"EYE", ""},
    {"CENTER", ""},
    {"RAINBAND", ""},
    {"MXWNDBND", ""},
    {"EYE XXBB", "XXBB"},
    {"CENTER XXBB", "XXBB"},
    {"RAINBAND XXBB", "XXBB"},
    {"MXWNDBND XXBB", "XXBB"},
    // EYEWALL takes the group after it, whatever it is
    {"EYEWALL 270", ""},
    {"EYEWALL XXBB", ""},
    {"EYEWALL XXBB XXCC", "XXCC"},
    {"EYEWALL REL 3233N06956W 194730", ""},
    {"EYEWALL 270 XXBB", "XXBB"},
    // the last report
    {"LAST REPORT", ""},
    {"LAST REPORT XXBB", "XXBB"},
    {"LAST RE PORT", ""},
    {"LAST REPOR T XXDD", "XXDD"},
    // AEV takes a group of five characters, whatever they are
    {"AEV 20507", ""},
    {"AEV 205 07 XXBB", "XXBB"},
    {"AEV XYZZY XXBB", "XXBB"},
    // free text
    {"SONDE FAILED", ""},
    {"A / 1 LONGERTHANANYTHING", ""},
    {"REL1 XSPG SPLASH WL15 WL1500 DLMWND LASTREPORT", ""},
    {"rel spg spl wl150 dlm mbl lst last eyewall", ""},
    {"62626 62626", ""},
    {"61616 31313", ""},
    // WL and a group of three other than 150 are joined to a word without meaning
    {"WL 151 XXBB", "XXBB"},
    {"WL ABC", ""},
    // only a whole group WL is joined
    {"WL1 50 XXBB", "XXBB"},
    // the identifier of the next part ends the remarks and stays
    {"XXBB 57081", "XXBB 57081"},
    {"NIL XXCC 57081", "XXCC 57081"},
    {"NIL TTDD", "TTDD"},
    {"NIL ABBB 1", "ABBB 1"},
    // a part A does not, and neither do part letters in a shorter, longer or lower-case group
    {"XXAA 57081 XXBB", "XXBB"},
    {"BB 1BB XXBBB 12CC5 xxbb XXDD", "XXDD"},
};

}  // namespace

TEST(DropsondeRemarks, WordsTakeTheirGroupsAndFileNothing) {
    for (const WordRow& row : WORDS) {
        SCOPED_TRACE(row.groups);
        OpenDecoder decoder = OpenDecoder::inPart(0, "62626 " + std::string(row.groups));
        decoder.decode62626();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
        EXPECT_EQ(decoder.rest(), row.rest);
    }
}

TEST(DropsondeRemarks, ReleaseAndSplashPointUpToTheNextPart) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "62626 REL 3233N06956W 194730 SPG 3232N06955W 195640 XXCC");
    decoder.decode62626();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(RELEASE, {{LAT, 32.33}, {LON, -69.56}, {TIME, 194730}}),
                                                 levelOf(SPLASH_GPS, {{LAT, 32.32}, {LON, -69.55}, {TIME, 195640}})}));
    EXPECT_EQ(decoder.rest(), "XXCC");
}

TEST(DropsondeRemarks, EveryKeywordReachesItsDecoder) {
    OpenDecoder decoder = OpenDecoder::inPart(
        0, "62626 LST WND 013 MBL WND 09523 DLM WND 10045 997850 WL150 09063 078 SPL 3232N06955W 1956 "
           "SPG 3231N06954W 195640 REL 3233N06956W 194730 TTDD");
    decoder.decode62626();
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(LAYER_150M, {{WDIR, 90}, {WSPD, 63}, {HEIGHT, 78}}),
                                         levelOf(DEEP_LAYER, {{PRES, 997}, {PRES2, 850}, {WDIR, 100}, {WSPD, 45}}),
                                         levelOf(MEAN_BL, {{WDIR, 95}, {WSPD, 23}}), levelOf(LAST_WIND, {{HEIGHT, 13}}),
                                         levelOf(RELEASE, {{LAT, 32.33}, {LON, -69.56}, {TIME, 194730}}),
                                         levelOf(SPLASH_INTEG, {{LAT, 32.32}, {LON, -69.55}, {TIME, 1956}}),
                                         levelOf(SPLASH_GPS, {{LAT, 32.31}, {LON, -69.54}, {TIME, 195640}})}));
    EXPECT_EQ(decoder.rest(), "TTDD");
}

TEST(DropsondeRemarks, StormFeaturesAroundALayerWindAreSkipped) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "62626 EYEWALL 270 MXWNDBND WL150 09063 078 SONDE FAILED");
    decoder.decode62626();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAYER_150M, {{WDIR, 90}, {WSPD, 63}, {HEIGHT, 78}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(DropsondeRemarks, StrayBlankInTheLayerWindKeywordIsJoined) {
    for (const std::string keyword : {"WL150", "WL 150"}) {
        SCOPED_TRACE(keyword);
        OpenDecoder decoder = OpenDecoder::inPart(0, "62626 " + keyword + " 09063 078 XXBB");
        decoder.decode62626();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAYER_150M, {{WDIR, 90}, {WSPD, 63}, {HEIGHT, 78}})}));
        EXPECT_EQ(decoder.rest(), "XXBB");
    }
}

TEST(DropsondeRemarks, LayerWindKeywordThatCannotBeJoinedIsAFault) {
    OpenDecoder wrong = OpenDecoder::inPart(0, "62626 NIL WL 15 g3 g4 g5 g6 g7");
    EXPECT_EQ(faultOf([&] { wrong.decode62626(); }),
              "This code group requires exactly 5 characters. Error detected near WL 15 g3 g4 g5 g6  ...");
    EXPECT_EQ(wrong.rest(), "WL 15 g3 g4 g5 g6 g7");

    OpenDecoder alone = OpenDecoder::inPart(0, "62626 WL");
    EXPECT_EQ(faultOf([&] { alone.decode62626(); }),
              "This code group requires exactly 5 characters. Error detected near WL  ...");
    EXPECT_EQ(alone.rest(), "WL");
}

TEST(DropsondeRemarks, LastMustBeFollowedByReport) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "62626 LAST FLIGHT g2 g3 g4 g5 g6 g7");
    EXPECT_EQ(faultOf([&] { decoder.decode62626(); }),
              "LAST must be followed by REPORT. Error detected near FLIGHT g2 g3 g4 g5 g6  ...");
    EXPECT_EQ(decoder.rest(), "FLIGHT g2 g3 g4 g5 g6 g7");

    OpenDecoder joined = OpenDecoder::inPart(0, "62626 LAST FLI GHT");
    EXPECT_EQ(faultOf([&] { joined.decode62626(); }),
              "LAST must be followed by REPORT. Error detected near FLIGHT  ...");
    EXPECT_EQ(joined.rest(), "FLIGHT");

    OpenDecoder lowerCase = OpenDecoder::inPart(0, "62626 LAST report");
    EXPECT_EQ(faultOf([&] { lowerCase.decode62626(); }),
              "LAST must be followed by REPORT. Error detected near report  ...");
}

TEST(DropsondeRemarks, GroupAfterLastMustHaveSixCharacters) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "62626 LAST XYZ ABCD XXBB");
    EXPECT_EQ(faultOf([&] { decoder.decode62626(); }),
              "This code group requires exactly 6 characters. Error detected near XYZ ABCD XXBB  ...");
    EXPECT_EQ(decoder.rest(), "XYZ ABCD XXBB");

    OpenDecoder shortGroup = OpenDecoder::inPart(0, "62626 LAST REP");
    EXPECT_EQ(faultOf([&] { shortGroup.decode62626(); }),
              "This code group requires exactly 6 characters. Error detected near REP  ...");

    OpenDecoder last = OpenDecoder::inPart(0, "62626 LAST");
    EXPECT_EQ(faultOf([&] { last.decode62626(); }), "At least 1 code groups are required. Error detected at ...");
    EXPECT_EQ(last.rest(), "");
}

TEST(DropsondeRemarks, GroupAfterAevMustHaveFiveCharacters) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "62626 AEV 2050 789 XXBB");
    EXPECT_EQ(faultOf([&] { decoder.decode62626(); }),
              "This code group requires exactly 5 characters. Error detected near 2050 789 XXBB  ...");
    EXPECT_EQ(decoder.rest(), "2050 789 XXBB");

    OpenDecoder last = OpenDecoder::inPart(0, "62626 AEV");
    EXPECT_EQ(faultOf([&] { last.decode62626(); }), "At least 1 code groups are required. Error detected at ...");
    EXPECT_EQ(last.rest(), "");
}

TEST(DropsondeRemarks, EyewallNeedsItsGroup) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "62626 NIL EYEWALL");
    EXPECT_EQ(faultOf([&] { decoder.decode62626(); }),
              "At least 2 code groups are required. Error detected atEYEWALL  ...");
    EXPECT_EQ(decoder.rest(), "EYEWALL");
}

TEST(DropsondeRemarks, LevelsFiledBeforeAFaultStay) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "62626 LST WND 013 LAST FLIGHT");
    EXPECT_EQ(faultOf([&] { decoder.decode62626(); }),
              "LAST must be followed by REPORT. Error detected near FLIGHT  ...");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAST_WIND, {{HEIGHT, 13}})}));
}

TEST(DropsondeRemarks, VeryLongWordIsSkipped) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "62626 " + std::string(100000, 'B') + " LST WND 013");
    decoder.decode62626();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAST_WIND, {{HEIGHT, 13}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(DropsondeRemarks, WholeDropsondeReportGivesItsLevelsAndItsRemarks) {
    const OpenDecoder decoder(
        "XXAA 57081 99241 70830 08183 99010 27456 09030 00130 26800 09530 88999 77999 31313 09608 80812 "
        "61616 AF305 0208A MARIA OB 08 "
        "62626 REL 1532N06218W 081233 SPG 1533N06220W 081630 SPL 1533N06219W 0816 WL150 09063 078 "
        "DLM WND 10045 011698 MBL WND 09558 LST WND 012 EYEWALL 045 AEV 20507 LAST REPORT = "
        "XXBB 57088 99241 70830 08183 00010 27456 11850 20050 21212 00010 09030 31313 09608 80812 "
        "61616 AF305 0208A MARIA OB 08 62626 REL 1600N06300W 090000 CENTER");
    EXPECT_TRUE(sameLevels(
        decoder.allLevels(),
        {levelOf(SURFACE, {{PRES, 1010}, {TDRY, 27.4}, {DP, 27.4 - 6.0}, {WDIR, 90}, {WSPD, 30 * KNOT}}),
         levelOf(MANDATORY, {{PRES, 1000}, {HEIGHT, 130}, {TDRY, 26.8}, {DP, 26.8}, {WDIR, 95}, {WSPD, 30 * KNOT}}),
         levelOf(SIGNIFICANT, {{PRES, 1010}, {TDRY, 27.4}, {DP, 27.4 - 6.0}}),
         levelOf(SIGNIFICANT, {{PRES, 850}, {TDRY, 20.0}, {DP, 20.0 - 5.0}}),
         levelOf(SIGNIFICANT, {{PRES, 1010}, {WDIR, 90}, {WSPD, 30 * KNOT}}),
         levelOf(LAYER_150M, {{WDIR, 90}, {WSPD, 63 * KNOT}, {HEIGHT, 78}}),
         levelOf(DEEP_LAYER, {{PRES, 1011}, {PRES2, 698}, {WDIR, 100}, {WSPD, 45 * KNOT}}),
         levelOf(MEAN_BL, {{WDIR, 95}, {WSPD, 58 * KNOT}}), levelOf(LAST_WIND, {{HEIGHT, 12}}),
         levelOf(RELEASE, {{LAT, 15.32}, {LON, -62.18}, {TIME, 81233}}),
         levelOf(SPLASH_INTEG, {{LAT, 15.33}, {LON, -62.19}, {TIME, 816}}),
         levelOf(SPLASH_GPS, {{LAT, 15.33}, {LON, -62.20}, {TIME, 81630}})}));
    EXPECT_EQ(decoder.wmoType(), "TEMP DROP");
    EXPECT_EQ(decoder.obsTime(), 812);
    EXPECT_EQ(decoder.rest(), "");
}

TEST(DropsondeRemarks, AreAlsoDecodedInALandReport) {
    const Corvane report("TTAA 0612/ 72201 88999 77999 62626 LST WND 013");
    EXPECT_TRUE(sameLevels(report.allLevels(), {levelOf(LAST_WIND, {{HEIGHT, 13}})}));
}
