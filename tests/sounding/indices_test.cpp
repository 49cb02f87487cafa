// Indices of soundings that are made so that the result is known, of real soundings against a second computation, and
// of soundings that no atmosphere has.
#include "IndicesTable.h"
#include "PlainIndices.h"
#include "SaneIndices.h"

#include <corvane/Indices.h>
#include <corvane/Thermodynamics.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace corvane;

const double NONE = SoundingLevel::NOT_GIVEN;
const double INFINITE = std::numeric_limits<double>::infinity();

SoundingLevel levelAt(double pressure, double temperature, double dewpoint) {
    SoundingLevel level;
    level.pressure = pressure;
    level.temperature = temperature;
    level.dewpoint = dewpoint;
    level.kinds = SoundingLevel::SIGNIFICANT;
    return level;
}

SoundingLevel windAt(double pressure, double height, double direction, double speed) {
    SoundingLevel level = levelAt(pressure, NONE, NONE);
    level.height = height;
    level.windDirection = direction;
    level.windSpeed = speed;
    return level;
}

Sounding soundingWith(const std::vector<SoundingLevel>& levels) {
    Sounding sounding;
    sounding.levels = levels;
    if (!levels.empty()) {
        sounding.levels.front().kinds = SoundingLevel::SURFACE;
    }
    return sounding;
}

// ---- soundings with a known result ---------------------------------------------------------------------------------

// A saturated parcel of 1000 hPa and 20 degrees in air of the same mixing ratio that is colder than the parcel by a
// given amount, in virtual temperature. A level every hectopascal.
Sounding coldBy(const std::function<double(double)>& difference, double top) {
    std::vector<SoundingLevel> levels{levelAt(1000.0, 20.0, 20.0)};
    for (double pressure = 999.0; pressure >= top; pressure -= 1.0) {
        const double parcel = pseudoadiabat(20.0, 1000.0, pressure);
        const double ratio = mixingRatio(parcel, pressure);
        const double less = difference(pressure) * (1.0 + ratio) / (1.0 + ratio / 0.622);
        levels.push_back(levelAt(pressure, parcel - less, parcel));
    }
    return soundingWith(levels);
}

TEST(Indices, CapeOfAConstantDifferenceIsItsLogarithmicDepth) {
    const Indices indices = indicesOf(coldBy([](double) { return 2.0; }, 300.0));
    EXPECT_EQ(indices.surface.pressure, 1000.0);
    EXPECT_EQ(indices.surface.lclPressure, 1000.0);
    EXPECT_NEAR(indices.surface.lfcPressure, 1000.0, 1e-6);
    EXPECT_NEAR(indices.surface.cape, 287.04 * 2.0 * std::log(1000.0 / 300.0), 1.5);
    EXPECT_EQ(indices.surface.cin, 0.0);
    EXPECT_TRUE(std::isnan(indices.surface.elPressure)) << "the sounding ends inside the layer";
}

TEST(Indices, LayersOfKnownArea) {
    // Colder than the parcel from 900 to 800 and, by more, from 600 to 300 hPa; warmer in between and below.
    const auto difference = [](double pressure) {
        if (pressure > 900.0) {
            return -1.0;
        }
        if (pressure > 800.0) {
            return 0.5;
        }
        if (pressure > 600.0) {
            return -1.5;
        }
        return pressure > 300.0 ? 3.0 : -5.0;
    };
    const ParcelIndices surface = indicesOf(coldBy(difference, 200.0)).surface;
    EXPECT_NEAR(surface.lfcPressure, 600.0, 1.0) << "the larger layer, not the lower one";
    EXPECT_NEAR(surface.elPressure, 300.0, 1.0);
    EXPECT_NEAR(surface.cape, 287.04 * 3.0 * std::log(600.0 / 300.0), 3.0);
    EXPECT_NEAR(surface.cin, -287.04 * (std::log(1000.0 / 900.0) + 1.5 * std::log(800.0 / 600.0)), 1.5);
}

