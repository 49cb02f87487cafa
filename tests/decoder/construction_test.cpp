// The decoder object: its state and tables before decoding, and the sequence of parts and sections.
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Surfaces = std::vector<std::pair<std::string, double>>;
using Strings = std::vector<std::string>;

static_assert(std::has_virtual_destructor<Corvane>::value, "a subclass may be destroyed through the base");

// The rows of a table as pairs, which can be compared.
template <typename Table>
Surfaces pairsOf(const Table& table) {
    Surfaces pairs;
    for (const auto& surface : table) {
        pairs.emplace_back(surface.code, surface.pressure);
    }
    return pairs;
}

std::string levelsOf(const Corvane& decoder) {
    return summaryOf(decoder.allLevels());
}

void expectInitialValues(const OpenDecoder& decoder) {
    EXPECT_EQ(decoder.abrHeader(), "");
    EXPECT_EQ(decoder.bsn(), "");
    EXPECT_EQ(decoder.callSign(), "");
    EXPECT_EQ(decoder.latitude(), 0.0);
    EXPECT_EQ(decoder.longitude(), 0.0);
    EXPECT_EQ(decoder.dayOfMonth(), 0);
    EXPECT_FALSE(decoder.windsInKnots());
    EXPECT_EQ(decoder.obsHour(), -1);
    EXPECT_EQ(decoder.obsTime(), -1);
    EXPECT_EQ(decoder.wmoType(), "UNKNOWN");
    EXPECT_EQ(decoder.a4, "");
    EXPECT_EQ(decoder.sr, "");
    EXPECT_EQ(decoder.rara, "");
    EXPECT_EQ(decoder.sasa, "");
    EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_UNKNOWN);
    EXPECT_EQ(decoder.part, 4);
    EXPECT_EQ(decoder.lastWindPresA, 0);
    EXPECT_EQ(decoder.lastWindPresC, 0);
    EXPECT_EQ(decoder.mobileElevation, 0.0);
    EXPECT_TRUE(decoder.tokenQueue.empty());
    EXPECT_TRUE(decoder.allTokens.empty());
    EXPECT_TRUE(decoder.levelStore.empty());
    EXPECT_TRUE(decoder.tokens().empty());
    EXPECT_TRUE(decoder.allLevels().empty());
}

const Surfaces SURFACES_A = {{"99", 0.0},   {"00", 1000.0}, {"92", 925.0}, {"85", 850.0}, {"70", 700.0}, {"50", 500.0},
                             {"40", 400.0}, {"30", 300.0},  {"25", 250.0}, {"20", 200.0}, {"15", 150.0}, {"10", 100.0}};
const Surfaces SURFACES_C = {{"70", 70.0}, {"50", 50.0}, {"30", 30.0}, {"20", 20.0}, {"10", 10.0},
                             {"07", 7.0},  {"05", 5.0},  {"03", 3.0},  {"01", 1.0}};

// The parts of one TEMP sounding, each with a few groups of every section that the part has.
const std::string PART_A = "TTAA 56001 72201 99014 32259 11504 00140 30057 11506 88250 51256 27015 77180 27085 ";
const std::string PART_B = "TTBB 56007 72201 00014 32259 11850 12456 21212 11700 27030 ";
const std::string PART_C = "TTCC 56007 72201 70850 61256 27015 88925 61456 27020 77150 27085 ";
const std::string PART_D = "TTDD 5600/ 72201 11700 61256 21212 11500 27030 ";

}  // namespace

TEST(DefaultDecoder, HasNoReportAndEmptyTables) {
    const OpenDecoder decoder;
    expectInitialValues(decoder);
    EXPECT_TRUE(decoder.wmoTypes.empty());
    EXPECT_TRUE(decoder.partIds.empty());
    EXPECT_TRUE(decoder.mandatoryA.empty());
    EXPECT_TRUE(decoder.mandatoryC.empty());
    EXPECT_TRUE(decoder.regionalGroups.empty());
}

