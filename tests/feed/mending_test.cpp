// The mends where the decoder fails, in parts A and C.
#include "FeedParts.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using corvane::Reading;
using feed_test::BEIJING;
using feed_test::givenOf;
using feed_test::Lines;
using feed_test::mendsOf;
using feed_test::readOnly;
using feed_test::reasonOf;
using feed_test::rowsOf;
using feed_test::SHIP_D;
using feed_test::statusOf;
using feed_test::with;

// The ground and 1000 hPa, without section 3 and what follows.
const std::string SHORT = "TTAA 28231 54511 99015 02257 00000 00156 07669 23009";
const Lines SHORT_LEVELS{"surface,1015,2.2,-4.8,0,0,,,,,", "mandatory,1000,7.6,-11.4,9,230,156,,,,"};

// ---- what the decoder reads ----

TEST(Levels, AWholePartA) {
    const Reading reading = readOnly(BEIJING);
    EXPECT_EQ(rowsOf(reading),
              (Lines{"surface,1015,2.2,-4.8,0,0,,,,,", "mandatory,1000,7.6,-11.4,9,230,156,,,,",
                     "mandatory,925,8,-15,6,285,797,,,,", "mandatory,850,4,-15,12,315,1490,,,,",
                     "mandatory,700,-2.5,-18.5,16,330,3044,,,,", "mandatory,500,-16.3,-41.3,21,320,5650,,,,",
                     "mandatory,400,-29.3,-49.3,20,320,7280,,,,", "mandatory,300,-45.3,-62.3,22,305,9270,,,,",
                     "mandatory,250,-54.3,-69.3,22,315,10470,,,,", "mandatory,200,-62.1,,24,320,11870,,,,",
                     "mandatory,150,-60.5,,19,280,13660,,,,", "mandatory,100,-58.9,,25,280,16170,,,,",
                     "tropopause,187,-63.9,,24,315,,,,,"}));
    EXPECT_EQ(reading.launch, "2315");
    EXPECT_TRUE(reading.mends.empty());
    EXPECT_TRUE(reading.doubts.empty());
    EXPECT_FALSE(reading.mended());
    EXPECT_FALSE(reading.lost());
    EXPECT_FALSE(reading.doubtful());
}

TEST(Levels, EachKnowsItsGroups) {
    const Reading reading = readOnly(BEIJING);
    ASSERT_EQ(reading.levels.size(), 13U);
    EXPECT_EQ(reading.levels[0].groups.first, 2U);
    EXPECT_EQ(reading.levels[0].groups.count, 3U);
    EXPECT_EQ(reading.levels[11].groups.first, 35U);
    EXPECT_EQ(reading.levels[12].groups.first, 38U);
    EXPECT_EQ(reading.levels[12].groups.count, 3U);
}

TEST(Levels, TheMaximumWindOfPartCIsInHectopascals) {
    // Lake Charles, 13 July 2022; speeds in knots: 64 * 0.5144, 61 * 0.5144.
    const std::string text = "TTCC 63000 72240 70879 65973 11018 88999 77062 07564 420// 77141 09561 42025";
    EXPECT_EQ(rowsOf(text), (Lines{"mandatory,70,-65.9,-88.9,9.2592,110,18790,,,,", "maxwind,6.2,,,32.9216,75,,,,,",
                                   "maxwind,14.1,,,31.3784,95,,,,,"}));
    EXPECT_EQ(rowsOf(SHORT + " 88999 77269 31532")[2], "maxwind,269,,,32,315,,,,,");
    EXPECT_EQ(rowsOf(SHORT + " 88999 66179 12575")[2], "maxwind,179,,,75,125,,,,,");
    EXPECT_EQ(rowsOf(SHORT + " 88999 77/// 31532")[2], "maxwind,,,,32,315,,,,,");
}

TEST(Levels, ATropopauseHasItsWind) {
    EXPECT_EQ(rowsOf(SHORT + " 88187 639// 31524 88113 659// 29019 77999"),
              (Lines{SHORT_LEVELS[0], SHORT_LEVELS[1], "tropopause,187,-63.9,,24,315,,,,,",
                     "tropopause,113,-65.9,,19,290,,,,,"}));
    EXPECT_EQ(rowsOf(SHORT + " 88187 639// ///// 77999")[2], "tropopause,187,-63.9,,,,,,,,");
    EXPECT_EQ(rowsOf(SHORT + " 88187 ///// 31524 77999")[2], "tropopause,187,,,24,315,,,,,");
    EXPECT_EQ(rowsOf(SHORT + " 88/// 639// 31524 77999")[2], "tropopause,,-63.9,,24,315,,,,,");
    EXPECT_EQ(rowsOf("TTCC 28231 54511 70858 725// 24516 88903 851// 04021 77999")[1],
              "tropopause,90.3,-85.1,,21,40,,,,,");
}