TEST(Indices, CapeCountsEveryLayerUpToTheEquilibriumLevel) {
    // The larger layer is the lower one; the equilibrium level is the end of the upper one.
    const auto difference = [](double pressure) {
        if (pressure > 500.0) {
            return 3.0;
        }
        if (pressure > 400.0) {
            return -2.0;
        }
        return pressure > 300.0 ? 1.0 : -5.0;
    };
    const ParcelIndices surface = indicesOf(coldBy(difference, 200.0)).surface;
    EXPECT_NEAR(surface.lfcPressure, 1000.0, 1e-6);
    EXPECT_NEAR(surface.elPressure, 300.0, 1.0);
    EXPECT_NEAR(surface.cape, 287.04 * (3.0 * std::log(2.0) + std::log(4.0 / 3.0)), 3.0);
    EXPECT_EQ(surface.cin, 0.0) << "what is above the level of free convection inhibits nothing";
}

TEST(Indices, WarmerAirThanTheParcelEverywhereHasNeitherCapeNorCin) {
    const ParcelIndices surface = indicesOf(coldBy([](double) { return -2.0; }, 300.0)).surface;
    EXPECT_EQ(surface.lclPressure, 1000.0);
    EXPECT_TRUE(std::isnan(surface.lfcPressure));
    EXPECT_TRUE(std::isnan(surface.elPressure));
    EXPECT_EQ(surface.cape, 0.0);
    EXPECT_EQ(surface.cin, 0.0);
}

TEST(Indices, DryAdiabaticLayerHasNoCape) {
    std::vector<SoundingLevel> levels;
    const double ratio = mixingRatio(-30.0, 1000.0);
    for (double pressure = 1000.0; pressure >= 500.0; pressure -= 20.0) {
        levels.push_back(levelAt(pressure, dryAdiabat(25.0, 1000.0, pressure), dewpointOfMixingRatio(ratio, pressure)));
    }
    const Indices indices = indicesOf(soundingWith(levels));
    EXPECT_LT(indices.surface.lclPressure, 500.0);
    EXPECT_TRUE(std::isnan(indices.surface.lfcPressure));
    EXPECT_EQ(indices.surface.cape, 0.0);
    EXPECT_EQ(indices.surface.cin, 0.0);
    EXPECT_NEAR(indices.surface.liftedIndex, 0.0, 1e-9);
}

TEST(Indices, BuoyancyBelowTheCondensationLevelIsNotFreeConvection) {
    // Cold from 1000 hPa to the condensation level near 860 hPa, then warmer than the parcel.
    const Sounding sounding = soundingWith({levelAt(1000.0, 30.0, 20.0), levelAt(950.0, 24.0, NONE),
                                            levelAt(880.0, 22.0, NONE), levelAt(500.0, 15.0, NONE)});
    const ParcelIndices surface = indicesOf(sounding).surface;
    EXPECT_NEAR(surface.lclPressure, 865.0, 1.0);
    EXPECT_TRUE(std::isnan(surface.lfcPressure));
    EXPECT_EQ(surface.cape, 0.0);
}

TEST(Indices, LevelOfFreeConvectionIsTheCondensationLevelWhereTheParcelIsBuoyantThere) {
    const Sounding sounding =
        soundingWith({levelAt(1000.0, 30.0, 20.0), levelAt(900.0, 19.0, 12.0), levelAt(500.0, -18.0, -40.0)});
    const ParcelIndices surface = indicesOf(sounding).surface;
    EXPECT_NEAR(surface.lfcPressure, surface.lclPressure, 1e-9);
    EXPECT_EQ(surface.cin, 0.0);
    EXPECT_GT(surface.cape, 100.0);
}

