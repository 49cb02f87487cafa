// The remarks WL150, DLM WND, MBL WND and LST WND: winds averaged over a layer, and the height of the last wind.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct HeightRow {
    const char* group;
    double height;
};

const HeightRow HEIGHTS[] = {
    // metres, as written
    {"013", 13},
    {"000", 0},
    {"150", 150},
    {"999", 999},
    // no leading number: zero
    {"///", 0},
    {"ABC", 0},
    {"/13", 0},
    // the leading number
    {"13/", 13},
    {"1O3", 1},
    {"+13", 13},
    {"-13", -13},
    {"-5.", -5},
    {"1.5", 1.5},
    {"1e1", 10},
    {"12e", 12},
    {"0xA", 10},
};

struct LayerRow {
    const char* group;
    double first;
    double second;
};

const LayerRow LAYERS[] = {
    // three digits each
    {"997850", 997, 850},
    {"850997", 850, 997},
    {"999100", 999, 100},
    // below 100 a thousand is left out
    {"000850", 1000, 850},
    {"850000", 850, 1000},
    {"011698", 1011, 698},
    {"099100", 1099, 100},
    {"100099", 100, 1099},
    {"101099", 101, 1099},
    // no leading number: zero
    {"//////", 1000, 1000},
    {"ABCDEF", 1000, 1000},
    {"/97850", 1000, 850},
    // the leading number of each
    {"99/85/", 1099, 1085},
    {"+12-50", 1012, 950},
    {".5099.", 1000.5, 1099},
    {"1e11e2", 1010, 100},
    {"1e/12e", 1001, 1012},
    {"0x90xF", 1009, 1015},
};

}  // namespace

TEST(LowestLayerWind, WindAndHeightAreFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "WL150 09063 078 XXBB");
    decoder.decodeWL150();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAYER_150M, {{WDIR, 90}, {WSPD, 63}, {HEIGHT, 78}})}));
    EXPECT_EQ(decoder.rest(), "XXBB");
}

TEST(LowestLayerWind, HeightIsTheNumberThatItsDigitsMake) {
    for (const HeightRow& row : HEIGHTS) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = OpenDecoder::inPart(0, "WL150 09563 " + std::string(row.group));
        decoder.decodeWL150();
        EXPECT_TRUE(
            sameLevels(decoder.allLevels(), {levelOf(LAYER_150M, {{WDIR, 95}, {WSPD, 63}, {HEIGHT, row.height}})}));
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(LowestLayerWind, RemarkWithoutWindIsTakenAndNotFiled) {
    for (const std::string wind : {"/////", "09///", "//063"}) {
        SCOPED_TRACE(wind);
        OpenDecoder decoder = OpenDecoder::inPart(0, "WL150 " + wind + " 078 XXBB");
        decoder.decodeWL150();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
        EXPECT_EQ(decoder.rest(), "XXBB");
    }
}

TEST(LowestLayerWind, RemarkWithoutWindLeavesThePlaceToALaterOne) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "WL150 ///// 078 WL150 09063 079");
    decoder.decodeWL150();
    decoder.decodeWL150();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAYER_150M, {{WDIR, 90}, {WSPD, 63}, {HEIGHT, 79}})}));
}

TEST(LowestLayerWind, FirstIsKept) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "WL150 09063 078 WL150 10064 079 XXBB");
    decoder.decodeWL150();
    decoder.decodeWL150();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAYER_150M, {{WDIR, 90}, {WSPD, 63}, {HEIGHT, 78}})}));
    EXPECT_EQ(decoder.rest(), "XXBB");
}

TEST(LowestLayerWind, StrayBlankInWindOrHeightIsJoined) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "WL150 090 63 0 78 XXBB");
    decoder.decodeWL150();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAYER_150M, {{WDIR, 90}, {WSPD, 63}, {HEIGHT, 78}})}));
    EXPECT_EQ(decoder.rest(), "XXBB");
}

TEST(LowestLayerWind, ThreeGroupsMustRemain) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "WL150 09063");
    EXPECT_EQ(faultOf([&] { decoder.decodeWL150(); }),
              "At least 3 code groups are required. Error detected atWL150 09063  ...");
    EXPECT_EQ(decoder.rest(), "WL150 09063");
}

