#include "Picture.h"

#include "Scales.h"

#include <algorithm>
#include <utility>

namespace corvane::skewt {

namespace {

// The picture that the distances of the layout are made for.
constexpr double USUAL_WIDTH = 1000.0;
constexpr double USUAL_HEIGHT = 1100.0;
constexpr double USUAL_FONT = 17.0;
constexpr double SMALLEST_FONT = 8.5;
constexpr double SMALLEST_WIDTH = 400.0;
constexpr double SMALLEST_HEIGHT = 440.0;
constexpr double LARGEST_PICTURE = 10000.0;
constexpr double WIDEST_DIAGRAM = 1.5;    // in parts of its height: wider ones show temperatures that no air has
constexpr double LONGEST_TITLE = 1000.0;  // for a screen reader, in characters

}  // namespace

Picture::Picture(const Sounding& ascent, const SkewTOptions& how)
    : sounding(ascent),
      options(how),
      colours(how.dark ? DARK : LIGHT),
      profile(ascent),
      indices(profile.beginsAloft() ? Indices{} : indicesOf(ascent)),
      width(std::clamp(static_cast<double>(how.width), SMALLEST_WIDTH, LARGEST_PICTURE)),
      height(std::clamp(static_cast<double>(how.height), SMALLEST_HEIGHT, LARGEST_PICTURE)),
      font(std::max(USUAL_FONT * std::min(width / USUAL_WIDTH, height / USUAL_HEIGHT), SMALLEST_FONT)),
      hair(font / 20.0),
      staff(2.15 * font) {
    layOut();
}

// From left to right: pressures, the diagram, the scale of heights, the barbs. From top to bottom: title, the diagram
// with its temperatures above and below, what was mended, the panel. The diagram keeps a shape that shows the
// atmosphere; what a much wider or higher picture has left over stays free around it.
void Picture::layOut() {
    const double edge = 0.8 * font;
    picture = {0.0, 0.0, width, height};
    const double columnWidth = 2.55 * staff;
    const double panelHeight = 12.3 * font;
    const Box around{3.1 * font, 4.9 * font, columnWidth + 2.4 * font, panelHeight + 3.4 * font};
    content = picture.grown(-edge);
    frame = {content.left + around.left, content.top + around.top, content.right - around.right,
             content.bottom - around.bottom};
    const double spare = std::max(0.0, frame.width() - WIDEST_DIAGRAM * frame.height()) / 2.0;
    frame.left += spare;
    frame.right -= spare;
    map = scales(frame, profile, options);
    frame = map.frame();
    content = {frame.left - around.left, frame.top - around.top, frame.right + around.right,
               frame.bottom + around.bottom};
    panel = {content.left, content.bottom - panelHeight, content.right, content.bottom};
    column = {content.right - columnWidth, frame.top - 2.9 * font, content.right, frame.bottom + 2.9 * font};
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
    const std::string sides = pixels(width) + "\" height=\"" + pixels(height);
    svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"" +
          sides + "\" viewBox=\"0 0 " + pixels(width) + ' ' + pixels(height) + "\">\n<title>" +
          escaped("Skew-T log-p diagram of " + titleText(LONGEST_TITLE)) + "</title>\n<desc>" + escaped(description()) +
          "</desc>\n";
    svg += "<rect width=\"" + sides + "\" fill=\"" + std::string(colours.ground) + "\"/>\n";
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

Drawing draw(const Sounding& sounding, const SkewTOptions& options) {
    return Picture(sounding, options).drawing();
}

}  // namespace corvane::skewt
