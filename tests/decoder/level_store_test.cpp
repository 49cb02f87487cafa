// The levels of a report: their kinds and quantities by name, and the order in which they are filed and read back.
#include "support/KindNames.h"
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace {

// A level of this kind whose pressure tells it from the others of its kind.
Corvane::Level levelAt(Corvane::LEVEL_TYPE kind, double pressure) {
    Corvane::Level level(kind);
    level.fields[Corvane::LF_PRES] = pressure;
    return level;
}

}  // namespace

TEST(Level, EveryKindHasItsValueAndName) {
    const Corvane::LEVEL_TYPE kinds[] = {SURFACE,    MANDATORY, SIGNIFICANT, TROPOPAUSE, MAXWIND,      LAYER_150M,
                                         DEEP_LAYER, MEAN_BL,   LAST_WIND,   RELEASE,    SPLASH_INTEG, SPLASH_GPS};
    EXPECT_EQ(static_cast<int>(Corvane::LT_GENERIC), 0);
    EXPECT_EQ(Corvane::Level(Corvane::LT_GENERIC).name(), KIND_NAMES[0]);
    int value = 1;
    for (const Corvane::LEVEL_TYPE kind : kinds) {
        SCOPED_TRACE(value);
        EXPECT_EQ(static_cast<int>(kind), value);
        EXPECT_EQ(Corvane::Level(kind).name(), KIND_NAMES.at(static_cast<std::size_t>(value)));
        ++value;
    }
    EXPECT_EQ(value, 13);
}

TEST(Level, KindOutsideTheListIsUnknown) {
    for (const int value : {-1, 13, 14, 100}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(Corvane::Level(static_cast<Corvane::LEVEL_TYPE>(value)).name(), "unknown");
    }
}

TEST(Level, EveryQuantityHasItsValueAndName) {
    struct Row {
        Corvane::LEVEL_FIELD field;
        int value;
        const char* name;
    };
    const Row rows[] = {
        {Corvane::LF_PRES, 0, "pres"},
        {Corvane::LF_TDRY, 1, "tdry"},
        {Corvane::LF_DP, 2, "dp"},
        {Corvane::LF_WSPD, 3, "wspd"},
        {Corvane::LF_WDIR, 4, "wdir"},
        {Corvane::LF_HEIGHT, 5, "height"},
        {Corvane::LF_VA, 6, "va"},
        {Corvane::LF_VB, 7, "vb"},
        // These four have a name only in the header of the table.
        {Corvane::LF_TIME, 8, "unknown"},
        {Corvane::LF_LAT, 9, "unknown"},
        {Corvane::LF_LON, 10, "unknown"},
        {Corvane::LF_PRES2, 11, "unknown"},
    };
    const Corvane::Level level(Corvane::LT_SURFACE);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(static_cast<int>(row.field), row.value);
        EXPECT_EQ(level.fieldName(row.field), row.name);
    }
}

TEST(Level, QuantityOutsideTheListIsUnknown) {
    const Corvane::Level level(Corvane::LT_SURFACE);
    EXPECT_EQ(level.fieldName(static_cast<Corvane::LEVEL_FIELD>(12)), "unknown");
    EXPECT_EQ(level.fieldName(static_cast<Corvane::LEVEL_FIELD>(-1)), "unknown");
}

TEST(Level, LevelOfNoKindIsGeneric) {
    const Corvane::Level level;
    EXPECT_EQ(level.type, Corvane::LT_GENERIC);
    EXPECT_TRUE(level.fields.empty());
}

TEST(Level, KindMakesALevelWithoutQuantities) {
    const Corvane::Level level(Corvane::LT_MAXWIND);
    EXPECT_EQ(level.type, Corvane::LT_MAXWIND);
    EXPECT_TRUE(level.fields.empty());
}

