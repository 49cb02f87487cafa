// The levels of a sounding: how those of one pressure are merged, and what is marked.
#include "SoundingParts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace {

using corvane::Sounding;
using corvane::SoundingLevel;
using sounding_test::decoded;
using sounding_test::Fields;
using sounding_test::handMade;
using sounding_test::PartReading;
using sounding_test::readLevel;
using sounding_test::soundingsOf;

constexpr auto SURFACE = Corvane::LT_SURFACE;
constexpr auto MANDATORY = Corvane::LT_MANDATORY;
constexpr auto SIGNIFICANT = Corvane::LT_SIGNIFICANT;
constexpr auto TROPOPAUSE = Corvane::LT_TROPOPAUSE;
constexpr auto MAXWIND = Corvane::LT_MAXWIND;
constexpr auto PRES = Corvane::LF_PRES;
constexpr auto TDRY = Corvane::LF_TDRY;
constexpr auto DP = Corvane::LF_DP;
constexpr auto WSPD = Corvane::LF_WSPD;
constexpr auto WDIR = Corvane::LF_WDIR;
constexpr auto HEIGHT = Corvane::LF_HEIGHT;

std::vector<SoundingLevel> levelsOf(const std::vector<PartReading>& parts) {
    const std::vector<Sounding> soundings = soundingsOf(parts);
    EXPECT_EQ(soundings.size(), 1U);
    return soundings.empty() ? std::vector<SoundingLevel>{} : soundings.front().levels;
}

const SoundingLevel& at(double pressure, const std::vector<SoundingLevel>& levels) {
    for (const SoundingLevel& level : levels) {
        if (level.pressure == pressure) {
            return level;
        }
    }
    static const SoundingLevel none;
    ADD_FAILURE() << "no level at " << pressure;
    return none;
}

// The quantities of a level that are reported.
Fields fieldsOf(const SoundingLevel& level) {
    Fields fields;
    for (const auto& [field, value] :
         Fields{{PRES, level.pressure},
                {TDRY, level.temperature},
                {DP, level.dewpoint},
                {WSPD, level.windSpeed},
                {WDIR, level.windDirection},
                {HEIGHT, level.heightComputed ? SoundingLevel::NOT_GIVEN : level.height}}) {
        if (!std::isnan(value)) {
            fields[field] = value;
        }
    }
    return fields;
}

// ---- merging -------------------------------------------------------------------------------------------------------

TEST(SoundingLevels, ComeByDescendingPressureEachPressureOnce) {
    const std::vector<SoundingLevel> levels = levelsOf({handMade(
        'B', {readLevel(SIGNIFICANT, {{PRES, 850}, {TDRY, 1}}), readLevel(SIGNIFICANT, {{PRES, 998}, {TDRY, 2}}),
              readLevel(SIGNIFICANT, {{PRES, 850}, {WSPD, 5}, {WDIR, 90}})})});
    ASSERT_EQ(levels.size(), 2U);
    EXPECT_EQ(fieldsOf(levels[0]), (Fields{{PRES, 998}, {TDRY, 2}}));
    EXPECT_EQ(fieldsOf(levels[1]), (Fields{{PRES, 850}, {TDRY, 1}, {WSPD, 5}, {WDIR, 90}}));
}

TEST(SoundingLevels, SignificantPrevailsOverStandardAndStandardOverSurfaceFieldByField) {
    const std::vector<SoundingLevel> levels =
        levelsOf({handMade('A', {readLevel(SURFACE, {{PRES, 1000}, {TDRY, 1}, {DP, 0}, {WSPD, 3}, {WDIR, 10}}),
                                 readLevel(MANDATORY, {{PRES, 1000}, {TDRY, 2}, {DP, 1}, {HEIGHT, 88}})}),
                  handMade('B', {readLevel(SIGNIFICANT, {{PRES, 1000}, {TDRY, 3}})})});
    ASSERT_EQ(levels.size(), 1U);
    EXPECT_EQ(fieldsOf(levels[0]), (Fields{{PRES, 1000}, {TDRY, 3}, {DP, 1}, {WSPD, 3}, {WDIR, 10}, {HEIGHT, 88}}));
    EXPECT_EQ(levels[0].kinds, SoundingLevel::SURFACE | SoundingLevel::MANDATORY | SoundingLevel::SIGNIFICANT);
}

