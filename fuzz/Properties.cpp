#include "Properties.h"

#include "support/CapturedOutput.h"
#include "support/KindNames.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <iterator>
#include <map>
#include <ostream>
#include <stdexcept>
#include <utility>

void csv(const Corvane& decoder);

namespace fuzz {

namespace {

using Level = Corvane::Level;

// The text being checked, for the message of a violation.
const std::string* currentText = nullptr;

std::string printable(const std::string& text) {
    std::string shown;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte >= 0x20 && byte < 0x7f && character != '\\') {
            shown += character;
        } else {
            std::array<char, 5> code{};
            std::snprintf(code.data(), code.size(), "\\x%02x", static_cast<unsigned int>(byte));
            shown += code.data();
        }
    }
    return shown;
}

bool sameBits(double first, double second) {
    return std::memcmp(&first, &second, sizeof first) == 0;
}

bool sameFields(const std::map<Corvane::LEVEL_FIELD, double>& first,
                const std::map<Corvane::LEVEL_FIELD, double>& second) {
    return std::equal(first.begin(), first.end(), second.begin(), second.end(), [](const auto& one, const auto& two) {
        return one.first == two.first && sameBits(one.second, two.second);
    });
}

bool sameLevel(const Level& first, const Level& second) {
    return first.type == second.type && sameFields(first.fields, second.fields);
}

bool sameLevels(const std::vector<Level>& first, const std::vector<Level>& second) {
    return std::equal(first.begin(), first.end(), second.begin(), second.end(), sameLevel);
}

bool isWhiteSpace(char character) {
    switch (character) {
    case ' ':
    case '\t':
    case '\n':
    case '\v':
    case '\f':
    case '\r': return true;
    default: return false;
    }
}

std::string concatenated(const std::vector<std::string>& groups) {
    std::string all;
    for (const std::string& group : groups) {
        all += group;
    }
    return all;
}

bool endsWith(const std::string& text, const std::string& tail) {
    return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

std::string nameOf(End end) {
    switch (end) {
    case End::DECODED: return "decoded";
    case End::FAULT: return "a fault";
    case End::TOO_SHORT: return "a group too short";
    }
    return "";
}

bool isMergedIntoProfile(const Level& level) {
    return level.type == Corvane::LT_SURFACE || level.type == Corvane::LT_MANDATORY ||
           level.type == Corvane::LT_SIGNIFICANT;
}

bool hasShears(const Level& level) {
    return level.fields.count(Corvane::LF_VA) + level.fields.count(Corvane::LF_VB) != 0;
}

std::vector<std::string> linesOf(const std::string& text, const char* property) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = text.find('\n', begin);
        if (end == std::string::npos) {
            violated(property, "the last line has no end");
        }
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

// The row of a level, written without streams.
std::string rowOf(const Level& level) {
    std::string row = KIND_NAMES.at(static_cast<std::size_t>(level.type));
    for (int field = Corvane::LF_PRES; field <= Corvane::LF_PRES2; ++field) {
        if (field == Corvane::LF_VA || field == Corvane::LF_VB) {
            continue;
        }
        row += ',';
        const auto value = level.fields.find(static_cast<Corvane::LEVEL_FIELD>(field));
        if (value != level.fields.end()) {
            std::array<char, 64> digits{};
            std::snprintf(digits.data(), digits.size(), "%g", value->second);
            row += digits.data();
        }
    }
    return row;
}

}  // namespace

void violated(const char* property, const std::string& what) {
    std::fprintf(stderr, "corvane: VIOLATED: %s: %s\n", property, printable(what).c_str());
    if (currentText != nullptr) {
        std::fprintf(stderr, "corvane: the text: %s\n", printable(*currentText).c_str());
    }
    std::fflush(stderr);
    std::abort();
}

// ---------------------------------------------------------------------------------------------------------------------
// Reports
// ---------------------------------------------------------------------------------------------------------------------

bool OpenReport::isSameAs(const OpenReport& other) const {
    return sameLevels(allLevels(), other.allLevels()) && allTokens == other.allTokens &&
           _abrHeader == other._abrHeader && _bsn == other._bsn && _callSign == other._callSign &&
           sameBits(_latitude, other._latitude) && sameBits(_longitude, other._longitude) &&
           _dayOfMonth == other._dayOfMonth && _windsInKnots == other._windsInKnots && _obsHour == other._obsHour &&
           _obsTime == other._obsTime && a4 == other.a4 && sr == other.sr && rara == other.rara && sasa == other.sasa &&
           wmoMessageType == other.wmoMessageType && wmoType() == other.wmoType() && part == other.part &&
           lastWindPresA == other.lastWindPresA && lastWindPresC == other.lastWindPresC &&
           sameBits(mobileElevation, other.mobileElevation) && tokenQueue == other.tokenQueue;
}

