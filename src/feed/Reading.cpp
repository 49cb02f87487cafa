// Reading a part: the steps in their order.
#include "feed/Groups.h"
#include "feed/Steps.h"

#include <algorithm>

namespace corvane {

using namespace feed;

namespace {

// What needs a mend before decoding, where none is allowed.
Refusal checkWithoutMends(const Work& work) {
    Work mended = work;
    joinPieces(mended);
    mendElevation(mended);
    mendIdOfPartBOrD(mended);
    if (!mended.mends.empty()) {
        const Mend& first = mended.mends.front();
        return work.refuse("A mend is needed: " + first.name + '.', first.groups.first);
    }
    return {};
}

Refusal prepare(Work& work, bool mend) {
    if (mend) {
        joinPieces(work);
    }
    if (Refusal refusal = checkSection1(work)) {
        return refusal;
    }
    if (mend) {
        mendElevation(work);
        mendIdOfPartBOrD(work);
    } else if (Refusal refusal = checkWithoutMends(work)) {
        return refusal;
    }
    if (Refusal refusal = checkShapes(work)) {
        return refusal;
    }
    return work.isPartBOrD() ? checkLevels(work, mend) : Refusal();
}

void refuse(const Part& part, const Work& work, const Refusal& refusal, Reading& reading) {
    reading.status = Reading::REFUSED;
    reading.reason = refusal.reason;
    reading.fault = work.origin(refusal.place);
    reading.groups.assign(1, part.mmmm);
    for (const Group& group : part.groups) {
        reading.groups.push_back(group.text);
    }
}

}  // namespace

Corvane::WMO_MESSAGE_TYPE Part::form() const {
    switch (mmmm.empty() ? '\0' : mmmm.front()) {
    case 'T': return Corvane::WMO_TEMP;
    case 'U': return Corvane::WMO_TEMP_SHIP;
    case 'X': return Corvane::WMO_TEMP_DROP;
    case 'I': return Corvane::WMO_TEMP_MOBIL;
    default: return Corvane::WMO_UNKNOWN;
    }
}

char Part::letter() const {
    return mmmm.empty() ? '\0' : mmmm.back();
}

bool Reading::lost() const {
    return std::any_of(mends.begin(), mends.end(), [](const Mend& mend) { return mend.lost; });
}

std::string formName(Corvane::WMO_MESSAGE_TYPE form) {
    switch (form) {
    case Corvane::WMO_TEMP: return "TEMP";
    case Corvane::WMO_TEMP_SHIP: return "TEMP SHIP";
    case Corvane::WMO_TEMP_DROP: return "TEMP DROP";
    case Corvane::WMO_TEMP_MOBIL: return "TEMP MOBIL";
    case Corvane::WMO_UNKNOWN: break;
    }
    return "";
}

std::string statusName(Reading::Status status) {
    switch (status) {
    case Reading::DECODED: return "decoded";
    case Reading::NIL: return "NIL";
    case Reading::EMPTY: return "empty";
    case Reading::REFUSED: break;
    }
    return "refused";
}

Reading read(const Part& part, const ReadOptions& options) {
    Reading reading;
    reading.form = part.form();
    reading.letter = part.letter();
    Work work(part);
    if (!part.excess.empty()) {
        readSection1(work, reading);
        refuse(part, work, {part.excess, work.size()}, reading);
        return reading;
    }
    reading.status = statusOf(work);
    if (reading.status != Reading::DECODED) {
        readSection1(work, reading);
        return reading;
    }

    Decoded decoded;
    Refusal refusal = prepare(work, options.mend);
    readSection1(work, reading);
    if (!refusal) {
        refusal = decode(work, options.mend, decoded);
    }
    if (refusal) {
        refuse(part, work, refusal, reading);
        return reading;
    }
    reading.levels = std::move(decoded.levels);
    reading.launch = std::move(decoded.launch);
    reading.mends = std::move(work.mends);
    reading.groups.reserve(work.size() + 1);
    reading.groups.push_back(part.mmmm);
    for (std::size_t i = 0; i < work.size(); ++i) {
        reading.groups.push_back(work.at(i));
    }
    checkPhysics(reading.letter, options.mend, reading);
    return reading;
}

}  // namespace corvane
