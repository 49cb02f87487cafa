// What is mended and refused before the decoder sees a part.
#include "FeedParts.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using corvane::Reading;
using feed_test::BEIJING;
using feed_test::DROP_A;
using feed_test::givenOf;
using feed_test::LEVELS_OF_BEIJING;
using feed_test::Lines;
using feed_test::mendsOf;
using feed_test::readOnly;
using feed_test::reasonOf;
using feed_test::rowsOf;
using feed_test::SHIP_D;
using feed_test::statusOf;
using feed_test::with;

std::string shapeReason(const std::string& group) {
    return "The group " + group + " is neither five digits nor solidi in their place. Error detected at " + group;
}

// ---- join ----

TEST(Join, TwoOrThreePiecesOfAGroupAreOne) {
    const Lines levels = rowsOf(BEIJING);
    for (const std::string pieces : {"0 7669", "07 669", "076 69", "0766 9", "0 7 669", "07 66 9", "0 766 9"}) {
        const Reading reading = readOnly(with(BEIJING, "07669", pieces));
        EXPECT_EQ(rowsOf(reading), levels) << pieces;
        EXPECT_EQ(mendsOf(reading), Lines{"join: " + pieces + " read as 07669"});
        EXPECT_EQ(givenOf(reading), BEIJING);
    }
}

TEST(Join, SolidiAreJoinedToo) {
    EXPECT_EQ(mendsOf(with(BEIJING, "621//", "62 1//")), Lines{"join: 62 1// read as 621//"});
    EXPECT_EQ(mendsOf(with(BEIJING, "31313 63203", "3131 3 63203")), Lines{"join: 3131 3 read as 31313"});
}

TEST(Join, FourPiecesAreNotOne) {
    EXPECT_EQ(reasonOf(with(BEIJING, "07669", "0 7 66 9")).substr(0, 61), shapeReason("0").substr(0, 61));
}

TEST(Join, PiecesThatAreNotFiveTogetherStay) {
    EXPECT_EQ(statusOf(with(BEIJING, "07669", "07 66")), "refused");
    EXPECT_EQ(statusOf(with(BEIJING, "07669", "07 6699")), "refused");
    EXPECT_EQ(statusOf(with(BEIJING, "07669", "07 66A")), "refused");
}

TEST(Join, SectionOneIsJoined) {
    EXPECT_EQ(rowsOf(with(BEIJING, "54511", "545 11")).size(), LEVELS_OF_BEIJING);
    const Reading reading = readOnly(with(BEIJING, "28231", "2823 1"));
    EXPECT_EQ(reading.hour, 23);
    EXPECT_EQ(mendsOf(reading), Lines{"join: 2823 1 read as 28231"});
}

TEST(Join, NothingIsJoinedFrom61616Or62626On) {
    EXPECT_EQ(mendsOf(DROP_A + " 12 345"), Lines());
    EXPECT_EQ(mendsOf(BEIJING + " 62626 12 345"), Lines());
    EXPECT_EQ(mendsOf(BEIJING + " 51515 12 345"), Lines{"join: 12 345 read as 12345"});
    EXPECT_EQ(mendsOf(BEIJING + " 6161 6 12 345"), Lines{"join: 6161 6 read as 61616"});
}

TEST(Join, TheMendTouchesThePieces) {
    const Reading reading = readOnly(with(BEIJING, "02257", "02 257"));
    ASSERT_EQ(reading.mends.size(), 1U);
    EXPECT_EQ(reading.mends[0].groups.first, 3U);
    EXPECT_EQ(reading.mends[0].groups.count, 2U);
    EXPECT_FALSE(reading.mends[0].lost);
    EXPECT_EQ(reading.levels[0].groups.first, 2U);
    EXPECT_EQ(reading.levels[0].groups.count, 4U);
    EXPECT_EQ(reading.levels[1].groups.first, 6U);
    EXPECT_EQ(reading.levels[1].groups.count, 3U);
}

// ---- shapes ----

TEST(Shape, GroupsOfLevelsAreDigitsOrHaveTheirSolidiInPlace) {
    const std::string part = "TTAA 28231 54511 99015 GROUP 00000 00156 07669 23009 88999 77999";
    for (const std::string group : {"02257", "022//", "/////"}) {
        EXPECT_EQ(statusOf(with(part, "GROUP", group)), "decoded") << group;
    }
    for (const std::string group :
         {"08/60", "0225", "022577", "O2257", "0225/", "0////", "////7", "///57", "0//57", "02-57"}) {
        EXPECT_EQ(reasonOf(with(part, "GROUP", group)), shapeReason(group) + " 00000 00156 07669 23009 88999 ...")
            << group;
    }
}

