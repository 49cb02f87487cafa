// How a caller reads a level: has() and value() beside the map, and forEachLevel().
#include "support/OpenDecoder.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

// A height of 0 m, so that an absent quantity cannot pass for one of 0, and a dew point filed as a NaN.
Corvane::Level someLevel() {
    Corvane::Level level(Corvane::LT_TROPOPAUSE);
    level.fields[Corvane::LF_HEIGHT] = 0.0;
    level.fields[Corvane::LF_TDRY] = -56.3;
    level.fields[Corvane::LF_DP] = std::numeric_limits<double>::quiet_NaN();
    return level;
}

}  // namespace

TEST(LevelAccess, HasTellsWhatIsFiled) {
    const Corvane::Level level = someLevel();
    EXPECT_TRUE(level.has(Corvane::LF_HEIGHT));
    EXPECT_TRUE(level.has(Corvane::LF_DP));
    EXPECT_FALSE(level.has(Corvane::LF_PRES));
    EXPECT_EQ(level.fields.size(), 3U);
}

TEST(LevelAccess, ValueGivesTheQuantityOrTheFallback) {
    const Corvane::Level level = someLevel();
    EXPECT_EQ(level.value(Corvane::LF_TDRY), -56.3);
    EXPECT_EQ(level.value(Corvane::LF_HEIGHT, 99.0), 0.0);
    EXPECT_EQ(level.value(Corvane::LF_PRES, 1013.25), 1013.25);
    EXPECT_TRUE(std::isnan(level.value(Corvane::LF_PRES)));
    EXPECT_TRUE(std::isnan(level.value(Corvane::LF_DP, 1.0)));
    EXPECT_EQ(level.fields.size(), 3U);
}

TEST(LevelAccess, ForEachLevelVisitsTheLevelsOfAllLevels) {
    const Corvane report(
        "TTAA 56000 72403 99014 32259 11514 00140 30057 11500 88250 51256 27015 77999 51515 TTBB 56008 "
        "72403 00014 32259 11850 12456");
    const std::vector<Corvane::Level> levels = report.allLevels();
    ASSERT_EQ(levels.size(), 5U);
    std::vector<const Corvane::Level*> visited;
    report.forEachLevel([&](const Corvane::Level& level) { visited.push_back(&level); });
    ASSERT_EQ(visited.size(), levels.size());
    for (std::size_t i = 0; i < levels.size(); ++i) {
        EXPECT_EQ(visited[i]->type, levels[i].type);
        EXPECT_EQ(visited[i]->fields, levels[i].fields);
    }
    std::vector<const Corvane::Level*> again;
    report.forEachLevel([&](const Corvane::Level& level) { again.push_back(&level); });
    EXPECT_EQ(again, visited);
}
