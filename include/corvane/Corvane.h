/// @file
/// Decodes upper-air sounding reports in the WMO alphanumeric code forms FM 35 TEMP, FM 36 TEMP SHIP, FM 37 TEMP DROP
/// and FM 38 TEMP MOBIL (WMO-No. 306, Manual on Codes, Volume I.1).
///
/// A report is plain text: code groups separated by white space.
///
///     TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88999 77999
///
/// This is part A (AA) of a TEMP (TT) from station 72201, observed on day 6 (56: winds in knots) at 00 UTC, with winds
/// up to 100 hPa (Id 1). At the surface (99) the pressure is 1014 hPa, the temperature is 32.2 degrees, the dew point
/// is 9 degrees lower, and the wind blows from 115 degrees at 4 knots. The 1000 hPa surface (00) is at 140 m. To decode
/// the report and print its levels:
///
///     try {
///         const Corvane report(text);
///         for (const Corvane::Level& level : report.allLevels()) {
///             std::cout << level.name();
///             if (level.has(Corvane::LF_HEIGHT)) {        // the report may not give it
///                 std::cout << " at " << level.value(Corvane::LF_HEIGHT) << " m";
///             }
///             std::cout << '\n';
///         }
///     } catch (const std::string& fault) {                // a coding fault: what is wrong, and the groups there
///         std::cerr << fault << '\n';
///     } catch (const std::out_of_range& fault) {          // a group is shorter than what is read from it
///         std::cerr << fault.what() << '\n';
///     }
///
/// One object holds one report, which the constructor decodes completely. A report may have several parts, all of one
/// code form and preferably of one station. Units are hectopascals, geopotential metres, degrees Celsius, degrees true
/// and metres per second; LT_MAXWIND, LF_TIME, LF_LAT and LF_LON say where this does not hold. Speeds in knots are
/// converted; once a part reports knots, all later speeds are read as knots. Objects share nothing: each may be used in
/// a thread of its own.
#ifndef CORVANE_CORVANE_H
#define CORVANE_CORVANE_H

#if __cplusplus < 201703L
#error "corvane needs C++17: compile with -std=c++17 or later"
#endif

#if __has_include(<corvane/Version.h>)
#include <corvane/Version.h>  // made by the build: CORVANE_VERSION "1.0.0", CORVANE_VERSION_MAJOR, _MINOR and _PATCH
#endif

#include <deque>
#include <initializer_list>
#include <iosfwd>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#if defined(__GNUC__)
#define CORVANE_API __attribute__((visibility("default")))
#else
#define CORVANE_API
#endif

/// One decoded sounding report.
class CORVANE_API Corvane {
public:
    /// The code form of a report, from the first two letters of MMMM.
    enum WMO_MESSAGE_TYPE : int {
        WMO_UNKNOWN = 0,    ///< no part identified yet
        WMO_TEMP = 1,       ///< TT: FM 35 TEMP, fixed land station
        WMO_TEMP_SHIP = 2,  ///< UU: FM 36 TEMP SHIP, sea station
        WMO_TEMP_DROP = 3,  ///< XX: FM 37 TEMP DROP, sonde released by a carrier balloon or an aircraft
        WMO_TEMP_MOBIL = 4  ///< II: FM 38 TEMP MOBIL, mobile land station
    };

