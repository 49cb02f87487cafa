// Parts and readings for tests of soundings: made from real groups with the decoder alone, or by hand.
#ifndef CORVANE_TESTS_SOUNDING_PARTS_H
#define CORVANE_TESTS_SOUNDING_PARTS_H

#include <corvane/Corvane.h>
#include <corvane/Feed.h>
#include <corvane/Sounding.h>

#include <cmath>
#include <initializer_list>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace sounding_test {

using Fields = std::map<Corvane::LEVEL_FIELD, double>;

// A part and what it says.
struct PartReading {
    corvane::Part part;
    corvane::Reading reading;

    PartReading& heading(const std::string& text) {
        part.heading = text;
        return *this;
    }
    PartReading& bulletin(std::uint64_t number, const std::string& source = "bulletins.txt") {
        part.source = source;
        part.bulletin = number;
        return *this;
    }
    PartReading& line(std::uint64_t number) {
        part.line = number;
        return *this;
    }
    PartReading& status(corvane::Reading::Status status) {
        reading.status = status;
        if (status != corvane::Reading::DECODED) {
            reading.levels.clear();
        }
        if (status == corvane::Reading::NIL || status == corvane::Reading::EMPTY) {
            reading.groups.clear();
        }
        return *this;
    }
};

inline corvane::ReadLevel readLevel(Corvane::LEVEL_TYPE kind, Fields fields, std::vector<std::string> doubts = {}) {
    corvane::ReadLevel level;
    level.values = Corvane::Level(kind);
    level.values.fields = std::move(fields);
    level.doubts = std::move(doubts);
    return level;
}

// One part, as it stands in a bulletin. Its levels are those that the decoder finds in it, in the form of a Reading.
inline PartReading decoded(const std::string& text) {
    PartReading made;
    std::istringstream words(text);
    words >> made.part.mmmm;
    made.reading.groups.push_back(made.part.mmmm);
    for (std::string word; words >> word;) {
        made.part.groups.push_back({word, 0, 0});
        made.reading.groups.push_back(word);
    }
    made.part.source = "bulletins.txt";
    made.part.line = 1;

    const Corvane report(text);
    corvane::Reading& reading = made.reading;
    reading.status = corvane::Reading::DECODED;
    const std::map<std::string, Corvane::WMO_MESSAGE_TYPE> forms{{"TT", Corvane::WMO_TEMP},
                                                                 {"UU", Corvane::WMO_TEMP_SHIP},
                                                                 {"XX", Corvane::WMO_TEMP_DROP},
                                                                 {"II", Corvane::WMO_TEMP_MOBIL}};
    reading.form = forms.at(made.part.mmmm.substr(0, 2));
    reading.letter = made.part.mmmm.back();
    reading.station = report.bsn() + report.callSign();
    reading.day = report.dayOfMonth();
    reading.hour = report.obsHour();
    if (reading.form != Corvane::WMO_TEMP) {
        reading.latitude = report.latitude();
        reading.longitude = report.longitude();
    }
    reading.windsInKnots = report.windsInKnots();
    if (report.obsTime() >= 0) {
        const std::string digits = std::to_string(report.obsTime());
        reading.launch = std::string(4 - digits.size(), '0') + digits;
    }
    for (const Corvane::Level& level : report.allLevels()) {
        Fields fields;
        for (const auto& field : level.fields) {
            if (!std::isnan(field.second)) {
                fields.insert(field);
            }
        }
        if (level.type == Corvane::LT_MAXWIND && reading.letter == 'C') {
            fields[Corvane::LF_PRES] /= 10.0;
        }
        reading.levels.push_back(readLevel(level.type, fields));
    }
    return made;
}

// A part of TEMP 72403, day 13, 00 UTC with these levels. The text tells contents apart.
inline PartReading handMade(char letter, std::vector<corvane::ReadLevel> levels, const std::string& text = "") {
    PartReading made;
    made.part.source = "bulletins.txt";
    made.part.line = 1;
    made.part.mmmm = std::string("TT") + letter + letter;
    made.reading.status = corvane::Reading::DECODED;
    made.reading.form = Corvane::WMO_TEMP;
    made.reading.letter = letter;
    made.reading.station = "72403";
    made.reading.day = 13;
    made.reading.hour = 0;
    made.reading.windsInKnots = true;
    made.reading.levels = std::move(levels);
    made.reading.groups = {made.part.mmmm, "63001", "72403", text};
    return made;
}

inline std::vector<corvane::Sounding> soundingsOf(const std::vector<PartReading>& parts) {
    corvane::Soundings collected;
    for (const PartReading& part : parts) {
        collected.add(part.part, part.reading);
    }
    return collected.soundings();
}

}  // namespace sounding_test

#endif
