// Cutting: a stream of bytes into words, and words into parts.
//
// The state is the current heading and the open part, with a few words read ahead; nothing else, so that a stream may
// be endless and a part is given as soon as its end has been read.
#include "feed/Groups.h"

#include <corvane/Feed.h>

#include <algorithm>
#include <array>
#include <istream>
#include <utility>
#include <vector>

namespace corvane {

using namespace feed;

namespace {

struct Word {
    std::string text;
    std::string received;  // with the punctuation that the text has lost; empty where it had none
    std::uint64_t line = 0;
    std::uint64_t offset = 0;
    std::uint64_t end = 0;
    bool firstInLine = false;
    bool tooLong = false;  // the text is cut at MAXIMUM_GROUP_LENGTH
};

// What a byte means for the words around it.
enum class Meaning : unsigned char {
    WORD,             // part of a word
    SEPARATOR,        // spaces, control characters, bytes above 126
    CARRIAGE_RETURN,  // a separator that may end a line
    LINE_FEED,        // a separator that ends a line
    ALONE,            // a word of its own
    NOTHING           // dropped
};

constexpr std::array<Meaning, 256> meanings() {
    std::array<Meaning, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        table[byte] = byte <= ' ' || byte > 126 ? Meaning::SEPARATOR : Meaning::WORD;
    }
    table['\r'] = Meaning::CARRIAGE_RETURN;
    table['\n'] = Meaning::LINE_FEED;
    for (const char character : {'\x01', '\x02', '\x03', '\x04', '\x1a', '=', ';'}) {
        table[static_cast<unsigned char>(character)] = Meaning::ALONE;
    }
    table[0] = Meaning::NOTHING;
    return table;
}

// A table, because every byte of the input is looked up: it halves the time that cutting takes with comparisons.
constexpr std::array<Meaning, 256> MEANINGS = meanings();

Meaning meaningOf(char character) {
    return MEANINGS[static_cast<unsigned char>(character)];
}

// SOH, STX, ETX, EOT and SUB, the envelope of a bulletin on a circuit.
bool isEnvelope(char character) {
    return (character >= 1 && character <= 4) || character == 26;
}

bool saysSomething(std::string_view word) {
    return std::any_of(word.begin(), word.end(), [](char character) {
        return isLetter(character) || isDigit(character) || character == '/' || character == '$';
    });
}

// A group of five digits and solidi inside punctuation, such as (85489 or 85489. or '85489'; empty for another word.
// The word says something.
std::string_view groupInMarks(std::string_view word) {
    constexpr std::string_view MARKS = "!\"'*#.,:<>()[]\\";
    if (word.size() <= 5) {
        return {};  // most words
    }
    const std::size_t first = word.find_first_not_of(MARKS);
    const std::string_view inside = word.substr(first, word.find_last_not_of(MARKS) - first + 1);
    return inside.size() == 5 && isDigitsAndSolidi(inside) ? inside : std::string_view();
}

bool isAnyIdentifier(std::string_view word) {
    return isPartIdentifier(word) || isPilotIdentifier(word);
}

// Where a word such as TTAA56001 or 82302TTBB falls apart into MMMM and digits; 0 for any other word.
std::size_t placeOfGluedIdentifier(std::string_view word) {
    if (word.size() <= 4 || (!isLetter(word.front()) && !isLetter(word.back()))) {
        return 0;  // most words
    }
    if (isAnyIdentifier(word.substr(0, 4)) && isDigitsAndSolidi(word.substr(4))) {
        return 4;
    }
    const std::size_t last = word.size() - 4;
    return isAnyIdentifier(word.substr(last)) && isDigitsAndSolidi(word.substr(0, last)) ? last : 0;
}

// The indicators of a heading that are kept: every row repeats the heading, and a line may be endless. Real headings
// have two at most.
constexpr std::size_t MAXIMUM_INDICATORS = 8;

// The BBB words of an abbreviated heading: delayed, corrected, amended, segmented bulletins (WMO-No. 386).
bool isHeadingIndicator(std::string_view word) {
    return hasForm(word, "RR@") || hasForm(word, "CC@") || hasForm(word, "AA@") || hasForm(word, "P@@") ||
           word == "COR" || word == "AMD" || word == "RTD";
}

}  // namespace

