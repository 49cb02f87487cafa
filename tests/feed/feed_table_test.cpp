// The tables of levels and of parts.
#include "FeedParts.h"

#include "FeedTable.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using corvane::Part;
using corvane::Reading;
using feed_test::BEIJING;
using feed_test::partsOf;
using feed_test::with;

const std::string DROP = "UZNT13 KNHC 200236\n" + feed_test::DROP_A;
const std::string MOBIL =
    "IIAA USBYZ01 58161 99450 71107 15640 19053 99810 10659 12004 00120 ///// ///// 92/// ///// ///// "
    "85/// ///// ///// 88999 77999";

std::string rowsOf(const std::string& text) {
    std::string out;
    for (const Part& part : partsOf(text)) {
        corvane::table::appendFeedRows(out, part, corvane::read(part));
    }
    return out;
}

std::string firstRowOf(const std::string& text) {
    const std::string rows = rowsOf(text);
    return rows.substr(0, rows.find('\n'));
}

std::string partsRowOf(const std::string& text) {
    std::string out;
    const std::vector<Part> parts = partsOf(text);
    corvane::table::appendPartsRow(out, parts.front(), corvane::read(parts.front()));
    return out;
}

TEST(FeedTable, Headers) {
    std::string out;
    corvane::table::appendFeedHeader(out);
    EXPECT_EQ(
        out, "source,heading,form,part,station,day,hour,slat,slon,selev,launch,mends,doubt,type,pres,tdry,dp,wspd,wdir,"
             "height,time,lat,lon,pres2\n");
    out.clear();
    corvane::table::appendPartsHeader(out);
    EXPECT_EQ(out, "source,heading,form,part,station,day,hour,status,levels,mends,message\n");
}

TEST(FeedTable, ATEMPHasItsStation) {
    EXPECT_EQ(firstRowOf("\nUSCI01 BABJ 290000 RRA\n" + BEIJING),
              "-:3,USCI01 BABJ 290000 RRA,TEMP,A,54511,28,23,,,,2315,,,surface,1015,2.2,-4.8,0,0,,,,,");
}

TEST(FeedTable, ADropHasItsPosition) {
    EXPECT_EQ(firstRowOf(DROP),
              "-:2,UZNT13 KNHC 200236,TEMP DROP,A,,20,3,15.3,-65.9,,0231,,,surface,1007,29.4,23.4,10.8024,285,,,,,");
}

TEST(FeedTable, AShipHasItsCallSignAndPosition) {
    EXPECT_EQ(firstRowOf(feed_test::SHIP_D),
              "-:1,,TEMP SHIP,D,9ZT9MRK,6,0,60.2,-46.7,,2240,,,significant,54.2,-62.1,-91.1,,,,,,,");
    EXPECT_EQ(firstRowOf(with(feed_test::SHIP_D, "9ZT9MRK", "\"A,B\"")).substr(0, 30),
              "-:1,,TEMP SHIP,D,\"\"\"A,B\"\"\",6,0");
}

TEST(FeedTable, AMobilHasItsElevation) {
    EXPECT_EQ(firstRowOf(MOBIL),
              "-:1,,TEMP MOBIL,A,USBYZ01,8,16,45,-110.7,1905,,,,surface,810,10.6,1.6,2.0576,120,,,,,");
}

TEST(FeedTable, MendsAreNamedOnce) {
    const std::string row =
        firstRowOf(with(with(with(BEIJING, "02257", "022 57"), "28231", "28232"), "07669", "0 7669"));
    EXPECT_EQ(row, "-:1,,TEMP,A,54511,28,23,,,,2315,join id,,surface,1015,2.2,-4.8,0,0,,,,,");
}