HaltedReport::HaltedReport(const std::vector<std::string>& groups) {
    init();
    tokenQueue.assign(groups.begin(), groups.end());
    allTokens = tokenQueue;
    try {
        decodeAbrHdr();
        while (!tokenQueue.empty()) {
            decodeMMMM();
            switch (part) {
            case 0: decodePartA(); break;
            case 1: decodePartB(); break;
            case 2: decodePartC(); break;
            case 3: decodePartD(); break;
            default: violated("a part is identified", std::to_string(part));
            }
        }
    } catch (const std::string& thrown) {
        end = End::FAULT;
        fault = thrown;
    } catch (const std::out_of_range& thrown) {
        end = End::TOO_SHORT;
        fault = thrown.what();
    }
}

Outcome decode(const std::string& text) {
    Outcome outcome;
    try {
        outcome.report = std::make_unique<OpenReport>(text);
    } catch (const std::string& thrown) {
        outcome.end = End::FAULT;
        outcome.fault = thrown;
    } catch (const std::out_of_range& thrown) {
        outcome.end = End::TOO_SHORT;
        outcome.fault = thrown.what();
    } catch (const std::exception& thrown) {
        violated("only documented faults leave the constructor", thrown.what());
    } catch (...) {
        violated("only documented faults leave the constructor", "neither a std::string nor a std::exception");
    }
    return outcome;
}

// ---------------------------------------------------------------------------------------------------------------------
// Texts
// ---------------------------------------------------------------------------------------------------------------------

std::vector<std::string> wordsOf(const std::string& text) {
    std::vector<std::string> words;
    std::string word;
    for (const char character : text) {
        if (!isWhiteSpace(character)) {
            word += character;
        } else if (!word.empty()) {
            words.push_back(word);
            word.clear();
        }
    }
    if (!word.empty()) {
        words.push_back(word);
    }
    return words;
}

std::vector<std::string> groupsOf(const std::string& text) {
    std::vector<std::string> groups;
    for (std::string word : wordsOf(text)) {
        if (word == "=") {
            continue;
        }
        const std::size_t terminator = word.find('=');
        if (terminator != std::string::npos) {
            word.erase(terminator, 1);
        }
        groups.push_back(word);
    }
    return groups;
}

std::string respaced(const std::string& text) {
    static constexpr std::array<const char*, 7> SPACES{"\n", "\t", "\r\n", "  ", "\v", " \f ", "\r\r\n"};
    std::size_t next = text.size();
    std::string other = SPACES[next++ % SPACES.size()];
    for (const std::string& word : wordsOf(text)) {
        other += word;
        other += SPACES[next++ % SPACES.size()];
    }
    return other;
}

// ---------------------------------------------------------------------------------------------------------------------
// Properties of a report
// ---------------------------------------------------------------------------------------------------------------------

void tokensAreTheSplitText(const Corvane& report, const std::string& text) {
    static const char* const PROPERTY = "tokens() equals an independent split of the text";
    const std::vector<std::string> tokens = report.tokens();
    const std::vector<std::string> groups = groupsOf(text);
    for (std::size_t i = 0; i < std::min(tokens.size(), groups.size()); ++i) {
        if (tokens[i] != groups[i]) {
            violated(PROPERTY, "'" + tokens[i] + "' instead of '" + groups[i] + "'");
        }
    }
    if (tokens.size() != groups.size()) {
        violated(PROPERTY, std::to_string(tokens.size()) + " instead of " + std::to_string(groups.size()));
    }
}

