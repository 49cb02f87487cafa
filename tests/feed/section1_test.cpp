// Date, station, position and elevation.
#include "FeedParts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using corvane::Reading;
using feed_test::BEIJING;
using feed_test::DROP_A;
using feed_test::mendsOf;
using feed_test::readOnly;
using feed_test::reasonOf;
using feed_test::rowsOf;
using feed_test::SHIP_D;
using feed_test::statusOf;
using feed_test::with;

const std::string BAD_DATE = "The date and time group (YYGGId or YYGGa4) is incorrectly coded. ";

// Part A of a TEMP MOBIL with this elevation group.
std::string mobil(const std::string& elevation) {
    return "IIAA USBYZ01 58161 99450 71107 15640 " + elevation +
           " 99810 10659 12004 00120 ///// ///// 92/// ///// ///// 85/// ///// ///// 88999 77999";
}

TEST(Section1, DayHourAndStationOfATEMP) {
    const Reading reading = readOnly(BEIJING);
    EXPECT_EQ(reading.form, Corvane::WMO_TEMP);
    EXPECT_EQ(reading.letter, 'A');
    EXPECT_EQ(reading.station, "54511");
    EXPECT_EQ(reading.day, 28);
    EXPECT_EQ(reading.hour, 23);
    EXPECT_FALSE(reading.windsInKnots);
    EXPECT_FALSE(reading.latitude.has_value());
    EXPECT_FALSE(reading.longitude.has_value());
    EXPECT_FALSE(reading.elevation.has_value());
}

TEST(Section1, WindsAreInKnotsFromDay51On) {
    const Reading reading = readOnly("TTAA 6300/ 72572 99870 36683 08505 88999 77999");
    EXPECT_EQ(reading.day, 13);
    EXPECT_TRUE(reading.windsInKnots);
    EXPECT_EQ(rowsOf(reading), feed_test::Lines{"surface,870,36.6,3.6,2.572,85,,,,,"});
    EXPECT_EQ(rowsOf("TTAA 1300/ 72572 99870 36683 08505 88999 77999"),
              feed_test::Lines{"surface,870,36.6,3.6,5,85,,,,,"});
}

TEST(Section1, DaysAndHoursThatExist) {
    for (const std::string date : {"0100/", "3124/", "5100/", "8124/"}) {
        EXPECT_EQ(statusOf("TTAA " + date + " 72572 99870 36683 08505 88999 77999"), "decoded") << date;
    }
    for (const std::string date :
         {"0000/", "3200/", "5000/", "8200/", "0125/", "9912/", "0A00/", "13000/", "130", "/300/", "6300A"}) {
        EXPECT_EQ(reasonOf("TTAA " + date + " 72572 99870 36683 08505 88999 77999"),
                  BAD_DATE + "Error detected at " + date + " 72572 99870 36683 08505 88999 ...")
            << date;
    }
}

TEST(Section1, AStationNumberHasFiveDigits) {
    for (const std::string station : {"7257", "725722", "7257A", "7257/"}) {
        EXPECT_EQ(reasonOf("TTAA 6300/ " + station + " 99870 36683 08505 88999 77999"),
                  "The block and station number is incorrect. Error detected at " + station +
                      " 99870 36683 08505 88999 77999 ...");
    }
}

TEST(Section1, ARefusedPartHasWhatCanBeRead) {
    const Reading reading = readOnly("TTAA 3200/ 72572 99870 36683 08505 88999 77999");
    EXPECT_EQ(reading.status, Reading::REFUSED);
    EXPECT_EQ(reading.station, "72572");
    EXPECT_FALSE(reading.day.has_value());
    EXPECT_EQ(reading.fault.first, 0U);
    EXPECT_EQ(reading.fault.count, 1U);
    EXPECT_EQ(feed_test::givenOf(reading), "TTAA 3200/ 72572 99870 36683 08505 88999 77999");
    EXPECT_EQ(readOnly("TTAA 6300/ 7257 99870 36683 08505 88999 77999").day, 13);
}

TEST(Section1, CallSignAndPositionOfAShip) {
    const Reading reading = readOnly(SHIP_D);
    EXPECT_EQ(reading.station, "9ZT9MRK");
    EXPECT_EQ(reading.day, 6);
    EXPECT_EQ(reading.hour, 0);
    EXPECT_DOUBLE_EQ(reading.latitude.value(), 60.2);
    EXPECT_DOUBLE_EQ(reading.longitude.value(), -46.7);
}

TEST(Section1, ADropHasNoStation) {
    const Reading reading = readOnly(DROP_A);
    EXPECT_EQ(reading.station, "");
    EXPECT_DOUBLE_EQ(reading.latitude.value(), 15.3);
    EXPECT_DOUBLE_EQ(reading.longitude.value(), -65.9);
}

TEST(Section1, QuadrantsGiveTheSigns) {
    const auto positionOf = [](const std::string& quadrant) {
        const Reading reading = readOnly(with(DROP_A, "70659", quadrant + "0659"));
        return std::to_string(reading.latitude.value()) + ' ' + std::to_string(reading.longitude.value());
    };
    EXPECT_EQ(positionOf("1"), "15.300000 65.900000");
    EXPECT_EQ(positionOf("3"), "-15.300000 65.900000");
    EXPECT_EQ(positionOf("5"), "-15.300000 -65.900000");
    EXPECT_EQ(positionOf("7"), "15.300000 -65.900000");
}

