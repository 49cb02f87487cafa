// A program of another project: decodes the dropsonde report examples/reports/drop-maria-2017.txt with the library it
// was built with and compares what it gets with what the groups of the report say. The expected numbers are read from
// the report by hand; each row names its groups.
// Usage: consumer REPORT VERSION
#include <corvane/Corvane.h>

#include <cmath>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

int faults = 0;

template <typename Value>
void expectEqual(const std::string& what, const Value& got, const Value& expected) {
    if (!(got == expected)) {
        std::cerr << what << ": got " << got << ", expected " << expected << '\n';
        ++faults;
    }
}

void expectNear(const std::string& what, double got, double expected) {
    if (!(std::abs(got - expected) < 1e-9)) {
        std::cerr << what << ": got " << got << ", expected " << expected << '\n';
        ++faults;
    }
}

using Fields = std::map<Corvane::LEVEL_FIELD, double>;

void expectFields(const std::string& what, const Fields& got, const Fields& expected) {
    expectEqual(what + ", number of quantities", got.size(), expected.size());
    for (const auto& [field, value] : expected) {
        const std::string name = what + ", " + Corvane::Level::fieldName(field);
        const auto found = got.find(field);
        if (found == got.end()) {
            std::cerr << name << ": absent\n";
            ++faults;
        } else {
            expectNear(name, found->second, value);
        }
    }
}

constexpr double KNOT = 0.5144;  // m/s

Fields observation(double pressure, double temperature, double dewPoint, double direction, double knots) {
    return {{Corvane::LF_PRES, pressure},
            {Corvane::LF_TDRY, temperature},
            {Corvane::LF_DP, dewPoint},
            {Corvane::LF_WSPD, knots * KNOT},
            {Corvane::LF_WDIR, direction}};
}

Fields atHeight(double height, Fields fields) {
    fields[Corvane::LF_HEIGHT] = height;
    return fields;
}

void checkStationAndTime(const Corvane& report) {
    expectEqual<std::string>("heading", report.abrHeader(), "UZNT13 KNHC 200250");
    expectEqual<std::string>("code form", report.wmoType(), "TEMP DROP");  // XXAA
    expectEqual<std::string>("station number", report.bsn(), "");
    expectEqual<std::string>("call sign", report.callSign(), "");
    expectNear("latitude", report.latitude(), 15.3);     // 99153
    expectNear("longitude", report.longitude(), -65.9);  // 70659: quadrant 7 is north and west
    expectEqual("day", report.dayOfMonth(), 20);         // 70035 and 70038: 70 is 20 + 50, knots
    expectEqual("knots", report.windsInKnots(), true);
    expectEqual("hour", report.obsHour(), 3);
    expectEqual("time of launch", report.obsTime(), 231);  // 31313 09608 80231
}

void checkLevels(const Corvane& report) {
    const std::vector<Corvane::Level> surface = report.levels({Corvane::LT_SURFACE});
    expectEqual<std::size_t>("surfaces", surface.size(), 1);
    if (!surface.empty()) {
        // 99007 29456 28521
        expectFields("surface", surface[0].fields, observation(1007, 29.4, 29.4 - 6, 285, 21));
    }

    const std::vector<Fields> expected{
        atHeight(67, observation(1000, 28.8, 28.8 - 6, 285, 23)),      // 00067 28856 28523
        atHeight(755, observation(925, 22.2, 22.2 - 1.7, 300, 27)),    // 92755 22217 30027
        atHeight(1489, observation(850, 19.0, 19.0 - 2.7, 315, 24)),   // 85489 19027 31524
        atHeight(3139, observation(700, 11.4, 11.4 - 4.2, 290, 22)),   // 70139 11442 29022
        atHeight(5870, observation(500, -4.7, -4.7 - 9.0, 295, 22))};  // 50587 04759 29522
    const std::vector<Corvane::Level> standard = report.levels({Corvane::LT_MANDATORY});
    expectEqual("standard surfaces", standard.size(), expected.size());
    for (std::size_t i = 0; i < standard.size() && i < expected.size(); ++i) {
        expectEqual<std::string>("kind", standard[i].name(), "mandatory");
        expectFields("standard surface " + std::to_string(i), standard[i].fields, expected[i]);
    }

    // Part B: 22 levels of temperature, 00007 11911 to 33410 13561, and after 21212 eleven of wind.
    expectEqual<std::size_t>("significant levels", report.levels({Corvane::LT_SIGNIFICANT}).size(), 33);

    // The highest level is in both lists of part B: 33410 13561 and 11410 29524.
    const std::vector<Corvane::Level> profile = report.profile();
    expectEqual<bool>("profile", profile.empty(), false);
    if (!profile.empty()) {
        expectFields("top of the profile", profile[0].fields, observation(410, -13.5, -13.5 - 11, 295, 24));
    }
}

// Exceptions of both types must pass from the library to its caller.
void checkFaults() {
    std::string caught = "nothing";
    try {
        const Corvane report("TTAA 56001 72201 99");
    } catch (const std::string& fault) {
        caught = fault;
    }
    expectEqual<std::string>("coding fault", caught, "At least 2 code groups are required. Error detected at99  ...");

    bool tooShort = false;
    try {
        const Corvane report("XXAA 70035 99153 70659 04355 99007 29456 2");  // a wind group of one character
    } catch (const std::out_of_range&) {
        tooShort = true;
    } catch (const std::string& fault) {
        caught = fault;
    }
    expectEqual("group too short", tooShort, true);
}

// A subclass can call the decoders, also those in a shared library.
class OneGroup : public Corvane {
public:
    explicit OneGroup(const std::string& group) { tokenQueue.push_back(group); }
    using Corvane::decodeTTTDD;
};

void checkSubclass() {
    double temperature = 0.0;
    double dewPoint = 0.0;
    OneGroup group("28856");
    expectEqual("flags of 28856", group.decodeTTTDD(temperature, dewPoint), 3);
    expectNear("temperature of 28856", temperature, 28.8);
    expectNear("dew point of 28856", dewPoint, 22.8);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::cerr << "usage: consumer REPORT VERSION\n";
        return 2;
    }
    std::ifstream file(argv[1]);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    expectEqual<std::string>("version in the header", CORVANE_VERSION, argv[2]);
    try {
        const Corvane report(text);
        checkStationAndTime(report);
        checkLevels(report);
        checkFaults();
        checkSubclass();
    } catch (const std::string& fault) {
        std::cerr << fault << '\n';
        return 1;
    }
    return faults == 0 ? 0 : 1;
}
