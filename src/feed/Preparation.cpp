// What is mended before the decoder sees a part.
#include "feed/Groups.h"
#include "feed/Steps.h"

namespace corvane::feed {

namespace {

constexpr std::size_t GROUP_LENGTH = 5;

bool isPiece(std::string_view group) {
    return !group.empty() && group.size() < GROUP_LENGTH && isDigitsAndSolidi(group);
}

// How many groups from `place` on are the pieces of one group; 0 for none.
std::size_t countPieces(const Work& work, std::size_t place) {
    std::size_t length = 0;
    for (std::size_t count = 1; count <= 3 && isPiece(work.at(place + count - 1)); ++count) {
        length += work.at(place + count - 1).size();
        if (count > 1 && length == GROUP_LENGTH) {
            return count;
        }
    }
    return 0;
}

// The shapes that groups of sections 2 to 6 may have: all digits, nothing reported, and the values that may be left
// out at the end (TTT//, dd///, PP///) or at the beginning (//fff).
bool hasShapeOfLevelGroup(std::string_view group) {
    return hasForm(group, "ddddd") || group == "/////" || hasForm(group, "dd///") || hasForm(group, "ddd//") ||
           hasForm(group, "//ddd");
}

}  // namespace

void joinPieces(Work& work) {
    for (std::size_t place = 0; place < work.size(); ++place) {
        const std::size_t count = countPieces(work, place);
        if (count != 0) {
            std::string pieces = work.at(place);
            for (std::size_t i = 1; i < count; ++i) {
                pieces += ' ' + work.at(place + i);
            }
            work.join(place, count);
            work.note("join", pieces + " read as " + work.at(place), place, 1);
        }
        const std::string_view group = work.at(place);
        if (group == "61616" || group == "62626") {
            return;  // words follow
        }
    }
}

// The decoder leaves a group that begins with four solidi for section 2, which then has one group too many.
void mendElevation(Work& work) {
    if (work.form() != Corvane::WMO_TEMP_MOBIL) {
        return;
    }
    const std::size_t place = lengthOfSection1(work.form()) - 1;
    const std::string received = work.at(place);
    if (hasForm(received, "////?")) {
        work.replace(place, "///0/");
        work.note("elevation", received + " read as an elevation that is not given", place, 1);
    } else if (hasForm(received, "dddd?") && !isElevation(received)) {
        work.note("elevation", received + " has no unit", place, 1, true);
    }
}

void mendIdOfPartBOrD(Work& work) {
    const std::size_t place = placeOfDate(work.form());
    const std::string date = work.at(place);
    const bool needsSolidus = date.size() == 4 || (work.letter() == 'D' && date[4] != '/');
    if (work.isPartBOrD() && needsSolidus) {
        const std::string mended = date.substr(0, 4) + '/';
        work.replace(place, mended);
        work.note("id", date + " read as " + mended, place, 1);
    }
}

Refusal checkShapes(const Work& work) {
    for (std::size_t place = lengthOfSection1(work.form()); place < work.size() && !isOpener(work.at(place)); ++place) {
        if (!hasShapeOfLevelGroup(work.at(place))) {
            return work.refuse("The group " + work.at(place) + " is neither five digits nor solidi in their place.",
                               place);
        }
    }
    return {};
}

bool dropTailWords(Work& work, std::size_t place) {
    while (place < work.size() && !isOpener(work.at(place))) {
        ++place;
    }
    bool dropped = false;
    bool inRemarks = false;  // after 62626 the decoder joins pieces itself, and skips other words
    while (place < work.size()) {
        const std::string& word = work.at(place);
        inRemarks = inRemarks || word == "62626";
        const std::string_view ending = std::string_view(word).substr(word.size() < 2 ? 0 : word.size() - 2);
        const bool likePart = word.size() == 4 && (ending == "BB" || ending == "CC" || ending == "DD");
        if (likePart || (word.size() == 1 && !inRemarks)) {
            work.note("tail", "left out " + word, place, 1);
            work.erase(place, 1);
            dropped = true;
        } else {
            ++place;
        }
    }
    return dropped;
}

}  // namespace corvane::feed
