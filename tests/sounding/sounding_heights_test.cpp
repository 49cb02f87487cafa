// Heights of the levels that report none.
#include "SoundingParts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using corvane::Sounding;
using corvane::SoundingLevel;
using sounding_test::Fields;
using sounding_test::handMade;
using sounding_test::readLevel;
using sounding_test::soundingsOf;

constexpr auto SURFACE = Corvane::LT_SURFACE;
constexpr auto MANDATORY = Corvane::LT_MANDATORY;
constexpr auto SIGNIFICANT = Corvane::LT_SIGNIFICANT;
constexpr auto PRES = Corvane::LF_PRES;
constexpr auto TDRY = Corvane::LF_TDRY;
constexpr auto DP = Corvane::LF_DP;
constexpr auto WSPD = Corvane::LF_WSPD;
constexpr auto WDIR = Corvane::LF_WDIR;
constexpr auto HEIGHT = Corvane::LF_HEIGHT;

// Metres per kelvin and unit of ln p: dry gas constant over standard gravity.
constexpr double METRES_PER_KELVIN = 287.04 / 9.80665;
constexpr double ROUNDING = 1e-6;

std::vector<SoundingLevel> levelsOf(std::vector<corvane::ReadLevel> levels) {
    const std::vector<Sounding> soundings = soundingsOf({handMade('A', std::move(levels))});
    EXPECT_EQ(soundings.size(), 1U);
    return soundings.front().levels;
}

// Thickness of an isothermal layer.
double isothermal(double lower, double upper, double celsius) {
    return METRES_PER_KELVIN * (celsius + 273.15) * std::log(lower / upper);
}

// An independent integration: small steps of pressure, hydrostatic equation dz = -R T_v / (g p) dp, with temperature
// and dew point linear in ln p between two ends. Vapour pressure by Bolton (1980), eq. 10.
double integrated(double lower, double upper, double t0, double t1, double td0, double td1) {
    const int steps = 20000;
    const double step = (lower - upper) / steps;
    double height = 0.0;
    for (int index = 0; index < steps; ++index) {
        const double p = lower - (index + 0.5) * step;
        const double share = std::log(lower / p) / std::log(lower / upper);
        const double t = t0 + share * (t1 - t0);
        const double td = td0 + share * (td1 - td0);
        const double e = 6.112 * std::exp(17.67 * td / (td + 243.5));
        const double virtualKelvins = (t + 273.15) / (1.0 - e / p * (1.0 - 0.622));
        height += METRES_PER_KELVIN * virtualKelvins * step / p;
    }
    return height;
}

TEST(Heights, IsothermalLayerAboveTheLastReportedHeight) {
    const std::vector<SoundingLevel> levels = levelsOf(
        {readLevel(MANDATORY, {{PRES, 500}, {TDRY, -20}, {HEIGHT, 5500}}),
         readLevel(SIGNIFICANT, {{PRES, 450}, {TDRY, -20}}), readLevel(SIGNIFICANT, {{PRES, 400}, {TDRY, -20}})});
    ASSERT_EQ(levels.size(), 3U);
    EXPECT_EQ(levels[0].height, 5500);
    EXPECT_FALSE(levels[0].heightComputed);
    EXPECT_NEAR(levels[1].height, 5500 + isothermal(500, 450, -20), ROUNDING);
    EXPECT_NEAR(levels[2].height, 5500 + isothermal(500, 400, -20), ROUNDING);
    EXPECT_TRUE(levels[1].heightComputed);
    EXPECT_TRUE(levels[2].heightComputed);
}

TEST(Heights, SurfaceIsReachedFromTheLowestReportedHeight) {
    const std::vector<SoundingLevel> levels =
        levelsOf({readLevel(SURFACE, {{PRES, 870}, {TDRY, 15}}), readLevel(SIGNIFICANT, {{PRES, 860}, {TDRY, 15}}),
                  readLevel(MANDATORY, {{PRES, 850}, {TDRY, 15}, {HEIGHT, 1499}})});
    ASSERT_EQ(levels.size(), 3U);
    EXPECT_NEAR(levels[0].height, 1499 - isothermal(870, 850, 15), ROUNDING);
    EXPECT_NEAR(levels[1].height, 1499 - isothermal(860, 850, 15), ROUNDING);
    EXPECT_TRUE(levels[0].heightComputed);
}

TEST(Heights, MoistLayerAgreesWithAnIndependentIntegration) {
    const std::vector<SoundingLevel> levels =
        levelsOf({readLevel(MANDATORY, {{PRES, 1000}, {TDRY, 30}, {DP, 25}, {HEIGHT, 100}}),
                  readLevel(SIGNIFICANT, {{PRES, 950}, {TDRY, 26.5}, {DP, 23.5}}),
                  readLevel(SIGNIFICANT, {{PRES, 900}, {TDRY, 24.0}, {DP, 19.0}})});
    ASSERT_EQ(levels.size(), 3U);
    const double first = 100 + integrated(1000, 950, 30, 26.5, 25, 23.5);
    EXPECT_NEAR(levels[1].height, first, 0.02);
    EXPECT_NEAR(levels[2].height, first + integrated(950, 900, 26.5, 24.0, 23.5, 19.0), 0.05);
    // Water makes the difference: some 7 m here.
    EXPECT_GT(levels[2].height -
                  (100 + integrated(1000, 950, 30, 26.5, -99, -99) + integrated(950, 900, 26.5, 24.0, -99, -99)),
              5.0);
}

