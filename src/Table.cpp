// How the table is written. Most of the time goes into numbers, so they have a short path.
#include "Table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <locale>
#include <ostream>
#include <sstream>

namespace corvane::table {

namespace {

// Fields are ordered by LEVEL_FIELD in a level's map, so that a row needs one walk through it.
constexpr bool ascending() {
    for (std::size_t column = 1; column < COLUMNS.size(); ++column) {
        if (COLUMNS[column - 1].field >= COLUMNS[column].field) {
            return false;
        }
    }
    return true;
}
static_assert(ascending(), "appendRow needs the columns in the order of LEVEL_FIELD");

constexpr std::size_t LONGEST_NUMBER = 13;  // -1.23457e-308

// Nearly every number of a table is, except for its last bits, a decimal number of at most four decimals and at most
// six digits: a speed converted from knots has four. It is written as that decimal number, since half a unit of the
// sixth digit is at least 5e-7 of a number, and the rounding of the product at most 1.2e-16 of it.
constexpr std::int64_t UNIT = 10000;
constexpr std::int64_t NOT_SHORT = -1;

// The magnitude of such a number in ten-thousandths; NOT_SHORT for any other.
std::int64_t shortNumber(double number) {
    constexpr double SAME = 1e-10;
    const double magnitude = std::fabs(number);
    if (!(magnitude < 1000000.0)) {
        return NOT_SHORT;
    }
    const double scaled = magnitude * static_cast<double>(UNIT);
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): only what is next to a whole number goes on
    const auto whole = static_cast<std::int64_t>(scaled + 0.5);
    const bool sixDigits =
        whole < 1000000 || (whole < 100000000 && whole % 100 == 0) || (whole < 1000000 * UNIT && whole % UNIT == 0);
    return sixDigits && std::fabs(scaled - static_cast<double>(whole)) <= SAME * scaled ? whole : NOT_SHORT;
}

// Writes a number where there is room for LONGEST_NUMBER characters.
// @return the end of what was written.
char* writeNumber(char* at, double number) {
    const std::int64_t whole = shortNumber(number);
    if (whole != NOT_SHORT) {
        if (std::signbit(number)) {
            *at++ = '-';
        }
        at = std::to_chars(at, at + LONGEST_NUMBER - 1, whole / UNIT).ptr;
        std::int64_t decimals = whole % UNIT;
        if (decimals != 0) {
            *at++ = '.';
        }
        for (; decimals != 0; decimals = decimals * 10 % UNIT) {
            *at++ = static_cast<char>('0' + decimals * 10 / UNIT);
        }
        return at;
    }
#if defined(__cpp_lib_to_chars)
    return std::to_chars(at, at + LONGEST_NUMBER, number, std::chars_format::general, 6).ptr;
#else
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << number;
    const std::string text = stream.str();
    return std::copy(text.begin(), text.end(), at);
#endif
}

}  // namespace

void appendNumber(std::string& out, double number) {
    std::array<char, LONGEST_NUMBER> text;
    out.append(text.data(), static_cast<std::size_t>(writeNumber(text.data(), number) - text.data()));
}

double asWritten(double number) {
    const std::int64_t whole = shortNumber(number);
    if (whole != NOT_SHORT) {
        return std::copysign(static_cast<double>(whole) / static_cast<double>(UNIT), number);
    }
    if (!std::isfinite(number)) {
        return number;
    }
    std::string text;
    appendNumber(text, number);
    double written = 0.0;
#if defined(__cpp_lib_to_chars)
    std::from_chars(text.data(), text.data() + text.size(), written);
#else
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    stream >> written;
#endif
    return written;
}

void appendHeader(std::string& out) {
    out += "type";
    for (const Column& column : COLUMNS) {
        out += ',';
        out += column.name;
    }
}

void appendRow(std::string& out, const Corvane::Level& level) {
    std::array<char, COLUMNS.size() * (1 + LONGEST_NUMBER)> row;
    char* at = row.data();
    auto field = level.fields.begin();
    for (const Column& column : COLUMNS) {
        *at++ = ',';
        while (field != level.fields.end() && field->first < column.field) {
            ++field;
        }
        if (field != level.fields.end() && field->first == column.field) {
            at = writeNumber(at, field->second);
        }
    }
    out += level.name();
    out.append(row.data(), static_cast<std::size_t>(at - row.data()));
}

namespace {

void writeLine(std::ostream& os, std::string& line) {
    line += '\n';
    os.write(line.data(), static_cast<std::streamsize>(line.size())).flush();
}

}  // namespace

void writeRow(std::ostream& os, const Corvane::Level& level) {
    std::string line;
    appendRow(line, level);
    writeLine(os, line);
}

void writeTable(std::ostream& os, const Corvane& decoder) {
    std::string line;
    appendHeader(line);
    writeLine(os, line);
    decoder.forEachLevel([&](const Corvane::Level& level) {
        line.clear();
        appendRow(line, level);
        writeLine(os, line);
    });
}

}  // namespace corvane::table
