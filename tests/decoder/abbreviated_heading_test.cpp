// The abbreviated heading T1T2A1A2ii CCCC YYGGgg with its correction indicators, before the first part.
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>
#include <string>

TEST(AbbreviatedHeading, HeadingShapesAndWhatTheyLeave) {
    struct Row {
        const char* groups;
        const char* heading;
        const char* rest;
    };
    const Row rows[] = {
        // the plain heading
        {"UKAA01 ABCD 011200 TTAA 56121", "UKAA01 ABCD 011200", "TTAA 56121"},
        {"UKAA01 ABCD 011200 TTAA", "UKAA01 ABCD 011200", "TTAA"},
        {"UKAA01 ABCD 011200", "UKAA01 ABCD 011200", ""},
        // any first group of six characters makes a heading
        {"ABCDEF ABCD 011200 TTAA 56121", "ABCDEF ABCD 011200", "TTAA 56121"},
        {"////// 1 X TTAA", "////// 1 X", "TTAA"},
        {"123456 TTAA 5612100000 72403", "123456 TTAA 5612100000", "72403"},
        // fewer than three groups
        {"", "", ""},
        {"UKAA01", "", "UKAA01"},
        {"UKAA01 ABCD", "", "UKAA01 ABCD"},
        // a first group of another length
        {"TTAA 56121 72403 99012", "", "TTAA 56121 72403 99012"},
        {"UKAA1 ABCD 011200 TTAA", "", "UKAA1 ABCD 011200 TTAA"},
        {"UKAA001 ABCD 011200 TTAA", "", "UKAA001 ABCD 011200 TTAA"},
        {"UKAA1 ABCD 011200", "", "UKAA1 ABCD 011200"},
        // CCA and CCB: the space after them belongs to the heading
        {"UKAA01 ABCD 011200 CCA TTAA 56121", "UKAA01 ABCD 011200 CCA ", "TTAA 56121"},
        {"UKAA01 ABCD 011200 CCB TTAA 56121", "UKAA01 ABCD 011200 CCB ", "TTAA 56121"},
        {"UKAA01 ABCD 011200 CCB TTAA", "UKAA01 ABCD 011200 CCB ", "TTAA"},
        // only one of the two is taken
        {"UKAA01 ABCD 011200 CCA CCB TTAA", "UKAA01 ABCD 011200 CCA ", "CCB TTAA"},
        {"UKAA01 ABCD 011200 CCA CCA TTAA", "UKAA01 ABCD 011200 CCA ", "CCA TTAA"},
        // COR takes the group after it, whatever that is
        {"UKAA01 ABCD 011200 COR 5 TTAA 56121", "UKAA01 ABCD 011200 COR 5", "TTAA 56121"},
        {"UKAA01 ABCD 011200 COR TTAA 56121 72403", "UKAA01 ABCD 011200 COR TTAA", "56121 72403"},
        {"UKAA01 ABCD 011200 COR TTAA", "UKAA01 ABCD 011200 COR TTAA", ""},
        {"UKAA01 ABCD 011200 COR COR TTAA 56121", "UKAA01 ABCD 011200 COR COR", "TTAA 56121"},
        {"UKAA01 ABCD 011200 COR CCA TTAA 56121", "UKAA01 ABCD 011200 COR CCA", "TTAA 56121"},
        // COR and then CCA or CCB
        {"UKAA01 ABCD 011200 COR X CCB TTAA 56121", "UKAA01 ABCD 011200 COR X CCB ", "TTAA 56121"},
        {"UKAA01 ABCD 011200 COR X CCA TTAA 56121", "UKAA01 ABCD 011200 COR X CCA ", "TTAA 56121"},
        {"UKAA01 ABCD 011200 COR X CCB", "UKAA01 ABCD 011200 COR X CCB ", ""},
        {"UKAA01 ABCD 011200 COR X COR Y TTAA", "UKAA01 ABCD 011200 COR X", "COR Y TTAA"},
        // a COR after a CCA is not taken
        {"UKAA01 ABCD 011200 CCA COR X TTAA", "UKAA01 ABCD 011200 CCA ", "COR X TTAA"},
        // an indicator that is the last group of the text is not taken
        {"UKAA01 ABCD 011200 COR", "UKAA01 ABCD 011200", "COR"},
        {"UKAA01 ABCD 011200 CCA", "UKAA01 ABCD 011200", "CCA"},
        {"UKAA01 ABCD 011200 CCB", "UKAA01 ABCD 011200", "CCB"},
        // no other indicator is known, and case matters
        {"UKAA01 ABCD 011200 CCC TTAA", "UKAA01 ABCD 011200", "CCC TTAA"},
        {"UKAA01 ABCD 011200 RRA TTAA", "UKAA01 ABCD 011200", "RRA TTAA"},
        {"UKAA01 ABCD 011200 AAA TTAA", "UKAA01 ABCD 011200", "AAA TTAA"},
        {"UKAA01 ABCD 011200 cor 5 TTAA", "UKAA01 ABCD 011200", "cor 5 TTAA"},
        {"UKAA01 ABCD 011200 cca TTAA", "UKAA01 ABCD 011200", "cca TTAA"},
        {"UKAA01 ABCD 011200 CORR 5 TTAA", "UKAA01 ABCD 011200", "CORR 5 TTAA"},
        {"UKAA01 ABCD 011200 CCAB TTAA", "UKAA01 ABCD 011200", "CCAB TTAA"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.groups);
        OpenDecoder decoder = OpenDecoder::withGroups(row.groups);
        EXPECT_NO_THROW(decoder.decodeAbrHdr());
        EXPECT_EQ(decoder.abrHeader(), row.heading);
        EXPECT_EQ(decoder._abrHeader, row.heading);
        EXPECT_EQ(decoder.rest(), row.rest);
    }
}

