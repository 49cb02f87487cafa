// Any bytes as a stream of bulletins.
#include "BulletinProperties.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string broken = fuzz::brokenProperty(std::string(data, data + size));
    if (!broken.empty()) {
        std::fprintf(stderr, "VIOLATED: %s\n", broken.c_str());
        std::abort();
    }
    return 0;
}
