// The formulas of moist air against published values, against each other and against a second integration.
#include "PlainIndices.h"

#include <corvane/Thermodynamics.h>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

using namespace corvane;

const double NONE = std::numeric_limits<double>::quiet_NaN();

// Smithsonian Meteorological Tables (6th edition, 1951), table 94: over water, hPa.
TEST(Thermodynamics, SaturationVapourPressureIsThatOfTheTables) {
    struct Row {
        double temperature;
        double pressure;
    };
    for (const Row& row : std::vector<Row>{{-30.0, 0.5088},
                                           {-20.0, 1.2540},
                                           {-10.0, 2.8627},
                                           {0.0, 6.1078},
                                           {10.0, 12.272},
                                           {20.0, 23.373},
                                           {30.0, 42.430},
                                           {35.0, 56.236}}) {
        EXPECT_NEAR(saturationVapourPressure(row.temperature), row.pressure, 0.004 * row.pressure) << row.temperature;
    }
}

TEST(Thermodynamics, SaturationVapourPressureFallsToZeroInTheCold) {
    for (double temperature = 60.0; temperature > -273.0; temperature -= 1.0) {
        EXPECT_GE(saturationVapourPressure(temperature), saturationVapourPressure(temperature - 1.0)) << temperature;
    }
    EXPECT_EQ(saturationVapourPressure(-243.5), 0.0);
    EXPECT_EQ(saturationVapourPressure(-300.0), 0.0);
}

TEST(Thermodynamics, MixingRatioAndItsDewPointAreInverse) {
    // e = 12.272 hPa at 10 degrees: 0.622 * 12.272 / (850 - 12.272).
    EXPECT_NEAR(mixingRatio(10.0, 850.0), 0.009112, 0.00001);
    for (const double pressure : {1050.0, 850.0, 500.0, 200.0, 20.0}) {
        for (double dewpoint = -90.0; dewpoint <= 10.0; dewpoint += 10.0) {
            EXPECT_NEAR(dewpointOfMixingRatio(mixingRatio(dewpoint, pressure), pressure), dewpoint, 1e-9);
        }
    }
}

TEST(Thermodynamics, VirtualTemperatureIsHigherByTheMoisture) {
    // r = 0.622 * 17.04 / 982.96 = 0.01078; T_v = 293.15 (1 + 0.01734) / 1.01078 = 295.05 K.
    EXPECT_NEAR(virtualTemperature(20.0, 15.0, 1000.0), 21.90, 0.01);
    EXPECT_EQ(virtualTemperature(20.0, NONE, 1000.0), 20.0);
    EXPECT_NEAR(virtualTemperature(-60.0, -80.0, 200.0), -60.0, 0.001);
}

TEST(Thermodynamics, DryAdiabatKeepsPotentialTemperature) {
    EXPECT_NEAR(dryAdiabat(26.85, 1000.0, 500.0), 300.0 * std::pow(2.0, -0.2854) - 273.15, 1e-9);
    EXPECT_NEAR(dryAdiabat(dryAdiabat(15.0, 950.0, 300.0), 300.0, 1000.0), dryAdiabat(15.0, 950.0, 1000.0), 1e-9);
    EXPECT_EQ(dryAdiabat(15.0, 950.0, 950.0), 15.0);
}

TEST(Thermodynamics, CondensationLevelOfAWarmParcel) {
    const CondensationLevel lcl = liftedCondensationLevel(30.0, 20.0, 1000.0);
    EXPECT_NEAR(lcl.pressure, 865.0, 1.0);
    EXPECT_NEAR(lcl.temperature, 17.7, 0.05);
}

TEST(Thermodynamics, AirIsSaturatedAtItsCondensationLevel) {
    for (const double dewpoint : {-20.0, 0.0, 10.0, 19.0}) {
        const CondensationLevel lcl = liftedCondensationLevel(20.0, dewpoint, 1000.0);
        EXPECT_NEAR(lcl.temperature, dryAdiabat(20.0, 1000.0, lcl.pressure), 1e-9);
        // Bolton gives 0.1 K as the error of his formula.
        EXPECT_NEAR(lcl.temperature, dewpointOfMixingRatio(mixingRatio(dewpoint, 1000.0), lcl.pressure), 0.1);
    }
}

TEST(Thermodynamics, SaturatedAirCondensesWhereItIs) {
    for (const double dewpoint : {12.0, 12.5}) {
        const CondensationLevel lcl = liftedCondensationLevel(12.0, dewpoint, 900.0);
        EXPECT_EQ(lcl.pressure, 900.0);
        EXPECT_EQ(lcl.temperature, 12.0);
    }
}

TEST(Thermodynamics, PseudoadiabatOfTwentyDegrees) {
    EXPECT_NEAR(pseudoadiabat(20.0, 1000.0, 500.0), -8.7, 0.05);
    EXPECT_NEAR(pseudoadiabat(20.0, 1000.0, 300.0), -36.6, 0.05);
}

