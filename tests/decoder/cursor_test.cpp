// The cursor over the groups: looking ahead, counting, skipping, joining split groups, and the texts of faults.
#include "support/GlobalLocale.h"
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

TEST(WhereAreWe, FewerGroupsThanAskedForGivesThoseThatRemain) {
    const OpenDecoder decoder = OpenDecoder::withGroups("12125 72201 99012");
    EXPECT_EQ(decoder.whereAreWe(6), "12125 72201 99012 ");
    EXPECT_EQ(decoder.whereAreWe(4), "12125 72201 99012 ");
}

TEST(WhereAreWe, AsManyGroupsAsAskedForEachFollowedByASpace) {
    const OpenDecoder decoder = OpenDecoder::withGroups("1 22 333 4444 55555 666666 7777777");
    EXPECT_EQ(decoder.whereAreWe(1), "1 ");
    EXPECT_EQ(decoder.whereAreWe(6), "1 22 333 4444 55555 666666 ");
    EXPECT_EQ(decoder.whereAreWe(7), "1 22 333 4444 55555 666666 7777777 ");
}

TEST(WhereAreWe, NothingIsAskedForOrNothingIsLeft) {
    EXPECT_EQ(OpenDecoder::withGroups("12125 72201").whereAreWe(0), "");
    EXPECT_EQ(OpenDecoder::withGroups("").whereAreWe(6), "");
    EXPECT_EQ(OpenDecoder::withGroups("").whereAreWe(0), "");
}

TEST(ThrowErrorMsg, MessageIsFollowedByTheGroupsAtTheFront) {
    const OpenDecoder decoder = OpenDecoder::withGroups("12125 72201 99012");
    EXPECT_EQ(faultOf([&] { decoder.throwErrorMsg("The last wind indicator (Id) is incorrectly coded."); }),
              "The last wind indicator (Id) is incorrectly coded. Error detected at 12125 72201 99012 ...");
    EXPECT_EQ(decoder.rest(), "12125 72201 99012");
}

TEST(ThrowErrorMsg, NoMoreThanSixGroupsAreShown) {
    const OpenDecoder decoder = OpenDecoder::withGroups("1 22 333 4444 55555 666666 7777777 88888888");
    EXPECT_EQ(faultOf([&] { decoder.throwErrorMsg("Wrong."); }),
              "Wrong. Error detected at 1 22 333 4444 55555 666666 ...");
}

TEST(ThrowErrorMsg, EmptyQueueLeavesASpaceAndTheDots) {
    const OpenDecoder decoder = OpenDecoder::withGroups("");
    EXPECT_EQ(faultOf([&] { decoder.throwErrorMsg("Wrong."); }), "Wrong. Error detected at ...");
    EXPECT_EQ(faultOf([&] { decoder.throwErrorMsg(""); }), " Error detected at ...");
}

TEST(NeedTokens, EnoughGroupsPass) {
    const OpenDecoder decoder = OpenDecoder::withGroups("99012 32259");
    EXPECT_NO_THROW(decoder.NEED_TOKENS(0));
    EXPECT_NO_THROW(decoder.NEED_TOKENS(1));
    EXPECT_NO_THROW(decoder.NEED_TOKENS(2));
    EXPECT_EQ(decoder.rest(), "99012 32259");
}

TEST(NeedTokens, ZeroGroupsAreThereInAnEmptyQueue) {
    const OpenDecoder decoder = OpenDecoder::withGroups("");
    EXPECT_NO_THROW(decoder.NEED_TOKENS(0));
}

TEST(NeedTokens, OneGroupTooFewIsAFaultWithoutASpaceBeforeTheContext) {
    const OpenDecoder decoder = OpenDecoder::withGroups("99012");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKENS(2); }),
              "At least 2 code groups are required. Error detected at99012  ...");
    EXPECT_EQ(decoder.rest(), "99012");
}

TEST(NeedTokens, EmptyQueueIsAFaultWithOnlyTheDots) {
    const OpenDecoder decoder = OpenDecoder::withGroups("");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKENS(1); }), "At least 1 code groups are required. Error detected at ...");
}

TEST(NeedTokens, NoMoreThanSixGroupsAreShown) {
    const OpenDecoder decoder = OpenDecoder::withGroups("1 22 333 4444 55555 666666 7777777 88888888");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKENS(9); }),
              "At least 9 code groups are required. Error detected at1 22 333 4444 55555 666666  ...");
    EXPECT_NO_THROW(decoder.NEED_TOKENS(8));
}

