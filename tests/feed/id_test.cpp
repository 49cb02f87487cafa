// The last wind indicator Id of parts A and C.
#include "FeedParts.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using corvane::Reading;
using feed_test::BEIJING;
using feed_test::givenOf;
using feed_test::Lines;
using feed_test::mendsOf;
using feed_test::readOnly;
using feed_test::reasonOf;
using feed_test::rowsOf;
using feed_test::statusOf;
using feed_test::with;

// Tallahassee, 13 July 2022, 00 UTC, with a wind at 7 hPa under an Id that ends at 10 hPa.
const std::string WIND_AT_7 =
    "TTCC 63001 72214 70881 66772 11011 50084 66174 09040 30407 55780 06030 20664 52982 11540 "
    "10126 41389 06532 07373 31994 08542 88999 77999 31313 44108 82303";

TEST(Id, AWindAt7HectopascalsIsByFarTheMostCommonMend) {
    const Reading reading = readOnly(WIND_AT_7);
    EXPECT_EQ(mendsOf(reading), Lines{"id: 63001 read as 63000"});
    EXPECT_EQ(givenOf(reading), with(WIND_AT_7, "63001", "63000"));
    EXPECT_FALSE(reading.lost());
    ASSERT_EQ(reading.levels.size(), 6U);
    // 42 knots * 0.5144
    EXPECT_EQ(rowsOf(reading)[5], "mandatory,7,-31.9,-75.9,21.6048,85,33730,,,,");
    EXPECT_EQ(reading.mends[0].groups.first, 0U);
    EXPECT_EQ(reading.mends[0].groups.count, 1U);
}

TEST(Id, EveryIdOfPartAEndsTheWindsAtItsSurface) {
    const std::string lower = "TTAA 2823# 54511 99015 02257 00000 00156 07669 23009 92797 08073 28506 85490 04069";
    // 800 hPa, not 850: Id 8 asks for a wind at 850 hPa.
    EXPECT_EQ(mendsOf(with(lower, "#", "9") + " 88999"), Lines());
    EXPECT_EQ(mendsOf(with(lower, "#", "8") + " 31512 88999"), Lines());
    const std::string upper = lower + " 31512 70044 02566 33016 50565 16375";
    EXPECT_EQ(mendsOf(with(upper, "#", "7") + " 88999"), Lines());
    EXPECT_EQ(mendsOf(with(upper, "#", "5") + " 32021 88999"), Lines());
    EXPECT_EQ(mendsOf(with(upper, "#", "5") + " 32021 40728 29370 88999"), Lines());
    EXPECT_EQ(mendsOf(with(upper, "#", "4") + " 32021 40728 29370 32020 88999"), Lines());
    EXPECT_EQ(mendsOf(with(upper, "#", "3") + " 32021 40728 29370 32020 30927 45367 30522 25047 54365 88999"), Lines());
    EXPECT_EQ(mendsOf(with(upper, "#", "2") +
                      " 32021 40728 29370 32020 30927 45367 30522 25047 54365 31522 20187 621// 32024 "
                      "15366 605// 88999"),
              Lines());
    EXPECT_EQ(mendsOf(BEIJING), Lines());
    EXPECT_EQ(mendsOf("TTAA 28230 54511 99015 02257 00000 00156 07669 23009 92797 08073 88999"), Lines());
    EXPECT_EQ(mendsOf("TTAA 2823/ 54511 99015 02257 00000 00156 07669 92797 08073 88999"), Lines());
}

TEST(Id, EveryIdOfPartCEndsTheWindsAtItsSurface) {
    const std::string part = "TTCC 2823# 54511 70858 725// 24516 50058 671//";
    EXPECT_EQ(mendsOf(with(part, "#", "7") + " 88999"), Lines());
    EXPECT_EQ(mendsOf(with(part, "#", "5") + " 09010 30371 591// 88999"), Lines());
    EXPECT_EQ(mendsOf(with(part, "#", "3") + " 09010 30371 591// 08535 20631 495// 88999"), Lines());
    EXPECT_EQ(mendsOf(with(part, "#", "2") + " 09010 30371 591// 08535 20631 495// 10528 10126 413// 88999"), Lines());
    EXPECT_EQ(mendsOf("TTCC 2823/ 54511 70858 725// 50058 671// 88999"), Lines());
}

