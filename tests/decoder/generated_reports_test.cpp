// Reports written from known levels by a generator: they decode to those levels, and to nothing else, however their
// groups are separated, closed or split.
#include "support/OpenDecoder.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <ostream>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Level = Corvane::Level;

// ---- Choices -------------------------------------------------------------------------------------------------------

// A number from `lowest` to `highest`, both included, each as likely as the other; shrinks towards `lowest`.
int pick(int lowest, int highest) {
    return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(lowest, highest + 1));
}

// True in `percent` of a hundred cases; shrinks towards false.
bool chance(int percent) {
    return pick(0, 99) >= 100 - percent;
}

std::string pickOf(const std::vector<std::string>& choices) {
    return choices[static_cast<std::size_t>(pick(0, static_cast<int>(choices.size()) - 1))];
}

std::string digits(int number, int width) {
    std::string text = std::to_string(number);
    return std::string(static_cast<std::size_t>(width) - text.size(), '0') + text;
}

// ---- What a report is made of --------------------------------------------------------------------------------------

struct Group {
    std::string text;
    // Where a stray space may be, so that the decoder joins the two pieces again; empty for most groups.
    std::vector<std::size_t> cuts;
};

struct Part {
    std::vector<Group> groups;
    std::vector<Level> levels;  // in the order of the report
};

struct Station {
    int form = 0;  // index of the type letters
    int day = 1;
    int hour = 0;
    bool knots = false;
    std::string name;  // IIiii or call sign
    int latitudeTenths = 0;
    int longitudeTenths = 0;
    std::string quadrant = "1";
    std::string marsden;
    int elevation = 0;  // as written, in metres or feet
    int elevationUnit = 1;
};

struct Report {
    Station station;
    std::vector<Part> parts;
    int obsTime = -1;
    std::string sonde;      // srrara(ra)sasa of the last section 7
    std::string equipment;  // a4 of part B
};

const std::vector<std::string> TYPE_LETTERS = {"TT", "UU", "XX", "II"};
const std::vector<std::string> PART_LETTERS = {"AA", "BB", "CC", "DD"};
const std::vector<std::string> FORM_NAMES = {"TEMP", "TEMP SHIP", "TEMP DROP", "TEMP MOBIL"};
enum Form { TEMP, SHIP, DROP, MOBIL };
enum PartNumber { PART_A, PART_B, PART_C, PART_D };

void put(Part& part, const std::string& text) {
    part.groups.push_back({text, {}});
}

// A group of the remarks that may be split anywhere.
void putJoinable(Part& part, const std::string& text) {
    Group group = {text, {}};
    for (std::size_t place = 1; place < text.size(); ++place) {
        group.cuts.push_back(place);
    }
    part.groups.push_back(group);
}

// ---- Temperature and wind ------------------------------------------------------------------------------------------

struct Air {
    bool temperatureGiven = false;
    bool dewPointGiven = false;
    double temperature = 0.0;
    double dewPoint = 0.0;
    std::string group;
};

// A temperature of -99.9 to 99.8 degrees, even tenths above and odd tenths below zero as the code form has them, and a
// dew point 0 to 5 degrees below it in tenths or 6 to 49 in whole degrees; either may be missing.
Air pickAir() {
    Air air;
    const int given = pick(0, 9);
    if (given == 9) {
        air.group = "///" + pickOf({"//", "56", "53", "00"});
        return air;
    }
    const bool belowZero = chance(50);
    const int tenths = pick(0, 99) * 10 + pick(0, 4) * 2 + (belowZero ? 1 : 0);
    air.temperatureGiven = true;
    air.temperature = (belowZero ? -tenths : tenths) / 10.0;
    if (given == 8) {
        air.group = digits(tenths, 3) + "//";
        return air;
    }
    air.dewPointGiven = true;
    if (chance(50)) {
        const int depressionTenths = pick(0, 50);
        air.dewPoint = ((belowZero ? -tenths : tenths) - depressionTenths) / 10.0;
        air.group = digits(tenths, 3) + digits(depressionTenths, 2);
    } else {
        const int depression = pick(6, 49);
        air.dewPoint = ((belowZero ? -tenths : tenths) - depression * 10) / 10.0;
        air.group = digits(tenths, 3) + digits(50 + depression, 2);
    }
    return air;
}

