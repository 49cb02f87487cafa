// The pressure group nnPPP of sections 5 and 6: what each part makes of it.
#ifndef CORVANE_TESTS_SIGNIFICANT_PRESSURES_H
#define CORVANE_TESTS_SIGNIFICANT_PRESSURES_H

struct SignificantPressure {
    const char* group;
    double partB;
    double partD;
    double elsewhere;

    // The pressure in a part: 0 to 3 for A to D, 4 for none.
    double in(int part) const { return part == 1 ? partB : part == 3 ? partD : elsewhere; }
};

inline constexpr SignificantPressure SIGNIFICANT_PRESSURES[] = {
    // part B: a thousand is left out below 100; part D: tenths
    {"00012", 1012, 1.2, 12},
    {"00015", 1015, 1.5, 15},
    {"00000", 1000, 0, 0},
    {"00099", 1099, 9.9, 99},
    {"11100", 100, 10.0, 100},
    {"11101", 101, 10.1, 101},
    {"11850", 850, 85.0, 850},
    {"11700", 700, 70.0, 700},
    {"11500", 500, 50.0, 500},
    {"22035", 1035, 3.5, 35},
    {"99999", 999, 99.9, 999},
    // any two characters number the level, also those of an opener that does not end the section
    {"//850", 850, 85.0, 850},
    {"AB850", 850, 85.0, 850},
    {"-1850", 850, 85.0, 850},
    {"41414", 414, 41.4, 414},
    {"51515", 515, 51.5, 515},
    {"61616", 616, 61.6, 616},
    {"69696", 696, 69.6, 696},
    // no number: zero
    {"11///", 1000, 0, 0},
    {"11/50", 1000, 0, 0},
    {"11ABC", 1000, 0, 0},
    {"11inf", 1000, 0, 0},
    {"11nan", 1000, 0, 0},
    // a leading number, taken as written: signs, points, exponents
    {"1185/", 1085, 8.5, 85},
    {"118AB", 1008, 0.8, 8},
    {"11+12", 1012, 1.2, 12},
    {"11-50", 950, -5.0, -50},
    {"11-5.", 995, -0.5, -5},
    {"119.9", 1009.9, 0.99, 9.9},
    {"11.5", 1000.5, 0.05, 0.5},
    {"111e1", 1010, 1.0, 10},
    {"111e2", 100, 10.0, 100},
    {"111e9", 1e9, 1e8, 1e9},
    {"1112e", 1000, 0, 0},
    {"110x1", 1000, 0, 0},
    // fewer than three digits
    {"118", 1008, 0.8, 8},
    {"1185", 1085, 8.5, 85},
    // what follows the fifth character is not read
    {"118509", 850, 85.0, 850},
    {"1185000012", 850, 85.0, 850},
};

#endif
