// Sections 5 and 6: the numbers, pressures and values of their levels.
#include "FeedParts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using corvane::Reading;
using feed_test::givenOf;
using feed_test::Lines;
using feed_test::mendsOf;
using feed_test::readOnly;
using feed_test::reasonOf;
using feed_test::rowsOf;
using feed_test::SHIP_D;
using feed_test::statusOf;
using feed_test::with;

// The lowest levels of Beijing, 28 October 2019, as a part B with winds in m/s.
const std::string PART_B =
    "TTBB 28238 54511 00015 02257 11925 08073 22850 04069 33700 02566 21212 00015 00000 11925 28506 "
    "22700 33016 31313 63203 82315";
const Lines LEVELS_OF_B{"significant,1015,2.2,-4.8,,,,,,,", "significant,925,8,-15,,,,,,,",
                        "significant,850,4,-15,,,,,,,",     "significant,700,-2.5,-18.5,,,,,,,",
                        "significant,1015,,,0,0,,,,,",      "significant,925,,,6,285,,,,,",
                        "significant,700,,,16,330,,,,,"};
// A part B without sections 6 and 7.
const std::string TEMPERATURES = "TTBB 28238 54511 00015 02257 11925 08073 22850 04069";

Lines without(Lines lines, std::size_t place) {
    lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(place));
    return lines;
}

// ---- the order of levels ----

TEST(SignificantLevels, AWholePart) {
    const Reading reading = readOnly(PART_B);
    EXPECT_EQ(rowsOf(reading), LEVELS_OF_B);
    EXPECT_TRUE(reading.mends.empty());
    EXPECT_EQ(reading.launch, "2315");
    EXPECT_EQ(givenOf(reading), PART_B);
}

TEST(SignificantLevels, PressuresOfPartDAreInTenths) {
    EXPECT_EQ(rowsOf(SHIP_D), (Lines{"significant,54.2,-62.1,-91.1,,,,,,,", "significant,41.2,-56.3,-87.3,,,,,,,",
                                     "significant,32.3,-56.7,-86.7,,,,,,,", "significant,22.3,-47.9,-80.9,,,,,,,"}));
}

TEST(SignificantLevels, ASectionOfPartBBeginsWith00Or11Or99) {
    for (const std::string first : {"00", "11", "99"}) {
        EXPECT_EQ(statusOf("TTBB 28238 54511 " + first + "925 08073 11850 04069") == "decoded", first != "11") << first;
        EXPECT_EQ(statusOf("TTBB 28238 54511 " + first + "925 08073"), "decoded") << first;
        EXPECT_EQ(statusOf("TTBB 28238 54511 21212 " + first + "925 28506"), "decoded") << first;
    }
    for (const std::string first : {"22", "33", "88", "01", "10", "90", "12"}) {
        EXPECT_EQ(reasonOf("TTBB 28238 54511 " + first + "925 08073"),
                  "Level number 11 is expected. Error detected at " + first + "925 08073 ...");
        EXPECT_EQ(statusOf("TTBB 28238 54511 21212 " + first + "925 28506"), "refused") << first;
    }
}

TEST(SignificantLevels, ASectionOfPartDBeginsWith11) {
    EXPECT_EQ(statusOf("TTDD 2823/ 54511 11925 573//"), "decoded");
    for (const std::string first : {"00", "99", "22"}) {
        EXPECT_EQ(reasonOf("TTDD 2823/ 54511 " + first + "925 573//").substr(0, 28), "Level number 11 is expected.")
            << first;
        EXPECT_EQ(statusOf("TTDD 2823/ 54511 21212 " + first + "925 28506"), "refused") << first;
    }
}

TEST(SignificantLevels, NumbersGoOnAt11After99) {
    std::string text = "TTBB 28238 54511 00980 08073";
    int pressure = 970;
    for (int round = 0; round < 3; ++round) {
        for (int number = 11; number <= 99; number += 11) {
            text += ' ' + std::to_string(number) + std::to_string(pressure) + " 08073";
            pressure -= 10;
        }
    }
    EXPECT_EQ(rowsOf(text).size(), 28U);
    EXPECT_EQ(reasonOf(text + " 22690 08073").substr(0, 28), "Level number 11 is expected.");
    EXPECT_EQ(reasonOf(text + " 00690 08073").substr(0, 28), "Level number 11 is expected.");
}