TEST(Levels, ALevelWithoutAValueIsLeftOut) {
    EXPECT_EQ(rowsOf(SHORT + " 88187 ///// ///// 77269 ///// 77999"), SHORT_LEVELS);
    EXPECT_EQ(rowsOf(SHORT + " 92/// ///// ///// 88999 77999"), SHORT_LEVELS);
    EXPECT_EQ(rowsOf(SHORT + " 88999 77269 ///// 41210"), SHORT_LEVELS);
    EXPECT_EQ(rowsOf("TTAA 28231 54511 99015 ///// ///// 00156 07669 23009 88999 77999"), Lines{SHORT_LEVELS[1]});
}

TEST(Levels, AGroundWithoutAPressureIsASurface) {
    const std::string text = with(BEIJING, "99015", "99///");
    EXPECT_EQ(rowsOf(text)[0], "surface,,2.2,-4.8,0,0,,,,,");
    EXPECT_EQ(rowsOf(text).size(), 13U);
    EXPECT_EQ(rowsOf("TTAA 28231 54511 99/// ///// ///// 00156 07669 23009 88999 77999"), Lines{SHORT_LEVELS[1]});
}

TEST(Levels, MinusZeroIsZero) {
    EXPECT_EQ(rowsOf("TTAA 2823/ 54511 99015 00100 ///// 88999 77999"), Lines{"surface,1015,-0.1,-0.1,,,,,,,"});
    EXPECT_EQ(rowsOf("TTBB 28238 54511 00015 00001"), Lines{"significant,1015,0,-0.1,,,,,,,"});
    const Reading reading = readOnly("TTAA 2823/ 54511 99015 00001 ///// 00500 07669 88999 77999");
    EXPECT_EQ(rowsOf(reading)[1], "mandatory,1000,7.6,-11.4,,,0,,,,");
}

TEST(Levels, TheShearGroupIsSkipped) {
    EXPECT_EQ(rowsOf(SHORT + " 88999 77269 31532 41210 31313 63203 82315"),
              (Lines{SHORT_LEVELS[0], SHORT_LEVELS[1], "maxwind,269,,,32,315,,,,,"}));
}

// ---- level ----

TEST(LevelMend, SurfacesBelowTheGroundAreWritten) {
    // Zhangye, 29 October 2019: the ground is at 857 hPa.
    const Reading reading =
        readOnly("TTAA 28231 52533 99857 05268 25002 85547 08071 26503 70124 00072 27505 88999 77999");
    EXPECT_EQ(mendsOf(reading), Lines{"level: wrote 00/// ///// ///// 92/// ///// ///// before 85547"});
    EXPECT_EQ(rowsOf(reading), (Lines{"surface,857,5.2,-12.8,2,250,,,,,", "mandatory,850,8,-13,3,265,1547,,,,",
                                      "mandatory,700,0,-22,5,275,3124,,,,"}));
    EXPECT_EQ(givenOf(reading),
              "TTAA 28231 52533 99857 05268 25002 00/// ///// ///// 92/// ///// ///// 85547 08071 26503 "
              "70124 00072 27505 88999 77999");
    EXPECT_FALSE(reading.lost());
    EXPECT_EQ(reading.levels[1].groups.first, 5U);
}

TEST(LevelMend, SeveralSurfacesOfAHighStation) {
    EXPECT_EQ(mendsOf("TTAA 28231 52983 99815 04118 20501 70113 04077 29006 88999 77999"),
              Lines{"level: wrote 00/// ///// ///// 92/// ///// ///// 85/// ///// ///// before 70113"});
    EXPECT_EQ(mendsOf("TTAA 28231 53772 99931 01335 00000 92826 03257 00000 88999 77999"),
              Lines{"level: wrote 00/// ///// ///// before 92826"});
}

TEST(LevelMend, WindsAreWrittenOnlyWhereIdAsksForThem) {
    EXPECT_EQ(mendsOf("TTAA 28230 52533 99857 05268 25002 85547 08071 88999 77999"),
              Lines{"level: wrote 00/// ///// ///// 92/// ///// before 85547"});
    EXPECT_EQ(mendsOf("TTAA 28239 52533 99857 05268 25002 85547 08071 88999 77999"),
              Lines{"level: wrote 00/// ///// ///// 92/// ///// ///// before 85547"});
    EXPECT_EQ(mendsOf("TTAA 2823/ 52533 99857 05268 25002 85547 08071 88999 77999"),
              Lines{"level: wrote 00/// ///// 92/// ///// before 85547"});
}

TEST(LevelMend, Surfaces1000And925TogetherMayBeMissingAnywhere) {
    EXPECT_EQ(mendsOf("TTAA 28231 52533 99015 05268 25002 85547 08071 26503 88999 77999"),
              Lines{"level: wrote 00/// ///// ///// 92/// ///// ///// before 85547"});
    EXPECT_EQ(mendsOf("TTAA 28231 52533 99/// 05268 25002 85547 08071 26503 88999 77999"),
              Lines{"level: wrote 00/// ///// ///// 92/// ///// ///// before 85547"});
}

