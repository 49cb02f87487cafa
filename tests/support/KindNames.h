// The names of the kinds of levels in the table, by the value of the kind.
#ifndef CORVANE_TESTS_KIND_NAMES_H
#define CORVANE_TESTS_KIND_NAMES_H

#include <array>

inline constexpr std::array<const char*, 13> KIND_NAMES{
    "generic",          "surface",       "mandatory",  "significant",    "tropopause",   "maxwind",
    "150mlayerwind",    "deeplayerwind", "meanblwind", "lastwindheight", "releasepoint", "splashpointwindinteg",
    "splashpointrawgps"};

#endif
