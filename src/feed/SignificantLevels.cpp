// Sections 5 and 6, level by level: nnPPP TTTDD ... 21212 nnPPP ddfff ... (FM 35, parts B and D).
//
// The decoder takes pairs of groups and looks at neither the level number nn nor the order of pressures, so that a lost
// or doubled group turns every value after it into another one, and a missing 31313 the rest of the report into levels.
#include "feed/Groups.h"
#include "feed/Steps.h"

#include <limits>
#include <optional>

namespace corvane::feed {

namespace {

class LevelWalk {
public:
    LevelWalk(Work& part, bool mayMend)
        : work(part), mend(mayMend), partB(part.letter() == 'B'), place(lengthOfSection1(part.form())) {}

    Refusal walk();

private:
    void beginSection6();
    bool isDue(std::string_view number) const;
    void keepInStep();
    Refusal step();
    std::optional<double> pressureAt(std::size_t where) const;
    bool beginsSection6Unmarked(std::string_view number, std::optional<double> pressure) const;
    bool isHundredHectopascals() const;
    Refusal dropLevel(const std::string& reason, const std::string& text, bool lost);
    bool isHalf(std::size_t valuePlace) const;
    Refusal needsMend(const std::string& reason) const { return work.refuse(reason, place); }

    Work& work;
    const bool mend;
    const bool partB;
    std::size_t place;
    bool inSection6 = false;
    std::string last;     // number of the level before in this section, as received; empty for the first one
    std::string written;  // the same as it is given to the decoder; differs after a level that is left out
    double lastPressure = std::numeric_limits<double>::infinity();
};

// The number after `number` in 00 (the ground, in part B), 11, 22 ... 99, 11 ...; the first one for an empty text.
std::string_view numberAfter(std::string_view number) {
    static constexpr std::string_view NUMBERS = "112233445566778899";
    const std::size_t index = number.empty() || number == "00" || number == "99" ? 0 : NUMBERS.find(number) + 2;
    return NUMBERS.substr(index, 2);
}

// The first number of a section in part B is 00, or 11 where the ground is left out; some stations write 99.
bool LevelWalk::isDue(std::string_view number) const {
    return number == numberAfter(last) || (last.empty() && partB && (number == "00" || number == "99"));
}

// Notes the number of the level at `place`. The levels after one that was left out are renumbered, so that what is
// written can be read again; the number is not a value.
void LevelWalk::keepInStep() {
    const std::string& group = work.at(place);
    const std::string nn = group.substr(0, 2);
    if (last == written) {
        written = nn;
    } else {
        written = numberAfter(written);
        work.replace(place, written + group.substr(2));
    }
    last = nn;
}

void LevelWalk::beginSection6() {
    inSection6 = true;
    last.clear();
    written.clear();
    lastPressure = std::numeric_limits<double>::infinity();
}

// hPa; absent where PPP is not three digits.
std::optional<double> LevelWalk::pressureAt(std::size_t where) const {
    const std::string& group = work.at(where);
    if (!hasForm(group, "ddddd")) {
        return std::nullopt;
    }
    const double value = number(std::string_view(group).substr(2));
    return partB ? (value < 100.0 ? value + 1000.0 : value) : value / 10.0;
}

bool LevelWalk::beginsSection6Unmarked(std::string_view number, std::optional<double> pressure) const {
    return !inSection6 && !last.empty() && number == (partB ? "00" : "11") && pressure && *pressure > lastPressure;
}

// Part D cannot code 100 hPa: 11100 is 10 hPa. If the level after it is lower down, 100 hPa is what was observed.
bool LevelWalk::isHundredHectopascals() const {
    if (partB || !last.empty() || work.at(place) != "11100") {
        return false;
    }
    const std::optional<double> following = pressureAt(place + 2);
    return work.at(place + 2).compare(0, 2, "22") == 0 && following && *following > 10.0;
}

// Whether the group where a value should be opens something else, so that the level is cut short.
bool LevelWalk::isHalf(std::size_t valuePlace) const {
    const std::string_view value = work.at(valuePlace);
    if (value.empty()) {
        return true;
    }
    if (value == "21212") {  // the opener of section 6, or +21.2 degrees before the next level; no opener is a wind
        return inSection6 || work.at(valuePlace + 1).compare(0, 2, numberAfter(last)) != 0;
    }
    if (!isOpener(value)) {
        return false;
    }
    if (inSection6 || !mayBeTemperature(value)) {
        return true;
    }
    return value == "31313" && hasForm(work.at(valuePlace + 2), "8????");  // 31313 srrarasasa 8GGgg
}

// Leaves out the level at `place` with the group after it; without mends it is a reason to refuse the part.
Refusal LevelWalk::dropLevel(const std::string& reason, const std::string& text, bool lost) {
    const std::string& value = work.at(place + 1);
    if (value.empty() || value == "21212" || isOpener(value)) {
        return work.refuse("The level has no second group.", place);
    }
    if (!mend) {
        return needsMend(reason);
    }
    work.note("gap", text, place, 2, lost);
    last = work.at(place).substr(0, 2);
    work.erase(place, 2);
    return {};
}

Refusal LevelWalk::step() {
    const std::string group = work.at(place);
    if (!hasForm(group, "ddddd") && !hasForm(group, "dd///")) {
        return work.refuse("A level (nnPPP) is expected.", place);
    }
    const std::string nn = group.substr(0, 2);
    const std::optional<double> pressure = pressureAt(place);
    if (!isDue(nn)) {
        if (!beginsSection6Unmarked(nn, pressure)) {
            return work.refuse("Level number " + std::string(numberAfter(last)) + " is expected.", place);
        }
        if (!mend) {
            return needsMend("Section 6 must begin with 21212.");
        }
        work.insert(place, {"21212"});
        work.note("closer", "wrote 21212 before " + group, place, 0);
        ++place;
        beginSection6();
        return {};
    }
    if (!pressure) {
        const std::string& value = work.at(place + 1);
        return dropLevel("A level has no pressure.", "left out " + group + ' ' + value + ", a level without a pressure",
                         value.find_first_of("0123456789") != std::string::npos);
    }
    if (isHundredHectopascals()) {
        return dropLevel("A level at 100 hPa cannot be coded in part D.",
                         "left out " + group + ' ' + work.at(place + 1) + ", a level at 100 hPa", true);
    }
    if (*pressure > lastPressure) {
        return work.refuse("The pressure is above that of the level before.", place);
    }
    keepInStep();
    lastPressure = *pressure;

    const std::size_t value = place + 1;
    if (isHalf(value)) {
        return work.refuse("The level has no second group.", place);
    }
    const std::string_view second = work.at(value);
    const bool fits = hasForm(second, "ddddd") || second == "/////" ||
                      (inSection6 ? hasForm(second, "dd///") || hasForm(second, "//ddd") : hasForm(second, "ddd//"));
    if (!fits) {
        return work.refuse(inSection6 ? "A wind (ddfff) is expected." : "A temperature (TTTDD) is expected.", value);
    }
    place += 2;
    return {};
}

Refusal LevelWalk::walk() {
    while (place < work.size()) {
        const std::string_view group = work.at(place);
        if (group == "31313") {
            return {};
        }
        if (group == "21212" && !inSection6) {
            ++place;
            beginSection6();
            continue;
        }
        if (isOpenerAmongLevels(group)) {
            if (!mend) {
                return needsMend("The group " + work.at(place) + " is in the place of a level.");
            }
            const bool lost = hidesClosers(work, place);
            std::string text = "wrote 31313 ///// 8//// before " + work.at(place);
            text += lost ? "; not read: " + work.context(place) : "";
            work.insert(place, {"31313", "/////", "8////"});
            work.note("section-7", text, place, 0, lost);
            return {};
        }
        if (Refusal refusal = step()) {
            return refusal;
        }
    }
    return {};
}

}  // namespace

Refusal checkLevels(Work& work, bool mend) {
    return LevelWalk(work, mend).walk();
}

}  // namespace corvane::feed