TEST(Indices, AirAboveTheHighestDewPointIsDry) {
    // Between two dew points the air is moist, above the highest one it is not: the sounding that says so is warmer.
    const std::vector<SoundingLevel> levels{levelAt(1000.0, 30.0, 24.0), levelAt(850.0, 18.0, NONE),
                                            levelAt(700.0, 6.0, 4.0), levelAt(400.0, -25.0, NONE),
                                            levelAt(250.0, -40.0, NONE)};
    std::vector<SoundingLevel> bridged = levels;
    bridged.pop_back();
    bridged.push_back(levelAt(250.0, -40.0, -41.0));
    EXPECT_GT(indicesOf(soundingWith(levels)).surface.cape, indicesOf(soundingWith(bridged)).surface.cape);
    std::map<std::string, double> plain = plainIndices(soundingWith(levels));
    EXPECT_NEAR(indicesOf(soundingWith(levels)).surface.cape, plain["sb_cape"], 1.0);
}

TEST(Indices, LiftedIndexComparesTemperaturesAt500Hectopascals) {
    const double parcel = pseudoadiabat(20.0, 1000.0, 500.0);
    const Sounding sounding = soundingWith({levelAt(1000.0, 20.0, 20.0), levelAt(500.0, -12.0, -13.0)});
    EXPECT_NEAR(indicesOf(sounding).surface.liftedIndex, -12.0 - parcel, 1e-9);
    EXPECT_TRUE(std::isnan(
        indicesOf(soundingWith({levelAt(1000.0, 20.0, 20.0), levelAt(501.0, -12.0, -13.0)})).surface.liftedIndex));
    EXPECT_TRUE(std::isnan(
        indicesOf(soundingWith({levelAt(499.0, -20.0, -21.0), levelAt(300.0, -45.0, -50.0)})).surface.liftedIndex));
}

TEST(Indices, MostUnstableParcelIsALevelOfTheLowest300Hectopascals) {
    std::vector<SoundingLevel> levels{levelAt(1000.0, 10.0, 5.0), levelAt(900.0, 18.0, 16.0),
                                      levelAt(700.0, 5.0, -20.0), levelAt(699.0, 25.0, 24.0),
                                      levelAt(500.0, -15.0, -30.0)};
    EXPECT_EQ(indicesOf(soundingWith(levels)).mostUnstable.pressure, 900.0);
    levels[3].pressure = 700.0;
    levels.erase(levels.begin() + 2);
    EXPECT_EQ(indicesOf(soundingWith(levels)).mostUnstable.pressure, 700.0) << "300 hPa above the ground count";
    levels[1].dewpoint = NONE;
    levels[2].dewpoint = NONE;
    EXPECT_EQ(indicesOf(soundingWith(levels)).mostUnstable.pressure, 1000.0) << "a level without dew point does not";
    EXPECT_EQ(indicesOf(soundingWith(levels)).surface.pressure, 1000.0);
}

TEST(Indices, SurfaceParcelIsTheLowestLevelWithADewPoint) {
    const Sounding sounding = soundingWith({levelAt(1000.0, 20.0, NONE), levelAt(925.0, 15.0, 10.0),
                                            levelAt(850.0, 10.0, 5.0), levelAt(500.0, -20.0, NONE)});
    EXPECT_EQ(indicesOf(sounding).surface.pressure, 925.0);
}

TEST(Indices, KIndexAndTotalTotals) {
    std::vector<SoundingLevel> levels{levelAt(1000.0, 28.0, 20.0), levelAt(850.0, 18.0, 14.0), levelAt(700.0, 6.0, 2.0),
                                      levelAt(500.0, -12.0, NONE)};
    EXPECT_NEAR(indicesOf(soundingWith(levels)).kIndex, 18.0 + 12.0 + 14.0 - 4.0, 1e-9);
    EXPECT_NEAR(indicesOf(soundingWith(levels)).totalTotals, 18.0 + 14.0 + 24.0, 1e-9);
    levels[2].dewpoint = NONE;
    EXPECT_TRUE(std::isnan(indicesOf(soundingWith(levels)).kIndex)) << "no dew point at 700 hPa or above";
    EXPECT_NEAR(indicesOf(soundingWith(levels)).totalTotals, 56.0, 1e-9);
    levels.erase(levels.begin(), levels.begin() + 2);
    levels.insert(levels.begin(), levelAt(849.0, 18.0, 14.0));
    EXPECT_TRUE(std::isnan(indicesOf(soundingWith(levels)).totalTotals)) << "850 hPa is below the ground";
}