    /// The kind of a level. Levels are kept in ascending order of these values. The kinds from LT_150MLAYERWIND on come
    /// from the remarks of a dropsonde; only the first remark of each is kept.
    enum LEVEL_TYPE : int {
        LT_GENERIC = 0,                ///< a merged level of profile()
        LT_SURFACE = 1,                ///< the surface, 99PPP of section 2
        LT_MANDATORY = 2,              ///< a standard isobaric surface, section 2; also a surface group 99///, at 0 hPa
        LT_SIGNIFICANT = 3,            ///< a significant level, section 5 (temperature) or 6 (wind, or none)
        LT_TROPOPAUSE = 4,             ///< a tropopause, section 3; never with a wind
        LT_MAXWIND = 5,                ///< a level of maximum wind, section 4; from part C in tenths of hPa
        LT_150MLAYERWIND = 6,          ///< mean wind of the lowest 150 m, remark WL150
        LT_DEEPLAYERWIND = 7,          ///< mean wind of a deep layer, remark DLM WND
        LT_MEANBLWIND = 8,             ///< mean boundary-layer wind, remark MBL WND
        LT_LASTWINDHEIGHT = 9,         ///< height of the last reported wind, remark LST WND
        LT_RELEASEPOINT = 10,          ///< where the sonde was released, remark REL
        LT_SPLASHPOINTWINDINTEG = 11,  ///< where it hit the surface, from the integrated wind, remark SPL
        LT_SPLASHPOINTRAWGPS = 12      ///< where it hit the surface, from its GPS, remark SPG
    };

    /// A quantity of a level.
    enum LEVEL_FIELD : int {
        LF_PRES = 0,    ///< pressure, hPa
        LF_TDRY = 1,    ///< air temperature, degrees Celsius
        LF_DP = 2,      ///< dew point, degrees Celsius
        LF_WSPD = 3,    ///< wind speed, m/s
        LF_WDIR = 4,    ///< direction from which the wind comes, degrees true
        LF_HEIGHT = 5,  ///< height, geopotential metres; metres as coded in WL150 and LST WND
        LF_VA = 6,      ///< first wind-shear value of a maximum wind (vbvb, the kilometre below), m/s
        LF_VB = 7,      ///< second wind-shear value of a maximum wind (vava, the kilometre above), m/s
        LF_TIME = 8,    ///< time of a release or splash point, its digits as one number: hhmmss, or hhmm for SPL
        LF_LAT = 9,     ///< latitude of a release or splash point, degrees, south negative; see LF_LON
        LF_LON = 10,    ///< longitude, degrees, west negative. Both are the digits divided by 100: aircraft send
                        ///< hundredths of a degree. Minutes, as in some old reports, are not converted
        LF_PRES2 = 11   ///< second pressure of a deep layer, hPa
    };

    /// One point of the report in the vertical or on the flight track: its kind and what was reported there.
    struct CORVANE_API Level {
        /// The quantities that the report gives, in the units of LEVEL_FIELD. A quantity that it does not give is
        /// absent, with two exceptions for solidi. As a pressure (99///, 22///) and in the times, heights and pressures
        /// of remarks they are read as 0; below 100 hPa, 1000 are then added in part B and in DLM WND. The dew point
        /// (and temperature) of a tropopause with a wind and the winds of DLM WND and MBL WND are filed as a quiet NaN.
        /// The remarks of a dropsonde are read as strtod reads them, so that a garbled one may also give nan, -nan, an
        /// infinity or a number in hexadecimal (`LST WND nan`, `REL 3233N06956W 0x1F2A`).
        std::map<LEVEL_FIELD, double> fields;
        /// The kind of the level.
        LEVEL_TYPE type;

        /// A level of this kind without any quantity. Implicit, so that a kind can stand for a level in comparisons.
        Level(LEVEL_TYPE kind = LT_GENERIC) : type(kind) {}

        /// Whether the report gives this quantity. True also for one that is filed as a NaN.
        bool has(LEVEL_FIELD field) const;

        /// The quantity, or `absent` where the report does not give it. Throws nothing, unlike fields.at(), whose
        /// std::out_of_range looks like that of a group that is too short.
        double value(LEVEL_FIELD field, double absent = std::numeric_limits<double>::quiet_NaN()) const;

        /// The kind as text ("surface", "mandatory", ...); "unknown" for any other value.
        std::string name() const;

        /// The name of a quantity as the text dump shows it: "pres" to "vb"; "unknown" for LF_TIME to LF_PRES2, which
        /// only the table of the program names, and for any other value.
        static std::string fieldName(LEVEL_FIELD field);
    };

    /// An object without a report: no groups, no levels, empty reference tables.
    Corvane();

