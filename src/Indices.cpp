// Indices of a sounding: the profile, the lifted parcel, the single indices. Definitions are in the header and in
// doc/indices.md.
#include <corvane/Indices.h>
#include <corvane/Thermodynamics.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace corvane {

namespace {

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();

// The bounds of the pressures of an atmosphere, hPa.
constexpr double LOWEST_PRESSURE = 0.01;
constexpr double HIGHEST_PRESSURE = 2000.0;

// The steps of an integral through a layer between two levels: at most this long in ln p, which is 10 hPa at 1000 hPa,
// and at least this many, because dew points may change a lot in a thin layer.
constexpr double LONGEST_STEP = 0.01;
constexpr int FEWEST_STEPS = 4;

// The standard surfaces that indices are read at, hPa.
constexpr double LOW = 850.0;
constexpr double MIDDLE = 700.0;
constexpr double HIGH = 500.0;

// ---- profile -------------------------------------------------------------------------------------------------------

// The vertical axis along which temperatures are linear. It ascends with height.
double axis(double pressure) {
    return -std::log(pressure);
}

double pressureAt(double at) {
    return std::exp(-at);
}

bool isBetween(double value, double low, double high) {
    return value > low && value < high;
}

// A value at a place on a vertical axis.
struct Point {
    double at;
    double value;
};

// A quantity along a vertical axis. Linear between its points, NaN outside them.
class Curve {
public:
    // Adds a point at the upper end; one that is not above the others is left out.
    void add(double at, double value) {
        if (points.empty() || at > points.back().at) {
            points.push_back({at, value});
        }
    }

    const std::vector<Point>& all() const { return points; }
    double top() const { return points.back().at; }
    bool spans(double at) const { return !points.empty() && at >= points.front().at && at <= points.back().at; }

    // The point above a place or at it. The place is one that the curve spans.
    std::vector<Point>::const_iterator above(double at) const {
        return std::lower_bound(points.begin(), points.end(), at,
                                [](const Point& point, double place) { return point.at < place; });
    }

    double operator()(double at) const {
        if (!spans(at)) {
            return NONE;
        }
        const auto upper = above(at);
        if (upper->at == at) {
            return upper->value;
        }
        const auto lower = upper - 1;
        return lower->value + (upper->value - lower->value) * (at - lower->at) / (upper->at - lower->at);
    }

private:
    std::vector<Point> points;
};

// A level that has temperature and dew point.
struct Air {
    double pressure;
    double temperature;
    double dewpoint;
};

struct Wind {
    double eastward = NONE;
    double northward = NONE;
};

// What a sounding gives from the ground up.
struct Profile {
    explicit Profile(const Sounding& sounding);

    // The virtual temperature. The air counts as dry above the highest dew point, where the virtual temperature
    // jumps: a layer has to say which side it is on.
    double virtualTemperature(double at, bool moist) const {
        return corvane::virtualTemperature(temperature(at), moist ? dewpoint(at) : NONE, pressureAt(at));
    }

    // Between two heights the height rises as the virtual temperature says.
    double heightAt(double pressure) const;

    // The places from one to another where temperature or dew point may have a kink, with both ends.
    std::vector<double> kinks(double from, double to) const;