TEST(Indices, ValuesBetweenLevelsAreLinearInTheLogarithmOfPressure) {
    // 850 = 1000^a 500^(1 - a) with a = ln(850/500) / ln 2 = 0.7655.
    const double share = std::log(850.0 / 500.0) / std::log(2.0);
    const Sounding sounding = soundingWith({levelAt(1000.0, 20.0, 10.0), levelAt(500.0, -20.0, -30.0)});
    const double t850 = -20.0 + 40.0 * share;
    const double d850 = -30.0 + 40.0 * share;
    EXPECT_NEAR(indicesOf(sounding).totalTotals, t850 + d850 + 40.0, 1e-9);
}

TEST(Indices, PrecipitableWaterOfAConstantHumidity) {
    // q = 0.01 over 500 hPa: 0.01 * 50000 Pa / 9.80665 m/s2 = 50.99 kg/m2.
    std::vector<SoundingLevel> levels;
    for (double pressure = 1000.0; pressure >= 500.0; pressure -= 10.0) {
        levels.push_back(levelAt(pressure, 25.0, dewpointOfMixingRatio(0.01 / 0.99, pressure)));
    }
    EXPECT_NEAR(indicesOf(soundingWith(levels)).precipitableWater, 50.99, 0.01);
    levels.push_back(levelAt(300.0, -30.0, NONE));
    EXPECT_NEAR(indicesOf(soundingWith(levels)).precipitableWater, 50.99, 0.01) << "up to the highest dew point";
    levels.front().dewpoint = NONE;
    EXPECT_TRUE(std::isnan(indicesOf(soundingWith(levels)).precipitableWater)) << "the ground has none";
}

TEST(Indices, FreezingLevelIsTheLowestFallBelowZero) {
    const Sounding sounding = soundingWith({levelAt(1000.0, 10.0, NONE), levelAt(500.0, -10.0, NONE)});
    EXPECT_NEAR(indicesOf(sounding).freezingLevelPressure, std::sqrt(1000.0 * 500.0), 1e-6);
    // Twice below zero: the lower of the two.
    const Sounding twice = soundingWith({levelAt(1000.0, 2.0, NONE), levelAt(950.0, -2.0, NONE),
                                         levelAt(900.0, 3.0, NONE), levelAt(700.0, -8.0, NONE)});
    EXPECT_NEAR(indicesOf(twice).freezingLevelPressure, std::sqrt(1000.0 * 950.0), 1e-6);
    const Sounding below =
        soundingWith({levelAt(1000.0, -1.0, NONE), levelAt(900.0, 3.0, NONE), levelAt(700.0, -8.0, NONE)});
    EXPECT_TRUE(std::isnan(indicesOf(below).freezingLevelPressure)) << "the surface is below zero";
    const Sounding exact =
        soundingWith({levelAt(1000.0, 4.0, NONE), levelAt(900.0, 0.0, NONE), levelAt(700.0, -8.0, NONE)});
    EXPECT_NEAR(indicesOf(exact).freezingLevelPressure, 900.0, 1e-9);
    const Sounding warm = soundingWith({levelAt(1000.0, 30.0, NONE), levelAt(900.0, 22.0, NONE)});
    EXPECT_TRUE(std::isnan(indicesOf(warm).freezingLevelPressure)) << "the sounding ends above zero";
}

TEST(Indices, WetBulbZeroIsWhereTheWetBulbTemperatureIsZero) {
    const Sounding sounding = soundingWith({levelAt(1000.0, 25.0, 10.0), levelAt(850.0, 12.0, -5.0),
                                            levelAt(700.0, 3.0, -20.0), levelAt(500.0, -15.0, -40.0)});
    const double pressure = indicesOf(sounding).wetBulbZeroPressure;
    EXPECT_GT(pressure, indicesOf(sounding).freezingLevelPressure);
    const double share = std::log(850.0 / pressure) / std::log(850.0 / 700.0);
    EXPECT_NEAR(plainWetBulb(12.0 - 9.0 * share, -5.0 - 15.0 * share, pressure), 0.0, 0.005);
    // In saturated air it is the freezing level.
    const Sounding saturated = soundingWith({levelAt(1000.0, 10.0, 10.0), levelAt(500.0, -10.0, -10.0)});
    EXPECT_NEAR(indicesOf(saturated).wetBulbZeroPressure, indicesOf(saturated).freezingLevelPressure, 1e-4);
    const Sounding cold = soundingWith({levelAt(1000.0, 3.0, -20.0), levelAt(500.0, -30.0, -40.0)});
    EXPECT_TRUE(std::isnan(indicesOf(cold).wetBulbZeroPressure)) << "the surface is below zero";
}