TEST(SoundingLevels, LaterOfOneKindPrevails) {
    const std::vector<SoundingLevel> levels =
        levelsOf({handMade('D', {readLevel(SIGNIFICANT, {{PRES, 100}, {TDRY, -60}})}),
                  handMade('B', {readLevel(SIGNIFICANT, {{PRES, 100}, {TDRY, -61}}),
                                 readLevel(SIGNIFICANT, {{PRES, 100}, {TDRY, -62}, {DP, -70}})})});
    ASSERT_EQ(levels.size(), 1U);
    EXPECT_EQ(fieldsOf(levels[0]), (Fields{{PRES, 100}, {TDRY, -60}, {DP, -70}}));
}

TEST(SoundingLevels, TropopauseAndMaximumWindAddWhatTheyAloneGive) {
    const std::vector<SoundingLevel> levels =
        levelsOf({handMade('A', {readLevel(MANDATORY, {{PRES, 200}, {TDRY, -55}, {HEIGHT, 12000}}),
                                 readLevel(TROPOPAUSE, {{PRES, 200}, {TDRY, -56}, {DP, -66}, {WSPD, 40}, {WDIR, 270}}),
                                 readLevel(MAXWIND, {{PRES, 200}, {WSPD, 50}, {WDIR, 280}}),
                                 readLevel(TROPOPAUSE, {{PRES, 150}, {TDRY, -60}}),
                                 readLevel(MAXWIND, {{PRES, 180}, {WSPD, 55}, {WDIR, 285}})})});
    ASSERT_EQ(levels.size(), 3U);
    EXPECT_EQ(fieldsOf(levels[0]),
              (Fields{{PRES, 200}, {TDRY, -55}, {DP, -66}, {WSPD, 40}, {WDIR, 270}, {HEIGHT, 12000}}));
    EXPECT_EQ(levels[0].kinds, SoundingLevel::MANDATORY | SoundingLevel::TROPOPAUSE | SoundingLevel::MAXWIND);
    EXPECT_EQ(fieldsOf(levels[1]), (Fields{{PRES, 180}, {WSPD, 55}, {WDIR, 285}}));
    EXPECT_EQ(levels[1].kinds, SoundingLevel::MAXWIND);
    EXPECT_EQ(fieldsOf(levels[2]), (Fields{{PRES, 150}, {TDRY, -60}}));
    EXPECT_EQ(levels[2].kinds, SoundingLevel::TROPOPAUSE);
}

TEST(SoundingLevels, TropopauseDoesNotPrevailOverAPartThatComesLater) {
    const std::vector<SoundingLevel> levels =
        levelsOf({handMade('B', {readLevel(SIGNIFICANT, {{PRES, 270}, {TDRY, -47.9}})}),
                  handMade('A', {readLevel(TROPOPAUSE, {{PRES, 270}, {TDRY, -48.9}})})});
    ASSERT_EQ(levels.size(), 1U);
    EXPECT_EQ(levels[0].temperature, -47.9);
}

TEST(SoundingLevels, RemarksOfADropsondeAreNotLevels) {
    const std::vector<SoundingLevel> levels = levelsOf({decoded(
        "XXAA 70035 99153 70659 04355 99007 29456 28521 00067 28856 28523 88999 77999 62626 MBL WND 29023 DLM WND "
        "29525 007410 WL150 28523 080 REL 1532N06587W 023155 SPG 1529N06581W 024152 LST WND 013")});
    ASSERT_EQ(levels.size(), 2U);
    EXPECT_EQ(levels[0].pressure, 1007);
    EXPECT_EQ(levels[1].pressure, 1000);
}

TEST(SoundingLevels, NeedAPressure) {
    const std::vector<Sounding> soundings =
        soundingsOf({handMade('A', {readLevel(SURFACE, {{TDRY, 1}}), readLevel(SIGNIFICANT, {{PRES, 0}, {TDRY, 1}}),
                                    readLevel(SIGNIFICANT, {{PRES, SoundingLevel::NOT_GIVEN}, {TDRY, 1}})})});
    ASSERT_EQ(soundings.size(), 1U);
    EXPECT_TRUE(soundings[0].levels.empty());
    EXPECT_EQ(soundings[0].letters, "A");
}

TEST(SoundingLevels, AreThoseOfTheMergedProfile) {
    const std::vector<std::string> texts{
        "TTAA 63001 70219 99000 20256 08510 00038 20256 06505 92703 13007 03007 85409 08610 02512 88999 77999",
        "TTBB 63008 70219 00000 20456 11950 15022 22925 12911 33850 08411 21212 00000 09010 11998 02504 22850 03012"};
    const std::vector<SoundingLevel> levels = levelsOf({decoded(texts[0]), decoded(texts[1])});
    const std::vector<Corvane::Level> profile = Corvane(texts[0] + " " + texts[1]).profile();
    ASSERT_EQ(levels.size(), profile.size());
    ASSERT_EQ(levels.size(), 5U);
    for (std::size_t index = 0; index < levels.size(); ++index) {
        EXPECT_EQ(fieldsOf(levels[index]), Fields(profile[profile.size() - 1 - index].fields));
    }
    // 20456, not 20256, at the surface: part B's significant level; its wind, 09010, also.
    EXPECT_EQ(levels[0].temperature, 20.4);
    EXPECT_EQ(levels[0].windDirection, 90);
}

