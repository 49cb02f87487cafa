#include "PlainIndices.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

using corvane::Sounding;
using corvane::SoundingLevel;

namespace {

constexpr double STEP = 0.2;  // hPa

double vapourPressure(double dewpoint) {
    return 6.112 * std::exp(17.67 * dewpoint / (dewpoint + 243.5));
}

double ratioOf(double dewpoint, double pressure) {
    const double e = vapourPressure(dewpoint);
    return 0.622 * e / (pressure - e);
}

double virtualKelvins(double temperature, double ratio) {
    return (temperature + 273.15) * (1.0 + ratio / 0.622) / (1.0 + ratio);
}

// dT/dp of saturated air, K/hPa.
double slope(double temperature, double pressure) {
    const double t = temperature + 273.15;
    const double r = ratioOf(temperature, pressure);
    const double l = 2501000.0 - 2370.0 * temperature;
    const double numerator = (1.0 + r / 0.622) * (287.04 * t + l * r);
    const double denominator = 1005.7 + 1870.0 * r + l * l * r * (0.622 + r) / (287.04 * t * t);
    return numerator / denominator / pressure;
}

struct Condensation {
    double pressure;
    double temperature;
};

Condensation condensationOf(double temperature, double dewpoint, double pressure) {
    const double t = temperature + 273.15;
    const double d = dewpoint + 273.15;
    const double l = 56.0 + 1.0 / (1.0 / (d - 56.0) + std::log(t / d) / 800.0);
    return {pressure * std::pow(l / t, 1.0 / 0.2854), l - 273.15};
}

double thetaE(double temperature, double dewpoint, double pressure) {
    const double t = temperature + 273.15;
    const double grams = 1000.0 * ratioOf(dewpoint, pressure);
    const double l = condensationOf(temperature, dewpoint, pressure).temperature + 273.15;
    const double dry =
        t * std::pow(1000.0 / (pressure - vapourPressure(dewpoint)), 0.2854) * std::pow(t / l, 0.28e-3 * grams);
    return dry * std::exp((3.036 / l - 0.00178) * grams * (1.0 + 0.448e-3 * grams));
}

// A quantity over ln p.
class Table {
public:
    void set(double pressure, double value) {
        if (!std::isnan(value)) {
            values[std::log(pressure)] = value;
        }
    }

    std::optional<double> operator()(double pressure) const {
        const double place = std::log(pressure);
        const auto high = values.lower_bound(place);
        if (high == values.end()) {
            return std::nullopt;
        }
        if (high->first == place) {
            return high->second;
        }
        if (high == values.begin()) {
            return std::nullopt;
        }
        const auto low = std::prev(high);
        const double share = (place - low->first) / (high->first - low->first);
        return (1.0 - share) * low->second + share * high->second;
    }

    bool empty() const { return values.empty(); }
    double lowestPressure() const { return std::exp(values.begin()->first); }
    double highestPressure() const { return std::exp(values.rbegin()->first); }

private:
    std::map<double, double> values;
};

struct Ascent {
    std::vector<SoundingLevel> levels;
    Table temperature;
    Table dewpoint;
    Table height;