TEST(Tables, InitBuildsTheReferenceTables) {
    OpenDecoder decoder;
    decoder.init();
    expectInitialValues(decoder);
    const std::map<std::string, Corvane::WMO_MESSAGE_TYPE> types = {{"TT", Corvane::WMO_TEMP},
                                                                    {"UU", Corvane::WMO_TEMP_SHIP},
                                                                    {"XX", Corvane::WMO_TEMP_DROP},
                                                                    {"II", Corvane::WMO_TEMP_MOBIL}};
    EXPECT_EQ(decoder.wmoTypes, types);
    EXPECT_EQ(decoder.partIds, (Strings{"AA", "BB", "CC", "DD"}));
    EXPECT_EQ(pairsOf(decoder.mandatoryA), SURFACES_A);
    EXPECT_EQ(pairsOf(decoder.mandatoryC), SURFACES_C);
    EXPECT_EQ(decoder.regionalGroups,
              (Strings{"61616", "62626", "63636", "64646", "65656", "66666", "67676", "68686", "69696"}));
}

TEST(Tables, InitAppendsToWhatTheTablesHold) {
    OpenDecoder decoder;
    decoder.partIds = {"ZZ"};
    decoder.regionalGroups = {"51515"};
    decoder.init();
    EXPECT_EQ(decoder.partIds, (Strings{"ZZ", "AA", "BB", "CC", "DD"}));
    ASSERT_EQ(decoder.regionalGroups.size(), 10u);
    EXPECT_EQ(decoder.regionalGroups[0], "51515");
    EXPECT_EQ(decoder.regionalGroups[1], "61616");
}

TEST(Tables, CodeFormsHaveTheirValues) {
    EXPECT_EQ(static_cast<int>(Corvane::WMO_UNKNOWN), 0);
    EXPECT_EQ(static_cast<int>(Corvane::WMO_TEMP), 1);
    EXPECT_EQ(static_cast<int>(Corvane::WMO_TEMP_SHIP), 2);
    EXPECT_EQ(static_cast<int>(Corvane::WMO_TEMP_DROP), 3);
    EXPECT_EQ(static_cast<int>(Corvane::WMO_TEMP_MOBIL), 4);
}

TEST(Accessors, GiveTheirMembers) {
    OpenDecoder decoder;
    decoder._abrHeader = "UKAA01 ABCD 011200 CCA ";
    decoder._bsn = "72403";
    decoder._callSign = "WTEC";
    decoder._latitude = -24.1;
    decoder._longitude = 83.5;
    decoder._dayOfMonth = 6;
    decoder._windsInKnots = true;
    decoder._obsHour = 12;
    decoder._obsTime = 1102;
    EXPECT_EQ(decoder.abrHeader(), "UKAA01 ABCD 011200 CCA ");
    EXPECT_EQ(decoder.bsn(), "72403");
    EXPECT_EQ(decoder.callSign(), "WTEC");
    EXPECT_EQ(decoder.latitude(), -24.1);
    EXPECT_EQ(decoder.longitude(), 83.5);
    EXPECT_EQ(decoder.dayOfMonth(), 6);
    EXPECT_TRUE(decoder.windsInKnots());
    EXPECT_EQ(decoder.obsHour(), 12);
    EXPECT_EQ(decoder.obsTime(), 1102);
}

TEST(Construction, EmptyTextIsAReportWithoutLevels) {
    for (const std::string text : {"", " ", "  ", " \t\r\n\v\f ", "=", " = = "}) {
        SCOPED_TRACE(text);
        const OpenDecoder decoder(text);
        expectInitialValues(decoder);
        // Unlike an object without a report, this one has its reference tables.
        EXPECT_EQ(decoder.partIds.size(), 4u);
        EXPECT_EQ(pairsOf(decoder.mandatoryA), SURFACES_A);
        EXPECT_EQ(pairsOf(decoder.mandatoryC), SURFACES_C);
    }
}

TEST(Construction, WholeTextIsDecodedAndTheGroupsAreKept) {
    const OpenDecoder decoder("TTAA 56121 72403 99013 32259 11504 88999 77999=");
    EXPECT_TRUE(decoder.tokenQueue.empty());
    EXPECT_EQ(decoder.tokens(), (Strings{"TTAA", "56121", "72403", "99013", "32259", "11504", "88999", "77999"}));
    EXPECT_EQ(decoder.wmoType(), "TEMP");
    EXPECT_EQ(decoder.part, 0);
    EXPECT_EQ(decoder.dayOfMonth(), 6);
    EXPECT_TRUE(decoder.windsInKnots());
    EXPECT_EQ(decoder.obsHour(), 12);
    EXPECT_EQ(decoder.obsTime(), -1);
    EXPECT_EQ(decoder.lastWindPresA, 100);
    EXPECT_EQ(decoder.bsn(), "72403");
    EXPECT_EQ(levelsOf(decoder), "surface 1013");
}