TEST(Thermodynamics, PseudoadiabatAgreesWithAnotherIntegration) {
    for (double start = -30.0; start <= 35.0; start += 5.0) {
        for (const double pressure : {1050.0, 900.0, 700.0, 400.0, 100.0}) {
            EXPECT_NEAR(pseudoadiabat(start, 1000.0, pressure), plainPseudoadiabat(start, 1000.0, pressure, 0.02), 1e-4)
                << start << " degrees to " << pressure << " hPa";
        }
    }
}

TEST(Thermodynamics, PseudoadiabatIsTheSameInOneGoAndStepByStep) {
    for (const double start : {-20.0, 5.0, 30.0}) {
        double temperature = start;
        for (double pressure = 1000.0; pressure > 100.0; pressure -= 7.5) {
            temperature = pseudoadiabat(temperature, pressure, pressure - 7.5);
        }
        EXPECT_NEAR(temperature, pseudoadiabat(start, 1000.0, 100.0), 1e-5);
        EXPECT_NEAR(pseudoadiabat(temperature, 100.0, 1000.0), start, 1e-4);
    }
}

TEST(Thermodynamics, PseudoadiabatOfColdAirIsADryAdiabat) {
    EXPECT_NEAR(pseudoadiabat(-80.0, 300.0, 100.0), dryAdiabat(-80.0, 300.0, 100.0), 0.02);
    EXPECT_LT(pseudoadiabaticLapse(20.0, 1000.0), 0.5 * 0.2854 * 293.15);
}

TEST(Thermodynamics, ThetaEIsConstantAlongAPseudoadiabat) {
    for (double wetBulb = -24.0; wetBulb <= 24.0; wetBulb += 2.0) {
        double lowest = std::numeric_limits<double>::infinity();
        double highest = 0.0;
        for (double pressure = 1000.0; pressure >= 100.0; pressure -= 10.0) {
            const double temperature = pseudoadiabat(wetBulb, 1000.0, pressure);
            const double thetaE = equivalentPotentialTemperature(temperature, temperature, pressure);
            lowest = std::min(lowest, thetaE);
            highest = std::max(highest, thetaE);
        }
        EXPECT_LT(highest - lowest, 0.05) << wetBulb;
    }
}

TEST(Thermodynamics, ThetaEIsThePotentialTemperatureWithoutItsWater) {
    for (const double start : {0.0, 10.0, 20.0}) {
        const double aloft = pseudoadiabat(start, 1000.0, 5.0);
        EXPECT_NEAR(equivalentPotentialTemperature(start, start, 1000.0), dryAdiabat(aloft, 5.0, 1000.0) + 273.15, 0.1);
    }
    EXPECT_NEAR(equivalentPotentialTemperature(20.0, -80.0, 800.0), dryAdiabat(20.0, 800.0, 1000.0) + 273.15, 0.01);
}

TEST(Thermodynamics, ThetaEOfADewPointAboveTheTemperatureIsThatOfSaturation) {
    EXPECT_EQ(equivalentPotentialTemperature(20.0, 23.0, 900.0), equivalentPotentialTemperature(20.0, 20.0, 900.0));
}

TEST(Thermodynamics, ThetaEDoesNotChangeOnTheWayToCondensation) {
    const CondensationLevel lcl = liftedCondensationLevel(28.0, 19.0, 990.0);
    const double aloft = equivalentPotentialTemperature(lcl.temperature, lcl.temperature, lcl.pressure);
    EXPECT_NEAR(equivalentPotentialTemperature(28.0, 19.0, 990.0), aloft, 0.2);
}

TEST(Thermodynamics, WetBulbOfSaturatedAirIsItsTemperature) {
    for (const double temperature : {-40.0, 0.0, 25.0}) {
        EXPECT_EQ(wetBulbTemperature(temperature, temperature, 850.0), temperature);
    }
}

TEST(Thermodynamics, WetBulbAgreesWithABisection) {
    for (const double pressure : {1000.0, 850.0, 600.0}) {
        for (const double temperature : {-10.0, 5.0, 20.0, 35.0}) {
            for (const double depression : {1.0, 5.0, 15.0, 30.0}) {
                const double wetBulb = wetBulbTemperature(temperature, temperature - depression, pressure);
                EXPECT_NEAR(wetBulb, plainWetBulb(temperature, temperature - depression, pressure), 0.005);
                EXPECT_LT(wetBulb, temperature);
                EXPECT_GT(wetBulb, temperature - depression);
            }
        }
    }
}

