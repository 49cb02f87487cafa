#include "IndexTable.h"

#include "Svg.h"
#include "Units.h"

#include <cmath>

namespace corvane::skewt {

namespace {

constexpr const char* EM_DASH = "\xE2\x80\x94";

ParcelRow row(const char* name, double surface, double mostUnstable, int decimals) {
    return {name, indexText(surface, decimals), indexText(mostUnstable, decimals)};
}

// A height above the ground; the pressure where the sounding does not give heights.
std::string levelText(double height, double pressure) {
    return std::isnan(height) ? indexText(pressure, 0, "hPa") : indexText(height, 0, "m");
}

// A parcel is lifted to 500 hPa, not taken down to it.
double liftedIndexOf(const ParcelIndices& parcel) {
    return parcel.pressure >= 500.0 ? parcel.liftedIndex : ParcelIndices::NONE;
}

}  // namespace

std::string indexText(double value, int decimals, const std::string& unit) {
    if (!std::isfinite(value)) {
        return EM_DASH;
    }
    return unit.empty() ? shown(value, decimals) : shown(value, decimals) + ' ' + unit;
}

std::vector<ParcelRow> parcelRows(const Indices& indices) {
    const ParcelIndices& a = indices.surface;
    const ParcelIndices& b = indices.mostUnstable;
    return {row("Level, hPa", a.pressure, b.pressure, 0),
            row("LCL, hPa", a.lclPressure, b.lclPressure, 0),
            row("LCL, \xC2\xB0"
                "C",
                a.lclTemperature, b.lclTemperature, 1),
            row("LFC, hPa", a.lfcPressure, b.lfcPressure, 0),
            row("EL, hPa", a.elPressure, b.elPressure, 0),
            row("CAPE, J/kg", a.cape, b.cape, 0),
            row("CIN, J/kg", a.cin, b.cin, 0),
            row("Lifted index, K", liftedIndexOf(a), liftedIndexOf(b), 1)};
}

std::vector<IndexRow> indexRows(const Indices& indices, SkewTOptions::WindUnit unit) {
    return {{"K index", indexText(indices.kIndex, 1)},
            {"Total totals", indexText(indices.totalTotals, 1)},
            {"Precipitable water", indexText(indices.precipitableWater, 1, "mm")},
            {"Freezing level", levelText(indices.freezingLevelHeight, indices.freezingLevelPressure)},
            {"Wet-bulb zero", levelText(indices.wetBulbZeroHeight, indices.wetBulbZeroPressure)},
            {"Lapse rate 700\xE2\x80\x93"
             "500",
             indexText(indices.lapseRate700To500, 1, "K/km")},
            {"Shear 0\xE2\x80\x93"
             "6 km",
             indexText(inUnit(indices.shear0To6Km, unit), 0, unitName(unit))}};
}

}  // namespace corvane::skewt