TEST(Construction, LineStructureDoesNotMatter) {
    const OpenDecoder decoder("\r\n TTAA  56121\n72403\t99013\r\n32259 11504\n\n88999 77999\n=\n");
    EXPECT_EQ(levelsOf(decoder), "surface 1013");
}

TEST(Construction, PartsOfOneTextShareOneStore) {
    const OpenDecoder decoder(PART_A + PART_B + "31313 58708 81102 " + PART_C + PART_D + "=");
    EXPECT_EQ(levelsOf(decoder), "surface 1014, mandatory 1000, mandatory 70, significant 1014, significant 850, "
                                 "significant 700, significant 70, significant 50, tropopause 250, tropopause 92.5, "
                                 "maxwind 180, maxwind 150");
    EXPECT_TRUE(decoder.tokenQueue.empty());
    EXPECT_EQ(decoder.part, 3);
    EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_TEMP);
    EXPECT_EQ(decoder.lastWindPresA, 100);
    EXPECT_EQ(decoder.lastWindPresC, 70);
    EXPECT_EQ(decoder.a4, "7");
    EXPECT_EQ(decoder.obsTime(), 1102);
}

TEST(Construction, SecondIdentifierIsTakenAfterACompletePart) {
    const OpenDecoder decoder(PART_A + PART_B);
    EXPECT_EQ(levelsOf(decoder), "surface 1014, mandatory 1000, significant 1014, significant 850, significant 700, "
                                 "tropopause 250, maxwind 180");
    EXPECT_EQ(decoder.part, 1);
}

TEST(Construction, PartsMayComeInTheOrderOfTheText) {
    const OpenDecoder decoder(PART_C + "31313 58708 81102 " + PART_B + "31313 58708 81102 " + PART_D);
    EXPECT_EQ(decoder.part, 3);
    EXPECT_EQ(levelsOf(decoder), "mandatory 70, significant 1014, significant 850, significant 700, significant 70, "
                                 "significant 50, tropopause 92.5, maxwind 150");
}

TEST(Construction, PartThatOccursTwiceIsFiledTwice) {
    const OpenDecoder decoder(PART_D + "31313 58708 81102 " + PART_D);
    EXPECT_EQ(levelsOf(decoder), "significant 70, significant 50, significant 70, significant 50");
}

TEST(Construction, PartAAfterAnotherPartIsSkipped) {
    const OpenDecoder decoder(PART_B + "31313 58708 81102 " + PART_A + PART_D);
    EXPECT_EQ(levelsOf(decoder), "significant 1014, significant 850, significant 700, significant 70, significant 50");
    EXPECT_EQ(decoder.part, 3);
}

TEST(Construction, PartsOfDifferentCodeFormsAreRejected) {
    EXPECT_EQ(faultOf([] { Corvane("TTAA 56121 72403 88999 77999 UUBB WTEC 56127 99241 70830 08112 00014 32259"); }),
              "Two different WMO message types have been found in this message. "
              "Error detected at UUBB WTEC 56127 99241 70830 08112 ...");
}

TEST(Construction, StrayGroupAfterAPartIsSkipped) {
    EXPECT_EQ(levelsOf(OpenDecoder("TTAA 56121 72403 99013 32259 11504 88999 77999 XXXX1")), "surface 1013");
}

TEST(Construction, TextThatDoesNotBeginWithAnIdentifierIsRejected) {
    EXPECT_EQ(faultOf([] { Corvane("XXXX1 TTAA 56121"); }),
              "WMO type and part identifier (MMMM) must be 4 characters. Error detected at XXXX1 TTAA 56121 ...");
    EXPECT_EQ(faultOf([] { Corvane("TTAB 56121 72403"); }),
              "Part identifier AA, BB, CC or DD was not found. Error detected at TTAB 56121 72403 ...");
}