    /// Decodes one report.
    /// @param text the report: code groups separated by white space, with or without an abbreviated heading, in one or
    ///        more parts. An empty text gives an object without levels.
    /// @throws std::string on a coding fault. The message ends with up to six groups, from the fault on; the one about
    ///         the block and station number ends with that group alone.
    /// @throws std::out_of_range when a group is too short for the characters read from it.
    /// @throws std::bad_alloc when memory runs out.
    explicit Corvane(std::string text);

    virtual ~Corvane();
    Corvane(const Corvane&) = default;             ///< Copies the whole report.
    Corvane(Corvane&&) = default;                  ///< Takes over the report.
    Corvane& operator=(const Corvane&) = default;  ///< Copies the whole report.
    Corvane& operator=(Corvane&&) = default;       ///< Takes over the report.

    /// The abbreviated heading T1T2A1A2ii CCCC YYGGgg with its correction indicator, its groups separated by single
    /// spaces, with a space after a CCA or CCB. Empty when the text begins without one (WMO-No. 386, abbreviated
    /// headings).
    std::string abrHeader() const { return _abrHeader; }

    // Station, position, day and hour are those of the last part decoded. A number given as solidi is 0.

    /// Block and station number IIiii of a TEMP; otherwise empty (section 1).
    std::string bsn() const { return _bsn; }

    /// Call sign D....D of a TEMP SHIP or TEMP MOBIL; otherwise empty (section 1).
    std::string callSign() const { return _callSign; }

    /// Latitude in degrees, north positive, of a TEMP SHIP, TEMP DROP or TEMP MOBIL; 0 in a TEMP (99LaLaLa, section 1).
    double latitude() const { return _latitude; }

    /// Longitude in degrees, east positive, like latitude() (QcLoLoLoLo, section 1).
    double longitude() const { return _longitude; }

    /// Day of the month YY, less the 50 that marks knots; 0 before a part is decoded (section 1).
    int dayOfMonth() const { return _dayOfMonth; }

    /// Whether a part of the report gives its wind speeds in knots (YY above 50, section 1). The speeds of the levels
    /// are in m/s either way.
    bool windsInKnots() const { return _windsInKnots; }

    /// Hour of the observation GG, UTC; -1 before a part is decoded (section 1).
    int obsHour() const { return _obsHour; }

    /// Time of launch GGgg, hours and minutes as one number (0930 is 930), UTC, from the last section 7 of the report
    /// (8GGgg); -1 without one.
    int obsTime() const { return _obsTime; }

    /// The code form as text: "TEMP", "TEMP SHIP", "TEMP DROP", "TEMP MOBIL", or "UNKNOWN" before a part is identified.
    std::string wmoType() const;

    /// Every group of the report, of all its parts and in its order, without the "=" that ends it.
    std::vector<std::string> tokens() const;

    /// Every level, by ascending kind, and in the order of the report within a kind. Nothing is merged: the surface of
    /// part A and the first significant level of part B are two levels.
    std::vector<Level> allLevels() const;

    /// Calls `visit(level)` for every level in the order of allLevels(), with the object's own `const Level&`: nothing
    /// is copied.
    template <typename Visit>
    void forEachLevel(Visit visit) const {
        for (const auto& entry : levelStore) {
            visit(entry.second);
        }
    }

    /// The levels of the kinds in `types`, ordered like allLevels().
    std::vector<Level> levels(std::set<LEVEL_TYPE> types) const;

    /// The sounding as one profile: the surface, the standard and the significant levels that have a pressure, lowest
    /// pressure (greatest height) first. Levels of one pressure are merged into one of kind LT_GENERIC. Where they give
    /// the same quantity, a significant level prevails over a standard one, and that over the surface; within a kind,
    /// the later one prevails.
    std::vector<Level> profile() const;

protected:
    // The decoder's state, its cursor and its section decoders are open to a subclass, so that a test can drive each of
    // them. The source says what each decoder reads, takes, leaves and throws, in the order of a report.
    /// @cond

