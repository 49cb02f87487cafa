#include "Drawing.h"

#include "Barb.h"
#include "Hemisphere.h"
#include "Hodograph.h"
#include "IndexTable.h"
#include "Profile.h"
#include "Scales.h"
#include "Style.h"
#include "Units.h"

#include <corvane/Indices.h>
#include <corvane/Thermodynamics.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace corvane::skewt {

namespace {

constexpr const char* DEGREE = "\xC2\xB0";
constexpr const char* DOT = " \xC2\xB7 ";

// The picture that the distances of the layout are made for.
constexpr double USUAL_WIDTH = 1000.0;
constexpr double USUAL_HEIGHT = 1100.0;
constexpr double USUAL_FONT = 17.0;
constexpr double SMALLEST_FONT = 8.5;
constexpr double STAFF = 2.15;  // length of a barb, in multiples of the usual font
constexpr double SMALLEST_PICTURE = 400.0;
constexpr double LARGEST_PICTURE = 10000.0;

std::string attribute(const char* name, std::string_view value) {
    return std::string(name) + "=\"" + std::string(value) + '"';
}

std::string attribute(const char* name, double value) {
    return attribute(name, fixed(value, 2));
}

std::string stroke(std::string_view colour, double width) {
    return attribute("stroke", colour) + ' ' + attribute("stroke-width", width);
}

// A dash pattern in multiples of the width of the line.
std::string dashes(double width, double dash, double space) {
    return " stroke-dasharray=\"" + fixed(width * dash, 1) + ' ' + fixed(width * space, 1) + '"';
}

std::string twoDigits(int number) {
    return number >= 0 && number < 10 ? '0' + std::to_string(number) : std::to_string(number);
}

std::string degrees(double value, const char* positive, const char* negative) {
    return fixed(std::fabs(value), 1) + DEGREE + (value < 0.0 ? negative : positive);
}

class Picture {
public:
    Picture(const Sounding& ascent, const SkewTOptions& how);

    Drawing drawing();

private:
    void layOut();

    void ground();
    void isobars();
    void isotherms();
    void dryAdiabats();
    void saturatedAdiabats();
    void mixingRatios();
    void curves();
    void doubtedLevels();
    void parcel();
    void heightScale();
    void marks();
    void mark(double pressure, const std::string& text, std::string_view colour);
    void bar(double pressure, std::string_view colour);
    void curveNames();
    void nothing();
    void barbs();
    void winds();
    void title();
    void mended();
    void table();

    // A line through the diagram along which the temperature is a function of pressure.
    template <typename Function>
    Line isoline(double fromPressure, double toPressure, Function temperature) const;
    // Also on an edge, where the rounding of a logarithm may put a level on the far side.
    bool isInFrame(Point at) const { return frame.grown(0.01).contains(at); }
    void grid(const Line& line) { background.paths(clip(map.frame(), line)); }

    std::string levelText(const Level& level) const;
    std::string titleText() const;
    std::string placeText() const;
    std::string mendedText() const;
    std::string description() const;

    const Sounding& sounding;
    SkewTOptions options;
    const Palette& colours;
    Profile profile;
    Indices indices;
    double width;
    double height;
    double font;  // size of the usual text; every distance is a multiple of it
    double hair;  // width of the thinnest line

    Box picture;
    Box frame;
    Box column;  // of the barbs
    Box panel;   // table and hodograph
    Geometry map;

    bool parcelDrawn = false;

