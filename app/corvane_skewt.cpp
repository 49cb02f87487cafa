// The program corvane-skewt: raw bulletins in, a skew-T diagram of a sounding out, or the indices of all of them.
#include "Bulletins.h"
#include "CommandLine.h"
#include "IndicesTable.h"
#include "Output.h"

#include <corvane/Feed.h>
#include <corvane/Indices.h>
#include <corvane/SkewT.h>
#include <corvane/Sounding.h>

#include <CLI/CLI.hpp>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <fcntl.h>
#include <iostream>
#include <map>
#include <new>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr const char* PROGRAM = "corvane-skewt";

// The sizes of a picture, pixels: what its texts need, and what a viewer can show.
constexpr int LEAST_WIDTH = 400;
constexpr int LEAST_HEIGHT = 440;
constexpr int MOST_PIXELS = 10000;

// The pressures of its upper edge, hPa.
constexpr double LOWEST_TOP = 1.0;
constexpr double HIGHEST_TOP = 900.0;

struct Arguments {
    std::vector<std::string> files;
    std::string station;
    std::string folder;
    std::string units = "kt";
    std::string size;
    std::string top;
    bool indices = false;
    bool quiet = false;
    corvane::SkewTOptions picture;
};

// "1000x1100"; false for anything else and for a size out of bounds.
bool parseSize(std::string_view text, corvane::SkewTOptions& picture) {
    const char* const end = text.data() + text.size();
    const std::from_chars_result width = std::from_chars(text.data(), end, picture.width);
    if (width.ec != std::errc() || width.ptr == end || *width.ptr != 'x') {
        return false;
    }
    const std::from_chars_result height = std::from_chars(width.ptr + 1, end, picture.height);
    return height.ec == std::errc() && height.ptr == end && picture.width >= LEAST_WIDTH &&
           picture.width <= MOST_PIXELS && picture.height >= LEAST_HEIGHT && picture.height <= MOST_PIXELS;
}

// "100" or "12.5"; false for anything else and for a pressure out of bounds.
bool parseTop(const std::string& text, corvane::SkewTOptions& picture) {
    std::istringstream stream(text);  // not every library that compiles this has from_chars for numbers with decimals
    return stream >> std::noskipws >> picture.top && stream.peek() == std::istringstream::traits_type::eof() &&
           picture.top >= LOWEST_TOP && picture.top <= HIGHEST_TOP;
}

// @return the exit status when the program is to end at once.
std::optional<int> parse(int argc, char** argv, Arguments& arguments) {
    CLI::App app(
        "Reads bulletins of upper-air soundings (TEMP, TEMP SHIP, TEMP DROP, TEMP MOBIL) and draws one sounding\n"
        "as a skew-T log-p diagram: SVG on standard output.",
        PROGRAM);
    app.set_version_flag("--version", std::string(PROGRAM) + ' ' + CORVANE_VERSION);
    app.set_help_flag("--help", "Show this help and exit");
    app.add_option("FILE", arguments.files, "Bulletins to read; standard input when none is named, and for -");
    app.add_option("--station", arguments.station,
                   "The sounding of this station or call sign, or of this name in the list")
        ->option_text("NAME");
    auto* all = app.add_option("--all", arguments.folder, "Write every sounding into this folder, as STATION-DDHH.svg")
                    ->option_text("DIR");
    app.add_option("--units", arguments.units, "Unit of wind speeds: kt or mps (kt)")
        ->option_text("UNIT")
        ->check(CLI::IsMember({"kt", "mps"}));
    app.add_option("--top", arguments.top, "Pressure of the upper edge, 1 to 900 hPa (100)")->option_text("HPA");
    app.add_option("--size", arguments.size, "Width and height in pixels, 400x440 to 10000x10000 (1000x1100)")
        ->option_text("WxH");
    app.add_flag("--dark", arguments.picture.dark, "Light lines on a dark ground");
    app.add_flag("--indices", arguments.indices, "Write a table of the indices of all soundings instead of pictures")
        ->excludes(all);
    app.add_flag("--quiet", arguments.quiet, "Say nothing about what was mended, doubted or refused");
    try {
        needValues(argc, argv);
        app.parse(argc, argv);
        if (!arguments.size.empty() && !parseSize(arguments.size, arguments.picture)) {
            throw CLI::ValidationError("--size", "must be from 400x440 to 10000x10000, not " + arguments.size);
        }
        if (!arguments.top.empty() && !parseTop(arguments.top, arguments.picture)) {
            throw CLI::ValidationError("--top", "must be from 1 to 900, not " + arguments.top);
        }
    } catch (const CLI::Success& request) {
        return app.exit(request);
    } catch (const CLI::ParseError& error) {
        std::cerr << PROGRAM << ": " << error.what() << "\nTry '" << PROGRAM << " --help'.\n";
        return EXIT_TROUBLE;
    }
    arguments.picture.units =
        arguments.units == "mps" ? corvane::SkewTOptions::METRES_PER_SECOND : corvane::SkewTOptions::KNOTS;
    return std::nullopt;
}

// ---- names of soundings --------------------------------------------------------------------------------------------

std::string twoDigits(int number) {
    return number < 10 ? '0' + std::to_string(number) : std::to_string(number);
}

// Degrees to a tenth with the letter of the hemisphere: 15.3N.
std::string degrees(double value, char positive, char negative) {
    const long tenths = std::lround(std::fabs(value) * 10.0);
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + (value < 0.0 ? negative : positive);
}