TEST(FeedTable, DoubtsAreNamedInTheirLevels) {
    const std::string rows = rowsOf("TTAA 2823/ 54511 99015 02257 00000 00156 ///// 88501 801// 31524 77999");
    EXPECT_EQ(rows, "-:1,,TEMP,A,54511,28,23,,,,,,lapse-rate,surface,1015,2.2,-4.8,0,0,,,,,\n"
                    "-:1,,TEMP,A,54511,28,23,,,,,,,mandatory,1000,,,,,156,,,,\n"
                    "-:1,,TEMP,A,54511,28,23,,,,,,tropopause lapse-rate,tropopause,501,-80.1,,24,315,,,,,\n");
}

TEST(FeedTable, OnlyDecodedPartsHaveRows) {
    EXPECT_EQ(rowsOf("TTAA 72576 NIL= TTAA 63001 72214 51515= TTAA 63001 72214 1 2 3="), "");
}

TEST(FeedTable, SourceIsNameAndLine) {
    Part part = partsOf("\n\nTTAA 72576 NIL").front();
    EXPECT_EQ(corvane::table::sourceOf(part), "-:3");
    part.source = "a, \"b\".txt";
    std::string out;
    corvane::table::appendPartsRow(out, part, corvane::read(part));
    EXPECT_EQ(out, "\"a, \"\"b\"\".txt:3\",,TEMP,A,72576,,,NIL,0,,\n");
}

// Words after 61616 on two lines; on one line they would end the part.
TEST(FeedTable, PrintedGroupsAreNotAHeading) {
    const std::string beginning = "TTAA 2823/ 54511 99015 02257 00000 88999 77999 61616 ";
    for (const std::string time : {"130000", "130000Z"}) {
        const corvane::Reading reading = feed_test::readOnly(beginning + "USUS50 KWBC\n" + time);
        std::string printed;
        corvane::table::appendGroups(printed, reading);
        EXPECT_EQ(printed, beginning + "USUS50\nKWBC " + time + "=\n");
        EXPECT_EQ(feed_test::givenOf(printed), feed_test::givenOf(reading));
    }
    for (const std::string words : {"USUS50 KWBC 13000", "USUS5 KWBC 130000", "USUS50 KWB 130000"}) {
        std::string printed;
        corvane::table::appendGroups(printed, feed_test::readOnly(beginning + words));
        EXPECT_EQ(printed, beginning + words + "=\n");
    }
}

TEST(PartsTable, EveryStatusHasARow) {
    EXPECT_EQ(partsRowOf(BEIJING), "-:1,,TEMP,A,54511,28,23,decoded,13,,\n");
    EXPECT_EQ(partsRowOf(with(BEIJING, "28231", "28232")), "-:1,,TEMP,A,54511,28,23,decoded,13,id,\n");
    EXPECT_EQ(partsRowOf("USUS50 KWBC 130000\nTTAA 72576 NIL"), "-:2,USUS50 KWBC 130000,TEMP,A,72576,,,NIL,0,,\n");
    EXPECT_EQ(partsRowOf("TTAA 63001 72214 51515 10164"), "-:1,,TEMP,A,72214,13,0,empty,0,,\n");
    EXPECT_EQ(partsRowOf("TTAA 63001 72214 99015 22858"),
              "-:1,,TEMP,A,72214,13,0,refused,0,,At least 1 code groups are required. Error detected at ...\n");
}

TEST(PartsTable, AMessageIsQuoted) {
    EXPECT_EQ(partsRowOf("TTAA 63001 72214 99015,\"22858 12345"),
              "-:1,,TEMP,A,72214,13,0,refused,0,,\"The group 99015,\"\"22858 is neither five digits nor solidi in "
              "their place. "
              "Error detected at 99015,\"\"22858 12345 ...\"\n");
}

TEST(PartsTable, AnExcessivePartHasItsStationAndReason) {
    std::string text = "TTAA 63001 72214";
    for (int i = 0; i < 2000; ++i) {
        text += " 12345";
    }
    EXPECT_EQ(partsRowOf(text), "-:1,,TEMP,A,72214,13,0,refused,0,,The part has more than 2000 groups.\n");
}

}  // namespace
