// The date-time group YYGGId of parts A and C, YYGGa4 of part B, YYGG/ of part D: day, knots, hour, last wind level.
#include "support/GlobalLocale.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>
#include <string>

namespace {

const int A = 0;
const int B = 1;
const int C = 2;
const int D = 3;

const std::string WRONG_ID = "The last wind indicator (Id) is incorrectly coded.";
const std::string TOO_SHORT = "The date and time group (YYGGId or YYGGa4) must have at least 4 characters.";
const std::string WRONG_PART_D = "The last character in the third code group of Part D, section 1, should be /.";

// No decoder stores this number: it shows that a field is unchanged.
const int UNTOUCHED = -12345;

OpenDecoder decoderWith(int part, const std::string& groups) {
    OpenDecoder decoder = OpenDecoder::inPart(part, groups);
    decoder._dayOfMonth = UNTOUCHED;
    decoder._obsHour = UNTOUCHED;
    decoder.lastWindPresA = UNTOUCHED;
    decoder.lastWindPresC = UNTOUCHED;
    decoder.a4 = "untouched";
    return decoder;
}

}  // namespace

TEST(DateTime, DayAndKnotsAndHour) {
    struct Row {
        const char* group;
        int day;
        bool knots;
        int hour;
    };
    const Row rows[] = {
        // up to 50 it is the day; above 50 it is the day plus 50, and winds are in knots
        {"07120", 7, false, 12},
        {"00000", 0, false, 0},
        {"31230", 31, false, 23},
        {"49120", 49, false, 12},
        {"50123", 50, false, 12},
        {"51120", 1, true, 12},
        {"56121", 6, true, 12},
        {"81000", 31, true, 0},
        {"99990", 49, true, 99},
        // the hour has no range check
        {"07240", 7, false, 24},
        {"07600", 7, false, 60},
        // solidi and letters: without a leading number it is 0
        {"////0", 0, false, 0},
        {"/7/20", 0, false, 0},
        {"7/1/0", 7, false, 1},
        {"ABCD0", 0, false, 0},
        {"6A9B0", 6, false, 9},
        // signs, points and exponents
        {"+5+80", 5, false, 8},
        {"-5-80", -5, false, -8},
        {"++--0", 0, false, 0},
        {".5.50", 0, false, 0},
        {"5.1.0", 5, false, 1},
        {"1e0x0", 1, false, 0},
        {"1,2,0", 1, false, 2},
        {"+/-/0", 0, false, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.group);
        OpenDecoder decoder = decoderWith(B, std::string(row.group) + " 72403");
        decoder.decodeYYGGId_YYGGa4();
        EXPECT_EQ(decoder.dayOfMonth(), row.day);
        EXPECT_EQ(decoder.windsInKnots(), row.knots);
        EXPECT_EQ(decoder.obsHour(), row.hour);
        EXPECT_EQ(decoder.rest(), "72403");
    }
}

TEST(DateTime, LastWindIndicatorOfEveryCharacter) {
    struct Row {
        char id;
        int partA;
        int partC;
    };
    const int FAULT = -1;
    const Row rows[] = {
        {'/', 9999, 9999}, {'0', 1000, 0},  // part C: every surface has wind
        {'1', 100, 10},    {'2', 200, 20},      {'3', 300, 30}, {'4', 400, FAULT},
        {'5', 500, 50},    {'6', FAULT, FAULT}, {'7', 700, 70}, {'8', 800, FAULT},  // 800 hPa, not 850
        {'9', 925, FAULT},
    };
    for (int code = 1; code < 256; ++code) {
        const char id = static_cast<char>(code);
        if (code == ' ' || (code >= '\t' && code <= '\r')) {
            continue;  // no group holds white space
        }
        int expected[] = {FAULT, FAULT};
        for (const Row& row : rows) {
            if (row.id == id) {
                expected[0] = row.partA;
                expected[1] = row.partC;
            }
        }
        for (const int part : {A, C}) {
            SCOPED_TRACE(std::string(part == A ? "part A, Id " : "part C, Id ") + id);
            const int pressure = expected[part == A ? 0 : 1];
            const std::string group = std::string("5712") + id;
            OpenDecoder decoder = decoderWith(part, group + " 72403");
            const std::string fault = faultOf([&] { decoder.decodeYYGGId_YYGGa4(); });
            if (pressure == FAULT) {
                EXPECT_EQ(fault, WRONG_ID + " Error detected at " + group + " 72403 ...");
                EXPECT_EQ(decoder.rest(), group + " 72403");
                EXPECT_EQ(decoder.lastWindPresA, UNTOUCHED);
                EXPECT_EQ(decoder.lastWindPresC, UNTOUCHED);
            } else {
                EXPECT_EQ(fault, NOTHING_THROWN);
                EXPECT_EQ(decoder.rest(), "72403");
                EXPECT_EQ(decoder.lastWindPresA, part == A ? pressure : UNTOUCHED);
                EXPECT_EQ(decoder.lastWindPresC, part == C ? pressure : UNTOUCHED);
            }
            // Day, knots and hour are stored before the indicator is checked, with and without a fault.
            EXPECT_EQ(decoder._dayOfMonth, 7);
            EXPECT_TRUE(decoder._windsInKnots);
            EXPECT_EQ(decoder._obsHour, 12);
            EXPECT_EQ(decoder.a4, "untouched");
        }
    }
}

