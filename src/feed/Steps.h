// The steps of reading a part, each usable on its own. The order in which they run is in Reading.cpp.
#ifndef CORVANE_FEED_STEPS_H
#define CORVANE_FEED_STEPS_H

#include "feed/Work.h"

#include <corvane/Feed.h>

#include <cstddef>
#include <string>
#include <vector>

namespace corvane::feed {

// ---- Status.cpp: does a part hold data? ----

/// The groups of section 1 after MMMM: 2 of a TEMP, 5 of a TEMP SHIP, 4 of a TEMP DROP, 6 of a TEMP MOBIL.
std::size_t lengthOfSection1(Corvane::WMO_MESSAGE_TYPE form);

/// NIL, EMPTY, or DECODED for a part that holds data.
Reading::Status statusOf(const Work& work);

// ---- Section1.cpp: date, station and position ----

/// The place of the date group YYGGId: 1 after a call sign, otherwise 0.
std::size_t placeOfDate(Corvane::WMO_MESSAGE_TYPE form);

/// Whether a group is a date group YYGGId that can be right. Id may be missing.
bool isDate(std::string_view group);

/// Whether section 1 is right: the unit of every wind and the place of every group depend on it.
Refusal checkSection1(const Work& work);

/// Whether a group is an elevation h0h0h0h0im with its unit: im 1 to 4 metres, 5 to 8 feet (code table 1845).
bool isElevation(std::string_view group);

/// Fills in what section 1 tells, as far as it can be read.
void readSection1(const Work& work, Reading& reading);

// ---- Preparation.cpp: what is mended before decoding ----

/// `join`: two or three adjacent pieces of one group.
void joinPieces(Work& work);

/// `elevation`: a TEMP MOBIL whose elevation is not given, or has no unit.
void mendElevation(Work& work);

/// `id` in parts B and D: a date group of four digits, and in part D one that does not end in a solidus.
void mendIdOfPartBOrD(Work& work);

/// The shape of the groups of sections 2 to 6.
Refusal checkShapes(const Work& work);

/// `tail`: words after the first opener from `place` on at which the decoder would fail.
/// @return whether there were any.
bool dropTailWords(Work& work, std::size_t place);

// ---- SignificantLevels.cpp: the levels of parts B and D ----

/// Checks the numbers, pressures and values of sections 5 and 6 level by level, with the mends `section-7`, `gap` and
/// `closer`. With `mend` false a level that needs one refuses the part.
Refusal checkLevels(Work& work, bool mend);

// ---- Mending.cpp: decoding with the mends tried where the decoder fails ----

struct Decoded {
    std::vector<ReadLevel> levels;
    std::string launch;
};

/// Whether an opener hides levels: 31313, or 77999 in parts A and C, comes after it. They come before every later
/// section.
bool hidesClosers(const Work& work, std::size_t opener);

/// Decodes a part; mends it where the decoder fails.
/// @return why it is refused, if it is.
Refusal decode(Work& work, bool mend, Decoded& decoded);

// ---- Checks.cpp: physics ----

/// Marks the levels of a part that do not fit each other, and corrects the leading digits of heights (`height`).
void checkPhysics(char letter, bool mend, Reading& reading);

}  // namespace corvane::feed

#endif
