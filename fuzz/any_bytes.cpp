// Any bytes as the text of a report.
#include "Properties.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::everythingHolds(std::string(data, data + size));
    return 0;
}
