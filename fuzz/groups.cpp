// Reports that begin well: the opening of one of the four code forms and of one part, then groups of the sections, made
// and spoilt as the bytes say. The bytes are an alphabet that can be written by hand; README.md lists it.
#include "Properties.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// Hands out the bytes one by one; zeros when they are used up.
class Bytes {
public:
    Bytes(const std::uint8_t* first, std::size_t size) : next(first), end(first + size) {}

    bool used() const { return next == end; }

    std::uint8_t number() { return used() ? std::uint8_t{0} : *next++; }

    char raw() { return static_cast<char>(number()); }

    // One of these characters: the one that the byte is, or else some other.
    char oneOf(const std::string& characters) {
        const std::uint8_t byte = number();
        const char wanted = static_cast<char>(byte);
        return characters.find(wanted) != std::string::npos ? wanted : characters[byte % characters.size()];
    }

    // A figure of a group: mostly a digit or a solidus, for the upper half of the bytes a character that a number
    // reader might take or stumble over.
    char figure() {
        static const std::string PLAIN = "0123456789/+-.";
        static const std::string STRANGE = "/+-.eExXiInNfFaAdD,'=\t";
        const std::uint8_t byte = number();
        const char wanted = static_cast<char>(byte);
        if (PLAIN.find(wanted) != std::string::npos) {
            return wanted;
        }
        return byte < 0x80 ? PLAIN[byte % 10] : STRANGE[byte % STRANGE.size()];
    }

    std::string figures(int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += figure();
        }
        return text;
    }

private:
    const std::uint8_t* next;
    const std::uint8_t* end;
};

class ReportMaker {
public:
    explicit ReportMaker(Bytes source) : bytes(source) {}

    std::string make() {
        const char form = bytes.oneOf("TUXI");
        typeLetters = std::string(2, form);
        const char partLetter = bytes.oneOf("ABCD");
        heading(bytes.oneOf("-HCO"));
        opening(partLetter);
        while (!bytes.used()) {
            group();
        }
        std::string text;
        for (const std::string& each : groups) {
            text += each + " ";
        }
        return text;
    }

private:
    using Make = void (ReportMaker::*)();

    struct Maker {
        char letter;
        Make make;
    };

    void add(const std::string& group) { groups.push_back(group); }

    // An index into the groups, which are never none: the opening comes first, and the last group stays.
    std::size_t anyIndex() { return bytes.number() % groups.size(); }

    // ---- beginning -------------------------------------------------------------------------------------------------

    void heading(char kind) {
        if (kind == '-') {
            return;
        }
        add("USJP01");
        add("RJTD");
        add("060000");
        if (kind == 'O') {
            add("COR");
            add("RRA");
        }
        if (kind != 'H') {
            add("CCA");
        }
    }

    // MMMM and section 1, as sound as the form and the part want them.
    void opening(char partLetter) {
        part = partLetter;
        surface = 0;
        levelNumber = 0;
        add(typeLetters + std::string(2, part));
        const bool sentFromSea = typeLetters == "UU";
        const bool mobile = typeLetters == "II";
        if (sentFromSea || mobile) {
            add("9ZT9MRK");
        }
        const std::string day = bytes.oneOf("KM") == 'K' ? "56" : "06";
        std::string last(1, '/');
        switch (part) {
        case 'A': last = bytes.oneOf("/012345789"); break;
        case 'B': last = bytes.figure(); break;
        case 'C': last = bytes.oneOf("/012357"); break;
        default: break;
        }
        add(day + "12" + last);
        if (typeLetters == "TT") {
            add("72201");
            return;
        }
        add("99241");
        add(std::string(1, bytes.oneOf("1357/")) + "0830");
        add("08143");
        if (mobile) {
            add(bytes.oneOf("/0") == '/' ? "////5" : "01235");
        }
    }

    void nextPart() { opening(bytes.oneOf("BCDA")); }

    // ---- levels ----------------------------------------------------------------------------------------------------

    void ground() { add("99" + bytes.figures(3)); }