struct Wind {
    bool given = false;
    double direction = 0.0;
    double speed = 0.0;  // m/s
    std::string group;
};

// A direction of 0 to 360 degrees in steps of 5 and a speed of 0 to 499, or no wind.
Wind pickWind(bool knots) {
    Wind wind;
    if (chance(15)) {
        wind.group = pickOf({"/////", "27///", "//015"});
        return wind;
    }
    const int fives = pick(0, 72);
    const int speed = chance(80) ? pick(0, 80) : pick(81, 499);
    wind.given = true;
    wind.direction = fives * 5;
    wind.speed = knots ? speed * 0.5144 : speed;
    wind.group = digits(fives / 2, 2) + digits(fives % 2 == 0 ? speed : 500 + speed, 3);
    return wind;
}

void setAir(Level& level, const Air& air) {
    if (air.temperatureGiven) {
        level.fields[Corvane::LF_TDRY] = air.temperature;
    }
    if (air.dewPointGiven) {
        level.fields[Corvane::LF_DP] = air.dewPoint;
    }
}

void setWind(Level& level, const Wind& wind) {
    if (wind.given) {
        level.fields[Corvane::LF_WDIR] = wind.direction;
        level.fields[Corvane::LF_WSPD] = wind.speed;
    }
}

// ---- Section 1 -----------------------------------------------------------------------------------------------------

Station pickStation(int form) {
    Station station;
    station.form = form;
    station.day = pick(1, 31);
    station.hour = pick(0, 23);
    station.knots = chance(50);
    if (form == TEMP) {
        station.name = digits(pick(1000, 99999), 5);
    } else {
        if (form != DROP) {
            station.name = pickOf({"SHIP", "KABC7", "ZZ", "TTBB", "12345"});
        }
        station.latitudeTenths = pick(0, 900);
        station.longitudeTenths = pick(0, 1800);
        station.quadrant = pickOf({"1", "3", "5", "7", "/"});
        station.marsden = pickOf({"07213", "/////", "11599"});
        station.elevation = pick(0, 9999);
        station.elevationUnit = pick(1, 8);
    }
    return station;
}

// Id and the pressure of the last surface with a wind group; a solidus stands for no winds aloft.
const std::map<std::string, int> LAST_WIND_A = {{"/", 9999}, {"0", 1000}, {"1", 100}, {"2", 200}, {"3", 300},
                                                {"4", 400},  {"5", 500},  {"7", 700}, {"8", 800}, {"9", 925}};
const std::map<std::string, int> LAST_WIND_C = {{"/", 9999}, {"0", 0},  {"1", 10}, {"2", 20},
                                                {"3", 30},   {"5", 50}, {"7", 70}};

void writeSection1(Part& part, const Station& station, int number, const std::string& last) {
    put(part, TYPE_LETTERS[static_cast<std::size_t>(station.form)] + PART_LETTERS[static_cast<std::size_t>(number)]);
    if (station.form == SHIP || station.form == MOBIL) {
        put(part, station.name);
    }
    put(part, digits(station.day + (station.knots ? 50 : 0), 2) + digits(station.hour, 2) + last);
    if (station.form == TEMP) {
        put(part, station.name);
        return;
    }
    put(part, "99" + digits(station.latitudeTenths, 3));
    put(part, station.quadrant + digits(station.longitudeTenths, 4));
    put(part, station.marsden);
    if (station.form == MOBIL) {
        put(part, digits(station.elevation, 4) + digits(station.elevationUnit, 1));
    }
}

// ---- Sections 2 to 4 -----------------------------------------------------------------------------------------------

// A standard surface: what the code form writes for it and the heights at which it may be found, in steps of metres.
struct Surface {
    std::string indicator;
    int pressure;
    int lowest;
    int highest;
    int step;
};

const std::vector<Surface> SURFACES_A = {
    {"00", 1000, -499, 499, 1},    {"92", 925, 0, 999, 1},        {"85", 850, 1000, 1999, 1},
    {"70", 700, 2501, 3500, 1},    {"50", 500, 0, 9990, 10},      {"40", 400, 0, 9990, 10},
    {"30", 300, 5010, 15000, 10},  {"25", 250, 5010, 15000, 10},  {"20", 200, 10000, 19990, 10},
    {"15", 150, 10000, 19990, 10}, {"10", 100, 10000, 19990, 10},
};

