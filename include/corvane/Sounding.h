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
///
/// Which parts are one sounding:
///
/// - TEMP, TEMP SHIP, TEMP MOBIL: those of one code form, station number or call sign, day and hour, in any order
///   and at any distance from each other. The call signs SHIP and MOBIL are shared by many stations, so the position
///   must match as well.
/// - TEMP DROP, which has no station: those of one position, day and hour. An aircraft may release two sondes at one
///   place in one hour. So a part A with other content is another drop, unless its heading says that it corrects the
///   first one, and parts B, C and D belong to the part A before them in their bulletin. A part without such a part A
///   belongs to the only drop of its position, day and hour; where there are several, to none of them.
///
/// Of a part that comes more than once, one copy counts. A repeat changes nothing. A correction (CCA, CCB ... or COR in
/// the heading) replaces what it corrects, and a later letter prevails over an earlier one. Of different copies of one
/// rank, the later one counts.
///
/// No part gives the month. Do not collect the soundings of two months together: day 13 at 12 UTC of both would be
/// taken for one sounding.
#ifndef CORVANE_SOUNDING_H
#define CORVANE_SOUNDING_H

#include <corvane/Corvane.h>
#include <corvane/Feed.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// One level of a sounding: everything that its parts give at one pressure. A quantity that they do not give is NaN.
///
/// Where two parts give the same quantity, a significant level prevails over a standard one, and that over the surface,
/// as in Corvane::profile(); within a kind, the later one prevails. A tropopause and a level of maximum wind add what
/// no other level of that pressure gives.
struct SoundingLevel {
    /// A quantity that the parts do not give: NaN.
    static constexpr double NOT_GIVEN = std::numeric_limits<double>::quiet_NaN();

    /// The kinds of level that one pressure can come from; a level has one bit for each of its kinds.
    enum Kind : unsigned {
        SURFACE = 1,
        MANDATORY = 2,    ///< standard isobaric surface
        SIGNIFICANT = 4,  ///< significant level of temperature or wind
        TROPOPAUSE = 8,
        MAXWIND = 16
    };

    /// Where a level comes from, for pages that show the text.
    struct Origin {
        std::size_t part = 0;  ///< index into Sounding::parts
        GroupRange groups;     ///< the groups of that part
    };

    double pressure = NOT_GIVEN;  ///< hPa; always given and above 0
    /// Geopotential metres: reported, or else computed from temperatures. Between two reported heights of levels above
    /// the ground it follows the hypsometric equation with virtual temperature, scaled so that it meets both. Above the
    /// last and below the first of them it is integrated from there, where there are temperatures. NaN in a sounding
    /// without a reported height.
    double height = NOT_GIVEN;
    bool heightComputed = false;       ///< whether `height` is computed
    double temperature = NOT_GIVEN;    ///< degrees Celsius
    double dewpoint = NOT_GIVEN;       ///< degrees Celsius
    double windSpeed = NOT_GIVEN;      ///< m/s
    double windDirection = NOT_GIVEN;  ///< degrees true, the direction from which the wind comes
    /// The speed of the maximum wind that the parts report at this pressure, m/s. `windSpeed` is that of a standard
    /// surface or significant level of the same pressure where there is one.
    double maximumWind = NOT_GIVEN;
    unsigned kinds = 0;  ///< Kind bits
    /// Whether its pressure is above that of the surface: a standard surface whose height the station extrapolated.
    bool belowGround = false;
    /// The checks that doubt it (see ReadLevel::doubts), each once. "unit": its wind is from a part that gives winds in
    /// another unit than most parts of the sounding, so that one of the two is wrong; where as many parts say knots as
    /// metres per second, all winds are doubted. Winds are never converted on that suspicion. Usually empty.
    std::vector<std::string> doubts;
    std::vector<Origin> origins;  ///< by part, in the order of each part
};

/// A part of a sounding: where it is in the input, and what was done to it.
struct SoundingPart {
    std::string source;         ///< Part::source
    std::uint64_t line = 0;     ///< Part::line
    std::uint64_t offset = 0;   ///< Part::offset
    std::string heading;        ///< Part::heading
    char letter = 0;            ///< 'A' to 'D'
    std::vector<Mend> mends;    ///< Reading::mends
    std::vector<Doubt> doubts;  ///< Reading::doubts
};

/// One ascent or drop.
struct Sounding {
    Corvane::WMO_MESSAGE_TYPE form = Corvane::WMO_UNKNOWN;  ///< the code form of its parts
    std::string station;                                    ///< IIiii or call sign; empty for TEMP DROP
    int day = 0;                                            ///< of the month, 1 to 31
    int hour = 0;                                           ///< UTC, 0 to 24
    std::optional<double> latitude;   ///< degrees north, of the first part that gives it; see Reading::latitude
    std::optional<double> longitude;  ///< degrees east, of the same part
    std::optional<double> elevation;  ///< metres, of a TEMP MOBIL
    std::string launch;               ///< GGgg of the first part that gives it; otherwise empty
    std::string letters;              ///< the parts that it is made of: "AB", "ABCD"
    std::vector<SoundingPart> parts;  ///< by letter, one for each
    /// Different copies of its parts that were replaced by a correction or a later copy. Identical repeats do not
    /// count.
    std::size_t replaced = 0;
    std::vector<SoundingLevel> levels;  ///< by descending pressure, each pressure once; may be empty
};

/// Collects parts in any order and joins them into soundings. Keeps the levels of every part that counts, about 2.5 kB
/// per part.
class CORVANE_API Soundings {
public:
    Soundings();
    ~Soundings();
    Soundings(Soundings&& other) noexcept;             ///< leaves `other` fit only for assignment
    Soundings& operator=(Soundings&& other) noexcept;  ///< leaves `other` fit only for assignment
    Soundings(const Soundings&) = delete;
    Soundings& operator=(const Soundings&) = delete;

    /// Adds a part. Only a decoded reading adds levels. A part A of a TEMP DROP that could not be read still counts as
    /// a part A: the parts after it do not go to another drop.
    void add(const Part& part, const Reading& reading);

    /// Hands over the soundings of the parts added so far, one by one, in the order in which their first parts came.
    /// Each sounding is put together when its turn comes, so only one is in memory at a time beside the collected
    /// parts.
    void forEach(const std::function<void(const Sounding&)>& take) const;

    /// The same soundings all at once, about 5 kB per part.
    std::vector<Sounding> soundings() const;

private:
    class Store;
    std::unique_ptr<Store> store;
};

/// The names of kinds, separated by a space: "surface mandatory".
CORVANE_API std::string kindNames(unsigned kinds);

}  // namespace corvane

#endif
