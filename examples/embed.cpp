// Reads a report from a file and prints its station, its time and its profile from the ground up. For a report that is
// refused it prints the message, which shows the groups at the fault.
//
//     c++ -std=c++17 embed.cpp $(pkg-config --cflags --libs corvane) -o embed
//     ./embed reports/drop-maria-2017.txt
#include <corvane/Corvane.h>

#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// One quantity of a level, or a dash where the report does not give it.
void print(const Corvane::Level& level, Corvane::LEVEL_FIELD field) {
    const auto found = level.fields.find(field);
    std::cout << std::setw(9);
    if (found != level.fields.end()) {
        std::cout << found->second;
    } else {
        std::cout << '-';
    }
}

void print(const Corvane& report) {
    std::cout << report.wmoType();
    if (!report.bsn().empty()) {
        std::cout << ", station " << report.bsn();
    } else {
        if (!report.callSign().empty()) {
            std::cout << ' ' << report.callSign();
        }
        std::cout << ", at " << report.latitude() << ' ' << report.longitude();
    }
    std::cout << ", day " << report.dayOfMonth() << ", " << report.obsHour() << " UTC";
    if (report.obsTime() >= 0) {
        std::cout << ", launched " << std::setfill('0') << std::setw(4) << report.obsTime() << std::setfill(' ');
    }
    std::cout << "\n      hPa        m     degC      dew      deg      m/s\n";

    const std::vector<Corvane::Level> profile = report.profile();  // lowest pressure first
    for (auto level = profile.rbegin(); level != profile.rend(); ++level) {
        for (const Corvane::LEVEL_FIELD field : {Corvane::LF_PRES, Corvane::LF_HEIGHT, Corvane::LF_TDRY, Corvane::LF_DP,
                                                 Corvane::LF_WDIR, Corvane::LF_WSPD}) {
            print(*level, field);
        }
        std::cout << '\n';
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    std::ifstream file(argc == 2 ? argv[1] : "");
    if (!file) {
        std::cerr << "usage: embed REPORT\n";
        return 2;
    }
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    try {
        print(Corvane(text));
        return 0;
    } catch (const std::string& fault) {  // a coding fault
        std::cerr << argv[1] << ": " << fault << '\n';
    } catch (const std::out_of_range&) {  // a group too short for its content
        std::cerr << argv[1] << ": a group is too short\n";
    }
    return 1;
}