const std::vector<Surface> SURFACES_C = {
    {"70", 70, 10000, 19990, 10}, {"50", 50, 15010, 25000, 10}, {"30", 30, 20000, 29990, 10},
    {"20", 20, 20000, 29990, 10}, {"10", 10, 25010, 35000, 10}, {"07", 7, 30000, 39990, 10},
    {"05", 5, 30000, 39990, 10},  {"03", 3, 35010, 45000, 10},  {"01", 1, 45010, 55000, 10},
};

// The pressure of the surface, or solidi: without a pressure the level is a standard one at 0 hPa.
void writeSurface(Part& part, bool knots) {
    Level level(Corvane::LT_SURFACE);
    if (chance(10)) {
        put(part, "99///");
        level.type = Corvane::LT_MANDATORY;
        level.fields[Corvane::LF_PRES] = 0.0;
    } else {
        const int pressure = chance(80) ? pick(900, 1099) : pick(100, 899);
        put(part, "99" + digits(pressure % 1000, 3));
        level.fields[Corvane::LF_PRES] = pressure;
    }
    const Air air = pickAir();
    const Wind wind = pickWind(knots);
    put(part, air.group);
    put(part, wind.group);
    setAir(level, air);
    setWind(level, wind);
    if (level.fields.size() > 1) {
        part.levels.push_back(level);
    }
}

void writeStandardSurface(Part& part, bool knots, const Surface& surface, int lastWindPressure) {
    Level level(Corvane::LT_MANDATORY);
    level.fields[Corvane::LF_PRES] = surface.pressure;
    if (chance(10)) {
        put(part, surface.indicator + "///");
    } else {
        const int height = pick(surface.lowest / surface.step, surface.highest / surface.step) * surface.step;
        const int written = height < 0 ? 500 - height : height / surface.step % 1000;
        put(part, surface.indicator + digits(written, 3));
        level.fields[Corvane::LF_HEIGHT] = height;
    }
    const Air air = pickAir();
    put(part, air.group);
    setAir(level, air);
    if (surface.pressure >= lastWindPressure) {
        const Wind wind = pickWind(knots);
        put(part, wind.group);
        setWind(level, wind);
    }
    if (level.fields.size() > 1) {
        part.levels.push_back(level);
    }
}

// Returns whether all surfaces are reported, so that section 3 may be missing.
bool writeSection2(Part& part, bool knots, int number, int lastWindPressure) {
    const std::vector<Surface>& surfaces = number == PART_A ? SURFACES_A : SURFACES_C;
    const int all = static_cast<int>(surfaces.size());
    const int reported = chance(30) ? all : pick(0, all);
    if (number == PART_A) {
        if (reported == 0 && chance(50)) {
            return false;
        }
        writeSurface(part, knots);
    }
    for (int index = 0; index < reported; ++index) {
        writeStandardSurface(part, knots, surfaces[static_cast<std::size_t>(index)], lastWindPressure);
    }
    return reported == all;
}

// A temperature or dew point that counts as given only because of the wind is not a number. The wind is not filed.
void writeTropopause(Part& part, bool knots, int number) {
    const double notGiven = std::numeric_limits<double>::quiet_NaN();
    Level level(Corvane::LT_TROPOPAUSE);
    if (chance(10)) {
        put(part, "88///");
    } else {
        const int pressure = pick(1, 998);
        put(part, "88" + digits(pressure, 3));
        level.fields[Corvane::LF_PRES] = number == PART_C ? pressure / 10.0 : pressure;
    }
    const Air air = pickAir();
    const Wind wind = pickWind(knots);
    put(part, air.group);
    put(part, wind.group);
    if (wind.given) {
        level.fields[Corvane::LF_TDRY] = notGiven;
        level.fields[Corvane::LF_DP] = notGiven;
    }
    setAir(level, air);
    part.levels.push_back(level);
}

void writeMaximumWind(Part& part, bool knots) {
    const double unit = knots ? 0.5144 : 1.0;
    Level level(Corvane::LT_MAXWIND);
    const std::string indicator = pickOf({"77", "66"});
    if (chance(10)) {
        put(part, indicator + "///");
    } else {
        const int pressure = pick(1, 998);
        put(part, indicator + digits(pressure, 3));
        level.fields[Corvane::LF_PRES] = pressure;
    }
    const Wind wind = pickWind(knots);
    put(part, wind.group);
    setWind(level, wind);
    if (chance(50)) {
        std::string shear = "4";
        for (const Corvane::LEVEL_FIELD field : {Corvane::LF_VA, Corvane::LF_VB}) {
            if (chance(20)) {
                shear += "//";
            } else {
                const int speed = pick(0, 99);
                shear += digits(speed, 2);
                level.fields[field] = speed * unit;
            }
        }
        put(part, shear);
    }
    part.levels.push_back(level);
}