TEST(DateTime, IndicatorFaultShowsSixGroups) {
    OpenDecoder decoder = decoderWith(A, "07126 1 22 333 4444 55555 666666 7777777");
    EXPECT_EQ(faultOf([&] { decoder.decodeYYGGId_YYGGa4(); }),
              "The last wind indicator (Id) is incorrectly coded. Error detected at 07126 1 22 333 4444 55555 ...");
    EXPECT_EQ(decoder.rest(), "07126 1 22 333 4444 55555 666666 7777777");
}

TEST(DateTime, GroupOfFourCharactersHasNoIndicator) {
    for (const int part : {A, C}) {
        OpenDecoder decoder = decoderWith(part, "5612 72403");
        EXPECT_EQ(faultOf([&] { decoder.decodeYYGGId_YYGGa4(); }), WRONG_ID + " Error detected at 5612 72403 ...");
        EXPECT_EQ(decoder.rest(), "5612 72403");
        EXPECT_EQ(decoder._dayOfMonth, 6);
        EXPECT_TRUE(decoder._windsInKnots);
        EXPECT_EQ(decoder._obsHour, 12);
    }
}

TEST(DateTime, NulCharacterIsNotAnIndicator) {
    OpenDecoder decoder = decoderWith(A, "");
    const std::string group("5612\0", 5);
    decoder.tokenQueue = {group};
    EXPECT_EQ(faultOf([&] { decoder.decodeYYGGId_YYGGa4(); }), WRONG_ID + " Error detected at " + group + " ...");
}

TEST(DateTime, OnlyTheFifthCharacterCountsInALongGroup) {
    OpenDecoder decoder = decoderWith(A, "561219999999999999999999 72403");
    decoder.decodeYYGGId_YYGGa4();
    EXPECT_EQ(decoder.lastWindPresA, 100);
    EXPECT_EQ(decoder._dayOfMonth, 6);
    EXPECT_EQ(decoder._obsHour, 12);
    EXPECT_EQ(decoder.rest(), "72403");
    decoder = decoderWith(B, "5612XYZ 72403");
    decoder.decodeYYGGId_YYGGa4();
    EXPECT_EQ(decoder.a4, "X");
    decoder = decoderWith(D, "5612/6 72403");
    decoder.decodeYYGGId_YYGGa4();
    EXPECT_EQ(decoder.rest(), "72403");
}

TEST(DateTime, PartBTakesAnyEquipmentType) {
    for (int code = '!'; code <= '~'; ++code) {
        const std::string a4(1, static_cast<char>(code));
        SCOPED_TRACE(a4);
        OpenDecoder decoder = decoderWith(B, "0712" + a4 + " 72403");
        decoder.decodeYYGGId_YYGGa4();
        EXPECT_EQ(decoder.a4, a4);
        EXPECT_EQ(decoder.rest(), "72403");
        EXPECT_EQ(decoder.lastWindPresA, UNTOUCHED);
        EXPECT_EQ(decoder.lastWindPresC, UNTOUCHED);
    }
}

TEST(DateTime, PartBGroupOfFourCharactersHasAnEmptyEquipmentType) {
    OpenDecoder decoder = decoderWith(B, "0712 72403");
    decoder.decodeYYGGId_YYGGa4();
    EXPECT_EQ(decoder.a4, "");
    EXPECT_EQ(decoder.rest(), "72403");
}

TEST(DateTime, PartDAndNoPartRequireASolidus) {
    for (const int part : {D, 4, 17}) {
        SCOPED_TRACE(part);
        OpenDecoder decoder = decoderWith(part, "5612/ 72403");
        decoder.decodeYYGGId_YYGGa4();
        EXPECT_EQ(decoder.rest(), "72403");
        EXPECT_EQ(decoder._dayOfMonth, 6);
        EXPECT_TRUE(decoder._windsInKnots);
        EXPECT_EQ(decoder._obsHour, 12);
        EXPECT_EQ(decoder.lastWindPresA, UNTOUCHED);
        EXPECT_EQ(decoder.lastWindPresC, UNTOUCHED);
        EXPECT_EQ(decoder.a4, "untouched");
    }
}

