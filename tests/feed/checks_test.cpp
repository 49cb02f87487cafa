// What the levels of a part say about each other.
//
// Thicknesses are worked out with 29.27 m/K * ln(p1/p2) * T_v: ln(1000/925) = 0.07796, so that one kelvin is 2.282 m;
// ln(925/850) = 0.08456, 2.475 m; ln(850/700) = 0.19415, 5.683 m; ln(700/500) = 0.33647, 9.849 m.
#include "FeedParts.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using corvane::Reading;
using feed_test::BEIJING;
using feed_test::doubtsOf;
using feed_test::Lines;
using feed_test::mendsOf;
using feed_test::readOnly;
using feed_test::rowsOf;
using feed_test::with;

// 13 July 2022: 1000 hPa at 296 m and 925 hPa at 863 m, with 25 degrees between them.
const std::string KINGSTON =
    "TTAA 6300/ 78486 99015 29440 14002 00296 27250 92863 22247 85595 17620 70232 09466 88999 77999";
// Halley, Antarctica, 13 July 2022.
const std::string HALLEY = "TTAA 63001 89664 99976 20135 05011 00670 ///// ///// 92412 19737 14505 85032 25317 18028 "
                           "70426 30522 19506 50475 43324 "
                           "09512 40624 49966 03515 30807 59169 35013 25920 62768 34012 20057 65368 32520 15230 70965 "
                           "31019 10468 75362 29531 88256 "
                           "62967 34511 88124 73963 29529 77999 31313 42308 82249";

std::string pair(const std::string& lower, const std::string& upper) {
    return "TTAA 2823/ 54511 99015 ///// ///// " + lower + ' ' + upper + " 88999 77999";
}

// ---- hydrostatic ----

TEST(Hydrostatic, LayersThatFitAreNotDoubtful) {
    EXPECT_EQ(doubtsOf(BEIJING), Lines());
}

TEST(Hydrostatic, BothEndsOfALayerThatDoesNotFitAreDoubtful) {
    const Reading reading = readOnly(KINGSTON);
    EXPECT_EQ(doubtsOf(reading), (Lines{"mandatory 1000: hydrostatic", "mandatory 925: hydrostatic"}));
    ASSERT_EQ(reading.doubts.size(), 1U);
    EXPECT_EQ(reading.doubts[0].name, "hydrostatic");
    // (863 - 296) m / 2.282 m/K = 248.5 K
    EXPECT_EQ(reading.doubts[0].text, "the heights of 1000 and 925 hPa imply a mean temperature of -24.7 degrees");
    EXPECT_TRUE(reading.doubtful());
    EXPECT_EQ(reading.levels.size(), 5U);
}

TEST(Hydrostatic, ATwoSidedErrorDoubtsThreeLevels) {
    // 850 hPa at 1690 m instead of 1490 m: 200 m are 81 K below and 35 K above it.
    const Reading reading = readOnly(with(BEIJING, "85490", "85690"));
    EXPECT_EQ(doubtsOf(reading),
              (Lines{"mandatory 925: hydrostatic", "mandatory 850: hydrostatic", "mandatory 700: hydrostatic"}));
    EXPECT_EQ(reading.doubts.size(), 2U);
}

// Dry air of 0 degrees between 700 and 500 hPa: 273.15 K * 9.849 m/K = 2690 m; 8 K are 79 m.
TEST(Hydrostatic, EightKelvinAreTolerated) {
    const std::string start = "TTAA 2823/ 54511 99015 ///// ///// 00/// ///// 92/// ///// 85/// ///// 70000 000//";
    EXPECT_EQ(doubtsOf(start + " 50569 000// 88999"), Lines());
    EXPECT_EQ(doubtsOf(start + " 50576 000// 88999"), Lines());
    EXPECT_EQ(doubtsOf(start + " 50577 000// 88999").size(), 2U);  // 80 m
    EXPECT_EQ(doubtsOf(start + " 50562 000// 88999"), Lines());
    EXPECT_EQ(doubtsOf(start + " 50561 000// 88999").size(), 2U);
}

