// The sample files: reports with what the program makes of them, and the seeds of the fuzz targets. The folders are
// read at each run, so a new file is tested at once.
#ifndef CORVANE_TESTS_SAMPLES_H
#define CORVANE_TESTS_SAMPLES_H

#include <filesystem>
#include <string>
#include <vector>

// A file of the source tree by its path from the root.
std::filesystem::path sourceFile(const std::string& path);

// The content of a file. Throws std::runtime_error when it cannot be read.
std::string contentOf(const std::filesystem::path& path);

// The files directly in a folder of the source tree, by name. Throws std::filesystem::filesystem_error when there is no
// such folder.
std::vector<std::filesystem::path> filesIn(const std::string& folder);

// The files in a folder of the source tree and in all below it, except hidden ones and those of build folders.
std::vector<std::filesystem::path> filesBelow(const std::string& folder);

// The texts in examples/reports and in tests/reports, by name.
std::vector<std::filesystem::path> reportSamples();

#endif
