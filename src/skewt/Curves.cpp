// The sounding itself: temperature and dew point, the lifted parcel, heights, levels that are marked.
#include "Picture.h"

#include "Units.h"

#include <corvane/Thermodynamics.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace corvane::skewt {

void Picture::curves() {
    struct Curve {
        Quantity quantity;
        double Level::*value;
        const char* name;
        const char* prefix;
        std::string_view colour;
    };
    const std::array<Curve, 2> all{
        {{Quantity::DEWPOINT, &Level::dewpoint, "dewpoint", "td-", colours.dewpoint},
         {Quantity::TEMPERATURE, &Level::temperature, "temperature", "t-", colours.temperature}}};
    for (const Curve& curve : all) {
        std::vector<Line> pieces;
        for (const std::vector<Level>& run : profile.runs(curve.quantity)) {
            Line line;
            for (const Level& level : run) {
                line.push_back(map.at(level.pressure, level.*curve.value));
            }
            for (Line& piece : clip(frame, line)) {
                labels.keepOff(piece);
                pieces.push_back(std::move(piece));
            }
        }
        front.open(attribute("id", curve.name) + ' ' + attribute("fill", curve.colour));
        front.paths(pieces, "fill=\"none\" " + stroke(curve.colour, 3.4 * hair) + " stroke-linejoin=\"round\"");
        for (const Level& level : profile.levels()) {
            const double value = level.*curve.value;
            const Point at = map.at(level.pressure, value);
            if (std::isnan(value) || !isInFrame(at)) {
                continue;
            }
            const std::string id = attribute("id", curve.prefix + std::to_string(level.index));
            const std::string tip = curve.quantity == Quantity::TEMPERATURE ? levelText(level) : std::string();
            if (level.temperatureDoubted) {
                front.circle(at, 0.27 * font,
                             id + " class=\"doubted\" " + attribute("fill", colours.ground) + ' ' +
                                 stroke(curve.colour, 2.0 * hair),
                             tip);
            } else {
                front.circle(at, 2.3 * hair, id, tip);
            }
        }
        front.close();
    }
}

// The path of the most unstable parcel, if it becomes buoyant: from its level to its equilibrium level or to the
// highest temperature.
void Picture::parcel() {
    const ParcelIndices& lifted = indices.mostUnstable;
    if (!(lifted.cape > 0.0) || std::isnan(lifted.lfcPressure)) {
        return;
    }
    const double end = std::isnan(lifted.elPressure) ? profile.topOf(&Level::temperature) : lifted.elPressure;
    const double top = std::max(end, map.topPressure());
    if (top >= lifted.lclPressure) {
        return;
    }
    Line line = isoline(lifted.pressure, lifted.lclPressure, [&](double pressure) {
        return dryAdiabat(lifted.lclTemperature, lifted.lclPressure, pressure);
    });
    const Line above = isoline(lifted.lclPressure, top, [&](double pressure) {
        return pseudoadiabat(lifted.lclTemperature, lifted.lclPressure, pressure);
    });
    line.insert(line.end(), above.begin(), above.end());
    const std::vector<Line> pieces = clip(frame, line);
    front.paths(pieces, "id=\"parcel\" fill=\"none\" " + stroke(colours.parcel, 1.8 * hair) + ' ' +
                            dashes(1.8 * hair, 5.0, 3.0));
    for (const Line& piece : pieces) {
        labels.keepOff(piece);
    }
    parcelDrawn = !pieces.empty();
}

void Picture::heightScale() {
    const Face face{size(0.8)};
    front.open(attribute("id", "heights") + ' ' + stroke(colours.frame, 1.5 * hair) + ' ' +
               attribute("fill", colours.text));
    bool any = false;
    for (int pass = 0; pass < 2; ++pass) {
        for (int kilometre = 0; kilometre <= 60; ++kilometre) {
            const bool even = kilometre % 2 == 0;
            const double pressure = profile.pressureAt(1000.0 * kilometre);
            if (even != (pass == 0) || !(pressure <= map.bottomPressure() && pressure >= map.topPressure())) {
                continue;
            }
            const double y = map.y(pressure);
            front.segment({frame.right, y}, {frame.right + (even ? 0.5 : 0.3) * font, y});
            any = true;
            if (even) {
                front.raw("<g stroke=\"none\">");
                front.textWhereFree(picture, {frame.right + 0.7 * font, y + 0.28 * font}, Anchor::START,
                                    std::to_string(kilometre), face);
                front.raw("</g>\n");
            }
        }
    }
    front.close();
    if (any) {
        unitAbove(frame.right + 0.5 * font, Anchor::START, "km");
    }
}