TEST(Indices, HeightsAreAboveTheGround) {
    // Isothermal at 0 degrees up to 900 hPa, then falling: the height of 900 hPa is 29.27 * 273.15 * ln(1000/900).
    std::vector<SoundingLevel> levels{levelAt(1000.0, 0.0, NONE), levelAt(800.0, 0.0, NONE),
                                      levelAt(500.0, -20.0, NONE)};
    levels[0].height = 120.0;
    levels[1].height = 120.0 + thickness(1000.0, 800.0, 0.0);
    levels[2].height = levels[1].height + thickness(800.0, 500.0, -10.0);
    const Indices indices = indicesOf(soundingWith(levels));
    EXPECT_NEAR(indices.freezingLevelPressure, 800.0, 1e-9);
    EXPECT_NEAR(indices.freezingLevelHeight, 29.27 * 273.15 * std::log(1.25), 0.5);
    levels[0].height = NONE;
    EXPECT_TRUE(std::isnan(indicesOf(soundingWith(levels)).freezingLevelHeight))
        << "the height of the ground is unknown";
    EXPECT_NEAR(indicesOf(soundingWith(levels)).freezingLevelPressure, 800.0, 1e-9);
}

TEST(Indices, HeightBetweenTwoReportedHeightsFollowsTheTemperature) {
    // 0 degrees at 707.1 hPa; the lower half of the layer is warmer and thicker.
    std::vector<SoundingLevel> levels{levelAt(1000.0, 10.0, NONE), levelAt(500.0, -10.0, NONE)};
    levels[0].height = 0.0;
    levels[1].height = 5600.0;
    const double share = (273.15 + 5.0) / (273.15 + 5.0 + 273.15 - 5.0);
    EXPECT_NEAR(indicesOf(soundingWith(levels)).freezingLevelHeight, 5600.0 * share, 0.01);
}

TEST(Indices, ShearIsTheDifferenceOfTwoWinds) {
    // 5 m/s from the south at the ground; from the west 20 m/s at 4000 m and 40 m/s at 8000 m: 30 m/s at 6000 m.
    const Sounding sounding = soundingWith(
        {windAt(1000.0, 0.0, 180.0, 5.0), windAt(600.0, 4000.0, 270.0, 20.0), windAt(350.0, 8000.0, 270.0, 40.0)});
    EXPECT_NEAR(indicesOf(sounding).shear0To6Km, std::hypot(30.0, 5.0), 1e-9);
    // Above the ground, not above the sea.
    const Sounding high = soundingWith(
        {windAt(800.0, 2000.0, 180.0, 5.0), windAt(350.0, 8000.0, 270.0, 40.0), windAt(250.0, 10000.0, 270.0, 50.0)});
    EXPECT_NEAR(indicesOf(high).shear0To6Km, std::hypot(40.0, 5.0), 1e-9);
    const Sounding low = soundingWith({windAt(1000.0, 0.0, 180.0, 5.0), windAt(480.0, 5999.0, 270.0, 20.0)});
    EXPECT_TRUE(std::isnan(indicesOf(low).shear0To6Km)) << "no wind as high as that";
    const Sounding calm = soundingWith({windAt(1000.0, NONE, 0.0, 0.0), windAt(300.0, 9000.0, 270.0, 20.0)});
    EXPECT_TRUE(std::isnan(indicesOf(calm).shear0To6Km)) << "the height of the ground is unknown";
}

