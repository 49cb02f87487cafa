#include "feed/PartDecoder.h"

#include "feed/Groups.h"
#include "feed/Remarks.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace corvane::feed {

namespace {

// A value outside these bounds means that the groups are out of step. The extremes of real soundings are 117 m/s,
// -88.3, +44.2 and, of dew points, -108.9 degrees.
constexpr double LARGEST_DIRECTION = 360.0;    // degrees
constexpr double LARGEST_SPEED = 140.0;        // m/s
constexpr double LOWEST_TEMPERATURE = -105.0;  // degrees Celsius
constexpr double HIGHEST_TEMPERATURE = 60.0;
constexpr double LOWEST_DEWPOINT = -120.0;

// Whether a level gives nothing but its place in the vertical. The shears of a maximum wind have no column.
bool saysNothing(const Corvane::Level& level) {
    return std::all_of(level.fields.begin(), level.fields.end(), [](const auto& field) {
        return field.first == Corvane::LF_PRES || field.first == Corvane::LF_PRES2 || field.first == Corvane::LF_VA ||
               field.first == Corvane::LF_VB;
    });
}

// 8GGgg
bool isLaunchTime(std::string_view group) {
    return hasForm(group, "8dddd") && number(group.substr(1, 2)) <= 24 && number(group.substr(3)) <= 59;
}

// The decoder's NaN is a missing value, and -0 is 0.
void tidy(Corvane::Level& level) {
    for (auto field = level.fields.begin(); field != level.fields.end();) {
        if (std::isnan(field->second)) {
            field = level.fields.erase(field);
        } else {
            field->second += 0.0;
            ++field;
        }
    }
}

}  // namespace

PartDecoder::PartDecoder(const Work& groups) : work(groups) {
    init();
    tokenQueue.push_back(work.identifier());
    for (std::size_t i = 0; i < work.size(); ++i) {
        tokenQueue.push_back(work.at(i));
    }
    found.reserve(work.size() / 2);  // a level has two groups or more
}

bool PartDecoder::run() {
    try {
        decode();
        return true;
    } catch (const std::string& message) {
        _fault.message = message;
    } catch (const std::out_of_range&) {
        _fault.message = "A group is too short. Error detected at " + work.context(place());
    }
    if (!_fault.isImpossible) {
        _fault.place = place();
    }
    return false;
}

