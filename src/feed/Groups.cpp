#include "feed/Groups.h"

#include <algorithm>
#include <array>

namespace corvane::feed {

namespace {

template <std::size_t Count>
bool contains(const std::array<std::string_view, Count>& list, std::string_view text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

bool identifies(const std::array<std::string_view, 4>& types, std::string_view word) {
    constexpr std::array<std::string_view, 4> PARTS{"AA", "BB", "CC", "DD"};
    return word.size() == 4 && contains(PARTS, word.substr(2)) && contains(types, word.substr(0, 2));
}

}  // namespace

bool isDigitsAndSolidi(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char character) { return isDigit(character) || character == '/'; });
}

bool isLetters(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isLetter);
}

int number(std::string_view digits) {
    int value = 0;
    for (const char digit : digits) {
        value = value * 10 + (digit - '0');
    }
    return value;
}

bool isPartIdentifier(std::string_view word) {
    return identifies({"TT", "UU", "XX", "II"}, word);
}

bool isPilotIdentifier(std::string_view word) {
    return identifies({"PP", "QQ", "EE", "EE"}, word);
}

bool isOpener(std::string_view group) {
    // d1d1d with the first digit repeated: 31313, 41414 of sections 7 and 8, any such group from 5 and 6.
    if (!hasForm(group, "ddddd") || group[0] != group[2] || group[0] != group[4] || group[1] != group[3]) {
        return false;
    }
    return group[0] == '5' || group[0] == '6' ? group[1] != '0' : group == "31313" || group == "41414";
}

bool isOpenerAmongLevels(std::string_view group) {
    return isOpener(group) && group != "31313" && group != "55555" && group != "66666";
}

bool mayBeTemperature(std::string_view opener) {
    return opener[0] == '3' || opener[0] == '5';
}

}  // namespace corvane::feed
