// Splitting the text of a report into code groups.
#include "support/GlobalLocale.h"
#include "support/OpenDecoder.h"

#include <deque>
#include <gtest/gtest.h>
#include <locale>
#include <string>
#include <vector>

namespace {

using Groups = std::deque<std::string>;

// Character classes in which the solidus is white space and the tab is not.
class OddBlanks : public std::ctype<char> {
public:
    OddBlanks() : std::ctype<char>(odd().data()) {}

private:
    static const std::vector<mask>& odd() {
        static const std::vector<mask> table = [] {
            std::vector<mask> masks(classic_table(), classic_table() + table_size);
            masks[static_cast<std::size_t>('/')] = space;
            masks[static_cast<std::size_t>('\t')] = cntrl;
            return masks;
        }();
        return table;
    }
};

}  // namespace

TEST(Tokenizer, EmptyTextHasNoGroups) {
    EXPECT_EQ(OpenDecoder::tokenize(""), Groups());
}

TEST(Tokenizer, WhiteSpaceAloneHasNoGroups) {
    EXPECT_EQ(OpenDecoder::tokenize(" "), Groups());
    EXPECT_EQ(OpenDecoder::tokenize(" \t\n\r\v\f \n"), Groups());
}

TEST(Tokenizer, GroupsKeepTheOrderOfTheText) {
    EXPECT_EQ(OpenDecoder::tokenize("TTAA 56121 72403 99012"), (Groups{"TTAA", "56121", "72403", "99012"}));
}

TEST(Tokenizer, EveryKindOfWhiteSpaceSeparatesGroups) {
    EXPECT_EQ(OpenDecoder::tokenize("A B\tC\nD\rE\vF\fG"), (Groups{"A", "B", "C", "D", "E", "F", "G"}));
}

TEST(Tokenizer, RunsOfWhiteSpaceCountAsOne) {
    EXPECT_EQ(OpenDecoder::tokenize("  \r\n TTAA \t \r\n\r\n  12345\n\n"), (Groups{"TTAA", "12345"}));
}

TEST(Tokenizer, OtherControlAndHighCharactersStayInTheGroup) {
    EXPECT_EQ(OpenDecoder::tokenize("TTAA\x01"
                                    "12345"),
              (Groups{"TTAA\x01"
                      "12345"}));
    EXPECT_EQ(OpenDecoder::tokenize("TTAA\xA0"
                                    "12345\x85"
                                    "X"),
              (Groups{"TTAA\xA0"
                      "12345\x85"
                      "X"}));
    const std::string withNul("TT\0AA 1", 7);
    EXPECT_EQ(OpenDecoder::tokenize(withNul), (Groups{std::string("TT\0AA", 5), "1"}));
}

TEST(Tokenizer, TerminatorAtTheEndOfTheLastGroupIsRemoved) {
    EXPECT_EQ(OpenDecoder::tokenize("TTAA 12345="), (Groups{"TTAA", "12345"}));
}

TEST(Tokenizer, TerminatorOnItsOwnIsDropped) {
    EXPECT_EQ(OpenDecoder::tokenize("TTAA 12345 ="), (Groups{"TTAA", "12345"}));
}

TEST(Tokenizer, EveryLoneTerminatorIsDropped) {
    EXPECT_EQ(OpenDecoder::tokenize("= TTAA = = 12345 = TTBB ="), (Groups{"TTAA", "12345", "TTBB"}));
    EXPECT_EQ(OpenDecoder::tokenize("="), Groups());
    EXPECT_EQ(OpenDecoder::tokenize("= = ="), Groups());
}

TEST(Tokenizer, OnlyTheFirstEqualsSignOfAGroupIsRemoved) {
    EXPECT_EQ(OpenDecoder::tokenize("12345=="), Groups{"12345="});
    EXPECT_EQ(OpenDecoder::tokenize("1=2=3=4"), Groups{"12=3=4"});
}

TEST(Tokenizer, TwoEqualsSignsLeaveAGroupOfOne) {
    EXPECT_EQ(OpenDecoder::tokenize("TTAA =="), (Groups{"TTAA", "="}));
    EXPECT_EQ(OpenDecoder::tokenize("== = == ==="), (Groups{"=", "=", "=="}));
}

TEST(Tokenizer, EqualsSignIsRemovedAnywhereInAGroup) {
    EXPECT_EQ(OpenDecoder::tokenize("=12345 123=45 12345="), (Groups{"12345", "12345", "12345"}));
}

TEST(Tokenizer, EveryGroupLosesItsOwnFirstEqualsSign) {
    EXPECT_EQ(OpenDecoder::tokenize("T=TAA 5612=1 72403=="), (Groups{"TTAA", "56121", "72403="}));
}

TEST(Tokenizer, LettersKeepTheirCaseAndBulletinMarkersStay) {
    EXPECT_EQ(OpenDecoder::tokenize("zczc 123 ttaa TtBb NNNN"), (Groups{"zczc", "123", "ttaa", "TtBb", "NNNN"}));
}

TEST(Tokenizer, GroupsOfAnyLengthAreKeptAsTheyAre) {
    const std::string longGroup(100000, '9');
    EXPECT_EQ(OpenDecoder::tokenize("990 12 " + longGroup + " 1234567890 /////"),
              (Groups{"990", "12", longGroup, "1234567890", "/////"}));
}

TEST(Tokenizer, OrdinaryWhiteSpaceHoldsUnderAnyGlobalLocale) {
    const GlobalLocale odd(new OddBlanks);
    EXPECT_EQ(OpenDecoder::tokenize("TTAA\t5612/ 12/45"), (Groups{"TTAA", "5612/", "12/45"}));
}