TEST(NeedTokens, NegativeCountIsAlwaysAFaultAndShowsNoGroups) {
    const OpenDecoder decoder = OpenDecoder::withGroups("99012 32259");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKENS(-1); }), "At least -1 code groups are required. ");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKENS(std::numeric_limits<int>::min()); }),
              "At least -2147483648 code groups are required. ");
    EXPECT_EQ(faultOf([] { OpenDecoder::withGroups("").NEED_TOKENS(-3); }), "At least -3 code groups are required. ");
}

TEST(NeedTokens, CountIsWrittenPlainUnderAnyGlobalLocale) {
    const OpenDecoder decoder = OpenDecoder::withGroups("99012");
    const GlobalLocale foreign(new ForeignNumbers);
    const std::string count = faultOf([&] { decoder.NEED_TOKENS(1234567); });
    const std::string length = faultOf([&] { OpenDecoder(decoder).NEED_TOKEN_OF_LENGTH(1234567); });
    EXPECT_EQ(count, "At least 1234567 code groups are required. Error detected at99012  ...");
    EXPECT_EQ(length, "This code group requires exactly 1234567 characters. Error detected near 99012  ...");
}

TEST(SkipTokens, GroupsAreTakenFromTheFront) {
    OpenDecoder decoder = OpenDecoder::withGroups("1 22 333 4444");
    decoder.SKIP_TOKENS(1);
    EXPECT_EQ(decoder.rest(), "22 333 4444");
    decoder.SKIP_TOKENS(2);
    EXPECT_EQ(decoder.rest(), "4444");
    decoder.SKIP_TOKENS(1);
    EXPECT_EQ(decoder.rest(), "");
}

TEST(SkipTokens, NoneToSkipTakesNothing) {
    OpenDecoder decoder = OpenDecoder::withGroups("1 22");
    decoder.SKIP_TOKENS(0);
    EXPECT_EQ(decoder.rest(), "1 22");
    OpenDecoder empty = OpenDecoder::withGroups("");
    EXPECT_NO_THROW(empty.SKIP_TOKENS(0));
}

TEST(SkipTokens, TooFewGroupsIsAFaultAndTakesNothing) {
    OpenDecoder decoder = OpenDecoder::withGroups("EYEWALL 270");
    EXPECT_EQ(faultOf([&] { decoder.SKIP_TOKENS(3); }),
              "At least 3 code groups are required. Error detected atEYEWALL 270  ...");
    EXPECT_EQ(decoder.rest(), "EYEWALL 270");
}

TEST(SkipTokens, NegativeCountIsAFaultAndTakesNothing) {
    OpenDecoder decoder = OpenDecoder::withGroups("1 22");
    EXPECT_EQ(faultOf([&] { decoder.SKIP_TOKENS(-1); }), "At least -1 code groups are required. ");
    EXPECT_EQ(decoder.rest(), "1 22");
}

TEST(NeedTokenOfLength, GroupOfTheLengthStaysAsItIs) {
    OpenDecoder decoder = OpenDecoder::withGroups("99012 32259");
    decoder.NEED_TOKEN_OF_LENGTH(5);
    EXPECT_EQ(decoder.rest(), "99012 32259");
}

TEST(NeedTokenOfLength, StrayBlankInsideAGroupIsJoined) {
    OpenDecoder decoder = OpenDecoder::withGroups("990 12 32259");
    decoder.NEED_TOKEN_OF_LENGTH(5);
    EXPECT_EQ(decoder.rest(), "99012 32259");
    decoder.queue("12 345");
    decoder.NEED_TOKEN_OF_LENGTH(5);
    EXPECT_EQ(decoder.rest(), "12345");
    decoder.queue("1 9473 0");
    decoder.NEED_TOKEN_OF_LENGTH(5);
    EXPECT_EQ(decoder.rest(), "19473 0");
}

TEST(NeedTokenOfLength, JoinedGroupIsNotPutIntoTheListOfAllGroups) {
    OpenDecoder decoder = OpenDecoder::withGroups("990 12 32259");
    decoder.NEED_TOKEN_OF_LENGTH(5);
    EXPECT_EQ(decoder.tokens(), (std::vector<std::string>{"990", "12", "32259"}));
}

