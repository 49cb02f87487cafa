// Real soundings for tests.
#ifndef CORVANE_TESTS_REAL_SOUNDINGS_H
#define CORVANE_TESTS_REAL_SOUNDINGS_H

#include <corvane/Sounding.h>

#include <vector>

// The soundings of the bulletins in the folder data and of the sample reports.
const std::vector<corvane::Sounding>& realSoundings();

// The same ascents as far as part A reports them, as forecasters have them before part B arrives.
const std::vector<corvane::Sounding>& realSoundingsOfPartA();

#endif
