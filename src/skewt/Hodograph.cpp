#include "Hodograph.h"

#include "Units.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace corvane::skewt {

namespace {

constexpr double DEPTH = 12000.0;       // metres
constexpr double TOP_PRESSURE = 200.0;  // hPa
constexpr double MOST_RINGS = 4.0;
constexpr double CLOSEST = 0.03;  // winds that differ less, in parts of the radius, are one point of the line
constexpr double RADIAN = PI / 180.0;

// The end of a wind vector, in the unit of the picture; y to the north.
struct End {
    double height;  // above the ground, metres; NaN where not known
    Point wind;
};

Point between(const End& below, const End& above, double height) {
    const double share = (height - below.height) / (above.height - below.height);
    return {below.wind.x + share * (above.wind.x - below.wind.x), below.wind.y + share * (above.wind.y - below.wind.y)};
}

// The ends of a run of winds. Where it leaves the lowest 12 km it is cut there.
std::vector<End> ends(const std::vector<Level>& run, double ground, SkewTOptions::WindUnit unit) {
    std::vector<End> found;
    for (const Level& level : run) {
        const double length = inUnit(level.windSpeed, unit);
        const End end{
            level.height - ground,
            {-length * std::sin(level.windDirection * RADIAN), -length * std::cos(level.windDirection * RADIAN)}};
        if (std::isnan(end.height) ? level.pressure < TOP_PRESSURE : end.height > DEPTH) {
            if (!found.empty() && found.back().height < DEPTH && end.height > DEPTH) {
                found.push_back({DEPTH, between(found.back(), end, DEPTH)});
            }
            break;
        }
        found.push_back(end);
    }
    return found;
}

// The wind at a height, between the ends of a run.
std::optional<Point> windAt(const std::vector<End>& run, double height) {
    const End* below = nullptr;
    for (const End& end : run) {
        if (end.height == height) {
            return end.wind;
        }
        if (end.height > height) {
            return below != nullptr ? std::optional<Point>(between(*below, end, height)) : std::nullopt;
        }
        if (end.height < height) {
            below = &end;
        }
    }
    return std::nullopt;
}

double speed(const End& end) {
    return std::hypot(end.wind.x, end.wind.y);
}

}  // namespace

Hodograph hodograph(const Profile& profile, SkewTOptions::WindUnit unit, Point centre, double radius) {
    static constexpr std::array<double, 7> SPEEDS{5.0, 10.0, 20.0, 30.0, 50.0, 100.0, 500.0};
    static constexpr std::array<int, 6> HEIGHTS{0, 1, 3, 6, 9, 12};

    const double ground = profile.levels().empty() ? SoundingLevel::NOT_GIVEN : profile.levels().front().height;
    std::vector<std::vector<End>> runs;
    double strongest = 0.0;
    for (const std::vector<Level>& run : profile.runs(Quantity::WIND)) {
        runs.push_back(ends(run, ground, unit));
        for (const End& end : runs.back()) {
            strongest = std::max(strongest, speed(end));
        }
    }

    Hodograph drawn;
    drawn.centre = centre;
    for (const double speedOfRing : SPEEDS) {
        drawn.ringSpeed = speedOfRing;
        if (strongest <= MOST_RINGS * speedOfRing) {
            break;
        }
    }
    drawn.rings = std::max(2, static_cast<int>(std::ceil(strongest / drawn.ringSpeed)));
    drawn.pixelsPerUnit = radius / (drawn.rings * drawn.ringSpeed);

    const auto at = [&](Point wind) {
        return Point{centre.x + wind.x * drawn.pixelsPerUnit, centre.y - wind.y * drawn.pixelsPerUnit};
    };
    for (const std::vector<End>& run : runs) {
        if (run.size() > 1) {
            Line line;
            for (const End& end : run) {
                const Point next = at(end.wind);
                const bool isClose =
                    !line.empty() && std::hypot(next.x - line.back().x, next.y - line.back().y) < CLOSEST * radius;
                if (!isClose) {
                    line.push_back(next);
                } else if (&end == &run.back() && line.size() > 1) {
                    line.back() = next;
                }
            }
            if (line.size() > 1) {
                drawn.lines.push_back(std::move(line));
            }
        }
    }
    if (profile.beginsAloft()) {
        return drawn;
    }
    for (const int kilometres : HEIGHTS) {
        for (const std::vector<End>& run : runs) {
            if (const std::optional<Point> wind = windAt(run, 1000.0 * kilometres)) {
                drawn.marks.push_back({kilometres, at(*wind)});
                break;
            }
        }
    }
    return drawn;
}

}  // namespace corvane::skewt
