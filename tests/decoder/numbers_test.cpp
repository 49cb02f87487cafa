// The number readers: against the stream and against strtod over every short text, and in a foreign locale.
#include "support/GlobalLocale.h"
#include "support/OpenDecoder.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <locale>
#include <sstream>
#include <string>
#include <vector>

namespace {

// Every text of up to this many characters of an alphabet, the empty one included.
std::vector<std::string> textsOf(const std::string& alphabet, std::size_t length) {
    std::vector<std::string> texts{""};
    std::size_t begin = 0;
    for (std::size_t n = 0; n < length; ++n) {
        const std::size_t end = texts.size();
        for (std::size_t i = begin; i < end; ++i) {
            for (const char character : alphabet) {
                texts.push_back(texts[i] + character);
            }
        }
        begin = end;
    }
    return texts;
}

// What formatted extraction reads in the classic locale; an empty text leaves the 0 as it is.
template <typename Number>
Number fromStream(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    Number number = 0;
    stream >> number;
    return number;
}

bool sameBits(double first, double second) {
    return std::memcmp(&first, &second, sizeof first) == 0;
}

const std::string TELLING_CHARACTERS = "0159+-.eE/xn";

}  // namespace

TEST(Numbers, ReadAsTheStreamReadsEveryShortText) {
    int differences = 0;
    for (const std::string& text : textsOf(TELLING_CHARACTERS, 4)) {
        if (!sameBits(OpenDecoder::extractDouble(text), fromStream<double>(text)) ||
            OpenDecoder::extractInt(text) != fromStream<int>(text)) {
            ADD_FAILURE() << "\"" << text << "\"";
            ASSERT_LT(++differences, 10) << "and more";
        }
    }
}

TEST(Numbers, ReadAsTheStreamReadsDigitsOfAnyLength) {
    for (std::size_t length = 1; length <= 30; ++length) {
        for (const char digit : {'0', '1', '9'}) {
            const std::string text(length, digit);
            EXPECT_TRUE(sameBits(OpenDecoder::extractDouble(text), fromStream<double>(text))) << text;
            EXPECT_EQ(OpenDecoder::extractInt(text), fromStream<int>(text)) << text;
            EXPECT_TRUE(sameBits(OpenDecoder::leadingNumber(text), std::strtod(text.c_str(), nullptr))) << text;
        }
    }
}

TEST(Numbers, LeadingNumberReadsAsStrtodReadsEveryShortText) {
    int differences = 0;
    for (const std::string& text : textsOf("019+-.eE/xXaAnNiIfF", 3)) {
        if (!sameBits(OpenDecoder::leadingNumber(text), std::strtod(text.c_str(), nullptr))) {
            ADD_FAILURE() << "\"" << text << "\"";
            ASSERT_LT(++differences, 10) << "and more";
        }
    }
}

TEST(Numbers, SpellingsOfTheStream) {
    EXPECT_EQ(OpenDecoder::extractDouble("850"), 850.0);
    EXPECT_EQ(OpenDecoder::extractDouble("007"), 7.0);
    EXPECT_EQ(OpenDecoder::extractDouble("+5"), 5.0);
    EXPECT_EQ(OpenDecoder::extractDouble(".5"), 0.5);
    EXPECT_EQ(OpenDecoder::extractDouble("5."), 5.0);
    EXPECT_EQ(OpenDecoder::extractDouble("-12"), -12.0);
    EXPECT_EQ(OpenDecoder::extractDouble("1e2"), 100.0);
    EXPECT_EQ(OpenDecoder::extractDouble("1e"), 0.0);
    EXPECT_EQ(OpenDecoder::extractDouble("0x1"), 0.0);
    EXPECT_EQ(OpenDecoder::extractDouble("inf"), 0.0);
    EXPECT_EQ(OpenDecoder::extractDouble("nan"), 0.0);
    EXPECT_EQ(OpenDecoder::extractDouble("85/"), 85.0);
    EXPECT_EQ(OpenDecoder::extractDouble("/85"), 0.0);
    EXPECT_EQ(OpenDecoder::extractDouble(""), 0.0);
    EXPECT_EQ(OpenDecoder::extractInt("0930"), 930);
    EXPECT_EQ(OpenDecoder::extractInt("//30"), 0);
    EXPECT_EQ(OpenDecoder::extractInt("-3"), -3);
    EXPECT_EQ(OpenDecoder::extractInt(""), 0);
}

TEST(Numbers, SpellingsOfStrtod) {
    EXPECT_EQ(OpenDecoder::leadingNumber("194730"), 194730.0);
    EXPECT_EQ(OpenDecoder::leadingNumber("0X1"), 1.0);
    EXPECT_EQ(OpenDecoder::leadingNumber("1E2"), 100.0);
    EXPECT_EQ(OpenDecoder::leadingNumber("1E"), 1.0);
    EXPECT_TRUE(std::isinf(OpenDecoder::leadingNumber("INF")));
    EXPECT_TRUE(std::isnan(OpenDecoder::leadingNumber("NAN")));
    EXPECT_EQ(OpenDecoder::leadingNumber("//"), 0.0);
    EXPECT_EQ(OpenDecoder::leadingNumber(""), 0.0);
}

TEST(Numbers, DoNotDependOnTheLocaleOfTheProgram) {
    const GlobalLocale foreign(new ForeignNumbers);
    EXPECT_EQ(OpenDecoder::extractDouble("1.5"), 1.5);
    EXPECT_EQ(OpenDecoder::extractDouble("1,5"), 1.0);
    EXPECT_EQ(OpenDecoder::extractInt("1.5"), 1);
    const Corvane report("TTBB 56008 72403 11.50 1.512 22850 12305");
    const std::vector<Corvane::Level> levels = report.allLevels();
    ASSERT_EQ(levels.size(), 2U);
    EXPECT_DOUBLE_EQ(levels[0].fields.at(Corvane::LF_PRES), 1000.5);
    EXPECT_DOUBLE_EQ(levels[0].fields.at(Corvane::LF_TDRY), -0.15);
}

// The library may read numbers in the locale of C only by a function that is told the classic one.
TEST(Numbers, DoNotDependOnTheLocaleOfC) {
    const DecimalCommaInC foreign;
    if (!foreign.found()) {
        GTEST_SKIP() << "no locale with a decimal comma is installed, nor in LOCPATH";
    }
    EXPECT_EQ(OpenDecoder::leadingNumber("1.5"), 1.5);
    EXPECT_EQ(OpenDecoder::leadingNumber("1,5"), 1.0);
    EXPECT_EQ(OpenDecoder::extractDouble("1.5"), 1.5);
    EXPECT_EQ(OpenDecoder::fractionalDegrees("123.5"), 1.235);
}