TEST(Level, QuantitiesAscendByTheirValue) {
    Corvane::Level level(Corvane::LT_DEEPLAYERWIND);
    level.fields[Corvane::LF_PRES2] = 850.0;
    level.fields[Corvane::LF_PRES] = 997.0;
    level.fields[Corvane::LF_WDIR] = 95.0;
    std::vector<Corvane::LEVEL_FIELD> order;
    for (const auto& field : level.fields) {
        order.push_back(field.first);
    }
    const std::vector<Corvane::LEVEL_FIELD> ascending = {Corvane::LF_PRES, Corvane::LF_WDIR, Corvane::LF_PRES2};
    EXPECT_EQ(order, ascending);
}

TEST(Level, ComparisonSeesOnlyTheKind) {
    const OpenDecoder::LevelComparatorByType before;
    EXPECT_TRUE(before(levelAt(Corvane::LT_SURFACE, 1014.0), levelAt(Corvane::LT_MANDATORY, 10.0)));
    EXPECT_FALSE(before(levelAt(Corvane::LT_MANDATORY, 10.0), levelAt(Corvane::LT_SURFACE, 1014.0)));
    EXPECT_FALSE(before(levelAt(Corvane::LT_SURFACE, 10.0), levelAt(Corvane::LT_SURFACE, 1014.0)));
    EXPECT_TRUE(before(Corvane::LT_GENERIC, Corvane::LT_SPLASHPOINTRAWGPS));
    EXPECT_FALSE(before(Corvane::LT_TROPOPAUSE, Corvane::LT_TROPOPAUSE));
}

TEST(LevelStore, EmptyStoreGivesNoLevels) {
    const OpenDecoder decoder;
    EXPECT_TRUE(decoder.allLevels().empty());
    EXPECT_TRUE(decoder.levels({}).empty());
    EXPECT_TRUE(decoder.levels({Corvane::LT_SURFACE, Corvane::LT_SIGNIFICANT}).empty());
}

TEST(LevelStore, SurfaceComesBeforeTheSignificantLevels) {
    const OpenDecoder decoder =
        OpenDecoder::holding({levelAt(Corvane::LT_SIGNIFICANT, 850.0), levelAt(Corvane::LT_SURFACE, 1014.0),
                              levelAt(Corvane::LT_SIGNIFICANT, 925.0)});
    EXPECT_EQ(summaryOf(decoder.allLevels()), "surface 1014, significant 850, significant 925");
}

TEST(LevelStore, KindsAscendInAnyFilingOrder) {
    OpenDecoder decoder;
    for (int value = 12; value >= 0; --value) {
        Corvane::Level level(static_cast<Corvane::LEVEL_TYPE>(value));
        decoder.addLevel(level);
    }
    const std::vector<Corvane::Level> levels = decoder.allLevels();
    ASSERT_EQ(levels.size(), 13u);
    for (int value = 0; value <= 12; ++value) {
        SCOPED_TRACE(value);
        EXPECT_EQ(static_cast<int>(levels[static_cast<std::size_t>(value)].type), value);
    }
}

TEST(LevelStore, LevelsOfOneKindKeepTheirFilingOrder) {
    const OpenDecoder decoder =
        OpenDecoder::holding({levelAt(Corvane::LT_MANDATORY, 500.0), levelAt(Corvane::LT_MANDATORY, 1000.0),
                              levelAt(Corvane::LT_MANDATORY, 700.0), levelAt(Corvane::LT_MANDATORY, 250.0)});
    EXPECT_EQ(summaryOf(decoder.allLevels()), "mandatory 500, mandatory 1000, mandatory 700, mandatory 250");
}

TEST(LevelStore, TwoLevelsOfOnePressureStayTwo) {
    const Corvane::Level level = levelAt(Corvane::LT_SIGNIFICANT, 850.0);
    const OpenDecoder decoder = OpenDecoder::holding({level, level});
    EXPECT_EQ(summaryOf(decoder.allLevels()), "significant 850, significant 850");
}