// A tick at the right edge and the text where it has room: beside the tick, a little above or below, or on the left.
void Picture::mark(double pressure, const std::string& text, std::string_view colour) {
    if (!(pressure <= map.bottomPressure() && pressure >= map.topPressure())) {
        return;
    }
    const double y = map.y(pressure);
    const Face face{size(0.85), false, colour};
    const std::string line = "fill=\"none\" " + stroke(colour, 2.2 * hair);
    struct Side {
        double edge;
        double inward;
        Anchor anchor;
    };
    for (const double shift : {0.0, -1.1, 1.1, -2.2, 2.2, -3.3, 3.3}) {
        for (const Side& side : {Side{frame.right, -font, Anchor::END}, Side{frame.left, font, Anchor::START}}) {
            const Point at{side.edge + 1.4 * side.inward, y + (0.3 + shift) * font};
            const Box room = Labels::room(at, side.anchor, text, face);
            if (!frame.grown(-0.2 * font).contains(room) || !labels.isFree(room)) {
                continue;
            }
            front.rectangle(room, attribute("fill", colours.ground) + " fill-opacity=\"0.75\"");
            front.text(at, side.anchor, text, face);
            front.path(
                {{side.edge, y}, {side.edge + 0.7 * side.inward, y}, {side.edge + 1.2 * side.inward, y + shift * font}},
                line);
            return;
        }
    }
    front.path({{frame.right, y}, {frame.right - font, y}}, line);
}

// A bar across the temperature, where that is drawn.
void Picture::bar(double pressure, std::string_view colour) {
    if (!profile.isDrawnAt(pressure, Quantity::TEMPERATURE)) {
        return;
    }
    const Point at = map.at(pressure, profile.at(pressure, &Level::temperature));
    const double half = 0.8 * font;
    if (frame.grown(-half).contains(at)) {
        const Line line{{at.x - half, at.y}, {at.x + half, at.y}};
        front.path(line, stroke(colour, 2.2 * hair));
        labels.keepOff(line);
    }
}

void Picture::marks() {
    front.open(attribute("id", "marks"));
    for (const Level& level : profile.levelsOf(SoundingLevel::TROPOPAUSE)) {
        bar(level.pressure, colours.text);
        mark(level.pressure, "tropopause " + fixed(level.pressure, 0) + " hPa", colours.text);
    }
    for (const Level& level : profile.levelsOf(SoundingLevel::MAXWIND)) {
        if (gives(level, Quantity::WIND)) {
            // A level of the same pressure may give another wind.
            const double speed = std::isnan(level.maximumWind) ? level.windSpeed : level.maximumWind;
            mark(level.pressure, "max wind " + fixed(inUnit(speed, options.units), 0) + ' ' + unitName(options.units),
                 colours.hodograph);
        }
    }
    bar(indices.freezingLevelPressure, colours.zero);
    mark(indices.freezingLevelPressure, "freezing level " + fixed(indices.freezingLevelPressure, 0) + " hPa",
         colours.zero);
    mark(profile.groundPressure(), "surface " + fixed(profile.groundPressure(), 0) + " hPa", colours.quiet);
    front.close();
}

// "T" on the right of the temperature, "Td" on the left of the dew point, from the top down where there is room first.
void Picture::curveNames() {
    const auto name = [&](double Level::*value, const char* text, Anchor anchor, double aside,
                          std::string_view colour) {
        const auto& levels = profile.levels();
        for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
            if (std::isnan((*level).*value)) {
                continue;
            }
            const Point at = map.at(level->pressure, (*level).*value);
            if (front.textWhereFree(frame.grown(-0.2 * font), {at.x + aside, at.y + 0.3 * font}, anchor, text,
                                    {1.1 * font, true, colour})) {
                return;
            }
        }
    };
    name(&Level::temperature, "T", Anchor::START, 0.7 * font, colours.temperature);
    name(&Level::dewpoint, "Td", Anchor::END, -0.7 * font, colours.dewpoint);
}

// A diagram without data says so.
void Picture::nothing() {
    const auto isShown = [&](const Level& level) {
        return level.pressure <= map.bottomPressure() && level.pressure >= map.topPressure() &&
               (gives(level, Quantity::TEMPERATURE) || gives(level, Quantity::DEWPOINT) ||
                gives(level, Quantity::WIND));
    };
    if (std::none_of(profile.levels().begin(), profile.levels().end(), isShown)) {
        front.text({(frame.left + frame.right) / 2.0, (frame.top + frame.bottom) / 2.0}, Anchor::MIDDLE, "no data",
                   {1.5 * font, true, colours.quiet});
    }
}

}  // namespace corvane::skewt
