/// @file
/// Draws a sounding as a skew-T log-p diagram in SVG.
///
///     corvane::SkewTOptions options;
///     options.dark = true;
///     std::ofstream("72403.svg") << corvane::skewT(sounding, options);
///
/// The picture is text: it needs no font, no file and no other library, and is the same wherever it is drawn. From top
/// to bottom it shows
///
/// - what, where and when: code form, station, position, day, hour, launch, parts;
/// - the diagram: isobars, isotherms at 45 degrees, dry and saturated adiabats, lines of constant mixing ratio in g/kg,
///   the temperature and the dew point, the path of the most unstable parcel, if it becomes buoyant (dashed, from its
///   level to its equilibrium level or to the highest temperature), marks for surface, freezing level, tropopauses and
///   maximum winds, heights above sea level in km, wind barbs in a column of their own. A line is interrupted at a
///   level that lacks a value it should have, and where the report says that this value is missing. Levels below the
///   ground are left out, and what a check doubts is hollow: temperatures, or winds;
/// - what was mended in the parts, the checks that doubt levels, and how many copies of parts were replaced;
/// - the indices of Indices.h, an em dash where the sounding cannot give a value, and the hodograph of the lowest 12 km
///   with the heights above the ground in km. Parts C and D alone have nothing near the ground: then the indices are
///   dashes, and the hodograph has no heights.
///
/// A page that shows the picture finds things in it by id. With N an index into Sounding::levels:
///
/// - `t-N` and `td-N`: the circle at the temperature and the dew point of a level. `t-N` has the level's values as its
///   title. A doubted one is of class `doubted`.
/// - `wind-N`: the barb of a level, a group, or a circle for a calm. Not every level with a wind has one: where barbs
///   would overlap, those of the surface, of maximum winds and of standard surfaces are kept first.
/// - `temperature`, `dewpoint`, `parcel`, `winds`, `hodograph`, `indices`, `marks`, `heights`, `mended`, `isobars`,
///   `isotherms`, `dry-adiabats`, `saturated-adiabats`, `mixing-ratios`: the groups and lines.
///
/// A level outside the diagram, or one of more than 350 that is thinned out, has none. Colours and widths are
/// presentation attributes, which any style sheet of a page overrides. SVG 1.1 has no attribute `role`: a page that
/// embeds the SVG inline adds `role="img"` to the element.
#ifndef CORVANE_SKEWT_H
#define CORVANE_SKEWT_H

#include <corvane/Sounding.h>

#include <string>

namespace corvane {

/// How a diagram is drawn.
struct SkewTOptions {
    /// A unit of wind speed.
    enum WindUnit { KNOTS, METRES_PER_SECOND };

    WindUnit units = KNOTS;  ///< of every wind speed in the picture
    /// Pressure of the upper edge, hPa. 0 or less, or NaN: 100, or just above the highest level where the sounding does
    /// not reach that high. At most 0.8 of the pressure of the lower edge, which is 1050 hPa for a usual sounding.
    double top = 0.0;
    int width = 1000;  ///< of the picture, pixels: 400 to 10000; the nearest of these for any other number
    /// Of the picture, pixels: 440 to 10000. The diagram is at most one and a half times as wide as high, and only
    /// slightly higher than wide: a picture of another shape has empty margins.
    int height = 1100;
    bool dark = false;  ///< light lines on a dark ground
};

/// Draws a sounding: one complete SVG 1.1 document in UTF-8, under 120 kB. Texts of the report are escaped. A sounding
/// without levels gives a diagram without curves that says so. Whatever the sounding holds, it throws nothing
/// except std::bad_alloc when memory runs out.
CORVANE_API std::string skewT(const Sounding& sounding, const SkewTOptions& options = {});

}  // namespace corvane

#endif