// `mayBeMissing`: section 2 is complete. `mayBeLast`: nothing follows section 4 in the text, so that the tropopauses
// may end it.
void writeSections3And4(Part& part, bool knots, int number, bool mayBeMissing, bool mayBeLast) {
    const bool missing = mayBeMissing && chance(30);
    const int tropopauses = missing ? 0 : pick(0, 2);
    for (int index = 0; index < tropopauses; ++index) {
        writeTropopause(part, knots, number);
    }
    const bool closed = !missing && (tropopauses == 0 || chance(20));
    if (closed) {
        put(part, "88999");
    }
    if (tropopauses > 0 && !closed && mayBeLast && chance(30)) {
        return;
    }
    const int winds = pick(0, 2);
    for (int index = 0; index < winds; ++index) {
        writeMaximumWind(part, knots);
    }
    const bool mustSayNone = tropopauses > 0 && !closed && winds == 0;
    if (mustSayNone || chance(50)) {
        put(part, "77999");
    }
}

// ---- Sections 5 and 6 ----------------------------------------------------------------------------------------------

// nnPPP; the number is 00 for the surface, then 11, 22, ... 99 and again 11.
double writeSignificantPressure(Part& part, int number, int index) {
    const std::string levelNumber = index == 0 ? "00" : std::string(2, static_cast<char>('1' + (index - 1) % 9));
    if (number == PART_D) {
        const int tenths = pick(1, 999);
        put(part, levelNumber + digits(tenths, 3));
        return tenths / 10.0;
    }
    const int pressure = pick(100, 1099);
    put(part, levelNumber + digits(pressure % 1000, 3));
    return pressure;
}

// Levels without a temperature are left out of section 5, those without a wind are kept in section 6.
void writeSections5And6(Part& part, bool knots, int number) {
    const int temperatures = pick(0, 12);
    for (int index = 0; index < temperatures; ++index) {
        Level level(Corvane::LT_SIGNIFICANT);
        level.fields[Corvane::LF_PRES] = writeSignificantPressure(part, number, index);
        const Air air = pickAir();
        put(part, air.group);
        setAir(level, air);
        if (air.temperatureGiven) {
            part.levels.push_back(level);
        }
    }
    if (chance(20)) {
        return;
    }
    put(part, "21212");
    const int winds = pick(0, 12);
    for (int index = 0; index < winds; ++index) {
        Level level(Corvane::LT_SIGNIFICANT);
        level.fields[Corvane::LF_PRES] = writeSignificantPressure(part, number, index);
        const Wind wind = pickWind(knots);
        put(part, wind.group);
        setWind(level, wind);
        part.levels.push_back(level);
    }
}

// ---- Sections 7 to 10 ----------------------------------------------------------------------------------------------

// 31313 srrara(ra)sasa 8GGgg
void writeSection7(Part& part, Report& report) {
    report.obsTime = pick(0, 23) * 100 + pick(0, 59);
    report.sonde = digits(pick(0, 99999), 5);
    put(part, "31313");
    put(part, report.sonde);
    put(part, "8" + digits(report.obsTime, 4));
}

// A group that belongs to no section: it opens none and is no MMMM. It has none of the letters A to D.
std::string pickFreeGroup(int shortest) {
    static const std::string characters = "0123456789EFGHIJKLMNOPQRSTUVWXYZ/-.+";
    const std::set<std::string> openers = {"61616", "62626", "63636", "64646", "65656",
                                           "66666", "67676", "68686", "69696", "41414"};
    std::string group;
    const int length = pick(shortest, 7);
    for (int index = 0; index < length; ++index) {
        group += characters[static_cast<std::size_t>(pick(0, static_cast<int>(characters.size()) - 1))];
    }
    return openers.count(group) == 0 ? group : "00000";
}

void writeFreeGroups(Part& part, int shortest) {
    const int groups = pick(0, 4);
    for (int index = 0; index < groups; ++index) {
        put(part, pickFreeGroup(shortest));
    }
}

