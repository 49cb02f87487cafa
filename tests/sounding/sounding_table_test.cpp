// The table of soundings.
#include "SoundingParts.h"

#include "Csv.h"
#include "SoundingTable.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using corvane::Sounding;
using corvane::SoundingLevel;

std::string rowsOf(const Sounding& sounding) {
    std::string rows;
    corvane::table::appendSoundingRows(rows, sounding);
    return rows;
}

std::string quoted(std::string_view text) {
    std::string field = "before,";
    corvane::table::appendCsvField(field, text);
    return field.substr(7);
}

TEST(CsvField, IsQuotedOnlyWhereItHasToBe) {
    EXPECT_EQ(quoted(""), "");
    EXPECT_EQ(quoted("TEMP SHIP"), "TEMP SHIP");
    EXPECT_EQ(quoted("a;b'c"), "a;b'c");
    EXPECT_EQ(quoted("a,b"), "\"a,b\"");
    EXPECT_EQ(quoted("say \"so\""), "\"say \"\"so\"\"\"");
    EXPECT_EQ(quoted("\""), "\"\"\"\"");
    EXPECT_EQ(quoted("a\nb"), "\"a\nb\"");
    EXPECT_EQ(quoted("a\rb"), "\"a\rb\"");
}

TEST(SoundingTable, HeaderNamesTheColumns) {
    std::string header;
    corvane::table::appendSoundingHeader(header);
    EXPECT_EQ(header, "form,station,day,hour,slat,slon,selev,launch,parts,kinds,doubt,"
                      "pres,height,height_computed,tdry,dp,wspd,wdir\n");
}

TEST(SoundingTable, RowHoldsASoundingAndOneOfItsLevels) {
    Sounding sounding;
    sounding.form = Corvane::WMO_TEMP_MOBIL;
    sounding.station = "A,B";
    sounding.day = 3;
    sounding.hour = 0;
    sounding.latitude = -12.5;
    sounding.longitude = 130.9;
    sounding.elevation = 37.4904;
    sounding.launch = "0930";
    sounding.letters = "AB";
    SoundingLevel level;
    level.pressure = 998;
    level.height = 123.456;
    level.heightComputed = true;
    level.temperature = -0.0;
    level.dewpoint = -3.2;
    level.windSpeed = 2.572;
    level.windDirection = 85;
    level.kinds = SoundingLevel::SURFACE | SoundingLevel::SIGNIFICANT;
    level.doubts = {"lapse-rate", "unit"};
    sounding.levels = {level};
    EXPECT_EQ(rowsOf(sounding),
              "TEMP MOBIL,\"A,B\",3,0,-12.5,130.9,37.4904,0930,AB,surface significant,lapse-rate unit,"
              "998,123,1,0,-3.2,2.572,85\n");
}

TEST(SoundingTable, WhatIsNotGivenIsEmpty) {
    Sounding sounding;
    sounding.form = Corvane::WMO_TEMP_DROP;
    sounding.day = 20;
    sounding.hour = 12;
    sounding.letters = "B";
    SoundingLevel level;
    level.pressure = 3.5;
    level.kinds = SoundingLevel::SIGNIFICANT;
    sounding.levels = {level};
    EXPECT_EQ(rowsOf(sounding), "TEMP DROP,,20,12,,,,,B,significant,,3.5,,,,,,\n");
}

TEST(SoundingTable, HeightSaysWhetherItIsComputed) {
    Sounding sounding;
    sounding.form = Corvane::WMO_TEMP;
    SoundingLevel level;
    level.pressure = 500;
    level.height = 5500;
    sounding.levels = {level};
    EXPECT_EQ(rowsOf(sounding), "TEMP,,0,0,,,,,,,,500,5500,0,,,,\n");
    sounding.levels[0].height = 80.5;
    EXPECT_EQ(rowsOf(sounding), "TEMP,,0,0,,,,,,,,500,80.5,0,,,,\n");
    sounding.levels[0].heightComputed = true;
    sounding.levels[0].height = -0.4;
    EXPECT_EQ(rowsOf(sounding), "TEMP,,0,0,,,,,,,,500,0,1,,,,\n");
}

TEST(SoundingTable, SoundingWithoutLevelsHasNoRows) {
    EXPECT_EQ(rowsOf(Sounding()), "");
}

TEST(SoundingTable, RowsOfRealPartsComeByDescendingPressure) {
    const std::vector<Sounding> soundings = sounding_test::soundingsOf(
        {sounding_test::decoded("TTBB 63008 70219 00000 20256 11950 15022 21212 11998 02504 31313 42408 82301"),
         sounding_test::decoded("TTAA 63001 70219 99000 20256 08510 00038 20256 06505 92703 13007 03007 88999 77999")});
    ASSERT_EQ(soundings.size(), 1U);
    const std::string rows = rowsOf(soundings[0]);
    // 55 and 477 m: integrating in 200,000 steps gives 55.30 and 477.41.
    const std::string begin = "TEMP,70219,13,0,,,,2301,AB,";
    EXPECT_EQ(rows, begin + "surface mandatory significant,,1000,38,0,20.2,14.2,2.572,65\n" +  //
                        begin + "significant,,998,55,1,,,2.0576,25\n" +                        //
                        begin + "significant,,950,477,1,15,12.8,,\n" +                         //
                        begin + "mandatory,,925,703,0,13,12.3,3.6008,30\n");
}

}  // namespace