class BulletinReader::Cutter {
public:
    Cutter(std::istream& bytes, std::string name) : input(bytes), source(std::move(name)) {}

    bool next(Part& part);

    std::uint64_t bytes() const { return position; }

private:
    bool fill();
    void pass(std::size_t count) {
        at += count;
        position += count;
    }
    bool readWord();
    void endPendingLines(bool beforeLineFeed);
    void finishWord();
    bool splitFront();
    const Word* peek(std::size_t index);
    Word take();

    bool isHeading();
    void takeHeading();
    bool isIdentifier();
    bool endsReport() const;
    void openPart();
    void takeGroup();
    void addGroup(Word&& word);
    void dropLastGroup();
    void close(Part& part);
    bool holdsSerialNumber() const;
    bool endsWithStationOfNext();

    std::istream& input;
    std::string source;

    std::array<char, 65536> buffer{};
    std::size_t at = 0;
    std::size_t filled = 0;
    std::uint64_t position = 0;  // of the byte buffer[at] in the input

    std::uint64_t line = 1;
    int carriageReturns = 0;  // read, and not yet counted as ends of lines
    bool lineIsEmpty = true;

    std::vector<Word> ahead;  // words read and not yet dealt with, hardly ever more than one
    std::string heading;
    std::uint64_t bulletin = 0;
    bool partIsOpen = false;
    bool lastGroupBeganLine = false;
    Part open;
};

// ---------------------------------------------------------------------------------------------------------------------
// Bytes to words
// ---------------------------------------------------------------------------------------------------------------------

// Takes what is there without waiting for a full buffer, so that a live stream is read as it comes.
bool BulletinReader::Cutter::fill() {
    at = 0;
    filled = 0;
    const int first = input.get();
    if (first == std::istream::traits_type::eof()) {
        return false;
    }
    buffer[0] = std::istream::traits_type::to_char_type(first);
    filled = 1;
    const std::streamsize available = input.rdbuf()->in_avail();
    if (available > 0) {
        input.read(buffer.data() + 1, std::min(available, static_cast<std::streamsize>(buffer.size()) - 1));
        filled += static_cast<std::size_t>(input.gcount());
    }
    return true;
}

// CR CR LF, CR LF, CR and LF each end one line.
void BulletinReader::Cutter::endPendingLines(bool beforeLineFeed) {
    const int ends = beforeLineFeed ? std::max(carriageReturns - 2, 0) + 1 : carriageReturns;
    if (ends > 0) {
        line += static_cast<std::uint64_t>(ends);
        lineIsEmpty = true;
    }
    carriageReturns = 0;
}

// Reads up to the end of the next word, which is collected in its place in `ahead`.
bool BulletinReader::Cutter::readWord() {
    Word& word = ahead.emplace_back();
    bool inWord = false;
    while (at < filled || fill()) {
        const std::size_t first = at;
        const Meaning meaning = meaningOf(buffer[first]);
        if (meaning == Meaning::NOTHING) {
            pass(1);
            continue;
        }
        if (inWord && meaning != Meaning::WORD) {
            finishWord();  // the byte is looked at again
            return true;
        }
        if (carriageReturns > 0 && meaning != Meaning::CARRIAGE_RETURN) {
            endPendingLines(meaning == Meaning::LINE_FEED);
        } else if (meaning == Meaning::LINE_FEED) {
            endPendingLines(true);
        }
        if (meaning != Meaning::WORD && meaning != Meaning::ALONE) {
            carriageReturns += meaning == Meaning::CARRIAGE_RETURN ? 1 : 0;
            pass(1);
            continue;
        }
        if (!inWord) {
            inWord = true;
            word.line = line;
            word.offset = position;
            word.firstInLine = lineIsEmpty;
        }
        if (meaning == Meaning::ALONE) {
            word.text = buffer[first];
            pass(1);
            word.end = position;
            finishWord();
            return true;
        }
        std::size_t end = first + 1;
        while (end < filled && meaningOf(buffer[end]) == Meaning::WORD) {
            ++end;
        }
        const std::size_t room = MAXIMUM_GROUP_LENGTH - word.text.size();
        word.tooLong = word.tooLong || end - first > room;
        word.text.append(buffer.data() + first, std::min(end - first, room));
        pass(end - first);
        word.end = position;
    }
    if (inWord) {
        finishWord();
    } else {
        ahead.pop_back();
    }
    return inWord;
}