TEST(LowestLayerWind, GroupsOfTheWrongLengthAreFaults) {
    OpenDecoder wind = OpenDecoder::inPart(0, "WL150 0906 078 g3 g4 g5 g6 g7");
    EXPECT_EQ(faultOf([&] { wind.decodeWL150(); }),
              "This code group requires exactly 5 characters. Error detected near 0906 078 g3 g4 g5 g6  ...");
    EXPECT_EQ(wind.rest(), "0906 078 g3 g4 g5 g6 g7");

    OpenDecoder height = OpenDecoder::inPart(0, "WL150 09063 0078 XXBB");
    EXPECT_EQ(faultOf([&] { height.decodeWL150(); }),
              "This code group requires exactly 3 characters. Error detected near 0078 XXBB  ...");
    EXPECT_EQ(height.rest(), "0078 XXBB");
    EXPECT_TRUE(sameLevels(height.allLevels(), {}));
}

TEST(LowestLayerWind, SplitWindAtTheEndLeavesNoHeight) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "WL150 090 63");
    EXPECT_EQ(faultOf([&] { decoder.decodeWL150(); }), "At least 1 code groups are required. Error detected at ...");
    EXPECT_EQ(decoder.rest(), "");
}

TEST(DeepLayerWind, PressuresBelowOneHundredLeaveOutTheThousand) {
    for (const LayerRow& row : LAYERS) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = OpenDecoder::inPart(0, "DLM WND 09523 " + std::string(row.group) + " XXBB");
        decoder.decodeDLMWND();
        EXPECT_TRUE(
            sameLevels(decoder.allLevels(),
                       {levelOf(DEEP_LAYER, {{PRES, row.first}, {PRES2, row.second}, {WDIR, 95}, {WSPD, 23}})}));
        EXPECT_EQ(decoder.rest(), "XXBB");
    }
}

TEST(DeepLayerWind, PressuresAreNotScaledByPart) {
    for (const int part : {0, 1, 2, 3}) {
        SCOPED_TRACE(part);
        OpenDecoder decoder = OpenDecoder::inPart(part, "DLM WND 09523 997850");
        decoder.decodeDLMWND();
        EXPECT_TRUE(sameLevels(decoder.allLevels(),
                               {levelOf(DEEP_LAYER, {{PRES, 997}, {PRES2, 850}, {WDIR, 95}, {WSPD, 23}})}));
    }
}

TEST(DeepLayerWind, IsFiledWithoutAWindToo) {
    for (const std::string wind : {"/////", "09///", "//523"}) {
        SCOPED_TRACE(wind);
        OpenDecoder decoder = OpenDecoder::inPart(0, "DLM WND " + wind + " 997850");
        decoder.decodeDLMWND();
        EXPECT_TRUE(
            sameLevels(decoder.allLevels(),
                       {levelOf(DEEP_LAYER, {{PRES, 997}, {PRES2, 850}, {WDIR, NOT_GIVEN}, {WSPD, NOT_GIVEN}})}));
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(DeepLayerWind, FirstIsKeptEvenWithoutAWind) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "DLM WND ///// 997850 DLM WND 10045 011698 XXBB");
    decoder.decodeDLMWND();
    decoder.decodeDLMWND();
    EXPECT_TRUE(sameLevels(decoder.allLevels(),
                           {levelOf(DEEP_LAYER, {{PRES, 997}, {PRES2, 850}, {WDIR, NOT_GIVEN}, {WSPD, NOT_GIVEN}})}));
    EXPECT_EQ(decoder.rest(), "XXBB");
}

TEST(DeepLayerWind, StrayBlankInWindOrPressuresIsJoined) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "DLM WND 095 23 997 850 XXBB");
    decoder.decodeDLMWND();
    EXPECT_TRUE(
        sameLevels(decoder.allLevels(), {levelOf(DEEP_LAYER, {{PRES, 997}, {PRES2, 850}, {WDIR, 95}, {WSPD, 23}})}));
    EXPECT_EQ(decoder.rest(), "XXBB");
}

TEST(DeepLayerWind, FourGroupsMustRemain) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "DLM WND 09523");
    EXPECT_EQ(faultOf([&] { decoder.decodeDLMWND(); }),
              "At least 4 code groups are required. Error detected atDLM WND 09523  ...");
    EXPECT_EQ(decoder.rest(), "DLM WND 09523");
}