TEST(LevelStore, LevelWithoutQuantitiesIsFiledLikeAnyOther) {
    const OpenDecoder decoder =
        OpenDecoder::holding({levelAt(Corvane::LT_TROPOPAUSE, 250.0), Corvane::Level(Corvane::LT_TROPOPAUSE)});
    EXPECT_EQ(summaryOf(decoder.allLevels()), "tropopause 250, tropopause -");
    EXPECT_EQ(summaryOf(decoder.levels({Corvane::LT_TROPOPAUSE})), "tropopause 250, tropopause -");
}

TEST(LevelStore, StoreHoldsACopyOfTheLevel) {
    OpenDecoder decoder;
    Corvane::Level level = levelAt(Corvane::LT_MAXWIND, 250.0);
    decoder.addLevel(level);
    level.fields[Corvane::LF_PRES] = 300.0;
    level.type = Corvane::LT_SURFACE;
    EXPECT_EQ(summaryOf(decoder.allLevels()), "maxwind 250");
}

TEST(LevelStore, EveryQuantityOfALevelIsReadBack) {
    Corvane::Level level(Corvane::LT_RELEASEPOINT);
    for (int value = 0; value <= 11; ++value) {
        level.fields[static_cast<Corvane::LEVEL_FIELD>(value)] = 0.5 + value;
    }
    const OpenDecoder decoder = OpenDecoder::holding({level});
    const std::vector<Corvane::Level> levels = decoder.allLevels();
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].fields, level.fields);
    EXPECT_EQ(levels[0].type, Corvane::LT_RELEASEPOINT);
}

TEST(LevelStore, ChosenKindsComeInAscendingOrder) {
    const OpenDecoder decoder =
        OpenDecoder::holding({levelAt(Corvane::LT_MAXWIND, 250.0), levelAt(Corvane::LT_SURFACE, 1014.0),
                              levelAt(Corvane::LT_MANDATORY, 850.0), levelAt(Corvane::LT_MAXWIND, 180.0),
                              levelAt(Corvane::LT_SURFACE, 1013.0)});
    const std::string expected = "surface 1014, surface 1013, maxwind 250, maxwind 180";
    std::set<Corvane::LEVEL_TYPE> windFirst;
    windFirst.insert(Corvane::LT_MAXWIND);
    windFirst.insert(Corvane::LT_SURFACE);
    EXPECT_EQ(summaryOf(decoder.levels(windFirst)), expected);
    std::set<Corvane::LEVEL_TYPE> surfaceFirst;
    surfaceFirst.insert(Corvane::LT_SURFACE);
    surfaceFirst.insert(Corvane::LT_MAXWIND);
    EXPECT_EQ(summaryOf(decoder.levels(surfaceFirst)), expected);
}

TEST(LevelStore, ChosenKindWithoutLevelsAddsNothing) {
    const OpenDecoder decoder = OpenDecoder::holding({levelAt(Corvane::LT_MANDATORY, 850.0)});
    EXPECT_EQ(summaryOf(decoder.levels({Corvane::LT_GENERIC, Corvane::LT_MANDATORY, Corvane::LT_SPLASHPOINTRAWGPS})),
              "mandatory 850");
    EXPECT_TRUE(decoder.levels({Corvane::LT_SURFACE}).empty());
    EXPECT_TRUE(decoder.levels({}).empty());
}

TEST(LevelStore, PressureDoesNotOrderTheStore) {
    // The lowest pressure has the highest kind and the other way round: only the kind orders the store.
    const OpenDecoder decoder =
        OpenDecoder::holding({levelAt(Corvane::LT_TROPOPAUSE, 1.0), levelAt(Corvane::LT_MANDATORY, 500.0),
                              levelAt(Corvane::LT_GENERIC, 2000.0)});
    EXPECT_EQ(summaryOf(decoder.allLevels()), "generic 2000, mandatory 500, tropopause 1");
}
