#include "Profile.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
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
        level.maximumWind = within(from.maximumWind, 0.0, 1000.0);
        level.kinds = from.kinds;
        for (const std::string& doubt : from.doubts) {
            // The other checks compare temperatures and heights.
            (doubt == "unit" ? level.windDoubted : level.temperatureDoubted) = true;
        }
        drawn.push_back(level);
        if (level.is(SoundingLevel::SURFACE) && std::isnan(ground)) {
            ground = level.pressure;
        }
    }
    aloft =
        std::isnan(ground) && !sounding.letters.empty() && sounding.letters.find_first_of("AB") == std::string::npos;
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

// The feed takes out a level of missing data as the mend "gap"; the levels before and after it in the same section
// bound the layer. Section 5 gives temperatures and section 6 winds, both by falling pressure: section 6 begins where
// the pressure does not fall.
void Profile::findMissing(const Sounding& sounding) {
    struct Place {
        std::size_t group;
        double pressure;
        bool inSection6;
    };
    for (std::size_t part = 0; part < sounding.parts.size(); ++part) {
        const std::vector<Mend>& mends = sounding.parts[part].mends;
        const auto isGap = [](const Mend& mend) { return mend.name == "gap"; };
        if (std::none_of(mends.begin(), mends.end(), isGap)) {
            continue;
        }
        std::vector<Place> places;
        for (const SoundingLevel& level : sounding.levels) {
            for (const SoundingLevel::Origin& origin : level.origins) {
                if (origin.part == part) {
                    places.push_back({origin.groups.first, level.pressure, false});
                }
            }
        }
        std::stable_sort(places.begin(), places.end(),
                         [](const Place& one, const Place& other) { return one.group < other.group; });
        for (std::size_t i = 1; i < places.size(); ++i) {
            places[i].inSection6 = places[i - 1].inSection6 || places[i].pressure >= places[i - 1].pressure;
        }
        for (const Mend& mend : mends) {
            const auto after = std::find_if(places.begin(), places.end(),
                                            [&](const Place& place) { return place.group >= mend.groups.first; });
            if (!isGap(mend) || after == places.begin() || after == places.end()) {
                continue;
            }
            const Place& before = *std::prev(after);
            if (before.pressure > after->pressure) {
                missing.push_back({before.pressure, after->pressure, after->inSection6});
            }
        }
    }
}

// A level inside the layer that does give the quantity shows that it is not all missing: the line goes through it.
bool Profile::isMissing(const Level& lower, const Level& upper, Quantity quantity) const {
    return std::any_of(missing.begin(), missing.end(), [&](const Missing& layer) {
        return layer.ofWind == (quantity == Quantity::WIND) && layer.lower <= lower.pressure &&
               layer.upper >= upper.pressure;
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
        if (gap || isMissing(runs.back().back(), level, quantity)) {
            runs.emplace_back();
        }
        runs.back().push_back(level);
        gap = false;
    }
    return runs;
}

bool Profile::isDrawnAt(double pressure, Quantity quantity) const {
    const std::vector<std::vector<Level>> all = runs(quantity);
    return std::any_of(all.begin(), all.end(), [pressure](const std::vector<Level>& run) {
        return run.front().pressure >= pressure && run.back().pressure <= pressure;
    });
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

double Profile::topOf(double Level::*quantity) const {
    const auto found = std::find_if(drawn.rbegin(), drawn.rend(),
                                    [quantity](const Level& level) { return !std::isnan(level.*quantity); });
    return found == drawn.rend() ? NONE : found->pressure;
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