TEST(DeepLayerWind, MustBeFollowedByWnd) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "DLM WIND 09523 997850 g4 g5 g6 g7");
    EXPECT_EQ(faultOf([&] { decoder.decodeDLMWND(); }),
              "DLM must be followed by WND. Error detected at WIND 09523 997850 g4 g5 g6 ...");
    EXPECT_EQ(decoder.rest(), "WIND 09523 997850 g4 g5 g6 g7");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
}

TEST(DeepLayerWind, WndIsNotJoined) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "DLM WN D 09523 997850");
    EXPECT_EQ(faultOf([&] { decoder.decodeDLMWND(); }),
              "DLM must be followed by WND. Error detected at WN D 09523 997850 ...");
}

TEST(DeepLayerWind, GroupsOfTheWrongLengthAreFaults) {
    OpenDecoder wind = OpenDecoder::inPart(0, "DLM WND 095233 997850");
    EXPECT_EQ(faultOf([&] { wind.decodeDLMWND(); }),
              "This code group requires exactly 5 characters. Error detected near 095233 997850  ...");
    EXPECT_EQ(wind.rest(), "095233 997850");

    OpenDecoder pressures = OpenDecoder::inPart(0, "DLM WND 09523 99785 XXBB");
    EXPECT_EQ(faultOf([&] { pressures.decodeDLMWND(); }),
              "This code group requires exactly 6 characters. Error detected near 99785 XXBB  ...");
    EXPECT_EQ(pressures.rest(), "99785 XXBB");
    EXPECT_TRUE(sameLevels(pressures.allLevels(), {}));
}

TEST(DeepLayerWind, SplitWindAtTheEndLeavesNoPressures) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "DLM WND 095 23");
    EXPECT_EQ(faultOf([&] { decoder.decodeDLMWND(); }), "At least 1 code groups are required. Error detected at ...");
    EXPECT_EQ(decoder.rest(), "");
}

TEST(MeanBoundaryLayerWind, WindIsFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "MBL WND 09523 XXBB");
    decoder.decodeMBLWND();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MEAN_BL, {{WDIR, 95}, {WSPD, 23}})}));
    EXPECT_EQ(decoder.rest(), "XXBB");
}

TEST(MeanBoundaryLayerWind, IsFiledWithoutAWindToo) {
    for (const std::string wind : {"/////", "09///", "//523"}) {
        SCOPED_TRACE(wind);
        OpenDecoder decoder = OpenDecoder::inPart(0, "MBL WND " + wind);
        decoder.decodeMBLWND();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MEAN_BL, {{WDIR, NOT_GIVEN}, {WSPD, NOT_GIVEN}})}));
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(MeanBoundaryLayerWind, FirstIsKept) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "MBL WND 09523 MBL WND 10045 XXBB");
    decoder.decodeMBLWND();
    decoder.decodeMBLWND();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MEAN_BL, {{WDIR, 95}, {WSPD, 23}})}));
    EXPECT_EQ(decoder.rest(), "XXBB");
}

TEST(MeanBoundaryLayerWind, StrayBlankInTheWindIsJoined) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "MBL WND 0952 3 XXBB");
    decoder.decodeMBLWND();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MEAN_BL, {{WDIR, 95}, {WSPD, 23}})}));
    EXPECT_EQ(decoder.rest(), "XXBB");
}

TEST(MeanBoundaryLayerWind, ThreeGroupsMustRemain) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "MBL WND");
    EXPECT_EQ(faultOf([&] { decoder.decodeMBLWND(); }),
              "At least 3 code groups are required. Error detected atMBL WND  ...");
    EXPECT_EQ(decoder.rest(), "MBL WND");
}

TEST(MeanBoundaryLayerWind, MustBeFollowedByWnd) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "MBL WIND 09523 g3 g4 g5 g6 g7");
    EXPECT_EQ(faultOf([&] { decoder.decodeMBLWND(); }),
              "MBL must be followed by WND. Error detected at WIND 09523 g3 g4 g5 g6 ...");
    EXPECT_EQ(decoder.rest(), "WIND 09523 g3 g4 g5 g6 g7");
}

