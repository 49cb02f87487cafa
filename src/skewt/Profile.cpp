#include "Profile.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane::skewt {

namespace {

constexpr std::size_t MOST_LEVELS = 350;
constexpr double NONE = SoundingLevel::NOT_GIVEN;

double within(double value, double least, double most) {
    return value >= least && value <= most ? value : NONE;
}

// Whether every report gives a quantity at levels of this kind. A significant level gives temperature or wind.
bool isExpected(const Level& level, Quantity quantity) {
    if (quantity == Quantity::WIND) {
        return level.is(SoundingLevel::MANDATORY) || level.is(SoundingLevel::MAXWIND);
    }
    if (quantity == Quantity::DEWPOINT && gives(level, Quantity::TEMPERATURE)) {
        return true;
    }
    return level.is(SoundingLevel::SURFACE) || level.is(SoundingLevel::MANDATORY) ||
           level.is(SoundingLevel::TROPOPAUSE);
}

}  // namespace

bool gives(const Level& level, Quantity quantity) {
    switch (quantity) {
    case Quantity::TEMPERATURE: return !std::isnan(level.temperature);
    case Quantity::DEWPOINT: return !std::isnan(level.dewpoint);
    case Quantity::WIND: break;
    }
    return !std::isnan(level.windSpeed);
}

Profile::Profile(const Sounding& sounding) {
    for (std::size_t i = 0; i < sounding.levels.size(); ++i) {
        const SoundingLevel& from = sounding.levels[i];
        if (from.belowGround || !(from.pressure >= 1.0 && from.pressure <= 1200.0)) {
            continue;
        }
        Level level;
        level.index = i;
        level.pressure = from.pressure;
        level.height = within(from.height, -1000.0, 100000.0);
        level.temperature = within(from.temperature, -150.0, 100.0);
        level.dewpoint = within(from.dewpoint, -150.0, 100.0);
        level.windSpeed = within(from.windSpeed, 0.0, 1000.0);
        level.windDirection = within(from.windDirection, 0.0, 360.0);
        if (std::isnan(level.windSpeed) || std::isnan(level.windDirection)) {
            level.windSpeed = level.windDirection = NONE;
        }
        level.kinds = from.kinds;
        level.doubted = !from.doubts.empty();
        drawn.push_back(level);
        if (level.is(SoundingLevel::SURFACE) && std::isnan(ground)) {
            ground = level.pressure;
        }
    }
    std::stable_sort(drawn.begin(), drawn.end(),
                     [](const Level& a, const Level& b) { return a.pressure > b.pressure; });
    findMissing(sounding);
    if (drawn.size() > MOST_LEVELS) {
        std::vector<Level> chosen;
        for (std::size_t i = 0; i < MOST_LEVELS; ++i) {
            chosen.push_back(drawn[i * (drawn.size() - 1) / (MOST_LEVELS - 1)]);
        }
        drawn = std::move(chosen);
    }
}

// The feed takes out a level of missing data as the mend "gap"; the levels before and after it in the same part bound
// the layer.
void Profile::findMissing(const Sounding& sounding) {
    for (std::size_t part = 0; part < sounding.parts.size(); ++part) {
        for (const Mend& mend : sounding.parts[part].mends) {
            if (mend.name != "gap") {
                continue;
            }
            const SoundingLevel* before = nullptr;
            const SoundingLevel* after = nullptr;
            std::size_t last = 0;   // group of the level before
            std::size_t first = 0;  // group of the level after
            for (const SoundingLevel& level : sounding.levels) {
                for (const SoundingLevel::Origin& origin : level.origins) {
                    const std::size_t group = origin.groups.first;
                    if (origin.part != part) {
                        continue;
                    }
                    if (group < mend.groups.first && (before == nullptr || group > last)) {
                        before = &level;
                        last = group;
                    } else if (group >= mend.groups.first && (after == nullptr || group < first)) {
                        after = &level;
                        first = group;
                    }
                }
            }
            if (before != nullptr && after != nullptr && before->pressure > after->pressure) {
                missing.push_back({before->pressure, after->pressure});
            }
        }
    }
}

bool Profile::isMissing(const Level& lower, const Level& upper) const {
    return std::any_of(missing.begin(), missing.end(), [&](const Missing& layer) {
        return layer.lower > upper.pressure && layer.upper < lower.pressure;
    });
}

std::vector<Level> Profile::levelsOf(SoundingLevel::Kind kind) const {
    constexpr std::size_t MOST = 4;
    std::vector<Level> found;
    for (const Level& level : drawn) {
        if (level.is(kind) && found.size() < MOST) {
            found.push_back(level);
        }
    }
    return found;
}

std::vector<std::vector<Level>> Profile::runs(Quantity quantity) const {
    std::vector<std::vector<Level>> runs;
    bool gap = true;
    for (const Level& level : drawn) {
        if (!gives(level, quantity)) {
            gap = gap || isExpected(level, quantity);
            continue;
        }
        if (gap || isMissing(runs.back().back(), level)) {
            runs.emplace_back();
        }
        runs.back().push_back(level);
        gap = false;
    }
    return runs;
}

double Profile::at(double pressure, double Level::*quantity) const {
    const Level* below = nullptr;
    for (const Level& level : drawn) {
        if (std::isnan(level.*quantity)) {
            continue;
        }
        if (level.pressure == pressure) {
            return level.*quantity;
        }
        if (level.pressure < pressure) {
            if (below == nullptr) {
                return NONE;
            }
            const double share = std::log(below->pressure / pressure) / std::log(below->pressure / level.pressure);
            return below->*quantity + share * (level.*quantity - below->*quantity);
        }
        below = &level;
    }
    return NONE;
}

double Profile::pressureAt(double height) const {
    const Level* below = nullptr;
    for (const Level& level : drawn) {
        if (std::isnan(level.height)) {
            continue;
        }
        if (below != nullptr && below->height <= height && height <= level.height && below->height < level.height) {
            return below->pressure * std::pow(level.pressure / below->pressure,
                                              (height - below->height) / (level.height - below->height));
        }
        below = &level;
    }
    return NONE;
}

}  // namespace corvane::skewt
