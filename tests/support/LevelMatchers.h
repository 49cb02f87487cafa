// Levels by short names, as text, and compared by kind and fields.
#ifndef CORVANE_TESTS_LEVEL_MATCHERS_H
#define CORVANE_TESTS_LEVEL_MATCHERS_H

#include <corvane/Corvane.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

inline constexpr Corvane::LEVEL_TYPE SURFACE = Corvane::LT_SURFACE;
inline constexpr Corvane::LEVEL_TYPE MANDATORY = Corvane::LT_MANDATORY;
inline constexpr Corvane::LEVEL_TYPE SIGNIFICANT = Corvane::LT_SIGNIFICANT;
inline constexpr Corvane::LEVEL_TYPE TROPOPAUSE = Corvane::LT_TROPOPAUSE;
inline constexpr Corvane::LEVEL_TYPE MAXWIND = Corvane::LT_MAXWIND;
inline constexpr Corvane::LEVEL_TYPE LAYER_150M = Corvane::LT_150MLAYERWIND;
inline constexpr Corvane::LEVEL_TYPE DEEP_LAYER = Corvane::LT_DEEPLAYERWIND;
inline constexpr Corvane::LEVEL_TYPE MEAN_BL = Corvane::LT_MEANBLWIND;
inline constexpr Corvane::LEVEL_TYPE LAST_WIND = Corvane::LT_LASTWINDHEIGHT;
inline constexpr Corvane::LEVEL_TYPE RELEASE = Corvane::LT_RELEASEPOINT;
inline constexpr Corvane::LEVEL_TYPE SPLASH_INTEG = Corvane::LT_SPLASHPOINTWINDINTEG;
inline constexpr Corvane::LEVEL_TYPE SPLASH_GPS = Corvane::LT_SPLASHPOINTRAWGPS;

inline constexpr Corvane::LEVEL_FIELD PRES = Corvane::LF_PRES;
inline constexpr Corvane::LEVEL_FIELD TDRY = Corvane::LF_TDRY;
inline constexpr Corvane::LEVEL_FIELD DP = Corvane::LF_DP;
inline constexpr Corvane::LEVEL_FIELD WSPD = Corvane::LF_WSPD;
inline constexpr Corvane::LEVEL_FIELD WDIR = Corvane::LF_WDIR;
inline constexpr Corvane::LEVEL_FIELD HEIGHT = Corvane::LF_HEIGHT;
inline constexpr Corvane::LEVEL_FIELD VA = Corvane::LF_VA;
inline constexpr Corvane::LEVEL_FIELD VB = Corvane::LF_VB;
inline constexpr Corvane::LEVEL_FIELD TIME = Corvane::LF_TIME;
inline constexpr Corvane::LEVEL_FIELD LAT = Corvane::LF_LAT;
inline constexpr Corvane::LEVEL_FIELD LON = Corvane::LF_LON;
inline constexpr Corvane::LEVEL_FIELD PRES2 = Corvane::LF_PRES2;

// Metres per second in a knot, as the decoder converts them.
inline constexpr double KNOT = 0.5144;
// The value of a quantity that a flag counts as given although the report has solidi for it.
inline constexpr double NOT_GIVEN = std::numeric_limits<double>::quiet_NaN();

inline Corvane::Level levelOf(Corvane::LEVEL_TYPE kind, std::map<Corvane::LEVEL_FIELD, double> fields = {}) {
    Corvane::Level level(kind);
    level.fields = std::move(fields);
    return level;
}

// A level as text, its fields by their numbers and with every digit: "maxwind 0=250 4=270".
inline std::string textOf(const Corvane::Level& level) {
    std::ostringstream text;
    text.precision(std::numeric_limits<double>::max_digits10);
    text << level.name();
    for (const auto& field : level.fields) {
        text << ' ' << static_cast<int>(field.first) << '=' << field.second;
    }
    return text.str();
}

inline std::string textOf(const std::vector<Corvane::Level>& levels) {
    std::string text;
    for (const Corvane::Level& level : levels) {
        text += "  " + textOf(level) + "\n";
    }
    return text;
}

// Kind and pressure of each level, as in "surface 1014, maxwind 250"; "-" for a level without pressure.
inline std::string summaryOf(const std::vector<Corvane::Level>& levels) {
    std::ostringstream text;
    for (const Corvane::Level& level : levels) {
        text << (text.tellp() > 0 ? ", " : "") << level.name() << ' ';
        const auto pressure = level.fields.find(PRES);
        if (pressure == level.fields.end()) {
            text << '-';
        } else {
            text << pressure->second;
        }
    }
    return text.str();
}

// Equal except for the last two bits; NaN equals NaN, and zeros are told apart by their sign.
inline bool sameNumber(double first, double second) {
    if (std::isnan(first) || std::isnan(second)) {
        return std::isnan(first) && std::isnan(second);
    }
    if (first == second) {
        return std::signbit(first) == std::signbit(second);
    }
    const double greater = std::max(std::fabs(first), std::fabs(second));
    return std::fabs(first - second) <= 4 * std::numeric_limits<double>::epsilon() * greater;
}

inline bool sameLevel(const Corvane::Level& first, const Corvane::Level& second) {
    return first.type == second.type && first.fields.size() == second.fields.size() &&
           std::equal(first.fields.begin(), first.fields.end(), second.fields.begin(),
                      [](const auto& one, const auto& other) {
                          return one.first == other.first && sameNumber(one.second, other.second);
                      });
}

// Whether these are the levels expected: as many, in this order, each of its kind and with its fields and no others.
inline ::testing::AssertionResult sameLevels(const std::vector<Corvane::Level>& levels,
                                             const std::vector<Corvane::Level>& expected) {
    if (levels.size() == expected.size() && std::equal(levels.begin(), levels.end(), expected.begin(), sameLevel)) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "levels:\n" << textOf(levels) << "expected:\n" << textOf(expected);
}

#endif
