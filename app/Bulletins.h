// What the programs that read bulletins share: opening inputs, reporting what was done to parts, and counting.
#ifndef CORVANE_APP_BULLETINS_H
#define CORVANE_APP_BULLETINS_H

#include <corvane/Feed.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// Exit statuses.
enum ExitStatus {
    EXIT_WHOLE = 0,   ///< everything that holds data was decoded whole
    EXIT_PARTLY = 1,  ///< something was refused or lost, or nothing was found
    EXIT_TROUBLE = 2  ///< usage, an input that cannot be read, output that cannot be written
};

/// Whether a file is one of the inputs, under whatever name: writing to it would destroy the input.
bool overwritesInput(const std::string& file, const std::vector<std::string>& files);

/// Whether a file is the one that standard output is written to, under whatever name.
bool isStandardOutput(const std::string& file);

/// Reads the parts of several inputs and says on standard error what was done to them.
class Bulletins {
public:
    /// Called for every part. `live` says that the input is not a regular file, so that rows should be written at once.
    using Handler = std::function<void(const corvane::Part& part, const corvane::Reading& reading, bool live)>;

    /// @param name the name of the program, for messages.
    /// @param saysLittle whether to say nothing about single parts.
    Bulletins(std::string name, bool saysLittle) : program(std::move(name)), quiet(saysLittle) {}

    /// Reads inputs in their order; "-" is standard input, and so is an empty list. One that cannot be opened or read
    /// is reported, and the others are still read.
    void read(const std::vector<std::string>& files, const corvane::ReadOptions& options, const Handler& handle);

    /// Says what was done to a part, in a line for each mend, loss, doubt and refusal. read() does so unless it says
    /// little.
    static void report(const corvane::Part& part, const corvane::Reading& reading);

    /// Called by a handler: nothing more is read.
    void stop() { stopped = true; }

    /// Writes the line that counts the parts.
    void summarize() const;

    /// Whether standard output or standard error goes to one of the inputs: what is written would be read again. Says
    /// so.
    bool writesIntoInput(const std::vector<std::string>& files) const;

    /// Reports trouble: "PROGRAM: NAME: REASON".
    void trouble(const std::string& name, int error);

    /// The exit status that follows from what was read and reported. Messages that cannot be written are trouble.
    ExitStatus status() const;

    std::size_t decoded() const { return counts.decoded; }

private:
    void readInput(int file, const std::string& name, const corvane::ReadOptions& options, const Handler& handle);
    void count(const corvane::Reading& reading);
    static void say(const std::string& line);

    struct Counts {
        std::size_t parts = 0;
        std::size_t decoded = 0;
        std::size_t mended = 0;
        std::size_t lossy = 0;
        std::size_t doubtful = 0;
        std::size_t nil = 0;
        std::size_t empty = 0;
        std::size_t refused = 0;
    };

    std::string program;
    bool quiet;
    bool troubled = false;
    bool stopped = false;
    Counts counts;
};

#endif