// Keeps the last word of `ahead` if it says something.
void BulletinReader::Cutter::finishWord() {
    Word& word = ahead.back();
    if (meaningOf(word.text[0]) == Meaning::WORD && !saysSomething(word.text)) {
        ahead.pop_back();
        return;
    }
    lineIsEmpty = false;
    const std::string_view inside = groupInMarks(word.text);
    if (!inside.empty()) {
        word.received = word.text;
        word.text = std::string(inside);
    }
}

// Makes two words of the next one if it is an MMMM and the group beside it, such as TTAA56001 or 82302TTBB.
bool BulletinReader::Cutter::splitFront() {
    const std::size_t place = ahead.front().tooLong ? 0 : placeOfGluedIdentifier(ahead.front().text);
    if (place == 0) {
        return false;
    }
    Word rest = ahead.front();
    rest.text.erase(0, place);
    rest.offset += place;
    rest.firstInLine = false;
    ahead.front().text.erase(place);
    ahead.front().end = rest.offset;
    ahead.insert(ahead.begin() + 1, std::move(rest));
    return true;
}

// The word `index` places after the next one; nullptr when the input ends before it.
const Word* BulletinReader::Cutter::peek(std::size_t index) {
    while (ahead.size() <= index) {
        if (!readWord()) {
            return nullptr;
        }
    }
    return &ahead[index];
}

Word BulletinReader::Cutter::take() {
    Word word = std::move(ahead.front());
    ahead.erase(ahead.begin());
    return word;
}

// ---------------------------------------------------------------------------------------------------------------------
// Words to parts
// ---------------------------------------------------------------------------------------------------------------------

// TTAAii CCCC YYGGgg on one line.
bool BulletinReader::Cutter::isHeading() {
    const Word* word = peek(0);
    if (!isDesignator(word->text)) {
        return false;
    }
    const std::uint64_t headingLine = word->line;
    word = peek(1);
    if (word == nullptr || !isCentre(word->text)) {
        return false;
    }
    word = peek(2);
    return word != nullptr && word->line == headingLine && isHeadingTime(word->text);
}

void BulletinReader::Cutter::takeHeading() {
    ++bulletin;
    const std::uint64_t headingLine = peek(0)->line;
    heading = take().text;
    heading += ' ' + take().text;
    heading += ' ' + take().text;
    std::size_t indicators = 0;
    for (const Word* word = peek(0); word != nullptr && word->line == headingLine && isHeadingIndicator(word->text);
         word = peek(0)) {
        const Word indicator = take();
        if (++indicators <= MAXIMUM_INDICATORS) {
            heading += ' ' + indicator.text;
        }
    }
}

// An MMMM, of a PILOT too. An airport followed by a time, UUDD 061200Z, is not one.
bool BulletinReader::Cutter::isIdentifier() {
    const std::string_view word = peek(0)->text;
    if (isPilotIdentifier(word)) {
        return true;
    }
    if (!isPartIdentifier(word)) {
        return false;
    }
    const Word* following = peek(1);
    return following == nullptr || !hasForm(following->text, "ddddddZ");
}

bool BulletinReader::Cutter::endsReport() const {
    const std::string_view word = ahead.front().text;
    return word == "=" || word == ";" || word == "NNNN" || word == "$$" || word == "ZCZC";
}

void BulletinReader::Cutter::openPart() {
    const Word word = take();
    if (!isPartIdentifier(word.text)) {
        return;
    }
    partIsOpen = true;
    open.groups.clear();
    open.marks.clear();
    open.excess.clear();
    open.source = source;
    open.line = word.line;
    open.offset = word.offset;
    open.bulletin = bulletin;
    open.heading = heading;
    open.mmmm = word.text;
}