TEST(LevelMend, ASurfaceAboveTheGroundIsNotWritten) {
    const std::string due = "The mandatory significant observation is incorrectly coded. ";
    // 1000 hPa alone, under a ground at 1015 hPa
    EXPECT_EQ(reasonOf("TTAA 28231 52533 99015 05268 25002 92826 03257 00000 88999 77999").substr(0, due.size()), due);
    // 850 hPa too, under a ground at 857 hPa
    EXPECT_EQ(reasonOf("TTAA 28231 52533 99857 05268 25002 70124 00072 27505 88999 77999").substr(0, due.size()), due);
    // 850 hPa exactly at the ground
    EXPECT_EQ(statusOf("TTAA 28231 52533 99850 05268 25002 70124 00072 27505 88999 77999"), "refused");
    EXPECT_EQ(statusOf("TTAA 28231 52533 99849 05268 25002 70124 00072 27505 88999 77999"), "decoded");
    // higher up
    EXPECT_EQ(statusOf(with(BEIJING, "40728 29370 32020 ", "")), "refused");
    // an unknown ground
    EXPECT_EQ(statusOf("TTAA 28231 52533 99/// 05268 25002 92826 03257 00000 88999 77999"), "refused");
}

TEST(LevelMend, AMissingGroundIsNotWritten) {
    EXPECT_EQ(reasonOf("TTAA 28231 54511 00156 07669 23009 92797 08073 28506 88999 77999"),
              "The mandatory significant observation is incorrectly coded. Error detected at 00156 07669 23009 92797 "
              "08073 28506 ...");
}

TEST(LevelMend, NotInPartC) {
    EXPECT_EQ(statusOf("TTCC 28231 54511 50058 671// 09010 88999 77999"), "refused");
    EXPECT_EQ(statusOf("TTCC 28231 54511 70858 725// 24516 30371 591// 08535 88999 77999"), "refused");
}

TEST(LevelMend, AGroupOfNoLaterSurfaceIsRefused) {
    EXPECT_EQ(statusOf("TTAA 28231 52533 99857 05268 25002 99547 08071 26503 88999 77999"), "refused");
    EXPECT_EQ(statusOf("TTAA 28231 52533 99857 05268 25002 86547 08071 26503 88999 77999"), "refused");
}

// ---- closer ----

TEST(CloserMend, Group88999BeforeWhatEndsSection2) {
    for (const std::string next :
         {"77999", "31313 63203 82315", "41414 12345", "51515 10164", "66666 1", "62626 MBL"}) {
        const Reading reading = readOnly(SHORT + " " + next);
        ASSERT_FALSE(reading.mends.empty()) << next;
        EXPECT_EQ(mendsOf(reading)[0], "closer: wrote 88999 before " + next.substr(0, 5));
        EXPECT_EQ(rowsOf(reading), SHORT_LEVELS) << next;
    }
}

TEST(CloserMend, Group88999AtTheEnd) {
    const Reading reading = readOnly(SHORT);
    EXPECT_EQ(mendsOf(reading), Lines{"closer: wrote 88999 at the end"});
    EXPECT_EQ(givenOf(reading), SHORT + " 88999");
    EXPECT_EQ(rowsOf(reading), SHORT_LEVELS);
}

TEST(CloserMend, AMaximumWindDoesNotEndSection2) {
    EXPECT_EQ(statusOf(SHORT + " 77269 31532"), "refused");
    EXPECT_EQ(statusOf(SHORT + " 92797"), "refused");
}

TEST(CloserMend, NothingIsWrittenAfterTheLastSurface) {
    EXPECT_EQ(mendsOf(with(BEIJING, "88187 639// 31524 ", "")), Lines());
    EXPECT_EQ(mendsOf(with(BEIJING, "88187 639// 31524 77999 ", "")), Lines());
}

TEST(CloserMend, Group77999BeforeAnOpenerAfterATropopause) {
    for (const std::string next : {"31313 63203 82315", "41414 12345", "51515 10164", "59595", "61616", "66666"}) {
        const Reading reading = readOnly(SHORT + " 88187 639// 31524 " + next);
        EXPECT_EQ(mendsOf(reading), Lines{"closer: wrote 77999 before " + next.substr(0, 5)});
        EXPECT_EQ(rowsOf(reading).size(), 3U) << next;
    }
    EXPECT_EQ(mendsOf(SHORT + " 88187 639// 31524"), Lines());
    EXPECT_EQ(mendsOf(SHORT + " 88999 31313 63203 82315"), Lines());
    EXPECT_EQ(reasonOf(SHORT + " 88187 639// 31524 12345 77999").substr(0, 55),
              "The tropopause observation is incorrectly coded. Error ");
}

