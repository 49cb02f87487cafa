// The winds: barbs beside the diagram, the hodograph below it.
#include "Picture.h"

#include "Barb.h"
#include "Hemisphere.h"
#include "Hodograph.h"
#include "Units.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace corvane::skewt {

void Picture::barbs() {
    const bool south = southern(sounding);
    const double line = 1.7 * hair;
    const double axis = (column.left + column.right) / 2.0;
    struct Drawn {
        const Level* level;
        Barb barb;
    };
    std::vector<Drawn> chosen;
    // The surface, strongest winds and standard surfaces first, so that thinning leaves them in.
    const auto rank = [&](const Level& level) {
        return level.is(SoundingLevel::SURFACE)     ? 0
               : level.is(SoundingLevel::MAXWIND)   ? 1
               : level.is(SoundingLevel::MANDATORY) ? 2
                                                    : 3;
    };
    for (int pass = 0; pass <= 3; ++pass) {
        for (const Level& level : profile.levels()) {
            const double y = map.y(level.pressure);
            if (rank(level) != pass || !gives(level, Quantity::WIND) || !isInFrame({frame.left, y})) {
                continue;
            }
            const double halves = inUnit(level.windSpeed, options.units) / halfFeather(options.units);
            Barb made = barb({axis, y}, level.windDirection, halves, staff, south);
            const Box covered = made.bounds(line + 2.0 * hair);
            const bool isFree =
                column.contains(covered) && std::none_of(result.barbs.begin(), result.barbs.end(),
                                                         [&](const Box& other) { return covered.overlaps(other); });
            if (isFree) {
                result.barbs.push_back(covered);
                chosen.push_back({&level, std::move(made)});
            }
        }
    }
    for (const Box& box : result.barbs) {
        labels.keepOff(box);
    }
    for (const double y : {frame.top - 0.5 * font, column.top - 0.4 * font}) {
        if (front.textWhereFree(picture, {axis, y}, Anchor::MIDDLE, unitName(options.units),
                                {size(0.8), false, colours.quiet})) {
            break;
        }
    }
    front.open(attribute("id", "winds") + ' ' + stroke(colours.text, line) + ' ' + attribute("fill", colours.text));
    front.segment({axis, frame.top}, {axis, frame.bottom}, stroke(colours.isobar, hair));
    for (const Drawn& drawn : chosen) {
        std::string attributes = attribute("id", "wind-" + std::to_string(drawn.level->index));
        if (drawn.level->windDoubted) {
            attributes += " class=\"doubted\" " + attribute("fill", colours.ground);
        }
        if (drawn.barb.calm) {
            front.circle(drawn.barb.station, drawn.barb.ring,
                         attributes + (drawn.level->windDoubted ? "" : " fill=\"none\""));
            continue;
        }
        front.open(attributes);
        front.paths(drawn.barb.strokes);
        for (const Line& pennant : drawn.barb.pennants) {
            front.polygon(pennant);
        }
        front.circle(drawn.barb.station, drawn.level->windDoubted ? 0.2 * font : 1.8 * hair);
        front.close();
    }
    front.close();
}

