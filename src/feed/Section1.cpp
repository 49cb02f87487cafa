// Section 1: date, station and position. The decoder takes them as they are; here they must be right, because the
// unit of every wind depends on the date group and the place of every level on the number of groups before it.
#include "CodeTables.h"
#include "feed/Groups.h"
#include "feed/Steps.h"

namespace corvane::feed {

namespace {

constexpr int KNOTS = 50;  // added to the day of the month where winds are in knots

bool isLatitude(std::string_view group) {
    return group == "99///" || (hasForm(group, "99ddd") && number(group.substr(2)) <= 900);
}

bool isLongitude(std::string_view group) {
    if (group.size() != 5 || std::string_view("1357/").find(group[0]) == std::string_view::npos) {
        return false;
    }
    const std::string_view digits = group.substr(1);
    return digits == "////" || (hasForm(digits, "dddd") && number(digits) <= 1800);
}

void readPosition(const Work& work, std::size_t place, Reading& reading) {
    const std::string& latitude = work.at(place);
    const std::string& longitude = work.at(place + 1);
    if (!isLatitude(latitude) || !isLongitude(longitude) || longitude[0] == '/') {
        return;  // without a quadrant the signs are not known
    }
    const char quadrant = longitude[0];
    const bool south = quadrant == '3' || quadrant == '5';
    const bool west = quadrant == '5' || quadrant == '7';
    if (latitude != "99///") {
        const double degrees = number(std::string_view(latitude).substr(2)) / 10.0;
        reading.latitude = south ? 0.0 - degrees : degrees;
    }
    if (longitude[1] != '/') {
        const double degrees = number(std::string_view(longitude).substr(1)) / 10.0;
        reading.longitude = west ? 0.0 - degrees : degrees;
    }
}

void readElevation(std::string_view group, Reading& reading) {
    if (!isElevation(group)) {
        return;
    }
    const int height = number(group.substr(0, 4));
    reading.elevation = group[4] > '4' ? height * code::METRES_IN_A_FOOT : height;
}

}  // namespace

bool isElevation(std::string_view group) {
    return hasForm(group, "ddddd") && group[4] >= '1' && group[4] <= '8';
}

std::size_t placeOfDate(Corvane::WMO_MESSAGE_TYPE form) {
    return form == Corvane::WMO_TEMP_SHIP || form == Corvane::WMO_TEMP_MOBIL ? 1 : 0;
}

bool isDate(std::string_view group) {
    if (!hasForm(group, "dddd") && !hasForm(group, "dddd?")) {
        return false;
    }
    int day = number(group.substr(0, 2));
    day -= day > KNOTS ? KNOTS : 0;
    return day >= 1 && day <= 31 && number(group.substr(2, 2)) <= 24;
}

Refusal checkSection1(const Work& work) {
    const std::size_t date = placeOfDate(work.form());
    if (!isDate(work.at(date))) {
        return work.refuse("The date and time group (YYGGId or YYGGa4) is incorrectly coded.", date);
    }
    const std::size_t next = date + 1;
    if (work.form() == Corvane::WMO_TEMP) {
        return hasForm(work.at(next), "ddddd") ? Refusal()
                                               : work.refuse("The block and station number is incorrect.", next);
    }
    if (!isLatitude(work.at(next))) {
        return work.refuse("The latitude group (99LaLaLa) is incorrectly coded.", next);
    }
    if (!isLongitude(work.at(next + 1))) {
        return work.refuse("The longitude group (QcLoLoLoLo) is incorrectly coded.", next + 1);
    }
    const std::string& elevation = work.at(next + 3);
    if (work.form() == Corvane::WMO_TEMP_MOBIL && !hasForm(elevation, "dddd?") && !hasForm(elevation, "////?") &&
        elevation != "///0/") {
        return work.refuse("The elevation group (h0h0h0h0im) is incorrectly coded.", next + 3);
    }
    return {};
}

void readSection1(const Work& work, Reading& reading) {
    const std::size_t date = placeOfDate(work.form());
    // A part without data often names the station alone: TTAA 72576 NIL. That number may look like a date.
    const bool stationAlone = work.form() == Corvane::WMO_TEMP && reading.status != Reading::DECODED &&
                              hasForm(work.at(0), "ddddd") && (!hasForm(work.at(1), "ddddd") || isOpener(work.at(1)));
    if (!stationAlone && isDate(work.at(date))) {
        const std::string_view group = work.at(date);
        const int day = number(group.substr(0, 2));
        reading.windsInKnots = day > KNOTS;
        reading.day = day > KNOTS ? day - KNOTS : day;
        reading.hour = number(group.substr(2, 2));
    }
    if (work.form() == Corvane::WMO_TEMP) {
        const std::string& station = work.at(stationAlone ? 0 : 1);
        if (hasForm(station, "ddddd")) {
            reading.station = station;
        }
        return;
    }
    if (date == 1 && isDate(work.at(date))) {
        reading.station = work.at(0);
    }
    readPosition(work, date + 1, reading);
    if (work.form() == Corvane::WMO_TEMP_MOBIL) {
        readElevation(work.at(date + 4), reading);
    }
}

}  // namespace corvane::feed