TEST(CloserMend, Group66666IsNotAMaximumWind) {
    EXPECT_EQ(mendsOf(SHORT + " 88999 66666 12345"), Lines{"closer: wrote 77999 before 66666"});
    EXPECT_EQ(rowsOf(SHORT + " 88999 66666 12345"), SHORT_LEVELS);
    EXPECT_EQ(rowsOf(SHORT + " 88999 77269 31532 66666 12345").size(), 3U);
}

// 51515 to 59595 may be the temperature of a tropopause whose 88PPP is missing: -56.5 degrees here.
TEST(CloserMend, LevelsAfterACloserAreLost) {
    const std::string whole = SHORT + " 88228 56565 14076 77235 27080 31313 46208 80601";
    EXPECT_EQ(rowsOf(whole), (Lines{SHORT_LEVELS[0], SHORT_LEVELS[1], "tropopause,228,-56.5,-71.5,76,140,,,,,",
                                    "maxwind,235,,,80,270,,,,,"}));
    EXPECT_EQ(mendsOf(whole), Lines());
    const Reading reading = readOnly(with(whole, "88228 ", ""));
    EXPECT_EQ(mendsOf(reading), Lines{"lost closer: wrote 88999 before 56565; not read: 56565 14076 77235 27080 31313 "
                                      "46208 ..."});
    EXPECT_EQ(rowsOf(reading), SHORT_LEVELS);
    EXPECT_EQ(mendsOf(SHORT + " 56565 14076 77235 27080"),
              Lines{"lost closer: wrote 88999 before 56565; not read: 56565 14076 77235 27080 ..."});
    EXPECT_EQ(mendsOf(SHORT + " 56565 14076 66235 27080"),
              Lines{"lost closer: wrote 88999 before 56565; not read: 56565 14076 66235 27080 ..."});
    EXPECT_EQ(mendsOf(SHORT + " 56565 14076 77999"),
              Lines{"lost closer: wrote 88999 before 56565; not read: 56565 14076 77999 ..."});
    EXPECT_EQ(mendsOf(SHORT + " 56565 14076 57575 14080 31313 46208 80601"),
              Lines{"lost closer: wrote 88999 before 56565; not read: 56565 14076 57575 14080 31313 46208 ..."});
    // The second of two tropopauses.
    EXPECT_EQ(mendsOf(with(whole, "77235", "56565 14080 77235")),
              Lines{"lost closer: wrote 77999 before 56565; not read: 56565 14080 77235 27080 31313 46208 ..."});
}

// A false opener: 85500 and what follows stand where the decoder no longer reads levels.
TEST(CloserMend, LevelsBetweenAnyOpenerAndALaterCloserAreLost) {
    for (const std::string opener : {"41414", "51515", "61616", "62626", "69696"}) {
        const std::string hidden = opener + " 85500 10656 28020 88999 77999";
        EXPECT_EQ(mendsOf(SHORT + " " + hidden),
                  Lines{"lost closer: wrote 88999 before " + opener + "; not read: " + hidden + " ..."});
        EXPECT_EQ(rowsOf(SHORT + " " + hidden), SHORT_LEVELS);
        const std::string launched = opener + " 85500 10656 28020 31313 46208";
        EXPECT_EQ(mendsOf(SHORT + " " + launched + " 80601"),
                  Lines{"lost closer: wrote 88999 before " + opener + "; not read: " + launched + " ..."});
    }
}

TEST(CloserMend, GroupsOfANationalSectionAreNotLost) {
    EXPECT_EQ(mendsOf(SHORT + " 51515 10164 00051 10194 30503 28511"), Lines{"closer: wrote 88999 before 51515"});
    EXPECT_EQ(mendsOf(SHORT + " 51515 10164 61616 77235"), Lines{"closer: wrote 88999 before 51515"});
    EXPECT_EQ(mendsOf(SHORT + " 31313 46208 80601 77999"), Lines{"closer: wrote 88999 before 31313"});
    EXPECT_EQ(mendsOf(SHORT + " 51515 10164 66666 12345"), Lines{"closer: wrote 88999 before 51515"});
    EXPECT_EQ(mendsOf(SHORT), Lines{"closer: wrote 88999 at the end"});
    EXPECT_EQ(mendsOf(SHORT + " 31313 46208 80601 51515 77235"), Lines{"closer: wrote 88999 before 31313"});
    EXPECT_EQ(mendsOf(SHORT + " 61616 77235 27080"), Lines{"closer: wrote 88999 before 61616"});
}

