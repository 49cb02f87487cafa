// How the table is written. Most of the time goes into numbers, so that they have a short path.
#include "Table.h"

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

}  // namespace

void appendNumber(std::string& out, double number) {
    // Nearly every number of a table is, but for the last bits, one of at most four decimals and at most six digits: a
    // speed converted from knots has four. It is written as that one, since half a unit of the sixth digit is at least
    // 5e-7 of a number, and the rounding of the product at most 1.2e-16 of it.
    constexpr std::int64_t UNIT = 10000;
    constexpr double SAME = 1e-10;
    const double magnitude = std::fabs(number);
    if (magnitude < 1000000.0) {
        const double scaled = magnitude * static_cast<double>(UNIT);
        const auto whole = static_cast<std::int64_t>(scaled + 0.5);
        const bool sixDigits = whole < 1000000 || (whole < 100000000 && whole % 100 == 0) || whole % UNIT == 0;
        if (sixDigits && std::fabs(scaled - static_cast<double>(whole)) <= SAME * scaled) {
            std::array<char, 16> digits;
            char* at = digits.data();
            if (std::signbit(number)) {
                *at++ = '-';
            }
            at = std::to_chars(at, digits.data() + digits.size(), whole / UNIT).ptr;
            std::int64_t decimals = whole % UNIT;
            if (decimals != 0) {
                *at++ = '.';
            }
            for (; decimals != 0; decimals = decimals * 10 % UNIT) {
                *at++ = static_cast<char>('0' + decimals * 10 / UNIT);
            }
            out.append(digits.data(), static_cast<std::size_t>(at - digits.data()));
            return;
        }
    }
#if defined(__cpp_lib_to_chars)
    std::array<char, 32> digits;
    const std::to_chars_result written =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::general, 6);
    out.append(digits.data(), static_cast<std::size_t>(written.ptr - digits.data()));
#else
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << number;
    out += stream.str();
#endif
}

void appendHeader(std::string& out) {
    out += "type";
    for (const Column& column : COLUMNS) {
        out += ',';
        out += column.name;
    }
}

void appendRow(std::string& out, const Corvane::Level& level) {
    out += level.name();
    auto field = level.fields.begin();
    for (const Column& column : COLUMNS) {
        out += ',';
        while (field != level.fields.end() && field->first < column.field) {
            ++field;
        }
        if (field != level.fields.end() && field->first == column.field) {
            appendNumber(out, field->second);
        }
    }
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
