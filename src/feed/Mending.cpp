// Decoding with mends: where the decoder fails, the mend for that fault is tried, and the decoder judges again.
#include "CodeTables.h"
#include "feed/Groups.h"
#include "feed/PartDecoder.h"
#include "feed/Remarks.h"
#include "feed/Steps.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace corvane::feed {

namespace {

constexpr int MOST_MENDS = 12;

bool beginsWith(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

// ---------------------------------------------------------------------------------------------------------------------
// The mends, each for one kind of fault. They return whether they fit.
// ---------------------------------------------------------------------------------------------------------------------

// Whether levels follow an opener before which a closer is written. 51515 to 59595 may as well be the temperature of a
// tropopause whose first group is missing: a maximum wind after it, which cannot occur in section 9, shows this.
bool hidesLevels(const Work& work, std::size_t opener) {
    if (hidesClosers(work, opener)) {
        return true;
    }
    if (work.at(opener) == "31313" || !isOpener(work.at(opener)) || !mayBeTemperature(work.at(opener))) {
        return false;
    }
    for (std::size_t place = opener + 1; place < work.size(); ++place) {
        const std::string& group = work.at(place);
        if (isOpener(group) && !mayBeTemperature(group)) {
            return false;
        }
        if (hasForm(group, "77???") || hasForm(group, "66???")) {
            return true;
        }
    }
    return false;
}

// Notes a closer that is written before the group at `place`, which may be the end.
void noteCloser(Work& work, const std::string& closer, std::size_t place) {
    const std::string& group = work.at(place);
    const std::string text = "wrote " + closer + (group.empty() ? " at the end" : " before " + group);
    const bool lost = hidesLevels(work, place);
    work.note("closer", lost ? text + "; not read: " + work.context(place) : text, place, 0, lost);
}

// `closer`: section 2 ends without the 88999 that says that there is no tropopause.
bool closeSurfaces(Work& work, const Fault& fault) {
    const std::string& group = work.at(fault.place);
    if (!group.empty() && group != "77999" && !isOpener(group)) {
        return false;
    }
    noteCloser(work, "88999", fault.place);
    work.insert(fault.place, {"88999"});
    return true;
}

// `level`: surfaces below the ground, or 1000 and 925 hPa together, are left out instead of given as solidi.
bool writeSurfaces(Work& work, const PartDecoder& decoder) {
    const Fault& fault = decoder.fault();
    const std::vector<std::string> codes = decoder.surfaceCodes();
    const auto first = codes.begin() + static_cast<std::ptrdiff_t>(fault.surface);
    const auto reported = std::find(first, codes.end(), work.at(fault.place).substr(0, 2));
    if (work.letter() != 'A' || fault.surface == 0 || reported == codes.end()) {
        return false;
    }
    const bool lowestTwo = *first == "00" && *reported == "85";
    const bool belowGround =
        decoder.groundPressure() != 0.0 &&
        decoder.surfacePressure(static_cast<std::size_t>(reported - codes.begin()) - 1) > decoder.groundPressure();
    if (!lowestTwo && !belowGround) {
        return false;
    }
    std::string written;
    std::size_t place = fault.place;
    for (auto code = first; code != reported; ++code) {
        const std::string head = *code + "///";
        const bool wind = decoder.hasWind(static_cast<std::size_t>(code - codes.begin()));
        written += head + (wind ? " ///// ///// " : " ///// ");
        if (wind) {
            work.insert(place, {head, "/////", "/////"});
            place += 3;
        } else {
            work.insert(place, {head, "/////"});
            place += 2;
        }
    }
    work.note("level", "wrote " + written + "before " + work.at(place), fault.place, 0);
    return true;
}

// `closer`: section 4 is missing, and there is an opener where a tropopause or a maximum wind could be.
bool closeTropopauses(Work& work, const Fault& fault) {
    if (!isOpener(work.at(fault.place))) {
        return false;
    }
    noteCloser(work, "77999", fault.place);
    work.insert(fault.place, {"77999"});
    return true;
}

// `section-7`: 31313 srrarasasa 8GGgg is cut short.
bool completeSystem(Work& work, std::size_t opener) {
    const std::string system = work.at(opener + 1);
    const std::string time = work.at(opener + 2);
    if (system.empty() || isOpener(system)) {
        const bool doubled = system == "31313";  // what follows the second one is not read
        work.note("section-7", "wrote ///// 8//// after 31313", opener + 1, 0, doubled);
        work.insert(opener + 1, {"/////", "8////"});
    } else if (hasForm(system, "8????") || system.size() < 5) {
        work.note("section-7", "wrote ///// before " + system, opener + 1, 0);
        work.insert(opener + 1, {"/////"});
    } else {
        const bool garbled = !time.empty() && !isOpener(time);
        work.note("section-7", "wrote 8//// after " + system, opener + 2, 0, garbled);
        work.insert(opener + 2, {"8////"});
    }
    return true;
}

// `section-7`: a group in the place of the launch time that is not a time.
void dropLaunch(Work& work, std::size_t place) {
    const std::string group = work.at(place);
    work.replace(place, "8////");
    work.note("section-7", group + " read as 8////", place, 1, true);
}

// `wind`: one without a speed or without a direction.
void noteHalfWind(Work& work, std::size_t place) {
    const std::string& group = work.at(place);
    work.note("wind", group + (group[0] == '/' ? " has no direction" : " has no speed"), place, 1, true);
}

// `depression`: 51 to 55 are not codes for a dew-point depression (code table 0777).
bool dropDepression(Work& work, const Fault& fault) {
    const std::string group = work.at(fault.place);
    const std::string mended = group.substr(0, 3) + "//";
    work.replace(fault.place, mended);
    work.note("depression", group + " read as " + mended, fault.place, 1, true);
    return true;
}

// `remark`: the keyword of a garbled remark is left out, which turns the rest into plain words.
bool dropRemark(Work& work, const Fault& fault) {
    std::size_t place = fault.place;
    const bool mayBeAtPlace = beginsWith(fault.message, "At least") || work.at(place) == "WL";
    if (!fault.isImpossible && !(mayBeAtPlace && isKeyword(work.at(place)))) {
        do {
            if (place == 0) {
                return false;
            }
            --place;
        } while (!isKeyword(work.at(place)));
    }
    work.note("remark", "left out " + work.at(place) + " before " + work.context(place + 1), place, 1, true);
    work.erase(place, 1);
    return true;
}

bool mendFault(Work& work, const PartDecoder& decoder) {
    const Fault& fault = decoder.fault();
    if (fault.section == Fault::TAIL) {
        return dropRemark(work, fault);
    }
    if (fault.isImpossible) {
        return false;
    }
    if (beginsWith(fault.message, "Dewpoint depression code")) {
        return dropDepression(work, fault);
    }
    switch (fault.section) {
    case Fault::SURFACES: return fault.levelIsDue && (closeSurfaces(work, fault) || writeSurfaces(work, decoder));
    case Fault::TROPOPAUSES:
    case Fault::MAXIMUM_WINDS: return fault.levelIsDue && closeTropopauses(work, fault);
    case Fault::SYSTEM: return completeSystem(work, decoder.tail());
    default: return false;
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// One reading with one Id
// ---------------------------------------------------------------------------------------------------------------------

struct Attempt {
    Work work;
    Refusal refusal;
    Decoded decoded;
    bool leftovers = false;

    bool isClean() const { return !refusal && !leftovers; }
};

// Groups between section 4 and the first opener, which the decoder skips. Two of them, the second 8GGgg, have
// lost their 31313; so have three of a ship, the third a sea-surface temperature 9snTwTwTw. Others are groups of a
// level that is out of step: what they say is lost.
// @return whether the part must be decoded again.
bool mendLeftovers(Attempt& attempt, std::size_t tail) {
    Work& work = attempt.work;
    std::size_t end = tail;
    bool holdsLevel = false;
    while (end < work.size() && !isOpener(work.at(end))) {
        holdsLevel = holdsLevel || !saysNoLevel(work.at(end));
        ++end;
    }
    const bool hasSeaTemperature =
        work.form() == Corvane::WMO_TEMP_SHIP && end - tail == 3 && hasForm(work.at(tail + 2), "9????");
    if ((end - tail == 2 || hasSeaTemperature) && hasForm(work.at(tail + 1), "8????") && work.at(end) != "31313") {
        work.note("section-7", "wrote 31313 before " + work.at(tail), tail, 0);
        work.insert(tail, {"31313"});
        return true;
    }
    if (holdsLevel) {
        attempt.leftovers = true;
        work.note("leftover", "not read: " + work.context(tail), tail, end - tail, true);
    }
    return false;
}

// The first two groups after section 7 that may be a level: levels that come too late, which the decoder skips. At
// most the sea-surface temperature 9snTwTwTw comes between the launch time and the next opener, and 21212 comes before
// them. The end of the part where there is no such group.
std::size_t placeOfLateLevels(const Work& work, std::size_t launch) {
    const auto belongsToLevel = [&work](std::size_t place) {
        const std::string& group = work.at(place);
        return group.size() == 5 && isDigitsAndSolidi(group) && !saysNoLevel(group) && !isOpener(group);
    };
    std::size_t place = hasForm(work.at(launch + 1), "9????") ? launch + 2 : launch + 1;
    for (; place < work.size() && !isOpener(work.at(place)); ++place) {
        const std::string& next = work.at(place + 1);
        const bool isTemperature = isOpener(next) && mayBeTemperature(next) && belongsToLevel(place + 2);
        if (belongsToLevel(place) && (belongsToLevel(place + 1) || isTemperature)) {
            return place;
        }
    }
    for (; place < work.size(); ++place) {
        if (work.isPartBOrD() && work.at(place) == "21212") {
            return place;
        }
    }
    return work.size();
}

Attempt attemptToDecode(Work work, bool mend) {
    Attempt attempt{std::move(work), {}, {}, false};
    bool tailIsTidy = !mend;
    for (int mends = 0;; ++mends) {
        PartDecoder decoder(attempt.work);
        const bool whole = decoder.run();
        if (!tailIsTidy && decoder.hasReachedTail()) {
            tailIsTidy = true;
            if (dropTailWords(attempt.work, decoder.tail())) {
                joinPieces(attempt.work);  // a dropped word may have separated them
                continue;
            }
        }
        if (whole) {
            if (decoder.hasLeftovers() && !attempt.work.isPartBOrD()) {
                if (!mend) {
                    attempt.refusal =
                        attempt.work.refuse("Groups are left over before the next section.", decoder.tail());
                    return attempt;
                }
                if (mendLeftovers(attempt, decoder.tail())) {
                    continue;
                }
            }
            if (decoder.hasUnreadableLaunch()) {
                if (!mend) {
                    attempt.refusal =
                        attempt.work.refuse("The launch time (8GGgg) is incorrectly coded.", decoder.launchPlace());
                    return attempt;
                }
                dropLaunch(attempt.work, decoder.launchPlace());
            }
            for (const std::size_t place : decoder.halfWinds()) {
                if (!mend) {
                    attempt.refusal = attempt.work.refuse("A wind has no speed, or no direction.", place);
                    return attempt;
                }
                noteHalfWind(attempt.work, place);
            }
            const std::size_t late = placeOfLateLevels(attempt.work, decoder.launchPlace());
            if (late < attempt.work.size()) {
                if (!mend) {
                    attempt.refusal = attempt.work.refuse("There are levels after section 7.", late);
                    return attempt;
                }
                attempt.work.note("leftover", "not read: " + attempt.work.context(late), late, 0, true);
            }
            attempt.decoded.launch = decoder.launch();
            attempt.decoded.levels = decoder.takeLevels();
            for (ReadLevel& level : attempt.decoded.levels) {
                level.groups = attempt.work.origin(level.groups.first, level.groups.count);
            }
            return attempt;
        }
        if (!mend || mends >= MOST_MENDS || !mendFault(attempt.work, decoder)) {
            attempt.refusal = {decoder.fault().message, decoder.fault().place};
            return attempt;
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Id
// ---------------------------------------------------------------------------------------------------------------------

int lowestWind(const code::LastWind& entry, char letter) {
    return letter == 'A' ? entry.partA : entry.partC;
}

// The indicators that reach more levels than the one in a date group, the nearest first; all of them where it is
// missing or unknown.
std::string idsThatReachFurther(std::string_view date, char letter) {
    int reached = code::NO_WINDS + 1;
    std::vector<code::LastWind> entries;
    for (const code::LastWind& entry : code::LAST_WINDS) {
        if (lowestWind(entry, letter) == code::NO_ENTRY) {
            continue;
        }
        entries.push_back(entry);
        if (date.size() == 5 && date[4] == entry.id) {
            reached = lowestWind(entry, letter);
        }
    }
    std::sort(entries.begin(), entries.end(), [&](const code::LastWind& first, const code::LastWind& second) {
        return lowestWind(first, letter) > lowestWind(second, letter);
    });
    std::string ids;
    for (const code::LastWind& entry : entries) {
        if (lowestWind(entry, letter) < reached) {
            ids += entry.id;
        }
    }
    return ids;
}

bool giveSameLevels(const Attempt& first, const Attempt& second) {
    const auto& one = first.decoded.levels;
    const auto& other = second.decoded.levels;
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const ReadLevel& a, const ReadLevel& b) {
        return a.values.type == b.values.type && a.values.fields == b.values.fields;
    });
}

// `id`: of the indicators that reach further and let the part be read, the one with the fewest mends. Absent where
// none does. `ambiguous` is set where two of them give different levels.
std::optional<Attempt> attemptWithOtherIds(const Work& work, bool& ambiguous) {
    const std::size_t place = placeOfDate(work.form());
    const std::string& date = work.at(place);
    std::optional<Attempt> best;
    for (const char id : idsThatReachFurther(date, work.letter())) {
        Work changed = work;
        std::string mended = date.substr(0, 4);
        mended += id;
        changed.replace(place, mended);
        std::string text = date;
        text += " read as ";
        text += mended;
        changed.note("id", text, place, 1);
        Attempt attempt = attemptToDecode(std::move(changed), true);
        if (attempt.refusal) {
            continue;
        }
        const auto rank = [](const Attempt& read) { return std::pair(read.leftovers, read.work.mends.size()); };
        if (!best || rank(attempt) < rank(*best)) {
            best = std::move(attempt);
            ambiguous = false;
        } else if (rank(attempt) == rank(*best) && !giveSameLevels(attempt, *best)) {
            ambiguous = true;
        }
    }
    return best;
}

}  // namespace

bool hidesClosers(const Work& work, std::size_t opener) {
    if (work.at(opener) == "31313" || !isOpener(work.at(opener))) {
        return false;
    }
    for (std::size_t place = opener + 1; place < work.size(); ++place) {
        const std::string& group = work.at(place);
        if (group == "31313" || (group == "77999" && !work.isPartBOrD())) {
            return true;
        }
    }
    return false;
}

Refusal decode(Work& work, bool mend, Decoded& decoded) {
    Attempt attempt = attemptToDecode(work, mend);
    if (!attempt.isClean() && mend && !work.isPartBOrD()) {
        bool ambiguous = false;
        std::optional<Attempt> other = attemptWithOtherIds(work, ambiguous);
        // A reading with groups left over is kept unless another Id leaves none.
        if (other && (attempt.refusal || other->isClean())) {
            if (ambiguous) {
                return work.refuse("The last wind indicator (Id) is wrong, and two others fit equally well.",
                                   placeOfDate(work.form()));
            }
            attempt = std::move(*other);
        }
    }
    Refusal refusal = std::move(attempt.refusal);
    work = std::move(attempt.work);
    decoded = std::move(attempt.decoded);
    return refusal;
}

}  // namespace corvane::feed