TEST(Id, AnIdThatReachesFurtherIsTried) {
    for (const std::string id : {"2", "3", "4", "5", "7", "8", "9", "0", "/"}) {
        const Reading reading = readOnly(with(BEIJING, "28231", "2823" + id));
        EXPECT_EQ(mendsOf(reading), Lines{"id: 2823" + id + " read as 28231"}) << id;
        EXPECT_EQ(rowsOf(reading), rowsOf(BEIJING)) << id;
    }
}

TEST(Id, AnInvalidIdIsReplaced) {
    EXPECT_EQ(mendsOf(with(BEIJING, "28231", "28236")), Lines{"id: 28236 read as 28231"});
    EXPECT_EQ(mendsOf(with(WIND_AT_7, "63001", "63004")), Lines{"id: 63004 read as 63000"});
    EXPECT_EQ(mendsOf(with(WIND_AT_7, "63001", "63008")), Lines{"id: 63008 read as 63000"});
}

TEST(Id, AnIdThatIsLeftOutIsFound) {
    EXPECT_EQ(mendsOf(with(BEIJING, "28231", "2823")), Lines{"id: 2823 read as 28231"});
    EXPECT_EQ(rowsOf(with(BEIJING, "28231", "2823")), rowsOf(BEIJING));
    EXPECT_EQ(mendsOf(with(WIND_AT_7, "63001", "6300")), Lines{"id: 6300 read as 63000"});
}

TEST(Id, AnIdThatReachesFewerLevelsIsNeverTried) {
    // Id 1 asks for winds up to 100 hPa, and none is given above 850 hPa.
    EXPECT_EQ(
        statusOf("TTAA 28231 54511 99015 02257 00000 00156 07669 23009 92797 08073 28506 85490 04069 31512 70044 02566 "
                 "50565 16375 88999 77999"),
        "refused");
}

TEST(Id, TheIdOfACleanPartStays) {
    EXPECT_EQ(mendsOf(BEIJING), Lines());
    // An Id that reaches beyond the last surface is no fault.
    EXPECT_EQ(mendsOf("TTAA 28231 54511 99015 02257 00000 00156 07669 23009 88999 77999"), Lines());
}

// 88999 read as a temperature: Id is one surface short, and the last wind begins like the next surface.
TEST(Id, AWindThatLooksLikeTheNextSurface) {
    const std::string part =
        "TTCC 28232 54511 70858 725// 24516 50058 671// 09010 30371 591// 08535 20631 495// 10528 10126 "
        "413// 07015 88999 77999";
    const Reading reading = readOnly(part);
    EXPECT_EQ(mendsOf(reading), Lines{"id: 28232 read as 28231"});
    EXPECT_EQ(rowsOf(reading).back(), "mandatory,10,-41.3,,15,70,31260,,,,");
}

TEST(Id, AnImpossibleValueMayMeanAWrongId) {
    // With Id 9 the wind at 850 hPa is left over; it is read with Id 8 and all that reach further.
    EXPECT_EQ(
        mendsOf("TTAA 28239 54511 99015 02257 00000 00156 07669 23009 92797 08073 28506 85490 04069 31512 88999 77999"),
        Lines{"id: 28239 read as 28238"});
}

TEST(Id, TheFewestMendsWinIdIncluded) {
    // With Id 2, 100 hPa has no wind and 28025 is left over; with Id 1 everything fits.
    const Reading reading = readOnly(with(BEIJING, "28231", "28232"));
    EXPECT_EQ(mendsOf(reading), Lines{"id: 28232 read as 28231"});
    // 62626 without a remark costs the same under every Id.
    EXPECT_EQ(mendsOf(with(BEIJING, "28231", "28232") + " 51515 B"),
              (Lines{"id: 28232 read as 28231", "tail: left out B"}));
}