TEST(Shape, ASolidusInsideAWindIsRefused) {
    EXPECT_EQ(statusOf(with(BEIJING, "23009", "2300/")), "refused");
    EXPECT_EQ(statusOf(with(BEIJING, "23009", "23///")), "decoded");
    EXPECT_EQ(statusOf(with(BEIJING, "23009", "//009")), "decoded");
    EXPECT_EQ(statusOf(with(BEIJING, "23009", "/////")), "decoded");
}

// dd/// is a wind, ddd// a temperature; each is out of place where the other should stand.
TEST(Shape, SolidiMustSuitThePlaceOfTheGroup) {
    EXPECT_EQ(reasonOf(with(BEIJING, "07669", "07///")),
              "A temperature (TTTDD) is expected. Error detected at 07/// 23009 92797 08073 28506 85490 ...");
    EXPECT_EQ(reasonOf(with(BEIJING, "07669", "//669")).substr(0, 34), "A temperature (TTTDD) is expected.");
    EXPECT_EQ(reasonOf(with(BEIJING, "23009", "230//")).substr(0, 28), "A wind (ddfff) is expected. ");
    EXPECT_EQ(reasonOf(with(BEIJING, "00156", "001//")).substr(0, 39), "A level (PPhhh or PPPPP) is expected. E");
    EXPECT_EQ(reasonOf(with(BEIJING, "639//", "63///")).substr(0, 34), "A temperature (TTTDD) is expected.");
    EXPECT_EQ(reasonOf(with(BEIJING, "31524 77999", "315// 77999")).substr(0, 28), "A wind (ddfff) is expected. ");
    EXPECT_EQ(reasonOf(with(BEIJING, "88187", "881//")).substr(0, 39), "A level (PPhhh or PPPPP) is expected. E");
    EXPECT_EQ(reasonOf(with(BEIJING, "77999", "77269 315//")).substr(0, 28), "A wind (ddfff) is expected. ");
    EXPECT_EQ(reasonOf(with(BEIJING, "77999", "772// 31532")).substr(0, 39), "A level (PPhhh or PPPPP) is expected. E");
}

TEST(Shape, WhatFollowsTheFirstOpenerMayLookOtherwise) {
    EXPECT_EQ(statusOf(BEIJING + " 51515 ABCDEF 1/2/3 123456 61616 OB 03"), "decoded");
}

// ---- tail ----

TEST(Tail, AWordOfOneLetterIsLeftOut) {
    const Reading reading = readOnly(BEIJING + " 51515 B 10164 7");
    EXPECT_EQ(reading.status, Reading::DECODED);
    EXPECT_EQ(mendsOf(reading), (Lines{"tail: left out B", "tail: left out 7"}));
    EXPECT_EQ(givenOf(reading), BEIJING + " 51515 10164");
    EXPECT_EQ(rowsOf(reading), rowsOf(BEIJING));
}

TEST(Tail, AWordOfFourThatEndsInBBCCOrDDIsLeftOut) {
    for (const std::string word : {"EDDD", "EDBB", "ZZCC", "E1DD", "..DD"}) {
        const Reading reading = readOnly(BEIJING + " 51515 10164 " + word + " 12345");
        EXPECT_EQ(reading.status, Reading::DECODED) << word;
        EXPECT_EQ(mendsOf(reading), Lines{"tail: left out " + word});
    }
    EXPECT_EQ(mendsOf(BEIJING + " 51515 EDAA DDDE XDD"), Lines());
}

TEST(Tail, AfterRemarksSingleCharactersStay) {
    EXPECT_EQ(mendsOf(DROP_A + " 62626 A MBL WND 29023 9 EDDD"), Lines{"tail: left out EDDD"});
    EXPECT_EQ(mendsOf(DROP_A + " 9 62626 MBL WND 29023"), Lines{"tail: left out 9"});
}

TEST(Tail, PartsBAndDHaveATailToo) {
    const Reading reading = readOnly(SHIP_D + " 51515 B EDDD");
    EXPECT_EQ(mendsOf(reading), (Lines{"tail: left out B", "tail: left out EDDD"}));
    EXPECT_EQ(rowsOf(reading), rowsOf(SHIP_D));
}