TEST(Indices, LapseRateNeedsTemperaturesAndHeights) {
    std::vector<SoundingLevel> levels{levelAt(1000.0, 20.0, NONE), levelAt(700.0, 5.0, NONE),
                                      levelAt(500.0, -10.0, NONE)};
    EXPECT_TRUE(std::isnan(indicesOf(soundingWith(levels)).lapseRate700To500));
    levels[1].height = 3000.0;
    levels[2].height = 5500.0;
    EXPECT_NEAR(indicesOf(soundingWith(levels)).lapseRate700To500, 6.0, 1e-9);
    std::swap(levels[1].height, levels[2].height);
    EXPECT_TRUE(std::isnan(indicesOf(soundingWith(levels)).lapseRate700To500)) << "heights that fall";
}

TEST(Indices, LevelsBelowTheGroundCountForNothing) {
    std::vector<SoundingLevel> levels{levelAt(930.0, 22.0, 15.0), levelAt(850.0, 15.0, 10.0), levelAt(700.0, 4.0, -5.0),
                                      levelAt(500.0, -15.0, -30.0)};
    Sounding plain = soundingWith(levels);
    Sounding marked = plain;
    marked.levels.insert(marked.levels.begin(), {levelAt(1000.0, 60.0, 40.0), levelAt(950.0, -60.0, -60.0)});
    Sounding unmarked = marked;
    marked.levels[0].belowGround = true;
    marked.levels[1].belowGround = true;
    for (const Sounding& sounding : {marked, unmarked}) {
        std::string expected;
        std::string found;
        table::appendIndices(expected, indicesOf(plain));
        table::appendIndices(found, indicesOf(sounding));
        EXPECT_EQ(found, expected);
    }
}

// ---- soundings that no atmosphere has ------------------------------------------------------------------------------

bool hasNothing(const Indices& indices) {
    return std::all_of(table::INDEX_COLUMNS.begin(), table::INDEX_COLUMNS.end(),
                       [&indices](const table::IndexColumn& column) { return std::isnan(column.value(indices)); });
}

TEST(Indices, NothingComesFromNothing) {
    EXPECT_TRUE(hasNothing(indicesOf(Sounding())));
    EXPECT_TRUE(hasNothing(indicesOf(soundingWith({SoundingLevel()}))));
    EXPECT_TRUE(hasNothing(indicesOf(soundingWith({levelAt(0.0, 20.0, 10.0)}))));
    EXPECT_TRUE(hasNothing(indicesOf(soundingWith({levelAt(-850.0, 20.0, 10.0), levelAt(-500.0, 0.0, -5.0)}))));
    EXPECT_TRUE(hasNothing(indicesOf(soundingWith({levelAt(1000.0, NONE, NONE), levelAt(500.0, NONE, NONE)}))));
    EXPECT_TRUE(hasNothing(indicesOf(soundingWith({levelAt(1000.0, 300.0, 200.0), levelAt(500.0, -300.0, -400.0)}))));
    EXPECT_TRUE(hasNothing(indicesOf(soundingWith({levelAt(INFINITE, 10.0, 5.0), levelAt(NONE, 1.0, 0.0)}))));
}

TEST(Indices, OneLevelHasAParcelWithoutAWayUp) {
    const Indices indices = indicesOf(soundingWith({levelAt(1000.0, 30.0, 20.0)}));
    EXPECT_EQ(indices.surface.pressure, 1000.0);
    EXPECT_NEAR(indices.surface.lclPressure, 864.5, 0.1);
    EXPECT_EQ(indices.surface.cape, 0.0);
    EXPECT_EQ(indices.surface.cin, 0.0);
    EXPECT_TRUE(std::isnan(indices.surface.liftedIndex));
    EXPECT_TRUE(std::isnan(indices.precipitableWater));
}

TEST(Indices, OnlyWindsGiveShearAndNothingElse) {
    Indices indices = indicesOf(soundingWith(
        {windAt(1000.0, 0.0, 180.0, 5.0), windAt(600.0, 4000.0, 270.0, 20.0), windAt(350.0, 8000.0, 270.0, 40.0)}));
    EXPECT_FALSE(std::isnan(indices.shear0To6Km));
    indices.shear0To6Km = NONE;
    EXPECT_TRUE(hasNothing(indices));
}

