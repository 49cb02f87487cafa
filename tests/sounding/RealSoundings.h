// Real soundings for tests.
#ifndef CORVANE_TESTS_REAL_SOUNDINGS_H
#define CORVANE_TESTS_REAL_SOUNDINGS_H

#include <corvane/Sounding.h>

#include <string>
#include <string_view>
#include <vector>

// The soundings of bulletins.
// @param name the source of their parts.
// @param letters the parts that are read.
std::vector<corvane::Sounding> soundingsIn(const std::string& bulletins, const std::string& name,
                                           std::string_view letters = "ABCD");

// The soundings of the bulletins in data and in examples/bulletins, and of the sample reports.
const std::vector<corvane::Sounding>& realSoundings();

// The same ascents as far as part A reports them, as forecasters have them before part B arrives.
const std::vector<corvane::Sounding>& realSoundingsOfPartA();

#endif