void writePosition(Part& part, Level& level) {
    const int latitude = pick(0, 90) * 100 + pick(0, 59);
    const int longitude = pick(0, 179) * 100 + pick(0, 59);
    const bool north = chance(50);
    const bool east = chance(50);
    putJoinable(part, digits(latitude, 4) + (north ? "N" : "S") + digits(longitude, 5) + (east ? "E" : "W"));
    level.fields[Corvane::LF_LAT] = (north ? latitude : -latitude) / 100.0;
    level.fields[Corvane::LF_LON] = (east ? longitude : -longitude) / 100.0;
}

void writeRemarkWithLevel(Part& part, bool knots) {
    const std::string keyword = pickOf({"REL", "SPG", "SPL", "WL150", "DLM", "MBL", "LST"});
    Level level;
    if (keyword == "WL150") {
        part.groups.push_back({keyword, {2}});
        const Wind wind = pickWind(knots);
        const int height = pick(0, 999);
        putJoinable(part, wind.group);
        putJoinable(part, digits(height, 3));
        level.type = Corvane::LT_150MLAYERWIND;
        setWind(level, wind);
        level.fields[Corvane::LF_HEIGHT] = height;
        if (wind.given) {
            part.levels.push_back(level);
        }
        return;
    }
    put(part, keyword);
    if (keyword == "REL" || keyword == "SPG" || keyword == "SPL") {
        level.type = keyword == "REL"   ? Corvane::LT_RELEASEPOINT
                     : keyword == "SPG" ? Corvane::LT_SPLASHPOINTRAWGPS
                                        : Corvane::LT_SPLASHPOINTWINDINTEG;
        writePosition(part, level);
        const int minutes = pick(0, 23) * 100 + pick(0, 59);
        const int time = keyword == "SPL" ? minutes : minutes * 100 + pick(0, 59);
        putJoinable(part, digits(time, keyword == "SPL" ? 4 : 6));
        level.fields[Corvane::LF_TIME] = time;
        part.levels.push_back(level);
        return;
    }
    put(part, "WND");
    if (keyword == "LST") {
        const int height = pick(0, 999);
        putJoinable(part, digits(height, 3));
        level.type = Corvane::LT_LASTWINDHEIGHT;
        level.fields[Corvane::LF_HEIGHT] = height;
        part.levels.push_back(level);
        return;
    }
    // These two are filed without a wind, too; direction and speed are then not a number.
    const Wind wind = pickWind(knots);
    putJoinable(part, wind.group);
    level.fields[Corvane::LF_WDIR] = std::numeric_limits<double>::quiet_NaN();
    level.fields[Corvane::LF_WSPD] = std::numeric_limits<double>::quiet_NaN();
    setWind(level, wind);
    if (keyword == "DLM") {
        const int first = pick(100, 1099);
        const int second = pick(100, 1099);
        putJoinable(part, digits(first % 1000, 3) + digits(second % 1000, 3));
        level.fields[Corvane::LF_PRES] = first;
        level.fields[Corvane::LF_PRES2] = second;
    }
    level.type = keyword == "DLM" ? Corvane::LT_DEEPLAYERWIND : Corvane::LT_MEANBLWIND;
    part.levels.push_back(level);
}

// Words of the remarks that file no level.
void writeOtherRemark(Part& part) {
    const std::string word = pickOf({"SONDE", "FAILED", "EYE", "CENTER", "RAINBAND", "MXWNDBND", "XXAA", "OBS", "2",
                                     "EYEWALL", "AEV", "LAST", "12BB5", "WND", "REPORT", "61616", "62626"});
    put(part, word);
    if (word == "EYEWALL") {
        put(part, pickOf({"270", "XXCC", "REL", "WL150"}));
    } else if (word == "AEV") {
        putJoinable(part, digits(pick(0, 99999), 5));
    } else if (word == "LAST") {
        putJoinable(part, "REPORT");
    }
}

void writeDropsondeRemarks(Part& part, bool knots) {
    put(part, "62626");
    const int remarks = pick(0, 12);
    for (int index = 0; index < remarks; ++index) {
        if (chance(65)) {
            writeRemarkWithLevel(part, knots);
        } else {
            writeOtherRemark(part);
        }
    }
}

