/// @file
/// Convective and other indices of a sounding, as forecasters read them below a skew-T diagram.
///
///     const corvane::Indices indices = corvane::indicesOf(sounding);
///     if (!std::isnan(indices.surface.lfcPressure)) {
///         std::cout << "CAPE " << indices.surface.cape << " J/kg from " << indices.surface.lfcPressure << " hPa up\n";
///     }
///
/// They are computed from the levels from the ground up. The ground is the surface level, or the lowest level where a
/// sounding has none. Between the levels that have them, temperature and dew point are interpolated linearly in ln p,
/// across gaps of any size. The formulas are in Thermodynamics.h.
///
/// Values that no atmosphere has count as not given: a pressure that is not between 0.01 and 2000 hPa or not below that
/// of the level before it, a temperature or dew point that is not between -150 and 100 degrees, a dew point of 0.1
/// kg/kg or more, a wind above 1000 m/s or from no direction between 0 and 360 degrees, a height beyond 200 km.
#ifndef CORVANE_INDICES_H
#define CORVANE_INDICES_H

#include <corvane/Sounding.h>

#include <limits>

namespace corvane {

/// What a parcel meets when it is lifted from one level of a sounding. Below its lifted condensation level it keeps its
/// potential temperature and mixing ratio; above it follows the pseudoadiabat. It is buoyant where its virtual
/// temperature exceeds that of the sounding. Without a level to lift it from, everything is NaN.
struct ParcelIndices {
    /// A value that the sounding cannot give: NaN.
    static constexpr double NONE = std::numeric_limits<double>::quiet_NaN();

    double pressure = NONE;        ///< of the parcel's level, hPa
    double lclPressure = NONE;     ///< lifted condensation level, hPa; also where it is above the top of the sounding
    double lclTemperature = NONE;  ///< degrees Celsius
    /// Level of free convection, hPa: of the layers above the lifted condensation level in which the parcel is buoyant,
    /// the lower end of the one with the largest area. NaN where there is no such layer.
    double lfcPressure = NONE;
    /// Equilibrium level, hPa: the upper end of the highest of these layers. NaN where there is none, and where the
    /// sounding ends inside the layer.
    double elPressure = NONE;
    /// Convective available potential energy, J/kg: the positive buoyancy from the level of free convection to the
    /// equilibrium level, or to the top of a sounding that ends below it. At least 0; 0 without a level of free
    /// convection.
    double cape = NONE;
    /// Convective inhibition, J/kg: the negative buoyancy from the parcel's level to the level of free convection. At
    /// most 0; 0 without a level of free convection.
    double cin = NONE;
    /// Temperature of the sounding at 500 hPa minus that of the parcel there, K. A parcel that starts above 500 hPa is
    /// taken down to it.
    double liftedIndex = NONE;
};

/// The indices of a sounding. NaN where the sounding cannot give a value.
struct Indices {
    /// A value that the sounding cannot give: NaN.
    static constexpr double NONE = std::numeric_limits<double>::quiet_NaN();

    ParcelIndices surface;  ///< of the lowest level that has temperature and dew point
    /// Of the level with the highest equivalent potential temperature in the lowest 300 hPa.
    ParcelIndices mostUnstable;
    double kIndex = NONE;                 ///< T850 - T500 + Td850 - (T700 - Td700), degrees Celsius
    double totalTotals = NONE;            ///< T850 + Td850 - 2 T500, degrees Celsius
    double precipitableWater = NONE;      ///< from the ground to the highest dew point, mm
    double freezingLevelPressure = NONE;  ///< where the temperature first falls below 0, hPa; NaN if it starts there
    double freezingLevelHeight = NONE;    ///< metres above the ground
    double wetBulbZeroPressure = NONE;    ///< the same for the wet-bulb temperature, hPa
    double wetBulbZeroHeight = NONE;      ///< metres above the ground
    double shear0To6Km = NONE;            ///< length of the wind vector 6000 m above the ground minus that at it, m/s
    double lapseRate700To500 = NONE;      ///< (T700 - T500) / (z500 - z700), K/km
};

/// The indices of a sounding. Whatever the levels hold, it throws nothing except std::bad_alloc when memory
/// runs out.
CORVANE_API Indices indicesOf(const Sounding& sounding);

}  // namespace corvane

#endif
