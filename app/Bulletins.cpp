#include "Bulletins.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The line that shows how far a long file is read, on a terminal only. Gone when the object goes.
class Progress {
public:
    Progress(std::string name, double bytes)
        : wanted(bytes > 0.0 && isatty(STDERR_FILENO) == 1), label(std::move(name)), total(bytes) {}
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    Progress(Progress&&) = delete;
    Progress& operator=(Progress&&) = delete;

    void show(std::uint64_t bytes) {
        if (!wanted || std::chrono::steady_clock::now() < due) {
            return;
        }
        due = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
        std::cerr << "\r\033[K" << label << ": " << static_cast<int>(100.0 * static_cast<double>(bytes) / total) << " %"
                  << std::flush;
        shown = true;
    }

    // Makes room for another line.
    void clear() {
        if (shown) {
            std::cerr << "\r\033[K" << std::flush;
            shown = false;
        }
    }

private:
    bool wanted;
    std::string label;
    double total;
    bool shown = false;
    std::chrono::steady_clock::time_point due = std::chrono::steady_clock::now() + std::chrono::seconds(1);
};

bool isRegularFile(const struct stat& information) {
    return S_ISREG(information.st_mode);
}

}  // namespace

void Bulletins::read(const std::vector<std::string>& files, const corvane::ReadOptions& options,
                     const Handler& handle) {
    static const std::vector<std::string> STANDARD_INPUT{"-"};
    for (const std::string& file : files.empty() ? STANDARD_INPUT : files) {
        if (stopped) {
            return;
        }
        struct stat information {};
        errno = 0;
        if (file == "-") {
            const bool regular = fstat(STDIN_FILENO, &information) == 0 && isRegularFile(information);
            readInput(std::cin, file, options, handle, !regular, 0.0);
            continue;
        }
        std::ifstream input(file, std::ios::binary);
        if (!input) {
            trouble(file, errno);
            continue;
        }
        const bool regular = stat(file.c_str(), &information) == 0 && isRegularFile(information);
        readInput(input, file, options, handle, !regular, regular ? static_cast<double>(information.st_size) : 0.0);
    }
}

void Bulletins::readInput(std::istream& input, const std::string& name, const corvane::ReadOptions& options,
                          const Handler& handle, bool live, double bytes) {
    Progress progress(name, bytes);
    corvane::BulletinReader bulletins(input, name);
    corvane::Part part;
    while (!stopped && bulletins.next(part)) {
        const corvane::Reading reading = corvane::read(part, options);
        count(reading);
        if (!quiet && (reading.status == corvane::Reading::REFUSED || reading.mended() || reading.doubtful())) {
            progress.clear();
            report(part, reading);
        }
        handle(part, reading, live);
        progress.show(bulletins.bytes());
    }
    progress.clear();
    if (input.bad()) {
        trouble(name == "-" ? "standard input" : name, errno);
    }
}

void Bulletins::report(const corvane::Part& part, const corvane::Reading& reading) {
    std::string beginning = part.source + ':' + std::to_string(part.line) + ": " + part.mmmm;
    if (!reading.station.empty()) {
        beginning += ' ' + reading.station;
    }
    beginning += ": ";
    for (const corvane::Mend& mend : reading.mends) {
        say(beginning + (mend.lost ? "lost: " : "mended: ") + mend.name + ": " + mend.text);
    }
    for (const corvane::Doubt& doubt : reading.doubts) {
        say(beginning + "doubtful: " + doubt.name + ": " + doubt.text);
    }
    if (reading.status == corvane::Reading::REFUSED) {
        say(beginning + "refused: " + reading.reason);
    }
}

void Bulletins::count(const corvane::Reading& reading) {
    ++counts.parts;
    switch (reading.status) {
    case corvane::Reading::DECODED:
        ++counts.decoded;
        counts.lossy += reading.lost() ? 1 : 0;
        counts.mended += reading.mended() && !reading.lost() ? 1 : 0;
        counts.doubtful += reading.doubtful() ? 1 : 0;
        break;
    case corvane::Reading::NIL: ++counts.nil; break;
    case corvane::Reading::EMPTY: ++counts.empty; break;
    case corvane::Reading::REFUSED: ++counts.refused; break;
    }
}

void Bulletins::summarize() const {
    say(program + ": " + std::to_string(counts.parts) + (counts.parts == 1 ? " part: " : " parts: ") +
        std::to_string(counts.decoded) + " decoded (" + std::to_string(counts.mended) + " mended, " +
        std::to_string(counts.lossy) + " with losses, " + std::to_string(counts.doubtful) + " doubtful), " +
        std::to_string(counts.nil) + " NIL, " + std::to_string(counts.empty) + " empty, " +
        std::to_string(counts.refused) + " refused");
}

void Bulletins::trouble(const std::string& name, int error) {
    troubled = true;
    say(program + ": " + name + ": " + std::strerror(error != 0 ? error : EIO));
}

ExitStatus Bulletins::status() const {
    if (troubled) {
        return EXIT_TROUBLE;
    }
    return counts.refused > 0 || counts.lossy > 0 || counts.parts == 0 ? EXIT_PARTLY : EXIT_WHOLE;
}

// One write for a line, so that lines of programs that run side by side do not mix.
void Bulletins::say(const std::string& line) {
    std::cerr << line + '\n';
}
