// appendNumber writes every double as a stream does by default. CORVANE_TABLE_NUMBERS in the environment sets how many
// drawn numbers are compared, 20000 otherwise.
#include "Table.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>

namespace {

std::string appended(double number) {
    std::string text;
    corvane::table::appendNumber(text, number);
    return text;
}

// One stream for all numbers: to make one takes longer than to write the number.
class StreamWriter {
public:
    StreamWriter() { stream.imbue(std::locale::classic()); }

    std::string operator()(double number) {
        stream.str("");
        stream << number;
        return stream.str();
    }

private:
    std::ostringstream stream;
};

// A number, and the two doubles beside it, which have no short form.
void expectLikeTheStream(StreamWriter& written, double number) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double near : {number, std::nextafter(number, -infinity), std::nextafter(number, infinity)}) {
        ASSERT_EQ(appended(near), written(near)) << std::hexfloat << near;
        if (std::isfinite(near)) {
            ASSERT_EQ(corvane::table::asWritten(near), std::strtod(written(near).c_str(), nullptr))
                << std::hexfloat << near;
        }
        ASSERT_EQ(appended(-near), written(-near)) << std::hexfloat << -near;
    }
}

// Draws numbers of one family after the other: any bit pattern; decimals as a report holds them, in whole numbers to
// ten-thousandths; speeds converted from knots; magnitudes of 1e-12 to 1e12.
class Draw {
public:
    double operator()() {
        switch (turn++ % 4) {
        case 0: {
            const std::uint64_t bits = random();
            double number = 0.0;
            std::memcpy(&number, &bits, sizeof number);
            return number;
        }
        case 1: {
            const double scale = std::pow(10.0, static_cast<double>(random() % 5));
            return whole() / scale;
        }
        case 2: return static_cast<double>(random() % 1000) * 0.5144;
        default: return whole() * std::pow(10.0, static_cast<double>(random() % 19) - 12.0);
        }
    }

private:
    // Up to seven digits, fewer as often as many.
    double whole() {
        const std::uint64_t digits = 1 + random() % 7;
        return static_cast<double>(random() % static_cast<std::uint64_t>(std::pow(10.0, static_cast<double>(digits))));
    }

    std::mt19937_64 random{20260721};
    unsigned turn = 0;
};

}  // namespace

TEST(TableNumbers, TextIsAppended) {
    std::string text = "wspd,";
    corvane::table::appendNumber(text, 7.25);
    EXPECT_EQ(text, "wspd,7.25");
}

TEST(TableNumbers, HundredthsAreWrittenWithoutTrailingZeros) {
    EXPECT_EQ(appended(0.0), "0");
    EXPECT_EQ(appended(-0.0), "-0");
    EXPECT_EQ(appended(1.0), "1");
    EXPECT_EQ(appended(-56.3), "-56.3");
    EXPECT_EQ(appended(0.05), "0.05");
    EXPECT_EQ(appended(-0.5), "-0.5");
    EXPECT_EQ(appended(100.1), "100.1");
    EXPECT_EQ(appended(15.32), "15.32");
    EXPECT_EQ(appended(9999.99), "9999.99");
    EXPECT_EQ(appended(31000.0), "31000");
    EXPECT_EQ(appended(235959.0), "235959");
}

TEST(TableNumbers, SixSignificantDigitsAreTheLimit) {
    EXPECT_EQ(appended(10000.01), "10000");
    EXPECT_EQ(appended(10000.1), "10000.1");
    EXPECT_EQ(appended(99999.95), "99999.9");  // the double is a little below the tie
    EXPECT_EQ(appended(100000.5), "100000");   // a tie goes to the even digit
    EXPECT_EQ(appended(100001.5), "100002");
    EXPECT_EQ(appended(999999.0), "999999");
    EXPECT_EQ(appended(999999.5), "1e+06");
    EXPECT_EQ(appended(1000000.0), "1e+06");
    EXPECT_EQ(appended(std::nextafter(1000000.0, 0.0)), "1e+06");
    EXPECT_EQ(appended(7.2016), "7.2016");
    EXPECT_EQ(appended(-0.00001), "-1e-05");
}

TEST(TableNumbers, WhatIsNotFiniteHasItsName) {
    EXPECT_EQ(appended(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(appended(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(appended(std::copysign(std::numeric_limits<double>::quiet_NaN(), 1.0)), "nan");
    EXPECT_EQ(appended(std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0)), "-nan");
}

TEST(TableNumbers, FourDecimalsAndTheirNeighboursAreWrittenAsByTheStream) {
    StreamWriter written;
    for (int tenThousandths = 0; tenThousandths < 10000000; tenThousandths += 397) {
        expectLikeTheStream(written, tenThousandths / 10000.0);
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(TableNumbers, DrawnNumbersAreWrittenAsByTheStream) {
    const char* const wanted = std::getenv("CORVANE_TABLE_NUMBERS");
    const long count = wanted != nullptr ? std::strtol(wanted, nullptr, 10) : 20000;
    ASSERT_GT(count, 0);
    StreamWriter written;
    Draw draw;
    for (long i = 0; i < count; ++i) {
        const double number = draw();
        ASSERT_EQ(appended(number), written(number)) << std::hexfloat << number;
        ASSERT_EQ(appended(-number), written(-number)) << std::hexfloat << -number;
    }
}