TEST(Construction, GroupThatLooksLikeTheNextPartIsTakenAsItsIdentifier) {
    EXPECT_EQ(faultOf([] { Corvane("TTAA 56121 72403 88999 77999 12BB 56121 72403"); }),
              "Message type identifier (TT, UU, XX or II) was not found. Error detected at 12BB 56121 72403 ...");
}

TEST(Construction, FirstFaultLeavesTheConstructor) {
    EXPECT_EQ(faultOf([] { Corvane("TTAA 56126 72403"); }),
              "The last wind indicator (Id) is incorrectly coded. Error detected at 56126 72403 ...");
    EXPECT_EQ(faultOf([] { Corvane("TTAA"); }), "At least 1 code groups are required. Error detected at ...");
}

TEST(Construction, GroupTooShortForItsPositionsIsOutOfRange) {
    EXPECT_TRUE(findsGroupTooShort([] { Corvane("TTAA 56121 72403 88999 77999 X"); }));
}

TEST(Construction, IdentifierAfterDateAndStationEndsAnEmptyPart) {
    const OpenDecoder decoder("TTAA 56121 72403 88999 TTBB 56127 72404 31313 58708 81102 TTCC 56127 72405 88999 "
                              "TTDD 5612/ 72406");
    EXPECT_EQ(levelsOf(decoder), "");
    EXPECT_EQ(decoder.bsn(), "72406");
    EXPECT_EQ(decoder.part, 3);
}

TEST(Construction, EveryCodeFormTakesTheSameSections) {
    const std::string body = "99014 32259 11504 88250 51256 27015 77180 27085";
    const std::string levels = "surface 1014, tropopause 250, maxwind 180";
    EXPECT_EQ(levelsOf(OpenDecoder("TTAA 56001 72201 " + body)), levels);
    EXPECT_EQ(levelsOf(OpenDecoder("UUAA WTEC 56001 99241 70830 08112 " + body)), levels);
    EXPECT_EQ(levelsOf(OpenDecoder("XXAA 56001 99241 70830 08112 " + body)), levels);
    EXPECT_EQ(levelsOf(OpenDecoder("IIAA ABCD1 56001 99241 70830 08112 01231 " + body)), levels);
}

TEST(PartSequence, PartAHasSurfacesTropopauseAndMaximumWind) {
    const OpenDecoder decoder(PART_A);
    EXPECT_EQ(decoder.part, 0);
    EXPECT_EQ(levelsOf(decoder), "surface 1014, mandatory 1000, tropopause 250, maxwind 180");
}

TEST(PartSequence, PartCIsReadLikePartAInItsOwnUnits) {
    const OpenDecoder decoder(PART_C);
    EXPECT_EQ(decoder.part, 2);
    EXPECT_EQ(levelsOf(decoder), "mandatory 70, tropopause 92.5, maxwind 150");
}

TEST(PartSequence, PartBHasSignificantLevels) {
    const OpenDecoder decoder(PART_B);
    EXPECT_EQ(decoder.part, 1);
    EXPECT_EQ(levelsOf(decoder), "significant 1014, significant 850, significant 700");
}

TEST(PartSequence, PartDIsReadLikePartBInItsOwnUnits) {
    const OpenDecoder decoder(PART_D);
    EXPECT_EQ(decoder.part, 3);
    EXPECT_EQ(levelsOf(decoder), "significant 70, significant 50");
}

TEST(PartSequence, PartsBAndDHaveNoSurfacesTropopauseOrMaximumWind) {
    // Here, groups that would open sections 2, 3 and 4 are pairs of section 5.
    EXPECT_EQ(levelsOf(OpenDecoder("TTBB 56007 72201 99014 32259 88250 51256 77180 27085")),
              "significant 1014, significant 250, significant 180");
    EXPECT_EQ(levelsOf(OpenDecoder("TTDD 5600/ 72201 88250 51256 77180 27085")), "significant 25, significant 18");
}

TEST(PartSequence, PartsAAndCHaveNoSignificantLevels) {
    // Section 9 skips what would open sections 5 and 6.
    EXPECT_EQ(levelsOf(OpenDecoder("TTAA 56001 72201 88999 77999 00014 32259 21212 11700 27030")), "");
    EXPECT_EQ(levelsOf(OpenDecoder("TTCC 56001 72201 88999 77999 11700 61256 21212 11500 27030")), "");
}