// T = 273.15 K: 287.04 / 9.80665 * 273.15 * ln 2.
TEST(Thermodynamics, ThicknessOfAnIsothermalLayer) {
    EXPECT_NEAR(thickness(1000.0, 500.0, 0.0), 5541.8, 0.1);
    EXPECT_NEAR(thickness(500.0, 1000.0, 0.0), -5541.8, 0.1);
    EXPECT_EQ(thickness(700.0, 700.0, 10.0), 0.0);
    EXPECT_NEAR(thickness(1000.0, 850.0, 10.0) + thickness(850.0, 500.0, 10.0), thickness(1000.0, 500.0, 10.0), 1e-9);
}

// Dry air cools by g kappa / R_d = 9.75 K/km on its adiabat.
TEST(Thermodynamics, ThicknessOfADryAdiabaticLayer) {
    double metres = 0.0;
    for (double pressure = 1000.0; pressure > 700.0; pressure -= 5.0) {
        const double lower = dryAdiabat(20.0, 1000.0, pressure);
        const double upper = dryAdiabat(20.0, 1000.0, pressure - 5.0);
        metres += thickness(pressure, pressure - 5.0, 0.5 * (lower + upper));
    }
    EXPECT_NEAR(1000.0 * (20.0 - dryAdiabat(20.0, 1000.0, 700.0)) / metres, 9.7505, 0.001);
}

TEST(Thermodynamics, EveryCallEndsWithAFiniteNumberOrNaN) {
    const double infinite = std::numeric_limits<double>::infinity();
    const std::vector<double> numbers{NONE,   infinite, -infinite, 0.0,   -0.0,  1.0,     -1.0,  20.0,   -100.0,
                                      -243.5, -273.15,  -273.2,    100.0, 500.0, -1000.0, 1e300, -1e300, 1e-300};
    int results = 0;
    const auto check = [&results](double value) {
        EXPECT_FALSE(std::isinf(value));
        results += std::isfinite(value) ? 1 : 0;
    };
    for (const double a : numbers) {
        if (std::isfinite(a)) {
            check(saturationVapourPressure(a));
        }
        for (const double b : numbers) {
            check(mixingRatio(a, b));
            check(dewpointOfMixingRatio(a, b));
            check(pseudoadiabaticLapse(a, b));
            for (const double c : numbers) {
                check(dryAdiabat(a, b, c));
                check(pseudoadiabat(a, b, c));
                check(thickness(a, b, c));
                check(wetBulbTemperature(a, b, c));
                check(equivalentPotentialTemperature(a, b, c));
                check(liftedCondensationLevel(a, b, c).pressure);
                check(liftedCondensationLevel(a, b, c).temperature);
                if (std::isfinite(a)) {
                    check(virtualTemperature(a, b, c));
                }
            }
        }
    }
    EXPECT_GT(results, 1000);
}

TEST(Thermodynamics, PressuresWithAnInfiniteQuotientAreAPathOfManySteps) {
    EXPECT_NEAR(pseudoadiabat(-200.0, 1e300, 1e-300), -273.15, 0.01);
    EXPECT_TRUE(std::isnan(pseudoadiabat(20.0, 1e-300, 1e300)));
}

TEST(Thermodynamics, WhatTheFormulasCannotTakeGivesNaN) {
    EXPECT_TRUE(std::isnan(mixingRatio(100.0, 500.0)));
    EXPECT_TRUE(std::isnan(mixingRatio(100.0, 1000.0)));
    EXPECT_TRUE(std::isnan(dewpointOfMixingRatio(0.5, 1e9))) << "more than the formula's limit at any temperature";
    EXPECT_TRUE(std::isnan(mixingRatio(10.0, 0.0)));
    EXPECT_TRUE(std::isnan(mixingRatio(10.0, -1000.0)));
    EXPECT_TRUE(std::isnan(dewpointOfMixingRatio(0.0, 1000.0)));
    EXPECT_TRUE(std::isnan(dryAdiabat(10.0, 0.0, 500.0)));
    EXPECT_TRUE(std::isnan(dryAdiabat(-300.0, 1000.0, 500.0)));
    EXPECT_TRUE(std::isnan(pseudoadiabat(10.0, 1000.0, 0.0)));
    EXPECT_TRUE(std::isnan(pseudoadiabat(NONE, 1000.0, 500.0)));
    EXPECT_TRUE(std::isnan(thickness(1000.0, -1.0, 0.0)));
    EXPECT_TRUE(std::isnan(liftedCondensationLevel(20.0, NONE, 1000.0).pressure));
    EXPECT_TRUE(std::isnan(liftedCondensationLevel(20.0, -250.0, 1000.0).temperature));
    EXPECT_TRUE(std::isnan(wetBulbTemperature(20.0, NONE, 1000.0)));
    EXPECT_TRUE(std::isnan(equivalentPotentialTemperature(20.0, 10.0, -1.0)));
}

}  // namespace
