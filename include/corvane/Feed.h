/// @file
/// Reads raw bulletins: cuts them into parts, mends what can be mended with certainty, decodes each part with Corvane
/// and checks the result.
///
/// Real traffic does not come as clean reports. It is a stream of bulletins with abbreviated headings, reports of
/// many stations, NIL reports, repeats, corrections, other code forms and line noise:
///
///     USUS50 KWBC 130000 RRA
///     TTAA 63001 72572 99870 36683 08505 00005 ///// ///// 92/// ///// ///// 85499 32680 08009 ...=
///     TTAA 72576 NIL=
///
/// A part is one MMMM (TTAA, UUBB, ...) with its groups. Each part is read on its own, so that a bad part does not
/// affect the others:
///
///     corvane::BulletinReader bulletins(std::cin, "-");
///     corvane::Part part;
///     while (bulletins.next(part)) {
///         const corvane::Reading reading = corvane::read(part);
///         if (reading.status == corvane::Reading::REFUSED) {
///             std::cerr << part.source << ':' << part.line << ": " << reading.reason << '\n';
///         }
///         for (const corvane::ReadLevel& level : reading.levels) {
///             std::cout << reading.station << ' ' << level.values.name() << '\n';
///         }
///     }
///
/// No value is made up: a mend joins the pieces of a group, removes punctuation around it, writes solidi, an opener or
/// a closer, corrects Id, or drops groups that hold no level; it never writes a digit of a value. The only digits that
/// are corrected are the leading ones of a height, which the code form leaves out. Every mend is reported. No input
/// makes a function of this header throw, except std::bad_alloc when memory runs out.
#ifndef CORVANE_FEED_H
#define CORVANE_FEED_H

#include <corvane/Corvane.h>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The most groups that a part may hold; the longest part of real traffic holds 378.
constexpr std::size_t MAXIMUM_GROUPS = 2000;

/// The most characters that a group may hold.
constexpr std::size_t MAXIMUM_GROUP_LENGTH = 1000;

/// A run of groups of a part: `count` groups from number `first` on, counted from 0 after MMMM. An empty run is a place
/// between two groups.
struct GroupRange {
    std::size_t first = 0;  ///< number of the first group
    std::size_t count = 0;  ///< number of groups
};

/// A change to a part, made so that it could be read.
struct Mend {
    std::string name;   ///< "id", "closer", "join" ...
    std::string text;   ///< what was done, with the groups concerned
    bool lost = false;  ///< whether something that the part reports is not in the levels
    GroupRange groups;  ///< the groups of the part that it touches
};

/// One group as it is in the input.
struct Group {
    std::string text;          ///< its characters, without those that separate groups
    std::uint64_t offset = 0;  ///< byte offset of its first byte in the input
    std::uint64_t end = 0;     ///< byte offset after its last byte
};

/// One part of a report: MMMM and the groups up to its end, not yet interpreted.
struct CORVANE_API Part {
    std::string source;          ///< the name of the input
    std::uint64_t line = 0;      ///< the line of MMMM, from 1
    std::uint64_t offset = 0;    ///< the byte offset of MMMM in the input
    std::uint64_t bulletin = 0;  ///< the number of the bulletin in the input: parts after one heading share it
    std::string heading;         ///< the abbreviated heading with its BBB words, "USUS50 KWBC 130000 RRA"; or empty
    std::string mmmm;            ///< "TTAA" to "IIDD"
    std::vector<Group> groups;   ///< what follows MMMM, without the end of the report
    std::vector<Mend> marks;     ///< punctuation that was taken off groups
    std::string excess;          ///< why the part is too large to be kept whole (see MAXIMUM_GROUPS); usually empty

    Corvane::WMO_MESSAGE_TYPE form() const;  ///< the code form that MMMM names
    char letter() const;                     ///< 'A' to 'D'
};

/// The name of a code form as tables show it: "TEMP", "TEMP SHIP", "TEMP DROP", "TEMP MOBIL".
CORVANE_API std::string formName(Corvane::WMO_MESSAGE_TYPE form);

