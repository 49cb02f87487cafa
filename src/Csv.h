// Texts in a comma-separated table.
#ifndef CORVANE_CSV_H
#define CORVANE_CSV_H

#include <string>
#include <string_view>

namespace corvane::table {

// Appends a text as one field. It is put in double quotes only where it has to be: when it holds a comma, a double
// quote or the end of a line. Source: RFC 4180, section 2.
inline void appendCsvField(std::string& out, std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        out += text;
        return;
    }
    out += '"';
    for (const char character : text) {
        if (character == '"') {
            out += '"';
        }
        out += character;
    }
    out += '"';
}

}  // namespace corvane::table

#endif