TEST(MeanBoundaryLayerWind, WindOfTheWrongLengthIsAFault) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "MBL WND 0952 LST");
    EXPECT_EQ(faultOf([&] { decoder.decodeMBLWND(); }),
              "This code group requires exactly 5 characters. Error detected near 0952 LST  ...");
    EXPECT_EQ(decoder.rest(), "0952 LST");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
}

TEST(LastWindHeight, HeightIsTheNumberThatItsDigitsMake) {
    for (const HeightRow& row : HEIGHTS) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = OpenDecoder::inPart(0, "LST WND " + std::string(row.group) + " XXBB");
        decoder.decodeLSTWND();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAST_WIND, {{HEIGHT, row.height}})}));
        EXPECT_EQ(decoder.rest(), "XXBB");
    }
}

TEST(LastWindHeight, FirstIsKept) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "LST WND 013 LST WND 014 XXBB");
    decoder.decodeLSTWND();
    decoder.decodeLSTWND();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAST_WIND, {{HEIGHT, 13}})}));
    EXPECT_EQ(decoder.rest(), "XXBB");
}

TEST(LastWindHeight, StrayBlankInTheHeightIsJoined) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "LST WND 01 3 XXBB");
    decoder.decodeLSTWND();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAST_WIND, {{HEIGHT, 13}})}));
    EXPECT_EQ(decoder.rest(), "XXBB");
}

TEST(LastWindHeight, ThreeGroupsMustRemain) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "LST WND");
    EXPECT_EQ(faultOf([&] { decoder.decodeLSTWND(); }),
              "At least 3 code groups are required. Error detected atLST WND  ...");
    EXPECT_EQ(decoder.rest(), "LST WND");
}

TEST(LastWindHeight, MustBeFollowedByWnd) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "LST wnd 013 g3 g4 g5 g6 g7");
    EXPECT_EQ(faultOf([&] { decoder.decodeLSTWND(); }),
              "LST must be followed by WND. Error detected at wnd 013 g3 g4 g5 g6 ...");
    EXPECT_EQ(decoder.rest(), "wnd 013 g3 g4 g5 g6 g7");
}

TEST(LastWindHeight, HeightOfTheWrongLengthIsAFault) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "LST WND 0013 XXBB");
    EXPECT_EQ(faultOf([&] { decoder.decodeLSTWND(); }),
              "This code group requires exactly 3 characters. Error detected near 0013 XXBB  ...");
    EXPECT_EQ(decoder.rest(), "0013 XXBB");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
}

TEST(LayerWinds, KnotsAreConverted) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "WL150 09563 078 DLM WND 10045 997850 MBL WND 11030");
    decoder._windsInKnots = true;
    decoder.decodeWL150();
    decoder.decodeDLMWND();
    decoder.decodeMBLWND();
    EXPECT_TRUE(sameLevels(decoder.allLevels(),
                           {levelOf(LAYER_150M, {{WDIR, 95}, {WSPD, 63 * KNOT}, {HEIGHT, 78}}),
                            levelOf(DEEP_LAYER, {{PRES, 997}, {PRES2, 850}, {WDIR, 100}, {WSPD, 45 * KNOT}}),
                            levelOf(MEAN_BL, {{WDIR, 110}, {WSPD, 30 * KNOT}})}));
}

TEST(LayerWinds, WholeReportKeepsTheFirstOfEachKind) {
    const Corvane report("XXAA 57081 99241 70830 08183 88999 77999 31313 09608 80812 61616 AF305 "
                         "62626 MBL WND 09523 DLM WND 09523 997850 WL 150 ///// 078 LST WND 013 MBL WND 10024 "
                         "WL150 09063 078 DLM WND ///// 000000 LST WND 014");
    EXPECT_TRUE(sameLevels(report.allLevels(),
                           {levelOf(LAYER_150M, {{WDIR, 90}, {WSPD, 63 * KNOT}, {HEIGHT, 78}}),
                            levelOf(DEEP_LAYER, {{PRES, 997}, {PRES2, 850}, {WDIR, 95}, {WSPD, 23 * KNOT}}),
                            levelOf(MEAN_BL, {{WDIR, 95}, {WSPD, 23 * KNOT}}), levelOf(LAST_WIND, {{HEIGHT, 13}})}));
}