TEST(SoundingLevels, KnowTheGroupsTheyComeFrom) {
    PartReading partA = handMade(
        'A', {readLevel(SURFACE, {{PRES, 1000}, {TDRY, 1}}), readLevel(MANDATORY, {{PRES, 1000}, {HEIGHT, 88}})});
    partA.reading.levels[0].groups = {2, 3};
    partA.reading.levels[1].groups = {5, 3};
    PartReading partB = handMade('B', {readLevel(SIGNIFICANT, {{PRES, 1000}, {TDRY, 1}}),
                                       readLevel(SIGNIFICANT, {{PRES, 1000}, {WSPD, 1}, {WDIR, 10}})});
    partB.reading.levels[0].groups = {1999, 2};
    partB.reading.levels[1].groups = {9, 4};
    const std::vector<SoundingLevel> levels = levelsOf({partB, partA});
    ASSERT_EQ(levels.size(), 1U);
    std::vector<std::vector<std::size_t>> origins;
    for (const SoundingLevel::Origin& origin : levels[0].origins) {
        origins.push_back({origin.part, origin.groups.first, origin.groups.count});
    }
    EXPECT_EQ(origins, (std::vector<std::vector<std::size_t>>{{0, 2, 3}, {0, 5, 3}, {1, 9, 4}, {1, 1999, 2}}));
}

// ---- marks ---------------------------------------------------------------------------------------------------------

TEST(SoundingLevels, AboveThePressureOfTheSurfaceAreBelowTheGround) {
    // Phoenix-like: surface 870 hPa, 1000 hPa extrapolated to 5 m.
    const std::vector<SoundingLevel> levels = levelsOf({decoded(
        "TTAA 63001 72572 99870 36683 08505 00005 ///// ///// 92694 ///// ///// 85499 32680 08009 88999 77999")});
    ASSERT_EQ(levels.size(), 4U);
    EXPECT_TRUE(at(1000, levels).belowGround);
    EXPECT_TRUE(at(925, levels).belowGround);
    EXPECT_FALSE(at(870, levels).belowGround);
    EXPECT_FALSE(at(850, levels).belowGround);
    EXPECT_EQ(at(1000, levels).height, 5);
    EXPECT_FALSE(at(1000, levels).heightComputed);
}

TEST(SoundingLevels, AtThePressureOfTheSurfaceAreNotBelowTheGround) {
    const std::vector<SoundingLevel> levels =
        levelsOf({decoded("TTAA 63001 70219 99000 20256 08510 00038 20256 06505 92703 13007 03007 88999 77999")});
    EXPECT_FALSE(at(1000, levels).belowGround);
}

TEST(SoundingLevels, WithoutASurfaceNoneIsBelowTheGround) {
    const std::vector<SoundingLevel> levels = levelsOf({decoded(
        "TTAA 63001 72572 99/// 36683 08505 00005 ///// ///// 92/// ///// ///// 85499 32680 08009 88999 77999")});
    ASSERT_EQ(levels.size(), 2U);
    EXPECT_FALSE(levels[0].belowGround);
}

TEST(SoundingLevels, CarryTheDoubtsOfAllTheyComeFromEachOnce) {
    const std::vector<SoundingLevel> levels =
        levelsOf({handMade('A', {readLevel(MANDATORY, {{PRES, 900}, {TDRY, 1}}),
                                 readLevel(MANDATORY, {{PRES, 700}, {TDRY, 1}}, {"hydrostatic", "lapse-rate"})}),
                  handMade('B', {readLevel(SIGNIFICANT, {{PRES, 800}, {TDRY, 1}}),
                                 readLevel(SIGNIFICANT, {{PRES, 700}, {TDRY, 1}}, {"lapse-rate"}),
                                 readLevel(SIGNIFICANT, {{PRES, 600}, {TDRY, 1}}, {"other"})})});
    EXPECT_TRUE(at(900, levels).doubts.empty());
    EXPECT_TRUE(at(800, levels).doubts.empty());
    EXPECT_EQ(at(700, levels).doubts, (std::vector<std::string>{"hydrostatic", "lapse-rate"}));
    EXPECT_EQ(at(600, levels).doubts, (std::vector<std::string>{"other"}));
}