// Groups past the limit are read and dropped, up to the end of the part.
void BulletinReader::Cutter::addGroup(Word&& word) {
    if (!partIsOpen || !open.excess.empty()) {
        return;
    }
    if (word.tooLong) {
        open.excess = "A group has more than " + std::to_string(MAXIMUM_GROUP_LENGTH) + " characters.";
        return;
    }
    if (open.groups.size() == MAXIMUM_GROUPS) {
        open.excess = "The part has more than " + std::to_string(MAXIMUM_GROUPS) + " groups.";
        return;
    }
    if (!word.received.empty()) {
        open.marks.push_back({"marks", word.received + " read as " + word.text, false, {open.groups.size(), 1}});
    }
    lastGroupBeganLine = word.firstInLine;
    open.groups.push_back({std::move(word.text), word.offset, word.end});
}

void BulletinReader::Cutter::takeGroup() {
    addGroup(std::move(ahead.front()));
    ahead.erase(ahead.begin());
}

void BulletinReader::Cutter::dropLastGroup() {
    open.groups.pop_back();
    if (!open.marks.empty() && open.marks.back().groups.first == open.groups.size()) {
        open.marks.pop_back();
    }
}

// Exchanged, not moved: the next part is collected in the memory of the one before.
void BulletinReader::Cutter::close(Part& part) {
    partIsOpen = false;
    std::swap(part, open);
}

// One to four digits that begin a line just before a heading are the serial number of the new bulletin.
bool BulletinReader::Cutter::holdsSerialNumber() const {
    if (open.groups.empty() || !lastGroupBeganLine || !open.excess.empty()) {
        return false;
    }
    const std::string_view last = open.groups.back().text;
    return last.size() <= 4 && last.find_first_not_of("0123456789") == std::string_view::npos;
}

// 72233 TTBB 56008 72233: the station number is repeated before MMMM and belongs to the part that begins there.
bool BulletinReader::Cutter::endsWithStationOfNext() {
    if (open.groups.size() <= 2 || !open.excess.empty() || !hasForm(open.groups.back().text, "ddddd")) {
        return false;
    }
    const std::string& last = open.groups.back().text;
    const auto isLast = [&](std::size_t index) {
        const Word* word = peek(index);
        return word != nullptr && word->text == last;
    };
    return isLast(1) || isLast(2);
}

bool BulletinReader::Cutter::next(Part& part) {
    // What ends a part stays in `ahead` until the part is given, and is dealt with in the next call.
    while (peek(0) != nullptr) {
        const bool beginsBulletin = isHeading();  // before it is split: a heading may begin with TTAA01
        if (!beginsBulletin) {
            splitFront();
        }
        const char first = ahead.front().text[0];
        if (isDigit(first) || first == '/') {  // most words
            takeGroup();
            continue;
        }
        if (isEnvelope(first)) {
            if (partIsOpen) {
                close(part);
                return true;
            }
            take();
            heading.clear();
            ++bulletin;
        } else if (beginsBulletin) {
            if (partIsOpen) {
                if (holdsSerialNumber()) {
                    dropLastGroup();
                }
                close(part);
                return true;
            }
            takeHeading();
        } else if (endsReport()) {
            const bool wasOpen = partIsOpen;
            take();
            if (wasOpen) {
                close(part);
                return true;
            }
        } else if (isIdentifier()) {
            if (partIsOpen) {
                if (endsWithStationOfNext()) {
                    dropLastGroup();
                }
                close(part);
                return true;
            }
            openPart();
        } else {
            takeGroup();
        }
    }
    if (partIsOpen) {
        close(part);
        return true;
    }
    return false;
}

// ---------------------------------------------------------------------------------------------------------------------
// The interface
// ---------------------------------------------------------------------------------------------------------------------

BulletinReader::BulletinReader(std::istream& input, std::string source)
    : cutter(std::make_unique<Cutter>(input, std::move(source))) {}
BulletinReader::~BulletinReader() = default;
BulletinReader::BulletinReader(BulletinReader&&) noexcept = default;
BulletinReader& BulletinReader::operator=(BulletinReader&&) noexcept = default;

bool BulletinReader::next(Part& part) {
    return cutter->next(part);
}

std::uint64_t BulletinReader::bytes() const {
    return cutter->bytes();
}

}  // namespace corvane
