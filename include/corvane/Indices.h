/// @file
/// Convective and other indices of a sounding, as forecasters read them below a skew-T diagram.
#ifndef CORVANE_INDICES_H
#define CORVANE_INDICES_H

#include <corvane/Sounding.h>

#include <limits>

namespace corvane {

/// What a parcel lifted from one level of a sounding meets. NaN where there is none.
struct ParcelIndices {
    static constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
    double pressure = NONE;        ///< of the parcel's level, hPa
    double lclPressure = NONE;     ///< lifting condensation level, hPa
    double lclTemperature = NONE;  ///< degrees Celsius
    double lfcPressure = NONE;     ///< level of free convection, hPa
    double elPressure = NONE;      ///< equilibrium level, hPa
    double cape = NONE;            ///< convective available potential energy, J/kg, at least 0
    double cin = NONE;             ///< convective inhibition, J/kg, at most 0
    double liftedIndex = NONE;     ///< K, at 500 hPa
};

/// The indices of a sounding. NaN where the sounding cannot give a value.
struct Indices {
    static constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
    ParcelIndices surface;                ///< the surface parcel
    ParcelIndices mostUnstable;           ///< the parcel with the highest theta_e in the lowest 300 hPa
    double kIndex = NONE;                 ///< degrees Celsius
    double totalTotals = NONE;            ///< degrees Celsius
    double precipitableWater = NONE;      ///< mm
    double freezingLevelPressure = NONE;  ///< hPa
    double freezingLevelHeight = NONE;    ///< metres above the ground
    double wetBulbZeroPressure = NONE;    ///< hPa
    double wetBulbZeroHeight = NONE;      ///< metres above the ground
    double shear0To6Km = NONE;            ///< bulk shear between the surface and 6000 m above it, m/s
    double lapseRate700To500 = NONE;      ///< K/km
};

/// The indices of a sounding. Never throws for any levels, whatever they hold.
CORVANE_API Indices indicesOf(const Sounding& sounding);

}  // namespace corvane

#endif