// A temperature TTTDD that looks like an opener stands where a temperature is expected.
TEST(Levels, ATemperatureThatLooksLikeAnOpenerAtEveryLevelOfPartA) {
    const std::vector<std::pair<std::string, std::string>> openers{
        {"31313", "-31.3,-32.6"}, {"51515", "-51.5,-53"},   {"52525", "-52.5,-55"},
        {"53535", "-53.5,-57"},   {"54545", "-54.5,-59"},   {"56565", "-56.5,-71.5"},
        {"57575", "-57.5,-82.5"}, {"58585", "-58.5,-93.5"}, {"59595", "-59.5,-104.5"}};
    const Lines temperatures{"02257", "07669", "08073", "04069", "02566", "16375", "29370",
                             "45367", "54365", "621//", "605//", "589//", "639//"};
    const Lines rows = rowsOf(BEIJING);
    ASSERT_EQ(temperatures.size(), rows.size());
    for (std::size_t level = 0; level < temperatures.size(); ++level) {
        for (const auto& [opener, values] : openers) {
            const Reading reading = readOnly(with(BEIJING, ' ' + temperatures[level] + ' ', ' ' + opener + ' '));
            const Lines changed = rowsOf(reading);
            ASSERT_EQ(changed.size(), rows.size()) << opener << " at " << rows[level];
            for (std::size_t i = 0; i < rows.size(); ++i) {
                if (i != level) {
                    EXPECT_EQ(changed[i], rows[i]);
                }
            }
            EXPECT_NE(changed[level].find(',' + values + ','), std::string::npos) << changed[level];
            EXPECT_EQ(mendsOf(reading), Lines());
            EXPECT_EQ(reading.launch, "2315");
        }
    }
}

// ---- section-7 ----

TEST(SystemMend, CutShortAfter31313) {
    const Reading end = readOnly(BEIJING.substr(0, BEIJING.size() - 12));
    EXPECT_EQ(mendsOf(end), Lines{"section-7: wrote ///// 8//// after 31313"});
    EXPECT_FALSE(end.lost());
    EXPECT_EQ(end.launch, "");
    EXPECT_EQ(rowsOf(end), rowsOf(BEIJING));
    EXPECT_EQ(mendsOf(with(BEIJING, "63203 82315", "51515 10164")), Lines{"section-7: wrote ///// 8//// after 31313"});
}

TEST(SystemMend, LevelsBetweenAFalseOpenerAndSection7AreLost) {
    const std::string hidden = "62626 11850 05512 31313 46208 80601";
    const Reading reading = readOnly("TTBB 56008 72233 00012 10658 " + hidden);
    EXPECT_EQ(mendsOf(reading),
              Lines{"lost section-7: wrote 31313 ///// 8//// before 62626; not read: " + hidden + " ..."});
    EXPECT_EQ(rowsOf(reading).size(), 1U);
}

TEST(SystemMend, TheTimeIsMissing) {
    const Reading end = readOnly(with(BEIJING, " 82315", ""));
    EXPECT_EQ(mendsOf(end), Lines{"section-7: wrote 8//// after 63203"});
    EXPECT_EQ(givenOf(end), with(BEIJING, "82315", "8////"));
    EXPECT_FALSE(end.lost());
    EXPECT_EQ(mendsOf(with(BEIJING, "82315", "51515 10164")), Lines{"section-7: wrote 8//// after 63203"});
}

TEST(SystemMend, TheSystemIsMissing) {
    const Reading end = readOnly(with(BEIJING, "63203 ", ""));
    EXPECT_EQ(mendsOf(end), Lines{"section-7: wrote ///// before 82315"});
    EXPECT_EQ(end.launch, "2315");
    EXPECT_EQ(rowsOf(end), rowsOf(BEIJING));
    EXPECT_EQ(readOnly(with(BEIJING, "63203 82315", "82315 51515 10164")).launch, "2315");
}

TEST(SystemMend, AGarbledTimeIsLost) {
    const Reading reading = readOnly(with(BEIJING, "82315", "62315"));
    EXPECT_EQ(mendsOf(reading), Lines{"lost section-7: wrote 8//// after 63203"});
    EXPECT_EQ(rowsOf(reading), rowsOf(BEIJING));
    EXPECT_EQ(reading.launch, "");
}

TEST(SystemMend, ADoubled31313) {
    const Reading reading = readOnly(with(BEIJING, "31313", "31313 31313"));
    EXPECT_EQ(mendsOf(reading), Lines{"lost section-7: wrote ///// 8//// after 31313"});
    EXPECT_EQ(rowsOf(reading), rowsOf(BEIJING));
    EXPECT_EQ(reading.launch, "");
    EXPECT_EQ(givenOf(reading), with(BEIJING, "31313", "31313 ///// 8//// 31313"));
}

TEST(SystemMend, AShortSystemGroup) {
    EXPECT_EQ(mendsOf(with(BEIJING, "63203 82315", "63 82315")),
              (Lines{"section-7: wrote ///// before 63", "lost section-7: wrote 8//// after /////"}));
    EXPECT_EQ(readOnly(with(BEIJING, "63203 82315", "632 82315")).launch, "2315");
}