TEST(Heights, BetweenReportedHeightsBothAreMet) {
    // The reported layer is 10 % thicker than the temperatures say; so is each half of it.
    const double thickness = isothermal(850, 700, 0);
    const std::vector<SoundingLevel> levels =
        levelsOf({readLevel(MANDATORY, {{PRES, 850}, {TDRY, 0}, {HEIGHT, 1500}}),
                  readLevel(SIGNIFICANT, {{PRES, 800}, {TDRY, 0}}), readLevel(SIGNIFICANT, {{PRES, 750}, {TDRY, 0}}),
                  readLevel(MANDATORY, {{PRES, 700}, {TDRY, 0}, {HEIGHT, 1500 + 1.1 * thickness}})});
    ASSERT_EQ(levels.size(), 4U);
    EXPECT_EQ(levels[0].height, 1500);
    EXPECT_NEAR(levels[1].height, 1500 + 1.1 * isothermal(850, 800, 0), ROUNDING);
    EXPECT_NEAR(levels[2].height, 1500 + 1.1 * isothermal(850, 750, 0), ROUNDING);
    EXPECT_EQ(levels[3].height, 1500 + 1.1 * thickness);
    EXPECT_FALSE(levels[3].heightComputed);
}

TEST(Heights, MissingTemperaturesAreInterpolatedInTheLogarithmOfPressure) {
    const double middle = std::sqrt(500.0 * 400.0);
    const std::vector<SoundingLevel> levels =
        levelsOf({readLevel(MANDATORY, {{PRES, 500}, {TDRY, -10}, {HEIGHT, 5500}}),
                  readLevel(SIGNIFICANT, {{PRES, middle}, {WSPD, 10}, {WDIR, 90}}),
                  readLevel(SIGNIFICANT, {{PRES, 400}, {TDRY, -30}})});
    ASSERT_EQ(levels.size(), 3U);
    EXPECT_NEAR(levels[1].height, 5500 + isothermal(500, middle, -15), ROUNDING);
    EXPECT_NEAR(levels[2].height, 5500 + isothermal(500, 400, -20), ROUNDING);
}

TEST(Heights, MissingDewPointIsInterpolatedToo) {
    const double middle = std::sqrt(1000.0 * 900.0);
    const std::vector<SoundingLevel> levels =
        levelsOf({readLevel(MANDATORY, {{PRES, 1000}, {TDRY, 20}, {DP, 18}, {HEIGHT, 100}}),
                  readLevel(SIGNIFICANT, {{PRES, middle}, {TDRY, 20}}),
                  readLevel(SIGNIFICANT, {{PRES, 900}, {TDRY, 20}, {DP, 16}})});
    ASSERT_EQ(levels.size(), 3U);
    EXPECT_NEAR(levels[2].height, 100 + integrated(1000, 900, 20, 20, 18, 16), 0.05);
}

TEST(Heights, AboveTheHighestDewPointAirIsDry) {
    const std::vector<SoundingLevel> levels = levelsOf(
        {readLevel(MANDATORY, {{PRES, 850}, {TDRY, 20}, {DP, 18}, {HEIGHT, 1500}}),
         readLevel(SIGNIFICANT, {{PRES, 800}, {TDRY, 20}}), readLevel(SIGNIFICANT, {{PRES, 700}, {TDRY, 20}})});
    ASSERT_EQ(levels.size(), 3U);
    EXPECT_NEAR(levels[2].height - levels[1].height, isothermal(800, 700, 20), ROUNDING);
}

TEST(Heights, WithoutTemperaturesReportedHeightsStillBoundALayer) {
    const double middle = std::sqrt(500.0 * 400.0);
    const std::vector<SoundingLevel> levels =
        levelsOf({readLevel(SIGNIFICANT, {{PRES, 510}, {WSPD, 10}, {WDIR, 90}}),
                  readLevel(MANDATORY, {{PRES, 500}, {HEIGHT, 5500}}),
                  readLevel(SIGNIFICANT, {{PRES, middle}, {WSPD, 10}, {WDIR, 90}}),
                  readLevel(MANDATORY, {{PRES, 400}, {HEIGHT, 7100}}),
                  readLevel(SIGNIFICANT, {{PRES, 390}, {WSPD, 10}, {WDIR, 90}})});
    ASSERT_EQ(levels.size(), 5U);
    EXPECT_TRUE(std::isnan(levels[0].height));
    EXPECT_FALSE(levels[0].heightComputed);
    EXPECT_NEAR(levels[2].height, 6300, ROUNDING);
    EXPECT_TRUE(levels[2].heightComputed);
    EXPECT_TRUE(std::isnan(levels[4].height));
    EXPECT_FALSE(levels[4].heightComputed);
}