void levelsAscendByKind(const Corvane& report) {
    static const char* const PROPERTY = "levels ascend by kind";
    const std::vector<Level> all = report.allLevels();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].type < Corvane::LT_SURFACE || all[i].type > Corvane::LT_SPLASHPOINTRAWGPS) {
            violated(PROPERTY, "a level of kind " + std::to_string(all[i].type) + " is filed");
        }
        if (i > 0 && all[i].type < all[i - 1].type) {
            violated(PROPERTY, all[i].name() + " after " + all[i - 1].name());
        }
    }
    std::vector<Level> kindByKind;
    for (int kind = Corvane::LT_GENERIC; kind <= Corvane::LT_SPLASHPOINTRAWGPS; ++kind) {
        const std::vector<Level> some = report.levels({static_cast<Corvane::LEVEL_TYPE>(kind)});
        kindByKind.insert(kindByKind.end(), some.begin(), some.end());
    }
    if (!sameLevels(all, kindByKind)) {
        violated(PROPERTY, "levels() and allLevels() differ");
    }
}

void levelsKeepFilingOrder(const HaltedReport& whole, const std::vector<std::string>& groups) {
    static const char* const PROPERTY = "levels keep their filing order";
    const std::vector<Level> all = whole.allLevels();
    // A few cuts, at different places in reports of different lengths.
    const std::size_t stride = groups.size() / 3 + 1;
    for (std::size_t cut = groups.size() % stride; cut < groups.size(); cut += stride) {
        const HaltedReport head({groups.begin(), groups.begin() + static_cast<std::ptrdiff_t>(cut)});
        const std::vector<Level> early = head.allLevels();
        auto counterpart = all.begin();
        for (auto level = early.begin(); level != early.end(); ++level) {
            const bool isLastOfKind = std::next(level) == early.end() || std::next(level)->type != level->type;
            if (level == early.begin() || std::prev(level)->type != level->type) {
                counterpart =
                    std::find_if(all.begin(), all.end(), [&](const Level& other) { return other.type == level->type; });
            }
            // The cut may be between a maximum wind and its shears, and these may be too short to be read.
            const bool mayLackShears = isLastOfKind && level->type == Corvane::LT_MAXWIND && !hasShears(*level);
            if (counterpart == all.end() || counterpart->type != level->type) {
                if (mayLackShears && whole.end != End::DECODED) {
                    continue;
                }
                violated(PROPERTY, "cut at group " + std::to_string(cut) + " there is one more " + level->name());
            }
            Level expected = *counterpart++;
            if (mayLackShears) {
                expected.fields.erase(Corvane::LF_VA);
                expected.fields.erase(Corvane::LF_VB);
            }
            if (!sameLevel(*level, expected)) {
                violated(PROPERTY, "cut at group " + std::to_string(cut) + " there is another " + level->name());
            }
        }
    }
}

void profileIsMergedAndAscends(const Corvane& report) {
    static const char* const PROPERTY = "the profile is merged and ascends";
    // From the last level, which prevails, to the first one.
    std::map<double, std::map<Corvane::LEVEL_FIELD, double>> expected;
    const std::vector<Level> all = report.allLevels();
    for (auto level = all.rbegin(); level != all.rend(); ++level) {
        const auto pressure = level->fields.find(Corvane::LF_PRES);
        if (isMergedIntoProfile(*level) && pressure != level->fields.end()) {
            expected[pressure->second].insert(level->fields.begin(), level->fields.end());
        }
    }

    const std::vector<Level> profile = report.profile();
    const double* previous = nullptr;
    for (const Level& level : profile) {
        const auto pressure = level.fields.find(Corvane::LF_PRES);
        if (level.type != Corvane::LT_GENERIC) {
            violated(PROPERTY, "a level of kind " + level.name());
        }
        if (pressure == level.fields.end()) {
            violated(PROPERTY, "a level without a pressure");
        }
        if (previous != nullptr && !(*previous < pressure->second)) {
            violated(PROPERTY, std::to_string(pressure->second) + " after " + std::to_string(*previous));
        }
        previous = &pressure->second;
        const auto merged = expected.find(pressure->second);
        if (merged == expected.end()) {
            violated(PROPERTY, std::to_string(pressure->second) + " hPa is of no level that belongs there");
        }
        if (!sameFields(merged->second, level.fields)) {
            violated(PROPERTY, "the quantities at " + std::to_string(pressure->second) + " hPa");
        }
    }
    if (profile.size() != expected.size()) {
        violated(PROPERTY, std::to_string(profile.size()) + " pressures instead of " + std::to_string(expected.size()));
    }
}

