// Physics: what the levels of one part say about each other.
//
// The hydrostatic and the superadiabatic check are those of the complex quality control of radiosonde data (Gandin,
// Mon. Wea. Rev. 116, 1988, 1137-1156; Collins, Wea. Forecasting 16, 2001, 131-149). They mark levels and refuse none.
#include "feed/Steps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <utility>

namespace corvane::feed {

namespace {

constexpr double GAS_CONSTANT_OVER_GRAVITY = 29.27;  // R/g, m/K
constexpr double ZERO_CELSIUS = 273.15;              // K
constexpr double KAPPA = 2.0 / 7.0;

// Of 4,149 real parts three were off by more than 8 K, all of them wrong; 99.9 % of all layers stay below 5.5 K.
constexpr double TOLERANCE = 8.0;                      // K of mean virtual temperature
constexpr double TOLERANCE_OF_ONE_TEMPERATURE = 25.0;  // K, where one end of a layer has none
constexpr double LOWEST_MEAN = 180.0;                  // K, where both have none
constexpr double HIGHEST_MEAN = 330.0;

constexpr double LOWEST_TROPOPAUSE = 500.0;  // hPa
constexpr double HIGHEST_TROPOPAUSE = 12.0;  // hPa
constexpr double SUPERADIABATIC = 5.0;       // K colder than the dry adiabat from the level below

std::optional<double> value(const Corvane::Level& level, Corvane::LEVEL_FIELD field) {
    const auto found = level.fields.find(field);
    return found == level.fields.end() ? std::nullopt : std::optional<double>(found->second);
}

std::string text(const char* format, double first, double second = 0.0, double third = 0.0) {
    std::array<char, 160> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), format, first, second, third);
    return length > 0 ? buffer.data() : "";
}

