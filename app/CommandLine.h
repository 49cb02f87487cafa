// What the programs add to the options of CLI11.
#ifndef CORVANE_APP_COMMANDLINE_H
#define CORVANE_APP_COMMANDLINE_H

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>

/// Throws CLI::ArgumentMismatch for an option that ends with "=": CLI11 takes the next argument for its value, so
/// `--parts= FILE` would overwrite an input.
inline void needValues(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--") {
            return;
        }
        if (argument.substr(0, 2) == "--" && argument.back() == '=') {
            throw CLI::ArgumentMismatch(std::string(argument) + " needs a value");
        }
    }
}

#endif