TEST(Id, AReadingWithGroupsLeftOverGivesWayToOneWithout) {
    // Koror, 13 July 2022. With Id 2 the wind 10015 at 150 hPa is taken for 100 hPa, and the rest is left over: one
    // mend, like the lost 31313 that is written with Id 1.
    EXPECT_EQ(mendsOf("TTAA 63008 91408 99003 25809 06003 00080 26824 10504 92768 22217 14513 85501 18422 12012 70150 "
                      "10431 09016 "
                      "50588 04756 09517 40761 13363 12017 30973 28936 11517 25101 39163 11520 20249 52757 11026 15428 "
                      "68150 10015 "
                      "10663 81741 04029 88109 81540 05523 77999 44108 82304"),
              (Lines{"id: 63008 read as 63001", "section-7: wrote 31313 before 44108"}));
    const std::string part = with(with(BEIJING, "28231", "28232"), "88187 639// 31524 77999 ", "");
    EXPECT_EQ(mendsOf(part), Lines{"id: 28232 read as 28231"});
    EXPECT_EQ(rowsOf(part).size(), 12U);
}

// With Id 5 these are 30 hPa at 23,710 m and -59.1 degrees, 20 hPa at 20.4 and 10 hPa at 7.0 degrees. With Id 2 they
// are 30 hPa with a wind from 200 degrees and 20 hPa at -10.1 degrees with a wind from 070 degrees.
TEST(Id, TwoThatFitEquallyWellAreAmbiguous) {
    const std::string part =
        "TTCC 28237 54511 70858 725// 24516 50058 671// 09010 30371 591// 20015 20495 10126 07015 88999 77999";
    EXPECT_EQ(reasonOf(part),
              "The last wind indicator (Id) is wrong, and two others fit equally well. Error detected at 28237 "
              "54511 70858 725// 24516 50058 ...");
    EXPECT_EQ(readOnly(part).fault.first, 0U);
    EXPECT_EQ(rowsOf(with(part, "28237", "28235")).size(), 5U);
    EXPECT_EQ(rowsOf(with(part, "28237", "28232")).size(), 4U);
}

// The same with 52 for the last two digits, which is no code for a depression: Id 5 would need one mend more.
TEST(Id, OneThatNeedsNoOtherMendIsBetter) {
    const std::string part =
        "TTCC 28237 54511 70858 725// 24516 50058 671// 09010 30371 591// 20015 20495 10126 07052 88999 77999";
    EXPECT_EQ(mendsOf(part), Lines{"id: 28237 read as 28232"});
    EXPECT_EQ(rowsOf(part).back(), "mandatory,20,-10.1,-12.7,52,70,24950,,,,");
    EXPECT_EQ(mendsOf(with(part, "28237", "28235")), Lines{"lost depression: 07052 read as 070//"});
}

// Several that give the same levels are no choice: the one that reaches least is taken.
TEST(Id, TwoThatGiveTheSameLevelsAreNotAmbiguous) {
    EXPECT_EQ(mendsOf("TTCC 28236 54511 70858 725// 50058 671// 88999 77999"), Lines{"id: 28236 read as 2823/"});
    EXPECT_EQ(mendsOf("TTCC 2823/ 54511 70858 725// 24516 50058 671// 09010 88999 77999"),
              Lines{"id: 2823/ read as 28235"});
}

TEST(Id, SurfacesBelowTheGroundAndIdTogether) {
    EXPECT_EQ(mendsOf("TTAA 28239 52533 99857 05268 25002 85547 08071 26503 88999 77999"),
              (Lines{"id: 28239 read as 28238", "level: wrote 00/// ///// ///// 92/// ///// ///// before 85547"}));
}

TEST(Id, WithoutMendsThePartIsRefused) {
    EXPECT_EQ(readOnly(WIND_AT_7, false).reason, "The mandatory significant observation is incorrectly coded. Error "
                                                 "detected at 08542 88999 77999 31313 44108 82303 ...");
}

}  // namespace