TEST(SignificantLevels, ALostGroupADoubledGroupAndALostLevelAreRefused) {
    EXPECT_EQ(reasonOf(with(PART_B, "08073 ", "")),
              "Level number 22 is expected. Error detected at 04069 33700 02566 21212 00015 00000 ...");
    EXPECT_EQ(reasonOf(with(PART_B, "11925 08073", "08073")),
              "Level number 11 is expected. Error detected at 08073 22850 04069 33700 02566 21212 ...");
    EXPECT_EQ(reasonOf(with(PART_B, "08073", "08073 08073")),
              "Level number 22 is expected. Error detected at 08073 22850 04069 33700 02566 21212 ...");
    EXPECT_EQ(reasonOf(with(PART_B, "22850 04069 ", "")),
              "Level number 22 is expected. Error detected at 33700 02566 21212 00015 00000 11925 ...");
    EXPECT_EQ(reasonOf(with(PART_B, "28506 ", "")),
              "Level number 22 is expected. Error detected at 33016 31313 63203 82315 ...");
}

TEST(SignificantLevels, PressureNeverRises) {
    EXPECT_EQ(statusOf(with(PART_B, "22850", "22925")), "decoded");
    EXPECT_EQ(
        reasonOf(with(PART_B, "22850", "22926")),
        "The pressure is above that of the level before. Error detected at 22926 04069 33700 02566 21212 00015 ...");
    EXPECT_EQ(reasonOf(with(PART_B, "22700 33016", "22926 33016")).substr(0, 47),
              "The pressure is above that of the level before.");
}

TEST(SignificantLevels, PressuresBelow100AreAbove1000InPartB) {
    EXPECT_EQ(
        rowsOf("TTBB 28238 54511 00099 02257 11000 08073 22100 04069"),
        (Lines{"significant,1099,2.2,-4.8,,,,,,,", "significant,1000,8,-15,,,,,,,", "significant,100,4,-15,,,,,,,"}));
    EXPECT_EQ(statusOf("TTBB 28238 54511 00831 02257 11050 08073"), "refused");  // 831 hPa, then 1050 hPa
    EXPECT_EQ(rowsOf("TTDD 2823/ 54511 11099 573// 22050 581//"),
              (Lines{"significant,9.9,-57.3,,,,,,,,", "significant,5,-58.1,,,,,,,,"}));
}

TEST(SignificantLevels, ThePressuresOfBothSectionsAreTheirOwn) {
    EXPECT_EQ(statusOf("TTBB 28238 54511 00015 02257 11500 08073 21212 00015 00000"), "decoded");
}

TEST(SignificantLevels, PPPMustBeDigits) {
    EXPECT_EQ(reasonOf(with(PART_B, "11925 08073", "119// 08073")),
              "A level (nnPPP) is expected. Error detected at 119// 08073 22850 04069 33700 02566 ...");
    EXPECT_EQ(reasonOf(with(PART_B, "11925 08073", "//925 08073")).substr(0, 28), "A level (nnPPP) is expected.");
    EXPECT_EQ(reasonOf(with(PART_B, "11925 08073", "///// 08073")).substr(0, 28), "A level (nnPPP) is expected.");
}

TEST(SignificantLevels, ValuesMustSuitTheSection) {
    EXPECT_EQ(reasonOf(with(PART_B, "08073", "08///")),
              "A temperature (TTTDD) is expected. Error detected at 08/// 22850 04069 33700 02566 21212 ...");
    EXPECT_EQ(reasonOf(with(PART_B, "08073", "//073")).substr(0, 34), "A temperature (TTTDD) is expected.");
    EXPECT_EQ(reasonOf(with(PART_B, "28506", "285//")),
              "A wind (ddfff) is expected. Error detected at 285// 22700 33016 31313 63203 82315 ...");
    EXPECT_EQ(rowsOf(with(PART_B, "08073", "080//"))[1], "significant,925,8,,,,,,,,");
    EXPECT_EQ(rowsOf(with(PART_B, "08073", "/////")), without(LEVELS_OF_B, 1));
    for (const std::string wind : {"/////", "28///", "//506"}) {
        EXPECT_EQ(rowsOf(with(PART_B, "28506", wind)), without(LEVELS_OF_B, 5)) << wind;
    }
}