TEST(AbbreviatedHeading, NewHeadingReplacesTheEarlierOne) {
    OpenDecoder decoder = OpenDecoder::withGroups("UKAA01 ABCD 011200 TTAA");
    decoder._abrHeader = "USUS01 KWBC 010000";
    decoder.decodeAbrHdr();
    EXPECT_EQ(decoder.abrHeader(), "UKAA01 ABCD 011200");
}

TEST(AbbreviatedHeading, TextWithoutHeadingKeepsTheEarlierOne) {
    OpenDecoder decoder = OpenDecoder::withGroups("TTAA 56121 72403");
    decoder._abrHeader = "USUS01 KWBC 010000";
    decoder.decodeAbrHdr();
    EXPECT_EQ(decoder.abrHeader(), "USUS01 KWBC 010000");
}

TEST(AbbreviatedHeading, ListOfAllGroupsKeepsTheHeading) {
    const OpenDecoder decoder("UKAA01 ABCD 011200 CCA TTBB 56121 72403");
    EXPECT_EQ(decoder.tokens(),
              (std::vector<std::string>{"UKAA01", "ABCD", "011200", "CCA", "TTBB", "56121", "72403"}));
    EXPECT_EQ(decoder.abrHeader(), "UKAA01 ABCD 011200 CCA ");
}

TEST(AbbreviatedHeading, ReportAfterTheHeadingIsDecoded) {
    const OpenDecoder decoder("UKAA01 ABCD 011200\nTTAA 56121 72403 88999 77999=");
    EXPECT_EQ(decoder.abrHeader(), "UKAA01 ABCD 011200");
    EXPECT_EQ(decoder.bsn(), "72403");
}

TEST(AbbreviatedHeading, ReportWithoutHeadingHasNone) {
    EXPECT_EQ(OpenDecoder("TTAA 56121 72403 88999 77999").abrHeader(), "");
}

TEST(AbbreviatedHeading, HeadingWithoutAReportHasNoLevels) {
    const OpenDecoder decoder("UKAA01 ABCD 011200");
    EXPECT_EQ(decoder.abrHeader(), "UKAA01 ABCD 011200");
    EXPECT_TRUE(decoder.allLevels().empty());
    EXPECT_EQ(decoder.wmoType(), "UNKNOWN");
}

TEST(AbbreviatedHeading, HeadingInTheMiddleOfATextIsNotTaken) {
    const OpenDecoder decoder("TTAA 56121 72403 88999 77999 UKAA01 ABCD 011200 TTBB 56120 72404");
    EXPECT_EQ(decoder.abrHeader(), "");
    EXPECT_EQ(decoder.bsn(), "72404");
}

TEST(AbbreviatedHeading, IdentifierSwallowedByCorFailsTheNextGroup) {
    EXPECT_EQ(faultOf([] { OpenDecoder("UKAA01 ABCD 011200 COR TTAA 56121 72403 99012 32259 11504 00140 30057"); }),
              "WMO type and part identifier (MMMM) must be 4 characters. "
              "Error detected at 56121 72403 99012 32259 11504 00140 ...");
}

TEST(AbbreviatedHeading, IndicatorAtTheEndOfTheTextFailsAsAnIdentifier) {
    EXPECT_EQ(faultOf([] { OpenDecoder("UKAA01 ABCD 011200 COR"); }),
              "WMO type and part identifier (MMMM) must be 4 characters. Error detected at COR ...");
    EXPECT_EQ(faultOf([] { OpenDecoder("UKAA01 ABCD 011200 CCC TTBB 56121 72403"); }),
              "WMO type and part identifier (MMMM) must be 4 characters. Error detected at CCC TTBB 56121 72403 ...");
}

TEST(AbbreviatedHeading, TwoGroupsWithAHeadingsFirstGroupFailAsAnIdentifier) {
    EXPECT_EQ(faultOf([] { OpenDecoder("UKAA01 ABCD"); }),
              "WMO type and part identifier (MMMM) must be 4 characters. Error detected at UKAA01 ABCD ...");
}
