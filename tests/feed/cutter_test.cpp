// Streams of bytes cut into parts.
#include "FeedParts.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using corvane::Part;
using feed_test::cut;
using feed_test::Lines;
using feed_test::partsOf;
using feed_test::textOf;
using namespace std::string_literals;

const std::string HEADING = "USUS50 KWBC 130000 RRA\n";

std::string headingOf(const std::string& text) {
    const std::vector<Part> parts = partsOf(text);
    return parts.empty() ? "no part" : parts.back().heading;
}

// ---- the end of a part ----

TEST(Cutter, NothingHoldsNoPart) {
    EXPECT_EQ(cut(""), Lines());
    EXPECT_EQ(cut(" \r\n\n  "), Lines());
}

TEST(Cutter, APartEndsAtTheEndOfTheInput) {
    EXPECT_EQ(cut("TTAA 63001 72572 99870"), Lines{"TTAA 63001 72572 99870"});
}

TEST(Cutter, AnEqualsSignEndsAPartGluedAloneOrDoubled) {
    EXPECT_EQ(cut("TTAA 72576 NIL=TTAA 72582 NIL =\nTTAA 72583 NIL==\n= ="),
              (Lines{"TTAA 72576 NIL", "TTAA 72582 NIL", "TTAA 72583 NIL"}));
}

TEST(Cutter, ASemicolonNNNNTwoDollarsAndZCZCEndAPart) {
    EXPECT_EQ(cut("TTAA 1;TTAA 2\nNNNN\n3 TTAA 4 $$ 5 TTAA 6 ZCZC 7"), (Lines{"TTAA 1", "TTAA 2", "TTAA 4", "TTAA 6"}));
    EXPECT_EQ(cut("TTAA 1 NNNN1 $$$"), Lines{"TTAA 1 NNNN1 $$$"});
}

TEST(Cutter, TheNextMMMMEndsAPart) {
    EXPECT_EQ(cut("TTAA 63001 72572 TTBB 63008 72572 UUCC A XXDD B IIAA C"),
              (Lines{"TTAA 63001 72572", "TTBB 63008 72572", "UUCC A", "XXDD B", "IIAA C"}));
}

TEST(Cutter, EveryControlCharacterOfTheEnvelopeEndsAPartAndForgetsTheHeading) {
    for (const char envelope : "\1\2\3\4\x1a"s) {
        if (envelope == '\0') {
            continue;
        }
        const std::string text = HEADING + "TTAA 72576 NIL" + envelope + "72572 TTAA 72582 NIL";
        EXPECT_EQ(cut(text), (Lines{"TTAA 72576 NIL", "TTAA 72582 NIL"})) << static_cast<int>(envelope);
        EXPECT_EQ(headingOf(text), "") << static_cast<int>(envelope);
    }
}

TEST(Cutter, SOHAndETXWithoutSpacesAreSeparateWords) {
    const std::vector<Part> parts = partsOf("\1"s + "221\r\r\nUSUS50 KWBC 130000\r\r\nTTAA 72576 NIL\3\1"s +
                                            "222\r\r\nUSUS51 KWBC 130000\r\r\nTTAA 72582 NIL=\r\r\n\3"s);
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(textOf(parts[0]), "TTAA 72576 NIL");
    EXPECT_EQ(parts[0].heading, "USUS50 KWBC 130000");
    EXPECT_EQ(parts[0].line, 3U);
    EXPECT_EQ(textOf(parts[1]), "TTAA 72582 NIL");
    EXPECT_EQ(parts[1].heading, "USUS51 KWBC 130000");
    EXPECT_EQ(parts[1].line, 5U);
}

// ---- MMMM ----

