#include "support/Samples.h"

#include "support/Places.h"
#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

fs::path sourceFile(const std::string& path) {
    return fs::path(sourcesPath()) / path;
}

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<fs::path> filesIn(const std::string& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(sourceFile(folder))) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<fs::path> filesBelow(const std::string& folder) {
    std::vector<fs::path> files;
    fs::recursive_directory_iterator entry(sourceFile(folder));
    for (; entry != fs::recursive_directory_iterator(); ++entry) {
        const std::string name = entry->path().filename().string();
        const bool isBuilt = name.rfind("build", 0) == 0 || name == "node_modules";
        if (name.front() == '.' || (entry->is_directory() && isBuilt)) {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file()) {
            files.push_back(entry->path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<fs::path> reportSamples() {
    std::vector<fs::path> reports;
    for (const char* const folder : {"examples/reports", "tests/reports"}) {
        for (const fs::path& file : filesIn(folder)) {
            if (file.extension() == ".txt") {
                reports.push_back(file);
            }
        }
    }
    std::sort(reports.begin(), reports.end(),
              [](const fs::path& first, const fs::path& second) { return first.filename() < second.filename(); });
    return reports;
}
