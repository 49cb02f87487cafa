#include "FeedTable.h"

#include "Csv.h"
#include "feed/Groups.h"
#include "Table.h"

#include <algorithm>
#include <optional>

namespace corvane::table {

namespace {

void appendInteger(std::string& out, std::optional<int> value) {
    if (value) {
        out += std::to_string(*value);
    }
}

void appendOptional(std::string& out, std::optional<double> value) {
    if (value) {
        appendNumber(out, *value);
    }
}

// The columns that both tables begin with: source,heading,form,part,station,day,hour,
void appendIdentity(std::string& out, const Part& part, const Reading& reading) {
    appendCsvField(out, sourceOf(part));
    out += ',';
    appendCsvField(out, part.heading);
    out += ',';
    out += formName(reading.form);
    out += ',';
    out += reading.letter;
    out += ',';
    appendCsvField(out, reading.station);
    out += ',';
    appendInteger(out, reading.day);
    out += ',';
    appendInteger(out, reading.hour);
    out += ',';
}

template <typename Columns>
void appendNames(std::string& out, const Columns& columns) {
    for (const std::string_view name : columns) {
        out += name;
        out += ',';
    }
}

}  // namespace

std::string sourceOf(const Part& part) {
    return part.source + ':' + std::to_string(part.line);
}

std::string joinNames(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names) {
        joined += joined.empty() ? name : ' ' + name;
    }
    return joined;
}

std::string mendNames(const Reading& reading) {
    std::vector<std::string> names;
    for (const Mend& mend : reading.mends) {
        if (std::find(names.begin(), names.end(), mend.name) == names.end()) {
            names.push_back(mend.name);
        }
    }
    return joinNames(names);
}

void appendFeedHeader(std::string& out) {
    appendNames(out, PART_COLUMNS);
    appendHeader(out);
    out += '\n';
}

void appendFeedRows(std::string& out, const Part& part, const Reading& reading) {
    if (reading.levels.empty()) {
        return;  // two parts out of three say NIL
    }
    std::string beginning;  // the same in every row of the part
    appendIdentity(beginning, part, reading);
    appendOptional(beginning, reading.latitude);
    beginning += ',';
    appendOptional(beginning, reading.longitude);
    beginning += ',';
    appendOptional(beginning, reading.elevation);
    beginning += ',';
    beginning += reading.launch;
    beginning += ',';
    beginning += mendNames(reading);
    beginning += ',';
    for (const ReadLevel& level : reading.levels) {
        out += beginning;
        out += joinNames(level.doubts);
        out += ',';
        appendRow(out, level.values);
        out += '\n';
    }
}

void appendGroups(std::string& out, const Reading& reading) {
    const std::vector<std::string>& groups = reading.groups;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const bool wouldBeHeading = i + 2 < groups.size() && feed::isDesignator(groups[i]) &&
                                    feed::isCentre(groups[i + 1]) && feed::isHeadingTime(groups[i + 2]);
        out += groups[i];
        out += wouldBeHeading ? '\n' : ' ';
    }
    out.back() = '=';
    out += '\n';
}

void appendPartsHeader(std::string& out) {
    appendNames(out, PARTS_COLUMNS);
    out.back() = '\n';
}

void appendPartsRow(std::string& out, const Part& part, const Reading& reading) {
    appendIdentity(out, part, reading);
    out += statusName(reading.status);
    out += ',';
    out += std::to_string(reading.levels.size());
    out += ',';
    out += mendNames(reading);
    out += ',';
    appendCsvField(out, reading.reason);
    out += '\n';
}

}  // namespace corvane::table
