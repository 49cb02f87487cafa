// A picture on its way from a sounding to a document.
#ifndef CORVANE_SKEWT_PICTURE_H
#define CORVANE_SKEWT_PICTURE_H

#include "Drawing.h"
#include "Geometry.h"
#include "Profile.h"
#include "Style.h"
#include "Svg.h"

#include <corvane/Indices.h>
#include <corvane/SkewT.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>

namespace corvane::skewt {

// The smallest text that is read without effort on a screen, pixels.
constexpr double SMALLEST_TEXT = 7.5;

class Picture {
public:
    Picture(const Sounding& ascent, const SkewTOptions& how);

    Drawing drawing();

private:
    void layOut();

    // The background.
    void ground();
    void isobars();
    void isotherms();
    void dryAdiabats();
    void saturatedAdiabats();
    void mixingRatios();

    // The sounding.
    void curves();
    void parcel();
    void heightScale();
    void unitAbove(double x, Anchor anchor, const std::string& unit);
    void marks();
    void mark(double pressure, const std::string& text, std::string_view colour);
    void bar(double pressure, std::string_view colour);
    void curveNames();
    void nothing();

    // Its winds.
    void barbs();
    void winds();

    // The texts around the diagram.
    void title();
    void mended();
    void table();

    // A line through the diagram along which the temperature is a function of pressure.
    Line isoline(double fromPressure, double toPressure, const std::function<double(double)>& temperature) const;
    void gridLine(const Line& line) { background.paths(clip(frame, line)); }
    // Also on an edge, where the rounding of a logarithm may put a level on the far side.
    bool isInFrame(Point at) const { return frame.grown(0.01).contains(at); }

    // The size of a text, a multiple of the usual one, but legible.
    double size(double multiple) const { return std::max(multiple * font, SMALLEST_TEXT); }

    std::string titleText(double room) const;
    std::string placeText() const;
    std::string mendedText() const;
    std::string levelText(const Level& level) const;
    std::string description() const;

    const Sounding& sounding;
    SkewTOptions options;
    const Palette& colours;
    Profile profile;
    Indices indices;
    double width;
    double height;
    double font;   // size of the usual text; every distance is a multiple of it
    double hair;   // width of the thinnest line
    double staff;  // length of a barb

    Box picture;
    Box content;  // the picture without its margins
    Box frame;    // of the diagram
    Box column;   // of the barbs
    Box panel;    // table and hodograph
    Geometry map;

    Drawing result;
    Labels labels;
    Layer background{labels};
    Layer front{labels};
    bool parcelDrawn = false;
};

}  // namespace corvane::skewt

#endif
