// The table of the program: header, columns, numbers, and the order of the rows.
#include "support/CapturedOutput.h"
#include "support/KindNames.h"
#include "support/LevelMatchers.h"
#include "support/OpenDecoder.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <iostream>
#include <limits>
#include <random>
#include <sstream>
#include <string>

void csv(const Corvane& decoder);

namespace {

const std::string HEADER = "type,pres,tdry,dp,wspd,wdir,height,time,lat,lon,pres2\n";

std::string tableOf(const Corvane& decoder) {
    return outputOf([&] { csv(decoder); });
}

// The row of one level of this kind with these fields.
std::string rowOf(Corvane::LEVEL_TYPE kind, const std::map<Corvane::LEVEL_FIELD, double>& fields) {
    const std::string table = tableOf(OpenDecoder::holding({levelOf(kind, fields)}));
    EXPECT_EQ(table.substr(0, HEADER.size()), HEADER);
    return table.substr(HEADER.size());
}

std::string numberAsWritten(double number) {
    const std::string row = rowOf(Corvane::LT_RELEASEPOINT, {{Corvane::LF_TIME, number}});
    const std::string before = "releasepoint,,,,,,,";
    const std::string after = ",,,\n";
    EXPECT_EQ(row.substr(0, before.size()), before);
    EXPECT_EQ(row.substr(row.size() - after.size()), after);
    return row.substr(before.size(), row.size() - before.size() - after.size());
}

}  // namespace

TEST(CsvTable, WithoutLevelsThereIsOnlyTheHeader) {
    EXPECT_EQ(tableOf(OpenDecoder()), HEADER);
}

TEST(CsvTable, AnAbsentQuantityIsAnEmptyField) {
    EXPECT_EQ(rowOf(Corvane::LT_MANDATORY,
                    {{Corvane::LF_PRES, 850.0}, {Corvane::LF_TDRY, 12.4}, {Corvane::LF_HEIGHT, 1457.0}}),
              "mandatory,850,12.4,,,,1457,,,,\n");
    EXPECT_EQ(rowOf(Corvane::LT_SIGNIFICANT,
                    {{Corvane::LF_PRES, 700.0}, {Corvane::LF_WSPD, 10.0}, {Corvane::LF_WDIR, 270.0}}),
              "significant,700,,,10,270,,,,,\n");
    EXPECT_EQ(rowOf(Corvane::LT_TROPOPAUSE, {}), "tropopause,,,,,,,,,,\n");
}

TEST(CsvTable, EachQuantityHasItsColumn) {
    const std::map<Corvane::LEVEL_FIELD, double> everything = {
        {Corvane::LF_PRES, 1.0}, {Corvane::LF_TDRY, 2.0},   {Corvane::LF_DP, 3.0},  {Corvane::LF_WSPD, 4.0},
        {Corvane::LF_WDIR, 5.0}, {Corvane::LF_HEIGHT, 6.0}, {Corvane::LF_VA, 77.0}, {Corvane::LF_VB, 88.0},
        {Corvane::LF_TIME, 7.0}, {Corvane::LF_LAT, 8.0},    {Corvane::LF_LON, 9.0}, {Corvane::LF_PRES2, 10.0}};
    EXPECT_EQ(rowOf(Corvane::LT_GENERIC, everything), "generic,1,2,3,4,5,6,7,8,9,10\n");
}

TEST(CsvTable, TheShearsOfAMaximumWindAreNotWritten) {
    EXPECT_EQ(rowOf(Corvane::LT_MAXWIND, {{Corvane::LF_PRES, 250.0}, {Corvane::LF_VA, 5.0}, {Corvane::LF_VB, 10.0}}),
              "maxwind,250,,,,,,,,,\n");
}

TEST(CsvTable, EveryRowHasTenCommas) {
    const std::string row = rowOf(Corvane::LT_SPLASHPOINTRAWGPS, {{Corvane::LF_LAT, -15.32}, {Corvane::LF_LON, 65.87}});
    EXPECT_EQ(row, "splashpointrawgps,,,,,,,,-15.32,65.87,\n");
    EXPECT_EQ(std::count(row.begin(), row.end(), ','), 10);
}

TEST(CsvTable, NumbersHaveSixSignificantDigits) {
    EXPECT_EQ(numberAsWritten(1000.0), "1000");
    EXPECT_EQ(numberAsWritten(925.0), "925");
    EXPECT_EQ(numberAsWritten(-56.3), "-56.3");
    EXPECT_EQ(numberAsWritten(0.5), "0.5");
    EXPECT_EQ(numberAsWritten(12.345678), "12.3457");
    EXPECT_EQ(numberAsWritten(1234567.0), "1.23457e+06");
    EXPECT_EQ(numberAsWritten(999999.0), "999999");
    EXPECT_EQ(numberAsWritten(1000000.0), "1e+06");
    EXPECT_EQ(numberAsWritten(0.0001), "0.0001");
    EXPECT_EQ(numberAsWritten(0.00001), "1e-05");
    EXPECT_EQ(numberAsWritten(-0.0), "-0");
    EXPECT_EQ(numberAsWritten(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(numberAsWritten(std::numeric_limits<double>::infinity()), "inf");
}

TEST(CsvTable, NumbersAreWrittenAsAStreamWritesThem) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    for (int i = 0; i < 20000; ++i) {
        // Magnitudes of 1e-8 to 1e9, a third of them rounded to tenths as most reported values are.
        double number = mantissa(random) * std::pow(10.0, static_cast<double>(i % 17) - 8.0);
        number = i % 3 == 0 ? std::round(number * 10.0) / 10.0 : number;
        std::ostringstream stream;
        stream << number;
        ASSERT_EQ(numberAsWritten(number), stream.str());
    }
}

TEST(CsvTable, KindsAscendAndLevelsOfOneKindKeepTheirFilingOrder) {
    const OpenDecoder decoder = OpenDecoder::holding(
        {levelOf(SIGNIFICANT, {{PRES, 700}}), levelOf(SURFACE, {{PRES, 1010}}), levelOf(MANDATORY, {{PRES, 850}}),
         levelOf(SIGNIFICANT, {{PRES, 900}}), levelOf(SURFACE, {{PRES, 1009}})});
    EXPECT_EQ(tableOf(decoder), HEADER + "surface,1010,,,,,,,,,\n"
                                         "surface,1009,,,,,,,,,\n"
                                         "mandatory,850,,,,,,,,,\n"
                                         "significant,700,,,,,,,,,\n"
                                         "significant,900,,,,,,,,,\n");
}

TEST(CsvTable, EveryKindHasItsName) {
    for (std::size_t kind = 0; kind < KIND_NAMES.size(); ++kind) {
        EXPECT_EQ(rowOf(static_cast<Corvane::LEVEL_TYPE>(kind), {}), std::string(KIND_NAMES[kind]) + ",,,,,,,,,,\n");
    }
}

// A reader at the other end of a pipe gets each row when it is written.
TEST(CsvTable, HeaderAndEveryRowAreFlushed) {
    const CapturedOutput output;
    csv(OpenDecoder::holding({levelOf(SURFACE, {{PRES, 1013}}), levelOf(MANDATORY, {{PRES, 850}})}));
    const std::string surface = "surface,1013,,,,,,,,,\n";
    const std::string mandatory = "mandatory,850,,,,,,,,,\n";
    EXPECT_EQ(output.flushed(), (std::vector<std::string>{HEADER, HEADER + surface, HEADER + surface + mandatory}));
}
