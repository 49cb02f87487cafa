#include "Barb.h"

#include <algorithm>
#include <cmath>

namespace corvane::skewt {

namespace {

// In parts of the staff.
constexpr double SPACING = 0.13;         // between feathers
constexpr double PENNANT = 0.17;         // of a pennant along the staff
constexpr double FEATHER_ACROSS = 0.36;  // how far a full feather reaches from the staff ...
constexpr double FEATHER_ALONG = 0.15;   // ... and how much farther out than its foot its tip is
constexpr double RING = 0.16;

// Room for feathers: what is needed beyond it makes them all narrower.
constexpr double LONGEST = 0.92;

}  // namespace

Feathers feathers(double halves) {
    constexpr double MOST = 54.0;
    // What a speed loses where its unit is converted must not take it below the half.
    constexpr double LOST = 1e-6;
    const int rounded = static_cast<int>(std::floor(std::clamp(halves, 0.0, MOST) + 0.5 + LOST));
    return {rounded / 10, rounded % 10 / 2, rounded % 2};
}

Box Barb::bounds(double stroke) const {
    Box box = Box::at(station).grown(ring);
    for (const std::vector<Line>* lines : {&strokes, &pennants}) {
        for (const Line& line : *lines) {
            for (const Point& point : line) {
                box.include(point);
            }
        }
    }
    return box.grown(stroke / 2.0);
}

Barb barb(Point station, double direction, double halves, double length, bool southern) {
    Barb drawn;
    drawn.station = station;
    if (halves <= 0.0) {
        drawn.calm = true;
        drawn.ring = RING * length;
        return drawn;
    }

    const double angle = std::fmod(direction, 360.0) * PI / 180.0;
    const Point out{std::sin(angle), -std::cos(angle)};  // along the staff, into the wind
    // Facing downwind, lower pressure is on the left in the northern hemisphere.
    const Point across = southern ? Point{out.y, -out.x} : Point{-out.y, out.x};
    const auto place = [&](double along, double aside) {
        return Point{station.x + length * (along * out.x + aside * across.x),
                     station.y + length * (along * out.y + aside * across.y)};
    };

    const Feathers shown = feathers(halves);
    const double needed =
        shown.pennants * PENNANT + (shown.pennants > 0 ? SPACING : 0.0) + (shown.full + shown.half) * SPACING;
    const double squeeze = std::min(1.0, LONGEST / std::max(needed, LONGEST));

    drawn.strokes.push_back({place(0.0, 0.0), place(1.0, 0.0)});
    double foot = 1.0;  // of the next feather, from the end of the staff inward
    for (int i = 0; i < shown.pennants; ++i) {
        const double next = foot - PENNANT * squeeze;
        drawn.pennants.push_back({place(foot, 0.0), place(foot, FEATHER_ACROSS), place(next, 0.0)});
        foot = next;
    }
    if (shown.pennants > 0) {
        foot -= SPACING * squeeze;
    }
    for (int i = 0; i < shown.full; ++i) {
        drawn.strokes.push_back({place(foot, 0.0), place(foot + FEATHER_ALONG, FEATHER_ACROSS)});
        foot -= SPACING * squeeze;
    }
    if (shown.half > 0) {
        // A half feather alone stands away from the end, so that it is not taken for a bent staff.
        if (shown.pennants + shown.full == 0) {
            foot -= SPACING;
        }
        drawn.strokes.push_back({place(foot, 0.0), place(foot + FEATHER_ALONG / 2.0, FEATHER_ACROSS / 2.0)});
    }
    return drawn;
}

}  // namespace corvane::skewt
