// The decoder, in the order in which a report is read. Sources are sections and groups of WMO-No. 306, Manual on Codes,
// Volume I.1, code forms FM 35 to FM 38, unless another source is named. Characters of a group are counted from 0.
#include <corvane/Corvane.h>

#include "CodeTables.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <iostream>
#include <limits>
#include <locale.h>
#include <locale>
#include <sstream>
#include <utility>

namespace code = corvane::code;

namespace {

constexpr double METRES_PER_SECOND_IN_A_KNOT = 0.5144;
constexpr double NOT_REPORTED = std::numeric_limits<double>::quiet_NaN();

struct TypeLetters {
    std::string_view letters;
    Corvane::WMO_MESSAGE_TYPE type;
};

constexpr std::array<TypeLetters, 4> TYPE_LETTERS{{
    {"TT", Corvane::WMO_TEMP},
    {"UU", Corvane::WMO_TEMP_SHIP},
    {"XX", Corvane::WMO_TEMP_DROP},
    {"II", Corvane::WMO_TEMP_MOBIL},
}};

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// Space, tab, newline, vertical tab, form feed, carriage return: the white space of the classic locale. Every character
// of a report is looked up here; with comparisons instead of the table, decoding takes 2 % longer.
constexpr std::array<bool, 256> WHITE_SPACE = [] {
    std::array<bool, 256> table{};
    for (const char character : {' ', '\t', '\n', '\v', '\f', '\r'}) {
        table[static_cast<unsigned char>(character)] = true;
    }
    return table;
}();

bool isWhiteSpace(char character) {
    return WHITE_SPACE[static_cast<unsigned char>(character)];
}

// text == wanted without a call of memcmp, which == makes even for one character: with ==, decoding takes 5 % longer.
bool is(std::string_view text, std::string_view wanted) {
    return text.size() == wanted.size() && std::equal(wanted.begin(), wanted.end(), text.begin());
}

// What group.substr() would copy; throws what it would throw.
std::string_view substring(const std::string& group, std::size_t position, std::size_t count) {
    if (position > group.size()) {
        static_cast<void>(group.substr(position));
    }
    return std::string_view(group).substr(position, count);
}

// A pressure reported in three digits, in hPa. Below 100 its first digit has been left out, the 1 of 1000 hPa and more.
double standardPressure(double digits) {
    return digits < 100.0 ? digits + 1000.0 : digits;
}

constexpr int NOT_PLAIN = -1;

// The value of a text of one to nine decimal digits, as nearly every number of a report is; otherwise NOT_PLAIN.
// If a stream read these as well, decoding would take more than five times as many instructions.
int plainNumber(std::string_view text) {
    if (text.empty() || text.size() > 9) {
        return NOT_PLAIN;
    }
    int value = 0;
    for (const char character : text) {
        if (!isDigit(character)) {
            return NOT_PLAIN;
        }
        value = value * 10 + (character - '0');
    }
    return value;
}

// Anything but plain digits is left to a stream, which is slow to set up but knows every spelling.
template <typename Number>
Number extract(std::string_view text) {
    const int plain = plainNumber(text);
    if (plain != NOT_PLAIN) {
        return static_cast<Number>(plain);
    }
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    Number value = 0;
    stream >> value;
    return value;
}

// Whether these are the letters of a part that can follow another one. Those of part A are deliberately not among them:
// a report gives its parts in the order A to D.
bool isLaterPart(std::string_view letters) {
    return is(letters, "BB") || is(letters, "CC") || is(letters, "DD");
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// The sections of each part
// ---------------------------------------------------------------------------------------------------------------------

void Corvane::decodePartA() {
    decodeSection1();   // identification and position
    decodeSection2();   // surface and standard isobaric surfaces
    decodeSection3();   // tropopause
    decodeSection4();   // maximum wind
    decodeSection7();   // sounding system and launch time
    decodeSection9();   // regional groups
    decodeSection10();  // national groups
}

void Corvane::decodePartB() {
    decodeSection1();   // identification and position
    decodeSection5();   // significant levels of temperature and humidity
    decodeSection6();   // significant levels of wind
    decodeSection7();   // sounding system and launch time
    decodeSection8();   // clouds
    decodeSection9();   // regional groups
    decodeSection10();  // national groups
}

void Corvane::decodePartC() {
    decodePartA();
}

void Corvane::decodePartD() {
    decodePartB();
}

// ---------------------------------------------------------------------------------------------------------------------
// Construction and reference tables
// ---------------------------------------------------------------------------------------------------------------------

namespace {

struct StandardSurface {
    std::string_view code;
    double pressure;  // hPa
};

constexpr std::array<StandardSurface, 12> STANDARD_SURFACES_A{{
    {"99", 0.0},  // the surface: its pressure is in the report
    {"00", 1000.0},
    {"92", 925.0},
    {"85", 850.0},
    {"70", 700.0},
    {"50", 500.0},
    {"40", 400.0},
    {"30", 300.0},
    {"25", 250.0},
    {"20", 200.0},
    {"15", 150.0},
    {"10", 100.0},
}};

constexpr std::array<StandardSurface, 9> STANDARD_SURFACES_C{{
    {"70", 70.0},
    {"50", 50.0},
    {"30", 30.0},
    {"20", 20.0},
    {"10", 10.0},
    {"07", 7.0},
    {"05", 5.0},
    {"03", 3.0},
    {"01", 1.0},
}};

constexpr std::array<std::string_view, 4> PART_LETTERS{"AA", "BB", "CC", "DD"};

// The openers of section 10, each of national groups.
constexpr std::array<std::string_view, 9> NATIONAL_GROUPS{"61616", "62626", "63636", "64646", "65656",
                                                          "66666", "67676", "68686", "69696"};

}  // namespace

Corvane::Corvane() = default;

Corvane::~Corvane() = default;

Corvane::Corvane(std::string text) : tokenQueue(tokenize(std::move(text))), allTokens(tokenQueue) {
    init();
    decodeAbrHdr();
    while (!tokenQueue.empty()) {
        decodeMMMM();
        switch (part) {
        case PART_A: decodePartA(); break;
        case PART_B: decodePartB(); break;
        case PART_C: decodePartC(); break;
        case PART_D: decodePartD(); break;
        default: break;
        }
    }
}

void Corvane::init() {
    for (const TypeLetters& entry : TYPE_LETTERS) {
        wmoTypes.emplace(entry.letters, entry.type);
    }

    partIds.insert(partIds.end(), PART_LETTERS.begin(), PART_LETTERS.end());

    mandatoryA.reserve(mandatoryA.size() + STANDARD_SURFACES_A.size());
    for (const StandardSurface& surface : STANDARD_SURFACES_A) {
        mandatoryA.push_back({std::string(surface.code), surface.pressure});
    }
    mandatoryC.reserve(mandatoryC.size() + STANDARD_SURFACES_C.size());
    for (const StandardSurface& surface : STANDARD_SURFACES_C) {
        mandatoryC.push_back({std::string(surface.code), surface.pressure});
    }

    // The openers of the national groups, in a member named after the regional ones: they are where section 9 ends.
    regionalGroups.insert(regionalGroups.end(), NATIONAL_GROUPS.begin(), NATIONAL_GROUPS.end());
}

std::string Corvane::wmoType() const {
    switch (wmoMessageType) {
    case WMO_UNKNOWN: return "UNKNOWN";
    case WMO_TEMP: return "TEMP";
    case WMO_TEMP_SHIP: return "TEMP SHIP";
    case WMO_TEMP_DROP: return "TEMP DROP";
    case WMO_TEMP_MOBIL: return "TEMP MOBIL";
    }
    return "";
}

// ---------------------------------------------------------------------------------------------------------------------
// Levels
// ---------------------------------------------------------------------------------------------------------------------

bool Corvane::Level::has(LEVEL_FIELD field) const {
    return fields.find(field) != fields.end();
}

double Corvane::Level::value(LEVEL_FIELD field, double absent) const {
    const auto found = fields.find(field);
    return found != fields.end() ? found->second : absent;
}

std::string Corvane::Level::name() const {
    switch (type) {
    case LT_GENERIC: return "generic";
    case LT_SURFACE: return "surface";
    case LT_MANDATORY: return "mandatory";
    case LT_SIGNIFICANT: return "significant";
    case LT_TROPOPAUSE: return "tropopause";
    case LT_MAXWIND: return "maxwind";
    case LT_150MLAYERWIND: return "150mlayerwind";
    case LT_DEEPLAYERWIND: return "deeplayerwind";
    case LT_MEANBLWIND: return "meanblwind";
    case LT_LASTWINDHEIGHT: return "lastwindheight";
    case LT_RELEASEPOINT: return "releasepoint";
    case LT_SPLASHPOINTWINDINTEG: return "splashpointwindinteg";
    case LT_SPLASHPOINTRAWGPS: return "splashpointrawgps";
    }
    return "unknown";
}

std::string Corvane::Level::fieldName(LEVEL_FIELD field) {
    switch (field) {
    case LF_PRES: return "pres";
    case LF_TDRY: return "tdry";
    case LF_DP: return "dp";
    case LF_WSPD: return "wspd";
    case LF_WDIR: return "wdir";
    case LF_HEIGHT: return "height";
    case LF_VA: return "va";
    case LF_VB: return "vb";
    case LF_TIME:
    case LF_LAT:
    case LF_LON:
    case LF_PRES2: break;  // deliberate: only the header of the program's table names these four
    }
    return "unknown";
}

void Corvane::addLevel(const Level& level) {
    levelStore.emplace_hint(levelStore.end(), level.type, level);
}

void Corvane::addLevel(Level&& level) {
    levelStore.emplace_hint(levelStore.end(), level.type, std::move(level));
}

void Corvane::addFirstLevel(LEVEL_TYPE kind, std::initializer_list<std::pair<const LEVEL_FIELD, double>> fields) {
    if (levelStore.find(kind) == levelStore.end()) {
        Level level(kind);
        level.fields = fields;
        addLevel(std::move(level));
    }
}

std::vector<Corvane::Level> Corvane::allLevels() const {
    std::vector<Level> all;
    all.reserve(levelStore.size());
    for (const auto& entry : levelStore) {
        all.push_back(entry.second);
    }
    return all;
}

std::vector<Corvane::Level> Corvane::levels(std::set<LEVEL_TYPE> types) const {
    std::vector<Level> chosen;
    for (const LEVEL_TYPE kind : types) {
        const auto filed = levelStore.equal_range(kind);
        for (auto entry = filed.first; entry != filed.second; ++entry) {
            chosen.push_back(entry->second);
        }
    }
    return chosen;
}

// ---------------------------------------------------------------------------------------------------------------------
// Groups: splitting the report
// ---------------------------------------------------------------------------------------------------------------------

// A group that is exactly "=" is the terminator of a report and is dropped. From any other group only the first "=" is
// removed, wherever it is, so that "==" becomes the group "=". One search finds the next "=" for all groups before
// it; with a search in every group, decoding takes 10 % longer.
std::deque<std::string> Corvane::tokenize(std::string text) {
    std::deque<std::string> groups;
    const char* at = text.data();
    const char* const end = at + text.size();
    const auto nextTerminator = [&] {
        const void* const found = std::memchr(at, '=', static_cast<std::size_t>(end - at));
        return found != nullptr ? static_cast<const char*>(found) : end;
    };
    const char* terminator = nextTerminator();
    while (true) {
        while (at != end && isWhiteSpace(*at)) {
            ++at;
        }
        if (at == end) {
            return groups;
        }
        const char* const begin = at;
        at = std::find_if(at, end, isWhiteSpace);
        if (at <= terminator) {
            groups.emplace_back(begin, at);
            continue;
        }
        if (at - begin > 1) {
            groups.emplace_back(begin, terminator).append(terminator + 1, at);
        }
        terminator = nextTerminator();
    }
}

std::vector<std::string> Corvane::tokens() const {
    return {allTokens.begin(), allTokens.end()};
}

// ---------------------------------------------------------------------------------------------------------------------
// Groups: the cursor and its faults
// ---------------------------------------------------------------------------------------------------------------------

std::string Corvane::whereAreWe(int n) const {
    std::string groups;
    for (const std::string& group : tokenQueue) {
        if (n <= 0) {
            break;
        }
        --n;
        groups += group;
        groups += ' ';
    }
    return groups;
}

// The three contexts of a fault differ in "at", "at " and "near " and in the space before the dots. This is deliberate:
// people match these texts.

void Corvane::throwErrorMsg(const std::string& msg) const {
    throw msg + " Error detected at " + whereAreWe(6) + "...";
}

void Corvane::throwErrorNear(const std::string& msg) const {
    throw msg + "Error detected near " + whereAreWe(6) + " ...";
}

void Corvane::throwTooFew(int n) const {
    std::string msg = "At least " + std::to_string(n) + " code groups are required. ";
    if (n > 0) {
        msg += "Error detected at" + whereAreWe(6) + " ...";
    }
    throw msg;
}

void Corvane::NEED_TOKENS(int n) const {
    // Compared as an unsigned number: there are never enough groups for a negative count. Deliberate.
    if (static_cast<std::uint32_t>(n) > tokenQueue.size()) {
        throwTooFew(n);
    }
}

void Corvane::SKIP_TOKENS(int n) {
    NEED_TOKENS(n);
    for (; n > 0; --n) {
        tokenQueue.pop_front();
    }
}

void Corvane::NEED_TOKEN_OF_LENGTH(int n) {
    NEED_TOKENS(1);
    const auto length = static_cast<std::size_t>(n);
    if (tokenQueue.front().size() == length) {
        return;
    }
    // A stray space or the end of a line has split the group.
    if (tokenQueue.size() >= 2 && tokenQueue[0].size() + tokenQueue[1].size() == length) {
        tokenQueue[1].insert(0, tokenQueue[0]);
        tokenQueue.pop_front();
        return;
    }
    throwErrorNear("This code group requires exactly " + std::to_string(n) + " characters. ");
}

bool Corvane::frontBeginsWith(std::string_view prefix) const {
    return !tokenQueue.empty() && tokenQueue.front().size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), tokenQueue.front().begin());
}

