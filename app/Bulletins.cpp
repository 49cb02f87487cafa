#include "Bulletins.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <istream>
#include <optional>
#include <streambuf>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

namespace {

// The line that shows how much of a long file has been read, on a terminal only. The destructor removes it.
class Progress {
public:
    Progress(std::string name, off_t bytes)
        : wanted(bytes > 0 && isatty(STDERR_FILENO) == 1), label(std::move(name)), total(bytes) {}
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    Progress(Progress&&) = delete;
    Progress& operator=(Progress&&) = delete;

    // To be called when this many more bytes have been read.
    void advance(off_t bytes) {
        done = std::min(done + bytes, total);
        if (!wanted || std::chrono::steady_clock::now() < due) {
            return;
        }
        due = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
        std::cerr << "\r\033[K" << label << ": " << 100 * done / total << " %" << std::flush;
        shown = true;
    }

    // Removes the line, so that another one can be written.
    void clear() {
        if (shown) {
            std::cerr << "\r\033[K" << std::flush;
            shown = false;
        }
    }

private:
    bool wanted;
    std::string label;
    off_t total;
    off_t done = 0;
    bool shown = false;
    std::chrono::steady_clock::time_point due = std::chrono::steady_clock::now() + std::chrono::seconds(1);
};

// The bytes of an open file, as they come. Progress is shown with every block, since parts may be far apart.
class InputBuffer : public std::streambuf {
public:
    InputBuffer(int file, Progress& shown) : descriptor(file), progress(shown) {}

    // Why reading ended before the end of the file; 0 when it did not.
    int error() const { return failure; }

protected:
    int_type underflow() override {
        const ssize_t count = ::read(descriptor, block.data(), block.size());
        if (count <= 0) {
            failure = count < 0 ? errno : 0;
            return traits_type::eof();
        }
        progress.advance(count);
        setg(block.data(), block.data(), block.data() + count);
        return traits_type::to_int_type(block[0]);
    }

private:
    int descriptor;
    Progress& progress;
    int failure = 0;
    std::array<char, 65536> block{};
};

// The size of a regular file from where it is read; absent for anything else.
std::optional<off_t> sizeOf(int file) {
    struct stat information {};
    if (fstat(file, &information) != 0 || !S_ISREG(information.st_mode)) {
        return std::nullopt;
    }
    return information.st_size - lseek(file, 0, SEEK_CUR);
}

bool isOneOf(const std::vector<std::string>& inputs, const struct stat& file) {
    return S_ISREG(file.st_mode) && std::any_of(inputs.begin(), inputs.end(), [&file](const std::string& name) {
               struct stat input {};
               const int found = name == "-" ? fstat(STDIN_FILENO, &input) : stat(name.c_str(), &input);
               return found == 0 && input.st_dev == file.st_dev && input.st_ino == file.st_ino;
           });
}

// Whether a message could not be written, other than because standard error is closed: keepStandardStreams() has then
// opened it for reading.
bool messagesAreLost() {
    return !std::cerr && (fcntl(STDERR_FILENO, F_GETFL) & O_ACCMODE) != O_RDONLY;
}

const std::vector<std::string>& inputsOf(const std::vector<std::string>& files) {
    static const std::vector<std::string> STANDARD_INPUT{"-"};
    return files.empty() ? STANDARD_INPUT : files;
}

}  // namespace

bool overwritesInput(const std::string& file, const std::vector<std::string>& files) {
    struct stat output {};
    return stat(file.c_str(), &output) == 0 && isOneOf(inputsOf(files), output);
}

bool isStandardOutput(const std::string& file) {
    struct stat output {};
    struct stat named {};
    return fstat(STDOUT_FILENO, &output) == 0 && S_ISREG(output.st_mode) && stat(file.c_str(), &named) == 0 &&
           named.st_dev == output.st_dev && named.st_ino == output.st_ino;
}

bool Bulletins::writesIntoInput(const std::vector<std::string>& files) const {
    for (const auto& [descriptor, name] : {std::pair(STDOUT_FILENO, "output"), std::pair(STDERR_FILENO, "error")}) {
        struct stat output {};
        if (fstat(descriptor, &output) == 0 && isOneOf(inputsOf(files), output)) {
            say(program + ": standard " + name + " goes into an input");
            return true;
        }
    }
    return false;
}

void Bulletins::read(const std::vector<std::string>& files, const corvane::ReadOptions& options,
                     const Handler& handle) {
    for (const std::string& file : inputsOf(files)) {
        if (stopped) {
            return;
        }
        if (file == "-") {
            readInput(STDIN_FILENO, file, options, handle);
            continue;
        }
        const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
        if (descriptor < 0) {
            trouble(file, errno);
            continue;
        }
        readInput(descriptor, file, options, handle);
        close(descriptor);
    }
}

void Bulletins::readInput(int file, const std::string& name, const corvane::ReadOptions& options,
                          const Handler& handle) {
    const std::optional<off_t> size = sizeOf(file);
    Progress progress(name, size.value_or(0));
    InputBuffer bytes(file, progress);
    std::istream input(&bytes);
    corvane::BulletinReader bulletins(input, name);
    corvane::Part part;
    while (!stopped && bulletins.next(part)) {
        const corvane::Reading reading = corvane::read(part, options);
        count(reading);
        if (reading.status == corvane::Reading::REFUSED || reading.mended() || reading.doubtful()) {
            progress.clear();  // also for the handler, which may report the part
            if (!quiet) {
                report(part, reading);
            }
        }
        handle(part, reading, !size);
    }
    progress.clear();
    if (bytes.error() != 0) {
        trouble(name == "-" ? "standard input" : name, bytes.error());
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
    say(program + ": " + name + ": " + std::strerror(error));
}

ExitStatus Bulletins::status() const {
    if (troubled || messagesAreLost()) {
        return EXIT_TROUBLE;
    }
    return counts.refused > 0 || counts.lossy > 0 || counts.parts == 0 ? EXIT_PARTLY : EXIT_WHOLE;
}

// One write for a line, so that lines of programs that run side by side do not mix.
void Bulletins::say(const std::string& line) {
    std::cerr << line + '\n';
}