TEST(SystemMend, InPartsBAndD) {
    EXPECT_EQ(mendsOf(with(SHIP_D, " 46308 82240 90831", "")), Lines{"section-7: wrote ///// 8//// after 31313"});
    EXPECT_EQ(rowsOf(with(SHIP_D, " 46308 82240 90831", "")), rowsOf(SHIP_D));
}

TEST(SystemMend, AGroupThatIsNotALaunchTimeIsLost) {
    EXPECT_EQ(readOnly(with(BEIJING, "82315", "82400")).launch, "2400");
    for (const std::string time : {"82500", "82360", "82575", "8231", "823155", "82A15", "823/15"}) {
        const Reading reading = readOnly(with(BEIJING, "82315", time));
        EXPECT_EQ(mendsOf(reading), Lines{"lost section-7: " + time + " read as 8////"});
        EXPECT_EQ(rowsOf(reading), rowsOf(BEIJING)) << time;
        EXPECT_EQ(reading.launch, "") << time;
        EXPECT_EQ(givenOf(reading), with(BEIJING, "82315", "8////"));
        EXPECT_EQ(reading.mends.front().groups.first, 44U) << time;
        EXPECT_EQ(readOnly(with(BEIJING, "82315", time), false).reason,
                  "The launch time (8GGgg) is incorrectly coded. Error detected at " + time + " ...");
    }
    EXPECT_EQ(mendsOf(with(SHIP_D, "82240", "82575")), Lines{"lost section-7: 82575 read as 8////"});
}

TEST(SystemMend, ALaunchTimeThatIsNotReportedIsAbsent) {
    for (const std::string time : {"8////", "823//", "8///5"}) {
        const Reading reading = readOnly(with(BEIJING, "82315", time));
        EXPECT_EQ(mendsOf(reading), Lines()) << time;
        EXPECT_EQ(reading.launch, "") << time;
    }
}

TEST(SystemMend, ClosersAndSolidiBefore31313DoNotHideTheLaunchTime) {
    for (const std::string closers : {"77999 77999", "77999 /////", "77999 88999 77999"}) {
        const Reading reading = readOnly(with(BEIJING, "77999", closers));
        EXPECT_EQ(mendsOf(reading), Lines()) << closers;
        EXPECT_EQ(reading.launch, "2315") << closers;
    }
    EXPECT_EQ(mendsOf(with(BEIJING, "77999 31313 63203 82315", "77999 77999 31313 63203 63203 82315")),
              Lines{"lost section-7: 63203 read as 8////"});
    EXPECT_EQ(mendsOf(with(BEIJING, "77999 31313 63203 82315", "77999 77999 31313 63203 51515")), Lines());
}

// ---- depression ----

TEST(DepressionMend, Codes51To55AreNotDepressions) {
    for (const std::string code : {"51", "52", "53", "54", "55"}) {
        const Reading reading = readOnly(with(BEIJING, "07669", "076" + code));
        EXPECT_EQ(mendsOf(reading), Lines{"lost depression: 076" + code + " read as 076//"});
        EXPECT_EQ(rowsOf(reading)[1], "mandatory,1000,7.6,,9,230,156,,,,");
        EXPECT_EQ(rowsOf(reading).size(), 13U);
    }
    EXPECT_EQ(rowsOf(with(BEIJING, "07669", "07650"))[1], "mandatory,1000,7.6,2.6,9,230,156,,,,");
    EXPECT_EQ(rowsOf(with(BEIJING, "07669", "07656"))[1], "mandatory,1000,7.6,1.6,9,230,156,,,,");
}

TEST(DepressionMend, InEverySection) {
    EXPECT_EQ(rowsOf(SHORT + " 88187 63952 31524 77999")[2], "tropopause,187,-63.9,,24,315,,,,,");
    EXPECT_EQ(mendsOf(with(SHIP_D, "62179", "62151")), Lines{"lost depression: 62151 read as 621//"});
    EXPECT_EQ(rowsOf(with(SHIP_D, "62179", "62151"))[0], "significant,54.2,-62.1,,,,,,,,");
}

TEST(DepressionMend, TwelveMendsAtMost) {
    std::string text = "TTBB 28238 54511";
    const std::string numbers = "00112233445566778899112233";
    for (int i = 0; i < 12; ++i) {
        text += ' ' + numbers.substr(static_cast<std::size_t>(2 * i), 2) + std::to_string(990 - 10 * i) + " 08052";
    }
    const Reading twelve = readOnly(text);
    EXPECT_EQ(twelve.status, Reading::DECODED);
    EXPECT_EQ(twelve.mends.size(), 12U);
    EXPECT_EQ(reasonOf(text + " 33860 08052"),
              "Dewpoint depression code may not be between 51 to 56. Error detected at 08052 ...");
}

