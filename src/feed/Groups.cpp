#include "feed/Groups.h"

#include <algorithm>

namespace corvane::feed {

namespace {

// The type letters come in pairs, and so do the letters of the part.
bool isIdentifier(std::string_view types, std::string_view word) {
    return word.size() == 4 && word[0] == word[1] && word[2] == word[3] && word[2] >= 'A' && word[2] <= 'D' &&
           types.find(word[0]) != std::string_view::npos;
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
    return isIdentifier("TUXI", word);
}

bool isPilotIdentifier(std::string_view word) {
    return isIdentifier("PQE", word);
}

bool isOpener(std::string_view group) {
    if (group.size() != 5 || group[0] != group[2] || group[0] != group[4] || group[1] != group[3]) {
        return false;
    }
    switch (group[0]) {
    case '3':
    case '4': return group[1] == '1';
    case '5':
    case '6': return group[1] >= '1' && group[1] <= '9';
    default: return false;
    }
}

bool isOpenerAmongLevels(std::string_view group) {
    return isOpener(group) && group != "31313" && group != "55555" && group != "66666";
}

bool saysNoLevel(std::string_view group) {
    return group == "88999" || group == "77999" || group == "/////";
}

bool mayBeTemperature(std::string_view opener) {
    return opener[0] == '3' || opener[0] == '5';
}

}  // namespace corvane::feed
