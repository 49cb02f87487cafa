// The thermodynamics of moist air. Formulas and sources are in the header.
#include <corvane/Thermodynamics.h>

#include <cmath>
#include <limits>

namespace corvane {

using namespace constants;

namespace {

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();

// The longest step of the integration along a pseudoadiabat, in ln p.
constexpr double LONGEST_STEP = 0.05;

double finiteOrNone(double value) {
    return std::isfinite(value) ? value : NONE;
}

bool isPressure(double pressure) {
    return pressure > 0.0 && std::isfinite(pressure);
}

}  // namespace

double saturationVapourPressure(double temperature) {
    if (temperature <= -243.5) {
        return 0.0;
    }
    return finiteOrNone(6.112 * std::exp(17.67 * temperature / (temperature + 243.5)));
}

double mixingRatio(double dewpoint, double pressure) {
    const double e = saturationVapourPressure(dewpoint);
    return isPressure(pressure) && e < pressure ? MOLAR_MASS_RATIO * e / (pressure - e) : NONE;
}

double dewpointOfMixingRatio(double ratio, double pressure) {
    if (!(ratio > 0.0) || !isPressure(pressure)) {
        return NONE;
    }
    const double exponent = std::log(ratio * pressure / (MOLAR_MASS_RATIO + ratio) / 6.112);
    return exponent < 17.67 ? finiteOrNone(243.5 * exponent / (17.67 - exponent)) : NONE;
}

double virtualTemperature(double temperature, double dewpoint, double pressure) {
    if (std::isnan(dewpoint)) {
        return temperature;
    }
    const double r = mixingRatio(dewpoint, pressure);
    return finiteOrNone((temperature + ZERO_CELSIUS) * (1.0 + r / MOLAR_MASS_RATIO) / (1.0 + r) - ZERO_CELSIUS);
}

double dryAdiabat(double temperature, double fromPressure, double toPressure) {
    const double kelvins = temperature + ZERO_CELSIUS;
    if (!(kelvins > 0.0) || !isPressure(fromPressure) || !isPressure(toPressure)) {
        return NONE;
    }
    return finiteOrNone(kelvins * std::pow(toPressure / fromPressure, KAPPA) - ZERO_CELSIUS);
}

CondensationLevel liftedCondensationLevel(double temperature, double dewpoint, double pressure) {
    const double kelvins = temperature + ZERO_CELSIUS;
    const double dewpointKelvins = dewpoint + ZERO_CELSIUS;
    if (!(kelvins > 0.0) || !std::isfinite(kelvins) || !isPressure(pressure) || !(dewpointKelvins > 56.0)) {
        return {NONE, NONE};
    }
    if (dewpoint >= temperature) {
        return {pressure, temperature};
    }
    const double atLevel = 1.0 / (1.0 / (dewpointKelvins - 56.0) + std::log(kelvins / dewpointKelvins) / 800.0) + 56.0;
    return {pressure * std::pow(atLevel / kelvins, 1.0 / KAPPA), atLevel - ZERO_CELSIUS};
}

double pseudoadiabaticLapse(double temperature, double pressure) {
    const double kelvins = temperature + ZERO_CELSIUS;
    if (!(kelvins > 0.0)) {
        return NONE;
    }
    const double r = mixingRatio(temperature, pressure);
    const double latentHeat = 2.501e6 - 2370.0 * temperature;
    const double warming = (1.0 + r / MOLAR_MASS_RATIO) * (DRY_GAS_CONSTANT * kelvins + latentHeat * r);
    const double capacity =
        DRY_HEAT_CAPACITY + r * VAPOUR_HEAT_CAPACITY +
        latentHeat * latentHeat * r * (MOLAR_MASS_RATIO + r) / (DRY_GAS_CONSTANT * kelvins * kelvins);
    return finiteOrNone(warming / capacity);
}

// The classical Runge-Kutta method of fourth order, in equal steps of ln p. Any two numbers above 0 are less than
// 30,000 steps from each other.
double pseudoadiabat(double temperature, double fromPressure, double toPressure) {
    if (std::isnan(temperature) || !isPressure(fromPressure) || !isPressure(toPressure)) {
        return NONE;
    }
    const double distance = std::log(toPressure) - std::log(fromPressure);  // the quotient could be infinite
    const int steps = 1 + static_cast<int>(std::fabs(distance) / LONGEST_STEP);
    const double step = distance / steps;
    const double halfStep = std::exp(0.5 * step);
    double pressure = fromPressure;
    for (int taken = 0; taken < steps; ++taken) {
        const double middle = pressure * halfStep;
        const double next = middle * halfStep;
        const double first = pseudoadiabaticLapse(temperature, pressure);
        const double second = pseudoadiabaticLapse(temperature + 0.5 * step * first, middle);
        const double third = pseudoadiabaticLapse(temperature + 0.5 * step * second, middle);
        const double fourth = pseudoadiabaticLapse(temperature + step * third, next);
        temperature += step / 6.0 * (first + 2.0 * second + 2.0 * third + fourth);
        pressure = next;
    }
    return finiteOrNone(temperature);
}

double equivalentPotentialTemperature(double temperature, double dewpoint, double pressure) {
    const double saturated = std::fmin(dewpoint, temperature);
    const double atLevel = liftedCondensationLevel(temperature, dewpoint, pressure).temperature + ZERO_CELSIUS;
    const double kelvins = temperature + ZERO_CELSIUS;
    const double r = mixingRatio(saturated, pressure);
    const double dry = kelvins * std::pow(1000.0 / (pressure - saturationVapourPressure(saturated)), KAPPA) *
                       std::pow(kelvins / atLevel, 0.28 * r);
    return finiteOrNone(dry * std::exp((3036.0 / atLevel - 1.78) * r * (1.0 + 0.448 * r)));
}

double wetBulbTemperature(double temperature, double dewpoint, double pressure) {
    const CondensationLevel lcl = liftedCondensationLevel(temperature, dewpoint, pressure);
    return pseudoadiabat(lcl.temperature, lcl.pressure, pressure);
}

double thickness(double lowerPressure, double upperPressure, double meanVirtualTemperature) {
    const double kelvins = meanVirtualTemperature + ZERO_CELSIUS;
    if (!(kelvins > 0.0) || !isPressure(lowerPressure) || !isPressure(upperPressure)) {
        return NONE;
    }
    return finiteOrNone(DRY_GAS_CONSTANT / GRAVITY * kelvins * std::log(lowerPressure / upperPressure));
}

}  // namespace corvane
