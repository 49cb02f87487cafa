// The colours of a picture.
#ifndef CORVANE_SKEWT_STYLE_H
#define CORVANE_SKEWT_STYLE_H

#include <string_view>

namespace corvane::skewt {

// Colours on a light and on a dark ground. Temperature and dew point are vermilion and blue, which every kind of
// colour vision tells apart (Okabe and Ito, Color Universal Design, 2008); the background is pale.
struct Palette {
    std::string_view ground;
    std::string_view text;
    std::string_view quiet;  // texts that explain
    std::string_view frame;
    std::string_view earth;  // below the surface
    std::string_view isobar;
    std::string_view isotherm;
    std::string_view zero;  // the isotherm of 0 degrees
    std::string_view dryAdiabat;
    std::string_view saturatedAdiabat;
    std::string_view mixingRatio;
    std::string_view temperature;
    std::string_view dewpoint;
    std::string_view parcel;
    std::string_view hodograph;
};

constexpr Palette LIGHT{"#ffffff", "#1a1a1a", "#595959", "#404040", "#e4dfd6", "#b4b4b4", "#c6ccd8", "#4f73aa",
                        "#dcc3a2", "#9fc9ab", "#b9aed4", "#c43400", "#1876ba", "#404040", "#7a3b8f"};
constexpr Palette DARK{"#14181d", "#e8e8e8", "#a8b0b8", "#b0b4b8", "#33302b", "#4c5259", "#3b4450", "#7d9fd0",
                       "#5e4e3a", "#355842", "#4d4568", "#ff8a4c", "#5cb8f2", "#d0d0d0", "#d49be4"};

}  // namespace corvane::skewt

#endif