// Saturated air of 30 degrees at 1000 hPa: e = 42.4 hPa, T_v = 303.15 * (1 + 0.3794 * 0.0443) = 308.2 K.
TEST(Hydrostatic, MoistureCountsInTheVirtualTemperature) {
    // 8 K above and below the mean virtual temperature of 308 K are 684 m and 721 m between 1000 and 925 hPa.
    const auto doubts = [](const std::string& height, const std::string& depression) {
        return doubtsOf(pair("00000 300" + depression, "92" + height + " 300" + depression)).size();
    };
    EXPECT_EQ(doubts("721", "00"), 0U);
    EXPECT_EQ(doubts("724", "00"), 2U);
    EXPECT_EQ(doubts("686", "00"), 0U);
    EXPECT_EQ(doubts("682", "00"), 2U);
    // Dry, 303.15 K: 674 m to 710 m.
    EXPECT_EQ(doubts("712", "//"), 2U);
    EXPECT_EQ(doubts("708", "//"), 0U);
    EXPECT_EQ(doubts("675", "//"), 0U);
    EXPECT_EQ(doubts("671", "//"), 2U);
}

// One temperature, 0 degrees: 248.15 K to 298.15 K are 566 m to 680 m between 1000 and 925 hPa.
TEST(Hydrostatic, TwentyFiveKelvinWhereOneTemperatureIsMissing) {
    for (const bool lower : {true, false}) {
        const auto doubts = [&](const std::string& height) {
            return doubtsOf(pair(std::string("00000 ") + (lower ? "000//" : "/////"),
                                 "92" + height + (lower ? " /////" : " 000//")))
                .size();
        };
        EXPECT_EQ(doubts("679"), 0U);
        EXPECT_EQ(doubts("682"), 2U);
        EXPECT_EQ(doubts("568"), 0U);
        EXPECT_EQ(doubts("565"), 2U);
    }
}

// 180 K to 330 K are 411 m to 753 m between 1000 and 925 hPa.
TEST(Hydrostatic, From180To330KelvinWhereBothAreMissing) {
    const auto doubts = [](const std::string& height) {
        return doubtsOf(pair("00000 /////", "92" + height + " /////")).size();
    };
    EXPECT_EQ(doubts("412"), 0U);
    EXPECT_EQ(doubts("409"), 2U);
    EXPECT_EQ(doubts("752"), 0U);
    EXPECT_EQ(doubts("755"), 2U);
}

TEST(Hydrostatic, SurfacesWithoutAHeightAreSkipped) {
    EXPECT_EQ(doubtsOf(with(BEIJING, "92797", "92///")), Lines());
    EXPECT_EQ(doubtsOf(with(KINGSTON, "92863", "92///")),
              (Lines{"mandatory 1000: hydrostatic", "mandatory 850: hydrostatic"}));
}

TEST(Hydrostatic, TheGroundIsNotAStandardSurface) {
    EXPECT_EQ(doubtsOf(with(BEIJING, "99015", "99/// ")), Lines());
    EXPECT_EQ(doubtsOf("TTAA 2823/ 54511 99015 29440 14002 00296 27250 88999 77999"), Lines());
}

TEST(Hydrostatic, InPartC) {
    const std::string part = "TTCC 28230 54511 70858 725// 24516 50058 671// 09010 30371 591// 08535 88999 77999";
    EXPECT_EQ(doubtsOf(part), Lines());
    EXPECT_EQ(doubtsOf(with(part, "50058", "50158")),
              (Lines{"mandatory 70: hydrostatic", "mandatory 50: hydrostatic", "mandatory 30: hydrostatic"}));
}

// ---- height ----

TEST(HeightMend, ADeepLow) {
    const Reading reading = readOnly(HALLEY);
    EXPECT_EQ(mendsOf(reading), Lines{"height: 700 hPa at 2426 m instead of 3426 m"});
    // -30.5 degrees, 2.2 less for the dew point, 6 knots from 195 degrees
    EXPECT_EQ(rowsOf(reading)[4], "mandatory,700,-30.5,-32.7,3.0864,195,2426,,,,");
    EXPECT_EQ(rowsOf(reading)[3], "mandatory,850,-25.3,-27,14.4032,180,1032,,,,");
    EXPECT_TRUE(reading.doubts.empty());
    EXPECT_EQ(doubtsOf(reading), Lines());
    EXPECT_EQ(reading.mends[0].groups.first, 14U);
    EXPECT_EQ(reading.mends[0].groups.count, 1U);
    EXPECT_FALSE(reading.lost());
}

TEST(HeightMend, WithoutMendsTheLevelsAreDoubtful) {
    const Reading reading = readOnly(HALLEY, false);
    EXPECT_TRUE(reading.mends.empty());
    EXPECT_EQ(doubtsOf(reading),
              (Lines{"mandatory 850: hydrostatic", "mandatory 700: hydrostatic", "mandatory 500: hydrostatic"}));
    EXPECT_EQ(reading.levels[4].values.fields.at(Corvane::LF_HEIGHT), 3426.0);
}