void doubt(ReadLevel& level, const std::string& name) {
    if (std::find(level.doubts.begin(), level.doubts.end(), name) == level.doubts.end()) {
        level.doubts.push_back(name);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Hydrostatic check
// ---------------------------------------------------------------------------------------------------------------------

struct Surface {
    ReadLevel* level;
    double pressure;
    double height;
    std::optional<double> temperature;  // virtual, K
};

std::optional<double> virtualTemperature(const Corvane::Level& level, double pressure) {
    const std::optional<double> temperature = value(level, Corvane::LF_TDRY);
    if (!temperature) {
        return std::nullopt;
    }
    double vapour = 0.0;  // hPa
    if (const std::optional<double> dewpoint = value(level, Corvane::LF_DP)) {
        vapour = 6.112 * std::exp(17.67 * *dewpoint / (*dewpoint + 243.5));
    }
    return (*temperature + ZERO_CELSIUS) * (1.0 + 0.61 * 0.622 * vapour / (pressure - vapour));
}

std::vector<Surface> surfacesWithHeight(std::vector<ReadLevel>& levels) {
    std::vector<Surface> surfaces;
    for (ReadLevel& level : levels) {
        const std::optional<double> pressure = value(level.values, Corvane::LF_PRES);
        const std::optional<double> height = value(level.values, Corvane::LF_HEIGHT);
        if (level.values.type == Corvane::LT_MANDATORY && pressure && *pressure > 0.0 && height) {
            surfaces.push_back({&level, *pressure, *height, virtualTemperature(level.values, *pressure)});
        }
    }
    return surfaces;
}

// The mean virtual temperature that the thickness of the layer implies, K.
double meanTemperature(const Surface& lower, const Surface& upper) {
    return (upper.height - lower.height) / (GAS_CONSTANT_OVER_GRAVITY * std::log(lower.pressure / upper.pressure));
}

bool fits(const Surface& lower, const Surface& upper) {
    const double mean = meanTemperature(lower, upper);
    if (lower.temperature && upper.temperature) {
        return std::abs(mean - (*lower.temperature + *upper.temperature) / 2.0) <= TOLERANCE;
    }
    if (lower.temperature || upper.temperature) {
        return std::abs(mean - lower.temperature.value_or(upper.temperature.value_or(0.0))) <=
               TOLERANCE_OF_ONE_TEMPERATURE;
    }
    return mean >= LOWEST_MEAN && mean <= HIGHEST_MEAN;
}

bool allFit(const std::vector<Surface>& surfaces) {
    for (std::size_t i = 1; i < surfaces.size(); ++i) {
        if (!fits(surfaces[i - 1], surfaces[i])) {
            return false;
        }
    }
    return true;
}

// What the code form leaves out of the height of a surface: thousands at 850 and 700 hPa, tens of thousands at 300 hPa
// and above; 0 where it is reported whole or is known.
double omittedUnit(double pressure) {
    return pressure == 850.0 || pressure == 700.0 ? 1000.0 : pressure <= 300.0 ? 10000.0 : 0.0;
}

// A run of adjacent surfaces whose heights are moved together.
struct Shift {
    std::size_t first;
    std::size_t end;
    double metres;
};

void apply(const Shift& shift, std::vector<Surface>& surfaces) {
    for (std::size_t i = shift.first; i < shift.end; ++i) {
        surfaces[i].height += shift.metres;
    }
}

// The one shift by the omitted unit that leaves no layer off; absent where there is none, or several.
std::optional<Shift> onlyShift(const std::vector<Surface>& surfaces) {
    std::optional<Shift> only;
    for (std::size_t first = 0; first < surfaces.size(); ++first) {
        const double unit = omittedUnit(surfaces[first].pressure);
        for (std::size_t end = first + 1;
             unit != 0.0 && end <= surfaces.size() && omittedUnit(surfaces[end - 1].pressure) == unit; ++end) {
            for (const double metres : {unit, -unit}) {
                std::vector<Surface> moved = surfaces;
                const Shift shift{first, end, metres};
                apply(shift, moved);
                if (!allFit(moved)) {
                    continue;
                }
                if (only) {
                    return std::nullopt;
                }
                only = shift;
            }
        }
    }
    return only;
}

// `height`: the decoder restores the omitted digits by a fixed rule, which fails in deep lows and over Antarctica.
void correctHeights(const Shift& shift, std::vector<Surface>& surfaces, Reading& reading) {
    for (std::size_t i = shift.first; i < shift.end; ++i) {
        Surface& surface = surfaces[i];
        const double height = surface.height + shift.metres;
        reading.mends.push_back({"height",
                                 text("%g hPa at %g m instead of %g m", surface.pressure, height, surface.height),
                                 false,
                                 {surface.level->groups.first, 1}});
        surface.level->values.fields[Corvane::LF_HEIGHT] = height;
    }
}

void checkHydrostatic(bool mend, Reading& reading) {
    std::vector<Surface> surfaces = surfacesWithHeight(reading.levels);
    if (allFit(surfaces)) {
        return;
    }
    if (mend) {
        if (const std::optional<Shift> shift = onlyShift(surfaces)) {
            correctHeights(*shift, surfaces, reading);
            return;
        }
    }
    for (std::size_t i = 1; i < surfaces.size(); ++i) {
        const Surface& lower = surfaces[i - 1];
        const Surface& upper = surfaces[i];
        if (!fits(lower, upper)) {
            doubt(*lower.level, "hydrostatic");
            doubt(*upper.level, "hydrostatic");
            reading.doubts.push_back(
                {"hydrostatic", text("the heights of %g and %g hPa imply a mean temperature of %.1f degrees",
                                     lower.pressure, upper.pressure, meanTemperature(lower, upper) - ZERO_CELSIUS)});
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Tropopause and lapse rate
// ---------------------------------------------------------------------------------------------------------------------

void checkTropopauses(Reading& reading) {
    for (ReadLevel& level : reading.levels) {
        const std::optional<double> pressure = value(level.values, Corvane::LF_PRES);
        if (level.values.type == Corvane::LT_TROPOPAUSE && pressure &&
            (*pressure > LOWEST_TROPOPAUSE || *pressure < HIGHEST_TROPOPAUSE)) {
            doubt(level, "tropopause");
            reading.doubts.push_back({"tropopause", text("a tropopause at %g hPa", *pressure)});
        }
    }
}

void checkLapseRates(Reading& reading) {
    struct Point {
        ReadLevel* level;
        double pressure;
        double temperature;  // K
    };
    std::vector<Point> points;
    for (ReadLevel& level : reading.levels) {
        const std::optional<double> pressure = value(level.values, Corvane::LF_PRES);
        const std::optional<double> temperature = value(level.values, Corvane::LF_TDRY);
        if (pressure && *pressure > 0.0 && temperature) {
            points.push_back({&level, *pressure, *temperature + ZERO_CELSIUS});
        }
    }
    std::stable_sort(points.begin(), points.end(),
                     [](const Point& first, const Point& second) { return first.pressure > second.pressure; });
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Point& lower = points[i - 1];
        const Point& upper = points[i];
        const double adiabat = lower.temperature * std::pow(upper.pressure / lower.pressure, KAPPA);
        if (upper.temperature < adiabat - SUPERADIABATIC) {
            doubt(*lower.level, "lapse-rate");
            doubt(*upper.level, "lapse-rate");
            reading.doubts.push_back({"lapse-rate", text("%g hPa is %.1f K colder than the dry adiabat from %g hPa",
                                                         upper.pressure, adiabat - upper.temperature, lower.pressure)});
        }
    }
}

}  // namespace

void checkPhysics(char letter, bool mend, Reading& reading) {
    if (letter == 'A' || letter == 'C') {
        checkHydrostatic(mend, reading);
        checkTropopauses(reading);
    }
    checkLapseRates(reading);
}

}  // namespace corvane::feed