TEST(SignificantLevels, ALevelKnowsItsGroups) {
    const Reading reading = readOnly(with(with(PART_B, "11925 08073", "11925 /////"), "11925 28506", "11925 285 06"));
    ASSERT_EQ(reading.levels.size(), 6U);
    EXPECT_EQ(reading.levels[0].groups.first, 2U);
    EXPECT_EQ(reading.levels[0].groups.count, 2U);
    EXPECT_EQ(reading.levels[1].groups.first, 6U);
    EXPECT_EQ(reading.levels[3].groups.first, 11U);
    EXPECT_EQ(reading.levels[4].groups.first, 13U);
    EXPECT_EQ(reading.levels[4].groups.count, 3U);
    EXPECT_EQ(reading.levels[5].groups.first, 16U);
}

// ---- section-7 ----

TEST(Section7Mend, AnOpenerWhereALevelIsDueGets31313) {
    for (const std::string opener : {"41414", "51515", "52525", "53535", "54545", "56565", "57575", "58585", "59595",
                                     "61616", "62626", "63636", "64646", "65656", "67676", "68686", "69696"}) {
        const Reading reading = readOnly(TEMPERATURES + " " + opener + " 10164 00091");
        EXPECT_EQ(mendsOf(reading), Lines{"section-7: wrote 31313 ///// 8//// before " + opener});
        EXPECT_EQ(rowsOf(reading), Lines(LEVELS_OF_B.begin(), LEVELS_OF_B.begin() + 3)) << opener;
        EXPECT_EQ(givenOf(reading), TEMPERATURES + " 31313 ///// 8//// " + opener + " 10164 00091");
        EXPECT_EQ(reading.launch, "");
        EXPECT_EQ(mendsOf(TEMPERATURES + " 21212 00015 00000 " + opener),
                  Lines{"section-7: wrote 31313 ///// 8//// before " + opener});
    }
}

TEST(Section7Mend, FiveFivesAndSixesMayBeLevels) {
    std::string text = TEMPERATURES + " 33700 02566 44600 12575";
    EXPECT_EQ(rowsOf(text + " 55555 00148").back(), "significant,555,-0.1,-4.9,,,,,,,");
    EXPECT_EQ(rowsOf(text + " 55560 00148 66555 01148").size(), 7U);
    EXPECT_EQ(reasonOf(TEMPERATURES + " 55555 00148").substr(0, 28), "Level number 33 is expected.");
    EXPECT_EQ(reasonOf(TEMPERATURES + " 66666 00148").substr(0, 28), "Level number 33 is expected.");
}

TEST(Section7Mend, AnOpenerOfSection7ThatIsThereIsEnough) {
    EXPECT_EQ(mendsOf(TEMPERATURES + " 31313 63203 82315 51515 10164"), Lines());
}

TEST(Section7Mend, AnOpenerWhereAValueIsDueIsATemperatureOrRefused) {
    for (const std::string temperature :
         {"51515", "52525", "53535", "54545", "56565", "57575", "58585", "59595", "31313"}) {
        const std::string text = with(PART_B, "08073", temperature);
        EXPECT_EQ(rowsOf(text).size(), LEVELS_OF_B.size()) << temperature;
        EXPECT_EQ(rowsOf(text)[1].substr(0, 18), "significant,925,-" + temperature.substr(0, 1)) << temperature;
    }
    for (const std::string opener : {"41414", "61616", "62626", "69696", "66666"}) {
        EXPECT_EQ(reasonOf(with(PART_B, "08073", opener)),
                  "The level has no second group. Error detected at 11925 " + opener + " 22850 04069 33700 02566 ...");
    }
    // -5.5 degrees at 55: 55 is no code for a depression.
    EXPECT_EQ(mendsOf(with(PART_B, "08073", "55555")), Lines{"lost depression: 55555 read as 555//"});
}