    double virtualKelvinsAt(double pressure) const {
        const std::optional<double> d = dewpoint(pressure);
        return virtualKelvins(*temperature(pressure), d ? ratioOf(*d, pressure) : 0.0);
    }
};

Ascent ascentOf(const Sounding& sounding) {
    Ascent ascent;
    double surface = 2000.0;
    for (const SoundingLevel& level : sounding.levels) {
        if ((level.kinds & SoundingLevel::SURFACE) != 0) {
            surface = level.pressure;
        }
    }
    for (const SoundingLevel& level : sounding.levels) {
        if (level.pressure <= surface) {
            ascent.levels.push_back(level);
            ascent.temperature.set(level.pressure, level.temperature);
            ascent.dewpoint.set(level.pressure, level.dewpoint);
            ascent.height.set(level.pressure, level.height);
        }
    }
    return ascent;
}

using Values = std::map<std::string, double>;

// The parcel cell by cell: a cell is a fifth of a hectopascal and is buoyant or not as its middle is.
void lift(const Ascent& ascent, const SoundingLevel& start, double warmer, const std::string& prefix, Values& values) {
    const Condensation lcl = condensationOf(start.temperature, start.dewpoint, start.pressure);
    const double ratio = ratioOf(start.dewpoint, start.pressure);
    values[prefix + "p"] = start.pressure;
    values[prefix + "lcl_p"] = lcl.pressure;
    values[prefix + "lcl_t"] = lcl.temperature;

    struct Cell {
        double bottom;
        double top;
        double energy;
    };
    std::vector<Cell> cells;
    double saturatedPressure = lcl.pressure;
    double saturated = lcl.temperature;
    const double end = ascent.temperature.lowestPressure();
    for (double bottom = start.pressure; bottom > end + 1e-9;) {
        const double top = std::max(bottom - STEP, end);
        const double middle = 0.5 * (bottom + top);
        double parcel = 0.0;
        if (middle >= lcl.pressure) {
            const double dry = (start.temperature + 273.15) * std::pow(middle / start.pressure, 0.2854) - 273.15;
            parcel = virtualKelvins(dry, ratio);
        } else {
            saturated = plainPseudoadiabat(saturated, saturatedPressure, middle, STEP);
            saturatedPressure = middle;
            parcel = virtualKelvins(saturated, ratioOf(saturated, middle));
        }
        cells.push_back(
            {bottom, top, 287.04 * (parcel + warmer - ascent.virtualKelvinsAt(middle)) * std::log(bottom / top)});
        bottom = top;
    }

    std::vector<Cell> layers;
    for (const Cell& cell : cells) {
        if (cell.energy <= 0.0 || 0.5 * (cell.bottom + cell.top) > lcl.pressure) {
            continue;
        }
        if (!layers.empty() && layers.back().top == cell.bottom) {
            layers.back().top = cell.top;
            layers.back().energy += cell.energy;
        } else {
            layers.push_back(cell);
        }
    }
    double& cape = values[prefix + "cape"];
    double& cin = values[prefix + "cin"];
    if (!layers.empty()) {
        const auto largest = std::max_element(layers.begin(), layers.end(),
                                              [](const Cell& a, const Cell& b) { return a.energy < b.energy; });
        values[prefix + "lfc_p"] = std::min(largest->bottom, lcl.pressure);
        if (layers.back().top > end) {
            values[prefix + "el_p"] = layers.back().top;
        }
        for (const Cell& cell : cells) {
            if (cell.bottom > largest->bottom) {
                cin += std::min(cell.energy, 0.0);
            } else {
                cape += std::max(cell.energy, 0.0);
            }
        }
    }

    const std::optional<double> outside = ascent.temperature(500.0);
    if (outside) {
        const double inside = 500.0 >= lcl.pressure
                                  ? (start.temperature + 273.15) * std::pow(500.0 / start.pressure, 0.2854) - 273.15
                                  : plainPseudoadiabat(lcl.temperature, lcl.pressure, 500.0, STEP);
        values[prefix + "li"] = *outside - inside;
    }
}

// The highest pressure where a condition holds, the condition looked at every fifth of a hectopascal; none where it
// holds at the start.
template <typename Condition>
std::optional<double> firstWhere(double from, double to, Condition condition) {
    if (condition(from)) {
        return std::nullopt;
    }
    for (double pressure = from; pressure > to;) {
        pressure = std::max(pressure - STEP, to);
        if (condition(pressure)) {
            return pressure + 0.5 * STEP;
        }
    }
    return std::nullopt;
}

// Sums thicknesses from the reported height below, stretched so that they arrive at the height above.
std::optional<double> heightAt(const Ascent& ascent, double pressure) {
    const SoundingLevel* below = nullptr;
    const SoundingLevel* above = nullptr;
    for (const SoundingLevel& level : ascent.levels) {
        if (!std::isnan(level.height) && level.pressure >= pressure) {
            below = &level;
        }
        if (!std::isnan(level.height) && level.pressure <= pressure && above == nullptr) {
            above = &level;
        }
    }
    if (below == nullptr || above == nullptr) {
        return std::nullopt;
    }
    const auto sum = [&ascent, below](double top) {
        double metres = 0.0;
        const int steps = 400;
        const double step = (below->pressure - top) / steps;
        for (int index = 0; index < steps; ++index) {
            const double middle = below->pressure - (index + 0.5) * step;
            metres += 29.27 * ascent.virtualKelvinsAt(middle) * step / middle;
        }
        return metres;
    };
    if (below == above) {
        return below->height;
    }
    return below->height + (above->height - below->height) * sum(pressure) / sum(above->pressure);
}

}  // namespace

double plainPseudoadiabat(double temperature, double fromPressure, double toPressure, double step) {
    const int steps = std::max(1, static_cast<int>(std::ceil(std::fabs(toPressure - fromPressure) / step)));
    const double width = (toPressure - fromPressure) / steps;
    for (int index = 0; index < steps; ++index) {
        const double pressure = fromPressure + index * width;
        const double first = slope(temperature, pressure);
        const double second = slope(temperature + width * first, pressure + width);
        temperature += 0.5 * width * (first + second);
    }
    return temperature;
}

double plainWetBulb(double temperature, double dewpoint, double pressure) {
    const Condensation lcl = condensationOf(temperature, dewpoint, pressure);
    double low = dewpoint;
    double high = temperature;
    for (int halving = 0; halving < 40; ++halving) {
        const double middle = 0.5 * (low + high);
        const double aloft = plainPseudoadiabat(middle, pressure, lcl.pressure, 0.5);
        (aloft < lcl.temperature ? low : high) = middle;
    }
    return 0.5 * (low + high);
}

