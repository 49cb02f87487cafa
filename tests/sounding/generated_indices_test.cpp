// Generated soundings: what holds for the indices of any of them.
#include "SaneIndices.h"

#include <corvane/Indices.h>
#include <corvane/Thermodynamics.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <limits>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <vector>

namespace {

using namespace corvane;

// Tenths from `lowest` to `highest` degrees; shrinks towards the lowest.
double tenths(int lowest, int highest) {
    return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(10 * lowest, 10 * highest + 1)) / 10.0;
}

bool oneIn(int count) {
    return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(0, count)) == count - 1;
}

// Levels as a sonde could report them, some of their values missing.
Sounding anySounding() {
    Sounding sounding;
    double height = tenths(0, 3000);
    double pressure = tenths(500, 1050);
    while (pressure > 10.0 && sounding.levels.size() < 40) {
        SoundingLevel level;
        level.pressure = pressure;
        // Warm air is found below: no more than 0.1 kg/kg of vapour anywhere.
        const int warmest = std::max(-80, static_cast<int>(45.0 + 60.0 * std::log(pressure / 1050.0)));
        level.temperature = oneIn(8) ? SoundingLevel::NOT_GIVEN : tenths(-90, warmest);
        level.dewpoint = oneIn(4) ? SoundingLevel::NOT_GIVEN : level.temperature - tenths(0, 49);
        level.height = oneIn(8) ? SoundingLevel::NOT_GIVEN : height;
        level.windDirection = 10.0 * std::floor(tenths(0, 36));
        level.windSpeed = oneIn(8) ? SoundingLevel::NOT_GIVEN : tenths(0, 80);
        level.kinds = sounding.levels.empty() ? SoundingLevel::SURFACE : SoundingLevel::SIGNIFICANT;
        sounding.levels.push_back(level);
        const double upper = pressure * tenths(50, 99) / 100.0;
        height += thickness(pressure, upper, 0.0);
        pressure = upper;
    }
    return sounding;
}

RC_GTEST_PROP(GeneratedIndices, IndicesAreSane, ()) {
    const Sounding sounding = anySounding();
    expectSane(sounding, indicesOf(sounding));
    RC_ASSERT(!::testing::Test::HasFailure());
}

// The most unstable parcel has no lower theta_e than the surface parcel.
RC_GTEST_PROP(GeneratedIndices, MostUnstableParcelIsNotMoreStableThanTheSurfaceParcel, ()) {
    const Sounding sounding = anySounding();
    const Indices indices = indicesOf(sounding);
    const auto thetaEOf = [&sounding](double pressure) {
        for (const SoundingLevel& level : sounding.levels) {
            if (level.pressure == pressure) {
                return equivalentPotentialTemperature(level.temperature, level.dewpoint, level.pressure);
            }
        }
        return std::numeric_limits<double>::quiet_NaN();
    };
    if (!std::isnan(indices.mostUnstable.pressure)) {
        RC_ASSERT(thetaEOf(indices.mostUnstable.pressure) >= thetaEOf(indices.surface.pressure));
        RC_ASSERT(indices.mostUnstable.pressure >= sounding.levels.front().pressure - 300.0);
    }
}

// A level that says what the interpolation says changes nothing.
RC_GTEST_PROP(GeneratedIndices, ALevelOnTheLineChangesNothing, ()) {
    Sounding sounding = anySounding();
    for (SoundingLevel& level : sounding.levels) {
        if (std::isnan(level.temperature)) {
            level.temperature = -90.0;
        }
        level.dewpoint = level.temperature - 5.0;
    }
    RC_PRE(sounding.levels.size() >= 2U);
    const auto position = *rc::gen::inRange<std::size_t>(1, sounding.levels.size());
    const SoundingLevel& below = sounding.levels[position - 1];
    const SoundingLevel& above = sounding.levels[position];
    SoundingLevel between;
    between.pressure = std::sqrt(below.pressure * above.pressure);
    between.temperature = 0.5 * (below.temperature + above.temperature);
    between.dewpoint = 0.5 * (below.dewpoint + above.dewpoint);
    Sounding longer = sounding;
    longer.levels.insert(longer.levels.begin() + static_cast<std::ptrdiff_t>(position), between);
    const Indices first = indicesOf(sounding);
    const Indices second = indicesOf(longer);
    RC_ASSERT(std::fabs(first.surface.cape - second.surface.cape) <= 1.0 + 0.002 * first.surface.cape);
    RC_ASSERT(std::fabs(first.precipitableWater - second.precipitableWater) <= 0.001 * first.precipitableWater + 0.01);
    RC_ASSERT(std::isnan(first.freezingLevelPressure) == std::isnan(second.freezingLevelPressure));
    RC_ASSERT(!(std::fabs(first.freezingLevelPressure - second.freezingLevelPressure) > 1e-6));
}

}  // namespace
