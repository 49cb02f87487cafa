// The type and part identifier MMMM, and the code form as text.
#include "support/OpenDecoder.h"

#include <gtest/gtest.h>
#include <string>

namespace {

const std::string WRONG_LENGTH = "WMO type and part identifier (MMMM) must be 4 characters.";
const std::string NO_TYPE = "Message type identifier (TT, UU, XX or II) was not found.";
const std::string TWO_TYPES = "Two different WMO message types have been found in this message.";
const std::string NO_PART = "Part identifier AA, BB, CC or DD was not found.";

}  // namespace

TEST(TypeAndPart, EveryTypeGoesWithEveryPart) {
    struct Row {
        const char* letters;
        Corvane::WMO_MESSAGE_TYPE type;
        int value;
        const char* text;
    };
    const Row rows[] = {
        {"TT", Corvane::WMO_TEMP, 1, "TEMP"},
        {"UU", Corvane::WMO_TEMP_SHIP, 2, "TEMP SHIP"},
        {"XX", Corvane::WMO_TEMP_DROP, 3, "TEMP DROP"},
        {"II", Corvane::WMO_TEMP_MOBIL, 4, "TEMP MOBIL"},
    };
    const char* const parts[] = {"AA", "BB", "CC", "DD"};
    for (const Row& row : rows) {
        EXPECT_EQ(static_cast<int>(row.type), row.value);
        for (int part = 0; part < 4; ++part) {
            const std::string group = std::string(row.letters) + parts[part];
            SCOPED_TRACE(group);
            OpenDecoder decoder = OpenDecoder::withGroups(group + " 56121 72403");
            decoder.decodeMMMM();
            EXPECT_EQ(decoder.wmoMessageType, row.type);
            EXPECT_EQ(decoder.part, part);
            EXPECT_EQ(decoder.wmoType(), row.text);
            EXPECT_EQ(decoder.rest(), "56121 72403");
        }
    }
}

TEST(TypeAndPart, SecondPartOfTheSameTypeIsAccepted) {
    OpenDecoder decoder = OpenDecoder::withGroups("TTAA TTBB TTDD TTCC TTAA");
    for (const int part : {0, 1, 3, 2, 0}) {
        decoder.decodeMMMM();
        EXPECT_EQ(decoder.part, part);
        EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_TEMP);
    }
    EXPECT_EQ(decoder.rest(), "");
}

TEST(TypeAndPart, EmptyQueueIsTheFaultOfAMissingGroup) {
    OpenDecoder decoder = OpenDecoder::withGroups("");
    EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }), "At least 1 code groups are required. Error detected at ...");
    EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_UNKNOWN);
    EXPECT_EQ(decoder.part, 4);
}

TEST(TypeAndPart, GroupNotOfFourCharactersIsAFault) {
    for (const std::string group : {"T", "TT", "TTA", "TTAAA", "XXXX1", "TTAATTBB", "/"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::withGroups(group + " 56121 72403");
        EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }),
                  WRONG_LENGTH + " Error detected at " + group + " 56121 72403 ...");
        EXPECT_EQ(decoder.rest(), group + " 56121 72403");
        EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_UNKNOWN);
        EXPECT_EQ(decoder.part, 4);
    }
}

TEST(TypeAndPart, UnknownTypeLettersAreAFault) {
    for (const std::string group : {"ttaa", "TtAA", "tTAA", "ZZAA", "AATT", "TUAA", "UTAA", "1234", "////", "+-.e"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::withGroups(group + " 56121 72403");
        EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }), NO_TYPE + " Error detected at " + group + " 56121 72403 ...");
        EXPECT_EQ(decoder.rest(), group + " 56121 72403");
        EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_UNKNOWN);
        EXPECT_EQ(decoder.part, 4);
    }
}

TEST(TypeAndPart, UnknownPartLettersAreAFault) {
    for (const std::string group : {"TTAB", "TTBA", "TTEE", "TTaa", "TTAa", "TTTT", "TT11", "TT//"}) {
        SCOPED_TRACE(group);
        OpenDecoder decoder = OpenDecoder::withGroups(group + " 56121 72403");
        EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }), NO_PART + " Error detected at " + group + " 56121 72403 ...");
        EXPECT_EQ(decoder.rest(), group + " 56121 72403");
        // By then the type is stored, the part is not.
        EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_TEMP);
        EXPECT_EQ(decoder.part, 4);
    }
}