TEST(Section7Mend, NoOpenerIsAWind) {
    for (const std::string opener : {"31313", "41414", "51515", "55555", "61616", "21212"}) {
        EXPECT_EQ(reasonOf(with(PART_B, "28506", opener)),
                  "The level has no second group. Error detected at 11925 " + opener + " 22700 33016 31313 63203 ...");
    }
}

TEST(Section7Mend, ATemperatureThatLooksLikeAnOpenerAtEveryLevel) {
    std::string text = "TTBB 28238 54511 00500 51515";
    std::string levels = "significant,500,-51.5,-53,,,,,,,";
    Lines rows{levels};
    const Lines numbers{"11", "22", "33", "44", "55", "66", "77", "88", "99", "11"};
    int pressure = 490;
    for (const std::string& number : numbers) {
        text += ' ' + number + std::to_string(pressure) + " 51515";
        rows.push_back("significant," + std::to_string(pressure) + ",-51.5,-53,,,,,,,");
        pressure -= 10;
    }
    EXPECT_EQ(rowsOf(text), rows);
    EXPECT_EQ(rowsOf(text + " 51515 10164"), rows);
    EXPECT_EQ(mendsOf(text + " 51515 10164"), Lines{"section-7: wrote 31313 ///// 8//// before 51515"});
}

// ---- half a level ----

TEST(HalfALevel, AtTheEnd) {
    EXPECT_EQ(reasonOf(TEMPERATURES + " 33700"), "The level has no second group. Error detected at 33700 ...");
    EXPECT_EQ(reasonOf(TEMPERATURES + " 21212 00015"), "The level has no second group. Error detected at 00015 ...");
}

TEST(HalfALevel, Before21212) {
    EXPECT_EQ(reasonOf(with(PART_B, "33700 02566", "33700")),
              "The level has no second group. Error detected at 33700 21212 00015 00000 11925 28506 ...");
}

TEST(HalfALevel, TheOpenerOfSection6BeforeTheNextLevelIsATemperature) {
    EXPECT_EQ(rowsOf(with(PART_B, "08073", "21212"))[1], "significant,925,21.2,20,,,,,,,");
    EXPECT_EQ(statusOf(with(PART_B, "02566 21212", "21212 21212")), "refused");
    EXPECT_EQ(rowsOf(with(TEMPERATURES, "02257", "21212"))[0], "significant,1015,21.2,20,,,,,,,");
}

TEST(HalfALevel, Before31313WhenSection7Follows) {
    const std::string text = TEMPERATURES + " 33700 31313 63203 82315";
    EXPECT_EQ(reasonOf(text), "The level has no second group. Error detected at 33700 31313 63203 82315 ...");
    EXPECT_EQ(statusOf(with(text, "82315", "8////")), "refused");
    EXPECT_EQ(rowsOf(TEMPERATURES + " 33700 31313 44600 12575")[3], "significant,700,-31.3,-32.6,,,,,,,");
    EXPECT_EQ(rowsOf(TEMPERATURES + " 33700 31313")[3], "significant,700,-31.3,-32.6,,,,,,,");
}

TEST(HalfALevel, BeforeAnOpenerThatCannotBeATemperature) {
    EXPECT_EQ(statusOf(TEMPERATURES + " 33700 41414 00900"), "refused");
    EXPECT_EQ(statusOf(TEMPERATURES + " 33700 61616"), "refused");
    EXPECT_EQ(statusOf(TEMPERATURES + " 33700 51515 10164"), "refused");  // 10164 is not level 44
}

// ---- gap ----

TEST(Gap, ALevelWithoutAPressureIsLeftOut) {
    const Reading reading = readOnly(with(PART_B, "22850 04069", "22/// 04069"));
    EXPECT_EQ(mendsOf(reading), Lines{"lost gap: left out 22/// 04069, a level without a pressure"});
    EXPECT_EQ(rowsOf(reading), without(LEVELS_OF_B, 2));
    EXPECT_TRUE(reading.lost());
    EXPECT_EQ(reading.mends[0].groups.first, 6U);
    EXPECT_EQ(reading.mends[0].groups.count, 2U);
}

