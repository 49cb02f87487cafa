// Whether a part holds data: much of the traffic is NIL reports and parts without a level.
#include "feed/Groups.h"
#include "feed/Steps.h"

#include <algorithm>

namespace corvane::feed {

namespace {

constexpr std::size_t FIRST_GROUPS = 8;
constexpr int GROUPS_OF_DATA = 3;

bool isNil(std::string_view group) {
    return group == "NIL" || group == "NILL" || group == "NIL.";
}

// 88 and 77, with which tropopauses and maximum winds begin.
bool beginsWithTwo(std::string_view group, char digit) {
    return group.size() >= 2 && group[0] == digit && group[1] == digit;
}

}  // namespace

std::size_t lengthOfSection1(Corvane::WMO_MESSAGE_TYPE form) {
    switch (form) {
    case Corvane::WMO_TEMP: return 2;
    case Corvane::WMO_TEMP_SHIP: return 5;
    case Corvane::WMO_TEMP_DROP: return 4;
    case Corvane::WMO_TEMP_MOBIL: return 6;
    case Corvane::WMO_UNKNOWN: break;
    }
    return 0;
}

Reading::Status statusOf(const Work& work) {
    const std::size_t body = lengthOfSection1(work.form());
    int groupsOfFive = 0;
    bool hasWinds = false;
    for (std::size_t i = body; i < work.size(); ++i) {
        const std::string& group = work.at(i);
        groupsOfFive += hasForm(group, "?????") ? 1 : 0;
        hasWinds = hasWinds || beginsWithTwo(group, '8') || beginsWithTwo(group, '7');
    }
    int nils = 0;
    int words = 0;
    for (std::size_t i = 0; i < std::min(FIRST_GROUPS, work.size()); ++i) {
        nils += isNil(work.at(i)) ? 1 : 0;
        words += isLetters(work.at(i)) ? 1 : 0;
    }

    if (nils > 0 && groupsOfFive < GROUPS_OF_DATA && !hasWinds) {
        return Reading::NIL;
    }
    const std::string& first = work.at(body);
    if (work.size() <= body || isOpener(first) || (work.isPartBOrD() && first == "88999")) {
        return Reading::EMPTY;
    }
    // NO ASCENT DUE TO ...
    if (work.form() == Corvane::WMO_TEMP && groupsOfFive < GROUPS_OF_DATA && words >= 2) {
        return Reading::EMPTY;
    }
    return Reading::DECODED;
}

}  // namespace corvane::feed
