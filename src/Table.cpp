// How the table is written. Most of the time goes into numbers, so that they have a short path.
#include "Table.h"

#include <charconv>
#include <cmath>
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
    // Most numbers of a table have at most two decimals and at most six digits: they are a whole number of hundredths
    // that gives the number back when divided by 100. Its digits are written as they are.
    const double magnitude = std::fabs(number);
    if (magnitude < 1000000.0) {
        const long hundredths = std::lround(magnitude * 100.0);
        const bool sixDigits = hundredths < 1000000 || hundredths % 100 == 0;
        if (sixDigits && static_cast<double>(hundredths) / 100.0 == magnitude) {
            std::array<char, 16> digits;
            char* at = digits.data();
            if (std::signbit(number)) {
                *at++ = '-';
            }
            at = std::to_chars(at, digits.data() + digits.size(), hundredths / 100).ptr;
            if (hundredths % 100 != 0) {
                *at++ = '.';
                *at++ = static_cast<char>('0' + hundredths / 10 % 10);
                if (hundredths % 10 != 0) {
                    *at++ = static_cast<char>('0' + hundredths % 10);
                }
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