TEST(Gap, NothingIsLostWithoutAValue) {
    const Reading reading = readOnly(with(PART_B, "22850 04069", "22/// /////"));
    EXPECT_EQ(mendsOf(reading), Lines{"gap: left out 22/// /////, a level without a pressure"});
    EXPECT_FALSE(reading.lost());
}

TEST(Gap, TheNumbersOfTheLevelsAfterItCloseUp) {
    EXPECT_EQ(givenOf(with(PART_B, "11925 08073", "11/// 08073")),
              "TTBB 28238 54511 00015 02257 11850 04069 22700 02566 21212 00015 00000 11925 28506 22700 33016 31313 "
              "63203 82315");
    EXPECT_EQ(givenOf("TTBB 28238 54511 00/// 02257 11925 08073"), "TTBB 28238 54511 11925 08073");
    EXPECT_EQ(givenOf("TTDD 2823/ 54511 11/// 573// 22925 573//"), "TTDD 2823/ 54511 11925 573//");
    EXPECT_EQ(givenOf("TTBB 28238 54511 99/// 02257 11/// 08073 22850 04069"), "TTBB 28238 54511 11850 04069");
}

TEST(Gap, InSection6AndSeveralTimes) {
    const std::string text = with(with(PART_B, "11925 28506", "11/// 28506"), "00015 00000", "00/// /////");
    EXPECT_EQ(mendsOf(text), (Lines{"gap: left out 00/// /////, a level without a pressure",
                                    "lost gap: left out 11/// 28506, a level without a pressure"}));
    EXPECT_EQ(rowsOf(text).size(), 5U);
}

TEST(Gap, TheLastLevel) {
    // St. Paul Island, Alaska, 13 July 2022.
    EXPECT_EQ(mendsOf("TTBB 63008 70414 00016 10402 11004 08401 22160 53579 33/// 571// 31313 44108 82330"),
              Lines{"lost gap: left out 33/// 571//, a level without a pressure"});
}

TEST(Gap, ANumberThatIsNotDueIsRefused) {
    EXPECT_EQ(reasonOf(with(PART_B, "22850 04069", "33/// 04069")).substr(0, 28), "Level number 22 is expected.");
}

TEST(Gap, WithoutASecondGroupItIsRefused) {
    for (const std::string next : {"", " 21212 00015 00000", " 31313 63203 82315", " 51515 10164", " 41414 12345"}) {
        EXPECT_EQ(reasonOf(TEMPERATURES + " 33///" + next).substr(0, 30), "The level has no second group.") << next;
    }
}

TEST(Gap, TheValueOfALevelLeftOutIsNotLookedAt) {
    EXPECT_EQ(mendsOf(TEMPERATURES + " 33/// 02///"),
              Lines{"lost gap: left out 33/// 02///, a level without a pressure"});
}

TEST(Gap, PartDCannotCode100HectopascalsOnItsFirstLevel) {
    const Reading reading = readOnly("TTDD 2823/ 54511 11100 573// 22925 581//");
    EXPECT_EQ(mendsOf(reading), Lines{"lost gap: left out 11100 573//, a level at 100 hPa"});
    EXPECT_EQ(rowsOf(reading), Lines{"significant,92.5,-58.1,,,,,,,,"});
    EXPECT_EQ(givenOf(reading), "TTDD 2823/ 54511 11925 581//");
    EXPECT_EQ(mendsOf("TTDD 2823/ 54511 11925 573// 21212 11100 36017 22995 36017"),
              Lines{"lost gap: left out 11100 36017, a level at 100 hPa"});
}

TEST(Gap, TenHectopascalsStay) {
    EXPECT_EQ(rowsOf("TTDD 2823/ 54511 11100 573// 22099 581//").front(), "significant,10,-57.3,,,,,,,,");
    EXPECT_EQ(rowsOf("TTDD 2823/ 54511 11100 573// 22100 581//").front(), "significant,10,-57.3,,,,,,,,");
    EXPECT_EQ(rowsOf("TTDD 2823/ 54511 11100 573//").size(), 1U);
    EXPECT_EQ(rowsOf("TTDD 2823/ 54511 11200 573// 22100 581//").size(), 2U);
    EXPECT_EQ(statusOf("TTDD 2823/ 54511 11100 573// 33925 581//"), "refused");
    EXPECT_EQ(statusOf("TTBB 28238 54511 11100 573// 22925 581//"), "refused");
}