void PartDecoder::decode() {
    decodeMMMM();
    decodeSection1();
    if (work.isPartBOrD()) {
        decodeSignificantLevels();
    } else {
        decodeSurfaces();
        decodeTropopauses();
        decodeMaximumWinds();
    }
    tailPlace = place();

    _fault.section = Fault::SYSTEM;
    _fault.levelIsDue = false;
    decodeSection7();
    _fault.section = Fault::TAIL;
    if (work.isPartBOrD()) {
        decodeSection8();
    }
    decodeSection9();
    decodeRemarks();
    if (!tokenQueue.empty()) {
        decodeMMMM();  // throws: the cutter leaves no MMMM inside a part, only words that look like one
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Sections 2 to 4
// ---------------------------------------------------------------------------------------------------------------------

// As decodeSection2, a surface at a time.
void PartDecoder::decodeSurfaces() {
    _fault.section = Fault::SURFACES;
    if (work.letter() == 'C') {
        mandatoryA = mandatoryC;
    }
    for (std::size_t row = 0; row < mandatoryA.size() && !frontBeginsWith("88"); ++row) {
        const std::size_t first = place();
        _fault.surface = row;
        _fault.levelIsDue = !frontBeginsWith(mandatoryA[row].code);
        decodeMandatory(mandatoryA, static_cast<int>(row));
        needHead(first);
        needTemperature(first + 1);
        if (place() - first > 2) {
            needWind(first + 2);
        }
        if (row == 0 && work.letter() == 'A' && work.at(first) == "99///" && !levelStore.empty()) {
            // The decoder files a ground of unknown pressure as a standard surface at 0 hPa.
            Level& ground = levelStore.begin()->second;
            ground.type = LT_SURFACE;
            ground.fields.erase(LF_PRES);
        }
        takeAll(first);
    }
}

// As decodeSection3, a tropopause at a time.
void PartDecoder::decodeTropopauses() {
    _fault.section = Fault::TROPOPAUSES;
    if (!frontBeginsWith("88")) {
        return;
    }
    while (!tokenQueue.empty() && !frontIs("88999") && !frontBeginsWith("77") &&
           (!frontBeginsWith("66") || frontIs("66666"))) {
        const std::size_t first = place();
        _fault.levelIsDue = !frontBeginsWith("88");
        decodeTrop();
        needHead(first);
        needTemperature(first + 1);
        needWind(first + 2);
        // The decoder's table has no column for the wind of a tropopause, and its level none.
        tokenQueue.push_front(work.at(first + 2));
        takeWind(levelStore.begin()->second);
        takeAll(first);
    }
    if (frontIs("88999")) {
        SKIP_TOKENS(1);
    }
}

// As decodeSection4, a wind at a time.
void PartDecoder::decodeMaximumWinds() {
    _fault.section = Fault::MAXIMUM_WINDS;
    while (frontBeginsWith("77") || frontBeginsWith("66")) {
        const std::size_t first = place();
        _fault.levelIsDue = frontIs("66666");
        if (_fault.levelIsDue) {
            // The opener of a national section: no maximum wind is reported below 500 hPa.
            throwErrorMsg("The max wind observation is incorrectly coded.");
        }
        if (frontIs("77999")) {
            SKIP_TOKENS(1);
            return;
        }
        decodeMaxWind();
        needHead(first);
        needWind(first + 1);
        Level& level = levelStore.begin()->second;
        if (work.letter() == 'C' && level.fields.count(LF_PRES) != 0) {
            level.fields[LF_PRES] /= 10.0;  // tenths of hPa, which the decoder leaves as they are coded
        }
        takeAll(first);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Sections 5 and 6: SignificantLevels.cpp has seen to it that every level is a pair
// ---------------------------------------------------------------------------------------------------------------------

void PartDecoder::decodeSignificantLevels() {
    _fault.section = Fault::SIGNIFICANT;
    std::size_t first = place();
    decodeSection5();
    takePairs(first, false);
    first = place() + 1;  // after 21212
    decodeSection6();
    takePairs(first, true);
}

// Section 5 does not file a pair whose second group gives nothing; section 6 files every pair.
void PartDecoder::takePairs(std::size_t first, bool withoutValue) {
    for (auto& entry : levelStore) {
        while (!withoutValue && work.at(first + 1).compare(0, 3, "///") == 0) {
            first += 2;
        }
        take(entry.second, {first, 2});
        if (withoutValue) {
            checkHalfWind(first + 1, first);
        }
        first += 2;
    }
    levelStore.clear();
}

// ---------------------------------------------------------------------------------------------------------------------
// Remarks
// ---------------------------------------------------------------------------------------------------------------------

void PartDecoder::decodeRemarks() {
    const std::vector<Remark> remarks = findRemarks(work, place());
    decodeSection10();
    for (const Remark& remark : remarks) {
        if (!remark.isWhole) {
            throwImpossible("A remark holds something other than its values.", remark.place);
        }
        for (std::size_t at = remark.place; at < remark.place + remark.count; ++at) {
            checkHalfWind(at, remark.place);
        }
    }
    for (auto& entry : levelStore) {
        const auto remark = std::find_if(remarks.begin(), remarks.end(),
                                         [&](const Remark& candidate) { return candidate.kind == entry.first; });
        take(entry.second, {remark->place, remark->count});
    }
    levelStore.clear();
}

// ---------------------------------------------------------------------------------------------------------------------
// Levels
// ---------------------------------------------------------------------------------------------------------------------

void PartDecoder::take(Level& level, GroupRange groups) {
    tidy(level);
    needPossible(level, groups.first);
    if (!saysNothing(level)) {
        found.push_back({std::move(level), {}, groups});
    }
}

void PartDecoder::takeAll(std::size_t first) {
    for (auto& entry : levelStore) {
        take(entry.second, {first, place() - first});
    }
    levelStore.clear();
}

// The decoder would make a number even of a group such as 12///.

void PartDecoder::needHead(std::size_t where) {
    if (!hasForm(work.at(where), "ddddd") && !hasForm(work.at(where), "dd///")) {
        throwImpossible("A level (PPhhh or PPPPP) is expected.", where);
    }
}

void PartDecoder::needTemperature(std::size_t where) {
    const std::string& group = work.at(where);
    if (!hasForm(group, "ddddd") && !hasForm(group, "ddd//") && group != "/////") {
        throwImpossible("A temperature (TTTDD) is expected.", where);
    }
}

void PartDecoder::needWind(std::size_t where) {
    const std::string& group = work.at(where);
    if (!hasForm(group, "ddddd") && !hasForm(group, "dd///") && !hasForm(group, "//ddd") && group != "/////") {
        throwImpossible("A wind (ddfff) is expected.", where);
    }
    checkHalfWind(where, where);
}

// The decoder files nothing of a wind without a speed or without a direction.
void PartDecoder::checkHalfWind(std::size_t where, std::size_t level) {
    const std::string& group = work.at(where);
    if (hasForm(group, "dd///") && 10 * number(std::string_view(group).substr(0, 2)) > LARGEST_DIRECTION) {
        throwImpossible("The wind direction is impossible.", level);
    }
    if (hasForm(group, "dd///") || hasForm(group, "//ddd")) {
        _halfWinds.push_back(where);
    }
}

void PartDecoder::needPossible(const Level& level, std::size_t where) {
    const auto within = [&](LEVEL_FIELD field, double lowest, double highest) {
        const auto value = level.fields.find(field);
        return value == level.fields.end() || (value->second >= lowest && value->second <= highest);
    };
    if (!within(LF_TDRY, LOWEST_TEMPERATURE, HIGHEST_TEMPERATURE)) {
        throwImpossible("The temperature is impossible.", where);
    }
    if (!within(LF_DP, LOWEST_DEWPOINT, HIGHEST_TEMPERATURE)) {
        throwImpossible("The dew point is impossible.", where);
    }
    if (!within(LF_WDIR, 0.0, LARGEST_DIRECTION)) {
        throwImpossible("The wind direction is impossible.", where);
    }
    if (!within(LF_WSPD, 0.0, LARGEST_SPEED)) {
        throwImpossible("The wind speed is impossible.", where);
    }
}

void PartDecoder::throwImpossible(const std::string& message, std::size_t where) {
    _fault.isImpossible = true;
    _fault.place = where;
    throw message + " Error detected at " + work.context(where);
}

std::vector<ReadLevel> PartDecoder::takeLevels() {
    const auto byKind = [](const ReadLevel& first, const ReadLevel& second) {
        return first.values.type < second.values.type;
    };
    if (!std::is_sorted(found.begin(), found.end(), byKind)) {  // nearly always they are: 3 % of reading bulletins
        std::stable_sort(found.begin(), found.end(), byKind);
    }
    return std::move(found);
}

// ---------------------------------------------------------------------------------------------------------------------
// What the mends need to know
// ---------------------------------------------------------------------------------------------------------------------

// 31313 srrarasasa 8GGgg. Doubled closers and solidi before 31313 say nothing.
std::size_t PartDecoder::launchPlace() const {
    std::size_t opener = tailPlace;
    while (saysNoLevel(work.at(opener))) {
        ++opener;
    }
    return work.at(opener) == "31313" ? opener + 2 : work.size();
}

std::string PartDecoder::launch() const {
    const std::string& group = work.at(launchPlace());
    return isLaunchTime(group) ? group.substr(1) : std::string();
}

bool PartDecoder::hasUnreadableLaunch() const {
    const std::string& group = work.at(launchPlace());
    const bool notReported = hasForm(group, "8????") && group.find('/') != std::string::npos;
    return !group.empty() && !isOpener(group) && !notReported && !isLaunchTime(group);
}

std::vector<std::string> PartDecoder::surfaceCodes() const {
    std::vector<std::string> codes;
    for (const MandatoryInfo& surface : mandatoryA) {
        codes.push_back(surface.code);
    }
    return codes;
}

double PartDecoder::surfacePressure(std::size_t row) const {
    return mandatoryA[row].pressure;
}

bool PartDecoder::hasWind(std::size_t row) const {
    return mandatoryA[row].pressure >= (work.letter() == 'A' ? lastWindPresA : lastWindPresC);
}

double PartDecoder::groundPressure() const {
    for (const ReadLevel& level : found) {
        if (level.values.type == LT_SURFACE && level.values.fields.count(LF_PRES) != 0) {
            return level.values.fields.at(LF_PRES);
        }
    }
    return 0.0;
}

bool PartDecoder::hasLeftovers() const {
    return tailPlace < work.size() && !isOpener(work.at(tailPlace));
}

}  // namespace corvane::feed
