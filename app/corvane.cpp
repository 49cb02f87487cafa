// The program: decodes the report in a file or on standard input and writes the table of its levels to standard output.
#include "corvane.h"

#include "Table.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <string>
#include <unistd.h>
#include <utility>

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

}  // namespace

void csv(const Corvane& decoder) {
    corvane::table::writeTable(std::cout, decoder);
}

int corvaneProgram(int argc, char** argv) {
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
