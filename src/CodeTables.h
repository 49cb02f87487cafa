// Code tables that the decoder and the reading of bulletins share. Internal.
#ifndef CORVANE_CODETABLES_H
#define CORVANE_CODETABLES_H

#include <array>

namespace corvane::code {

constexpr double METRES_IN_A_FOOT = 0.3048;

/// No winds aloft, or none in part C.
constexpr int NO_WINDS = 9999;
/// The indicator is not defined for the part.
constexpr int NO_ENTRY = -1;

/// Id (code table 1734): the lowest pressure, in hPa, of the standard surfaces that carry a wind.
struct LastWind {
    char id;
    int partA;
    int partC;
};

constexpr std::array<LastWind, 10> LAST_WINDS{{
    {'/', NO_WINDS, NO_WINDS},
    {'0', 1000, 0},  // deliberate: in part C below the pressure of every surface, so that all have a wind
    {'1', 100, 10},
    {'2', 200, 20},
    {'3', 300, 30},
    {'4', 400, NO_ENTRY},
    {'5', 500, 50},
    {'7', 700, 70},
    {'8', 800, NO_ENTRY},  // deliberate: 800, not 850
    {'9', 925, NO_ENTRY},
}};

}  // namespace corvane::code

#endif
