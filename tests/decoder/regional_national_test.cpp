// Sections 9 and 10: the regional and national groups, skipped up to the next part.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct SkipRow {
    const char* groups;
    const char* rest;
};

const SkipRow SECTION_NINE[] = {
    // nothing there
    {"", ""},
    // the regional openers are skipped like any other group
    {"51515 10164 00075", ""},
    {"59595 10164", ""},
    {"81102 41414 12345 51515 10164", ""},
    // the identifier of the next part ends it and stays
    {"TTBB 0612/ 72201", "TTBB 0612/ 72201"},
    {"51515 10164 TTCC 0612/", "TTCC 0612/"},
    {"51515 XXDD 0612/", "XXDD 0612/"},
    {"ABBB 0612/", "ABBB 0612/"},
    // BB, CC or DD in places 3 and 4 of a longer group end it as well
    {"51515 12BB5 10164", "12BB5 10164"},
    {"12CC", "12CC"},
    {"12DDDDDDDD 1", "12DDDDDDDD 1"},
    // elsewhere in a group they do not
    {"BB BBB 1BB2 123BB 51515", ""},
    {"BBBA CCAC ttbb", ""},
    {"12B 12C 12D", ""},
    // another part A is skipped
    {"TTAA 0612/ 72201 TTBB 0612/", "TTBB 0612/"},
    {"TTAA 0612/ 72201", ""},
    // a section opener other than the national ones is skipped
    {"31313 58708 81102", ""},
    {"XXXX1", ""},
    // groups similar to a national opener are none
    {"60606 6161 616161 65656", "65656"},
    // groups of two characters are long enough
    {"12 // AB", ""},
};

const SkipRow SECTION_TEN[] = {
    // nothing there
    {"", ""},
    // everything is skipped unread, also groups of one character
    {"61616 AF305 0208A", ""},
    {"61616 1 X / 69696 12345", ""},
    {"51515 31313 88999", ""},
    // the identifier of the next part ends it and stays
    {"TTBB 0612/ 72201", "TTBB 0612/ 72201"},
    {"61616 AF305 TTCC 0612/", "TTCC 0612/"},
    {"69696 XXDD", "XXDD"},
    {"12BB 1", "12BB 1"},
    // only a group of four characters is an identifier
    {"12BB5 12CC5 12DD55 XXBB", "XXBB"},
    {"61616 BB 1BB 12BB5 12345", ""},
    {"ttbb bb", ""},
    // another part A is skipped
    {"61616 TTAA 0612/ 72201", ""},
    {"TTAA 0612/ 72201 TTBB 0612/", "TTBB 0612/"},
    // remarks without a known word
    {"62626 NIL", ""},
    {"62626", ""},
    {"62626 62626 NIL XXBB", "XXBB"},
};

}  // namespace

TEST(SectionNine, SkipsGroupsUpToTheNextPartOrANationalOpener) {
    for (const SkipRow& row : SECTION_NINE) {
        SCOPED_TRACE(row.groups);
        OpenDecoder decoder = OpenDecoder::inPart(1, row.groups);
        decoder.decodeSection9();
        EXPECT_EQ(decoder.rest(), row.rest);
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    }
}

TEST(SectionNine, EveryNationalOpenerEndsIt) {
    for (const std::string opener : {"61616", "62626", "63636", "64646", "65656", "66666", "67676", "68686", "69696"}) {
        SCOPED_TRACE(opener);
        OpenDecoder decoder = OpenDecoder::inPart(1, "51515 10164 " + opener + " 12345");
        decoder.decodeSection9();
        EXPECT_EQ(decoder.rest(), opener + " 12345");
    }
}

TEST(SectionNine, RegionalOpenersDoNotEndIt) {
    for (const std::string opener : {"51515", "52525", "53535", "54545", "55555", "56565", "57575", "58585", "59595"}) {
        SCOPED_TRACE(opener);
        OpenDecoder decoder = OpenDecoder::inPart(1, opener + " 12345 61616");
        decoder.decodeSection9();
        EXPECT_EQ(decoder.rest(), "61616");
    }
}

TEST(SectionNine, GroupOfOneCharacterIsOutOfRange) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "51515 10164 X 61616");
    EXPECT_TRUE(findsGroupTooShort([&] { decoder.decodeSection9(); }));
    EXPECT_EQ(decoder.rest(), "X 61616");
}

TEST(SectionNine, VeryLongGroupIsSkipped) {
    OpenDecoder decoder = OpenDecoder::inPart(1, std::string(100000, '5') + " 61616");
    decoder.decodeSection9();
    EXPECT_EQ(decoder.rest(), "61616");
}