TEST(Tail, AWordOfOneLetterBeforeTheFirstOpenerIsRefused) {
    EXPECT_EQ(reasonOf(with(BEIJING, "31313", "B 31313")).substr(0, 54), shapeReason("B").substr(0, 54));
}

// ---- id of parts B and D ----

TEST(Tail, PiecesThatAWordSeparatesAreJoined) {
    const Reading reading =
        readOnly("XXAA 56009 99240 70759 08045 99012 10658 27010 88999 77999 51515 626 B 26 REL 2402N07602W 123456");
    EXPECT_EQ(mendsOf(reading), (Lines{"tail: left out B", "join: 626 26 read as 62626"}));
    EXPECT_EQ(rowsOf(reading).back(), "releasepoint,,,,,,,123456,24.02,-76.02,");
}

TEST(Elevation, OneWithoutAUnitIsLost) {
    for (const std::string elevation : {"0123/", "01230", "01239"}) {
        const Reading reading =
            readOnly("IIAA ABCD 56009 99412 70853 07113 " + elevation + " 99012 10658 27010 88999 77999");
        EXPECT_EQ(mendsOf(reading), Lines{"lost elevation: " + elevation + " has no unit"});
        EXPECT_FALSE(reading.elevation);
        EXPECT_EQ(rowsOf(reading).size(), 1U);
    }
}

TEST(IdOfPartsBAndD, PartDEndsItsDateInASolidus) {
    for (const std::string id : {"1", "0", "8"}) {
        const Reading reading = readOnly(with(SHIP_D, "0600/", "0600" + id));
        EXPECT_EQ(mendsOf(reading), Lines{"id: 0600" + id + " read as 0600/"});
        EXPECT_EQ(rowsOf(reading), rowsOf(SHIP_D));
    }
    EXPECT_EQ(mendsOf(SHIP_D), Lines());
}

TEST(IdOfPartsBAndD, ADateOfFourDigitsGetsASolidus) {
    EXPECT_EQ(mendsOf(with(SHIP_D, "0600/", "0600")), Lines{"id: 0600 read as 0600/"});
    const Reading reading = readOnly("TTBB 3008 72233 00012 10658 11850 05512 21212 00012 27010");
    EXPECT_EQ(mendsOf(reading), Lines{"id: 3008 read as 3008/"});
    EXPECT_EQ(rowsOf(reading), (Lines{"significant,1012,10.6,2.6,,,,,,,", "significant,850,-5.5,-6.7,,,,,,,",
                                      "significant,1012,,,10,270,,,,,"}));
    EXPECT_EQ(reading.hour, 8);
}

TEST(IdOfPartsBAndD, PartBKeepsWhatStandsThere) {
    for (const std::string a4 : {"8", "/", "2"}) {
        EXPECT_EQ(mendsOf("TTBB 3008" + a4 + " 72233 00012 10658"), Lines()) << a4;
    }
}

// ---- without mends ----

TEST(NoMends, APartThatNeedsOneIsRefused) {
    EXPECT_EQ(readOnly(BEIJING, false).status, Reading::DECODED);
    const Reading joined = readOnly(with(BEIJING, "07669", "076 69"), false);
    EXPECT_EQ(joined.reason, "A mend is needed: join. Error detected at 076 69 23009 92797 08073 28506 ...");
    EXPECT_TRUE(joined.mends.empty());
    EXPECT_TRUE(joined.levels.empty());
    EXPECT_EQ(readOnly(with(SHIP_D, "0600/", "06001"), false).reason.substr(0, 21), "A mend is needed: id.");
    EXPECT_EQ(readOnly("TTAA 28231 54511 99015 02257 00000", false).status, Reading::REFUSED);
    EXPECT_EQ(readOnly(BEIJING + " 51515 B", false).status, Reading::REFUSED);
    EXPECT_EQ(readOnly(with(BEIJING, "28231", "28232"), false).status, Reading::REFUSED);
    EXPECT_EQ(readOnly(DROP_A + " 62626 REL", false).status, Reading::REFUSED);
}

TEST(NoMends, PunctuationAroundAGroupIsRefused) {
    const Reading reading = readOnly(with(BEIJING, "07669", "(07669)"), false);
    EXPECT_EQ(reading.status, Reading::REFUSED);
    EXPECT_EQ(reading.reason.substr(0, 24), "A mend is needed: marks.");
}

}  // namespace