TEST(Cutter, EveryFormAndPartIsAnMMMM) {
    for (const std::string form : {"TT", "UU", "XX", "II"}) {
        for (const std::string part : {"AA", "BB", "CC", "DD"}) {
            EXPECT_EQ(cut(form + part + " 1"), Lines{form + part + " 1"});
        }
    }
    for (const std::string word : {"TTEE", "TTAB", "TUAA", "VVAA", "TTA", "TTAAA", "ttaa", "TTAa", "TTaa"}) {
        EXPECT_EQ(cut(word + " 63001 72572"), Lines()) << word;
    }
}

TEST(Cutter, AnMMMMAsTheLastWordIsAPartWithoutGroups) {
    EXPECT_EQ(cut("TTAA 72576 NIL= TTBB"), (Lines{"TTAA 72576 NIL", "TTBB"}));
}

TEST(Cutter, AnMMMMGluedToAGroupIsTwoWords) {
    EXPECT_EQ(cut("TTAA56001 72572 82302TTBB 56008 72572"), (Lines{"TTAA 56001 72572 82302", "TTBB 56008 72572"}));
    EXPECT_EQ(cut("TTAA 1 //TTBB 2 TTCC// 3"), (Lines{"TTAA 1 //", "TTBB 2", "TTCC // 3"}));
    EXPECT_EQ(cut("TTAA 1 82302PPBB 2"), Lines{"TTAA 1 82302"});
    EXPECT_EQ(cut("TTAA 1 PPBB56001 2"), Lines{"TTAA 1"});
    EXPECT_EQ(cut("TTAA 1 TTBBX 2 XTTBB 3 TTBB1X 4 1TTBB2 5"), Lines{"TTAA 1 TTBBX 2 XTTBB 3 TTBB1X 4 1TTBB2 5"});
}

TEST(Cutter, AGluedMMMMKeepsItsPlaceInTheInput) {
    const std::vector<Part> parts = partsOf("\nTTAA56001 72572 82302TTBB 56008=");
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].offset, 1U);
    EXPECT_EQ(parts[0].line, 2U);
    ASSERT_EQ(parts[0].groups.size(), 3U);
    EXPECT_EQ(parts[0].groups[0].offset, 5U);
    EXPECT_EQ(parts[0].groups[0].end, 10U);
    EXPECT_EQ(parts[0].groups[2].offset, 17U);
    EXPECT_EQ(parts[0].groups[2].end, 22U);
    EXPECT_EQ(parts[1].offset, 22U);
}

TEST(Cutter, AnAirportWithATimeIsNotAnMMMM) {
    EXPECT_EQ(cut("TTAA 72576 UUDD 061200Z 12345="), Lines{"TTAA 72576 UUDD 061200Z 12345"});
    EXPECT_EQ(cut("UUDD 061200Z 12345="), Lines());
    EXPECT_EQ(cut("TTAA 1 UUDD 061200 2"), (Lines{"TTAA 1", "UUDD 061200 2"}));
    EXPECT_EQ(cut("TTAA 1 UUDD 06120Z 2"), (Lines{"TTAA 1", "UUDD 06120Z 2"}));
}

TEST(Cutter, APilotPartEndsAPartAndOpensNone) {
    for (const std::string form : {"PP", "QQ", "EE"}) {
        for (const std::string part : {"AA", "BB", "CC", "DD"}) {
            EXPECT_EQ(cut("TTAA 1 " + form + part + " 12173 54857 55385= TTBB 2"), (Lines{"TTAA 1", "TTBB 2"}));
        }
    }
}

TEST(Cutter, GroupsOutsideAPartAreDropped) {
    EXPECT_EQ(cut("MANANN\n70398 TTAA 60121 70398="), Lines{"TTAA 60121 70398"});
    EXPECT_EQ(cut("TTAA 1= 51515 10164 METAR KJFK 1"), Lines{"TTAA 1"});
}

// ---- the station number before MMMM ----