TEST(PartSequence, EveryPartHasSectionSeven) {
    for (const std::string& part : {PART_A, PART_B, PART_C, PART_D}) {
        SCOPED_TRACE(part);
        const OpenDecoder decoder(part + "31313 58708 81102");
        EXPECT_EQ(decoder.obsTime(), 1102);
        EXPECT_EQ(decoder.sr, "5");
        EXPECT_EQ(decoder.rara, "87");
        EXPECT_EQ(decoder.sasa, "08");
        EXPECT_TRUE(decoder.tokenQueue.empty());
    }
}

// Parts B and D have it, but never reach it with its opener in front: section 7 leaves its time group there, and
// without a section 7 the levels take all groups to the end. What an opener alone does there, SectionEight tests.
TEST(PartSequence, PartsAAndCHaveNoCloudSection) {
    for (const std::string text : {"TTAA 56001 72201 88999 77999 41414", "TTCC 56001 72201 88999 77999 41414"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(faultOf([&] { const Corvane report(text); }), NOTHING_THROWN);
    }
    for (const int part : {0, 2}) {
        OpenDecoder decoder = OpenDecoder::inPart(part, "56001 72201 88999 77999 41414");
        decoder.wmoMessageType = Corvane::WMO_TEMP;
        EXPECT_EQ(faultOf([&] { part == 0 ? decoder.decodePartA() : decoder.decodePartC(); }), NOTHING_THROWN);
        EXPECT_EQ(decoder.rest(), "");
    }
}

TEST(PartSequence, EveryPartSkipsRegionalGroupsAndReadsTheRemarks) {
    // The groups before 61616 are section 9, the rest is section 10.
    for (const std::string& part : {PART_A, PART_B, PART_C, PART_D}) {
        SCOPED_TRACE(part);
        const OpenDecoder decoder(part + "31313 58708 81102 51515 10164 00075 61616 AF305 0208A 62626 "
                                         "REL 3233N06956W 194730");
        EXPECT_EQ(decoder.levels({Corvane::LT_RELEASEPOINT}).size(), 1u);
        EXPECT_TRUE(decoder.tokenQueue.empty());
    }
}

TEST(PartSequence, PartMethodsLeaveTheNextIdentifierInTheQueue) {
    struct Row {
        int part;
        const char* body;
        void (OpenDecoder::*decode)();
    };
    const Row rows[] = {
        {0, "56001 72201 88999 77999 TTBB 56007", &OpenDecoder::decodePartA},
        {1, "56007 72201 00014 32259 21212 11700 27030 31313 58708 81102 TTCC 56007", &OpenDecoder::decodePartB},
        {2, "56001 72201 88999 77999 TTDD 5600/", &OpenDecoder::decodePartC},
        {3, "5600/ 72201 11700 61256 31313 58708 81102 TTBB 56007", &OpenDecoder::decodePartD},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.body);
        OpenDecoder decoder = OpenDecoder::inPart(row.part, row.body);
        decoder.wmoMessageType = Corvane::WMO_TEMP;
        (decoder.*row.decode)();
        EXPECT_EQ(decoder.tokenQueue.size(), 2u);
        EXPECT_EQ(decoder.rest(), std::string(row.body).substr(std::string(row.body).size() - 10));
        EXPECT_EQ(decoder.bsn(), "72201");
    }
}

TEST(PartSequence, PartAThatEndsAfterSectionOneIsAFault) {
    EXPECT_EQ(faultOf([] { Corvane("TTAA 56121 72403"); }),
              "At least 2 code groups are required. Error detected at ...");
    EXPECT_EQ(faultOf([] { Corvane("TTCC 56121 72403"); }),
              "At least 2 code groups are required. Error detected at ...");
}

TEST(PartSequence, PartBThatEndsAfterSectionOneIsComplete) {
    EXPECT_EQ(Corvane("TTBB 56121 72403").bsn(), "72403");
    EXPECT_EQ(Corvane("TTDD 5612/ 72403").bsn(), "72403");
}