    /// A standard isobaric surface: its two-digit indicator PP and its pressure in hPa.
    struct MandatoryInfo {
        std::string code;
        double pressure;
    };

    /// Orders levels by kind. A kind on its own becomes an empty level of that kind for the comparison.
    struct LevelComparatorByType {
        bool operator()(const Level& first, const Level& second) const { return first.type < second.type; }
    };

    /// Values of `part`.
    static constexpr int PART_A = 0;
    static constexpr int PART_B = 1;
    static constexpr int PART_C = 2;
    static constexpr int PART_D = 3;
    static constexpr int NO_PART = 4;  ///< none identified yet

    /// Result flags of the group decoders: the first output was written, the second output was written.
    static constexpr int FIRST_WRITTEN = 1;
    static constexpr int SECOND_WRITTEN = 2;

    std::string _abrHeader;
    std::string _bsn;
    std::string _callSign;
    double _latitude = 0.0;
    double _longitude = 0.0;
    int _dayOfMonth = 0;
    bool _windsInKnots = false;
    int _obsHour = -1;
    int _obsTime = -1;
    std::string a4;                                    ///< type of measuring equipment, from YYGGa4 of part B
    std::string sr;                                    ///< solar and infrared radiation correction, section 7
    std::string rara;                                  ///< radiosonde and sounding system, section 7
    std::string sasa;                                  ///< tracking technique and status of the system, section 7
    std::deque<std::string> tokenQueue;                ///< groups not yet decoded, front first
    std::deque<std::string> allTokens;                 ///< every group of the report
    std::map<std::string, WMO_MESSAGE_TYPE> wmoTypes;  ///< type letters of MMMM to code form, for subclasses
    std::vector<MandatoryInfo> mandatoryA;             ///< standard surfaces of part A, in the order of section 2
    std::vector<MandatoryInfo> mandatoryC;             ///< standard surfaces of part C, in the order of section 2
    WMO_MESSAGE_TYPE wmoMessageType = WMO_UNKNOWN;
    int part = NO_PART;                       ///< the part being decoded; the index into partIds
    int lastWindPresA = 0;                    ///< hPa named by Id of part A; 9999: no winds aloft
    int lastWindPresC = 0;                    ///< hPa named by Id of part C; 9999: no winds
    double mobileElevation = 0.0;             ///< elevation of a mobile station, m
    std::vector<std::string> partIds;         ///< part letters of MMMM, in the order of PART_A to PART_D
    std::vector<std::string> regionalGroups;  ///< openers of section 10, the national groups 61616 to 69696; see init()
    std::multimap<LEVEL_TYPE, Level, LevelComparatorByType> levelStore;

    /// Fills the reference tables: wmoTypes, partIds, mandatoryA, mandatoryC, regionalGroups. To be called once per
    /// object: it appends.
    void init();

    /// Splits a text into groups at white space and removes the terminator "=".
    static std::deque<std::string> tokenize(std::string text);

    /// Files a level after those of its kind, as it is.
    void addLevel(const Level& level);
    void addLevel(Level&& level);

    /// Files a level of these quantities unless one of its kind is filed already.
    void addFirstLevel(LEVEL_TYPE kind, std::initializer_list<std::pair<const LEVEL_FIELD, double>> fields);

    // The cursor. Whatever throws here throws a std::string and leaves the queue as it is.

    /// The first `n` groups of the queue, fewer if fewer remain, each followed by a space.
    std::string whereAreWe(int n) const;
    /// Throws `msg` with the context " Error detected at ...".
    [[noreturn]] void throwErrorMsg(const std::string& msg) const;
    /// Throws `msg`, which ends with a space, with the context "Error detected near ...".
    [[noreturn]] void throwErrorNear(const std::string& msg) const;
    /// Throws the message that `n` groups are required, with the context "Error detected at..." when `n` is above 0.
    [[noreturn]] void throwTooFew(int n) const;
    /// Throws unless `n` groups remain.
    void NEED_TOKENS(int n) const;
    /// Removes `n` groups; throws, and removes none, if fewer remain.
    void SKIP_TOKENS(int n);
    /// Makes sure that the front group has `n` characters; joins it with the next group if that gives `n`.
    void NEED_TOKEN_OF_LENGTH(int n);
    /// Whether a group remains and the front group begins with `prefix`.
    bool frontBeginsWith(std::string_view prefix) const;
    /// Whether a group remains and the front group is `group`.
    bool frontIs(std::string_view group) const;
    /// Whether the front group is the MMMM of a later part: four characters, the last two BB, CC or DD.
    bool frontIsLaterPart() const;