TEST(Cutter, AStationNumberBeforeMMMMIsTakenFromThePartBefore) {
    EXPECT_EQ(cut("TTAA 56001 72233 99012 72233 TTBB 56008 72233"),
              (Lines{"TTAA 56001 72233 99012", "TTBB 56008 72233"}));
    EXPECT_EQ(cut("TTAA 56001 72233 99012 72233 TTBB 72233 NIL"), (Lines{"TTAA 56001 72233 99012", "TTBB 72233 NIL"}));
    EXPECT_EQ(cut("TTAA 56001 72233 99012 72233 PPBB 56008 72233"), Lines{"TTAA 56001 72233 99012"});
}

TEST(Cutter, AGroupThatIsNotTheStationOfTheNextPartStays) {
    EXPECT_EQ(cut("TTAA 56001 72233 72233 TTBB 56008 72234"), (Lines{"TTAA 56001 72233 72233", "TTBB 56008 72234"}));
    EXPECT_EQ(cut("TTAA 56001 72233 7223 TTBB 56008 7223"), (Lines{"TTAA 56001 72233 7223", "TTBB 56008 7223"}));
    EXPECT_EQ(cut("TTAA 56001 72233 12345 TTBB 1 2 12345"), (Lines{"TTAA 56001 72233 12345", "TTBB 1 2 12345"}));
    EXPECT_EQ(cut("TTAA 56001 72233 12345 TTBB"), (Lines{"TTAA 56001 72233 12345", "TTBB"}));
}

TEST(Cutter, APartOfTwoGroupsKeepsItsStation) {
    EXPECT_EQ(cut("TTAA 56001 72233 TTBB 56008 72233"), (Lines{"TTAA 56001 72233", "TTBB 56008 72233"}));
}

TEST(Cutter, AStationNumberInPunctuationIsTheSameNumber) {
    const std::vector<Part> parts = partsOf("TTAA 56001 72233 99012 (72233) TTBB 56008 72233.");
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(textOf(parts[0]), "TTAA 56001 72233 99012");
    EXPECT_TRUE(parts[0].marks.empty());
    EXPECT_EQ(textOf(parts[1]), "TTBB 56008 72233");
}

TEST(Cutter, StationAndMMMMBeforeARegionalGroupAreJustCut) {
    EXPECT_EQ(cut("72233 TTDD 5600/ 72233 51515 10159="), Lines{"TTDD 5600/ 72233 51515 10159"});
}

// ---- headings ----

TEST(Cutter, AHeadingOpensABulletin) {
    EXPECT_EQ(headingOf("USUS50 KWBC 130000\nTTAA 1"), "USUS50 KWBC 130000");
    EXPECT_EQ(headingOf("USUS50 KWBC 130000Z\nTTAA 1"), "USUS50 KWBC 130000Z");
    EXPECT_EQ(headingOf("usus50 kwbc 130000\nTTAA 1"), "usus50 kwbc 130000");
    EXPECT_EQ(headingOf("USDL02 EDZW 151800 TTAA 15171 10393"), "USDL02 EDZW 151800");
}

TEST(Cutter, AHeadingHasAllItsIndicators) {
    EXPECT_EQ(headingOf(HEADING + "TTAA 1"), "USUS50 KWBC 130000 RRA");
    EXPECT_EQ(headingOf("USUS50 KWBC 130000 RRB CCA\nTTAA 1"), "USUS50 KWBC 130000 RRB CCA");
    for (const std::string indicator : {"RRX", "CCB", "AAC", "PAB", "COR", "AMD", "RTD"}) {
        EXPECT_EQ(headingOf("USUS50 KWBC 130000 " + indicator + "\nTTAA 1"), "USUS50 KWBC 130000 " + indicator);
    }
    EXPECT_EQ(headingOf("USUS50 KWBC 130000 XXA\nTTAA 1"), "USUS50 KWBC 130000");
    EXPECT_EQ(headingOf("USUS50 KWBC 130000 P1A\nTTAA 1"), "USUS50 KWBC 130000");
    EXPECT_EQ(headingOf("USUS50 KWBC 130000\nRRA\nTTAA 1"), "USUS50 KWBC 130000");
}

