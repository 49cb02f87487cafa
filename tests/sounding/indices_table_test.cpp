// The table of indices: its columns, its numbers, its rows.
#include "IndicesTable.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using namespace corvane;

TEST(IndicesTable, HeaderNamesTheColumns) {
    std::string header;
    table::appendIndicesHeader(header);
    EXPECT_EQ(header,
              "form,station,day,hour,levels,sb_p,sb_lcl_p,sb_lcl_t,sb_lfc_p,sb_el_p,sb_cape,sb_cin,sb_li,mu_p,"
              "mu_lcl_p,mu_lcl_t,mu_lfc_p,mu_el_p,mu_cape,mu_cin,mu_li,k_index,total_totals,pw,fzl_p,fzl_z,wbz_p,"
              "wbz_z,shear_0_6km,lr_700_500");
}

TEST(IndicesTable, NumbersStandInTheOrderOfTheHeader) {
    Indices indices;
    indices.surface = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, -7.0, 8.0};
    indices.mostUnstable = {9.0, 10.0, 11.0, 12.0, 13.0, 14.0, -15.0, 16.0};
    indices.kIndex = 17.0;
    indices.totalTotals = 18.0;
    indices.precipitableWater = 19.0;
    indices.freezingLevelPressure = 20.0;
    indices.freezingLevelHeight = 21.0;
    indices.wetBulbZeroPressure = 22.0;
    indices.wetBulbZeroHeight = 23.0;
    indices.shear0To6Km = 24.0;
    indices.lapseRate700To500 = 25.0;
    std::string row;
    table::appendIndices(row, indices);
    EXPECT_EQ(row, ",1,2,3,4,5,6,-7,8,9,10,11,12,13,14,-15,16,17,18,19,20,21,22,23,24,25");
}

TEST(IndicesTable, AMissingValueIsEmpty) {
    std::string row;
    table::appendIndices(row, Indices());
    EXPECT_EQ(row, std::string(25, ','));
}

TEST(IndicesTable, NumbersHaveSixSignificantDigits) {
    std::string text;
    for (const double number :
         {1234.5678, -0.0, 0.000012345678, 850.0, Indices::NONE, std::numeric_limits<double>::infinity()}) {
        table::appendIndex(text, number);
        text += ' ';
    }
    EXPECT_EQ(text, "1234.57 0 1.23457e-05 850   ");
}

TEST(IndicesTable, RowBeginsWithTheSounding) {
    Sounding sounding;
    sounding.form = Corvane::WMO_TEMP_SHIP;
    sounding.station = "A,\"B\"";
    sounding.day = 6;
    sounding.hour = 0;
    sounding.levels.resize(3);
    std::string row;
    table::appendIndicesRow(row, sounding, Indices());
    EXPECT_EQ(row, "TEMP SHIP,\"A,\"\"B\"\"\",6,0,3" + std::string(25, ','));
}

}  // namespace