    // Number readers, independent of the global locale. Each reads the number at the start of a text; 0 without one.

    /// A double as `stream >> number` reads it in the classic locale.
    static double streamDouble(std::string_view text);
    /// An int as `stream >> number` reads it in the classic locale.
    static int streamInt(std::string_view text);
    /// A double as strtod reads it in the "C" locale.
    static double strtodDouble(std::string_view text);

    // Heading and identifier.

    void decodeAbrHdr();
    void decodeMMMM();

    // The parts, after their MMMM.

    void decodePartA();
    void decodePartB();
    void decodePartC();
    void decodePartD();

    // Section 1: date, time, station and position.

    void decodeSection1();
    void decodeYYGGId_YYGGa4();
    void decodeBSN();
    void decodeCallSign();
    void decodePosition();
    void decodeMarsden();
    void decodeMobileElev();
    /// Hundredths of a degree as degrees. No decoder calls it; subclasses may.
    static double fractionalDegrees(std::string_view digits);

    // Temperature and wind groups. The caller makes sure that a group remains; it is taken. An output whose flag is
    // clear keeps its value.

    /// Reads TTTDD, in degrees Celsius.
    int decodeTTTDD(double& temp, double& dewpoint);
    /// Reads ddfff, in degrees and m/s.
    int decodeDDFFF(double& dir, double& speed);
    /// Reads TTTDD into the temperature and dew point of a level, as far as it gives them.
    void takeTemperature(Level& level);
    /// Reads ddfff into the direction and speed of a level, if it gives them.
    void takeWind(Level& level);
    /// Reads both. The result does not tell the flags of one from those of the other.
    int decodeTTTDDandDDFFF(double& temp, double& dewpoint, double& dir, double& speed);

    // Section 2: surface and standard isobaric surfaces.

    void decodeSection2();
    void decodeMandatory(std::vector<MandatoryInfo>& table, int index);
    /// The height in geopotential metres for the three digits `hhh` reported at the standard surface `code`.
    double mandatoryHeight(const std::string& code, double hhh) const;

    // Sections 3 to 6: tropopause, maximum wind, significant levels of temperature and of wind.

    void decodeSection3();
    void decodeTrop();
    void decodeSection4();
    void decodeMaxWind();
    void decodeSection5();
    void decodeSection6();
    /// Takes a group nnPPP and reads its pressure, in the unit of the part; false, with `pressure` kept, when it has no
    /// PPP.
    bool decodeSignificantPressure(double& pressure);

    // Sections 7 to 10: sounding system and launch time, clouds, regional and national groups.

    void decodeSection7();
    void decodeSection8();
    void decodeSection9();
    void decodeSection10();

    // Remarks of a dropsonde after 62626.

    void decode62626();
    void decodeRELSPGSPL();
    /// Reads a position such as 3233N06956W; writes the outputs only when it throws nothing.
    void decodeRelSpgSplLatLon(std::string_view position, double& lat, double& lon) const;
    void decodeWL150();
    void decodeDLMWND();
    void decodeMBLWND();
    void decodeLSTWND();
    /// @endcond
};

/// Writes the profile, one line per pressure, to STANDARD OUTPUT, whatever stream `os` is, and leaves standard output
/// left-aligned. This is deliberate: the dump is for people, not for programs. Numbers follow the format that the
/// caller has set for std::cout, such as std::fixed.
/// @return `os`, untouched.
CORVANE_API std::ostream& operator<<(std::ostream& os, const Corvane& decoder);

#endif