TEST(TypeAndPart, AnotherTypeInTheSameTextIsAFault) {
    OpenDecoder decoder = OpenDecoder::withGroups("TTAA UUBB 1 22 333 4444 55555 666666");
    decoder.decodeMMMM();
    EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }), TWO_TYPES + " Error detected at UUBB 1 22 333 4444 55555 ...");
    EXPECT_EQ(decoder.rest(), "UUBB 1 22 333 4444 55555 666666");
    // By then the new type is stored; the part is still the earlier one.
    EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_TEMP_SHIP);
    EXPECT_EQ(decoder.part, 0);
}

TEST(TypeAndPart, EveryPairOfDifferentTypesIsAFault) {
    const char* const letters[] = {"TT", "UU", "XX", "II"};
    for (const std::string first : letters) {
        for (const std::string second : letters) {
            SCOPED_TRACE(first + " and " + second);
            OpenDecoder decoder = OpenDecoder::withGroups(first + "AA " + second + "BB");
            decoder.decodeMMMM();
            EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }),
                      first == second ? NOTHING_THROWN : TWO_TYPES + " Error detected at " + second + "BB ...");
            EXPECT_EQ(decoder.part, first == second ? 1 : 0);
        }
    }
}

TEST(TypeAndPart, LengthIsCheckedBeforeType) {
    OpenDecoder decoder = OpenDecoder::withGroups("ZZA");
    EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }), WRONG_LENGTH + " Error detected at ZZA ...");
}

TEST(TypeAndPart, TypeIsCheckedBeforePart) {
    OpenDecoder decoder = OpenDecoder::withGroups("ZZZZ");
    EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }), NO_TYPE + " Error detected at ZZZZ ...");
}

TEST(TypeAndPart, MixedTypesAreCheckedBeforePart) {
    OpenDecoder decoder = OpenDecoder::withGroups("UUAA TTAB");
    decoder.decodeMMMM();
    EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }), TWO_TYPES + " Error detected at TTAB ...");
    EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_TEMP);
}

TEST(TypeAndPart, UnknownTypeKeepsTheEarlierTypeAndPart) {
    OpenDecoder decoder = OpenDecoder::withGroups("XXCC ZZAA");
    decoder.decodeMMMM();
    EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }), NO_TYPE + " Error detected at ZZAA ...");
    EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_TEMP_DROP);
    EXPECT_EQ(decoder.part, 2);
}

TEST(TypeAndPart, TypeLettersAreFixedAndNotLookedUpInTheTable) {
    OpenDecoder decoder = OpenDecoder::withGroups("XXBB ZZAA");
    decoder.wmoTypes.clear();
    decoder.wmoTypes["ZZ"] = Corvane::WMO_TEMP_DROP;
    decoder.decodeMMMM();
    EXPECT_EQ(decoder.wmoMessageType, Corvane::WMO_TEMP_DROP);
    EXPECT_EQ(faultOf([&] { decoder.decodeMMMM(); }), NO_TYPE + " Error detected at ZZAA ...");
}

TEST(TypeAndPart, PartLettersAreLookedUpInTheTable) {
    OpenDecoder decoder = OpenDecoder::withGroups("TTAA");
    decoder.partIds = {"ZZ", "AA"};
    decoder.decodeMMMM();
    EXPECT_EQ(decoder.part, 1);
    OpenDecoder withoutTables;
    withoutTables.queue("TTAA");
    EXPECT_EQ(faultOf([&] { withoutTables.decodeMMMM(); }), NO_PART + " Error detected at TTAA ...");
}

TEST(CodeForm, TextBeforeAnyPartIsUnknown) {
    EXPECT_EQ(Corvane().wmoType(), "UNKNOWN");
    EXPECT_EQ(Corvane("").wmoType(), "UNKNOWN");
}

TEST(CodeForm, ValueAboveTheListHasNoText) {
    OpenDecoder decoder;
    for (const int value : {5, 6, 1000}) {
        decoder.wmoMessageType = static_cast<Corvane::WMO_MESSAGE_TYPE>(value);
        EXPECT_EQ(decoder.wmoType(), "");
        EXPECT_EQ(static_cast<int>(decoder.wmoMessageType), value);
    }
}