    void standardSurface() {
        static constexpr std::array<const char*, 11> PART_A{"00", "92", "85", "70", "50", "40",
                                                            "30", "25", "20", "15", "10"};
        static constexpr std::array<const char*, 9> PART_C{"70", "50", "30", "20", "10", "07", "05", "03", "01"};
        const std::size_t index = surface++;
        const std::string code = part == 'C' ? PART_C[index % PART_C.size()] : PART_A[index % PART_A.size()];
        add(code + bytes.figures(3));
    }

    void temperature() { add(bytes.figures(5)); }

    void noTemperature() { add("/////"); }

    void significantPressure() {
        const char number = static_cast<char>('0' + levelNumber);
        levelNumber = levelNumber % 9 + 1;
        add(std::string(2, number) + bytes.figures(3));
    }

    void tropopause() { add("88" + bytes.figures(3)); }
    void noTropopause() { add("88999"); }
    void maximumWind() { add("77" + bytes.figures(3)); }
    void topWind() { add("66" + bytes.figures(3)); }
    void noMaximumWind() { add("77999"); }
    void shears() { add("4" + bytes.figures(4)); }
    void windSection() { add("21212"); }

    // ---- additional groups -----------------------------------------------------------------------------------------

    void soundingSection() { add("31313"); }
    void launchTime() { add("8" + bytes.figures(4)); }
    void cloudSection() { add("41414"); }
    void regionalSection() { add("51515"); }

    void nationalSection() {
        const char digit = bytes.oneOf("123456789");
        add({'6', digit, '6', digit, '6'});
    }

    // ---- remarks of a dropsonde ------------------------------------------------------------------------------------

    void remarks() { add("62626"); }

    void position(const char* keyword, int timeFigures) {
        add(keyword);
        std::string place = bytes.figures(4);
        place += bytes.oneOf("NSX/");
        place += bytes.figures(5);
        place += bytes.oneOf("EWX/");
        add(place);
        add(bytes.figures(timeFigures));
    }

    void releasePoint() { position("REL", 6); }
    void splashPointByGps() { position("SPG", 6); }
    void splashPointByWind() { position("SPL", 4); }

    void lowestLayerWind() {
        add("WL150");
        add(bytes.figures(5));
        add(bytes.figures(3));
    }

    void deepLayerWind() {
        add("DLM");
        add("WND");
        add(bytes.figures(5));
        add(bytes.figures(6));
    }

    void boundaryLayerWind() {
        add("MBL");
        add("WND");
        add(bytes.figures(5));
    }

    void lastWind() {
        add("LST");
        add("WND");
        add(bytes.figures(3));
    }

    void verticalVelocity() {
        add("AEV");
        add(bytes.figures(5));
    }

    void eyewall() {
        add("EYEWALL");
        add(bytes.figures(3));
    }

    void lastReport() {
        add("LAST");
        add("REPORT");
    }

    void word() {
        static constexpr std::array<const char*, 24> WORDS{
            "WL",   "WND",  "REPORT", "LAST", "EYEWALL", "REL",  "AEV",  "SONDE", "FAILED", "XXXX1", "CCA", "COR",
            "TTBB", "XXCC", "IIAA",   "INF",  "NAN",     "0X1P", "1E99", "+",     "-",      ".",     "//",  "MXWNDBND"};
        add(WORDS[bytes.number() % WORDS.size()]);
    }

    // ---- changes ---------------------------------------------------------------------------------------------------

    void terminator() { groups.back() += '='; }
    void loneTerminator() { add("="); }

    void rawGroup() {
        std::string group;
        for (int length = bytes.number() % 16; length > 0; --length) {
            group += bytes.raw();
        }
        add(group);
    }

    void strayBlank() {
        std::string& last = groups.back();
        last.insert(bytes.number() % (last.size() + 1), " ");
    }

    void joined() {
        if (groups.size() > 1) {
            const std::string last = groups.back();
            groups.pop_back();
            groups.back() += last;
        }
    }