TEST(Heights, BeyondTheLastReportedHeightReachAsFarAsTemperatures) {
    const std::vector<SoundingLevel> levels = levelsOf({readLevel(SIGNIFICANT, {{PRES, 900}, {WSPD, 1}, {WDIR, 90}}),
                                                        readLevel(SIGNIFICANT, {{PRES, 860}, {TDRY, 10}}),
                                                        readLevel(MANDATORY, {{PRES, 850}, {TDRY, 10}, {HEIGHT, 1500}}),
                                                        readLevel(SIGNIFICANT, {{PRES, 800}, {TDRY, 10}}),
                                                        readLevel(SIGNIFICANT, {{PRES, 790}, {WSPD, 1}, {WDIR, 90}})});
    ASSERT_EQ(levels.size(), 5U);
    EXPECT_TRUE(std::isnan(levels[0].height));
    EXPECT_NEAR(levels[1].height, 1500 - isothermal(860, 850, 10), ROUNDING);
    EXPECT_NEAR(levels[3].height, 1500 + isothermal(850, 800, 10), ROUNDING);
    EXPECT_TRUE(std::isnan(levels[4].height));
    EXPECT_FALSE(levels[4].heightComputed);
}

TEST(Heights, TemperaturesThatEndInsideABoundedLayerAreHeld) {
    const std::vector<SoundingLevel> levels = levelsOf(
        {readLevel(MANDATORY, {{PRES, 500}, {HEIGHT, 5500}}), readLevel(SIGNIFICANT, {{PRES, 480}, {TDRY, -10}}),
         readLevel(SIGNIFICANT, {{PRES, 420}, {TDRY, -30}}), readLevel(MANDATORY, {{PRES, 400}, {HEIGHT, 7100}})});
    ASSERT_EQ(levels.size(), 4U);
    const double low = isothermal(500, 480, -10);
    const double middle = isothermal(480, 420, -20);
    const double high = isothermal(420, 400, -30);
    const double scale = 1600 / (low + middle + high);
    EXPECT_NEAR(levels[1].height, 5500 + scale * low, ROUNDING);
    EXPECT_NEAR(levels[2].height, 5500 + scale * (low + middle), ROUNDING);
}

TEST(Heights, ExtrapolatedHeightBelowTheGroundIsNotAStartingPoint) {
    const std::vector<SoundingLevel> levels =
        levelsOf({readLevel(SURFACE, {{PRES, 870}, {TDRY, 15}}), readLevel(MANDATORY, {{PRES, 1000}, {HEIGHT, 5}}),
                  readLevel(MANDATORY, {{PRES, 850}, {TDRY, 15}, {HEIGHT, 1499}})});
    ASSERT_EQ(levels.size(), 3U);
    EXPECT_EQ(levels[0].height, 5);
    EXPECT_NEAR(levels[1].height, 1499 - isothermal(870, 850, 15), ROUNDING);
}

TEST(Heights, AreNotComputedBelowTheGroundNorWithoutAReportedOne) {
    std::vector<SoundingLevel> levels =
        levelsOf({readLevel(SURFACE, {{PRES, 870}, {TDRY, 15}}), readLevel(SIGNIFICANT, {{PRES, 875}, {TDRY, 15}}),
                  readLevel(MANDATORY, {{PRES, 850}, {TDRY, 15}, {HEIGHT, 1499}})});
    ASSERT_EQ(levels.size(), 3U);
    EXPECT_TRUE(std::isnan(levels[0].height));
    EXPECT_FALSE(std::isnan(levels[1].height));

    levels =
        levelsOf({readLevel(SURFACE, {{PRES, 870}, {TDRY, 15}}), readLevel(SIGNIFICANT, {{PRES, 860}, {TDRY, 15}})});
    ASSERT_EQ(levels.size(), 2U);
    EXPECT_TRUE(std::isnan(levels[0].height));
    EXPECT_FALSE(levels[0].heightComputed);
    EXPECT_TRUE(std::isnan(levels[1].height));
}

TEST(Heights, ImpossibleTemperatureGivesNoHeightInsteadOfAWrongOne) {
    const std::vector<SoundingLevel> levels =
        levelsOf({readLevel(MANDATORY, {{PRES, 500}, {TDRY, -300}, {HEIGHT, 5500}}),
                  readLevel(SIGNIFICANT, {{PRES, 450}, {TDRY, -300}})});
    ASSERT_EQ(levels.size(), 2U);
    EXPECT_TRUE(std::isnan(levels[1].height));
    EXPECT_FALSE(levels[1].heightComputed);
}

}  // namespace