TEST(Indices, WithoutDewPointsTemperaturesRemain) {
    const Indices indices = indicesOf(soundingWith({levelAt(1000.0, 20.0, NONE), levelAt(850.0, 10.0, NONE),
                                                    levelAt(700.0, 0.0, NONE), levelAt(500.0, -20.0, NONE)}));
    EXPECT_NEAR(indices.freezingLevelPressure, 700.0, 1e-9);
    EXPECT_TRUE(std::isnan(indices.surface.pressure));
    EXPECT_TRUE(std::isnan(indices.surface.cape));
    EXPECT_TRUE(std::isnan(indices.mostUnstable.cin));
    EXPECT_TRUE(std::isnan(indices.totalTotals));
    EXPECT_TRUE(std::isnan(indices.wetBulbZeroPressure));
}

TEST(Indices, ALevelThatIsNotAboveTheOneBeforeItCountsForNothing) {
    const std::vector<SoundingLevel> levels{levelAt(1000.0, 25.0, 20.0), levelAt(850.0, 15.0, 12.0),
                                            levelAt(500.0, -15.0, -30.0)};
    std::vector<SoundingLevel> repeated = levels;
    repeated.insert(repeated.begin() + 2, levelAt(850.0, -40.0, -50.0));
    repeated.insert(repeated.begin() + 3, levelAt(900.0, 40.0, 39.0));
    repeated.push_back(levelAt(0.0, 10.0, 10.0));
    repeated.push_back(levelAt(-10.0, 10.0, 10.0));
    std::string expected;
    std::string found;
    table::appendIndices(expected, indicesOf(soundingWith(levels)));
    table::appendIndices(found, indicesOf(soundingWith(repeated)));
    EXPECT_EQ(found, expected);
}

TEST(Indices, DewPointAboveTheTemperatureIsSaturation) {
    const Indices above = indicesOf(soundingWith({levelAt(1000.0, 20.0, 23.0), levelAt(500.0, -15.0, NONE)}));
    EXPECT_EQ(above.surface.lclPressure, 1000.0);
    EXPECT_EQ(above.surface.lclTemperature, 20.0);
    expectSane(soundingWith({levelAt(1000.0, 20.0, 23.0), levelAt(500.0, -15.0, NONE)}), above);
}

TEST(Indices, AnyNumbersGiveNumbersOrNothing) {
    const std::vector<double> numbers{NONE, INFINITE, -INFINITE, 0.0,   -1.0,  1e-300, 1e300, -1e300, 0.02, 3.0,
                                      20.0, -90.0,    99.9,      500.0, 850.0, 1000.0, 1e-5,  6.0,    40.0, -149.9};
    std::mt19937 random(1);
    const auto any = [&] { return numbers[random() % numbers.size()]; };
    int given = 0;
    for (int round = 0; round < 1000; ++round) {
        Sounding sounding;
        const std::size_t count = random() % 8;
        for (std::size_t index = 0; index < count; ++index) {
            SoundingLevel level = levelAt(any(), any(), any());
            level.height = any();
            level.windSpeed = any();
            level.windDirection = any();
            level.kinds = static_cast<unsigned>(random() % 32);
            level.belowGround = random() % 8 == 0;
            sounding.levels.push_back(level);
        }
        if (round % 2 == 0) {
            std::sort(
                sounding.levels.begin(), sounding.levels.end(), [](const SoundingLevel& a, const SoundingLevel& b) {
                    return (std::isnan(a.pressure) ? -1.0 : a.pressure) > (std::isnan(b.pressure) ? -1.0 : b.pressure);
                });
        }
        const Indices indices = indicesOf(sounding);
        expectSane(sounding, indices);
        given += std::isnan(indices.surface.cape) ? 0 : 1;
    }
    EXPECT_GT(given, 50);
}

}  // namespace