void Picture::winds() {
    const double side = std::min(panel.height(), 0.26 * content.width());
    const Box box{panel.right - side, panel.top, panel.right, panel.bottom};
    const Point centre{(box.left + box.right) / 2.0, (box.top + box.bottom) / 2.0};
    const Hodograph drawn = hodograph(profile, options.units, centre, side / 2.0 - 0.3 * font);
    result.hodograph = box;

    front.open(attribute("id", "hodograph") + ' ' + attribute("fill", "none") + ' ' +
               stroke(colours.isobar, 1.2 * hair));
    front.rectangle(box, stroke(colours.frame, 1.2 * hair));
    const auto radius = [&](int ring) { return ring * drawn.ringSpeed * drawn.pixelsPerUnit; };
    for (int ring = 1; ring <= drawn.rings; ++ring) {
        front.circle(centre, radius(ring));
    }
    front.segment({box.left, centre.y}, {box.right, centre.y});
    front.segment({centre.x, box.top}, {centre.x, box.bottom});
    front.paths(drawn.lines, stroke(colours.hodograph, 2.4 * hair) + " stroke-linejoin=\"round\"");
    const double dot = 0.24 * font;
    front.open(attribute("fill", colours.ground) + ' ' + stroke(colours.hodograph, 1.6 * hair));
    for (const Hodograph::Mark& each : drawn.marks) {
        front.circle(each.at, dot);
        labels.keepOff(Box::at(each.at).grown(dot));
    }
    front.close();
    front.close();

    const Face kilometres{size(0.72), true, colours.hodograph};
    const Face small{size(0.72), false, colours.quiet};
    front.textWhereFree(box, {box.left + 0.3 * font, box.top + 0.85 * font}, Anchor::START, unitName(options.units),
                        small);
    if (!drawn.marks.empty()) {
        front.textWhereFree(box, {box.right - 0.3 * font, box.bottom - 0.35 * font}, Anchor::END, "km", kilometres);
    }
    for (const Line& line : drawn.lines) {
        labels.keepOff(line);
    }

    // The speeds of the rings along one half of an axis, on the side where the line leaves most of them free.
    struct Side {
        Point along;
        Point aside;
        Anchor anchor;
    };
    static constexpr std::array<Side, 8> SIDES{{{{0.0, 1.0}, {0.2, -0.25}, Anchor::START},
                                                {{0.0, 1.0}, {-0.2, -0.25}, Anchor::END},
                                                {{0.0, -1.0}, {0.2, 0.85}, Anchor::START},
                                                {{0.0, -1.0}, {-0.2, 0.85}, Anchor::END},
                                                {{-1.0, 0.0}, {0.2, -0.25}, Anchor::START},
                                                {{-1.0, 0.0}, {0.2, 0.85}, Anchor::START},
                                                {{1.0, 0.0}, {-0.2, -0.25}, Anchor::END},
                                                {{1.0, 0.0}, {-0.2, 0.85}, Anchor::END}}};
    const auto nameAt = [&](const Side& place, int ring) {
        return Point{centre.x + place.along.x * radius(ring) + place.aside.x * font,
                     centre.y + place.along.y * radius(ring) + place.aside.y * font};
    };
    const auto nameOf = [&](int ring) { return fixed(ring * drawn.ringSpeed, 0); };
    const auto covered = [&](const Side& place) {
        int count = 0;
        for (int ring = 1; ring <= drawn.rings; ++ring) {
            count += labels.isFree(Labels::room(nameAt(place, ring), place.anchor, nameOf(ring), small)) ? 0 : 1;
        }
        return count;
    };
    const Side& best = *std::min_element(
        SIDES.begin(), SIDES.end(), [&](const Side& one, const Side& other) { return covered(one) < covered(other); });
    for (int ring = 1; ring <= drawn.rings; ++ring) {
        const Point at = nameAt(best, ring);
        front.rectangle(Labels::room(at, best.anchor, nameOf(ring), small),
                        attribute("fill", colours.ground) + " fill-opacity=\"0.75\"");
        front.text(at, best.anchor, nameOf(ring), small);
    }

    // The heights beside their marks, where the line leaves them room.
    constexpr int DIRECTIONS = 16;
    static constexpr std::array<double, 3> AWAY{0.75, 1.05, 1.35};
    for (const Hodograph::Mark& each : drawn.marks) {
        const std::string name = std::to_string(each.kilometres);
        bool isPlaced = false;
        for (const double away : AWAY) {
            for (int direction = 0; direction < DIRECTIONS && !isPlaced; ++direction) {
                const double angle = 2.0 * PI * direction / DIRECTIONS;
                const Point at{each.at.x + away * font * std::cos(angle),
                               each.at.y + away * font * std::sin(angle) + 0.27 * kilometres.size};
                isPlaced = front.textWhereFree(box, at, Anchor::MIDDLE, name, kilometres);
            }
        }
    }
}

}  // namespace corvane::skewt
