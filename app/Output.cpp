#include "Output.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <unistd.h>

void Output::written(bool atOnce) {
    constexpr std::size_t ENOUGH = 65536;
    if (atOnce || text.size() >= ENOUGH) {
        flush();
    }
}

void Output::flush() {
    std::size_t done = 0;
    while (done < text.size() && failure == 0) {
        const ssize_t count = write(descriptor, text.data() + done, text.size() - done);
        if (count >= 0) {
            done += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            failure = errno;
        }
    }
    text.clear();
}

void keepStandardStreams() {
    // The lowest free descriptor is taken, so that they are opened in this order.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1) {
            static_cast<void>(open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}