std::map<std::string, double> plainIndices(const Sounding& sounding, double warmer) {
    Values values;
    const Ascent ascent = ascentOf(sounding);
    if (ascent.levels.empty()) {
        return values;
    }
    const SoundingLevel& ground = ascent.levels.front();
    std::vector<SoundingLevel> humid;
    std::copy_if(ascent.levels.begin(), ascent.levels.end(), std::back_inserter(humid), [](const SoundingLevel& level) {
        return !std::isnan(level.temperature) && !std::isnan(level.dewpoint);
    });
    if (!humid.empty()) {
        lift(ascent, humid.front(), warmer, "sb_", values);
        std::vector<std::pair<double, SoundingLevel>> low;
        for (const SoundingLevel& level : humid) {
            if (ground.pressure - level.pressure <= 300.0) {
                low.emplace_back(thetaE(level.temperature, level.dewpoint, level.pressure), level);
            }
        }
        const auto best =
            std::max_element(low.begin(), low.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        if (best != low.end()) {
            lift(ascent, best->second, warmer, "mu_", values);
        }
    }

    const std::optional<double> t850 = ascent.temperature(850.0);
    const std::optional<double> t700 = ascent.temperature(700.0);
    const std::optional<double> t500 = ascent.temperature(500.0);
    const std::optional<double> d850 = ascent.dewpoint(850.0);
    const std::optional<double> d700 = ascent.dewpoint(700.0);
    if (t850 && t700 && t500 && d850 && d700) {
        values["k_index"] = *t850 - *t500 + *d850 - (*t700 - *d700);
    }
    if (t850 && t500 && d850) {
        values["total_totals"] = *t850 + *d850 - 2.0 * *t500;
    }

    if (!std::isnan(ground.dewpoint) && ascent.dewpoint.lowestPressure() < ground.pressure - 1e-6) {
        double water = 0.0;
        const double end = ascent.dewpoint.lowestPressure();
        for (double bottom = ground.pressure; bottom > end + 1e-9;) {
            const double top = std::max(bottom - STEP, end);
            const double middle = 0.5 * (bottom + top);
            const double ratio = ratioOf(*ascent.dewpoint(middle), middle);
            water += ratio / (1.0 + ratio) * (bottom - top) * 100.0 / 9.80665;
            bottom = top;
        }
        values["pw"] = water;
    }

    const auto setWithHeight = [&](const std::string& prefix, std::optional<double> pressure) {
        if (pressure) {
            values[prefix + "p"] = *pressure;
            const std::optional<double> height = heightAt(ascent, *pressure);
            if (height && !std::isnan(ground.height)) {
                values[prefix + "z"] = *height - ground.height;
            }
        }
    };
    if (!ascent.temperature.empty()) {
        setWithHeight("fzl_",
                      firstWhere(ascent.temperature.highestPressure(), ascent.temperature.lowestPressure() + 1e-9,
                                 [&](double pressure) { return ascent.temperature(pressure).value_or(0.0) < 0.0; }));
    }
    if (!humid.empty()) {
        // Colder than 0 where the pseudoadiabat from 0 degrees is warmer at the condensation level.
        const auto freezes = [&](double pressure) {
            const double temperature = ascent.temperature(pressure).value_or(0.0);
            const double dewpoint = ascent.dewpoint(pressure).value_or(0.0);
            if (temperature < 0.0 || dewpoint >= 0.0) {
                return temperature < 0.0;
            }
            const Condensation lcl = condensationOf(temperature, dewpoint, pressure);
            return plainPseudoadiabat(0.0, pressure, lcl.pressure, 2.0) > lcl.temperature;
        };
        const double top = std::max(ascent.temperature.lowestPressure(), ascent.dewpoint.lowestPressure()) + 1e-9;
        setWithHeight("wbz_", firstWhere(humid.front().pressure, top, freezes));
    }

    const auto eastward = [](const SoundingLevel& level) {
        return -level.windSpeed * std::sin(level.windDirection * 3.14159265358979 / 180.0);
    };
    const auto northward = [](const SoundingLevel& level) {
        return -level.windSpeed * std::cos(level.windDirection * 3.14159265358979 / 180.0);
    };
    const SoundingLevel* below = nullptr;
    for (const SoundingLevel& level : ascent.levels) {
        if (std::isnan(level.windSpeed) || std::isnan(level.windDirection) || std::isnan(level.height) ||
            level.windDirection > 360.0 || std::isnan(ground.height) || std::isnan(ground.windSpeed)) {
            continue;
        }
        const double place = ground.height + 6000.0;
        if (below != nullptr && below->height < place && level.height >= place) {
            const double share = (place - below->height) / (level.height - below->height);
            const double east = eastward(*below) + share * (eastward(level) - eastward(*below)) - eastward(ground);
            const double north = northward(*below) + share * (northward(level) - northward(*below)) - northward(ground);
            values["shear_0_6km"] = std::sqrt(east * east + north * north);
        }
        below = &level;
    }

    const std::optional<double> z700 = heightAt(ascent, 700.0);
    const std::optional<double> z500 = heightAt(ascent, 500.0);
    if (z700 && z500 && t700 && t500) {
        values["lr_700_500"] = 1000.0 * (*t700 - *t500) / (*z500 - *z700);
    }
    return values;
}