// Every row repeats the heading, and a line may be endless.
TEST(Cutter, AHeadingKeepsEightIndicatorsAtMost) {
    std::string text = "USUS50 KWBC 130000";
    for (int i = 0; i < 8; ++i) {
        text += " RRA";
    }
    EXPECT_EQ(headingOf(text + "\nTTAA 1"), text);
    EXPECT_EQ(headingOf(text + " CCB\nTTAA 1"), text);
    std::string endless = text;
    for (int i = 0; i < 10000; ++i) {
        endless += " RRB";
    }
    EXPECT_EQ(headingOf(endless + " TTAA 1"), text);
    EXPECT_EQ(cut(endless + " TTAA 1"), Lines{"TTAA 1"});
}

TEST(Cutter, OnlyAHeadingReplacesTheHeading) {
    for (const std::string text :
         {"USMH1 KTAM 120600", "USUS50 KWB 130000", "USUS50 KWBC 13000", "USUS50 KWBC 1300000", "USUS5 KWBC 130000",
          "USUS500 KWBC 130000", "US1S50 KWBC 130000", "USUS50 KW1C 130000", "USUS50 KWBC 13000X",
          "USUS50 KWBC 130000ZZ", "USUS50\nKWBC 130000", "USUS50 KWBC\n130000", "USUS50 KWBC"}) {
        EXPECT_EQ(headingOf(HEADING + text + "\nTTAA 1"), "USUS50 KWBC 130000 RRA") << text;
    }
}

TEST(Cutter, AHeadingClosesThePartInMidLine) {
    EXPECT_EQ(cut("TTAA 72576 99012 USUS51 KWBC 130000 TTAA 2"), (Lines{"TTAA 72576 99012", "TTAA 2"}));
    EXPECT_EQ(headingOf("TTAA 72576 99012 USUS51 KWBC 130000 COR TTAA 2"), "USUS51 KWBC 130000 COR");
}

TEST(Cutter, AHeadingMayBeginLikeAnMMMM) {
    EXPECT_EQ(cut("TTAA 72576 NIL\nTTAA01 KNES 130000\n1 2 3\nPPBB10 KWBC 130000\nTTAA 5"),
              (Lines{"TTAA 72576 NIL", "TTAA 5"}));
    EXPECT_EQ(headingOf("TTAA01 KNES 130000\nTTAA 1"), "TTAA01 KNES 130000");
    EXPECT_EQ(cut("TTAA01 KNES 13000"), Lines{"TTAA 01 KNES 13000"});
}

TEST(Cutter, TheHeadingStaysUntilTheNextOne) {
    const std::vector<Part> parts =
        partsOf("TTAA 0=\nUSUS50 KWBC 130000\nTTAA 1=\nTTAA 2=\nNNNN\nTTAA 3=\nUSUS51 KWBC 130000\nTTAA 4=");
    ASSERT_EQ(parts.size(), 5U);
    const Lines headings{"", "USUS50 KWBC 130000", "USUS50 KWBC 130000", "USUS50 KWBC 130000", "USUS51 KWBC 130000"};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        EXPECT_EQ(parts[i].heading, headings[i]) << i;
    }
}

TEST(Cutter, PartsAfterOneHeadingShareABulletin) {
    const std::vector<Part> parts =
        partsOf("TTAA 0=\nUSUS50 KWBC 130000\nTTAA 1=\nTTAA 2=\nUSUS50 KWBC 130000\nTTAA 3=\n\3TTAA 4=");
    ASSERT_EQ(parts.size(), 5U);
    EXPECT_NE(parts[0].bulletin, parts[1].bulletin);
    EXPECT_EQ(parts[1].bulletin, parts[2].bulletin);
    EXPECT_NE(parts[2].bulletin, parts[3].bulletin);
    EXPECT_NE(parts[3].bulletin, parts[4].bulletin);
}

