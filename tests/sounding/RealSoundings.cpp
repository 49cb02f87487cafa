#include "RealSoundings.h"

#include "support/Samples.h"

#include <corvane/Feed.h>

#include <fstream>
#include <string_view>

namespace {

std::vector<corvane::Sounding> readSoundings(std::string_view letters) {
    std::vector<corvane::Sounding> all;
    for (const char* const folder : {"tests/sounding/data", "tests/reports"}) {
        for (const auto& path : filesIn(folder)) {
            if (path.extension() != ".txt") {
                continue;
            }
            std::ifstream file(path, std::ios::binary);
            corvane::BulletinReader bulletins(file, path.filename().string());
            corvane::Soundings collected;
            for (corvane::Part part; bulletins.next(part);) {
                if (letters.find(part.letter()) != std::string_view::npos) {
                    collected.add(part, corvane::read(part));
                }
            }
            const std::vector<corvane::Sounding> soundings = collected.soundings();
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