// STATION-DDHH, with the position in place of the station of a TEMP DROP. Only characters that are safe in the name of
// a file.
std::string plainName(const corvane::Sounding& sounding) {
    std::string name = sounding.station;
    if (name.empty() && sounding.latitude && sounding.longitude) {
        name = degrees(*sounding.latitude, 'N', 'S') + degrees(*sounding.longitude, 'E', 'W');
    }
    for (char& character : name) {
        const bool isSafe = (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
                            (character >= 'a' && character <= 'z') || character == '.';
        character = isSafe ? character : '_';
    }
    if (name.empty() || name.front() == '.') {
        name.insert(0, 1, '_');
    }
    constexpr std::size_t LONGEST = 100;
    name.resize(std::min(name.size(), LONGEST));
    return name + '-' + twoDigits(sounding.day) + twoDigits(sounding.hour);
}

struct Named {
    std::string name;
    const corvane::Sounding* sounding;
};

// The soundings that hold levels, with names that differ: a second one of a name has -2, a third one -3.
std::vector<Named> named(const std::vector<corvane::Sounding>& soundings) {
    std::vector<Named> all;
    std::map<std::string, int> counts;
    for (const corvane::Sounding& sounding : soundings) {
        if (!sounding.levels.empty()) {
            const std::string name = plainName(sounding);
            const int count = ++counts[name];
            all.push_back({count == 1 ? name : name + '-' + std::to_string(count), &sounding});
        }
    }
    return all;
}

// ---- output --------------------------------------------------------------------------------------------------------

void writeIndices(const std::vector<Named>& chosen, Output& out) {
    corvane::table::appendIndicesHeader(out.text);
    out.text += '\n';
    for (const Named& one : chosen) {
        corvane::table::appendIndicesRow(out.text, *one.sounding, corvane::indicesOf(*one.sounding));
        out.text += '\n';
        out.written();
    }
}

// Writes a file for each sounding into a folder that is created if need be. One that cannot be written is reported, and
// the others are still written.
void writeAll(const std::vector<Named>& chosen, const Arguments& arguments, Bulletins& bulletins) {
    if (mkdir(arguments.folder.c_str(), 0777) != 0 && errno != EEXIST) {
        bulletins.trouble(arguments.folder, errno);
        return;
    }
    for (const Named& one : chosen) {
        const std::string file = arguments.folder + '/' + one.name + ".svg";
        const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (descriptor < 0) {
            bulletins.trouble(file, errno);
            continue;
        }
        Output out(descriptor);
        out.text = corvane::skewT(*one.sounding, arguments.picture);
        out.flush();
        const int error = out.error();
        if (close(descriptor) != 0 || error != 0) {
            bulletins.trouble(file, error != 0 ? error : errno);
        }
    }
}

void list(const std::vector<Named>& chosen) {
    std::string text = std::string(PROGRAM) + ": " + std::to_string(chosen.size()) +
                       " soundings: choose one with --station, or draw all of them with --all\n";
    for (const Named& one : chosen) {
        const corvane::Sounding& sounding = *one.sounding;
        text += one.name + ": " + corvane::formName(sounding.form) + ", day " + std::to_string(sounding.day) + ", " +
                twoDigits(sounding.hour) + " UTC, " + (sounding.letters.size() == 1 ? "part " : "parts ") +
                sounding.letters + ", " + std::to_string(sounding.levels.size()) +
                (sounding.levels.size() == 1 ? " level\n" : " levels\n");
    }
    std::cerr << text;
}

int run(const Arguments& arguments) {
    Bulletins bulletins(PROGRAM, true);
    if (bulletins.writesIntoInput(arguments.files)) {
        return EXIT_TROUBLE;
    }
    Output out(STDOUT_FILENO);
    corvane::Soundings collected;
    bulletins.read(arguments.files, {}, [&](const corvane::Part& part, const corvane::Reading& reading, bool) {
        collected.add(part, reading);
        const bool concerns = arguments.station.empty() || reading.station.empty() ||
                              arguments.station.compare(0, reading.station.size(), reading.station) == 0;
        if (!arguments.quiet && concerns) {
            Bulletins::report(part, reading);
        }
    });
    const std::vector<corvane::Sounding> soundings = collected.soundings();
    std::vector<Named> chosen;
    for (Named& one : named(soundings)) {
        if (arguments.station.empty() || arguments.station == one.sounding->station || arguments.station == one.name) {
            chosen.push_back(std::move(one));
        }
    }

    if (arguments.indices) {
        writeIndices(chosen, out);
    } else if (!arguments.folder.empty() && !chosen.empty()) {
        writeAll(chosen, arguments, bulletins);
    } else if (chosen.size() == 1) {
        out.text = corvane::skewT(*chosen.front().sounding, arguments.picture);
    } else if (chosen.size() > 1) {
        list(chosen);
        return EXIT_TROUBLE;
    }
    out.flush();
    if (out.error() != 0) {
        bulletins.trouble("standard output", out.error());
    }
    if (chosen.empty()) {
        if (!arguments.quiet) {
            bulletins.summarize();
        }
        std::cerr << PROGRAM << ": no sounding" << (arguments.station.empty() ? "" : " of " + arguments.station)
                  << '\n';
    }
    return bulletins.status() == EXIT_TROUBLE ? EXIT_TROUBLE : chosen.empty() ? EXIT_PARTLY : EXIT_WHOLE;
}

}  // namespace

int main(int argc, char** argv) {
    keepStandardStreams();
    Arguments arguments;
    if (const std::optional<int> status = parse(argc, argv, arguments)) {
        return *status;
    }
    try {
        return run(arguments);
    } catch (const std::bad_alloc&) {
        std::cerr << PROGRAM << ": out of memory\n";
        return EXIT_TROUBLE;
    }
}