// `afterSection7`: directly after sections 2 to 4, 66666 would be a maximum wind.
void writeSections9And10(Part& part, const Station& station, bool afterSection7) {
    if (chance(30)) {
        put(part, pickOf({"51515", "52525", "53535", "54545", "55555", "56565", "57575", "58585", "59595"}));
        writeFreeGroups(part, 2);
    }
    if (chance(30)) {
        put(part,
            pickOf({"61616", "63636", "64646", "65656", "67676", "68686", "69696", afterSection7 ? "66666" : "61616"}));
        writeFreeGroups(part, 1);
    }
    if (station.form == DROP && chance(70)) {
        writeDropsondeRemarks(part, station.knots);
    }
}

// ---- Whole reports -------------------------------------------------------------------------------------------------

enum Closing { WITH_SECTION_7, AS_IT_COMES };

void writePart(Report& report, int number, Closing closing) {
    const Station& station = report.station;
    Part part;
    const bool section7 = closing == WITH_SECTION_7 || chance(60);
    if (number == PART_A || number == PART_C) {
        const std::map<std::string, int>& lastWinds = number == PART_A ? LAST_WIND_A : LAST_WIND_C;
        const auto lastWind = std::next(lastWinds.begin(), pick(0, static_cast<int>(lastWinds.size()) - 1));
        const bool nothingFollows = !section7 && chance(50);
        writeSection1(part, station, number, lastWind->first);
        const bool complete = writeSection2(part, station.knots, number, lastWind->second);
        writeSections3And4(part, station.knots, number, complete, nothingFollows);
        if (section7) {
            writeSection7(part, report);
        }
        if (!nothingFollows) {
            writeSections9And10(part, station, section7);
        }
    } else {
        std::string last = "/";
        if (number == PART_B) {
            last = pickOf({"/", "1", "X", "9"});
            report.equipment = last;
        }
        writeSection1(part, station, number, last);
        writeSections5And6(part, station.knots, number);
        // Without 31313, sections 5 and 6 read all groups to the end of the text as theirs.
        if (section7) {
            writeSection7(part, report);
            if (chance(30)) {
                put(part, "41414");
                put(part, digits(pick(0, 99999), 5));
            }
            writeSections9And10(part, station, true);
        }
    }
    report.parts.push_back(part);
}

rc::Gen<Report> onePartReports() {
    return rc::gen::exec([] {
        Report report;
        report.station = pickStation(pick(TEMP, MOBIL));
        writePart(report, pick(PART_A, PART_D), AS_IT_COMES);
        return report;
    });
}

// The four parts of one sounding, each closed so that the next can follow.
rc::Gen<Report> fourPartReports() {
    return rc::gen::exec([] {
        Report report;
        report.station = pickStation(pick(TEMP, MOBIL));
        for (int number = PART_A; number <= PART_D; ++number) {
            writePart(report, number, WITH_SECTION_7);
        }
        return report;
    });
}

rc::Gen<Report> dropsondeReports() {
    return rc::gen::exec([] {
        Report report;
        report.station = pickStation(DROP);
        for (int number = PART_A; number <= PART_B; ++number) {
            writePart(report, number, WITH_SECTION_7);
            writeDropsondeRemarks(report.parts.back(), report.station.knots);
        }
        return report;
    });
}

std::string textOf(const Part& part) {
    std::string text;
    for (const Group& group : part.groups) {
        text += (text.empty() ? "" : " ") + group.text;
    }
    return text;
}

std::string textOf(const Report& report) {
    std::string text;
    for (const Part& part : report.parts) {
        text += (text.empty() ? "" : "\n") + textOf(part);
    }
    return text;
}

void showValue(const Report& report, std::ostream& os) {
    os << textOf(report);
}

// The levels of the parts by ascending kind, in the order of the report within a kind. Of each kind of the dropsonde
// remarks the first one of the whole text is kept.
std::vector<Level> levelsOf(const std::vector<std::vector<Level>>& parts) {
    std::vector<Level> levels;
    std::set<Corvane::LEVEL_TYPE> remarks;
    for (const std::vector<Level>& part : parts) {
        for (const Level& level : part) {
            if (level.type < Corvane::LT_150MLAYERWIND || remarks.insert(level.type).second) {
                levels.push_back(level);
            }
        }
    }
    std::stable_sort(levels.begin(), levels.end(),
                     [](const Level& first, const Level& second) { return first.type < second.type; });
    return levels;
}