    double groundPressure = NONE;
    double groundHeight = NONE;
    Wind groundWind;
    Curve temperature;  // by -ln p, like the next two
    Curve dewpoint;
    Curve height;
    Curve eastward;  // by height, like the next one
    Curve northward;
    std::vector<Air> air;  // from the lowest up
};

// The first pressure that a level has to stay below: the surface's own is just below it.
double upperLimitOfPressure(const Sounding& sounding) {
    for (const SoundingLevel& level : sounding.levels) {
        if ((level.kinds & SoundingLevel::SURFACE) != 0 && !level.belowGround &&
            isBetween(level.pressure, LOWEST_PRESSURE, HIGHEST_PRESSURE)) {
            return std::nextafter(level.pressure, HIGHEST_PRESSURE);
        }
    }
    return HIGHEST_PRESSURE;
}

Profile::Profile(const Sounding& sounding) {
    double previous = upperLimitOfPressure(sounding);
    for (const SoundingLevel& level : sounding.levels) {
        if (level.belowGround || !isBetween(level.pressure, LOWEST_PRESSURE, previous)) {
            continue;
        }
        previous = level.pressure;
        const bool isGround = std::isnan(groundPressure);
        const double at = axis(level.pressure);
        const bool hasTemperature = isBetween(level.temperature, -150.0, 100.0);
        const bool hasDewpoint =
            isBetween(level.dewpoint, -150.0, 100.0) && mixingRatio(level.dewpoint, level.pressure) < 0.1;
        const bool hasHeight = isBetween(level.height, -200000.0, 200000.0);
        const bool hasWind = level.windSpeed >= 0.0 && level.windSpeed <= 1000.0 && level.windDirection >= 0.0 &&
                             level.windDirection <= 360.0;
        if (hasTemperature) {
            temperature.add(at, level.temperature);
        }
        if (hasDewpoint) {
            dewpoint.add(at, level.dewpoint);
        }
        if (hasTemperature && hasDewpoint) {
            air.push_back({level.pressure, level.temperature, level.dewpoint});
        }
        if (hasHeight) {
            height.add(at, level.height);
        }
        Wind wind;
        if (hasWind) {
            const double direction = level.windDirection * std::acos(-1.0) / 180.0;
            wind = {-level.windSpeed * std::sin(direction), -level.windSpeed * std::cos(direction)};
            if (hasHeight) {
                eastward.add(level.height, wind.eastward);
                northward.add(level.height, wind.northward);
            }
        }
        if (isGround) {
            groundPressure = level.pressure;
            groundHeight = hasHeight ? level.height : NONE;
            groundWind = wind;
        }
    }
}

double Profile::heightAt(double pressure) const {
    const double at = axis(pressure);
    if (!height.spans(at)) {
        return NONE;
    }
    const auto upper = height.above(at);
    if (upper->at == at) {
        return upper->value;
    }
    const auto lower = upper - 1;
    const auto thicknessTo = [this, lower](double top) {
        const double atBottom = virtualTemperature(lower->at, dewpoint.spans(lower->at));
        const double atTop = virtualTemperature(top, dewpoint.spans(top));
        return thickness(pressureAt(lower->at), pressureAt(top), 0.5 * (atBottom + atTop));
    };
    const double share = thicknessTo(at) / thicknessTo(upper->at);
    return std::isnan(share) ? height(at) : lower->value + (upper->value - lower->value) * share;
}

std::vector<double> Profile::kinks(double from, double to) const {
    std::vector<double> places{from, to};
    for (const Curve* curve : {&temperature, &dewpoint}) {
        for (const Point& point : curve->all()) {
            if (isBetween(point.at, from, to)) {
                places.push_back(point.at);
            }
        }
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

// Calls a function with each place on the way from one place to another in equal steps, both ends included.
template <typename Function>
void inSteps(double from, double to, Function function) {
    const int steps = std::max(FEWEST_STEPS, 1 + static_cast<int>((to - from) / LONGEST_STEP));
    for (int step = 0; step < steps; ++step) {
        function(from + (to - from) * step / steps);
    }
    function(to);
}

// ---- lifted parcel -------------------------------------------------------------------------------------------------

// A parcel on its way up, and what it meets.
class Parcel {
public:
    explicit Parcel(const Air& air)
        : start(air),
          lcl(liftedCondensationLevel(air.temperature, air.dewpoint, air.pressure)),
          ratio(mixingRatio(air.dewpoint, air.pressure)) {}

    ParcelIndices indices(const Profile& profile) const;

private:
    // A layer and its buoyancy: the integral of the difference of the virtual temperatures over ln p, times R_d, J/kg.
    struct Layer {
        double bottom;
        double top;
        double energy;
    };

    double temperatureAt(double pressure) const {
        return pressure >= lcl.pressure ? dryAdiabat(start.temperature, start.pressure, pressure)
                                        : pseudoadiabat(lcl.temperature, lcl.pressure, pressure);
    }

    std::vector<Point> buoyancy(const Profile& profile) const;
    std::vector<Layer> layers(const Profile& profile) const;

    Air start;
    CondensationLevel lcl;
    double ratio;  // mixing ratio below the condensation level
};

// The parcel's virtual temperature minus that of the sounding, from the parcel's level to the highest temperature.
// Where the virtual temperature of the sounding jumps there are two points at one place. Differences that are nothing
// but rounding are 0.
std::vector<Point> Parcel::buoyancy(const Profile& profile) const {
    const double from = axis(start.pressure);
    const double condensation = axis(lcl.pressure);
    const double to = profile.temperature.top();
    std::vector<double> places = profile.kinks(from, to);
    if (isBetween(condensation, from, to)) {
        places.insert(std::upper_bound(places.begin(), places.end(), condensation), condensation);
    }
    std::vector<Point> points;
    CondensationLevel saturated = lcl;  // where the parcel is on its pseudoadiabat
    for (std::size_t upper = 1; upper < places.size(); ++upper) {
        const bool moist = profile.dewpoint.spans(0.5 * (places[upper - 1] + places[upper]));
        inSteps(places[upper - 1], places[upper], [&](double at) {
            const double pressure = pressureAt(at);
            double parcel = NONE;
            if (at <= condensation) {
                const double temperature = dryAdiabat(start.temperature, start.pressure, pressure);
                parcel = virtualTemperature(temperature, dewpointOfMixingRatio(ratio, pressure), pressure);
            } else {
                saturated = {pressure, pseudoadiabat(saturated.temperature, saturated.pressure, pressure)};
                parcel = virtualTemperature(saturated.temperature, saturated.temperature, pressure);
            }
            const double difference = parcel - profile.virtualTemperature(at, moist);
            points.push_back({at, std::fabs(difference) < 1e-9 ? 0.0 : difference});
        });
    }
    return points;
}

// The layers in which the parcel is warmer than the sounding or colder, from the parcel's level up. The condensation
// level and a place where the difference only touches zero separate layers, too.
std::vector<Parcel::Layer> Parcel::layers(const Profile& profile) const {
    std::vector<Layer> layers;
    const auto add = [this, &layers](double bottom, double top, double mean) {
        const double energy = constants::DRY_GAS_CONSTANT * mean * (top - bottom);
        if (energy == 0.0) {
            return;
        }
        if (!layers.empty() && layers.back().top == bottom && bottom != axis(lcl.pressure) &&
            (layers.back().energy > 0.0) == (energy > 0.0)) {
            layers.back().top = top;
            layers.back().energy += energy;
        } else {
            layers.push_back({bottom, top, energy});
        }
    };
    const std::vector<Point> points = buoyancy(profile);
    for (std::size_t upper = 1; upper < points.size(); ++upper) {
        const Point& a = points[upper - 1];
        const Point& b = points[upper];
        if (a.value * b.value < 0.0) {
            const double crossing = a.at + (b.at - a.at) * a.value / (a.value - b.value);
            add(a.at, crossing, 0.5 * a.value);
            add(crossing, b.at, 0.5 * b.value);
        } else {
            add(a.at, b.at, 0.5 * (a.value + b.value));
        }
    }
    return layers;
}

ParcelIndices Parcel::indices(const Profile& profile) const {
    ParcelIndices result;
    result.pressure = start.pressure;
    result.lclPressure = lcl.pressure;
    result.lclTemperature = lcl.temperature;
    result.liftedIndex = profile.temperature(axis(HIGH)) - temperatureAt(HIGH);
    result.cape = 0.0;
    result.cin = 0.0;

    const std::vector<Layer> all = layers(profile);
    const Layer* largest = nullptr;
    const Layer* highest = nullptr;
    for (const Layer& layer : all) {
        if (layer.energy > 0.0 && layer.bottom >= axis(lcl.pressure)) {
            highest = &layer;
            if (largest == nullptr || layer.energy > largest->energy) {
                largest = &layer;
            }
        }
    }
    if (largest == nullptr) {
        return result;
    }
    result.lfcPressure = pressureAt(largest->bottom);
    if (highest->top < profile.temperature.top()) {
        result.elPressure = pressureAt(highest->top);
    }
    for (const Layer& layer : all) {
        if (layer.energy > 0.0 && layer.bottom >= largest->bottom) {
            result.cape += layer.energy;
        } else if (layer.energy < 0.0 && layer.top <= largest->bottom) {
            result.cin += layer.energy;
        }
    }
    return result;
}

const Air* mostUnstable(const Profile& profile) {
    const Air* best = nullptr;
    double highest = NONE;
    for (const Air& air : profile.air) {
        const double thetaE = equivalentPotentialTemperature(air.temperature, air.dewpoint, air.pressure);
        if (air.pressure >= profile.groundPressure - 300.0 && (best == nullptr || thetaE > highest)) {
            best = &air;
            highest = thetaE;
        }
    }
    return best;
}

// ---- single indices ------------------------------------------------------------------------------------------------

// The pressure where a quantity first falls below zero on its way up; none where it starts below zero.
double firstFallBelowZero(const std::vector<Point>& points) {
    if (points.empty() || points.front().value < 0.0) {
        return NONE;
    }
    for (std::size_t upper = 1; upper < points.size(); ++upper) {
        const Point& a = points[upper - 1];
        const Point& b = points[upper];
        if (b.value < 0.0) {
            return pressureAt(a.at + (b.at - a.at) * a.value / (a.value - b.value));
        }
    }
    return NONE;
}

double wetBulbZero(const Profile& profile) {
    if (profile.air.empty()) {
        return NONE;
    }
    const auto isBelowZero = [&profile](double at) {
        const double temperature = profile.temperature(at);
        const double dewpoint = profile.dewpoint(at);
        // The wet-bulb temperature is between the two, so that it is rarely needed.
        if ((temperature < 0.0) == (dewpoint < 0.0)) {
            return temperature < 0.0;
        }
        return wetBulbTemperature(temperature, dewpoint, pressureAt(at)) < 0.0;
    };
    const double bottom = axis(profile.air.front().pressure);
    const double top = std::min(profile.temperature.top(), profile.dewpoint.top());
    if (isBelowZero(bottom)) {
        return NONE;
    }
    double above = bottom;  // where the wet-bulb temperature is not yet below 0
    double below = NONE;    // where it is
    const std::vector<double> places = profile.kinks(bottom, top);
    for (std::size_t upper = 1; upper < places.size(); ++upper) {
        inSteps(places[upper - 1], places[upper], [&](double at) {
            if (std::isnan(below)) {
                (isBelowZero(at) ? below : above) = at;
            }
        });
    }
    if (std::isnan(below)) {
        return NONE;
    }
    for (int halving = 0; halving < 30; ++halving) {
        const double middle = 0.5 * (above + below);
        (isBelowZero(middle) ? below : above) = middle;
    }
    return pressureAt(above);
}

// The integral of the specific humidity over p / g, in kg/m2, which are millimetres of water; by Simpson's rule. None
// where the ground has no dew point: most of the water may be missing.
double precipitableWater(const Profile& profile) {
    const Curve& dewpoint = profile.dewpoint;
    const std::vector<Point>& points = dewpoint.all();
    if (points.size() < 2 || !dewpoint.spans(axis(profile.groundPressure))) {
        return NONE;
    }
    const auto vapour = [&dewpoint](double at) {
        const double pressure = pressureAt(at);
        const double ratio = mixingRatio(dewpoint(at), pressure);
        return ratio / (1.0 + ratio) * pressure;
    };
    double water = 0.0;
    double previous = points.front().at;
    for (std::size_t upper = 1; upper < points.size(); ++upper) {
        inSteps(points[upper - 1].at, points[upper].at, [&](double at) {
            const double middle = 0.5 * (previous + at);
            water += (at - previous) / 6.0 * (vapour(previous) + 4.0 * vapour(middle) + vapour(at));
            previous = at;
        });
    }
    return 100.0 * water / constants::GRAVITY;
}

double shear(const Profile& profile, double depth) {
    const double top = profile.groundHeight + depth;
    return std::hypot(profile.eastward(top) - profile.groundWind.eastward,
                      profile.northward(top) - profile.groundWind.northward);
}

double lapseRate(const Profile& profile, double lowerPressure, double upperPressure) {
    const double warmer = profile.temperature(axis(lowerPressure)) - profile.temperature(axis(upperPressure));
    const double metres = profile.heightAt(upperPressure) - profile.heightAt(lowerPressure);
    return metres > 0.0 ? 1000.0 * warmer / metres : NONE;
}

}  // namespace

Indices indicesOf(const Sounding& sounding) {
    const Profile profile(sounding);
    Indices result;
    if (!profile.air.empty()) {
        result.surface = Parcel(profile.air.front()).indices(profile);
    }
    if (const Air* const air = mostUnstable(profile)) {
        const bool isSurface = air == profile.air.data();
        result.mostUnstable = isSurface ? result.surface : Parcel(*air).indices(profile);
    }
    const double t850 = profile.temperature(axis(LOW));
    const double t700 = profile.temperature(axis(MIDDLE));
    const double t500 = profile.temperature(axis(HIGH));
    const double dewpoint850 = profile.dewpoint(axis(LOW));
    const double dewpoint700 = profile.dewpoint(axis(MIDDLE));
    result.kIndex = t850 - t500 + dewpoint850 - (t700 - dewpoint700);
    result.totalTotals = t850 + dewpoint850 - 2.0 * t500;
    result.precipitableWater = precipitableWater(profile);
    result.freezingLevelPressure = firstFallBelowZero(profile.temperature.all());
    result.freezingLevelHeight = profile.heightAt(result.freezingLevelPressure) - profile.groundHeight;
    result.wetBulbZeroPressure = wetBulbZero(profile);
    result.wetBulbZeroHeight = profile.heightAt(result.wetBulbZeroPressure) - profile.groundHeight;
    result.shear0To6Km = shear(profile, 6000.0);
    result.lapseRate700To500 = lapseRate(profile, MIDDLE, HIGH);
    return result;
}

}  // namespace corvane