// A deep low. With -5.1, -10.1, -17.1 and -35.1 degrees the layers from 925 hPa up are 265.55 K * 2.475 m/K = 657 m,
// 259.55 K * 5.683 m/K = 1475 m and 247.05 K * 9.849 m/K = 2433 m thick: 850 hPa at 932 m, 700 hPa at 2407 m, 500 hPa
// at 4840 m.
TEST(HeightMend, SeveralAdjacentSurfacesMoveTogether) {
    const Reading reading = readOnly(
        "TTAA 2823/ 54511 99950 051// ///// 00/// ///// 92275 051// 85932 101// 70407 171// 50484 351// 88999");
    EXPECT_EQ(mendsOf(reading),
              (Lines{"height: 850 hPa at 932 m instead of 1932 m", "height: 700 hPa at 2407 m instead of 3407 m"}));
    EXPECT_EQ(doubtsOf(reading), Lines());
    ASSERT_EQ(reading.levels.size(), 5U);
    EXPECT_EQ(rowsOf(reading)[2], "mandatory,850,-10.1,,,,932,,,,");
    EXPECT_EQ(rowsOf(reading)[3], "mandatory,700,-17.1,,,,2407,,,,");
}

// A kilometre up: 700 hPa at 3080 m under a warm subtropical high is sent as 080; 580 would be read as 2580 m.
TEST(HeightMend, AShiftMayGoUp) {
    // 20.2 and 10.2 degrees: 288.35 K * 5.683 m/K = 1639 m above 850 hPa at 1560 m; 10.2 and -6.1: 275.2 K * 9.849 m/K
    // = 2710 m.
    const Reading reading = readOnly(
        "TTAA 2823/ 54511 99950 201// ///// 00/// ///// 92/// ///// 85900 202// 70539 102// 50625 061// 88999");
    EXPECT_EQ(mendsOf(reading), Lines{"height: 700 hPa at 3539 m instead of 2539 m"});
    EXPECT_EQ(doubtsOf(reading), Lines());
}

// With -62.7 and -64.7 degrees 250 to 200 hPa are 29.27 * 0.22314 * 209.45 = 1368 m, 200 to 150 hPa with -66.7
// degrees 29.27 * 0.28768 * 207.45 = 1747 m: 8600, 9970 and 11,720 m. 200 hPa is sent as 997 and read as 19,970 m.
TEST(HeightMend, TenThousandMetresFrom300HectopascalsOn) {
    const std::string start =
        "TTAA 2823/ 54511 99950 051// ///// 00/// ///// 92/// ///// 85/// ///// 70/// ///// 50/// ///// 40/// "
        "///// 30/// ///// ";
    const Reading reading = readOnly(start + "25860 627// 20997 647// 15172 667// 10/// ///// 88999");
    EXPECT_EQ(mendsOf(reading), Lines{"height: 200 hPa at 9970 m instead of 19970 m"});
    EXPECT_EQ(doubtsOf(reading), Lines());
    // 300 hPa is the lowest of them: 480 is read as 14,800 m. 400 to 300 hPa with -50.7 and -60.7 degrees are 29.27 *
    // 0.28768 * 217.45 = 1831 m, 300 to 250 hPa 29.27 * 0.18232 * 211.45 = 1128 m.
    const Reading lower =
        readOnly(with(start, "40/// ///// 30/// /////", "40297 507// 30480 607//") + "25593 627// 88999");
    EXPECT_EQ(mendsOf(lower), Lines{"height: 300 hPa at 4800 m instead of 14800 m"});
}

// With -10.1 and -17.1 degrees the layer is 1475 m thick. 850 hPa at 1035 m and 700 hPa at 3490 m are a kilometre too
// far from each other: either may be wrong.
TEST(HeightMend, NothingIsShiftedWhereTwoShiftsFit) {
    const std::string start = "TTAA 2823/ 54511 99950 000// ///// 00/// ///// 92/// ///// ";
    EXPECT_EQ(doubtsOf(start + "85932 101// 70407 171// 88999"), Lines());
    const Reading reading = readOnly(start + "85035 101// 70490 171// 88999");
    EXPECT_EQ(mendsOf(reading), Lines());
    EXPECT_EQ(doubtsOf(reading), (Lines{"mandatory 850: hydrostatic", "mandatory 700: hydrostatic"}));
}

