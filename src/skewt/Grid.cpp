// The background of the diagram: ground, isobars, isotherms, adiabats, mixing ratios.
#include "Picture.h"

#include <corvane/Thermodynamics.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <vector>

namespace corvane::skewt {

namespace {

// From one number to another, both included where the steps meet it.
std::vector<double> steps(double from, double to, double step) {
    std::vector<double> all;
    const int count = static_cast<int>(std::floor((to - from) / step + 1e-9));
    for (int i = 0; i <= count; ++i) {
        all.push_back(from + i * step);
    }
    return all;
}

}  // namespace

Line Picture::isoline(double fromPressure, double toPressure, const std::function<double(double)>& temperature) const {
    constexpr int STRETCHES = 24;
    Line line;
    const double from = map.y(fromPressure);
    const double to = map.y(toPressure);
    for (int i = 0; i <= STRETCHES; ++i) {
        const double pressure = map.pressure(from + (to - from) * i / STRETCHES);
        const double value = temperature(pressure);
        if (std::isfinite(value)) {
            line.push_back(map.at(pressure, value));
        }
    }
    return line;
}

void Picture::ground() {
    const double surface = profile.groundPressure();
    if (std::isnan(surface) || surface >= map.bottomPressure() || surface <= map.topPressure()) {
        return;
    }
    const double y = map.y(surface);
    background.rectangle({frame.left, y, frame.right, frame.bottom}, attribute("fill", colours.earth));
    background.segment({frame.left, y}, {frame.right, y}, stroke(colours.frame, 2.0 * hair));
    labels.keepOff(Line{{frame.left, y}, {frame.right, y}});
}

void Picture::isobars() {
    static constexpr std::array<double, 21> STANDARD{1000, 850, 700, 500, 300, 200, 100, 400, 925, 250, 150,
                                                     50,   30,  20,  10,  70,  7,   5,   3,   2,   1};
    // Drawn only where their labels have room.
    static constexpr std::array<double, 3> OTHER{600, 800, 900};
    static constexpr std::array<double, 5> CLOSE{950, 750, 650, 550, 450};  // for a diagram of the lower air

    std::vector<double> all(STANDARD.begin(), STANDARD.end());
    all.insert(all.end(), OTHER.begin(), OTHER.end());
    if (map.topPressure() >= 400.0) {
        all.insert(all.end(), CLOSE.begin(), CLOSE.end());
    }
    const auto isStandard = [](double pressure) {
        return std::find(STANDARD.begin(), STANDARD.end(), pressure) != STANDARD.end();
    };
    const Face face{size(0.95)};
    background.open(attribute("id", "isobars") + ' ' + stroke(colours.isobar, 1.2 * hair));
    for (const double pressure : all) {
        if (pressure > map.bottomPressure() || pressure < map.topPressure()) {
            continue;
        }
        const double y = map.y(pressure);
        const bool labelled = front.textWhereFree(picture, {frame.left - 0.4 * font, y + 0.34 * font}, Anchor::END,
                                                  fixed(pressure, 0), face);
        if (labelled || isStandard(pressure)) {
            background.segment({frame.left, y}, {frame.right, y});
        }
    }
    background.close();
    unitAbove(frame.left - 0.4 * font, Anchor::END, "hPa");
}

// The unit of an axis, above the topmost of its labels.
void Picture::unitAbove(double x, Anchor anchor, const std::string& unit) {
    for (const double above : {0.5, 0.8, 1.1}) {
        if (front.textWhereFree(picture, {x, frame.top - above * font}, anchor, unit,
                                {size(0.8), false, colours.quiet})) {
            return;
        }
    }
}

void Picture::isotherms() {
    const double step = map.range() < 45.0 ? 5.0 : 10.0;
    const double coldest = std::max(-150.0, std::floor(map.temperature({frame.left, frame.top}) / step) * step);
    const double warmest = map.cornerTemperature() + map.range();
    std::vector<double> all = steps(coldest, warmest, step);
    const auto lineOf = [&](double temperature) {
        return Line{map.at(map.bottomPressure(), temperature), map.at(map.topPressure(), temperature)};
    };

    background.open(attribute("id", "isotherms") + ' ' + stroke(colours.isotherm, 1.2 * hair));
    for (const double temperature : all) {
        const auto pieces = clip(frame, lineOf(temperature));
        background.paths(pieces, temperature == 0.0 ? "class=\"zero\" " + stroke(colours.zero, 2.2 * hair) : "");
    }
    background.close();

    // Where an isotherm meets the lower or the upper edge it is named; every second or fourth one where not all have
    // room.
    front.textWhereFree(picture, {frame.right + 0.4 * font, frame.bottom + 1.25 * font}, Anchor::START,
                        std::string("\xC2\xB0") + 'C', {size(0.8), false, colours.quiet});
    double named = step;
    while (named * map.pixelsPerDegree() < 3.6 * font) {
        named *= 2.0;
    }
    all.erase(std::remove_if(all.begin(), all.end(),
                             [named](double temperature) { return std::fmod(temperature, named) != 0.0; }),
              all.end());
    const Face face{size(0.95)};
    const Face zero{size(0.95), true, colours.zero};
    for (const double temperature : all) {
        const Line line = lineOf(temperature);
        const Face& fits = temperature == 0.0 ? zero : face;
        if (line.front().x >= frame.left && line.front().x <= frame.right) {
            front.textWhereFree(picture, {line.front().x, frame.bottom + 1.25 * font}, Anchor::MIDDLE,
                                shown(temperature, 0), fits);
        }
        if (line.back().x >= frame.left + font && line.back().x <= frame.right) {
            front.textWhereFree(picture, {line.back().x, frame.top - 0.5 * font}, Anchor::MIDDLE, shown(temperature, 0),
                                fits);
        }
    }
}

void Picture::dryAdiabats() {
    const double step = map.range() < 45.0 ? 5.0 : 10.0;
    const auto theta = [&](Point corner) {
        return dryAdiabat(map.temperature(corner), map.pressure(corner.y), 1000.0);
    };
    const double coldest = std::ceil(theta({frame.left, frame.bottom}) / step) * step;
    const double warmest = theta({frame.right, frame.top});
    background.open(attribute("id", "dry-adiabats") + ' ' + stroke(colours.dryAdiabat, 1.2 * hair));
    constexpr double CLOSE = 150.0;  // from here up, in the stratosphere, every fifth one is enough
    for (const double start : steps(coldest, warmest, step)) {
        if (start <= CLOSE || std::fmod(start, 5.0 * step) == 0.0) {
            gridLine(isoline(map.bottomPressure(), map.topPressure(),
                             [start](double pressure) { return dryAdiabat(start, 1000.0, pressure); }));
        }
    }
    background.close();
}

// From 1000 hPa up to where they can no longer be told from dry adiabats.
void Picture::saturatedAdiabats() {
    const double step = map.range() < 45.0 ? 2.0 : 5.0;
    const double from = std::min(1000.0, map.bottomPressure());
    const double to = std::max(200.0, map.topPressure());
    background.open(attribute("id", "saturated-adiabats") + ' ' + stroke(colours.saturatedAdiabat, 1.2 * hair) + ' ' +
                    dashes(1.2 * hair, 7.0, 4.0));
    for (const double start : from > to ? steps(-20.0, 40.0, step) : std::vector<double>()) {
        double temperature = start;
        double at = 1000.0;
        gridLine(isoline(map.bottomPressure(), to, [&](double pressure) {
            temperature = pseudoadiabat(temperature, at, pressure);
            at = pressure;
            return temperature;
        }));
    }
    background.close();
}

void Picture::mixingRatios() {
    static constexpr std::array<double, 10> RATIOS{0.2, 0.5, 1.0, 2.0, 4.0, 7.0, 10.0, 15.0, 22.0, 30.0};  // g/kg
    const double top = std::max(600.0, map.topPressure());
    if (top >= map.bottomPressure()) {
        return;
    }
    background.open(attribute("id", "mixing-ratios") + ' ' + stroke(colours.mixingRatio, 1.2 * hair) + ' ' +
                    dashes(1.2 * hair, 1.5, 4.0));
    for (const double ratio : RATIOS) {
        gridLine(isoline(map.bottomPressure(), top,
                         [ratio](double pressure) { return dewpointOfMixingRatio(ratio / 1000.0, pressure); }));
    }
    background.close();
    // At the upper end of the line, or farther down where something else is there.
    const double smallest = 0.72 * font;
    if (smallest < SMALLEST_TEXT) {
        return;
    }
    labels.keepOff(Line{map.at(map.bottomPressure(), 0.0), map.at(map.topPressure(), 0.0)});
    const double surface = profile.groundPressure();
    const double lowest = surface < map.bottomPressure() ? surface : map.bottomPressure();
    const Face face{smallest, false, colours.quiet};
    for (const double ratio : RATIOS) {
        const std::string name = fixed(ratio, ratio < 1.0 ? 1 : 0);
        for (const double down : {0.0, 1.5, 3.0, 4.5, 6.0}) {
            const double pressure = map.pressure(map.y(top) + down * font);
            const Point end = map.at(pressure, dewpointOfMixingRatio(ratio / 1000.0, pressure));
            const Point at{end.x, end.y - 0.25 * font};
            const Box room = Labels::room(at, Anchor::MIDDLE, name, face).grown(0.2 * font);
            if (pressure < lowest && frame.contains(room) && labels.isFree(room)) {
                background.text(at, Anchor::MIDDLE, name, face);
                break;
            }
        }
    }
}

}  // namespace corvane::skewt