/// Cuts a stream of bulletins into parts. Holds only one part at a time, however long the stream is.
class CORVANE_API BulletinReader {
public:
    /// @param input the bytes; must outlive the reader. A read error ends the parts just as the end of the input does:
    ///        ask the stream itself which of the two it was.
    /// @param source the name that parts get as their source.
    BulletinReader(std::istream& input, std::string source);
    ~BulletinReader();
    BulletinReader(BulletinReader&& other) noexcept;             ///< leaves `other` fit only for assignment
    BulletinReader& operator=(BulletinReader&& other) noexcept;  ///< leaves `other` fit only for assignment
    BulletinReader(const BulletinReader&) = delete;
    BulletinReader& operator=(const BulletinReader&) = delete;

    /// Reads up to the end of the next part. A part is given as soon as its end has been read: after "=", without
    /// waiting for anything that follows.
    /// @return false, with `part` unspecified, at the end of the input.
    bool next(Part& part);

    /// The bytes read so far.
    std::uint64_t bytes() const;

private:
    class Cutter;
    std::unique_ptr<Cutter> cutter;
};

/// A level of a part.
struct ReadLevel {
    /// Kind and quantities as Corvane decodes them, except that the pressure of a maximum wind in part C is in hPa, a
    /// tropopause has its wind, a surface of unknown pressure is a surface without a pressure, and a quantity that is
    /// not given is absent, never NaN. At least one quantity besides pressures is given.
    Corvane::Level values;
    /// The checks that doubt this level: "hydrostatic", "tropopause", "lapse-rate". Usually empty.
    std::vector<std::string> doubts;
    /// The groups of the part that it is read from.
    GroupRange groups;
};

/// A doubt about a part, in words.
struct Doubt {
    std::string name;  ///< the check: "hydrostatic", "tropopause" or "lapse-rate"
    std::string text;  ///< what does not fit
};

/// What a part says.
struct CORVANE_API Reading {
    /// What became of the part.
    enum Status {
        DECODED,  ///< its levels are in `levels`
        NIL,      ///< it says that there is no report
        EMPTY,    ///< it holds no data
        REFUSED   ///< it holds data that cannot be read with certainty: see `reason`
    };

    Status status = REFUSED;                                ///< what became of the part
    Corvane::WMO_MESSAGE_TYPE form = Corvane::WMO_UNKNOWN;  ///< the code form that MMMM names
    char letter = 0;                                        ///< the part, 'A' to 'D'
    std::string station;              ///< IIiii or the call sign; empty for TEMP DROP and where it is unreadable
    std::optional<int> day;           ///< of the month, 1 to 31; absent where section 1 is unreadable
    std::optional<int> hour;          ///< UTC, 0 to 24; absent where section 1 is unreadable
    std::optional<double> latitude;   ///< degrees north; absent for TEMP and where the part gives solidi
    std::optional<double> longitude;  ///< degrees east, like `latitude`
    std::optional<double> elevation;  ///< metres, of a TEMP MOBIL
    std::string launch;               ///< GGgg of section 7, four digits; empty where it is not given
    bool windsInKnots = false;        ///< the unit in which the part gives wind speeds; levels have m/s either way

    std::vector<ReadLevel> levels;    ///< in the order of Corvane::allLevels()
    std::vector<Mend> mends;          ///< in the order in which they were made
    std::vector<Doubt> doubts;        ///< one for each finding of a check
    std::vector<std::string> groups;  ///< the groups that the decoder was given, MMMM first; as received when refused

    std::string reason;  ///< why the part is refused, in the decoder's words where it is the decoder that refuses it
    GroupRange fault;    ///< of a refused part: the group where the reason was found

    bool mended() const { return !mends.empty(); }     ///< whether anything was changed
    bool lost() const;                                 ///< whether a mend lost something
    bool doubtful() const { return !doubts.empty(); }  ///< whether a check doubts a level
};

/// How a part is read.
struct ReadOptions {
    bool mend = true;  ///< false: a part that needs a mend is refused; heights are not corrected
};

/// Reads a part: tells whether it holds data, mends it, decodes it and checks what was decoded.
CORVANE_API Reading read(const Part& part, const ReadOptions& options = {});

/// The name of a status as tables show it: "decoded", "NIL", "empty", "refused".
CORVANE_API std::string statusName(Reading::Status status);

}  // namespace corvane

#endif