TEST(HeightMend, AShiftThatLeavesALayerOffIsNotApplied) {
    EXPECT_EQ(mendsOf(with(HALLEY, "50475", "50575")), Lines());
    EXPECT_FALSE(doubtsOf(with(HALLEY, "50475", "50575")).empty());
}

// ---- tropopause ----

TEST(TropopauseCheck, Below500OrAbove12Hectopascals) {
    const std::string start = "TTAA 2823/ 54511 99015 02257 00000 00156 ///// 88";
    EXPECT_EQ(doubtsOf(start + "500 201// 31524 77999"), Lines());
    EXPECT_EQ(doubtsOf(start + "501 201// 31524 77999"), Lines{"tropopause 501: tropopause"});
    EXPECT_EQ(readOnly(start + "850 000// 31524 77999").doubts[0].text, "a tropopause at 850 hPa");
    const std::string high = "TTCC 2823/ 54511 70858 725// 88";
    EXPECT_EQ(doubtsOf(high + "120 591// 31524 77999"), Lines());
    EXPECT_EQ(doubtsOf(high + "119 591// 31524 77999"), Lines{"tropopause 11.9: tropopause"});
}

TEST(TropopauseCheck, OneAt100HectopascalsInPartC) {
    const Reading reading = readOnly("TTCC 2823/ 54511 70858 725// 50058 671// 88100 791// 31524 77999");
    EXPECT_EQ(doubtsOf(reading), Lines{"tropopause 10: tropopause"});
    EXPECT_EQ(reading.doubts[0].name, "tropopause");
    EXPECT_EQ(reading.doubts[0].text, "a tropopause at 10 hPa");
}

TEST(TropopauseCheck, OneWithoutAPressureIsNotDoubtful) {
    EXPECT_EQ(doubtsOf("TTCC 2823/ 54511 70858 725// 88/// 791// 31524 77999"), Lines());
}

// ---- lapse rate ----

// From 1000 hPa and 20 degrees the dry adiabat reaches 500 hPa at 293.15 * 0.5^(2/7) = 240.48 K, -32.7 degrees.
TEST(LapseRate, FiveKelvinBelowTheDryAdiabat) {
    EXPECT_EQ(doubtsOf("TTBB 28238 54511 00000 200// 11500 375//"), Lines());  // -37.5
    const Reading reading = readOnly("TTBB 28238 54511 00000 200// 11500 377//");
    EXPECT_EQ(doubtsOf(reading), (Lines{"significant 1000: lapse-rate", "significant 500: lapse-rate"}));
    ASSERT_EQ(reading.doubts.size(), 1U);
    EXPECT_EQ(reading.doubts[0].name, "lapse-rate");
    EXPECT_EQ(reading.doubts[0].text, "500 hPa is 5.0 K colder than the dry adiabat from 1000 hPa");
}

TEST(LapseRate, LevelsAreAdjacentByPressureWhateverTheirKind) {
    // The tropopause at 187 hPa lies between 200 and 150 hPa.
    const Reading reading = readOnly(with(BEIJING, "88187 639//", "88187 759//"));
    EXPECT_EQ(doubtsOf(reading), (Lines{"mandatory 200: lapse-rate", "tropopause 187: lapse-rate"}));
}

TEST(LapseRate, LevelsWithoutATemperatureAreNotCounted) {
    EXPECT_EQ(doubtsOf("TTBB 28238 54511 00000 200// 11700 ///// 22500 375//"), Lines());
    EXPECT_EQ(doubtsOf("TTBB 28238 54511 00000 200// 11500 ///// 21212 00500 28506"), Lines());
}

TEST(LapseRate, AMarkIsSetOnce) {
    EXPECT_EQ(doubtsOf("TTBB 28238 54511 00000 200// 11700 251// 22500 651//"),
              (Lines{"significant 1000: lapse-rate", "significant 700: lapse-rate", "significant 500: lapse-rate"}));
    EXPECT_EQ(readOnly("TTBB 28238 54511 00000 200// 11700 251// 22500 651//").doubts.size(), 2U);
}

TEST(LapseRate, OneLevelMayHaveTwoDoubts) {
    const Reading reading = readOnly("TTAA 2823/ 54511 99015 02257 00000 00156 ///// 88501 801// 31524 77999");
    EXPECT_EQ(doubtsOf(reading),
              (Lines{"surface 1015: lapse-rate", "tropopause 501: tropopause", "tropopause 501: lapse-rate"}));
}

}  // namespace