TEST(Section1, ZeroDegreesHaveNoSign) {
    const Reading reading = readOnly(with(DROP_A, "99153 70659", "99000 50000"));
    EXPECT_FALSE(std::signbit(reading.latitude.value()));
    EXPECT_FALSE(std::signbit(reading.longitude.value()));
}

TEST(Section1, APositionThatIsNotGivenIsAbsent) {
    const Reading latitude = readOnly(with(DROP_A, "99153", "99///"));
    EXPECT_FALSE(latitude.latitude.has_value());
    EXPECT_DOUBLE_EQ(latitude.longitude.value(), -65.9);
    const Reading longitude = readOnly(with(DROP_A, "70659", "7////"));
    EXPECT_DOUBLE_EQ(longitude.latitude.value(), 15.3);
    EXPECT_FALSE(longitude.longitude.has_value());
}

TEST(Section1, WithoutAQuadrantThereIsNoPosition) {
    for (const std::string group : {"/////", "/0659"}) {
        const Reading reading = readOnly(with(DROP_A, "70659", group));
        EXPECT_EQ(reading.status, Reading::DECODED);
        EXPECT_FALSE(reading.latitude.has_value());
        EXPECT_FALSE(reading.longitude.has_value());
    }
}

TEST(Section1, PositionsThatCannotBeAreRefused) {
    EXPECT_EQ(statusOf(with(DROP_A, "99153", "99900")), "decoded");
    EXPECT_EQ(statusOf(with(DROP_A, "70659", "71800")), "decoded");
    for (const std::string latitude : {"99901", "99999", "98153", "9915", "99/53", "99A53"}) {
        EXPECT_EQ(reasonOf(with(DROP_A, "99153", latitude)).substr(0, 53),
                  "The latitude group (99LaLaLa) is incorrectly coded. E")
            << latitude;
    }
    for (const std::string longitude : {"71801", "79999", "20659", "80659", "7065", "706590", "7/659", "A0659"}) {
        EXPECT_EQ(reasonOf(with(DROP_A, "70659", longitude)).substr(0, 57),
                  "The longitude group (QcLoLoLoLo) is incorrectly coded. Er")
            << longitude;
    }
    EXPECT_EQ(statusOf(with(DROP_A, "99153 70659", "99999 79999")), "refused");
}

TEST(Section1, TheMarsdenSquareIsNotRead) {
    for (const std::string square : {"/////", "0435", "ABCDE"}) {
        EXPECT_EQ(rowsOf(with(DROP_A, "04355", square)).size(), feed_test::LEVELS_OF_DROP) << square;
    }
}

TEST(Section1, AShipWithACallSignOfTwoWordsIsRefused) {
    EXPECT_EQ(reasonOf(with(SHIP_D, "9ZT9MRK", "9ZT9 MRK")).substr(0, BAD_DATE.size()), BAD_DATE);
}

TEST(Section1, ElevationInMetresAndInFeet) {
    for (const std::string unit : {"1", "2", "3", "4"}) {
        EXPECT_DOUBLE_EQ(readOnly(mobil("1905" + unit)).elevation.value(), 1905.0);
    }
    for (const std::string unit : {"5", "6", "7", "8"}) {
        EXPECT_DOUBLE_EQ(readOnly(mobil("1000" + unit)).elevation.value(), 304.8);
    }
    EXPECT_EQ(readOnly(mobil("19053")).station, "USBYZ01");
    EXPECT_DOUBLE_EQ(readOnly(mobil("19053")).latitude.value(), 45.0);
}

TEST(Section1, AnElevationWithoutAUnitIsAbsent) {
    for (const std::string group : {"19050", "19059", "1905/"}) {
        const Reading reading = readOnly(mobil(group));
        EXPECT_EQ(reading.status, Reading::DECODED) << group;
        EXPECT_FALSE(reading.elevation.has_value()) << group;
    }
}

TEST(Section1, AnElevationThatIsNotGivenKeepsTheLevelsInPlace) {
    const feed_test::Lines levels = rowsOf(mobil("19053"));
    ASSERT_EQ(levels.size(), 2U);
    EXPECT_EQ(levels[0], "surface,810,10.6,1.6,2.0576,120,,,,,");
    for (const std::string group : {"/////", "////4"}) {
        const Reading reading = readOnly(mobil(group));
        EXPECT_EQ(rowsOf(reading), levels);
        EXPECT_FALSE(reading.elevation.has_value());
        EXPECT_EQ(mendsOf(reading),
                  feed_test::Lines{"elevation: " + group + " read as an elevation that is not given"});
    }
    const Reading given = readOnly(mobil("///0/"));
    EXPECT_EQ(rowsOf(given), levels);
    EXPECT_TRUE(given.mends.empty());
}

TEST(Section1, AnInvalidElevationGroupIsRefused) {
    for (const std::string group : {"1/053", "1905A", "190531", "1905", "///1/"}) {
        EXPECT_EQ(reasonOf(mobil(group)).substr(0, 58), "The elevation group (h0h0h0h0im) is incorrectly coded. Err")
            << group;
    }
}

}  // namespace
