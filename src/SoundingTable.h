// The table of soundings: a row for each level of a sounding.
#ifndef CORVANE_SOUNDING_TABLE_H
#define CORVANE_SOUNDING_TABLE_H

#include <corvane/Sounding.h>

#include <string>

namespace corvane::table {

// Appends the header, "form,station,day,...", with its line end.
void appendSoundingHeader(std::string& out);

// Appends a row for each level of a sounding, by descending pressure, with line ends. A quantity that is not given is
// an empty field. `height_computed` is 1 for a height that is computed, 0 for one that is reported, empty without a
// height.
void appendSoundingRows(std::string& out, const Sounding& sounding);

}  // namespace corvane::table

#endif
