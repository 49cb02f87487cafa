// Parts cut from texts and read, and what they say as plain lines that a test can compare.
#ifndef CORVANE_TESTS_FEED_PARTS_H
#define CORVANE_TESTS_FEED_PARTS_H

#include "Table.h"

#include <corvane/Feed.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

namespace feed_test {

using Lines = std::vector<std::string>;

// Beijing, 28 October 2019, 23 UTC: a whole part A with winds in m/s, without its end.
inline const std::string BEIJING =
    "TTAA 28231 54511 99015 02257 00000 00156 07669 23009 92797 08073 28506 85490 04069 31512 70044 02566 33016 "
    "50565 16375 32021 40728 29370 32020 30927 45367 30522 25047 54365 31522 20187 621// 32024 15366 605// 28019 "
    "10617 589// 28025 88187 639// 31524 77999 31313 63203 82315";
constexpr std::size_t LEVELS_OF_BEIJING = 13;

// The station of a ship, 6 January 2026, 00 UTC: a short part D with winds in m/s, without its end.
inline const std::string SHIP_D =
    "UUDD 9ZT9MRK 0600/ 99602 70467 22106 11542 62179 22412 56381 33323 56780 44223 47983 "
    "21212 31313 46308 82240 90831";

// A drop into hurricane Maria, 20 September 2017; its part A up to the remarks, without its end.
inline const std::string DROP_A =
    "XXAA 70035 99153 70659 04355 99007 29456 28521 00067 28856 28523 92755 22217 30027 85489 19027 31524 70139 11442 "
    "29022 50587 04759 29522 88999 77999 31313 09608 80231 51515 10190 40760 61616 AF302 0715A MARIA OB 03";
constexpr std::size_t LEVELS_OF_DROP = 6;

inline std::vector<corvane::Part> partsOf(const std::string& text) {
    std::istringstream input(text);
    corvane::BulletinReader reader(input, "-");
    std::vector<corvane::Part> parts;
    corvane::Part part;
    while (reader.next(part)) {
        parts.push_back(part);
    }
    return parts;
}

// The groups of a part, MMMM first.
inline std::string textOf(const corvane::Part& part) {
    std::string text = part.mmmm;
    for (const corvane::Group& group : part.groups) {
        text += ' ' + group.text;
    }
    return text;
}

inline Lines cut(const std::string& text) {
    Lines lines;
    for (const corvane::Part& part : partsOf(text)) {
        lines.push_back(textOf(part));
    }
    return lines;
}

// The reading of a text that holds one part. The text needs no "=".
inline corvane::Reading readOnly(const std::string& text, bool mend = true) {
    const std::vector<corvane::Part> parts = partsOf(text);
    EXPECT_EQ(parts.size(), 1U) << text;
    corvane::ReadOptions options;
    options.mend = mend;
    return parts.empty() ? corvane::Reading() : corvane::read(parts.front(), options);
}

inline std::string statusOf(const std::string& text, bool mend = true) {
    return corvane::statusName(readOnly(text, mend).status);
}

// The rows of the levels, columns type to pres2: "surface,1015,2.2,-4.8,0,0,,,,,".
inline Lines rowsOf(const corvane::Reading& reading) {
    Lines rows;
    for (const corvane::ReadLevel& level : reading.levels) {
        std::string row;
        corvane::table::appendRow(row, level.values);
        rows.push_back(row);
    }
    return rows;
}

inline Lines rowsOf(const std::string& text) {
    return rowsOf(readOnly(text));
}

// "join: 108 91 read as 10891", "lost gap: left out ...".
inline Lines mendsOf(const corvane::Reading& reading) {
    Lines lines;
    for (const corvane::Mend& mend : reading.mends) {
        lines.push_back((mend.lost ? "lost " : "") + mend.name + ": " + mend.text);
    }
    return lines;
}

inline Lines mendsOf(const std::string& text) {
    return mendsOf(readOnly(text));
}

// The groups that the decoder was given.
inline std::string givenOf(const corvane::Reading& reading) {
    std::string text;
    for (const std::string& group : reading.groups) {
        text += (text.empty() ? "" : " ") + group;
    }
    return text;
}

inline std::string givenOf(const std::string& text) {
    return givenOf(readOnly(text));
}

inline std::string reasonOf(const std::string& text) {
    return readOnly(text).reason;
}

// "surface 1015: hydrostatic", a line for each doubt of each level.
inline Lines doubtsOf(const corvane::Reading& reading) {
    Lines lines;
    for (const corvane::ReadLevel& level : reading.levels) {
        for (const std::string& doubt : level.doubts) {
            std::string line = level.values.name() + ' ';
            const auto pressure = level.values.fields.find(Corvane::LF_PRES);
            if (pressure != level.values.fields.end()) {
                corvane::table::appendNumber(line, pressure->second);
            }
            lines.push_back(line + ": " + doubt);
        }
    }
    return lines;
}

inline Lines doubtsOf(const std::string& text) {
    return doubtsOf(readOnly(text));
}

// A text with the first place of `old` replaced.
inline std::string with(std::string text, const std::string& old, const std::string& replacement) {
    const std::size_t at = text.find(old);
    EXPECT_NE(at, std::string::npos) << old;
    return at == std::string::npos ? text : text.replace(at, old.size(), replacement);
}

}  // namespace feed_test

#endif