bool Corvane::frontIs(std::string_view group) const {
    return frontBeginsWith(group) && tokenQueue.front().size() == group.size();
}

bool Corvane::frontIsLaterPart() const {
    return !tokenQueue.empty() && tokenQueue.front().size() == 4 && isLaterPart(substring(tokenQueue.front(), 2, 2));
}

// ---------------------------------------------------------------------------------------------------------------------
// Numbers
// ---------------------------------------------------------------------------------------------------------------------

double Corvane::streamDouble(std::string_view text) {
    return extract<double>(text);
}

int Corvane::streamInt(std::string_view text) {
    return extract<int>(text);
}

double Corvane::strtodDouble(std::string_view text) {
    const int plain = plainNumber(text);
    if (plain != NOT_PLAIN) {
        return plain;
    }
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(std::string(text).c_str(), nullptr, classic);
}

// ---------------------------------------------------------------------------------------------------------------------
// Abbreviated heading
// ---------------------------------------------------------------------------------------------------------------------

// T1T2A1A2ii CCCC YYGGgg (COR BBB) (CCA or CCB)
// USJP01 RJTD 060000 CCA: the heading is kept with a space after the CCA.
// Takes the heading, recognized by the six characters of its first group, once per report; leaves anything else for
// decodeMMMM. Throws nothing. Source: WMO-No. 386, Manual on the Global Telecommunication System, abbreviated headings.
void Corvane::decodeAbrHdr() {
    if (tokenQueue.size() < 3 || tokenQueue.front().size() != 6) {
        return;
    }
    _abrHeader = tokenQueue[0] + " " + tokenQueue[1] + " " + tokenQueue[2];
    SKIP_TOKENS(3);

    if (tokenQueue.size() < 2) {
        return;
    }
    if (frontIs("COR")) {
        // The group after COR is taken with it whatever it is, even an MMMM; deliberate.
        _abrHeader += " COR " + tokenQueue[1];
        SKIP_TOKENS(2);
    }
    if (frontIs("CCA") || frontIs("CCB")) {
        _abrHeader += " " + tokenQueue.front() + " ";
        SKIP_TOKENS(1);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// MiMiMjMj: code form and part
// ---------------------------------------------------------------------------------------------------------------------

// MMMM
// TTBB: a TEMP (TT), part B.
// Takes the group, but only when it is valid. Throws for a length other than four, for unknown type letters, for type
// letters that differ from those of the parts before, and for unknown part letters, checked in this order.
// Source: FM 35 to 38, section 1, MiMiMjMj (code table 2582).
void Corvane::decodeMMMM() {
    NEED_TOKENS(1);
    const std::string& group = tokenQueue.front();
    if (group.size() != 4) {
        throwErrorMsg("WMO type and part identifier (MMMM) must be 4 characters.");
    }

    // From the constant table: the member wmoTypes holds the same one for subclasses and is not used here.
    const std::string_view letters = substring(group, 0, 2);
    const auto* const found = std::find_if(TYPE_LETTERS.begin(), TYPE_LETTERS.end(),
                                           [&](const TypeLetters& entry) { return is(letters, entry.letters); });
    if (found == TYPE_LETTERS.end()) {
        throwErrorMsg("Message type identifier (TT, UU, XX or II) was not found.");
    }
    const WMO_MESSAGE_TYPE previous = std::exchange(wmoMessageType, found->type);
    if (previous != WMO_UNKNOWN && previous != wmoMessageType) {
        throwErrorMsg("Two different WMO message types have been found in this message.");
    }

    const auto partId = std::find(partIds.begin(), partIds.end(), substring(group, 2, 2));
    if (partId == partIds.end()) {
        throwErrorMsg("Part identifier AA, BB, CC or DD was not found.");
    }
    part = static_cast<int>(partId - partIds.begin());
    SKIP_TOKENS(1);
}

// ---------------------------------------------------------------------------------------------------------------------
// Section 1: date and time
// ---------------------------------------------------------------------------------------------------------------------

// YYGGId in parts A and C, YYGGa4 in part B, YYGG/ in part D
// 56121: day 6, winds in knots (YY + 50), 12 UTC; in part A winds up to 100 hPa.
// Takes the group. Throws for a group of fewer than four characters, for an Id not defined for this part, and in part D
// for a last character other than "/". Once a part reports knots, the winds of all later parts are read as knots.
// Source: FM 35 to 38, section 1, YYGGId (code table 1734) and YYGGa4 (code table 0265).
void Corvane::decodeYYGGId_YYGGa4() {
    NEED_TOKENS(1);
    const std::string& group = tokenQueue.front();
    const auto needCharacters = [&](std::size_t count) {
        if (group.size() < count) {
            throwErrorMsg("The date and time group (YYGGId or YYGGa4) must have at least 4 characters.");
        }
    };

    // Deliberately read before the length is checked: a subclass that catches the fault still gets the day and the
    // unit.
    _dayOfMonth = streamInt(substring(group, 0, 2));
    if (_dayOfMonth > 50) {
        _windsInKnots = true;
        _dayOfMonth -= 50;
    }
    needCharacters(2);
    _obsHour = streamInt(substring(group, 2, 2));

    needCharacters(4);
    const std::string_view indicator = substring(group, 4, 1);
    if (part == PART_A || part == PART_C) {
        const auto* const entry =
            std::find_if(code::LAST_WINDS.begin(), code::LAST_WINDS.end(),
                         [&](const code::LastWind& row) { return indicator == std::string_view(&row.id, 1); });
        const bool known = entry != code::LAST_WINDS.end();
        const int pressure = !known ? code::NO_ENTRY : part == PART_A ? entry->partA : entry->partC;
        if (pressure == code::NO_ENTRY) {
            throwErrorMsg("The last wind indicator (Id) is incorrectly coded.");
        }
        (part == PART_A ? lastWindPresA : lastWindPresC) = pressure;
    } else if (part == PART_B) {
        a4 = indicator;
    } else if (!is(indicator, "/")) {
        throwErrorMsg("The last character in the third code group of Part D, section 1, should be /.");
    }
    SKIP_TOKENS(1);
}

// ---------------------------------------------------------------------------------------------------------------------
// Section 1: station and position
// ---------------------------------------------------------------------------------------------------------------------

// TEMP:       YYGGId IIiii
// TEMP SHIP:  D....D YYGGId 99LaLaLa QcLoLoLoLo MMMULaULo
// TEMP DROP:  YYGGId 99LaLaLa QcLoLoLoLo MMMULaULo
// TEMP MOBIL: D....D YYGGId 99LaLaLa QcLoLoLoLo MMMULaULo h0h0h0h0im
// Source: FM 35 to 38, section 1.
void Corvane::decodeSection1() {
    switch (wmoMessageType) {
    case WMO_TEMP:
        decodeYYGGId_YYGGa4();
        decodeBSN();
        break;
    case WMO_TEMP_SHIP:
        decodeCallSign();
        decodeYYGGId_YYGGa4();
        decodePosition();
        decodeMarsden();
        break;
    case WMO_TEMP_DROP:
        decodeYYGGId_YYGGa4();
        decodePosition();
        decodeMarsden();
        break;
    case WMO_TEMP_MOBIL:
        decodeCallSign();
        decodeYYGGId_YYGGa4();
        decodePosition();
        decodeMarsden();
        decodeMobileElev();
        break;
    case WMO_UNKNOWN: break;
    }
}

// IIiii
// 72403: block 72, station 403.
// Takes the group. Throws unless it has five characters, whatever they are.
// Source: FM 35, section 1, IIiii.
void Corvane::decodeBSN() {
    NEED_TOKENS(1);
    if (tokenQueue.front().size() != 5) {
        // The one message without a context: it names the group itself.
        throw "Block and station number is incorrect: " + tokenQueue.front();
    }
    _bsn = tokenQueue.front();
    SKIP_TOKENS(1);
}

// D....D
// 9ZT9MRK
// Takes the group, whatever it is. Source: FM 36 and FM 38, section 1, D....D.
void Corvane::decodeCallSign() {
    NEED_TOKENS(1);
    _callSign = tokenQueue.front();
    SKIP_TOKENS(1);
}

// 99LaLaLa QcLoLoLoLo
// 99241 70830: 24.1 degrees north, 83.0 degrees west.
// Takes both groups. Throws unless all groups that section 1 still needs are there, the first one begins with 99, and
// Qc is a quadrant or "/". Source: FM 36 to 38, section 1, Qc (code table 3333).
void Corvane::decodePosition() {
    NEED_TOKENS(wmoMessageType == WMO_TEMP_MOBIL ? 4 : 3);
    if (!frontBeginsWith("99")) {
        throwErrorMsg("The position group must begin with 99.");
    }
    _latitude = streamDouble(substring(tokenQueue.front(), 2, 3)) / 10.0;
    SKIP_TOKENS(1);

    const std::string& group = tokenQueue.front();
    _longitude = streamDouble(substring(group, 1, 4)) / 10.0;
    const std::string_view quadrant = substring(group, 0, 1);
    if (!is(quadrant, "1") && !is(quadrant, "3") && !is(quadrant, "5") && !is(quadrant, "7") && !is(quadrant, "/")) {
        throwErrorMsg("The quadrant indicator must be 1, 3, 5, 7 or /.");
    }
    if (is(quadrant, "3") || is(quadrant, "5")) {
        _latitude = -_latitude;
    }
    if (is(quadrant, "5") || is(quadrant, "7")) {
        _longitude = -_longitude;
    }
    SKIP_TOKENS(1);
}

// MMMULaULo
// Takes the Marsden square without reading it: the groups before it give the position. Source: FM 36 to 38, section 1.
void Corvane::decodeMarsden() {
    SKIP_TOKENS(1);
}

// h0h0h0h0im
// 01235: 123 feet (im 5 to 8), kept as 37.4904 m.
// Takes the group, but deliberately leaves one without an elevation (////im): the next section then begins with it.
// Throws for a group of fewer than four characters. Source: FM 38, section 1, im (code table 1845).
void Corvane::decodeMobileElev() {
    NEED_TOKENS(1);
    if (frontBeginsWith("////")) {
        return;
    }
    const std::string& group = tokenQueue.front();
    // Read before the length is checked, like the day in section 1.
    mobileElevation = streamDouble(substring(group, 0, 4));
    if (group.size() < 4) {
        throwErrorMsg("The elevation group (h0h0h0h0im) must have at least 4 characters.");
    }
    if (streamInt(substring(group, 4, 1)) > 4) {
        mobileElevation *= code::METRES_IN_A_FOOT;
    }
    SKIP_TOKENS(1);
}

// 3233 is 32.33.
double Corvane::fractionalDegrees(std::string_view digits) {
    return strtodDouble(digits) / 100.0;
}

// ---------------------------------------------------------------------------------------------------------------------
// Temperature and wind groups
// ---------------------------------------------------------------------------------------------------------------------

// TTTDD
// 12305: -12.3 degrees (odd tenths: below zero), dew point 0.5 degrees lower.
// 12456: 12.4 degrees, dew point 6 degrees lower (56 to 99: whole degrees, 6 to 49).
// Takes the group. With /// for TTT nothing is written, with // for DD only the temperature. Throws for a depression
// code of 51 to 55. Source: FM 35, section 2, TTTaDD (code tables 3931 and 0777).
int Corvane::decodeTTTDD(double& temp, double& dewpoint) {
    if (frontBeginsWith("///")) {
        SKIP_TOKENS(1);
        return 0;
    }
    const std::string& group = tokenQueue.front();
    // Read before DD, which throws when the group is too short: the temperature is deliberately written even then.
    temp = streamDouble(substring(group, 0, 3)) / 10.0;
    const std::string_view depressionCode = substring(group, 3, 2);
    if (group[2] % 2 != 0) {  // the parity of the character: "/" for the tenths is odd, hence below zero
        temp = -temp;
    }
    if (is(depressionCode, "//")) {
        SKIP_TOKENS(1);
        return FIRST_WRITTEN;
    }

    const double code = streamDouble(depressionCode);
    if (code > 50.0 && code < 56.0) {
        // 56 is a valid code although the message includes it; deliberate.
        throwErrorMsg("Dewpoint depression code may not be between 51 to 56.");
    }
    dewpoint = temp - (code <= 50.0 ? code / 10.0 : code - 50.0);
    SKIP_TOKENS(1);
    return FIRST_WRITTEN | SECOND_WRITTEN;
}

// ddfff
// 27615: from 275 degrees (the 5 is sent as 500 in the speed) at 115 knots or metres per second.
// Takes the group. With // for dd or /// for fff nothing is written. Source: FM 35, section 2, ddfff.
int Corvane::decodeDDFFF(double& dir, double& speed) {
    const std::string& group = tokenQueue.front();
    const std::string_view fff = substring(group, 2, 3);
    const std::string_view dd = substring(group, 0, 2);
    if (is(fff, "///") || is(dd, "//")) {
        SKIP_TOKENS(1);
        return 0;
    }
    dir = streamDouble(dd) * 10.0;
    speed = streamDouble(fff);
    if (speed >= 500.0) {
        speed -= 500.0;
        dir += 5.0;
    }
    if (_windsInKnots) {
        speed *= METRES_PER_SECOND_IN_A_KNOT;
    }
    SKIP_TOKENS(1);
    return FIRST_WRITTEN | SECOND_WRITTEN;
}

void Corvane::takeTemperature(Level& level) {
    double temp = NOT_REPORTED;
    double dewpoint = NOT_REPORTED;
    const int flags = decodeTTTDD(temp, dewpoint);
    if ((flags & FIRST_WRITTEN) != 0) {
        level.fields[LF_TDRY] = temp;
    }
    if ((flags & SECOND_WRITTEN) != 0) {
        level.fields[LF_DP] = dewpoint;
    }
}

void Corvane::takeWind(Level& level) {
    double dir = NOT_REPORTED;
    double speed = NOT_REPORTED;
    const int flags = decodeDDFFF(dir, speed);
    if ((flags & FIRST_WRITTEN) != 0) {
        level.fields[LF_WDIR] = dir;
    }
    if ((flags & SECOND_WRITTEN) != 0) {
        level.fields[LF_WSPD] = speed;
    }
}

// TTTDD ddfff
// The flags of the wind share the bits of the temperature's, so that 3 may come from the wind alone; deliberate.
int Corvane::decodeTTTDDandDDFFF(double& temp, double& dewpoint, double& dir, double& speed) {
    NEED_TOKENS(2);
    const int temperatureFlags = decodeTTTDD(temp, dewpoint);
    const int windFlags = decodeDDFFF(dir, speed);
    return temperatureFlags | windFlags;
}

// ---------------------------------------------------------------------------------------------------------------------
// Section 2: surface and standard isobaric surfaces
// ---------------------------------------------------------------------------------------------------------------------

// 99P0P0P0 TTTDD ddfff PPhhh TTTDD ddfff ...
// 99014 32259 11504 00140 30057 11506: the surface at 1014 hPa, then 1000 hPa at 140 m.
// Takes every surface of the part in its fixed order, up to an 88 group or the end of the table; none may be missing.
// Throws when the next surface of the table is missing and when groups run out. Source: FM 35, section 2.
void Corvane::decodeSection2() {
    if (part != PART_A) {
        mandatoryA = mandatoryC;  // deliberate, for the rest of the report: part A comes before part C
    }
    for (int index = 0; index < static_cast<int>(mandatoryA.size()); ++index) {
        if (frontBeginsWith("88")) {
            return;
        }
        decodeMandatory(mandatoryA, index);
    }
}

// PPhhh TTTDD (ddfff), 99PPP TTTDD ddfff
// 85489 19027 31524: 850 hPa at 1489 m. 99007 29456 28521: the surface at 1007 hPa.
// Takes two groups, and a third one where Id says so or at the surface. A level with nothing but a pressure is not
// filed. Source: FM 35, section 2.
void Corvane::decodeMandatory(std::vector<MandatoryInfo>& table, int index) {
    NEED_TOKENS(2);
    const MandatoryInfo& standard = table.at(static_cast<std::size_t>(index));
    const bool isSurface = is(standard.code, "99");
    if (!frontBeginsWith(standard.code)) {
        throwErrorMsg("The mandatory significant observation is incorrectly coded.");
    }

    Level level(LT_MANDATORY);
    level.fields[LF_PRES] = standard.pressure;  // a surface group 99/// deliberately stays a standard level at 0 hPa
    const std::string_view hhh = substring(tokenQueue.front(), 2, 3);
    if (!is(hhh, "///")) {
        const double value = streamDouble(hhh);
        if (isSurface) {
            level.type = LT_SURFACE;
            level.fields[LF_PRES] = standardPressure(value);
        } else {
            level.fields[LF_HEIGHT] = mandatoryHeight(standard.code, value);
        }
    }
    SKIP_TOKENS(1);

    takeTemperature(level);

    // The surface, at 0 hPa in the table, always has a wind group.
    const int lastWindPressure = part == PART_A ? lastWindPresA : lastWindPresC;
    if (isSurface || standard.pressure >= lastWindPressure) {
        NEED_TOKENS(1);
        takeWind(level);
    }

    if (level.fields.size() > 1) {
        addLevel(std::move(level));
    }
}

namespace {

// A height is reported in metres up to 700 hPa and in tens of metres above, without its thousands (tens of thousands).
// They follow from where the surface lies. Where it may lie on either side of a boundary, digits above 500 are below
// the boundary; 500 itself is above it. 925 hPa, reported in full, and 1000 hPa, which has a rule of its own, have no
// row.
struct HeightRule {
    std::string_view code;
    double metres;    // in one unit of hhh
    double above500;  // added when hhh is above 500
    double upTo500;   // added when hhh is at most 500
};

constexpr std::array<HeightRule, 9> HEIGHT_RULES_A{{
    {"85", 1.0, 1000.0, 1000.0},
    {"70", 1.0, 2000.0, 3000.0},
    {"50", 10.0, 0.0, 0.0},
    {"40", 10.0, 0.0, 0.0},
    {"30", 10.0, 0.0, 10000.0},
    {"25", 10.0, 0.0, 10000.0},
    {"20", 10.0, 10000.0, 10000.0},
    {"15", 10.0, 10000.0, 10000.0},
    {"10", 10.0, 10000.0, 10000.0},
}};

constexpr std::array<HeightRule, 10> HEIGHT_RULES_C{{
    {"70", 10.0, 10000.0, 10000.0},
    {"50", 10.0, 10000.0, 20000.0},
    {"30", 10.0, 20000.0, 20000.0},
    {"20", 10.0, 20000.0, 20000.0},
    {"10", 10.0, 20000.0, 30000.0},
    {"07", 10.0, 30000.0, 30000.0},
    {"05", 10.0, 30000.0, 30000.0},
    {"03", 10.0, 30000.0, 40000.0},
    {"02", 10.0, 30000.0, 40000.0},  // no surface of section 2; kept for a subclass with a 2 hPa surface
    {"01", 10.0, 40000.0, 50000.0},
}};

template <typename Rules>
double heightBy(const Rules& rules, const std::string& code, double hhh) {
    for (const HeightRule& rule : rules) {
        if (is(code, rule.code)) {
            const double omitted = hhh > 500.0 ? rule.above500 : rule.upTo500;
            // Adding 0 would lose the sign of -0.
            return omitted == 0.0 ? hhh * rule.metres : hhh * rule.metres + omitted;
        }
    }
    return hhh;
}

}  // namespace

// hhh
// 70012 is 3012 m and 70990 is 2990 m; 00620 is 120 m below sea level; in part C 10100 is 31000 m.
// Source: FM 35, section 2, hhh.
double Corvane::mandatoryHeight(const std::string& code, double hhh) const {
    if (part == PART_A) {
        if (is(code, "00")) {  // 500 and more: metres below sea level
            return hhh < 500.0 ? hhh : 500.0 - hhh;
        }
        return heightBy(HEIGHT_RULES_A, code, hhh);
    }
    if (part == PART_C) {
        return heightBy(HEIGHT_RULES_C, code, hhh);
    }
    return hhh;
}

// ---------------------------------------------------------------------------------------------------------------------
// Section 3: tropopause
// ---------------------------------------------------------------------------------------------------------------------

// 88PPP TTTDD ddfff ..., or 88999
// 88267 58545 24020: a tropopause at 267 hPa. 88999: none was found.
// Takes every tropopause and an 88999; leaves the 77 or 66 of section 4. Throws when any other group follows a
// tropopause. Source: FM 35, section 3.
void Corvane::decodeSection3() {
    if (!frontBeginsWith("88")) {
        return;
    }
    while (!tokenQueue.empty() && !frontIs("88999") && !frontBeginsWith("77") && !frontBeginsWith("66")) {
        decodeTrop();
    }
    if (frontIs("88999")) {
        SKIP_TOKENS(1);
    }
}

// 88PPP TTTDD ddfff
// In part C the pressure is in tenths: 88925 is at 92.5 hPa.
// Takes three groups and files the level whatever they give. Source: FM 35, section 3.
void Corvane::decodeTrop() {
    NEED_TOKENS(1);
    if (!frontBeginsWith("88")) {
        throwErrorMsg("The tropopause observation is incorrectly coded.");
    }
    Level level(LT_TROPOPAUSE);
    const std::string_view ppp = substring(tokenQueue.front(), 2, 3);
    if (!is(ppp, "///")) {
        const double pressure = streamDouble(ppp);
        level.fields[LF_PRES] = part == PART_C ? pressure / 10.0 : pressure;
    }
    SKIP_TOKENS(1);

    double temp = NOT_REPORTED;
    double dewpoint = NOT_REPORTED;
    double dir = NOT_REPORTED;
    double speed = NOT_REPORTED;
    const int flags = decodeTTTDDandDDFFF(temp, dewpoint, dir, speed);
    if ((flags & FIRST_WRITTEN) != 0) {
        level.fields[LF_TDRY] = temp;
    }
    if ((flags & SECOND_WRITTEN) != 0) {
        level.fields[LF_DP] = dewpoint;
    }
    // The wind has no bits of its own in the flags of both groups: a tropopause never has a wind, and a wind without a
    // temperature counts as temperature and dew point. Both are deliberate.
    constexpr int DIRECTION_WRITTEN = 4;
    constexpr int SPEED_WRITTEN = 8;
    if ((flags & DIRECTION_WRITTEN) != 0) {
        level.fields[LF_WDIR] = dir;
    }
    if ((flags & SPEED_WRITTEN) != 0) {
        level.fields[LF_WSPD] = speed;
    }
    addLevel(std::move(level));
}

// ---------------------------------------------------------------------------------------------------------------------
// Section 4: maximum wind
// ---------------------------------------------------------------------------------------------------------------------

// 77PPP ddfff (4vbvbvava) or 66PPP ddfff (4vbvbvava) ..., or 77999
// 77298 28535 41011: the maximum wind at 298 hPa, with shears. 77999: there was none.
// Takes every maximum wind and a 77999, the only mark of a missing one; leaves any other group.
// Source: FM 35, section 4.
void Corvane::decodeSection4() {
    while (frontBeginsWith("77") || frontBeginsWith("66")) {
        if (frontIs("77999")) {
            SKIP_TOKENS(1);
            return;
        }
        decodeMaxWind();
    }
}

// 77PPP ddfff (4vbvbvava)
// Takes two groups, and a third one if it begins with 4; files the level whatever they give. Unlike the pressure of a
// tropopause, this one is deliberately not scaled in part C. Source: FM 35, section 4.
void Corvane::decodeMaxWind() {
    NEED_TOKENS(2);
    if (!frontBeginsWith("77") && !frontBeginsWith("66")) {
        throwErrorMsg("The max wind observation is incorrectly coded.");
    }
    Level level(LT_MAXWIND);
    const std::string_view ppp = substring(tokenQueue.front(), 2, 3);
    if (!is(ppp, "///")) {
        level.fields[LF_PRES] = streamDouble(ppp);
    }
    SKIP_TOKENS(1);

    takeWind(level);
    if (frontBeginsWith("4")) {
        // vbvb, the shear below, goes to LF_VA and vava, the shear above, to LF_VB; deliberately crossed.
        const double unit = _windsInKnots ? METRES_PER_SECOND_IN_A_KNOT : 1.0;
        const std::string_view vbvb = substring(tokenQueue.front(), 1, 2);
        if (!is(vbvb, "//")) {
            level.fields[LF_VA] = streamDouble(vbvb) * unit;
        }
        const std::string_view vava = substring(tokenQueue.front(), 3, 2);
        if (!is(vava, "//")) {
            level.fields[LF_VB] = streamDouble(vava) * unit;
        }
        SKIP_TOKENS(1);
    }
    addLevel(std::move(level));
}

// ---------------------------------------------------------------------------------------------------------------------
// Sections 5 and 6: significant levels
// ---------------------------------------------------------------------------------------------------------------------

// nnPPP TTTDD ...
// 00012 10658: in part B 1012 hPa and 10.6 degrees.
// Takes pairs up to 21212 or 31313, which it leaves, or to the end of the report; any other group begins another pair.
// A pair without a temperature is taken but deliberately not filed, unlike in section 6. The surface (nn 00) is a
// significant level like the others here. Throws for half a pair. Source: FM 35, section 5.
void Corvane::decodeSection5() {
    while (!tokenQueue.empty() && !frontIs("21212") && !frontIs("31313")) {
        NEED_TOKENS(2);
        Level level(LT_SIGNIFICANT);
        double pressure = NOT_REPORTED;
        const bool placed = decodeSignificantPressure(pressure);
        level.fields[LF_PRES] = pressure;
        takeTemperature(level);
        if (placed && level.fields.size() > 1) {
            addLevel(std::move(level));
        }
    }
}

// 21212 nnPPP dddff ...
// 21212 00015 27010: in part B 1015 hPa, from 270 degrees at 10 knots or metres per second.
// Takes 21212 and pairs up to 31313, which it leaves, or to the end of the report. A pair without a wind is
// deliberately filed with its pressure alone. Throws when the section does not begin with 21212, and for half a pair.
// Source: FM 35, section 6.
void Corvane::decodeSection6() {
    if (tokenQueue.empty() || frontIs("31313")) {
        return;
    }
    if (!frontIs("21212")) {
        throwErrorMsg("Section 6 must begin with 21212.");
    }
    SKIP_TOKENS(1);

    while (!tokenQueue.empty() && !frontIs("31313")) {
        NEED_TOKENS(2);
        Level level(LT_SIGNIFICANT);
        double pressure = NOT_REPORTED;
        const bool placed = decodeSignificantPressure(pressure);
        level.fields[LF_PRES] = pressure;
        takeWind(level);
        if (placed) {
            addLevel(std::move(level));
        }
    }
}

// nnPPP
// 11850: 850 hPa. In part B 00015 is 1015 hPa; in part D 11700 is 70.0 hPa. The level number nn is not checked.
// Takes the group. Source: FM 35, sections 5 and 6.
bool Corvane::decodeSignificantPressure(double& pressure) {
    const std::string_view ppp = substring(tokenQueue.front(), 2, 3);
    const bool given = !ppp.empty();
    if (given) {
        pressure = streamDouble(ppp);
        if (part == PART_B) {
            pressure = standardPressure(pressure);
        } else if (part == PART_D) {
            pressure /= 10.0;
        }
    }
    SKIP_TOKENS(1);
    return given;
}

// ---------------------------------------------------------------------------------------------------------------------
// Sections 7 and 8: sounding system and launch time, clouds
// ---------------------------------------------------------------------------------------------------------------------

// 31313 srrarasasa 8GGgg (9snTwTwTw)
// 31313 58708 81102: radiation correction 5, sounding system 87, tracking 08, launched at 11:02 UTC.
// Takes two groups and deliberately leaves the time group, which sections 9 and 10 skip. Throws when groups are
// missing and when the time group does not begin with 8. Source: FM 35, section 7, sr, rara, sasa (code tables 3849,
// 3685, 3872).
void Corvane::decodeSection7() {
    if (!frontIs("31313")) {
        return;
    }
    NEED_TOKENS(3);
    SKIP_TOKENS(1);

    const std::string& system = tokenQueue.front();
    sr = system.substr(0, 1);
    rara = system.substr(1, 2);
    sasa = system.substr(3, 2);
    SKIP_TOKENS(1);

    if (!frontBeginsWith("8")) {
        throwErrorMsg("The first character of the observation time code group in section 7 must be \"8\".");
    }
    _obsTime = streamInt(substring(tokenQueue.front(), 1, 4));

    // Deliberately never true: the time group is still in front of the sea-surface temperature of a TEMP SHIP.
    if (wmoMessageType == WMO_TEMP_SHIP && frontBeginsWith("9")) {
        SKIP_TOKENS(1);
    }
}

// 41414 NhCLhCMCH
// Takes both groups without reading the clouds. After a section 7 its time group is still in front, so that section 8
// is not found; sections 9 and 10 then skip it. Throws when the clouds are missing. Source: FM 35, section 8.
void Corvane::decodeSection8() {
    if (!frontIs("41414")) {
        return;
    }
    // One at a time: the message about missing clouds asks for one group and does not show 41414.
    SKIP_TOKENS(1);
    SKIP_TOKENS(1);
}

// ---------------------------------------------------------------------------------------------------------------------
// Sections 9 and 10: regional and national groups
// ---------------------------------------------------------------------------------------------------------------------

// 51515 ... 59595 ...
// 51515 10164 00075: the openers are skipped like any other group.
// Takes every group up to an opener of section 10 or a group of any length whose characters 2 and 3 are the letters of
// a later part. Section 10 checks the length as well; the difference is deliberate. Source: FM 35, section 9.
void Corvane::decodeSection9() {
    while (!tokenQueue.empty()) {
        const std::string& group = tokenQueue.front();
        if (std::find(regionalGroups.begin(), regionalGroups.end(), group) != regionalGroups.end() ||
            isLaterPart(substring(group, 2, 2))) {
            return;
        }
        SKIP_TOKENS(1);
    }
}

// 61616 ... 69696 ...
// 61616 AF302 0715A MARIA OB 03 62626 MBL WND 29023
// Takes every group up to a later part, those after 62626 as remarks of a dropsonde. Source: FM 35, section 10.
void Corvane::decodeSection10() {
    while (!tokenQueue.empty() && !frontIsLaterPart()) {
        if (frontIs("62626")) {
            decode62626();
        } else {
            SKIP_TOKENS(1);
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Remarks of a dropsonde
// ---------------------------------------------------------------------------------------------------------------------

// 62626 REL 1532N06587W 023155 SPG 1529N06581W 024152 MBL WND 29023 EYEWALL 270 ...
// Takes 62626 and every group up to a later part, in any part and any code form. Storm features (EYE, CENTER, RAINBAND,
// MXWNDBND) and plain language are skipped one group at a time, EYEWALL together with its bearing. Throws for a
// known remark that is incomplete or garbled. Source: National Hurricane Operations Plan, TEMP DROP code, 62626.
void Corvane::decode62626() {
    SKIP_TOKENS(1);
    while (!tokenQueue.empty() && !frontIsLaterPart()) {
        if (frontIs("WL")) {
            NEED_TOKEN_OF_LENGTH(5);  // WL 150 becomes WL150
        }
        if (frontIs("REL") || frontIs("SPG") || frontIs("SPL")) {
            decodeRELSPGSPL();
        } else if (frontIs("AEV")) {
            SKIP_TOKENS(1);
            NEED_TOKEN_OF_LENGTH(5);
            SKIP_TOKENS(1);
        } else if (frontIs("WL150")) {
            decodeWL150();
        } else if (frontIs("DLM")) {
            decodeDLMWND();
        } else if (frontIs("MBL")) {
            decodeMBLWND();
        } else if (frontIs("LST")) {
            decodeLSTWND();
        } else if (frontIs("LAST")) {
            SKIP_TOKENS(1);
            NEED_TOKEN_OF_LENGTH(6);
            if (!frontIs("REPORT")) {
                throwErrorNear("LAST must be followed by REPORT. ");
            }
            SKIP_TOKENS(1);
        } else if (frontIs("EYEWALL")) {
            SKIP_TOKENS(2);
        } else {
            SKIP_TOKENS(1);
        }
    }
}

// REL position hhmmss, SPG position hhmmss, SPL position hhmm
// REL 1532N06587W 023155: released at 15.32 degrees north and 65.87 degrees west, at 02:31:55 UTC.
// Takes three groups, joining a position or time that is split. Only the first remark of each keyword is filed. Throws
// for a group of another length and for a position that cannot be read. Source: National Hurricane Operations
// Plan, TEMP DROP code, 62626.
void Corvane::decodeRELSPGSPL() {
    NEED_TOKENS(3);
    LEVEL_TYPE kind = LT_GENERIC;
    if (frontIs("REL")) {
        kind = LT_RELEASEPOINT;
    } else if (frontIs("SPG")) {
        kind = LT_SPLASHPOINTRAWGPS;
    } else if (frontIs("SPL")) {
        kind = LT_SPLASHPOINTWINDINTEG;
    } else {
        throwErrorMsg("REL, SPG or SPL is expected");  // deliberate: the one message without a full stop
    }
    SKIP_TOKENS(1);

    NEED_TOKEN_OF_LENGTH(11);
    double lat = 0.0;
    double lon = 0.0;
    decodeRelSpgSplLatLon(tokenQueue.front(), lat, lon);
    SKIP_TOKENS(1);

    NEED_TOKEN_OF_LENGTH(kind == LT_SPLASHPOINTWINDINTEG ? 4 : 6);
    const double time = strtodDouble(tokenQueue.front());
    SKIP_TOKENS(1);
    addFirstLevel(kind, {{LF_TIME, time}, {LF_LAT, lat}, {LF_LON, lon}});
}

// Latitude and N or S, longitude and E or W, both in hundredths of a degree
// 3233N06956W: 32.33 degrees north, 69.56 degrees west. Aircraft send hundredths of a degree: 06587W occurs, and
// 87 cannot be minutes. Where an old report gives minutes, they are not converted.
// One valid letter is enough: any letter other than N counts as S, any other than E as W; deliberate. Takes nothing:
// the group is left to the caller. Throws when a piece is missing or neither letter is valid.
void Corvane::decodeRelSpgSplLatLon(std::string_view position, double& lat, double& lon) const {
    std::size_t at = 0;
    const auto takeDigits = [&] {
        const std::size_t begin = at;
        while (at < position.size() && isDigit(position[at])) {
            ++at;
        }
        return position.substr(begin, at - begin);
    };
    const auto takeCharacter = [&] {
        const std::string_view character = position.substr(at, 1);
        at += character.size();
        return character;
    };
    const std::string_view latDigits = takeDigits();
    const std::string_view latHemisphere = takeCharacter();
    const std::string_view lonDigits = takeDigits();
    const std::string_view lonHemisphere = takeCharacter();

    const bool complete = !latDigits.empty() && !latHemisphere.empty() && !lonDigits.empty() && !lonHemisphere.empty();
    const bool latKnown = is(latHemisphere, "N") || is(latHemisphere, "S");
    const bool lonKnown = is(lonHemisphere, "E") || is(lonHemisphere, "W");
    if (!complete || (!latKnown && !lonKnown)) {
        // Deliberately the message for SPL, too.
        throwErrorMsg("REL and SPG position must be coded as 3233N06956W.");
    }
    lat = strtodDouble(latDigits) / 100.0 * (is(latHemisphere, "N") ? 1.0 : -1.0);
    lon = strtodDouble(lonDigits) / 100.0 * (is(lonHemisphere, "E") ? 1.0 : -1.0);
}

// WL150 dddff hhh
// WL150 28523 080: mean wind of the lowest 150 m, from 285 degrees at 23 knots, centred at 80 m.
// Takes three groups, joining one that is split. Only the first is filed, and only with a wind.
// Source: National Hurricane Operations Plan, TEMP DROP code, 62626.
void Corvane::decodeWL150() {
    NEED_TOKENS(3);
    SKIP_TOKENS(1);

    NEED_TOKEN_OF_LENGTH(5);
    double dir = NOT_REPORTED;
    double speed = NOT_REPORTED;
    const int flags = decodeDDFFF(dir, speed);

    NEED_TOKEN_OF_LENGTH(3);
    const double height = strtodDouble(tokenQueue.front());
    SKIP_TOKENS(1);

    if (flags != 0) {
        addFirstLevel(LT_150MLAYERWIND, {{LF_WSPD, speed}, {LF_WDIR, dir}, {LF_HEIGHT, height}});
    }
}

// DLM WND dddff PPPppp
// DLM WND 29525 007410: mean wind of the layer from 1007 to 410 hPa.
// Takes four groups, joining one that is split. Only the first is filed, deliberately even without a wind, unlike
// WL150. Throws when WND is missing. Source: National Hurricane Operations Plan, TEMP DROP code, 62626.
void Corvane::decodeDLMWND() {
    NEED_TOKENS(4);
    SKIP_TOKENS(1);
    if (!frontIs("WND")) {
        throwErrorMsg("DLM must be followed by WND.");
    }
    SKIP_TOKENS(1);

    NEED_TOKEN_OF_LENGTH(5);
    double dir = NOT_REPORTED;
    double speed = NOT_REPORTED;
    decodeDDFFF(dir, speed);

    NEED_TOKEN_OF_LENGTH(6);
    const double pressure = standardPressure(strtodDouble(substring(tokenQueue.front(), 0, 3)));
    const double pressure2 = standardPressure(strtodDouble(substring(tokenQueue.front(), 3, 3)));
    SKIP_TOKENS(1);
    addFirstLevel(LT_DEEPLAYERWIND, {{LF_PRES, pressure}, {LF_WSPD, speed}, {LF_WDIR, dir}, {LF_PRES2, pressure2}});
}

// MBL WND dddff
// MBL WND 29023: mean wind of the boundary layer, from 290 degrees at 23 knots.
// Takes three groups, joining one that is split. Only the first is filed, deliberately even without a wind, unlike
// WL150. Throws when WND is missing. Source: National Hurricane Operations Plan, TEMP DROP code, 62626.
void Corvane::decodeMBLWND() {
    NEED_TOKENS(3);
    SKIP_TOKENS(1);
    if (!frontIs("WND")) {
        throwErrorMsg("MBL must be followed by WND.");
    }
    SKIP_TOKENS(1);

    NEED_TOKEN_OF_LENGTH(5);
    double dir = NOT_REPORTED;
    double speed = NOT_REPORTED;
    decodeDDFFF(dir, speed);

    addFirstLevel(LT_MEANBLWIND, {{LF_WSPD, speed}, {LF_WDIR, dir}});
}

// LST WND hhh
// LST WND 013: the last wind was measured at 13 m.
// Takes three groups, joining one that is split. Only the first is filed. Throws when WND is missing.
// Source: National Hurricane Operations Plan, TEMP DROP code, 62626.
void Corvane::decodeLSTWND() {
    NEED_TOKENS(3);
    SKIP_TOKENS(1);
    if (!frontIs("WND")) {
        throwErrorMsg("LST must be followed by WND.");
    }
    SKIP_TOKENS(1);

    NEED_TOKEN_OF_LENGTH(3);
    const double height = strtodDouble(tokenQueue.front());
    SKIP_TOKENS(1);
    addFirstLevel(LT_LASTWINDHEIGHT, {{LF_HEIGHT, height}});
}

// ---------------------------------------------------------------------------------------------------------------------
// Profile and dump
// ---------------------------------------------------------------------------------------------------------------------

std::vector<Corvane::Level> Corvane::profile() const {
    std::map<double, Level> merged;
    for (const Level& level : levels({LT_SURFACE, LT_MANDATORY, LT_SIGNIFICANT})) {
        const auto pressure = level.fields.find(LF_PRES);
        if (pressure == level.fields.end()) {
            continue;
        }
        Level& target = merged.try_emplace(pressure->second, LT_GENERIC).first->second;
        for (const auto& field : level.fields) {
            target.fields[field.first] = field.second;
        }
    }

    std::vector<Level> ascending;
    ascending.reserve(merged.size());
    for (auto& entry : merged) {
        ascending.push_back(std::move(entry.second));
    }
    return ascending;
}

std::ostream& operator<<(std::ostream& os, const Corvane& decoder) {
    for (const Corvane::Level& level : decoder.profile()) {
        for (const auto& field : level.fields) {
            std::cout << std::right << std::setw(6) << Corvane::Level::fieldName(field.first) << ": "  //
                      << std::left << std::setw(8) << field.second;
        }
        std::cout << std::endl;
    }
    return os;
}
