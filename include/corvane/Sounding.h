/// @file
/// Whole soundings: the parts of one ascent joined and sorted by pressure.
///
///     corvane::Soundings collected;
///     corvane::BulletinReader bulletins(input, "bulletins.txt");
///     corvane::Part part;
///     while (bulletins.next(part)) {
///         collected.add(part, corvane::read(part));
///     }
///     for (const corvane::Sounding& sounding : collected.soundings()) { ... }
#ifndef CORVANE_SOUNDING_H
#define CORVANE_SOUNDING_H

#include <corvane/Corvane.h>
#include <corvane/Feed.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// One level of a sounding. A quantity that the reports do not give is NaN.
struct SoundingLevel {
    static constexpr double NOT_GIVEN = std::numeric_limits<double>::quiet_NaN();

    /// The kinds of level that one pressure can come from; a level has one bit for each of its kinds.
    enum Kind : unsigned {
        SURFACE = 1,
        MANDATORY = 2,    ///< standard isobaric surface
        SIGNIFICANT = 4,  ///< significant level of temperature or wind
        TROPOPAUSE = 8,
        MAXWIND = 16
    };

    double pressure = NOT_GIVEN;       ///< hPa; always given
    double height = NOT_GIVEN;         ///< geopotential metres
    bool heightComputed = false;       ///< whether `height` is computed from temperatures instead of reported
    double temperature = NOT_GIVEN;    ///< degrees Celsius
    double dewpoint = NOT_GIVEN;       ///< degrees Celsius
    double windSpeed = NOT_GIVEN;      ///< m/s
    double windDirection = NOT_GIVEN;  ///< degrees true, the direction from which the wind comes
    unsigned kinds = 0;                ///< Kind bits
    bool belowGround = false;          ///< whether its pressure is above that of the surface
    std::vector<std::string> doubts;   ///< the checks that doubt it, and "unit"; mostly empty
    /// Where it comes from: index into Sounding::parts, and the groups of that part. For pages that show the text.
    struct Origin {
        std::size_t part = 0;
        GroupRange groups;
    };
    std::vector<Origin> origins;
};

/// A part of a sounding: where it stands, and what was done to it.
struct SoundingPart {
    std::string source;
    std::uint64_t line = 0;
    std::string heading;
    char letter = 0;
    std::vector<Mend> mends;
    std::vector<Doubt> doubts;
};

/// One ascent or drop.
struct Sounding {
    Corvane::WMO_MESSAGE_TYPE form = Corvane::WMO_UNKNOWN;
    std::string station;  ///< IIiii or call sign; empty for TEMP DROP
    int day = 0;
    int hour = 0;
    std::optional<double> latitude;     ///< degrees north, as Reading::latitude
    std::optional<double> longitude;    ///< degrees east
    std::optional<double> elevation;    ///< metres, of a TEMP MOBIL
    std::string launch;                 ///< GGgg; empty where no part gives it
    std::string letters;                ///< the parts that it is made of: "AB", "ABCD"
    std::vector<SoundingPart> parts;    ///< by letter
    std::size_t replaced = 0;           ///< parts that a correction or a later copy replaced
    std::vector<SoundingLevel> levels;  ///< by descending pressure
};

/// Collects parts in whatever order they come and joins them to soundings. Keeps the levels of every part, some 2 kB.
class CORVANE_API Soundings {
public:
    Soundings();
    ~Soundings();
    Soundings(Soundings&&) noexcept;
    Soundings& operator=(Soundings&&) noexcept;

    /// Adds a part. Only a decoded reading adds levels; others are passed over.
    void add(const Part& part, const Reading& reading);

    /// The soundings of the parts added so far, in the order in which their first parts came.
    std::vector<Sounding> soundings() const;

private:
    struct Store;
    std::unique_ptr<Store> store;
};

/// The names of kinds, separated by a space: "surface mandatory".
CORVANE_API std::string kindNames(unsigned kinds);

}  // namespace corvane

#endif