// ---- unit of wind --------------------------------------------------------------------------------------------------

TEST(UnitOfWind, WindsOfTheOddPartAreDoubtedAndLeftAsTheyAre) {
    // Parts A to C give knots (day 63), part D does not (day 13).
    const std::vector<SoundingLevel> levels =
        levelsOf({decoded("TTAA 63001 70219 99000 20256 08510 00038 20256 06505 88999 77999"),
                  decoded("TTBB 63008 70219 00000 20256 11950 15022 21212 11998 02504"),
                  decoded("TTCC 63001 70219 70887 49385 03513 88999 77999"),
                  decoded("TTDD 1300/ 70219 11932 48785 21212 11925 35018 22700 02016")});
    EXPECT_TRUE(at(1000, levels).doubts.empty());
    EXPECT_TRUE(at(998, levels).doubts.empty());
    EXPECT_TRUE(at(93.2, levels).doubts.empty());  // a temperature, no wind
    EXPECT_EQ(at(92.5, levels).doubts, (std::vector<std::string>{"unit"}));
    EXPECT_EQ(at(92.5, levels).windSpeed, 18);
    EXPECT_EQ(at(70, levels).doubts, (std::vector<std::string>{"unit"}));  // part D prevails over part C
    EXPECT_EQ(at(70, levels).windSpeed, 16);
}

TEST(UnitOfWind, OddPartThatDoesNotPrevailIsNotDoubted) {
    const std::vector<SoundingLevel> levels =
        levelsOf({decoded("TTAA 13001 70219 99000 20256 08510 00038 20256 06505 92703 13007 03007 88999 77999"),
                  decoded("TTBB 63008 70219 00000 20256 11950 15022 21212 00000 08510 11998 02504"),
                  decoded("TTCC 63001 70219 70887 49385 03513 88999 77999")});
    EXPECT_TRUE(at(1000, levels).doubts.empty());
    EXPECT_EQ(at(1000, levels).windSpeed, 10 * 0.5144);
    EXPECT_EQ(at(925, levels).doubts, (std::vector<std::string>{"unit"}));
}

TEST(UnitOfWind, WhereBothUnitsAreEquallyFrequentAllWindsAreDoubted) {
    const std::vector<SoundingLevel> levels =
        levelsOf({decoded("TTAA 63001 70219 99000 20256 08510 00038 20256 06505 92703 13007 ///// 88999 77999"),
                  decoded("TTBB 13008 70219 00000 20256 11950 15022 21212 11998 02504")});
    EXPECT_EQ(at(1000, levels).doubts, (std::vector<std::string>{"unit"}));
    EXPECT_EQ(at(998, levels).doubts, (std::vector<std::string>{"unit"}));
    EXPECT_TRUE(at(925, levels).doubts.empty());
    EXPECT_TRUE(at(950, levels).doubts.empty());
}

TEST(UnitOfWind, PartWithoutWindsDoesNotCount) {
    const std::vector<SoundingLevel> levels =
        levelsOf({decoded("TTAA 63001 70219 99000 20256 08510 00038 20256 06505 88999 77999"),
                  decoded("TTBB 13008 70219 00000 20256 11950 15022"), decoded("TTDD 1300/ 70219 11932 48785")});
    for (const SoundingLevel& level : levels) {
        EXPECT_TRUE(level.doubts.empty()) << level.pressure;
    }
}

TEST(UnitOfWind, MetresPerSecondThroughoutIsNotDoubted) {
    const std::vector<SoundingLevel> levels =
        levelsOf({decoded("TTAA 13001 70219 99000 20256 08510 00038 20256 06505 88999 77999"),
                  decoded("TTBB 13008 70219 00000 20256 11950 15022 21212 11998 02504")});
    for (const SoundingLevel& level : levels) {
        EXPECT_TRUE(level.doubts.empty()) << level.pressure;
    }
    EXPECT_EQ(at(998, levels).windSpeed, 4);
}

TEST(UnitOfWind, ReplacedPartDoesNotCount) {
    const std::vector<SoundingLevel> levels =
        levelsOf({decoded("TTAA 63001 70219 99000 20256 08510 00038 20256 06505 88999 77999"),
                  decoded("TTBB 13008 70219 00000 20256 11950 15022 21212 11998 02504"),
                  decoded("TTBB 63008 70219 00000 20256 11950 15022 21212 11998 02504")});
    EXPECT_TRUE(at(998, levels).doubts.empty());
    EXPECT_EQ(at(998, levels).windSpeed, 4 * 0.5144);
}

}  // namespace
