// How often a fault in a part leads to a wrong row: corvane_feed_faults FILE [DRAWS [SEED]]
//
// Takes the clean parts of a file of bulletins, each text once, puts one fault into one of them at a time, and counts
// the parts with a row that the clean part does not have. The table is in doc/feed.md.
#include "FeedParts.h"
#include "PartFaults.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string>

namespace {

using feed_test::Draw;
using feed_test::Fault;
using feed_test::Groups;
using Rows = std::multiset<std::string>;

struct CleanPart {
    std::string mmmm;
    Groups groups;
    Rows rows;
    Rows rowsOfDecoder;
};

std::string textOf(const std::string& mmmm, const Groups& groups) {
    std::string text = mmmm;
    for (const std::string& group : groups) {
        text += ' ' + group;
    }
    return text;
}

Rows rowsOf(const corvane::Reading& reading) {
    const feed_test::Lines rows = feed_test::rowsOf(reading);
    return {rows.begin(), rows.end()};
}

// What the decoder alone makes of a text; nothing when it refuses it.
Rows rowsOfDecoder(const std::string& text) {
    Rows rows;
    try {
        for (const Corvane::Level& level : Corvane(text).allLevels()) {
            std::string row;
            corvane::table::appendRow(row, level);
            rows.insert(row);
        }
    } catch (const std::string&) {
    } catch (const std::out_of_range&) {
    }
    return rows;
}

bool hasOthers(const Rows& rows, const Rows& clean) {
    for (const std::string& row : rows) {
        if (rows.count(row) > clean.count(row)) {
            return true;
        }
    }
    return false;
}

std::vector<CleanPart> cleanPartsOf(std::istream& input) {
    std::vector<CleanPart> parts;
    std::set<std::string> seen;
    corvane::BulletinReader reader(input, "-");
    corvane::Part part;
    while (reader.next(part)) {
        if (!seen.insert(feed_test::textOf(part)).second) {
            continue;
        }
        const corvane::Reading reading = corvane::read(part);
        if (reading.status == corvane::Reading::DECODED && !reading.mended() && !reading.doubtful() &&
            !reading.levels.empty()) {
            Groups groups;
            for (const corvane::Group& group : part.groups) {
                groups.push_back(group.text);
            }
            const std::string text = textOf(part.mmmm, groups);
            parts.push_back({part.mmmm, groups, rowsOf(reading), rowsOfDecoder(text)});
        }
    }
    return parts;
}

struct Count {
    int wrong = 0;
    int silent = 0;
    int refused = 0;
    int wrongAlone = 0;
};

void countFault(const CleanPart& part, const Groups& faulty, Count& count) {
    const std::string text = textOf(part.mmmm, faulty);
    Rows rows;
    bool said = false;
    bool refused = false;
    for (const corvane::Part& cut : feed_test::partsOf(text + '=')) {
        const corvane::Reading reading = corvane::read(cut);
        rows.merge(rowsOf(reading));
        refused = refused || reading.status == corvane::Reading::REFUSED;
        said = said || refused || reading.mended() || reading.doubtful();
    }
    const bool wrong = hasOthers(rows, part.rows);
    count.wrong += wrong ? 1 : 0;
    count.silent += wrong && !said ? 1 : 0;
    count.refused += refused ? 1 : 0;
    count.wrongAlone += hasOthers(rowsOfDecoder(text), part.rowsOfDecoder) ? 1 : 0;
}

Count drawFaults(const Fault& fault, const std::vector<CleanPart>& parts, int draws, std::uint32_t seed) {
    Draw draw(seed);
    Count count;
    for (int drawn = 0; drawn < draws;) {
        const CleanPart& part = parts[draw.below(parts.size())];
        if (fault.onlyPartsAAndC && part.mmmm[2] != 'A' && part.mmmm[2] != 'C') {
            continue;
        }
        if (const std::optional<Groups> faulty = fault.make(draw, part.mmmm, part.groups)) {
            countFault(part, *faulty, count);
            ++drawn;
        }
    }
    return count;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 4) {
        std::fprintf(stderr, "usage: %s FILE [DRAWS [SEED]]\n", argv[0]);
        return 2;
    }
    std::ifstream input(argv[1], std::ios::binary);
    const std::vector<CleanPart> parts = cleanPartsOf(input);
    const int draws = argc > 2 ? std::atoi(argv[2]) : 1500;
    const auto seed = static_cast<std::uint32_t>(argc > 3 ? std::atoi(argv[3]) : 1);
    if (parts.empty() || draws <= 0) {
        std::fprintf(stderr, "%s: no clean parts in %s\n", argv[0], argv[1]);
        return 2;
    }
    std::printf("%zu clean parts, %d draws per fault\n\n", parts.size(), draws);
    std::printf("| fault | wrong rows | nothing said | refused | decoder alone |\n|---|---|---|---|---|\n");
    for (const Fault& fault : feed_test::faults()) {
        const Count count = drawFaults(fault, parts, draws, seed);
        const auto share = [&](int number) { return 100.0 * number / draws; };
        std::printf("| %s | %.1f %% | %.1f %% | %.1f %% | %.0f %% |\n", fault.name.c_str(), share(count.wrong),
                    share(count.silent), share(count.refused), share(count.wrongAlone));
        std::fflush(stdout);
    }
    return 0;
}
