/// @file
/// The thermodynamics of moist air: one formula for each quantity of a skew-T diagram.
///
/// Temperatures and dew points are in degrees Celsius and pressures in hPa, except where a function says kelvins.
/// Saturation is over water at every temperature, and condensed water falls out at once (a pseudoadiabatic ascent
/// without ice). Lifting a parcel from the surface of a sounding:
///
///     const corvane::CondensationLevel lcl = corvane::liftedCondensationLevel(30.0, 20.0, 1000.0);
///     const double aloft = corvane::pseudoadiabat(lcl.temperature, lcl.pressure, 500.0);
///
/// No function throws. A result is NaN where an argument is NaN or lies outside what the formula can take: a pressure
/// or an absolute temperature that is not above 0, or a vapour pressure that reaches the pressure.
///
/// Sources: D. Bolton, The computation of equivalent potential temperature, Mon. Wea. Rev. 108 (1980), 1046-1053;
/// R. Davies-Jones, An efficient and accurate method for computing the wet-bulb temperature along pseudoadiabats,
/// Mon. Wea. Rev. 136 (2008), 2764-2785.
#ifndef CORVANE_THERMODYNAMICS_H
#define CORVANE_THERMODYNAMICS_H

#include <corvane/Corvane.h>

namespace corvane {

/// The constants of the formulas.
namespace constants {
constexpr double ZERO_CELSIUS = 273.15;          ///< K
constexpr double DRY_GAS_CONSTANT = 287.04;      ///< R_d, J/(kg K)
constexpr double DRY_HEAT_CAPACITY = 1005.7;     ///< c_pd, J/(kg K)
constexpr double VAPOUR_HEAT_CAPACITY = 1870.0;  ///< c_pv, J/(kg K)
constexpr double MOLAR_MASS_RATIO = 0.622;       ///< eps, of water to dry air
constexpr double KAPPA = 0.2854;                 ///< exponent of the potential temperature (Bolton 1980)
constexpr double GRAVITY = 9.80665;              ///< m/s^2; heights are geopotential
}  // namespace constants

/// Saturation vapour pressure over water, hPa: e_s = 6.112 exp(17.67 t / (t + 243.5)) (Bolton 1980, eq. 10). For a
/// dew point it is the vapour pressure. 0 at -243.5 degrees and below, the limit of the formula there.
CORVANE_API double saturationVapourPressure(double temperature);

/// Mixing ratio of air with this dew point, kg/kg: r = 0.622 e / (p - e). For a temperature it is the mixing ratio at
/// saturation.
CORVANE_API double mixingRatio(double dewpoint, double pressure);

/// The dew point at which air of this pressure has this mixing ratio in kg/kg: a mixing-ratio line of the diagram. The
/// inverse of mixingRatio().
CORVANE_API double dewpointOfMixingRatio(double ratio, double pressure);

/// Virtual temperature: T_v = T (1 + r/eps) / (1 + r) in kelvins, returned in degrees Celsius. With a dew point of
/// NaN the air counts as dry and has its temperature.
CORVANE_API double virtualTemperature(double temperature, double dewpoint, double pressure);

/// The temperature of unsaturated air that is brought to another pressure: T (p2/p1)^kappa. To 1000 hPa it is the
/// potential temperature.
CORVANE_API double dryAdiabat(double temperature, double fromPressure, double toPressure);

/// Where rising air becomes saturated.
struct CondensationLevel {
    double pressure;     ///< hPa
    double temperature;  ///< degrees Celsius
};

/// Lifted condensation level: T_L = 1 / (1/(T_d - 56) + ln(T/T_d)/800) + 56 in kelvins (Bolton 1980, eq. 15) and
/// p_L = p (T_L/T)^(1/kappa). Air whose dew point reaches its temperature is saturated where it is.
CORVANE_API CondensationLevel liftedCondensationLevel(double temperature, double dewpoint, double pressure);

/// How the temperature of saturated air changes along a pseudoadiabat, K per unit of ln p:
///
///     dT/dln p = (1 + r/eps) (R_d T + L r) / (c_pd + r c_pv + L^2 r (eps + r) / (R_d T^2))
///
/// with r at saturation and L = 2.501e6 - 2370 t J/kg (Bolton 1980, eq. 2).
CORVANE_API double pseudoadiabaticLapse(double temperature, double pressure);

/// The temperature of saturated air that is brought to another pressure along its pseudoadiabat, up or down. A curve is
/// drawn by going from point to point: each temperature is the start of the next step. The error of the integration is
/// below 0.00001 K.
CORVANE_API double pseudoadiabat(double temperature, double fromPressure, double toPressure);

/// Equivalent potential temperature, K (Bolton 1980, eq. 39):
///
///     theta_e = theta_DL exp((3036/T_L - 1.78) r (1 + 0.448 r))
///     theta_DL = T (1000/(p - e))^kappa (T/T_L)^(0.28 r)
///
/// with T_L from liftedCondensationLevel() and r in kg/kg.
CORVANE_API double equivalentPotentialTemperature(double temperature, double dewpoint, double pressure);

/// Wet-bulb temperature: up to the lifted condensation level and from there down to the pressure of the air along the
/// pseudoadiabat. Continued to 1000 hPa along the same curve, it becomes the wet-bulb potential temperature.
CORVANE_API double wetBulbTemperature(double temperature, double dewpoint, double pressure);

/// Thickness of the layer between two pressures in geopotential metres by the hypsometric equation,
/// R_d/g T_v ln(p1/p2). Negative where the second pressure is the higher one.
/// @param lowerPressure pressure of the lower boundary, hPa.
/// @param upperPressure pressure of the upper boundary, hPa.
/// @param meanVirtualTemperature degrees Celsius, mean over ln p; for one that is linear in ln p the mean of both ends.
CORVANE_API double thickness(double lowerPressure, double upperPressure, double meanVirtualTemperature);

}  // namespace corvane

#endif
