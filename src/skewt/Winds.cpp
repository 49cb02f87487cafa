// The winds: barbs beside the diagram, the hodograph below it.
#include "Picture.h"

#include "Barb.h"
#include "Hemisphere.h"
#include "Hodograph.h"
#include "Units.h"

#include <algorithm>
#include <array>
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
                                {0.8 * font, false, colours.quiet})) {
            break;
        }
    }
    front.open(attribute("id", "winds") + ' ' + stroke(colours.text, line) + ' ' + attribute("fill", colours.text));
    front.segment({axis, frame.top}, {axis, frame.bottom}, stroke(colours.isobar, hair));
    for (const Drawn& drawn : chosen) {
        std::string attributes = attribute("id", "wind-" + std::to_string(drawn.level->index));
        if (drawn.level->doubted) {
            attributes += " class=\"doubted\" " + attribute("fill", colours.ground);
        }
        if (drawn.barb.calm) {
            front.circle(drawn.barb.station, drawn.barb.ring,
                         attributes + (drawn.level->doubted ? "" : " fill=\"none\""));
            continue;
        }
        front.open(attributes);
        front.paths(drawn.barb.strokes);
        for (const Line& pennant : drawn.barb.pennants) {
            front.polygon(pennant);
        }
        front.circle(drawn.barb.station, drawn.level->doubted ? 0.2 * font : 1.8 * hair);
        front.close();
    }
    front.close();
}

void Picture::winds() {
    const double side = panel.height();
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

    // The heights beside their marks, clear of the line where that is possible.
    static constexpr std::array<Point, 8> BESIDE{
        {{0.75, 0.25}, {-0.75, 0.25}, {0.0, -0.5}, {0.0, 1.0}, {0.6, -0.4}, {-0.6, -0.4}, {0.6, 0.9}, {-0.6, 0.9}}};
    const Face kilometres{0.72 * font, true, colours.hodograph};
    const Face small{0.72 * font, false, colours.quiet};
    front.textWhereFree(box, {box.left + 0.3 * font, box.top + 0.85 * font}, Anchor::START, unitName(options.units),
                        small);
    front.textWhereFree(box, {box.right - 0.3 * font, box.bottom - 0.35 * font}, Anchor::END, "km", kilometres);
    for (const Line& line : drawn.lines) {
        labels.keepOff(line);
    }
    for (const Hodograph::Mark& each : drawn.marks) {
        const auto isPlaced = [&](Clear clear) {
            return std::any_of(BESIDE.begin(), BESIDE.end(), [&](const Point& aside) {
                return front.textWhereFree(box, {each.at.x + aside.x * font, each.at.y + aside.y * font},
                                           Anchor::MIDDLE, std::to_string(each.kilometres), kilometres, clear);
            });
        };
        if (!isPlaced(Clear::OF_EVERYTHING)) {
            isPlaced(Clear::OF_BOXES);
        }
    }
    for (int ring = drawn.rings; ring >= 1; --ring) {
        const std::string name = fixed(ring * drawn.ringSpeed, 0);
        if (!front.textWhereFree(box, {centre.x + 0.2 * font, centre.y + radius(ring) - 0.25 * font}, Anchor::START,
                                 name, small)) {
            front.textWhereFree(box, {centre.x + 0.2 * font, centre.y - radius(ring) + 0.85 * font}, Anchor::START,
                                name, small);
        }
    }
}

}  // namespace corvane::skewt