TEST(NeedTokenOfLength, LengthsThatDoNotAddUpAreAFault) {
    OpenDecoder decoder = OpenDecoder::withGroups("990 1234");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKEN_OF_LENGTH(5); }),
              "This code group requires exactly 5 characters. Error detected near 990 1234  ...");
    EXPECT_EQ(decoder.rest(), "990 1234");
    decoder.queue("990 1");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKEN_OF_LENGTH(5); }),
              "This code group requires exactly 5 characters. Error detected near 990 1  ...");
    EXPECT_EQ(decoder.rest(), "990 1");
}

TEST(NeedTokenOfLength, NoMoreThanSixGroupsAreShown) {
    OpenDecoder decoder = OpenDecoder::withGroups("990 1234 22 333 4444 55555 666666 7777777");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKEN_OF_LENGTH(5); }), "This code group requires exactly 5 characters. "
                                                                 "Error detected near 990 1234 22 333 4444 55555  ...");
}

TEST(NeedTokenOfLength, LoneShortGroupIsAFault) {
    OpenDecoder decoder = OpenDecoder::withGroups("990");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKEN_OF_LENGTH(5); }),
              "This code group requires exactly 5 characters. Error detected near 990  ...");
    EXPECT_EQ(decoder.rest(), "990");
}

TEST(NeedTokenOfLength, LongGroupIsAFault) {
    OpenDecoder decoder = OpenDecoder::withGroups("990123 1");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKEN_OF_LENGTH(5); }),
              "This code group requires exactly 5 characters. Error detected near 990123 1  ...");
    EXPECT_EQ(decoder.rest(), "990123 1");
}

TEST(NeedTokenOfLength, NoMoreThanTwoGroupsAreJoined) {
    OpenDecoder decoder = OpenDecoder::withGroups("9 9 012");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKEN_OF_LENGTH(5); }),
              "This code group requires exactly 5 characters. Error detected near 9 9 012  ...");
    EXPECT_EQ(decoder.rest(), "9 9 012");
}

TEST(NeedTokenOfLength, EmptyQueueIsTheFaultOfAMissingGroup) {
    OpenDecoder decoder = OpenDecoder::withGroups("");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKEN_OF_LENGTH(5); }),
              "At least 1 code groups are required. Error detected at ...");
}

TEST(NeedTokenOfLength, NoGroupHasZeroOrFewerCharacters) {
    OpenDecoder decoder = OpenDecoder::withGroups("9 0");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKEN_OF_LENGTH(0); }),
              "This code group requires exactly 0 characters. Error detected near 9 0  ...");
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKEN_OF_LENGTH(-2); }),
              "This code group requires exactly -2 characters. Error detected near 9 0  ...");
    EXPECT_EQ(decoder.rest(), "9 0");
}

TEST(Fault, GroupsTakenBeforeAFaultStayTaken) {
    OpenDecoder decoder = OpenDecoder::withGroups("AEV 2 34 567");
    decoder.SKIP_TOKENS(1);
    EXPECT_EQ(faultOf([&] { decoder.NEED_TOKEN_OF_LENGTH(5); }),
              "This code group requires exactly 5 characters. Error detected near 2 34 567  ...");
    EXPECT_EQ(decoder.rest(), "2 34 567");
}

TEST(Fault, LevelsFiledBeforeAFaultStayFiled) {
    OpenDecoder decoder = OpenDecoder::inPart(1, "11850 12456 11700");
    EXPECT_EQ(faultOf([&] { decoder.decodeSection5(); }),
              "At least 2 code groups are required. Error detected at11700  ...");
    EXPECT_EQ(summaryOf(decoder.allLevels()), "significant 850");
}

TEST(Tokens, WholeReportIsGivenAlsoWhenGroupsAreTaken) {
    OpenDecoder decoder = OpenDecoder::withGroups("TTAA 56121 72403");
    decoder.SKIP_TOKENS(3);
    EXPECT_EQ(decoder.rest(), "");
    EXPECT_EQ(decoder.tokens(), (std::vector<std::string>{"TTAA", "56121", "72403"}));
}

TEST(Tokens, DecodedReportStillGivesEveryGroup) {
    const OpenDecoder decoder("TTAA 56121 72403 88999\n77999 =\nTTBB 56120 72403 31313 58708 81102=");
    EXPECT_EQ(decoder.tokens(), (std::vector<std::string>{"TTAA", "56121", "72403", "88999", "77999", "TTBB", "56120",
                                                          "72403", "31313", "58708", "81102"}));
    EXPECT_EQ(decoder.rest(), "");
}

TEST(Tokens, NoReportNoGroups) {
    EXPECT_TRUE(Corvane().tokens().empty());
}
