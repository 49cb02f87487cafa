// The program: decodes the report in a file or on standard input and writes the table of its levels to standard output.
#include <corvane/Corvane.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <string>
#include <unistd.h>
#include <utility>

// Not in the anonymous namespace, so that tests can call it.
void csv(const Corvane& decoder);

namespace {

// A read that failed: its message.
struct ReadFault {
    std::string message;
};

bool isWhiteSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

// The words that a descriptor gives, each with one blank behind it, and one blank more when the input does not end in a
// word.
std::string gatherReport(int descriptor, const std::string& name) {
    std::string text;
    bool inWord = false;
    std::array<char, 4096> buffer;  // most reports fit, and a larger one costs more pages than it saves reads
    while (true) {
        const ssize_t length = read(descriptor, buffer.data(), buffer.size());
        if (length < 0 && errno == EINTR) {
            continue;
        }
        if (length < 0) {
            throw ReadFault{"corvane: " + name + ": " + std::strerror(errno)};
        }
        if (length == 0) {
            text += ' ';
            return text;
        }
        for (ssize_t i = 0; i < length; ++i) {
            const char character = buffer[static_cast<std::size_t>(i)];
            if (!isWhiteSpace(character)) {
                text += character;
                inWord = true;
            } else if (inWord) {
                text += ' ';
                inWord = false;
            }
        }
    }
}

// A file that cannot be opened is an empty report; one that cannot be read is not.
std::string gatherReportOf(const char* file) {
    const int descriptor = open(file, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return " ";
    }
    std::string text = gatherReport(descriptor, file);
    close(descriptor);
    return text;
}

// Writes a number as the stream does by default, six significant digits as %g gives them, without the printf that the
// stream goes through where the library can; the table then takes less than half the time.
void writeNumber(double number) {
#if defined(__cpp_lib_to_chars)
    std::array<char, 32> digits;
    const std::to_chars_result written =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::general, 6);
    std::cout.write(digits.data(), written.ptr - digits.data());
#else
    std::cout << number;
#endif
}

}  // namespace

/// Writes the table of the levels to standard output: a header, then a row a level, flushed row by row. A quantity that
/// a level has not is an empty field.
void csv(const Corvane& decoder) {
    // The shear values of a maximum wind, LF_VA and LF_VB, have no column; meant.
    static constexpr std::array<Corvane::LEVEL_FIELD, 10> COLUMNS{
        Corvane::LF_PRES,   Corvane::LF_TDRY, Corvane::LF_DP,  Corvane::LF_WSPD, Corvane::LF_WDIR,
        Corvane::LF_HEIGHT, Corvane::LF_TIME, Corvane::LF_LAT, Corvane::LF_LON,  Corvane::LF_PRES2};

    std::cout << "type,pres,tdry,dp,wspd,wdir,height,time,lat,lon,pres2" << std::endl;
    for (const Corvane::Level& level : decoder.allLevels()) {
        std::cout << level.name();
        for (const Corvane::LEVEL_FIELD column : COLUMNS) {
            std::cout << ',';
            const auto field = level.fields.find(column);
            if (field != level.fields.end()) {
                writeNumber(field->second);
            }
        }
        std::cout << std::endl;
    }
}

int main(int argc, char** argv) {
    // Nothing is shared with C streams and no stream waits for another: less to set up, and fewer writes.
    std::ios_base::sync_with_stdio(false);
    std::cin.tie(nullptr);
    std::cerr.tie(nullptr);

    if (argc > 2) {
        // On standard output, not on standard error; meant.
        std::cout << "Usage:" << std::endl
                  << "   " << argv[0] << " file" << std::endl
                  << "   " << argv[0] << " < file" << std::endl
                  << "    cat file | " << argv[0] << std::endl;
        return 1;
    }

    try {
        const Corvane decoder(argc == 2 ? gatherReportOf(argv[1]) : gatherReport(STDIN_FILENO, "standard input"));
        errno = 0;
        csv(decoder);
        if (!std::cout) {
            std::cerr << "corvane: standard output: " << std::strerror(errno != 0 ? errno : EIO) << std::endl;
            return 1;
        }
        return 0;
    } catch (const std::string& fault) {
        std::cerr << fault << std::endl;
    } catch (const ReadFault& fault) {
        std::cerr << fault.message << std::endl;
    }
    return 1;
}
