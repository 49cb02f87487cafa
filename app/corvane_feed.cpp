// The program corvane-feed: raw bulletins in, a table of the levels of every part out.
#include "Bulletins.h"
#include "CommandLine.h"
#include "FeedTable.h"
#include "Output.h"
#include "SoundingTable.h"

#include <cerrno>
#include <CLI/CLI.hpp>
#include <corvane/Feed.h>
#include <corvane/Sounding.h>
#include <fcntl.h>
#include <iostream>
#include <new>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr const char* PROGRAM = "corvane-feed";

struct Arguments {
    std::vector<std::string> files;
    std::string partsFile;
    bool noMends = false;
    bool print = false;
    bool soundings = false;
    bool quiet = false;
};

// @return the exit status when the program is to end at once.
std::optional<int> parse(int argc, char** argv, Arguments& arguments) {
    CLI::App app(
        "Reads bulletins of upper-air soundings (TEMP, TEMP SHIP, TEMP DROP, TEMP MOBIL) and writes a table of\n"
        "their levels to standard output. What was mended, lost, doubted or refused goes to standard error.",
        PROGRAM);
    app.set_version_flag("--version", std::string(PROGRAM) + ' ' + CORVANE_VERSION);
    app.set_help_flag("--help", "Show this help and exit");
    app.add_option("FILE", arguments.files, "Bulletins to read; standard input when none is named, and for -");
    app.add_flag("--no-mends", arguments.noMends, "Cut and check, but mend nothing");
    auto* print = app.add_flag("--print", arguments.print, "Write the parts as they are decoded instead of the table");
    app.add_flag("--soundings", arguments.soundings, "Write a row for each level of a whole sounding")->excludes(print);
    app.add_option("--parts", arguments.partsFile, "Write a table of all parts to this file")
        ->type_name("FILE")
        ->check([](const std::string& name) { return std::string(name.empty() ? "the name of a file is needed" : ""); },
                "");
    app.add_flag("--quiet", arguments.quiet, "Write only the summary to standard error");
    try {
        needValues(argc, argv);
        app.parse(argc, argv);
    } catch (const CLI::Success& request) {
        const int status = app.exit(request);
        return std::cout.flush() ? status : EXIT_TROUBLE;
    } catch (const CLI::ParseError& error) {
        std::cerr << PROGRAM << ": " << error.what() << "\nTry '" << PROGRAM << " --help'.\n";
        return EXIT_TROUBLE;
    }
    return std::nullopt;
}

int run(const Arguments& arguments) {
    Bulletins bulletins(PROGRAM, arguments.quiet);
    if (bulletins.writesIntoInput(arguments.files)) {
        return EXIT_TROUBLE;
    }
    Output table(STDOUT_FILENO);
    std::optional<Output> parts;
    if (!arguments.partsFile.empty()) {
        if (overwritesInput(arguments.partsFile, arguments.files)) {
            std::cerr << PROGRAM << ": " << arguments.partsFile << ": the table of parts would overwrite an input\n";
            return EXIT_TROUBLE;
        }
        if (isStandardOutput(arguments.partsFile)) {
            std::cerr << PROGRAM << ": " << arguments.partsFile << ": standard output goes to the same file\n";
            return EXIT_TROUBLE;
        }
        const int descriptor = open(arguments.partsFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (descriptor < 0) {
            bulletins.trouble(arguments.partsFile, errno);
            return bulletins.status();
        }
        parts.emplace(descriptor);
        corvane::table::appendPartsHeader(parts->text);
    }
    corvane::Soundings soundings;
    if (arguments.soundings) {
        corvane::table::appendSoundingHeader(table.text);
    } else if (!arguments.print) {
        corvane::table::appendFeedHeader(table.text);
    }

    corvane::ReadOptions options;
    options.mend = !arguments.noMends;
    bulletins.read(arguments.files, options,
                   [&](const corvane::Part& part, const corvane::Reading& reading, bool live) {
                       if (arguments.soundings) {
                           soundings.add(part, reading);
                       } else if (!arguments.print) {
                           corvane::table::appendFeedRows(table.text, part, reading);
                       } else if (reading.status == corvane::Reading::DECODED) {
                           corvane::table::appendGroups(table.text, reading);
                       }
                       if (parts) {
                           corvane::table::appendPartsRow(parts->text, part, reading);
                           parts->written(live);
                       }
                       table.written(live);
                       if (table.error() != 0 || (parts && parts->error() != 0)) {
                           bulletins.stop();  // a stream may be endless, and nobody gets its rows
                       }
                   });
    soundings.forEach([&table](const corvane::Sounding& sounding) {
        corvane::table::appendSoundingRows(table.text, sounding);
        table.written();
    });
    table.flush();
    if (table.error() != 0) {
        bulletins.trouble("standard output", table.error());
    }
    if (parts) {
        parts->flush();
        if (parts->error() != 0) {
            bulletins.trouble(arguments.partsFile, parts->error());
        }
    }
    bulletins.summarize();
    return bulletins.status();
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