// ---- wind ----

TEST(WindMend, HalfAWindIsLost) {
    // At the ground, of a tropopause, of a maximum wind, and in section 6.
    EXPECT_EQ(mendsOf("TTAA 56009 72233 99012 10658 27/// 88999 77999"), Lines{"lost wind: 27/// has no speed"});
    EXPECT_EQ(mendsOf("TTAA 56009 72233 99012 10658 27010 88200 56565 //015 77999"),
              Lines{"lost wind: //015 has no direction"});
    const Reading reading = readOnly("TTAA 56009 72233 99012 10658 27010 88999 77100 36///");
    EXPECT_EQ(mendsOf(reading), Lines{"lost wind: 36/// has no speed"});
    EXPECT_EQ(rowsOf(reading), Lines{"surface,1012,10.6,2.6,5.144,270,,,,,"});
    EXPECT_EQ(reading.mends[0].groups.first, 7U);
    EXPECT_EQ(reading.mends[0].groups.count, 1U);
    EXPECT_EQ(mendsOf("TTBB 56008 72233 00012 10658 21212 00012 //010 11850 27///"),
              (Lines{"lost wind: //010 has no direction", "lost wind: 27/// has no speed"}));
    EXPECT_EQ(mendsOf("TTAA 56009 72233 99012 10658 ///// 88999 77999"), Lines());
}

TEST(WindMend, AnImpossibleDirectionIsNoHalfWind) {
    EXPECT_EQ(reasonOf("TTAA 56009 72233 99012 10658 37/// 88999 77999"),
              "The wind direction is impossible. Error detected at 37/// 88999 77999 ...");
    EXPECT_EQ(reasonOf("TTBB 56008 72233 00012 10658 21212 00012 37///"),
              "The wind direction is impossible. Error detected at 00012 37/// ...");
}

TEST(WindMend, WithoutMendsThePartIsRefused) {
    EXPECT_EQ(readOnly("TTAA 56009 72233 99012 10658 27/// 88999 77999", false).reason,
              "A wind has no speed, or no direction. Error detected at 27/// 88999 77999 ...");
}

// ---- leftover ----

TEST(Leftover, GroupsBeforeTheFirstOpenerAreNamed) {
    const Reading reading = readOnly(with(BEIJING, "77999", "77999 17226 31563"));
    EXPECT_EQ(mendsOf(reading), Lines{"lost leftover: not read: 17226 31563 31313 63203 82315 ..."});
    EXPECT_EQ(rowsOf(reading), rowsOf(BEIJING));
    EXPECT_TRUE(reading.lost());
    EXPECT_EQ(reading.mends[0].groups.first, 42U);
    EXPECT_EQ(reading.mends[0].groups.count, 2U);
}

TEST(Leftover, ClosersAndSolidiAreNotLeftover) {
    EXPECT_EQ(mendsOf(with(BEIJING, "77999", "77999 77999 88999 /////")), Lines());
}

TEST(Leftover, TwoThatAreSection7Get31313) {
    const Reading reading = readOnly(with(BEIJING, "31313 ", ""));
    EXPECT_EQ(mendsOf(reading), Lines{"section-7: wrote 31313 before 63203"});
    EXPECT_EQ(givenOf(reading), BEIJING);
    EXPECT_EQ(reading.launch, "2315");
    EXPECT_FALSE(reading.lost());
}

TEST(Leftover, AShipMayHaveASeaTemperatureToo) {
    const std::string ship = "UUAA 9ZT9MRK 06001 99602 70467 22106 99997 04060 07010 88999 77999 46308 82240 90831";
    EXPECT_EQ(mendsOf(ship), Lines{"section-7: wrote 31313 before 46308"});
    EXPECT_EQ(readOnly(ship).launch, "2240");
    EXPECT_EQ(mendsOf(with(ship, "90831", "10831")), Lines{"lost leftover: not read: 46308 82240 10831 ..."});
    EXPECT_EQ(mendsOf(SHORT + " 88999 77999 46308 82240 90831"),
              Lines{"lost leftover: not read: 46308 82240 90831 ..."});
    EXPECT_EQ(mendsOf(with(ship, "82240", "72240")), Lines{"lost leftover: not read: 46308 72240 90831 ..."});
}

