// The tables of corvane-feed: a row for each level of a part, and a row for each part.
#ifndef CORVANE_FEEDTABLE_H
#define CORVANE_FEEDTABLE_H

#include <corvane/Feed.h>

#include <array>
#include <string>
#include <string_view>

namespace corvane::table {

/// The columns of a level that identify its part; the columns of Table.h follow.
inline constexpr std::array<std::string_view, 13> PART_COLUMNS{
    "source", "heading", "form", "part", "station", "day", "hour", "slat", "slon", "selev", "launch", "mends", "doubt"};

/// The columns of the table of parts.
inline constexpr std::array<std::string_view, 11> PARTS_COLUMNS{
    "source", "heading", "form", "part", "station", "day", "hour", "status", "levels", "mends", "message"};

/// FILE:LINE of MMMM, which identifies a part.
std::string sourceOf(const Part& part);

/// The names of the mends, each once, separated by spaces.
std::string mendNames(const Reading& reading);

/// The names of checks, separated by spaces.
std::string joinNames(const std::vector<std::string>& names);

/// Appends the header of the table of levels, with its line end.
void appendFeedHeader(std::string& out);

/// Appends a row for each level of a part.
void appendFeedRows(std::string& out, const Part& part, const Reading& reading);

/// Appends the groups of a decoded part as they were given to the decoder, on a line ended by "=". Words that would be
/// a heading on one line, which cuts the part when it is read again, have a line end after the first one.
void appendGroups(std::string& out, const Reading& reading);

/// Appends the header of the table of parts, with its line end.
void appendPartsHeader(std::string& out);

/// Appends the row of a part.
void appendPartsRow(std::string& out, const Part& part, const Reading& reading);

}  // namespace corvane::table

#endif
