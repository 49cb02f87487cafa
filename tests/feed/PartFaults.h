// Faults as lines and operators make them, put into a clean part one at a time.
#ifndef CORVANE_TESTS_PART_FAULTS_H
#define CORVANE_TESTS_PART_FAULTS_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace feed_test {

using Groups = std::vector<std::string>;

// Numbers drawn the same way everywhere, unlike those of std::uniform_int_distribution.
class Draw {
public:
    explicit Draw(std::uint32_t seed) : engine(seed) {}
    std::size_t below(std::size_t bound) { return engine() % bound; }

private:
    std::mt19937 engine;
};

// A fault: the groups after MMMM as they become; absent where the part drawn cannot have it.
struct Fault {
    std::string name;
    bool onlyPartsAAndC;
    std::function<std::optional<Groups>(Draw&, const std::string& mmmm, Groups)> make;
};

inline std::optional<Groups> loseGroups(Draw& draw, Groups groups, std::size_t count) {
    if (groups.size() < count) {
        return std::nullopt;
    }
    const auto first = groups.begin() + static_cast<std::ptrdiff_t>(draw.below(groups.size() - count + 1));
    groups.erase(first, first + static_cast<std::ptrdiff_t>(count));
    return groups;
}

inline std::optional<Groups> loseOpener(Draw& draw, Groups groups) {
    static const std::array<std::string, 8> OPENERS{"88999", "77999", "21212", "31313",
                                                    "41414", "51515", "61616", "62626"};
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (std::find(OPENERS.begin(), OPENERS.end(), groups[i]) != OPENERS.end()) {
            places.push_back(i);
        }
    }
    if (places.empty()) {
        return std::nullopt;
    }
    groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(places[draw.below(places.size())]));
    return groups;
}

inline std::optional<Groups> cutOff(Draw& draw, const Groups& groups) {
    std::string text;
    for (const std::string& group : groups) {
        text += (text.empty() ? "" : " ") + group;
    }
    text.resize(1 + draw.below(text.size() - 1));
    Groups left(1);
    for (const char character : text) {
        if (character == ' ') {
            left.emplace_back();
        } else {
            left.back() += character;
        }
    }
    if (left.back().empty()) {
        left.pop_back();
    }
    return left;
}

inline std::optional<Groups> changeId(Draw& draw, const std::string& mmmm, Groups groups) {
    std::string& date = groups[mmmm[0] == 'U' || mmmm[0] == 'I' ? 1 : 0];
    char id = date[4];
    while (id == date[4]) {
        id = "0123456789/"[draw.below(11)];
    }
    date[4] = id;
    return groups;
}

inline const std::vector<Fault>& faults() {
    static const std::vector<Fault> ALL{
        {"group lost", false,
         [](Draw& draw, const std::string&, Groups groups) { return loseGroups(draw, std::move(groups), 1); }},
        {"two neighbours lost", false,
         [](Draw& draw, const std::string&, Groups groups) { return loseGroups(draw, std::move(groups), 2); }},
        {"three neighbours lost", false,
         [](Draw& draw, const std::string&, Groups groups) { return loseGroups(draw, std::move(groups), 3); }},
        {"two neighbours swapped", false,
         [](Draw& draw, const std::string&, Groups groups) -> std::optional<Groups> {
             const std::size_t place = draw.below(groups.size() - 1);
             if (groups[place] == groups[place + 1]) {
                 return std::nullopt;
             }
             std::swap(groups[place], groups[place + 1]);
             return groups;
         }},
        {"group doubled", false,
         [](Draw& draw, const std::string&, Groups groups) -> std::optional<Groups> {
             const std::size_t place = draw.below(groups.size());
             const std::string group = groups[place];
             groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(place), group);
             return groups;
         }},
        {"digit lost", false,
         [](Draw& draw, const std::string&, Groups groups) -> std::optional<Groups> {
             std::string& group = groups[draw.below(groups.size())];
             group.erase(draw.below(group.size()), 1);
             return groups;
         }},
        {"digit added", false,
         [](Draw& draw, const std::string&, Groups groups) -> std::optional<Groups> {
             std::string& group = groups[draw.below(groups.size())];
             group.insert(draw.below(group.size() + 1), 1, "0123456789"[draw.below(10)]);
             return groups;
         }},
        {"letter in a group", false,
         [](Draw& draw, const std::string&, Groups groups) -> std::optional<Groups> {
             std::string& group = groups[draw.below(groups.size())];
             group[draw.below(group.size())] = static_cast<char>('A' + draw.below(26));
             return groups;
         }},
        {"group split by a space", false,
         [](Draw& draw, const std::string&, Groups groups) -> std::optional<Groups> {
             const std::size_t place = draw.below(groups.size());
             if (groups[place].size() < 2) {
                 return std::nullopt;
             }
             const std::size_t length = 1 + draw.below(groups[place].size() - 1);
             const std::string rest = groups[place].substr(length);
             groups[place].resize(length);
             groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(place) + 1, rest);
             return groups;
         }},
        {"two glued together", false,
         [](Draw& draw, const std::string&, Groups groups) -> std::optional<Groups> {
             const std::size_t place = draw.below(groups.size() - 1);
             groups[place] += groups[place + 1];
             groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(place) + 1);
             return groups;
         }},
        {"closer or opener lost", false,
         [](Draw& draw, const std::string&, Groups groups) { return loseOpener(draw, std::move(groups)); }},
        {"text cut off", false,
         [](Draw& draw, const std::string&, const Groups& groups) { return cutOff(draw, groups); }},
        {"Id changed", true,
         [](Draw& draw, const std::string& mmmm, Groups groups) { return changeId(draw, mmmm, std::move(groups)); }},
    };
    return ALL;
}

}  // namespace feed_test

#endif