TEST(Leftover, LevelsAfterSection7AreLost) {
    const std::string partB = "TTBB 56008 72233 00012 10658 11850 05512 ";
    EXPECT_EQ(mendsOf(partB + "31313 46208 80601 21212 00012 27010 11850 28015"),
              Lines{"lost leftover: not read: 21212 00012 27010 11850 28015 ..."});
    EXPECT_EQ(mendsOf(partB + "31313 46208 80601 22700 00112 33600 10112"),
              Lines{"lost leftover: not read: 22700 00112 33600 10112 ..."});
    EXPECT_EQ(mendsOf(partB + "41414 00900 21212 00012 27010 11850 28015"),
              (Lines{"section-7: wrote 31313 ///// 8//// before 41414",
                     "lost leftover: not read: 21212 00012 27010 11850 28015 ..."}));
    EXPECT_EQ(mendsOf(with(BEIJING, "82315", "82315 88200 60156 28020 77190 28090 40510")),
              Lines{"lost leftover: not read: 88200 60156 28020 77190 28090 40510 ..."});
    EXPECT_EQ(mendsOf(with(BEIJING, "82315", "82315 90831 51515 10164 88200")), Lines());
    // -56.5 degrees, which looks like an opener.
    EXPECT_EQ(mendsOf(with(BEIJING, "82315", "82315 88200 56565 27050")),
              Lines{"lost leftover: not read: 88200 56565 27050 ..."});
    EXPECT_EQ(mendsOf(with(BEIJING, "82315", "82315 22700 51515")), Lines());
    EXPECT_EQ(mendsOf(partB + "31313 46208 80601 62626 21212 00012 27010"),
              Lines{"lost leftover: not read: 21212 00012 27010 ..."});
    EXPECT_EQ(readOnly(partB + "31313 46208 80601 22700 00112", false).reason,
              "There are levels after section 7. Error detected at 22700 00112 ...");
}

TEST(Leftover, WithoutMendsThePartIsRefused) {
    const Reading reading = readOnly(with(BEIJING, "77999", "77999 17226 31563"), false);
    EXPECT_EQ(reading.status, Reading::REFUSED);
    EXPECT_EQ(reading.reason.substr(0, 48), "Groups are left over before the next section. Er");
}

TEST(Leftover, AreNotTakenForASystemBeforeARealOne) {
    const Reading reading = readOnly(with(BEIJING, "77999", "77999 10600 81556"));
    EXPECT_TRUE(reading.lost());
    EXPECT_EQ(reading.launch, "");  // the decoder does not reach 31313 either
}

// ---- impossible values ----

TEST(Impossible, ADirectionAbove360) {
    EXPECT_EQ(rowsOf(with(BEIJING, "23009", "36009"))[1], "mandatory,1000,7.6,-11.4,9,360,156,,,,");
    EXPECT_EQ(reasonOf(with(BEIJING, "23009", "36509")).substr(0, 33), "The wind direction is impossible.");
    EXPECT_EQ(reasonOf(with(BEIJING, "23009", "37009")),
              "The wind direction is impossible. Error detected at 00156 07669 37009 92797 08073 28506 ...");
}

TEST(Impossible, ASpeedAbove140) {
    EXPECT_EQ(rowsOf(with(BEIJING, "23009", "23140"))[1], "mandatory,1000,7.6,-11.4,140,230,156,,,,");
    EXPECT_EQ(reasonOf(with(BEIJING, "23009", "23141")).substr(0, 29), "The wind speed is impossible.");
    EXPECT_EQ(rowsOf("TTAA 78231 54511 99015 02257 23272 88999 77999").size(), 1U);  // 272 knots are 139.9 m/s
    EXPECT_EQ(reasonOf("TTAA 78231 54511 99015 02257 23273 88999 77999").substr(0, 29),
              "The wind speed is impossible.");
}

TEST(Impossible, ATemperatureOutsideMinus105To60) {
    EXPECT_EQ(rowsOf(with(BEIJING, "07669", "60069")).size(), 13U);
    EXPECT_EQ(reasonOf(with(BEIJING, "07669", "60269")).substr(0, 30), "The temperature is impossible.");
    EXPECT_EQ(statusOf(with(BEIJING, "639//", "999//")), "decoded");
    EXPECT_EQ(statusOf("TTBB 28238 54511 00500 999//"), "decoded");  // -99.9, the lowest that TTT can say
}

TEST(Impossible, ADewPointBelowMinus120) {

    EXPECT_EQ(rowsOf("TTBB 28238 54511 00500 80189"), Lines{"significant,500,-80.1,-119.1,,,,,,,"});
    EXPECT_EQ(reasonOf("TTBB 28238 54511 00500 81189"),
              "The dew point is impossible. Error detected at 00500 81189 ...");
}

TEST(Impossible, InATropopauseAMaximumWindAndASignificantWind) {
    EXPECT_EQ(reasonOf(SHORT + " 88187 639// 37024 77999").substr(0, 33), "The wind direction is impossible.");
    EXPECT_EQ(reasonOf(SHORT + " 88999 77269 37032").substr(0, 33), "The wind direction is impossible.");
    EXPECT_EQ(reasonOf("TTBB 28238 54511 21212 00015 37000").substr(0, 33), "The wind direction is impossible.");
}

}  // namespace
