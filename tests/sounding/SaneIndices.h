// What holds for the indices of any sounding.
#ifndef CORVANE_TESTS_SANE_INDICES_H
#define CORVANE_TESTS_SANE_INDICES_H

#include "IndicesTable.h"

#include <corvane/Indices.h>

#include <cmath>
#include <gtest/gtest.h>
#include <string>

inline void expectSaneParcel(const corvane::ParcelIndices& parcel) {
    const bool isThere = !std::isnan(parcel.pressure);
    EXPECT_EQ(std::isnan(parcel.cape), !isThere);
    EXPECT_EQ(std::isnan(parcel.cin), !isThere);
    EXPECT_EQ(std::isnan(parcel.lclPressure), !isThere);
    EXPECT_EQ(std::isnan(parcel.lclTemperature), !isThere);
    if (!isThere) {
        EXPECT_TRUE(std::isnan(parcel.lfcPressure));
        EXPECT_TRUE(std::isnan(parcel.liftedIndex));
        return;
    }
    EXPECT_GE(parcel.cape, 0.0);
    EXPECT_LE(parcel.cin, 0.0);
    EXPECT_LE(parcel.lclPressure, parcel.pressure * (1.0 + 1e-12));
    if (std::isnan(parcel.lfcPressure)) {
        EXPECT_EQ(parcel.cape, 0.0);
        EXPECT_EQ(parcel.cin, 0.0);
        EXPECT_TRUE(std::isnan(parcel.elPressure));
    } else {
        EXPECT_GT(parcel.cape, 0.0);
        EXPECT_LE(parcel.lfcPressure, parcel.lclPressure * (1.0 + 1e-12));
        EXPECT_FALSE(parcel.elPressure >= parcel.lfcPressure);
    }
}

inline void expectSane(const corvane::Sounding& sounding, const corvane::Indices& indices) {
    SCOPED_TRACE(sounding.station + " with " + std::to_string(sounding.levels.size()) + " levels");
    expectSaneParcel(indices.surface);
    expectSaneParcel(indices.mostUnstable);
    for (const corvane::table::IndexColumn& column : corvane::table::INDEX_COLUMNS) {
        EXPECT_FALSE(std::isinf(column.value(indices))) << column.name;
    }
    EXPECT_FALSE(indices.precipitableWater < 0.0);
    EXPECT_FALSE(indices.shear0To6Km < 0.0);
    EXPECT_FALSE(indices.mostUnstable.pressure > indices.surface.pressure);
    std::string row;
    corvane::table::appendIndices(row, indices);
    EXPECT_EQ(row.find_first_not_of(",.-+e0123456789"), std::string::npos) << row;
}

#endif
