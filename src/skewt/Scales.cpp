#include "Scales.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace corvane::skewt {

namespace {

constexpr double USUAL_BOTTOM = 1050.0;
constexpr double USUAL_TOP = 100.0;

// How many degrees lie one above the other on the left edge of the usual diagram. With it the tropopause of middle
// latitudes is in the middle of the upper third.
constexpr double DEGREES_HIGH = 74.0;

double roundedUp(double value, double step) {
    return std::ceil(value / step) * step;
}

double roundedDown(double value, double step) {
    return std::floor(value / step) * step;
}

// The lowest and the highest pressure of levels that show something in the diagram.
struct Pressures {
    double lowest = SoundingLevel::NOT_GIVEN;
    double highest = SoundingLevel::NOT_GIVEN;
};

Pressures pressures(const Profile& profile) {
    Pressures found;
    for (const Level& level : profile.levels()) {
        if (gives(level, Quantity::TEMPERATURE) || gives(level, Quantity::WIND)) {
            if (std::isnan(found.highest)) {
                found.highest = level.pressure;
            }
            found.lowest = level.pressure;
        }
    }
    return found;
}

// The temperatures of a profile between two pressures, moved down the isotherms to the lower edge: what the lower edge
// has to hold. Depends on the range, because degrees of a narrow range are wide.
struct Span {
    double least = 0.0;
    double most = 0.0;
};

std::optional<Span> span(const Profile& profile, const Geometry& geometry, bool withDewpoints) {
    std::optional<Span> found;
    const auto include = [&](double pressure, double temperature) {
        if (!std::isnan(temperature)) {
            const double at =
                temperature + (geometry.frame().bottom - geometry.y(pressure)) / geometry.pixelsPerDegree();
            found = found ? Span{std::min(found->least, at), std::max(found->most, at)} : Span{at, at};
        }
    };
    for (const Level& level : profile.levels()) {
        if (level.pressure >= geometry.topPressure()) {
            include(level.pressure, level.temperature);
            if (withDewpoints) {
                include(level.pressure, level.dewpoint);
            }
        }
    }
    return found;
}

// The temperatures of a diagram in a frame: as many degrees as usual, or up to `widest` times as many to hold the
// profile.
std::optional<Geometry> fitting(const Box& frame, double bottom, double top, const Profile& profile, bool withDewpoints,
                                double widest) {
    const double usual =
        DEGREES_HIGH * frame.width() / frame.height() * std::log(bottom / top) / std::log(USUAL_BOTTOM / USUAL_TOP);
    const double step = usual < 35.0 ? 5.0 : 10.0;
    const double least = std::max(step * 2.0, std::round(usual / step) * step);
    constexpr double MARGIN = 0.025;  // of the range, on either side
    for (int wider = 0; wider * step <= (widest - 1.0) * least; ++wider) {
        const double range = least + wider * step;
        const double middle = -roundedDown(range / 2.0, step);
        const auto found = span(profile, Geometry(frame, bottom, top, 0.0, range), withDewpoints);
        if (!found) {
            return Geometry(frame, bottom, top, middle, range);
        }
        const double lowest = roundedUp(found->most - (1.0 - MARGIN) * range, step);
        const double highest = roundedDown(found->least - MARGIN * range, step);
        if (lowest <= highest) {
            return Geometry(frame, bottom, top, std::clamp(middle, lowest, highest), range);
        }
    }
    return std::nullopt;
}

}  // namespace

Geometry scales(const Box& room, const Profile& profile, const SkewTOptions& options) {
    const Pressures data = pressures(profile);
    double bottom = USUAL_BOTTOM;
    if (data.highest > USUAL_BOTTOM - 5.0) {
        bottom = roundedUp(data.highest + 5.0, 10.0);
    } else if (data.highest < 400.0) {
        bottom = roundedUp(1.1 * data.highest, 10.0);
    }
    double top = USUAL_TOP;
    if (options.top > 0.0) {
        top = options.top;
    } else if (data.lowest > USUAL_TOP) {
        top = roundedDown(data.lowest, data.lowest > 300.0 ? 50.0 : 10.0);
    } else if (data.highest <= 1.5 * USUAL_TOP) {
        top = data.lowest;
    }
    top = std::clamp(top, 1.0, 0.8 * bottom);

    // In a high frame an isotherm leaves the diagram before it reaches the top: no range of temperatures holds both the
    // stratosphere and the ground. There the frame is made lower before the range is made much wider.
    constexpr double HIGHEST = 1.15;  // in parts of the width
    constexpr double LOWEST = 0.92;   // that of the usual picture
    constexpr double STEP = 0.97;
    const auto ofHeight = [&room](double high) {
        const double less = std::max(0.0, room.height() - high) / 2.0;
        return Box{room.left, room.top + less, room.right, room.bottom - less};
    };
    for (const bool withDewpoints : {true, false}) {
        for (const double widest : {1.25, 2.0}) {
            double high = std::min(room.height(), HIGHEST * room.width());
            for (;;) {
                if (const auto found = fitting(ofHeight(high), bottom, top, profile, withDewpoints, widest)) {
                    return *found;
                }
                if (high <= LOWEST * room.width()) {
                    break;
                }
                high *= STEP;
            }
        }
    }
    // Values that no atmosphere has: only what fits the frame is drawn.
    const Box frame = ofHeight(LOWEST * room.width());
    const double range = roundedUp(DEGREES_HIGH * frame.width() / frame.height(), 10.0);
    return {frame, bottom, top, -roundedDown(range / 2.0, 10.0), range};
}

}  // namespace corvane::skewt
