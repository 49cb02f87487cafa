// Whether a part holds data, says that there is none, or holds nothing.
#include "FeedParts.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using corvane::Reading;
using feed_test::readOnly;
using feed_test::statusOf;

TEST(Status, NamesOfTheFour) {
    EXPECT_EQ(corvane::statusName(Reading::DECODED), "decoded");
    EXPECT_EQ(corvane::statusName(Reading::NIL), "NIL");
    EXPECT_EQ(corvane::statusName(Reading::EMPTY), "empty");
    EXPECT_EQ(corvane::statusName(Reading::REFUSED), "refused");
}

TEST(Status, NILInAllSpellings) {
    for (const std::string nil : {"NIL", "NILL", "NIL."}) {
        EXPECT_EQ(statusOf("TTAA 72576 " + nil), "NIL") << nil;
        EXPECT_EQ(statusOf("TTAA 63001 72576 " + nil), "NIL") << nil;
        EXPECT_EQ(statusOf("UUAA 9ZT9MRK 06001 99602 70467 22106 " + nil), "NIL") << nil;
    }
    EXPECT_EQ(statusOf("TTAA "
                       "NIL"),
              "NIL");
    for (const std::string word : {"nil", "NILS", "NIL,", "N I L"}) {
        EXPECT_NE(statusOf("TTAA 63001 72576 " + word), "NIL") << word;
    }
}

TEST(Status, NILIsLookedForAmongTheFirstEightGroups) {
    EXPECT_EQ(statusOf("TTAA 63001 72576 A B C D E NIL"), "NIL");
    EXPECT_NE(statusOf("TTAA 63001 72576 A B C D E F NIL"), "NIL");
}

TEST(Status, NILWithDataIsData) {
    EXPECT_EQ(statusOf("TTAA 63001 72576 NIL 12345 12345"), "NIL");
    EXPECT_EQ(statusOf("TTAA 63001 72576 NIL 12345 ///// 12///"), "refused");
    EXPECT_EQ(statusOf("TTAA 63001 72576 NIL 88999"), "refused");
    EXPECT_EQ(statusOf("TTAA 63001 72576 77 NIL"), "refused");
    EXPECT_EQ(statusOf("TTAA 63001 72576 NIL 8 7"), "NIL");
}

// Words of five letters are no groups.
TEST(Status, NILMayHaveAReason) {
    EXPECT_EQ(statusOf("TTAA 72576 NIL RADAR FAULT UNTIL AFTER TODAY"), "NIL");
}

TEST(Status, APartWithoutAGroupAfterSection1IsEmpty) {
    EXPECT_EQ(statusOf("TTAA"), "empty");
    EXPECT_EQ(statusOf("TTAA 63001"), "empty");
    EXPECT_EQ(statusOf("TTAA 63001 72214"), "empty");
    EXPECT_EQ(statusOf("UUAA 9ZT9MRK 06001 99602 70467 22106"), "empty");
    EXPECT_EQ(statusOf("XXAA 70035 99153 70659 04355"), "empty");
    EXPECT_EQ(statusOf("IIAA USBYZ01 58161 99450 71107 15640 19053"), "empty");
    EXPECT_NE(statusOf("IIAA USBYZ01 58161 99450 71107 15640 19053 99810"), "empty");
}

TEST(Status, APartThatBeginsWithAnOpenerIsEmpty) {
    for (const std::string opener : {"31313", "41414", "51515", "52525", "55555", "59595", "61616", "66666", "69696"}) {
        EXPECT_EQ(statusOf("TTAA 63001 72501 " + opener + " 10164 00051"), "empty") << opener;
        EXPECT_EQ(statusOf("TTBB 63008 72501 " + opener + " 10164 00051"), "empty") << opener;
    }
    for (const std::string group :
         {"21212", "32323", "42424", "50505", "60606", "71717", "51516", "51525", "5151", "515151"}) {
        EXPECT_NE(statusOf("TTAA 63001 72501 " + group + " 10164 00051 12345"), "empty") << group;
    }
    EXPECT_EQ(statusOf("TTDD 5600/ 72233 51515 10159"), "empty");
}

TEST(Status, PartsBAndDThatBeginWith88999AreEmpty) {
    EXPECT_EQ(statusOf("TTBB 63008 72501 88999"), "empty");
    EXPECT_EQ(statusOf("TTDD 6300/ 72501 88999"), "empty");
    EXPECT_EQ(statusOf("TTCC 63001 72501 88999 77999"), "decoded");
    EXPECT_EQ(statusOf("TTAA 63001 72501 88999 77999"), "decoded");
    EXPECT_NE(statusOf("TTBB 63008 72501 77999"), "empty");
}

TEST(Status, WordsInsteadOfAnAscentAreEmpty) {
    EXPECT_EQ(statusOf("TTAA 63001 72576 NO ASCENT DUE TO STRONG WIND"), "empty");
    EXPECT_EQ(statusOf("TTAA 63001 72576 NO ASCENT 12345 12345"), "empty");
    EXPECT_NE(statusOf("TTAA 63001 72576 NO ASCENT 12345 12345 12345"), "empty");
    EXPECT_NE(statusOf("TTAA 63001 72576 NO 12345"), "empty");
    EXPECT_NE(statusOf("TTAA 63001 72576 NO1 ASCENT. 12345"), "empty");
    EXPECT_NE(statusOf("UUAA SHIP 06001 99602 70467 22106 NO ASCENT"), "empty");
}

TEST(Status, AStationAloneNamesANIL) {
    const Reading reading = readOnly("TTAA 72576 NIL");
    EXPECT_EQ(reading.station, "72576");
    EXPECT_FALSE(reading.day.has_value());
    EXPECT_FALSE(reading.hour.has_value());
    // 15171 would be a date, too.
    EXPECT_EQ(readOnly("TTAA 15171 NIL").station, "15171");
    EXPECT_FALSE(readOnly("TTAA 15171 NIL").day.has_value());
}

TEST(Status, ANILWithADateHasBoth) {
    const Reading reading = readOnly("TTAA 2900/ 54342 NIL");
    EXPECT_EQ(reading.station, "54342");
    EXPECT_EQ(reading.day, 29);
    EXPECT_EQ(reading.hour, 0);
    EXPECT_EQ(readOnly("TTAA 2900/ 5434 NIL").station, "");
}

TEST(Status, AnEmptyPartHasItsStation) {
    const Reading reading = readOnly("TTAA 63001 72214 51515 10164");
    EXPECT_EQ(reading.station, "72214");
    EXPECT_EQ(reading.day, 13);
    EXPECT_EQ(reading.hour, 0);
    EXPECT_TRUE(reading.levels.empty());
    EXPECT_TRUE(reading.mends.empty());
}

}  // namespace
