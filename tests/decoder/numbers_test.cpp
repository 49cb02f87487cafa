// The number readers: compared with the stream and with strtod over every short text, and in a foreign locale.
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
        if (!sameBits(OpenDecoder::streamDouble(text), fromStream<double>(text)) ||
            OpenDecoder::streamInt(text) != fromStream<int>(text)) {
            ADD_FAILURE() << "\"" << text << "\"";
            ASSERT_LT(++differences, 10) << "and more";
        }
    }
}

TEST(Numbers, ReadAsTheStreamReadsDigitsOfAnyLength) {
    for (std::size_t length = 1; length <= 30; ++length) {
        for (const char digit : {'0', '1', '9'}) {
            const std::string text(length, digit);
            EXPECT_TRUE(sameBits(OpenDecoder::streamDouble(text), fromStream<double>(text))) << text;
            EXPECT_EQ(OpenDecoder::streamInt(text), fromStream<int>(text)) << text;
            EXPECT_TRUE(sameBits(OpenDecoder::strtodDouble(text), std::strtod(text.c_str(), nullptr))) << text;
        }
    }
}

TEST(Numbers, LeadingNumberReadsAsStrtodReadsEveryShortText) {
    int differences = 0;
    for (const std::string& text : textsOf("019+-.eE/xXaAnNiIfF", 3)) {
        if (!sameBits(OpenDecoder::strtodDouble(text), std::strtod(text.c_str(), nullptr))) {
            ADD_FAILURE() << "\"" << text << "\"";
            ASSERT_LT(++differences, 10) << "and more";
        }
    }
}

TEST(Numbers, SpellingsOfTheStream) {
    EXPECT_EQ(OpenDecoder::streamDouble("850"), 850.0);
    EXPECT_EQ(OpenDecoder::streamDouble("007"), 7.0);
    EXPECT_EQ(OpenDecoder::streamDouble("+5"), 5.0);
    EXPECT_EQ(OpenDecoder::streamDouble(".5"), 0.5);
    EXPECT_EQ(OpenDecoder::streamDouble("5."), 5.0);
    EXPECT_EQ(OpenDecoder::streamDouble("-12"), -12.0);
    EXPECT_EQ(OpenDecoder::streamDouble("1e2"), 100.0);
    EXPECT_EQ(OpenDecoder::streamDouble("1e"), 0.0);
    EXPECT_EQ(OpenDecoder::streamDouble("0x1"), 0.0);
    EXPECT_EQ(OpenDecoder::streamDouble("inf"), 0.0);
    EXPECT_EQ(OpenDecoder::streamDouble("nan"), 0.0);
    EXPECT_EQ(OpenDecoder::streamDouble("85/"), 85.0);
    EXPECT_EQ(OpenDecoder::streamDouble("/85"), 0.0);
    EXPECT_EQ(OpenDecoder::streamDouble(""), 0.0);
    EXPECT_EQ(OpenDecoder::streamInt("0930"), 930);
    EXPECT_EQ(OpenDecoder::streamInt("//30"), 0);
    EXPECT_EQ(OpenDecoder::streamInt("-3"), -3);
    EXPECT_EQ(OpenDecoder::streamInt(""), 0);
}

TEST(Numbers, SpellingsOfStrtod) {
    EXPECT_EQ(OpenDecoder::strtodDouble("194730"), 194730.0);
    EXPECT_EQ(OpenDecoder::strtodDouble("0X1"), 1.0);
    EXPECT_EQ(OpenDecoder::strtodDouble("1E2"), 100.0);
    EXPECT_EQ(OpenDecoder::strtodDouble("1E"), 1.0);
    EXPECT_TRUE(std::isinf(OpenDecoder::strtodDouble("INF")));
    EXPECT_TRUE(std::isnan(OpenDecoder::strtodDouble("NAN")));
    EXPECT_EQ(OpenDecoder::strtodDouble("//"), 0.0);
    EXPECT_EQ(OpenDecoder::strtodDouble(""), 0.0);
}

TEST(Numbers, DoNotDependOnTheLocaleOfTheProgram) {
    const GlobalLocale foreign(new ForeignNumbers);
    EXPECT_EQ(OpenDecoder::streamDouble("1.5"), 1.5);
    EXPECT_EQ(OpenDecoder::streamDouble("1,5"), 1.0);
    EXPECT_EQ(OpenDecoder::streamInt("1.5"), 1);
    const Corvane report("TTBB 56008 72403 11.50 1.512 22850 12305");
    const std::vector<Corvane::Level> levels = report.allLevels();
    ASSERT_EQ(levels.size(), 2U);
    EXPECT_DOUBLE_EQ(levels[0].fields.at(Corvane::LF_PRES), 1000.5);
    EXPECT_DOUBLE_EQ(levels[0].fields.at(Corvane::LF_TDRY), -0.15);
}

// strtod itself reads with the decimal point of the C locale in force.
TEST(Numbers, DoNotDependOnTheLocaleOfC) {
    const DecimalCommaInC foreign;
    if (!foreign.found()) {
        GTEST_SKIP() << "no locale with a decimal comma is installed, nor in LOCPATH";
    }
    EXPECT_EQ(OpenDecoder::strtodDouble("1.5"), 1.5);
    EXPECT_EQ(OpenDecoder::strtodDouble("1,5"), 1.0);
    EXPECT_EQ(OpenDecoder::streamDouble("1.5"), 1.5);
    EXPECT_EQ(OpenDecoder::fractionalDegrees("123.5"), 1.235);
}
