// The table of levels: its columns, and how a number, a row and a whole table are written. Every program that writes
// levels takes its columns and numbers from here.
#ifndef CORVANE_TABLE_H
#define CORVANE_TABLE_H

#include <corvane/Corvane.h>

#include <array>
#include <iosfwd>
#include <string>
#include <string_view>

namespace corvane::table {

// A column: its name in the header and the quantity that it holds.
struct Column {
    std::string_view name;
    Corvane::LEVEL_FIELD field;
};

// The columns after the first, "type", which holds Level::name(). They are in the order of LEVEL_FIELD. The shears of a
// maximum wind, LF_VA and LF_VB, deliberately have no column.
inline constexpr std::array<Column, 10> COLUMNS{{
    {"pres", Corvane::LF_PRES},
    {"tdry", Corvane::LF_TDRY},
    {"dp", Corvane::LF_DP},
    {"wspd", Corvane::LF_WSPD},
    {"wdir", Corvane::LF_WDIR},
    {"height", Corvane::LF_HEIGHT},
    {"time", Corvane::LF_TIME},
    {"lat", Corvane::LF_LAT},
    {"lon", Corvane::LF_LON},
    {"pres2", Corvane::LF_PRES2},
}};

// Appends a number as a stream writes it by default in the classic locale: %g with six significant digits.
void appendNumber(std::string& out, double number);

// The number that a reader of what appendNumber writes gets: 10.4 - 2.7, which is 7.699999999999999, becomes 7.7.
double asWritten(double number);

// Appends the header, "type,pres,tdry,...", without a line end.
void appendHeader(std::string& out);

// Appends the row of a level, without a line end. A quantity that the level does not have is an empty field.
void appendRow(std::string& out, const Corvane::Level& level);

// Writes the row of a level and its line end, and flushes the stream, so that a reader at the other end of a pipe sees
// every row at once.
void writeRow(std::ostream& os, const Corvane::Level& level);

// Writes the header, then the rows of allLevels(), each flushed.
void writeTable(std::ostream& os, const Corvane& decoder);

}  // namespace corvane::table

#endif
