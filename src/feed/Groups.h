// What single groups and words of a bulletin are, judged by their characters alone.
#ifndef CORVANE_FEED_GROUPS_H
#define CORVANE_FEED_GROUPS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane::feed {

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

constexpr bool isLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

/// Whether a text has the form of a pattern of the same length: 'd' stands for a digit, '@' for a letter, '?' for a
/// digit or a solidus, any other character for itself.
constexpr bool hasForm(std::string_view text, std::string_view pattern) {
    if (text.size() != pattern.size()) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char wanted = pattern[i];
        const bool fits = wanted == 'd'   ? isDigit(text[i])
                          : wanted == '@' ? isLetter(text[i])
                          : wanted == '?' ? isDigit(text[i]) || text[i] == '/'
                                          : text[i] == wanted;
        if (!fits) {
            return false;
        }
    }
    return true;
}

/// The three words of an abbreviated heading TTAAii CCCC YYGGgg, the time with or without a Z (WMO-No. 386).
constexpr bool isDesignator(std::string_view word) {
    return hasForm(word, "@@@@dd");
}
constexpr bool isCentre(std::string_view word) {
    return hasForm(word, "@@@@");
}
constexpr bool isHeadingTime(std::string_view word) {
    return hasForm(word, "dddddd") || hasForm(word, "ddddddZ");
}

/// Whether a text holds nothing but digits and solidi. True for an empty one.
bool isDigitsAndSolidi(std::string_view text);

/// Whether a text holds nothing but letters, at least one.
bool isLetters(std::string_view text);

/// The value of a text of digits.
int number(std::string_view digits);

/// Whether a word is the MMMM of a part that is read: TT, UU, XX or II with AA, BB, CC or DD (code table 2582).
bool isPartIdentifier(std::string_view word);

/// Whether a word is the MMMM of a PILOT report (FM 32 to 34): PP, QQ or EE with AA, BB, CC or DD. It ends the part
/// before it; the report itself is not read.
bool isPilotIdentifier(std::string_view word);

/// Whether a group opens one of the sections 7 to 10: 31313, 41414, 51515 to 59595, 61616 to 69696.
bool isOpener(std::string_view group);

/// Whether a group opens a section where a level nnPPP of sections 5 and 6 could be: 31313 aside, an opener whose
/// first two digits are not a level number. 55555 and 66666 may be levels.
bool isOpenerAmongLevels(std::string_view group);

/// Whether a group says that there is no level: 88999, 77999, /////.
bool saysNoLevel(std::string_view group);

/// Whether an opener may as well be a temperature TTTDD: 31313 (-31.3 degrees) and 51515 to 59595 (-51.5 to -59.5).
/// The others would be +41.4 degrees and more. None can be a wind.
bool mayBeTemperature(std::string_view opener);

}  // namespace corvane::feed

#endif