TEST(Cutter, TheSerialNumberOfTheNextBulletinIsNotAGroup) {
    for (const std::string serial : {"2", "22", "222", "2222"}) {
        EXPECT_EQ(cut("TTAA 72576 99012\n" + serial + "\nUSUS51 KWBC 130000"), Lines{"TTAA 72576 99012"}) << serial;
        EXPECT_EQ(cut("TTAA 72576 99012\n" + serial + " USUS51 KWBC 130000"), Lines{"TTAA 72576 99012"}) << serial;
    }
    EXPECT_EQ(cut("TTAA 72576 99012=\n22222\nUSUS51 KWBC 130000\nTTAA 1"), (Lines{"TTAA 72576 99012", "TTAA 1"}));
}

TEST(Cutter, WhatIsNotASerialNumberStaysAGroup) {
    EXPECT_EQ(cut("TTAA 72576 99012\n22222\nUSUS51 KWBC 130000"), Lines{"TTAA 72576 99012 22222"});
    EXPECT_EQ(cut("TTAA 72576 99012\n22/\nUSUS51 KWBC 130000"), Lines{"TTAA 72576 99012 22/"});
    EXPECT_EQ(cut("TTAA 72576 99012 222\nUSUS51 KWBC 130000"), Lines{"TTAA 72576 99012 222"});
    EXPECT_EQ(cut("TTAA 72576 99012\n221 222\nUSUS51 KWBC 130000"), Lines{"TTAA 72576 99012 221 222"});
    EXPECT_EQ(cut("TTAA 72576 99012\n222\nTTBB 1"), (Lines{"TTAA 72576 99012 222", "TTBB 1"}));
    EXPECT_EQ(cut("TTAA\nUSUS51 KWBC 130000"), Lines{"TTAA"});
}

// ---- bytes and lines ----

TEST(Cutter, LinesEndInCRCRLFCRLFCRAndLF) {
    const std::vector<Part> parts = partsOf("1\r\r\n2\r\n3\r4\nTTAA 5=\r\rTTBB 7=\r\r\r\nTTCC 9=\n\nTTDD 11");
    ASSERT_EQ(parts.size(), 4U);
    EXPECT_EQ(parts[0].line, 5U);
    EXPECT_EQ(parts[1].line, 7U);
    EXPECT_EQ(parts[2].line, 9U);
    EXPECT_EQ(parts[3].line, 11U);
}

TEST(Cutter, ALineEndsAtTheEndOfABuffer) {
    std::string text(65535, 'x');
    text += "\r\r\nTTAA 2";
    const std::vector<Part> parts = partsOf(text);
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(parts[0].line, 2U);
    EXPECT_EQ(parts[0].offset, 65538U);
}

TEST(Cutter, AWordMayLieAcrossBuffers) {
    for (std::size_t filler = 65526; filler < 65540; ++filler) {
        EXPECT_EQ(cut(std::string(filler, ' ') + "TTAA 63001 72572="), Lines{"TTAA 63001 72572"}) << filler;
    }
}

TEST(Cutter, NULIsDroppedAndOtherBytesSeparate) {
    EXPECT_EQ(cut("TT\0AA 630\00001 7257\0002\0="s), Lines{"TTAA 63001 72572"});
    EXPECT_EQ(cut("TTAA\t63001\v72572\f99870\x7f"
                  "36683\x80"
                  "08505\xff"
                  "00005\x1b"
                  "/////="),
              Lines{"TTAA 63001 72572 99870 36683 08505 00005 /////"});
}

TEST(Cutter, ByteOrderMarksAndUTF16AreRead) {
    EXPECT_EQ(cut("\xef\xbb\xbfTTAA 63001 72572="), Lines{"TTAA 63001 72572"});
    std::string wide = "\xff\xfe";
    for (const char character : "TTAA 63001 72572="s) {
        wide += character;
        wide += '\0';
    }
    EXPECT_EQ(cut(wide), Lines{"TTAA 63001 72572"});
}

