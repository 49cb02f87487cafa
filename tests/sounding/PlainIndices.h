// A second opinion on the indices of a sounding: the definitions computed without regard to speed, in steps of a fifth
// of a hectopascal, with formulas and an integration of its own. It shares nothing with the library but the sounding.
#ifndef CORVANE_TESTS_PLAIN_INDICES_H
#define CORVANE_TESTS_PLAIN_INDICES_H

#include <corvane/Sounding.h>

#include <map>
#include <string>

// The indices by the names of the table's columns. An index that the sounding cannot give is not in the map. The
// virtual temperature of the parcels is raised by some kelvins, to see how much depends on it.
std::map<std::string, double> plainIndices(const corvane::Sounding& sounding, double warmer = 0.0);

// The temperature in degrees of saturated air that rises or sinks, by Heun's method in steps of pressure.
double plainPseudoadiabat(double temperature, double fromPressure, double toPressure, double step);

// The wet-bulb temperature, by bisection: the temperature from which the pseudoadiabat leads to the condensation level.
double plainWetBulb(double temperature, double dewpoint, double pressure);

#endif
