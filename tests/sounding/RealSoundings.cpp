#include "RealSoundings.h"

#include "support/Samples.h"

#include <corvane/Feed.h>

#include <sstream>

std::vector<corvane::Sounding> soundingsIn(const std::string& bulletins, const std::string& name,
                                           std::string_view letters) {
    std::istringstream input(bulletins);
    corvane::BulletinReader reader(input, name);
    corvane::Soundings collected;
    for (corvane::Part part; reader.next(part);) {
        if (letters.find(part.letter()) != std::string_view::npos) {
            collected.add(part, corvane::read(part));
        }
    }
    return collected.soundings();
}

namespace {

std::vector<corvane::Sounding> readSoundings(std::string_view letters) {
    std::vector<corvane::Sounding> all;
    for (const char* const folder : {"tests/sounding/data", "examples/bulletins", "tests/reports"}) {
        for (const auto& path : filesIn(folder)) {
            if (path.extension() != ".txt") {
                continue;
            }
            const auto soundings = soundingsIn(contentOf(path), path.filename().string(), letters);
            all.insert(all.end(), soundings.begin(), soundings.end());
        }
    }
    return all;
}

}  // namespace

const std::vector<corvane::Sounding>& realSoundings() {
    static const std::vector<corvane::Sounding> all = readSoundings("ABCD");
    return all;
}

const std::vector<corvane::Sounding>& realSoundingsOfPartA() {
    static const std::vector<corvane::Sounding> all = readSoundings("A");
    return all;
}
