// The decoder, one step at a time, so that where it fails is known.
#ifndef CORVANE_FEED_PARTDECODER_H
#define CORVANE_FEED_PARTDECODER_H

#include "feed/Work.h"

#include <corvane/Corvane.h>
#include <corvane/Feed.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::feed {

/// Where a part cannot be decoded.
struct Fault {
    enum Section { SECTION_1, SURFACES, TROPOPAUSES, MAXIMUM_WINDS, SIGNIFICANT, SYSTEM, TAIL };

    Section section = SECTION_1;
    std::size_t place = 0;      ///< the group in front of the decoder
    bool levelIsDue = false;    ///< whether a level of the section would begin here
    std::size_t surface = 0;    ///< in SURFACES: the row of surfaceCodes() that is due
    bool isImpossible = false;  ///< decoded, but to an impossible value: the groups are out of step
    std::string message;
};

/// Decodes the groups of one part with Corvane and keeps the state in which a fault leaves it. Each level is known with
/// the groups that it comes from.
class PartDecoder : private Corvane {
public:
    explicit PartDecoder(const Work& groups);

    /// Decodes the part.
    /// @return false when the decoder fails, or a value is impossible: see fault().
    bool run();

    const Fault& fault() const { return _fault; }

    /// The levels in the order of Corvane::allLevels(), as ReadLevel describes them; places in the groups given.
    std::vector<ReadLevel> takeLevels();

    /// The places of winds without a speed or without a direction; such a wind is not in the levels.
    const std::vector<std::size_t>& halfWinds() const { return _halfWinds; }

    /// Launch time GGgg of section 7; empty where it is not given.
    std::string launch() const;
    /// The place of the launch time 8GGgg; the end where there is no section 7.
    std::size_t launchPlace() const;
    /// Whether the group there is neither a time nor solidi.
    bool hasUnreadableLaunch() const;

    /// Whether sections 2 to 6 are decoded, and the place of the first group after them.
    bool hasReachedTail() const { return tailPlace != NOT_REACHED; }
    std::size_t tail() const { return tailPlace; }

    /// The two-digit codes of the surfaces of section 2 of this part, the ground first.
    std::vector<std::string> surfaceCodes() const;
    /// The pressure of a row of surfaceCodes(), hPa.
    double surfacePressure(std::size_t row) const;
    /// Whether Id says that a row has a wind.
    bool hasWind(std::size_t row) const;
    /// The pressure of the ground, hPa; 0 where it is not known.
    double groundPressure() const;

    /// Whether there are groups between section 4 and the next opener. The decoder skips them without a message.
    bool hasLeftovers() const;

private:
    static constexpr std::size_t NOT_REACHED = static_cast<std::size_t>(-1);

    void decode();
    void decodeSurfaces();
    void decodeTropopauses();
    void decodeMaximumWinds();
    void decodeSignificantLevels();
    void decodeRemarks();
    std::size_t place() const { return work.size() - tokenQueue.size(); }
    void takePairs(std::size_t first, bool withoutValue);
    void take(Level& level, GroupRange groups);
    void takeAll(std::size_t first);
    void needHead(std::size_t where);
    void needTemperature(std::size_t where);
    void needWind(std::size_t where);
    void checkHalfWind(std::size_t where, std::size_t level);
    void needPossible(const Level& level, std::size_t where);
    [[noreturn]] void throwImpossible(const std::string& message, std::size_t where);

    const Work& work;
    Fault _fault;
    std::vector<ReadLevel> found;
    std::vector<std::size_t> _halfWinds;
    std::size_t tailPlace = NOT_REACHED;
};

}  // namespace corvane::feed

#endif
