#include "feed/Remarks.h"

#include "feed/Groups.h"

#include <algorithm>
#include <array>
#include <string>

namespace corvane::feed {

namespace {

enum class Value { NONE, POSITION, TIME6, TIME4, WIND, HEIGHT, PRESSURES };

// National Hurricane Operations Plan, TEMP DROP code, 62626.
struct RemarkForm {
    std::string_view keyword;
    std::string_view second;  // the word after the keyword
    Corvane::LEVEL_TYPE kind;
    std::array<Value, 2> values;
};

constexpr std::array<RemarkForm, 8> REMARK_FORMS{{
    {"REL", "", Corvane::LT_RELEASEPOINT, {Value::POSITION, Value::TIME6}},
    {"SPG", "", Corvane::LT_SPLASHPOINTRAWGPS, {Value::POSITION, Value::TIME6}},
    {"SPL", "", Corvane::LT_SPLASHPOINTWINDINTEG, {Value::POSITION, Value::TIME4}},
    {"WL150", "", Corvane::LT_150MLAYERWIND, {Value::WIND, Value::HEIGHT}},
    {"WL", "150", Corvane::LT_150MLAYERWIND, {Value::WIND, Value::HEIGHT}},
    {"DLM", "WND", Corvane::LT_DEEPLAYERWIND, {Value::WIND, Value::PRESSURES}},
    {"MBL", "WND", Corvane::LT_MEANBLWIND, {Value::WIND, Value::NONE}},
    {"LST", "WND", Corvane::LT_LASTWINDHEIGHT, {Value::HEIGHT, Value::NONE}},
}};

constexpr std::array<std::string_view, 3> OTHER_KEYWORDS{"AEV", "LAST", "EYEWALL"};

// 3233N06956W, in hundredths of a degree.
bool isPosition(std::string_view text) {
    return hasForm(text, "dddd@ddddd@") && (text[4] == 'N' || text[4] == 'S') && (text[10] == 'E' || text[10] == 'W') &&
           number(text.substr(0, 4)) <= 9000 && number(text.substr(5, 5)) <= 18000;
}

std::size_t lengthOf(Value value) {
    switch (value) {
    case Value::POSITION: return 11;
    case Value::TIME6:
    case Value::PRESSURES: return 6;
    case Value::TIME4: return 4;
    case Value::WIND: return 5;
    case Value::HEIGHT: return 3;
    case Value::NONE: break;
    }
    return 0;
}

bool isValue(Value value, std::string_view text) {
    switch (value) {
    case Value::POSITION: return isPosition(text);
    case Value::TIME6:
    case Value::PRESSURES: return hasForm(text, "dddddd");
    case Value::TIME4: return hasForm(text, "dddd");
    case Value::WIND:
        return hasForm(text, "ddddd") || text == "/////" || hasForm(text, "dd///") || hasForm(text, "//ddd");
    case Value::HEIGHT: return hasForm(text, "ddd");
    case Value::NONE: break;
    }
    return true;
}

// The remark whose keyword is at `place`. A value may be split between two groups, as the decoder joins them.
Remark remarkAt(const Work& work, std::size_t place, const RemarkForm& form) {
    std::size_t next = place + (form.second.empty() ? 1 : 2);
    bool whole = form.second.empty() || work.at(place + 1) == form.second;
    for (const Value value : form.values) {
        if (value == Value::NONE || !whole) {
            continue;
        }
        std::string text = work.at(next);
        ++next;
        if (text.size() != lengthOf(value)) {
            text += work.at(next);
            ++next;
        }
        whole = isValue(value, text);
    }
    return {form.kind, place, whole ? next - place : 1, whole};
}

// A keyword in two pieces, WL1 50 or RE L, with values after it: the decoder takes it for plain words.
bool isSplitKeyword(const Work& work, std::size_t place, std::string_view keyword) {
    const std::string& first = work.at(place);
    const std::string& second = work.at(place + 1);
    const std::string& value = work.at(place + 2);
    return first.size() + second.size() == keyword.size() && first + second == keyword && !isKeyword(first) &&
           !value.empty() && (isDigit(value[0]) || value[0] == '/' || value == "WND");
}

// A keyword glued to what follows it, SPG2403N07602W or DLMWND: plain words for the decoder, too.
bool isGluedKeyword(std::string_view word, std::string_view keyword) {
    const std::string_view rest = word.substr(std::min(keyword.size(), word.size()));
    return !rest.empty() && word.substr(0, keyword.size()) == keyword && (isDigit(rest[0]) || rest == "WND");
}

}  // namespace

std::vector<Remark> findRemarks(const Work& work, std::size_t place) {
    std::vector<Remark> remarks;
    while (place < work.size() && work.at(place) != "62626") {
        ++place;
    }
    for (; place < work.size(); ++place) {
        if (work.at(place) == "EYEWALL" && isKeyword(work.at(place + 1))) {  // which the decoder takes for its bearing
            remarks.push_back({Corvane::LT_GENERIC, place, 1, false});
        }
        for (const RemarkForm& form : REMARK_FORMS) {
            const bool isRemark = work.at(place) == form.keyword &&
                                  (form.keyword != "WL" || work.at(place + 1) == form.second);  // WL alone is a word
            if (isRemark) {
                remarks.push_back(remarkAt(work, place, form));
            } else if (isSplitKeyword(work, place, form.keyword)) {
                remarks.push_back({form.kind, place, 2, false});
            } else if (form.keyword != "WL" && isGluedKeyword(work.at(place), form.keyword)) {
                remarks.push_back({form.kind, place, 1, false});
            }
        }
    }
    return remarks;
}

bool isKeyword(std::string_view word) {
    return std::find(OTHER_KEYWORDS.begin(), OTHER_KEYWORDS.end(), word) != OTHER_KEYWORDS.end() ||
           std::any_of(REMARK_FORMS.begin(), REMARK_FORMS.end(),
                       [&](const RemarkForm& form) { return form.keyword == word; });
}

}  // namespace corvane::feed