TEST(DateTime, PartDWithoutASolidusIsAFault) {
    for (const int part : {D, 4}) {
        for (const std::string group : {"5612X", "56120", "56126", "56129", "5612"}) {
            SCOPED_TRACE(group);
            OpenDecoder decoder = decoderWith(part, group + " 72403");
            EXPECT_EQ(faultOf([&] { decoder.decodeYYGGId_YYGGa4(); }),
                      WRONG_PART_D + " Error detected at " + group + " 72403 ...");
            EXPECT_EQ(decoder.rest(), group + " 72403");
            EXPECT_EQ(decoder._dayOfMonth, 6);
            EXPECT_TRUE(decoder._windsInKnots);
            EXPECT_EQ(decoder._obsHour, 12);
        }
    }
}

TEST(DateTime, KnotsOnceSetAreKeptByALaterPart) {
    OpenDecoder decoder = decoderWith(A, "56121 07120 5012/");
    decoder.decodeYYGGId_YYGGa4();
    decoder.part = B;
    decoder.decodeYYGGId_YYGGa4();
    EXPECT_TRUE(decoder.windsInKnots());
    EXPECT_EQ(decoder.dayOfMonth(), 7);
    decoder.part = D;
    decoder.decodeYYGGId_YYGGa4();
    EXPECT_TRUE(decoder.windsInKnots());
    EXPECT_EQ(decoder.dayOfMonth(), 50);
}

TEST(DateTime, PartsAAndCKeepTheirOwnLastWindLevel) {
    OpenDecoder decoder = decoderWith(A, "56125 56127");
    decoder.decodeYYGGId_YYGGa4();
    decoder.part = C;
    decoder.decodeYYGGId_YYGGa4();
    EXPECT_EQ(decoder.lastWindPresA, 500);
    EXPECT_EQ(decoder.lastWindPresC, 70);
}

TEST(DateTime, EmptyQueueIsTheFaultOfAMissingGroup) {
    for (const int part : {A, B, C, D, 4}) {
        OpenDecoder decoder = decoderWith(part, "");
        EXPECT_EQ(faultOf([&] { decoder.decodeYYGGId_YYGGa4(); }),
                  "At least 1 code groups are required. Error detected at ...");
        EXPECT_EQ(decoder._dayOfMonth, UNTOUCHED);
        EXPECT_EQ(decoder._obsHour, UNTOUCHED);
    }
}

TEST(DateTime, GroupShorterThanDayAndHourIsAFault) {
    for (const int part : {A, B, C, D}) {
        for (const std::string group : {"5", "56", "561", "/", "///"}) {
            SCOPED_TRACE(group);
            OpenDecoder decoder = decoderWith(part, group + " 1 22 333 4444 55555 666666");
            EXPECT_EQ(faultOf([&] { decoder.decodeYYGGId_YYGGa4(); }),
                      TOO_SHORT + " Error detected at " + group + " 1 22 333 4444 55555 ...");
            EXPECT_EQ(decoder.rest(), group + " 1 22 333 4444 55555 666666");
        }
    }
}

TEST(DateTime, WhatIsReadBeforeTheFaultIsKept) {
    OpenDecoder dayAlone = decoderWith(A, "5");
    EXPECT_EQ(faultOf([&] { dayAlone.decodeYYGGId_YYGGa4(); }), TOO_SHORT + " Error detected at 5 ...");
    EXPECT_EQ(dayAlone._dayOfMonth, 5);
    EXPECT_EQ(dayAlone._obsHour, UNTOUCHED);

    OpenDecoder dayAndHour = decoderWith(A, "561");
    EXPECT_EQ(faultOf([&] { dayAndHour.decodeYYGGId_YYGGa4(); }), TOO_SHORT + " Error detected at 561 ...");
    EXPECT_EQ(dayAndHour._dayOfMonth, 6);
    EXPECT_TRUE(dayAndHour._windsInKnots);
    EXPECT_EQ(dayAndHour._obsHour, 1);
}

TEST(DateTime, NumbersReadTheSameUnderAnyGlobalLocale) {
    const GlobalLocale foreign(new ForeignNumbers);
    OpenDecoder decoder = decoderWith(A, "11111");
    const std::string fault = faultOf([&] { decoder.decodeYYGGId_YYGGa4(); });
    EXPECT_EQ(fault, NOTHING_THROWN);
    EXPECT_EQ(decoder.dayOfMonth(), 11);
    EXPECT_EQ(decoder.obsHour(), 11);
}
