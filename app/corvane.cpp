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

// The words that a descriptor gives, each followed by one space, and one more space unless the input ends in a word.
// The decoder finds the same groups in the text as it is: the program promises to hand over joined words, but nothing
// it writes can show that it does.
std::string gatherReport(int descriptor, const std::string& name) {
    std::string text;
    bool inWord = false;
    std::array<char, 4096> buffer;  // most reports fit
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

// A file that cannot be opened counts as an empty report; one that cannot be read is a fault.
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
    // C streams are not used here; not sharing buffers with them saves a system call.
    std::ios_base::sync_with_stdio(false);

    if (argc > 2) {
        // Deliberately on standard output, not on standard error.
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
