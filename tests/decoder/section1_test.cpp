// Section 1: station number, call sign, position, Marsden square and elevation, and which code form reports which.
#include "support/GlobalLocale.h"
#include "support/OpenDecoder.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace {

const double UNTOUCHED = -12345.5;

// A decoder of this code form in part B, where any character may end the date-time group.
OpenDecoder formWith(Corvane::WMO_MESSAGE_TYPE form, const std::string& groups) {
    OpenDecoder decoder = OpenDecoder::inPart(1, groups);
    decoder.wmoMessageType = form;
    return decoder;
}

// A decoder of a dropsonde whose position shows whether it is changed.
OpenDecoder dropWith(const std::string& groups) {
    OpenDecoder decoder = formWith(Corvane::WMO_TEMP_DROP, groups);
    decoder._latitude = UNTOUCHED;
    decoder._longitude = UNTOUCHED;
    return decoder;
}

}  // namespace

// Station number IIiii

TEST(StationNumber, FiveCharactersAreTakenAsTheyAre) {
    for (const std::string group : {"72403", "00000", "ABCDE", "/////", "-1.e5"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::withGroups(group + " 99012");
        decoder.decodeBSN();
        EXPECT_EQ(decoder.bsn(), group);
        EXPECT_EQ(decoder.rest(), "99012");
    }
}

TEST(StationNumber, AnotherLengthIsAFaultWithoutContext) {
    for (const std::string group : {"7", "7240", "724033", "72403724037240372403"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::withGroups(group + " 99012 32259");
        decoder._bsn = "72201";
        EXPECT_EQ(faultOf([&] { decoder.decodeBSN(); }), "Block and station number is incorrect: " + group);
        EXPECT_EQ(decoder.bsn(), "72201");
        EXPECT_EQ(decoder.rest(), group + " 99012 32259");
    }
}

TEST(StationNumber, BrokenNumberIsNotJoined) {
    OpenDecoder decoder = OpenDecoder::withGroups("72 403 99012");
    EXPECT_EQ(faultOf([&] { decoder.decodeBSN(); }), "Block and station number is incorrect: 72");
}

TEST(StationNumber, EmptyQueueIsTheFaultOfAMissingGroup) {
    OpenDecoder decoder = OpenDecoder::withGroups("");
    EXPECT_EQ(faultOf([&] { decoder.decodeBSN(); }), "At least 1 code groups are required. Error detected at ...");
}

// Call sign D....D

TEST(CallSign, AnyGroupIsTakenAsItIs) {
    for (const std::string group : {"WTEC", "A", "SHIP", "56121", "/////", "VERYLONGCALLSIGN123"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::withGroups(group + " 56121");
        decoder.decodeCallSign();
        EXPECT_EQ(decoder.callSign(), group);
        EXPECT_EQ(decoder.rest(), "56121");
    }
}

TEST(CallSign, EmptyQueueIsTheFaultOfAMissingGroup) {
    OpenDecoder decoder = OpenDecoder::withGroups("");
    decoder._callSign = "WTEC";
    EXPECT_EQ(faultOf([&] { decoder.decodeCallSign(); }), "At least 1 code groups are required. Error detected at ...");
    EXPECT_EQ(decoder.callSign(), "WTEC");
}

// Position 99LaLaLa QcLoLoLoLo

TEST(Position, DegreesAndTenthsWithTheSignsOfTheQuadrant) {
    struct Row {
        const char* groups;
        double latitude;
        double longitude;
    };
    const Row rows[] = {
        // the four quadrants, and none
        {"99241 10830", 241 / 10.0, 830 / 10.0},
        {"99241 30830", -(241 / 10.0), 830 / 10.0},
        {"99241 50830", -(241 / 10.0), -(830 / 10.0)},
        {"99241 70830", 241 / 10.0, -(830 / 10.0)},
        {"99241 /0830", 241 / 10.0, 830 / 10.0},
        // the limits and beyond: there is no range check
        {"99900 11800", 90.0, 180.0},
        {"99999 19999", 999 / 10.0, 9999 / 10.0},
        {"99001 10001", 1 / 10.0, 1 / 10.0},
        // solidi and letters: without a leading number it is 0
        {"99/// 1////", 0.0, 0.0},
        {"99ABC 1ABCD", 0.0, 0.0},
        {"9912/ 1123/", 12 / 10.0, 123 / 10.0},
        {"991A2 112B4", 1 / 10.0, 12 / 10.0},
        {"99inf 1nan0", 0.0, 0.0},
        // signs: the quadrant changes the sign of what is there
        {"99+24 1+083", 24 / 10.0, 83 / 10.0},
        {"99-24 1-083", -(24 / 10.0), -(83 / 10.0)},
        {"99-24 5-083", 24 / 10.0, 83 / 10.0},
        {"99+-2 1--83", 0.0, 0.0},
        // points, exponents, hexadecimal, commas
        {"99-5. 1-.50", -(5 / 10.0), -(0.5 / 10.0)},
        {"99.5 1.5", 0.5 / 10.0, 0.5 / 10.0},
        {"991e1 11e02", 10 / 10.0, 100 / 10.0},
        {"991e 1123e", 0.0, 0.0},
        {"990x1 10x1F", 0.0, 0.0},
        {"991,2 11,23", 1 / 10.0, 1 / 10.0},
        // short groups: what is missing is 0
        {"99 1", 0.0, 0.0},
        {"992 18", 2 / 10.0, 8 / 10.0},
        // long groups: what follows is not read
        {"9924199999 1083099999", 241 / 10.0, 830 / 10.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.groups);
        OpenDecoder decoder = dropWith(std::string(row.groups) + " 08112 99012");
        decoder.decodePosition();
        EXPECT_DOUBLE_EQ(decoder.latitude(), row.latitude);
        EXPECT_DOUBLE_EQ(decoder.longitude(), row.longitude);
        EXPECT_EQ(decoder.rest(), "08112 99012");
    }
}

TEST(Position, QuadrantFlipsTheSignOfZeroToo) {
    struct Row {
        const char* quadrant;
        bool south;
        bool west;
    };
    const Row rows[] = {
        {"1", false, false}, {"3", true, false}, {"5", true, true}, {"7", false, true}, {"/", false, false}};
    for (const Row& row : rows) {
        for (const std::string digits : {"0000", "", "////"}) {
            SCOPED_TRACE(row.quadrant + digits);
            OpenDecoder decoder = dropWith("99000 " + (row.quadrant + digits) + " 08112");
            decoder.decodePosition();
            EXPECT_EQ(decoder.latitude(), 0.0);
            EXPECT_EQ(decoder.longitude(), 0.0);
            EXPECT_EQ(std::signbit(decoder.latitude()), row.south);
            EXPECT_EQ(std::signbit(decoder.longitude()), row.west);
        }
    }
}

TEST(Position, GroupThatDoesNotBeginWith99IsAFault) {
    for (const std::string group : {"98241", "89241", "9", "9/241", "XX241", "/////", "19924"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = dropWith(group + " 70830 08112 1 22 333 4444");
        EXPECT_EQ(faultOf([&] { decoder.decodePosition(); }),
                  "The position group must begin with 99. Error detected at " + group + " 70830 08112 1 22 333 ...");
        EXPECT_EQ(decoder.rest(), group + " 70830 08112 1 22 333 4444");
        EXPECT_EQ(decoder.latitude(), UNTOUCHED);
        EXPECT_EQ(decoder.longitude(), UNTOUCHED);
    }
}

TEST(Position, OtherQuadrantsAreAFaultAfterTheLatitude) {
    for (const std::string group : {"00830", "20830", "40830", "60830", "80830", "90830", "A0830", "-0830", "2"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = dropWith("99241 " + group + " 08112 99012");
        EXPECT_EQ(faultOf([&] { decoder.decodePosition(); }),
                  "The quadrant indicator must be 1, 3, 5, 7 or /. Error detected at " + group + " 08112 99012 ...");
        // By then the latitude group is taken, and both numbers are stored before the quadrant is checked.
        EXPECT_EQ(decoder.rest(), group + " 08112 99012");
        EXPECT_DOUBLE_EQ(decoder.latitude(), 24.1);
        EXPECT_FALSE(decoder._longitude == UNTOUCHED);
    }
}

TEST(Position, ThreeGroupsMustRemain) {
    for (const Corvane::WMO_MESSAGE_TYPE form : {Corvane::WMO_TEMP_DROP, Corvane::WMO_TEMP_SHIP}) {
        OpenDecoder decoder = formWith(form, "99241 70830");
        decoder._latitude = UNTOUCHED;
        EXPECT_EQ(faultOf([&] { decoder.decodePosition(); }),
                  "At least 3 code groups are required. Error detected at99241 70830  ...");
        EXPECT_EQ(decoder.rest(), "99241 70830");
        EXPECT_EQ(decoder.latitude(), UNTOUCHED);
        decoder.queue("99241 70830 08112");
        decoder.decodePosition();
        EXPECT_EQ(decoder.rest(), "08112");
    }
}

TEST(Position, FourGroupsMustRemainForAMobileStation) {
    OpenDecoder decoder = formWith(Corvane::WMO_TEMP_MOBIL, "99241 70830 08112");
    decoder._latitude = UNTOUCHED;
    EXPECT_EQ(faultOf([&] { decoder.decodePosition(); }),
              "At least 4 code groups are required. Error detected at99241 70830 08112  ...");
    EXPECT_EQ(decoder.rest(), "99241 70830 08112");
    EXPECT_EQ(decoder.latitude(), UNTOUCHED);
    decoder.queue("99241 70830 08112 01231");
    decoder.decodePosition();
    EXPECT_EQ(decoder.rest(), "08112 01231");
}

TEST(Position, CountIsCheckedBeforeThe99) {
    OpenDecoder decoder = dropWith("98241 70830");
    EXPECT_EQ(faultOf([&] { decoder.decodePosition(); }),
              "At least 3 code groups are required. Error detected at98241 70830  ...");
}

TEST(Position, LaterPartWritesItsOwnPosition) {
    OpenDecoder decoder = dropWith("99241 50830 99101 10200 08112");
    decoder.decodePosition();
    decoder.decodePosition();
    EXPECT_DOUBLE_EQ(decoder.latitude(), 10.1);
    EXPECT_DOUBLE_EQ(decoder.longitude(), 20.0);
}

TEST(Position, DecimalPointHoldsUnderAnyGlobalLocale) {
    const GlobalLocale foreign(new ForeignNumbers);
    OpenDecoder decoder = dropWith("991.5 12.25 08112");
    decoder.decodePosition();
    EXPECT_DOUBLE_EQ(decoder.latitude(), 1.5 / 10.0);
    EXPECT_DOUBLE_EQ(decoder.longitude(), 2.25 / 10.0);
}

// Marsden square MMMULaULo

TEST(MarsdenSquare, GroupIsTakenUnread) {
    for (const std::string group : {"08112", "/////", "X", "88999", "123456789"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = dropWith(group + " 99012");
        decoder.decodeMarsden();
        EXPECT_EQ(decoder.rest(), "99012");
        EXPECT_EQ(decoder.latitude(), UNTOUCHED);
        EXPECT_EQ(decoder.longitude(), UNTOUCHED);
    }
}

// Elevation h0h0h0h0im of a mobile station

TEST(Elevation, FourDigitsInMetresOrFeet) {
    struct Row {
        const char* group;
        double elevation;
    };
    const Row rows[] = {
        // the unit: 1 to 4 metres, above 4 feet
        {"01230", 123.0},
        {"01231", 123.0},
        {"01232", 123.0},
        {"01233", 123.0},
        {"01234", 123.0},
        {"01235", 123 * 0.3048},
        {"01236", 123 * 0.3048},
        {"01237", 123 * 0.3048},
        {"01238", 123 * 0.3048},
        {"01239", 123 * 0.3048},
        {"00005", 0.0},
        {"99991", 9999.0},
        {"99998", 9999 * 0.3048},
        // a unit that is not a digit, or is missing, counts as metres
        {"0123/", 123.0},
        {"0123X", 123.0},
        {"0123+", 123.0},
        {"0123-", 123.0},
        {"0123", 123.0},
        // solidi and letters among the digits
        {"012/5", 12 * 0.3048},
        {"/1235", 0.0},
        {"///15", 0.0},
        {"ABCD5", 0.0},
        // signs, points, exponents
        {"-0125", -12 * 0.3048},
        {"+0121", 12.0},
        {".5005", 0.5 * 0.3048},
        {"12.51", 12.5},
        {"-5.01", -5.0},
        {"1e111", 1e11},
        {"12e/1", 0.0},
        {"0x1F1", 0.0},
        {"infX5", 0.0},
        // in a long group, too, the fifth character is the unit
        {"0123199999", 123.0},
        {"0123511111", 123 * 0.3048},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = formWith(Corvane::WMO_TEMP_MOBIL, std::string(row.group) + " 99012");
        decoder.mobileElevation = UNTOUCHED;
        decoder.decodeMobileElev();
        EXPECT_DOUBLE_EQ(decoder.mobileElevation, row.elevation);
        EXPECT_EQ(decoder.rest(), "99012");
    }
}

TEST(Elevation, FeetAreConverted) {
    OpenDecoder decoder = formWith(Corvane::WMO_TEMP_MOBIL, "01235");
    decoder.decodeMobileElev();
    EXPECT_DOUBLE_EQ(decoder.mobileElevation, 37.4904);
}

TEST(Elevation, MissingElevationStaysInTheQueue) {
    for (const std::string group : {"////5", "/////", "////", "////1234"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = formWith(Corvane::WMO_TEMP_MOBIL, group + " 99012");
        decoder.decodeMobileElev();
        EXPECT_EQ(decoder.mobileElevation, 0.0);
        EXPECT_EQ(decoder.rest(), group + " 99012");
        decoder.mobileElevation = UNTOUCHED;
        decoder.decodeMobileElev();
        EXPECT_EQ(decoder.mobileElevation, UNTOUCHED);
    }
}

TEST(Elevation, GroupShorterThanFourCharactersIsAFault) {
    for (const std::string group : {"0", "01", "012", "/", "///", "X"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = formWith(Corvane::WMO_TEMP_MOBIL, group + " 1 22 333 4444 55555 666666");
        const std::string fault = faultOf([&] { decoder.decodeMobileElev(); });
        EXPECT_EQ(fault, "The elevation group (h0h0h0h0im) must have at least 4 characters. Error detected at " +
                             group + " 1 22 333 4444 55555 ...");
        EXPECT_EQ(decoder.rest(), group + " 1 22 333 4444 55555 666666");
    }
}

TEST(Elevation, WhatIsReadBeforeTheFaultIsKept) {
    OpenDecoder decoder = OpenDecoder::withGroups("123");
    EXPECT_EQ(faultOf([&] { decoder.decodeMobileElev(); }),
              "The elevation group (h0h0h0h0im) must have at least 4 characters. Error detected at 123 ...");
    EXPECT_EQ(decoder.mobileElevation, 123.0);
}

TEST(Elevation, EmptyQueueIsTheFaultOfAMissingGroup) {
    OpenDecoder decoder = formWith(Corvane::WMO_TEMP_MOBIL, "");
    EXPECT_EQ(faultOf([&] { decoder.decodeMobileElev(); }),
              "At least 1 code groups are required. Error detected at ...");
}

// Degrees and minutes as one number

TEST(FractionalDegrees, NumberIsDividedByAHundred) {
    struct Row {
        const char* text;
        double degrees;
    };
    const Row rows[] = {
        {"3233", 3233 / 100.0},
        {"06956", 6956 / 100.0},
        {"0", 0.0},
        {"-150", -150 / 100.0},
        {"+150", 150 / 100.0},
        {"12.5", 12.5 / 100.0},
        {".5", 0.5 / 100.0},
        {"1e2", 100 / 100.0},
        // the leading number, whatever follows
        {"3233N06956W", 3233 / 100.0},
        {"12e", 12 / 100.0},
        {"1,5", 1 / 100.0},
        {" 12", 12 / 100.0},
        {"0x10", 16 / 100.0},
        // no number
        {"", 0.0},
        {"N3233", 0.0},
        {"////", 0.0},
        {"-", 0.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const std::string text = row.text;
        EXPECT_DOUBLE_EQ(OpenDecoder::fractionalDegrees(text), row.degrees);
    }
    const std::string infinite = "inf";
    EXPECT_TRUE(std::isinf(OpenDecoder::fractionalDegrees(infinite)));
}

// The section for each code form

TEST(Section1, LandStationReportsDateAndStationNumber) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "56121 72403 99012 32259");
    decoder.wmoMessageType = Corvane::WMO_TEMP;
    decoder.decodeSection1();
    EXPECT_EQ(decoder.dayOfMonth(), 6);
    EXPECT_EQ(decoder.obsHour(), 12);
    EXPECT_EQ(decoder.lastWindPresA, 100);
    EXPECT_EQ(decoder.bsn(), "72403");
    EXPECT_EQ(decoder.callSign(), "");
    EXPECT_EQ(decoder.latitude(), 0.0);
    EXPECT_EQ(decoder.longitude(), 0.0);
    EXPECT_EQ(decoder.rest(), "99012 32259");
}

TEST(Section1, ShipReportsCallSignDatePositionAndMarsdenSquare) {
    OpenDecoder decoder = formWith(Corvane::WMO_TEMP_SHIP, "WTEC 56127 99241 70830 08112 99012 32259");
    decoder.decodeSection1();
    EXPECT_EQ(decoder.callSign(), "WTEC");
    EXPECT_EQ(decoder.dayOfMonth(), 6);
    EXPECT_EQ(decoder.a4, "7");
    EXPECT_DOUBLE_EQ(decoder.latitude(), 24.1);
    EXPECT_DOUBLE_EQ(decoder.longitude(), -83.0);
    EXPECT_EQ(decoder.bsn(), "");
    EXPECT_EQ(decoder.mobileElevation, 0.0);
    EXPECT_EQ(decoder.rest(), "99012 32259");
}

TEST(Section1, DropsondeReportsDatePositionAndMarsdenSquare) {
    OpenDecoder decoder = formWith(Corvane::WMO_TEMP_DROP, "56127 99241 30830 08112 99012 32259");
    decoder.decodeSection1();
    EXPECT_EQ(decoder.dayOfMonth(), 6);
    EXPECT_DOUBLE_EQ(decoder.latitude(), -24.1);
    EXPECT_DOUBLE_EQ(decoder.longitude(), 83.0);
    EXPECT_EQ(decoder.callSign(), "");
    EXPECT_EQ(decoder.bsn(), "");
    EXPECT_EQ(decoder.rest(), "99012 32259");
}

TEST(Section1, MobileStationReportsItsElevationToo) {
    OpenDecoder decoder = formWith(Corvane::WMO_TEMP_MOBIL, "ABCD1 56127 99241 50830 08112 01235 99012 32259");
    decoder.decodeSection1();
    EXPECT_EQ(decoder.callSign(), "ABCD1");
    EXPECT_EQ(decoder.dayOfMonth(), 6);
    EXPECT_DOUBLE_EQ(decoder.latitude(), -24.1);
    EXPECT_DOUBLE_EQ(decoder.longitude(), -83.0);
    EXPECT_DOUBLE_EQ(decoder.mobileElevation, 123 * 0.3048);
    EXPECT_EQ(decoder.bsn(), "");
    EXPECT_EQ(decoder.rest(), "99012 32259");
}

TEST(Section1, MissingElevationIsLeftToTheNextSection) {
    OpenDecoder decoder = formWith(Corvane::WMO_TEMP_MOBIL, "ABCD1 56127 99241 50830 08112 ////5 99012");
    decoder.decodeSection1();
    EXPECT_EQ(decoder.mobileElevation, 0.0);
    EXPECT_EQ(decoder.rest(), "////5 99012");
}

TEST(Section1, UnknownCodeFormTakesNothing) {
    for (const int form : {0, 5, 99}) {
        OpenDecoder decoder = formWith(static_cast<Corvane::WMO_MESSAGE_TYPE>(form), "56121 72403");
        decoder.decodeSection1();
        EXPECT_EQ(decoder.rest(), "56121 72403");
        EXPECT_EQ(decoder.dayOfMonth(), 0);
        EXPECT_EQ(decoder.obsHour(), -1);
    }
}

TEST(Section1, FaultKeepsWhatWasReadBefore) {
    OpenDecoder decoder = formWith(Corvane::WMO_TEMP_SHIP, "WTEC 56127 98241 70830 08112 99012 32259 11504 00140");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection1(); }),
              "The position group must begin with 99. Error detected at 98241 70830 08112 99012 32259 11504 ...");
    EXPECT_EQ(decoder.callSign(), "WTEC");
    EXPECT_EQ(decoder.dayOfMonth(), 6);
    EXPECT_EQ(decoder.obsHour(), 12);
    EXPECT_EQ(decoder.rest(), "98241 70830 08112 99012 32259 11504 00140");
}

TEST(Section1, ReportThatEndsInsideTheSectionIsAFault) {
    struct Row {
        Corvane::WMO_MESSAGE_TYPE form;
        const char* groups;
        const char* fault;
    };
    const Row rows[] = {
        {Corvane::WMO_TEMP, "", "At least 1 code groups are required. Error detected at ..."},
        {Corvane::WMO_TEMP, "56127", "At least 1 code groups are required. Error detected at ..."},
        {Corvane::WMO_TEMP_SHIP, "", "At least 1 code groups are required. Error detected at ..."},
        {Corvane::WMO_TEMP_SHIP, "WTEC", "At least 1 code groups are required. Error detected at ..."},
        {Corvane::WMO_TEMP_SHIP, "WTEC 56127", "At least 3 code groups are required. Error detected at ..."},
        {Corvane::WMO_TEMP_SHIP, "WTEC 56127 99241 70830",
         "At least 3 code groups are required. Error detected at99241 70830  ..."},
        {Corvane::WMO_TEMP_DROP, "", "At least 1 code groups are required. Error detected at ..."},
        {Corvane::WMO_TEMP_DROP, "56127 99241", "At least 3 code groups are required. Error detected at99241  ..."},
        {Corvane::WMO_TEMP_MOBIL, "ABCD1", "At least 1 code groups are required. Error detected at ..."},
        {Corvane::WMO_TEMP_MOBIL, "ABCD1 56127 99241 70830 08112",
         "At least 4 code groups are required. Error detected at99241 70830 08112  ..."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(static_cast<int>(row.form)) + ": " + row.groups);
        OpenDecoder decoder = formWith(row.form, row.groups);
        EXPECT_EQ(faultOf([&] { decoder.decodeSection1(); }), row.fault);
    }
}

TEST(Section1, StationNumberOfAWholeReport) {
    EXPECT_EQ(Corvane("TTAA 56121 72403 88999").bsn(), "72403");
}