std::vector<Level> levelsOf(const Report& report) {
    std::vector<std::vector<Level>> parts;
    for (const Part& part : report.parts) {
        parts.push_back(part.levels);
    }
    return levelsOf(parts);
}

// ---- Decoding and comparing ----------------------------------------------------------------------------------------

std::string described(const Level& level) {
    std::ostringstream text;
    text << level.name();
    for (const auto& field : level.fields) {
        text << ' ' << static_cast<int>(field.first) << '=' << field.second;
    }
    return text.str();
}

bool same(const Level& first, const Level& second) {
    if (first.type != second.type || first.fields.size() != second.fields.size()) {
        return false;
    }
    return std::equal(first.fields.begin(), first.fields.end(), second.fields.begin(),
                      [](const auto& one, const auto& other) {
                          const bool bothNaN = std::isnan(one.second) && std::isnan(other.second);
                          return one.first == other.first && (bothNaN || std::abs(one.second - other.second) <= 1e-9);
                      });
}

// The first difference between two lists of levels, in words; empty when they are the same.
std::string difference(const std::vector<Level>& expected, const std::vector<Level>& found) {
    for (std::size_t index = 0; index < std::max(expected.size(), found.size()); ++index) {
        if (index >= found.size() || index >= expected.size() || !same(expected[index], found[index])) {
            return "level " + std::to_string(index) + ": expected " +
                   (index < expected.size() ? described(expected[index]) : "none") + ", found " +
                   (index < found.size() ? described(found[index]) : "none");
        }
    }
    return "";
}

double signedTenths(int tenths, bool negative) {
    return (negative ? -tenths : tenths) / 10.0;
}

// Where the decoder differs from sections 1 and 7 of the report; empty when it does not.
std::string differenceOfStation(const Report& report, const OpenDecoder& decoder) {
    const Station& station = report.station;
    const std::string& quadrant = station.quadrant;
    const double latitude = signedTenths(station.latitudeTenths, quadrant == "3" || quadrant == "5");
    const double longitude = signedTenths(station.longitudeTenths, quadrant == "5" || quadrant == "7");
    std::string wrong;
    wrong += decoder.wmoType() == FORM_NAMES[static_cast<std::size_t>(station.form)] ? "" : " type";
    wrong += decoder.dayOfMonth() == station.day ? "" : " day";
    wrong += decoder.obsHour() == station.hour ? "" : " hour";
    wrong += decoder.windsInKnots() == station.knots ? "" : " knots";
    wrong += decoder.bsn() == (station.form == TEMP ? station.name : "") ? "" : " station";
    wrong += decoder.callSign() == (station.form == TEMP ? "" : station.name) ? "" : " callsign";
    wrong += std::abs(decoder.latitude() - latitude) <= 1e-9 ? "" : " latitude";
    wrong += std::abs(decoder.longitude() - longitude) <= 1e-9 ? "" : " longitude";
    const double elevation =
        station.form == MOBIL ? station.elevation * (station.elevationUnit > 4 ? 0.3048 : 1.0) : 0.0;
    wrong += std::abs(decoder.mobileElevation - elevation) <= 1e-9 ? "" : " elevation";
    wrong += decoder.obsTime() == report.obsTime ? "" : " time";
    wrong += decoder.sr + decoder.rara + decoder.sasa == report.sonde ? "" : " sonde";
    wrong += decoder.a4 == report.equipment ? "" : " equipment";
    return wrong;
}

// How the decoded text differs from the report; empty when it does not, and the fault when there is one.
std::string differenceFrom(const Report& report, const std::string& text) {
    try {
        const OpenDecoder decoder(text);
        return difference(levelsOf(report), decoder.allLevels()) + differenceOfStation(report, decoder);
    } catch (const std::string& fault) {
        return fault;
    }
}

}  // namespace

RC_GTEST_PROP(GeneratedReports, APartGivesItsLevelsAndNoOthers, ()) {
    const Report report = *onePartReports();
    RC_ASSERT(differenceFrom(report, textOf(report)) == "");
}

RC_GTEST_PROP(GeneratedReports, FourPartsInOneTextGiveTheLevelsOfAll, ()) {
    const Report report = *fourPartReports();
    RC_ASSERT(differenceFrom(report, textOf(report)) == "");
}

