#include "BulletinProperties.h"

#include "FeedTable.h"
#include "Table.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <sstream>

namespace fuzz {

namespace {

using corvane::GroupRange;
using corvane::Part;
using corvane::Reading;
using corvane::ReadLevel;

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isCode(const std::string& group) {
    return std::all_of(group.begin(), group.end(), [](char c) { return isDigit(c) || c == '/'; });
}

bool isPiece(const std::string& group) {
    return group.size() < 5 && isCode(group);
}

bool isWord(const std::string& group) {
    return std::all_of(group.begin(), group.end(), [](unsigned char c) { return std::isalpha(c) != 0; });
}

// NIL and other words among the first groups tell whether a part holds data at all.
bool beginsWithWords(const std::vector<std::string>& groups) {
    const auto end = groups.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(groups.size(), 8));
    return std::any_of(groups.begin(), end, [](const std::string& group) { return isWord(group) || group == "NIL."; });
}

std::vector<std::string> textsOf(const Part& part) {
    std::vector<std::string> texts;
    for (const corvane::Group& group : part.groups) {
        texts.push_back(group.text);
    }
    return texts;
}

std::string join(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

std::string difference(const std::vector<std::string>& first, const std::vector<std::string>& second) {
    for (std::size_t i = 0; i < std::max(first.size(), second.size()); ++i) {
        const std::string one = i < first.size() ? first[i] : "no row";
        const std::string other = i < second.size() ? second[i] : "no row";
        if (one != other) {
            return one + " became " + other;
        }
    }
    return "";
}

bool isWithin(const GroupRange& range, const Part& part) {
    return range.first <= part.groups.size() && range.count <= part.groups.size() - range.first;
}

// ---------------------------------------------------------------------------------------------------------------------
// A second reading of the groups of one level
// ---------------------------------------------------------------------------------------------------------------------

class LevelText {
public:
    LevelText(const Part& part, const ReadLevel& read, bool knots)
        : letter(part.letter()), unit(knots ? 0.5144 : 1.0), level(read.values) {
        for (std::size_t i = 0; i < read.groups.count; ++i) {
            text += part.groups[read.groups.first + i].text;
        }
    }

    // The quantity that is not in the text; empty when all are.
    std::string invented() const {
        switch (level.type) {
        case Corvane::LT_SURFACE:
            return starts("99") && pressureAt(2, 1.0) && temperatureAt(5) && windAt(10) ? "" : text;
        case Corvane::LT_MANDATORY: return surface() && heightAt(2) && temperatureAt(5) && windAt(10) ? "" : text;
        case Corvane::LT_TROPOPAUSE:
            return starts("88") && pressureAt(2, upper()) && temperatureAt(5) && windAt(10) ? "" : text;
        case Corvane::LT_MAXWIND:
            return (starts("77") || starts("66")) && pressureAt(2, upper()) && windAt(5) ? "" : text;
        case Corvane::LT_SIGNIFICANT: {
            const bool isWind = given(Corvane::LF_WSPD).has_value();
            return pressureAt(2, letter == 'D' ? 10.0 : 1.0) && (isWind ? windAt(5) : temperatureAt(5)) ? "" : text;
        }
        case Corvane::LT_150MLAYERWIND:
            return starts("WL150") && windAt(5) && numberAt(10, 3, Corvane::LF_HEIGHT) ? "" : text;
        case Corvane::LT_DEEPLAYERWIND:
            return starts("DLMWND") && windAt(6) && thousandAt(11, Corvane::LF_PRES) &&
                           thousandAt(14, Corvane::LF_PRES2)
                       ? ""
                       : text;
        case Corvane::LT_MEANBLWIND: return starts("MBLWND") && windAt(6) ? "" : text;
        case Corvane::LT_LASTWINDHEIGHT: return starts("LSTWND") && numberAt(6, 3, Corvane::LF_HEIGHT) ? "" : text;
        case Corvane::LT_RELEASEPOINT:
            return starts("REL") && positionAt(3) && numberAt(14, 6, Corvane::LF_TIME) ? "" : text;
        case Corvane::LT_SPLASHPOINTRAWGPS:
            return starts("SPG") && positionAt(3) && numberAt(14, 6, Corvane::LF_TIME) ? "" : text;
        case Corvane::LT_SPLASHPOINTWINDINTEG:
            return starts("SPL") && positionAt(3) && numberAt(14, 4, Corvane::LF_TIME) ? "" : text;
        case Corvane::LT_GENERIC: break;
        }
        return text;
    }

private:
    std::optional<double> given(Corvane::LEVEL_FIELD field) const {
        const auto found = level.fields.find(field);
        return found == level.fields.end() ? std::nullopt : std::optional<double>(found->second);
    }

    bool starts(const std::string& beginning) const { return text.compare(0, beginning.size(), beginning) == 0; }

    double upper() const { return letter == 'C' ? 10.0 : 1.0; }

    // The digits at a place; -1 where something else stands there.
    long digits(std::size_t place, std::size_t count) const {
        if (place + count > text.size()) {
            return -1;
        }
        long value = 0;
        for (std::size_t i = place; i < place + count; ++i) {
            if (!isDigit(text[i])) {
                return -1;
            }
            value = 10 * value + (text[i] - '0');
        }
        return value;
    }

    static bool same(double first, double second) { return std::fabs(first - second) < 1e-6; }

    bool pressureAt(std::size_t place, double scale) const {
        const std::optional<double> pressure = given(Corvane::LF_PRES);
        const long coded = digits(place, 3);
        if (!pressure) {
            return coded < 0;
        }
        const bool above1000 = coded < 100 && (level.type == Corvane::LT_SURFACE ||
                                               (level.type == Corvane::LT_SIGNIFICANT && letter == 'B'));
        return coded >= 0 && same(*pressure, static_cast<double>(above1000 ? coded + 1000 : coded) / scale);
    }

    bool thousandAt(std::size_t place, Corvane::LEVEL_FIELD field) const {
        const long coded = digits(place, 3);
        return coded >= 0 && same(given(field).value_or(-1.0), static_cast<double>(coded < 100 ? coded + 1000 : coded));
    }

    bool surface() const {
        const double pressure = given(Corvane::LF_PRES).value_or(-1.0);
        const long code = digits(0, 2);
        const double expected = letter == 'C' ? static_cast<double>(code)
                                : code == 0   ? 1000.0
                                : code == 92  ? 925.0
                                              : 10.0 * static_cast<double>(code);
        return code >= 0 && same(pressure, expected);
    }

    bool heightAt(std::size_t place) const {
        const std::optional<double> height = given(Corvane::LF_HEIGHT);
        if (!height) {
            return true;
        }
        const long coded = digits(place, 3);
        const long metres = std::lround(*height);
        return coded >= 0 && same(*height, static_cast<double>(metres)) &&
               ((metres - coded) % 1000 == 0 || metres == 500 - coded || (metres - 10 * coded) % 10000 == 0);
    }

    bool temperatureAt(std::size_t place) const {
        const std::optional<double> temperature = given(Corvane::LF_TDRY);
        const std::optional<double> dewpoint = given(Corvane::LF_DP);
        if (!temperature) {
            return !dewpoint;
        }
        const long tenths = digits(place, 3);
        const double sign = tenths % 2 == 0 ? 1.0 : -1.0;
        if (tenths < 0 || !same(*temperature, sign * static_cast<double>(tenths) / 10.0)) {
            return false;
        }
        const long code = digits(place + 3, 2);
        return !dewpoint ||
               (code >= 0 && same(*temperature - *dewpoint,
                                  code <= 50 ? static_cast<double>(code) / 10.0 : static_cast<double>(code) - 50.0));
    }

    bool windAt(std::size_t place) const {
        const std::optional<double> direction = given(Corvane::LF_WDIR);
        const std::optional<double> speed = given(Corvane::LF_WSPD);
        if (!direction || !speed) {
            return !direction && !speed;
        }
        const long dd = digits(place, 2);
        const long fff = digits(place + 2, 3);
        const long five = fff >= 500 ? 1 : 0;
        return dd >= 0 && fff >= 0 && same(*direction, static_cast<double>(10 * dd + 5 * five)) &&
               same(*speed, static_cast<double>(fff - 500 * five) * unit);
    }

    bool numberAt(std::size_t place, std::size_t count, Corvane::LEVEL_FIELD field) const {
        const long coded = digits(place, count);
        return coded >= 0 && place + count == text.size() &&
               same(given(field).value_or(-1.0), static_cast<double>(coded));
    }

    // 1532N06587W
    bool positionAt(std::size_t place) const {
        const double north = text[place + 4] == 'N' ? 0.01 : -0.01;
        const double east = text[place + 10] == 'E' ? 0.01 : -0.01;
        return same(given(Corvane::LF_LAT).value_or(999.0), static_cast<double>(digits(place, 4)) * north) &&
               same(given(Corvane::LF_LON).value_or(999.0), static_cast<double>(digits(place + 5, 5)) * east);
    }

    char letter;
    double unit;
    const Corvane::Level& level;
    std::string text;
};

}  // namespace

std::vector<Part> partsOf(const std::string& bulletins) {
    std::istringstream input(bulletins);
    corvane::BulletinReader reader(input, "-");
    std::vector<Part> parts;
    Part part;
    while (reader.next(part)) {
        parts.push_back(part);
    }
    return parts;
}

std::string bulletinOf(const Part& part) {
    Reading unread;
    unread.groups = textsOf(part);
    unread.groups.insert(unread.groups.begin(), part.mmmm);
    std::string text;
    corvane::table::appendGroups(text, unread);
    return text;
}

std::vector<std::string> rowsOf(const Reading& reading) {
    Reading unmended = reading;
    unmended.mends.clear();
    std::string table;
    corvane::table::appendFeedRows(table, Part(), unmended);
    std::vector<std::string> rows;
    std::istringstream lines(table);
    for (std::string row; std::getline(lines, row);) {
        rows.push_back(row);
    }
    return rows;
}

std::string partsAreInOrder(const std::vector<Part>& parts, std::size_t size) {
    std::uint64_t at = 0;
    std::uint64_t line = 1;
    for (const Part& part : parts) {
        if (part.offset < at || part.line < line) {
            return "the part at line " + std::to_string(part.line) + " lies before the one before it";
        }
        if (part.form() == Corvane::WMO_UNKNOWN || part.letter() < 'A' || part.letter() > 'D') {
            return part.mmmm + " is not an MMMM";
        }
        if (part.groups.size() > corvane::MAXIMUM_GROUPS) {
            return "a part has " + std::to_string(part.groups.size()) + " groups";
        }
        at = part.offset;
        line = part.line;
        for (const corvane::Group& group : part.groups) {
            if (group.offset <= at || group.end <= group.offset || group.end > size ||
                group.text.size() > group.end - group.offset || group.text.empty()) {
                return "the group " + group.text + " lies where it cannot";
            }
            at = group.end - 1;
        }
    }
    return "";
}

std::string readingIsWhole(const Part& part, const Reading& reading) {
    if ((reading.status == Reading::REFUSED) == reading.reason.empty()) {
        return corvane::statusName(reading.status) + " with the reason \"" + reading.reason + '"';
    }
    if (reading.status != Reading::DECODED && (!reading.levels.empty() || !reading.mends.empty())) {
        return corvane::statusName(reading.status) + " with levels or mends";
    }
    if (!isWithin(reading.fault, part)) {
        return "the fault lies outside the part";
    }
    for (const corvane::Mend& mend : reading.mends) {
        if (mend.name.empty() || mend.text.empty() || !isWithin(mend.groups, part)) {
            return "a mend without a name, a text or a place: " + mend.name + ": " + mend.text;
        }
    }
    for (const ReadLevel& level : reading.levels) {
        if (level.groups.count == 0 || !isWithin(level.groups, part)) {
            return "a level without groups: " + level.values.name();
        }
        for (const auto& field : level.values.fields) {
            if (!std::isfinite(field.second) || (field.second == 0.0 && std::signbit(field.second))) {
                return "a level with a value that is not a number: " + level.values.name();
            }
        }
    }
    return "";
}

std::string numbersComeFromDigits(const Part& part, const Reading& reading) {
    for (const ReadLevel& level : reading.levels) {
        const std::string text = LevelText(part, level, reading.windsInKnots).invented();
        if (!text.empty()) {
            std::string row;
            corvane::table::appendRow(row, level.values);
            return row + " is not in " + text;
        }
    }
    return "";
}

std::string printedPartReadsTheSame(const Reading& reading) {
    if (reading.levels.empty()) {
        return "";
    }
    const std::vector<std::string> groups(reading.groups.begin() + 1, reading.groups.end());
    if (beginsWithWords(groups) || groups.size() > corvane::MAXIMUM_GROUPS) {
        return "";
    }
    std::string printed;
    corvane::table::appendGroups(printed, reading);
    const std::vector<Part> parts = partsOf(printed);
    if (parts.size() != 1) {
        return "a printed part is cut into " + std::to_string(parts.size());
    }
    const Reading again = corvane::read(parts.front());
    if (again.status != Reading::DECODED) {
        return "a printed part is " + corvane::statusName(again.status) + ": " + again.reason;
    }
    for (const corvane::Mend& mend : again.mends) {
        // What these name is not changed in the part.
        if (mend.name != "height" && mend.name != "leftover" && mend.name != "wind" &&
            !(mend.name == "elevation" && mend.lost)) {
            return "a printed part is mended: " + mend.name + ": " + mend.text;
        }
    }
    if (again.groups != reading.groups) {
        return "a printed part is printed as " + join(again.groups);
    }
    return difference(rowsOf(reading), rowsOf(again));
}

std::string orderDoesNotMatter(const std::vector<Part>& parts) {
    std::string backwards;
    std::vector<const Part*> kept;
    for (const Part& part : parts) {
        if (part.excess.empty()) {
            kept.push_back(&part);
        }
    }
    std::reverse(kept.begin(), kept.end());
    for (const Part* part : kept) {
        backwards += bulletinOf(*part);
    }
    const std::vector<Part> again = partsOf(backwards);
    if (again.size() != kept.size()) {
        return "other parts in reverse order";
    }
    for (std::size_t i = 0; i < kept.size(); ++i) {
        const std::string changed = difference(rowsOf(corvane::read(*kept[i])), rowsOf(corvane::read(again[i])));
        if (!changed.empty()) {
            return "in reverse order " + changed;
        }
    }
    return "";
}

bool maySplit(const Part& part, std::size_t place) {
    const std::vector<std::string> texts = textsOf(part);
    if (place >= texts.size() || texts[place].size() != 5 || !isCode(texts[place]) || beginsWithWords(texts)) {
        return false;
    }
    for (std::size_t i = 0; i <= place; ++i) {
        if (texts[i] == "61616" || texts[i] == "62626") {
            return false;
        }
    }
    const std::size_t first = place < 2 ? 0 : place - 2;
    for (std::size_t i = first; i < std::min(place + 3, texts.size()); ++i) {
        if (isPiece(texts[i])) {
            return false;
        }
    }
    return true;
}

std::string splitGroupReadsTheSame(const Part& part, std::size_t place, std::size_t length) {
    Part split = part;
    corvane::Group second = split.groups[place];
    second.text.erase(0, length);
    second.offset += length;
    split.groups[place].text.erase(length);
    split.groups[place].end = second.offset;
    split.groups.insert(split.groups.begin() + static_cast<std::ptrdiff_t>(place) + 1, second);
    split.marks.clear();
    const Reading whole = corvane::read(part);
    const Reading pieces = corvane::read(split);
    const std::string changed = difference(rowsOf(whole), rowsOf(pieces));
    return changed.empty()
               ? ""
               : "split at " + split.groups[place].text + ' ' + second.text + ", " + changed + ' ' + pieces.reason;
}

std::string brokenProperty(const std::string& bulletins) {
    const std::vector<Part> parts = partsOf(bulletins);
    std::string broken = partsAreInOrder(parts, bulletins.size());
    for (std::size_t number = 0; number < parts.size() && broken.empty(); ++number) {
        const Part& part = parts[number];
        for (const bool mend : {true, false}) {
            corvane::ReadOptions options;
            options.mend = mend;
            const Reading reading = corvane::read(part, options);
            broken = readingIsWhole(part, reading);
            if (broken.empty()) {
                broken = numbersComeFromDigits(part, reading);
            }
            if (broken.empty() && mend) {
                broken = printedPartReadsTheSame(reading);
            }
            if (!broken.empty()) {
                return broken;
            }
        }
        // One group of each part, and another one in the next.
        const std::size_t place = part.groups.empty() ? 0 : (bulletins.size() + number) % part.groups.size();
        if (part.excess.empty() && maySplit(part, place)) {
            broken = splitGroupReadsTheSame(part, place, 1 + bulletins.size() % 4);
        }
    }
    return broken.empty() ? orderDoesNotMatter(parts) : broken;
}

}  // namespace fuzz