void dumpHasALineForEachPressure(const Corvane& report) {
    static const char* const PROPERTY = "the dump has a line for each pressure";
    std::ostringstream untouched;
    const CapturedOutput captured;
    untouched << report;
    if (linesOf(captured.text(), PROPERTY).size() != report.profile().size()) {
        violated(PROPERTY, captured.text());
    }
    if (!untouched.str().empty()) {
        violated(PROPERTY, "something went to the stream that was given");
    }
}

std::string tableOf(const Corvane& report) {
    return outputOf([&] { csv(report); });
}

void tableHasARowForEachLevel(const std::string& table, const Corvane& report) {
    static const char* const PROPERTY = "the table has a row for each level";
    const std::vector<std::string> lines = linesOf(table, PROPERTY);
    const std::vector<Level> levels = report.allLevels();
    if (lines.size() != levels.size() + 1) {
        violated(PROPERTY, std::to_string(lines.size()) + " lines for " + std::to_string(levels.size()) + " levels");
    }
    for (const std::string& line : lines) {
        if (std::count(line.begin(), line.end(), ',') != 10) {
            violated(PROPERTY, "not ten commas: " + line);
        }
    }
    if (lines.front() != "type,pres,tdry,dp,wspd,wdir,height,time,lat,lon,pres2") {
        violated(PROPERTY, "its header: " + lines.front());
    }
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const std::string row = rowOf(levels[i]);
        if (lines[i + 1] != row) {
            violated(PROPERTY, "'" + lines[i + 1] + "' instead of '" + row + "'");
        }
    }
}

void faultShowsItsPlace(const HaltedReport& halted) {
    if (halted.end != End::FAULT) {
        return;
    }
    std::string context;
    const std::deque<std::string>& rest = halted.remainingGroups();
    for (std::size_t i = 0; i < std::min<std::size_t>(rest.size(), 6); ++i) {
        context += rest[i] + " ";
    }
    const bool shown = endsWith(halted.fault, " Error detected at " + context + "...") ||
                       endsWith(halted.fault, " code groups are required. Error detected at" + context + " ...") ||
                       endsWith(halted.fault, ". Error detected near " + context + " ...") ||
                       (!rest.empty() && halted.fault == "Block and station number is incorrect: " + rest.front());
    if (!shown) {
        violated("a fault shows its place", halted.fault);
    }
}

void queueIsTheRestOfTheReport(const HaltedReport& halted, const std::vector<std::string>& groups) {
    static const char* const PROPERTY = "the queue is the rest of the report";
    if (halted.end == End::DECODED && !halted.remainingGroups().empty()) {
        violated(PROPERTY, "groups are left");
    }
    // Joined groups stay joined, so the characters are compared and not the groups.
    const std::vector<std::string> rest(halted.remainingGroups().begin(), halted.remainingGroups().end());
    if (!endsWith(concatenated(groups), concatenated(rest))) {
        violated(PROPERTY, concatenated(rest));
    }
}

void outcomesAgree(const char* property, const Outcome& first, const Outcome& second) {
    if (first.end != second.end || first.fault != second.fault) {
        violated(property,
                 nameOf(first.end) + " (" + first.fault + ") and " + nameOf(second.end) + " (" + second.fault + ")");
    }
    if (first.end == End::DECODED && !first.report->isSameAs(*second.report)) {
        violated(property, "the reports differ");
    }
}

void everythingHolds(const std::string& text) {
    currentText = &text;
    const Outcome outcome = decode(text);
    outcomesAgree("the same text gives the same result", outcome, decode(text));
    outcomesAgree("white space between groups changes nothing", outcome, decode(respaced(text)));

    const std::vector<std::string> groups = groupsOf(text);
    const HaltedReport halted(groups);
    if (halted.end != outcome.end || halted.fault != outcome.fault) {
        violated("the constructor decodes part by part", nameOf(outcome.end) + ": " + outcome.fault);
    }
    if (outcome.end == End::DECODED) {
        if (!halted.isSameAs(*outcome.report)) {
            violated("the constructor decodes part by part", "the reports differ");
        }
        tokensAreTheSplitText(*outcome.report, text);
    }
    // These also hold for what a faulty report gives up to its fault.
    levelsAscendByKind(halted);
    levelsKeepFilingOrder(halted, groups);
    profileIsMergedAndAscends(halted);
    dumpHasALineForEachPressure(halted);
    tableHasARowForEachLevel(tableOf(halted), halted);
    faultShowsItsPlace(halted);
    queueIsTheRestOfTheReport(halted, groups);
    currentText = nullptr;
}

}  // namespace fuzz