TEST(Cutter, WordsWithoutLetterDigitSolidusOrDollarAreIgnored) {
    EXPECT_EQ(cut("TTAA -- 63001 ... 72572 ?! 99870 $ // "), Lines{"TTAA 63001 72572 99870 $ //"});
}

TEST(Cutter, PunctuationAroundFiveDigitsOrSolidiIsTakenOff) {
    const std::vector<Part> parts =
        partsOf("TTAA 63001 72572 (99870 36683. '/////' \"\\#08505*,:<>()[]! 0000.5 (1234) a12345.");
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(textOf(parts[0]), "TTAA 63001 72572 99870 36683 ///// 08505 0000.5 (1234) a12345.");
    ASSERT_EQ(parts[0].marks.size(), 4U);
    EXPECT_EQ(parts[0].marks[0].name, "marks");
    EXPECT_EQ(parts[0].marks[0].text, "(99870 read as 99870");
    EXPECT_FALSE(parts[0].marks[0].lost);
    EXPECT_EQ(parts[0].marks[3].groups.first, 5U);
    EXPECT_EQ(parts[0].marks[3].groups.count, 1U);
}

TEST(Cutter, LowerCaseIsNotChanged) {
    EXPECT_EQ(cut("ttaa 63001 72572 99870="), Lines());
}

TEST(Cutter, SourceLineAndOffsetNameThePart) {
    std::istringstream input("USUS50 KWBC 130000\n\n TTAA 63001 72572=\nTTBB 63008");
    corvane::BulletinReader reader(input, "some file.txt");
    Part part;
    ASSERT_TRUE(reader.next(part));
    EXPECT_EQ(part.source, "some file.txt");
    EXPECT_EQ(part.line, 3U);
    EXPECT_EQ(part.offset, 21U);
    EXPECT_EQ(part.mmmm, "TTAA");
    EXPECT_EQ(part.groups[0].offset, 26U);
    EXPECT_EQ(part.groups[0].end, 31U);
    EXPECT_EQ(part.form(), Corvane::WMO_TEMP);
    EXPECT_EQ(part.letter(), 'A');
    ASSERT_TRUE(reader.next(part));
    EXPECT_EQ(part.line, 4U);
    EXPECT_EQ(part.letter(), 'B');
    EXPECT_FALSE(reader.next(part));
    EXPECT_EQ(reader.bytes(), input.str().size());
    EXPECT_FALSE(reader.next(part));
}

TEST(Cutter, FormsHaveNames) {
    EXPECT_EQ(corvane::formName(partsOf("TTAA 1").front().form()), "TEMP");
    EXPECT_EQ(corvane::formName(partsOf("UUAA 1").front().form()), "TEMP SHIP");
    EXPECT_EQ(corvane::formName(partsOf("XXAA 1").front().form()), "TEMP DROP");
    EXPECT_EQ(corvane::formName(partsOf("IIAA 1").front().form()), "TEMP MOBIL");
    EXPECT_EQ(corvane::formName(Part().form()), "");
    EXPECT_EQ(Part().letter(), '\0');
}

TEST(Cutter, AReaderCanBeMoved) {
    std::istringstream input("TTAA 1= TTBB 2=");
    corvane::BulletinReader first(input, "-");
    Part part;
    ASSERT_TRUE(first.next(part));
    corvane::BulletinReader second(std::move(first));
    ASSERT_TRUE(second.next(part));
    EXPECT_EQ(textOf(part), "TTBB 2");
    std::istringstream other("TTCC 3=");
    second = corvane::BulletinReader(other, "-");
    ASSERT_TRUE(second.next(part));
    EXPECT_EQ(textOf(part), "TTCC 3");
}