TEST(Gap, OnlyTheFirstLevelMayBeAt100Hectopascals) {
    // Chuuk, 13 July 2022: three levels at 100 hPa.
    EXPECT_EQ(reasonOf("TTDD 6300/ 91366 11926 77357 21212 11100 36017 22100 36017 33100 36018 44995 36017"),
              "The pressure is above that of the level before. Error detected at 44995 36017 ...");
}

TEST(Gap, WithoutMendsItIsRefused) {
    EXPECT_EQ(readOnly(with(PART_B, "22850 04069", "22/// 04069"), false).reason,
              "A level has no pressure. Error detected at 22/// 04069 33700 02566 21212 00015 ...");
    EXPECT_EQ(readOnly("TTDD 2823/ 54511 11100 573// 22925 581//", false).reason,
              "A level at 100 hPa cannot be coded in part D. Error detected at 11100 573// 22925 581// ...");
}

// ---- closer ----

TEST(Closer, ALost21212IsWritten) {
    const Reading reading = readOnly(with(PART_B, "21212 ", ""));
    EXPECT_EQ(mendsOf(reading), Lines{"closer: wrote 21212 before 00015"});
    EXPECT_EQ(rowsOf(reading), LEVELS_OF_B);
    EXPECT_EQ(givenOf(reading), PART_B);
    EXPECT_EQ(mendsOf("TTDD 2823/ 54511 11925 573// 22800 581// 11925 28506"),
              Lines{"closer: wrote 21212 before 11925"});
}

TEST(Closer, ZeroZeroWithoutARiseIsRefused) {
    EXPECT_EQ(reasonOf("TTBB 28238 54511 00015 02257 00015 00000").substr(0, 28), "Level number 11 is expected.");
    EXPECT_EQ(reasonOf("TTBB 28238 54511 00015 02257 11925 08073 00925 28506").substr(0, 28),
              "Level number 22 is expected.");
    EXPECT_EQ(reasonOf("TTBB 28238 54511 00015 02257 11925 08073 11015 28506").substr(0, 28),
              "Level number 22 is expected.");
    EXPECT_EQ(reasonOf("TTDD 2823/ 54511 11925 573// 22800 581// 11800 28506").substr(0, 28),
              "Level number 33 is expected.");
}

TEST(Closer, Section6BeginsOnlyOnce) {
    EXPECT_EQ(reasonOf("TTBB 28238 54511 00015 02257 21212 00015 00000 11925 28506 00015 00000").substr(0, 28),
              "Level number 22 is expected.");
}

TEST(Closer, WithoutMendsItIsRefused) {
    EXPECT_EQ(readOnly(with(PART_B, "21212 ", ""), false).reason,
              "Section 6 must begin with 21212. Error detected at 00015 00000 11925 28506 22700 33016 ...");
    EXPECT_EQ(readOnly(TEMPERATURES + " 51515 10164", false).reason,
              "The group 51515 is in the place of a level. Error detected at 51515 10164 ...");
}

// ---- 21212 and 31313 missing before each opener ----

TEST(Closer, Missing21212And31313BeforeEveryOpener) {
    for (const std::string opener : {"41414", "51515", "52525", "59595", "61616", "62626", "69696"}) {
        const Reading reading = readOnly(with(with(PART_B, "21212 ", ""), "31313 63203 82315", opener + " 10164"));
        EXPECT_EQ(mendsOf(reading),
                  (Lines{"closer: wrote 21212 before 00015", "section-7: wrote 31313 ///// 8//// before " + opener}));
        EXPECT_EQ(rowsOf(reading), LEVELS_OF_B);
    }
}

TEST(SignificantLevels, RealNationalGroupsWithout31313) {
    EXPECT_EQ(
        mendsOf("TTBB 28238 54511 00015 02257 11925 08073 21212 00015 00000 11925 28506 22700 33016 56565 14076 77235"),
        Lines{"section-7: wrote 31313 ///// 8//// before 56565"});
    EXPECT_EQ(statusOf("TTBB 28238 54511 88228 56565 14076 77235"), "refused");
}

}  // namespace