TEST(SectionTen, SkipsGroupsUpToTheNextPart) {
    for (const SkipRow& row : SECTION_TEN) {
        SCOPED_TRACE(row.groups);
        OpenDecoder decoder = OpenDecoder::inPart(1, row.groups);
        decoder.decodeSection10();
        EXPECT_EQ(decoder.rest(), row.rest);
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
    }
}

TEST(SectionTen, DecodesTheDropsondeRemarksWhereverTheyAre) {
    for (const std::string before : {"", "61616 AF305 0208A ", "69696 1 "}) {
        SCOPED_TRACE(before);
        OpenDecoder decoder = OpenDecoder::inPart(0, before + "62626 LST WND 013 XXBB 0612/");
        decoder.decodeSection10();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(LAST_WIND, {{HEIGHT, 13}})}));
        EXPECT_EQ(decoder.rest(), "XXBB 0612/");
    }
}

TEST(SectionTen, OtherNationalSectionsHaveNoRemarks) {
    for (const std::string opener : {"61616", "63636", "64646", "65656", "66666", "67676", "68686", "69696"}) {
        SCOPED_TRACE(opener);
        OpenDecoder decoder = OpenDecoder::inPart(0, opener + " LST WND 013");
        decoder.decodeSection10();
        EXPECT_TRUE(sameLevels(decoder.allLevels(), {}));
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(SectionTen, FaultInTheRemarksPassesThrough) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "61616 AF305 62626 LST WIND 013 XXBB");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection10(); }),
              "LST must be followed by WND. Error detected at WIND 013 XXBB ...");
    EXPECT_EQ(decoder.rest(), "WIND 013 XXBB");
}

TEST(RegionalAndNationalSections, NextPartIsLeftByBoth) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "TTBB 0612/ 72201");
    decoder.decodeSection9();
    decoder.decodeSection10();
    EXPECT_EQ(decoder.rest(), "TTBB 0612/ 72201");
}

TEST(RegionalAndNationalSections, LongGroupWithPartLettersEndsTheFirstAndIsSkippedByTheSecond) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "51515 12BB5 1 2 3 TTCC 0612/");
    decoder.decodeSection9();
    EXPECT_EQ(decoder.rest(), "12BB5 1 2 3 TTCC 0612/");
    decoder.decodeSection10();
    EXPECT_EQ(decoder.rest(), "TTCC 0612/");
}

TEST(RegionalAndNationalSections, FirstStopsAtTheNationalOpenerAndTheSecondDecodesTheRemarks) {
    OpenDecoder decoder = OpenDecoder::inPart(0, "61616 AF305 0208A 62626 MBL WND 09523");
    decoder.decodeSection9();
    EXPECT_EQ(decoder.rest(), "61616 AF305 0208A 62626 MBL WND 09523");
    decoder.decodeSection10();
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(MEAN_BL, {{WDIR, 95}, {WSPD, 23}})}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(RegionalAndNationalSections, WholeReportSkipsThemBetweenItsParts) {
    const OpenDecoder decoder("TTAA 0612/ 72201 88250 124// ///// 77999 51515 10164 00075 61616 AF305 1 "
                              "TTBB 0612/ 72201 00014 322// 31313 58708 81102 51515 10164 00075 69696 12BB5 "
                              "TTDD 0612/ 72201 11700 601//");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}}),
                                                 levelOf(SIGNIFICANT, {{PRES, 70}, {TDRY, -60.1}}),
                                                 levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, 12.4}})}));
    EXPECT_EQ(decoder.part, 3);
    EXPECT_EQ(decoder.rest(), "");
}

TEST(RegionalAndNationalSections, SecondPartAIsLostWithoutAFault) {
    const OpenDecoder decoder("TTAA 0612/ 72201 88250 124// ///// 77999 TTAA 0712/ 72202 88150 122// ///// 77999 "
                              "TTBB 0812/ 72203 00014 322//");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}}),
                                                 levelOf(TROPOPAUSE, {{PRES, 250}, {TDRY, 12.4}})}));
    EXPECT_EQ(decoder.bsn(), "72203");
    EXPECT_EQ(decoder.dayOfMonth(), 8);
}

TEST(RegionalAndNationalSections, SecondReportAfterPartDIsLostUpToItsPartB) {
    const OpenDecoder decoder("TTDD 0612/ 72201 11700 601// 31313 58708 81102 TTAA 0712/ 72202 88150 122// ///// "
                              "77999 TTBB 0812/ 72203 00014 322//");
    EXPECT_TRUE(sameLevels(decoder.allLevels(), {levelOf(SIGNIFICANT, {{PRES, 70}, {TDRY, -60.1}}),
                                                 levelOf(SIGNIFICANT, {{PRES, 1014}, {TDRY, 32.2}})}));
    EXPECT_EQ(decoder.bsn(), "72203");
}