// A part is given when its end has been read, without a byte of what follows.
TEST(Cutter, APartIsGivenAsSoonAsItsEndIsRead) {
    class OneByOne : public std::streambuf {
    public:
        explicit OneByOne(std::string bytes) : text(std::move(bytes)) {}
        std::size_t given = 0;

    protected:
        int_type underflow() override {
            if (given == text.size()) {
                return traits_type::eof();
            }
            setg(text.data() + given, text.data() + given, text.data() + given + 1);
            ++given;
            return traits_type::to_int_type(*gptr());
        }

    private:
        std::string text;
    };
    const std::string first = "TTAA 63001 72572 99870=";
    for (const std::string second : {"\nTTBB 63008 72572", "\3", " TTCC 1="}) {
        OneByOne bytes(first + second);
        std::istream input(&bytes);
        corvane::BulletinReader reader(input, "-");
        Part part;
        ASSERT_TRUE(reader.next(part));
        EXPECT_EQ(textOf(part), "TTAA 63001 72572 99870");
        EXPECT_EQ(bytes.given, first.size());
    }
}

// ---- parts that are too large ----

std::string partOf(std::size_t groups) {
    std::string text = "TTAA";
    for (std::size_t i = 0; i < groups; ++i) {
        text += " 12345";
    }
    return text;
}

TEST(Cutter, APartOfTwoThousandGroupsIsWhole) {
    const std::vector<Part> parts = partsOf(partOf(2000));
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(parts[0].groups.size(), 2000U);
    EXPECT_EQ(parts[0].excess, "");
}

TEST(Cutter, ALongerPartIsNamedAndSkippedUpToItsEnd) {
    for (const std::string end : {"=", " TTBB ", "\3", "\nUSUS50 KWBC 130000\n"}) {
        const std::vector<Part> parts = partsOf(partOf(2001) + end + "TTCC 1 2 3=");
        ASSERT_GE(parts.size(), 2U);
        EXPECT_EQ(parts[0].groups.size(), 2000U);
        EXPECT_EQ(parts[0].excess, "The part has more than 2000 groups.");
        EXPECT_EQ(textOf(parts.back()), "TTCC 1 2 3");
        EXPECT_EQ(parts.back().excess, "");
    }
}

TEST(Cutter, AnExcessiveGroupIsNamedAndNotKept) {
    std::string text = "TTAA 63001 72572 " + std::string(1000, '7');
    EXPECT_EQ(partsOf(text).front().excess, "");
    EXPECT_EQ(partsOf(text).front().groups.back().text.size(), 1000U);
    text += "7 99870 " + std::string(5000000, 'x') + "= TTBB 1";
    const std::vector<Part> parts = partsOf(text);
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].excess, "A group has more than 1000 characters.");
    EXPECT_EQ(textOf(parts[0]), "TTAA 63001 72572");
    EXPECT_EQ(textOf(parts[1]), "TTBB 1");
}

TEST(Cutter, AnExcessiveWordIsNeitherHeadingNorMMMM) {
    const std::string digits(2000, '7');
    EXPECT_EQ(cut("TTAA 1= TTAA" + digits + " 2="), Lines{"TTAA 1"});
    const std::vector<Part> parts = partsOf("TTAA 1 TTBB" + digits + " 2=");
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(parts[0].excess, "A group has more than 1000 characters.");
}

// Stations and serial numbers before the next part are not looked for in a part that is not kept whole.
TEST(Cutter, AnExcessivePartKeepsItsLastGroup) {
    const std::string text = partOf(2000) + " 1 12345 TTBB 56008 12345";
    EXPECT_EQ(partsOf(text).front().groups.size(), 2000U);
    const std::string serial = feed_test::with(partOf(2000), "TTAA 12345", "TTAA") + "\n123 4\nUSUS50 KWBC 130000";
    EXPECT_EQ(partsOf(serial).front().groups.size(), 2000U);
    EXPECT_EQ(partsOf(serial).front().groups.back().text, "123");
}

TEST(Cutter, ManyPartsAndHeadingsOnOneLine) {
    std::string text;
    for (int i = 0; i < 20000; ++i) {
        text += "USUS50 KWBC 130000 TTAA 72576 NIL=";
    }
    EXPECT_EQ(partsOf(text).size(), 20000U);
}

}  // namespace