RC_GTEST_PROP(GeneratedReports, RemarksOfADropsondeGiveTheirFirstLevelOfEachKind, ()) {
    const Report report = *dropsondeReports();
    RC_ASSERT(differenceFrom(report, textOf(report)) == "");
}

RC_GTEST_PROP(GeneratedReports, FourPartsInOneTextAreTheFourDecodedOneByOne, ()) {
    const Report report = *fourPartReports();
    std::vector<std::vector<Level>> oneByOne;
    for (const Part& part : report.parts) {
        oneByOne.push_back(Corvane(textOf(part)).allLevels());
    }
    RC_ASSERT(difference(levelsOf(oneByOne), Corvane(textOf(report)).allLevels()) == "");
}

RC_GTEST_PROP(GeneratedReports, AHeadingAddsNoLevel, ()) {
    const Report report = *fourPartReports();
    const std::string heading =
        *rc::gen::element<std::string>("UKAA01 ABCD 011200", "UZNT13 KWBC 301200 CCA", "USUS01 KXYZ 150000 COR 5");
    RC_ASSERT(differenceFrom(report, heading + "\n" + textOf(report)) == "");
}

RC_GTEST_PROP(GeneratedReports, ATerminatorAtTheEndOfAPartChangesNothing, ()) {
    const Report report = *fourPartReports();
    std::string text;
    for (const Part& part : report.parts) {
        text += textOf(part) + *rc::gen::element<std::string>("=", " =", "=\r\n=", "") + "\n";
    }
    RC_ASSERT(differenceFrom(report, text) == "");
    const Corvane withTerminators(text);
    const Corvane without(textOf(report));
    RC_ASSERT(withTerminators.tokens() == without.tokens());
    // A single part with its terminator directly after it.
    const Report single = *onePartReports();
    RC_ASSERT(differenceFrom(single, textOf(single) + "=") == "");
}

RC_GTEST_PROP(GeneratedReports, TheWhiteSpaceBetweenGroupsDoesNotMatter, ()) {
    const Report report = *fourPartReports();
    const auto whiteSpace = rc::gen::container<std::string>(rc::gen::elementOf(std::string(" \t\n\r\v\f")));
    std::string text = *whiteSpace;
    for (const Part& part : report.parts) {
        for (const Group& group : part.groups) {
            text += group.text + *rc::gen::nonEmpty(whiteSpace);
        }
    }
    RC_ASSERT(differenceFrom(report, text) == "");
}

RC_GTEST_PROP(GeneratedReports, AStrayBlankInsideAGroupOfTheRemarksIsJoined, ()) {
    const Report report = *dropsondeReports();
    std::string text;
    for (const Part& part : report.parts) {
        for (const Group& group : part.groups) {
            std::string written = group.text;
            if (!group.cuts.empty() && *rc::gen::arbitrary<bool>()) {
                written.insert(*rc::gen::elementOf(group.cuts), " ");
            }
            text += written + " ";
        }
    }
    RC_ASSERT(differenceFrom(report, text) == "");
}

// The properties above prove nothing about a kind or quantity that the generator never makes.
TEST(GeneratedReports, HoldEveryKindOfLevelAndEveryQuantity) {
    std::set<Corvane::LEVEL_TYPE> kinds;
    std::set<Corvane::LEVEL_FIELD> quantities;
    std::set<std::string> identifiers;
    std::set<bool> knots;
    std::size_t reports = 0;
    rc::Random random(1);
    const auto count = [&](const Report& report) {
        knots.insert(report.station.knots);
        for (const Part& part : report.parts) {
            identifiers.insert(part.groups.front().text);
            for (const Level& level : part.levels) {
                kinds.insert(level.type);
                for (const auto& field : level.fields) {
                    quantities.insert(field.first);
                }
            }
        }
        ++reports;
    };
    for (int index = 0; index < 100; ++index) {
        count(onePartReports()(random.split(), rc::kNominalSize).value());
        count(dropsondeReports()(random.split(), rc::kNominalSize).value());
    }
    EXPECT_EQ(reports, 200u);
    EXPECT_EQ(kinds.size(), 12u) << "all but the generic one";
    EXPECT_EQ(quantities.size(), 12u);
    EXPECT_EQ(identifiers.size(), 16u) << "four code forms of four parts";
    EXPECT_EQ(knots.size(), 2u);
}