    void overwrite(std::string& group) {
        if (!group.empty()) {
            const std::size_t at = bytes.number() % group.size();
            group[at] = bytes.raw();
        }
    }

    void garbledLast() { overwrite(groups.back()); }
    void garbledAny() { overwrite(groups[anyIndex()]); }

    void shortened() {
        if (!groups.back().empty()) {
            groups.back().pop_back();
        }
    }

    void lengthened() { groups.back() += bytes.raw(); }

    void dropped() {
        if (groups.size() > 1) {
            groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(anyIndex()));
        }
    }

    void swapped() {
        const std::size_t first = anyIndex();
        std::swap(groups[first], groups[anyIndex()]);
    }

    void repeated() { add(std::string(groups[anyIndex()])); }

    // ---- choice ----------------------------------------------------------------------------------------------------

    void group() {
        static constexpr std::array<Maker, 43> MAKERS{{
            {'b', &ReportMaker::nextPart},
            {'s', &ReportMaker::ground},
            {'m', &ReportMaker::standardSurface},
            {'t', &ReportMaker::temperature},
            {'w', &ReportMaker::temperature},  // a wind has five figures, too
            {'/', &ReportMaker::noTemperature},
            {'n', &ReportMaker::significantPressure},
            {'k', &ReportMaker::tropopause},
            {'K', &ReportMaker::noTropopause},
            {'x', &ReportMaker::maximumWind},
            {'y', &ReportMaker::topWind},
            {'X', &ReportMaker::noMaximumWind},
            {'v', &ReportMaker::shears},
            {'2', &ReportMaker::windSection},
            {'3', &ReportMaker::soundingSection},
            {'8', &ReportMaker::launchTime},
            {'4', &ReportMaker::cloudSection},
            {'5', &ReportMaker::regionalSection},
            {'6', &ReportMaker::nationalSection},
            {'q', &ReportMaker::remarks},
            {'R', &ReportMaker::releasePoint},
            {'G', &ReportMaker::splashPointByGps},
            {'L', &ReportMaker::splashPointByWind},
            {'W', &ReportMaker::lowestLayerWind},
            {'D', &ReportMaker::deepLayerWind},
            {'M', &ReportMaker::boundaryLayerWind},
            {'S', &ReportMaker::lastWind},
            {'A', &ReportMaker::verticalVelocity},
            {'E', &ReportMaker::eyewall},
            {'Y', &ReportMaker::lastReport},
            {'J', &ReportMaker::word},
            {'=', &ReportMaker::terminator},
            {'#', &ReportMaker::loneTerminator},
            {'"', &ReportMaker::rawGroup},
            {'-', &ReportMaker::strayBlank},
            {'+', &ReportMaker::joined},
            {'~', &ReportMaker::garbledLast},
            {'*', &ReportMaker::garbledAny},
            {'<', &ReportMaker::shortened},
            {'>', &ReportMaker::lengthened},
            {'!', &ReportMaker::dropped},
            {'^', &ReportMaker::swapped},
            {'&', &ReportMaker::repeated},
        }};
        const std::uint8_t byte = bytes.number();
        if (byte == '\n' || byte == ' ') {
            return;  // to make a seed easier to read
        }
        const auto* maker = std::find_if(MAKERS.begin(), MAKERS.end(),
                                         [&](const Maker& each) { return each.letter == static_cast<char>(byte); });
        if (maker == MAKERS.end()) {
            maker = &MAKERS[byte % MAKERS.size()];
        }
        (this->*(maker->make))();
    }

    Bytes bytes;
    std::string typeLetters;
    char part = 'A';
    std::size_t surface = 0;
    int levelNumber = 0;
    std::vector<std::string> groups;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = ReportMaker(Bytes(data, size)).make();
    if (std::getenv("CORVANE_FUZZ_SHOW") != nullptr) {
        std::fwrite(text.data(), 1, text.size(), stderr);
        std::fputc('\n', stderr);
    }
    fuzz::everythingHolds(text);
    return 0;
}