    Drawing result;
    Labels labels;
    Layer background{labels};
    Layer front{labels};
};

Picture::Picture(const Sounding& ascent, const SkewTOptions& how)
    : sounding(ascent),
      options(how),
      colours(how.dark ? DARK : LIGHT),
      profile(ascent),
      indices(indicesOf(ascent)),
      width(std::clamp(static_cast<double>(how.width), SMALLEST_PICTURE, LARGEST_PICTURE)),
      height(std::clamp(static_cast<double>(how.height), SMALLEST_PICTURE, LARGEST_PICTURE)),
      font(std::max(USUAL_FONT * std::min(width / USUAL_WIDTH, height / USUAL_HEIGHT), SMALLEST_FONT)),
      hair(font / 20.0) {
    layOut();
}

// From left to right: pressures, the diagram, the scale of heights, the barbs. From top to bottom: title, the diagram
// with its temperatures above and below, what was mended, the panel.
void Picture::layOut() {
    const double edge = 0.8 * font;
    picture = {0.0, 0.0, width, height};
    const double staff = STAFF * font;
    const double columnWidth = 2.55 * staff;
    const double panelHeight = 12.3 * font;
    panel = {edge, height - edge - panelHeight, width - edge, height - edge};
    frame = {edge + 3.1 * font, edge + 4.9 * font, width - edge - columnWidth - 2.4 * font, panel.top - 3.4 * font};
    column = {width - edge - columnWidth, frame.top - 2.9 * font, width - edge, frame.bottom + 2.9 * font};
    map = scales(frame, profile, options);
}

// ---- grid --------------------------------------------------------------------------------------------------------

template <typename Function>
Line Picture::isoline(double fromPressure, double toPressure, Function temperature) const {
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
    background.line({frame.left, y}, {frame.right, y}, stroke(colours.frame, 2.0 * hair));
    labels.keepOff(Line{{frame.left, y}, {frame.right, y}});
}

void Picture::isobars() {
    static constexpr std::array<double, 21> STANDARD{1000, 850, 700, 500, 300, 200, 100, 400, 925, 250, 150,
                                                     50,   30,  20,  10,  70,  7,   5,   3,   2,   1};
    static constexpr std::array<double, 3> OTHER{600, 800, 900};
    static constexpr std::array<double, 5> CLOSE{950, 750, 650, 550, 450};  // for a diagram of the lower air

    std::vector<double> all(STANDARD.begin(), STANDARD.end());
    all.insert(all.end(), OTHER.begin(), OTHER.end());
    if (map.topPressure() >= 400.0) {
        all.insert(all.end(), CLOSE.begin(), CLOSE.end());
    }
    const Face face{0.95 * font};
    front.textWhereFree(picture, {frame.left - 0.4 * font, frame.top - 0.5 * font}, Anchor::END, "hPa",
                        {0.8 * font, false, colours.quiet});
    background.open(attribute("id", "isobars") + ' ' + stroke(colours.isobar, 1.2 * hair));
    for (const double pressure : all) {
        if (pressure > map.bottomPressure() || pressure < map.topPressure()) {
            continue;
        }
        const double y = map.y(pressure);
        background.line({frame.left, y}, {frame.right, y});
        front.textWhereFree(picture, {frame.left - 0.4 * font, y + 0.34 * font}, Anchor::END, fixed(pressure, 0), face);
    }
    background.close();
}

void Picture::isotherms() {
    const double step = map.range() < 45.0 ? 5.0 : 10.0;
    const double coldest = std::floor(map.temperature({frame.left, frame.top}) / step) * step;
    const double warmest = map.cornerTemperature() + map.range();
    std::vector<double> all;
    for (double temperature = coldest; temperature <= warmest; temperature += step) {
        all.push_back(temperature);
    }
    const auto lineOf = [&](double temperature) {
        return Line{map.at(map.bottomPressure(), temperature), map.at(map.topPressure(), temperature)};
    };

    background.open(attribute("id", "isotherms") + ' ' + stroke(colours.isotherm, 1.2 * hair));
    for (const double temperature : all) {
        const auto pieces = clip(frame, lineOf(temperature));
        background.paths(pieces, temperature == 0.0 ? "class=\"zero\" " + stroke(colours.zero, 2.2 * hair) : "");
    }
    background.close();

    // Where an isotherm meets the lower or the upper edge it is named; the even tens first, where not all have room.
    front.textWhereFree(picture, {frame.right + 0.4 * font, frame.bottom + 1.25 * font}, Anchor::START,
                        std::string(DEGREE) + 'C', {0.8 * font, false, colours.quiet});
    const auto rank = [step](double temperature) {
        return temperature == 0.0                          ? 0
               : std::fmod(temperature, 4.0 * step) == 0.0 ? 1
               : std::fmod(temperature, 2.0 * step) == 0.0 ? 2
                                                           : 3;
    };
    std::stable_sort(all.begin(), all.end(), [&](double a, double b) { return rank(a) < rank(b); });
    const Face face{0.95 * font};
    const Face zero{0.95 * font, true, colours.zero};
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
    double spacing = step;
    for (double start = coldest; start < warmest; start += spacing) {
        grid(isoline(map.bottomPressure(), map.topPressure(),
                     [start](double pressure) { return dryAdiabat(start, 1000.0, pressure); }));
        if (start >= 150.0) {  // in the stratosphere they are close
            spacing = 5.0 * step;
        }
    }
    background.close();
}

// From 1000 hPa up to where they can no longer be told from dry adiabats.
void Picture::saturatedAdiabats() {
    const double step = map.range() < 45.0 ? 2.0 : 5.0;
    const double from = std::min(1000.0, map.bottomPressure());
    const double to = std::max(200.0, map.topPressure());
    background.open(attribute("id", "saturated-adiabats") + ' ' + stroke(colours.saturatedAdiabat, 1.2 * hair) +
                    dashes(1.2 * hair, 7.0, 4.0));
    for (double start = -20.0; start <= 40.0 && from > to; start += step) {
        double temperature = start;
        double at = 1000.0;
        Line line = isoline(map.bottomPressure(), to, [&](double pressure) {
            temperature = pseudoadiabat(temperature, at, pressure);
            at = pressure;
            return temperature;
        });
        grid(line);
    }
    background.close();
}

void Picture::mixingRatios() {
    static constexpr std::array<double, 10> RATIOS{0.2, 0.5, 1.0, 2.0, 4.0, 7.0, 10.0, 15.0, 22.0, 30.0};  // g/kg
    const double top = std::max(600.0, map.topPressure());
    if (top >= map.bottomPressure()) {
        return;
    }
    background.open(attribute("id", "mixing-ratios") + ' ' + stroke(colours.mixingRatio, 1.2 * hair) +
                    dashes(1.2 * hair, 1.5, 4.0));
    for (const double ratio : RATIOS) {
        grid(isoline(map.bottomPressure(), top,
                     [ratio](double pressure) { return dewpointOfMixingRatio(ratio / 1000.0, pressure); }));
    }
    background.close();
    for (const double ratio : RATIOS) {
        const Point end = map.at(top, dewpointOfMixingRatio(ratio / 1000.0, top));
        const std::string name = fixed(ratio, ratio < 1.0 ? 1 : 0);
        background.textWhereFree(frame, {end.x, end.y - 0.25 * font}, Anchor::MIDDLE, name,
                                 {0.72 * font, false, colours.quiet});
    }
}

// ---- the sounding ------------------------------------------------------------------------------------------------

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
            if (level.doubted) {
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

// The path of the most unstable parcel, where it becomes buoyant: up to its equilibrium level.
void Picture::parcel() {
    const ParcelIndices& lifted = indices.mostUnstable;
    if (!(lifted.cape > 0.0) || std::isnan(lifted.lfcPressure)) {
        return;
    }
    const double top =
        std::isnan(lifted.elPressure) ? map.topPressure() : std::max(lifted.elPressure, map.topPressure());
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
    front.paths(pieces,
                "id=\"parcel\" fill=\"none\" " + stroke(colours.parcel, 1.8 * hair) + dashes(1.8 * hair, 5.0, 3.0));
    for (const Line& piece : pieces) {
        labels.keepOff(piece);
    }
    parcelDrawn = !pieces.empty();
}

void Picture::heightScale() {
    const Face face{0.8 * font};
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
            front.line({frame.right, y}, {frame.right + (even ? 0.5 : 0.3) * font, y});
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
        front.textWhereFree(picture, {frame.right + 0.5 * font, frame.top - 0.5 * font}, Anchor::START, "km",
                            {0.8 * font, false, colours.quiet});
    }
}

// A tick at the right edge and the text where it has room: beside the tick, a little above or below, or on the left.
void Picture::mark(double pressure, const std::string& text, std::string_view colour) {
    if (!(pressure <= map.bottomPressure() && pressure >= map.topPressure())) {
        return;
    }
    const double y = map.y(pressure);
    const Face face{0.85 * font, false, colour};
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

// A bar across the temperature.
void Picture::bar(double pressure, std::string_view colour) {
    const Point at = map.at(pressure, profile.at(pressure, &Level::temperature));
    const double half = 0.8 * font;
    if (frame.grown(-half).contains(at)) {
        front.line({at.x - half, at.y}, {at.x + half, at.y}, stroke(colour, 2.2 * hair));
    }
}

void Picture::marks() {
    front.open(attribute("id", "marks"));
    for (const Level& level : profile.levels()) {
        if (level.is(SoundingLevel::TROPOPAUSE)) {
            bar(level.pressure, colours.text);
            mark(level.pressure, "tropopause " + fixed(level.pressure, 0) + " hPa", colours.text);
        }
        if (level.is(SoundingLevel::MAXWIND) && gives(level, Quantity::WIND)) {
            mark(level.pressure,
                 "max wind " + fixed(inUnit(level.windSpeed, options.units), 0) + ' ' + unitName(options.units),
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

// ---- winds -------------------------------------------------------------------------------------------------------

void Picture::barbs() {
    const bool south = southern(sounding);
    const double staff = STAFF * font;
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
    front.line({axis, frame.top}, {axis, frame.bottom}, stroke(colours.isobar, hair));
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
    front.line({box.left, centre.y}, {box.right, centre.y});
    front.line({centre.x, box.top}, {centre.x, box.bottom});
    front.paths(drawn.lines, stroke(colours.hodograph, 2.4 * hair) + " stroke-linejoin=\"round\"");
    const double dot = 0.24 * font;
    front.open(attribute("fill", colours.ground) + ' ' + stroke(colours.hodograph, 1.6 * hair));
    for (const Hodograph::Mark& mark : drawn.marks) {
        front.circle(mark.at, dot);
        labels.keepOff(Box::at(mark.at).grown(dot));
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
    for (const Hodograph::Mark& mark : drawn.marks) {
        const auto named = [&](Clear clear) {
            return std::any_of(BESIDE.begin(), BESIDE.end(), [&](const Point& aside) {
                return front.textWhereFree(box, {mark.at.x + aside.x * font, mark.at.y + aside.y * font},
                                           Anchor::MIDDLE, std::to_string(mark.kilometres), kilometres, clear);
            });
        };
        if (!named(Clear::OF_EVERYTHING)) {
            named(Clear::OF_BOXES);
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

// ---- texts around the diagram ------------------------------------------------------------------------------------

// "850 hPa, 18.2 / 16.3 degrees, 230 degrees 25 kt": what a level gives.
std::string Picture::levelText(const Level& level) const {
    std::string text = fixed(level.pressure, level.pressure < 10.0 ? 1 : 0) + " hPa";
    if (gives(level, Quantity::TEMPERATURE)) {
        text += ", " + shown(level.temperature, 1);
        text += gives(level, Quantity::DEWPOINT) ? " / " + shown(level.dewpoint, 1) : "";
        text += std::string(" ") + DEGREE + 'C';
    }
    if (gives(level, Quantity::WIND)) {
        text += ", " + fixed(level.windDirection, 0) + DEGREE + ' ' + fixed(inUnit(level.windSpeed, options.units), 0) +
                ' ' + unitName(options.units);
    }
    return text;
}

std::string Picture::titleText() const {
    std::string text = formName(sounding.form);
    text = text.empty() ? "Sounding" : text;
    if (!sounding.station.empty()) {
        text += ' ' + sounding.station;
    } else if (sounding.latitude && sounding.longitude) {
        text += ' ' + degrees(*sounding.latitude, "N", "S") + ' ' + degrees(*sounding.longitude, "E", "W");
    }
    return text + ", day " + std::to_string(sounding.day) + ", " + twoDigits(sounding.hour) + " UTC";
}

std::string Picture::placeText() const {
    std::vector<std::string> parts;
    if (sounding.latitude && sounding.longitude && !sounding.station.empty()) {
        parts.push_back(degrees(*sounding.latitude, "N", "S") + ' ' + degrees(*sounding.longitude, "E", "W"));
    }
    if (sounding.elevation) {
        parts.push_back("elevation " + shown(*sounding.elevation, 0) + " m");
    }
    if (sounding.launch.size() == 4) {
        parts.push_back("launched " + sounding.launch.substr(0, 2) + ':' + sounding.launch.substr(2) + " UTC");
    }
    if (!sounding.letters.empty()) {
        std::string text = sounding.letters.size() == 1 ? "part" : "parts";
        for (const char letter : sounding.letters) {
            text += std::string(" ") + letter;
        }
        parts.push_back(text);
    }
    parts.push_back(std::to_string(profile.levels().size()) + (profile.levels().size() == 1 ? " level" : " levels"));
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() ? "" : DOT) + part;
    }
    return text;
}

void Picture::title() {
    const double room = column.left - panel.left;
    front.text({panel.left, panel.left + 1.2 * font}, Anchor::START, fitted(titleText(), room / (1.5 * font), true),
               {1.5 * font, true, {}});
    front.text({panel.left, panel.left + 2.8 * font}, Anchor::START, fitted(placeText(), room / (0.95 * font)),
               {0.95 * font, false, colours.quiet});
}

std::string Picture::mendedText() const {
    std::string text;
    for (const SoundingPart& part : sounding.parts) {
        if (part.mends.empty()) {
            continue;
        }
        std::vector<std::pair<std::string, int>> counts;
        for (const Mend& mend : part.mends) {
            const std::string name = mend.name + (mend.lost ? " (data lost)" : "");
            const auto known =
                std::find_if(counts.begin(), counts.end(), [&](const auto& entry) { return entry.first == name; });
            if (known == counts.end()) {
                counts.emplace_back(name, 1);
            } else {
                ++known->second;
            }
        }
        text += text.empty() ? "Mended: " : "; ";
        text += std::string(1, part.letter);
        for (const auto& [name, count] : counts) {
            text += ' ' + name + (count > 1 ? "\xC3\x97" + std::to_string(count) : "") +
                    (&name == &counts.back().first ? "" : ",");
        }
    }
    std::vector<std::string> doubts;
    for (const SoundingLevel& level : sounding.levels) {
        for (const std::string& doubt : level.doubts) {
            if (std::find(doubts.begin(), doubts.end(), doubt) == doubts.end()) {
                doubts.push_back(doubt);
            }
        }
    }
    for (const std::string& doubt : doubts) {
        text += &doubt == &doubts.front() ? std::string(text.empty() ? "" : DOT) + "Doubted (hollow): " : ", ";
        text += doubt;
    }
    if (sounding.replaced > 0) {
        text += (text.empty() ? "" : DOT) + std::string("Replaced copies: ") + std::to_string(sounding.replaced);
    }
    return text;
}

void Picture::mended() {
    const std::string text = mendedText();
    if (!text.empty()) {
        const double size = 0.85 * font;
        front.text({panel.left, frame.bottom + 2.65 * font}, Anchor::START,
                   fitted(text, (column.left - panel.left) / size), {size, false, colours.quiet},
                   attribute("id", "mended"));
    }
}

void Picture::table() {
    const std::vector<ParcelRow> parcels = parcelRows(indices);
    const std::vector<IndexRow> single = indexRows(indices, options.units);
    const auto widest = [](const auto& rows, auto member, const char* header) {
        double columnWidth = textWidth(header, true);
        for (const auto& row : rows) {
            columnWidth = std::max(columnWidth, textWidth(row.*member));
        }
        return columnWidth;
    };
    constexpr double GAP = 1.0;
    const double name = widest(parcels, &ParcelRow::name, "");
    const double surface = widest(parcels, &ParcelRow::surface, "surface");
    double unstable = widest(parcels, &ParcelRow::mostUnstable, "unstable");
    const double index = widest(single, &IndexRow::name, "");
    const double value = widest(single, &IndexRow::value, "");
    const double room = (result.hodograph.left - panel.left) / font;  // in characters of size 1
    const auto needed = [&](double parcelColumn) { return name + surface + parcelColumn + index + value + 6.0 * GAP; };
    const double longer = std::max(unstable, textWidth("most unstable", true));
    const bool wide = needed(longer) <= room;
    unstable = wide ? longer : unstable;
    const double size = font * std::min(1.0, room / needed(unstable));
    const double gap = GAP + std::min(2.0, (room * font / size - needed(unstable)) / 5.0);

    const double row = panel.height() / 9.0;
    const auto baseline = [&](std::size_t i) { return panel.top + (static_cast<double>(i) + 0.7) * row; };
    const Face face{size};
    const Face quiet{size, false, colours.quiet};
    const Face bold{size, true, {}};
    const double nameLeft = panel.left;
    const double surfaceRight = nameLeft + (name + gap + surface) * size;
    const double unstableRight = surfaceRight + (gap + unstable) * size;
    const double indexLeft = unstableRight + 2.0 * gap * size;
    const double valueRight = indexLeft + (index + gap + value) * size;

    front.open(attribute("id", "indices"));
    front.text({nameLeft, baseline(0)}, Anchor::START, "Parcel", bold);
    front.text({surfaceRight, baseline(0)}, Anchor::END, "surface", bold);
    front.text({unstableRight, baseline(0)}, Anchor::END, wide ? "most unstable" : "unstable", bold);
    for (std::size_t i = 0; i < parcels.size(); ++i) {
        front.text({nameLeft, baseline(i + 1)}, Anchor::START, parcels[i].name, quiet);
        front.text({surfaceRight, baseline(i + 1)}, Anchor::END, parcels[i].surface, face);
        front.text({unstableRight, baseline(i + 1)}, Anchor::END, parcels[i].mostUnstable, face);
    }
    front.text({indexLeft, baseline(0)}, Anchor::START, "Sounding", bold);
    for (std::size_t i = 0; i < single.size(); ++i) {
        front.text({indexLeft, baseline(i + 1)}, Anchor::START, single[i].name, quiet);
        front.text({valueRight, baseline(i + 1)}, Anchor::END, single[i].value, face);
    }
    std::string notes = std::isnan(indices.freezingLevelHeight) && std::isnan(indices.wetBulbZeroHeight)
                            ? ""
                            : "Heights above ground. ";
    notes += parcelDrawn ? "Dashed: most unstable." : "";
    if (!notes.empty()) {
        front.text({indexLeft, baseline(8)}, Anchor::START, notes, {0.72 * size, false, colours.quiet});
    }
    front.close();
}

// What the picture shows, for those who do not see it.
std::string Picture::description() const {
    std::string text = placeText() + '.';
    const auto& levels = profile.levels();
    if (!levels.empty()) {
        text += " From " + fixed(levels.front().pressure, 0) + " to " + fixed(levels.back().pressure, 0) + " hPa.";
    }
    const auto ground =
        std::find_if(levels.begin(), levels.end(), [](const Level& level) { return level.is(SoundingLevel::SURFACE); });
    if (ground != levels.end()) {
        text += " Surface " + levelText(*ground) + '.';
    }
    for (const Level& level : levels) {
        if (level.is(SoundingLevel::TROPOPAUSE)) {
            text += " Tropopause " + levelText(level) + '.';
        }
        if (level.is(SoundingLevel::MAXWIND)) {
            text += " Maximum wind " + levelText(level) + '.';
        }
    }
    text += " CAPE of the most unstable parcel " + indexText(indices.mostUnstable.cape, 0, "J/kg") + '.';
    constexpr std::size_t LONGEST = 4000;
    for (const SoundingPart& part : sounding.parts) {
        for (const Mend& mend : part.mends) {
            if (text.size() < LONGEST) {
                text += " Part " + std::string(1, part.letter) + " mended: " + fitted(mend.text, 150.0) + '.';
            }
        }
    }
    return text;
}

Drawing Picture::drawing() {
    front.rectangle(frame, "fill=\"none\" " + stroke(colours.frame, 2.0 * hair));
    title();
    nothing();
    ground();
    heightScale();
    isobars();
    isotherms();
    dryAdiabats();
    saturatedAdiabats();
    parcel();
    curves();
    marks();
    curveNames();
    mixingRatios();
    barbs();
    winds();
    mended();
    table();

    std::string& svg = result.svg;
    const std::string size = pixels(width) + "\" height=\"" + pixels(height);
    svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"" +
          size + "\" viewBox=\"0 0 " + pixels(width) + ' ' + pixels(height) + "\">\n<title>" +
          escaped("Skew-T log-p diagram of " + titleText()) + "</title>\n<desc>" + escaped(description()) + "</desc>\n";
    svg += "<rect width=\"" + size + "\" fill=\"" + std::string(colours.ground) + "\"/>\n";
    svg += "<g font-family=\"sans-serif\" fill=\"" + std::string(colours.text) + "\">\n<g fill=\"none\">\n";
    svg += background.markup();
    svg += "</g>\n";
    svg += front.markup();
    svg += "</g>\n</svg>\n";
    result.picture = picture;
    result.geometry = map;
    result.barbColumn = column;
    result.labels = labels.all();
    return std::move(result);
}

}  // namespace

Drawing draw(const Sounding& sounding, const SkewTOptions& options) {
    return Picture(sounding, options).drawing();
}

}  // namespace corvane::skewt
