// What holds for every text, however garbled. Each function ends the process with a message when its property does not
// hold, so that a fuzzer and a plain test run notice it alike.
#ifndef CORVANE_FUZZ_PROPERTIES_H
#define CORVANE_FUZZ_PROPERTIES_H

#include <corvane/Corvane.h>

#include <cstddef>
#include <deque>
#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace fuzz {

// Ends the process, naming the property, what is wrong and the text being checked.
[[noreturn]] void violated(const char* property, const std::string& what);

// How the constructor ended.
enum class End {
    DECODED,    // with an object
    FAULT,      // with a std::string
    TOO_SHORT,  // with a std::out_of_range
};

// A report with its state open for comparison.
class OpenReport : public Corvane {
public:
    explicit OpenReport(std::string text) : Corvane(std::move(text)) {}

    // Whether two objects are the same, numbers compared bit for bit.
    bool isSameAs(const OpenReport& other) const;

protected:
    OpenReport() = default;
};

// A report decoded as the constructor does it, but from groups, and with its state kept when a fault ends the decoding.
class HaltedReport : public OpenReport {
public:
    explicit HaltedReport(const std::vector<std::string>& groups);

    const std::deque<std::string>& remainingGroups() const { return tokenQueue; }

    End end = End::DECODED;
    std::string fault;
};

// What the constructor made of a text.
struct Outcome {
    End end = End::DECODED;
    std::string fault;                   // what was thrown
    std::unique_ptr<OpenReport> report;  // only when DECODED
};

// Constructs a report. ONLY DOCUMENTED FAULTS: a std::string or a std::out_of_range leaves the constructor.
Outcome decode(const std::string& text);

// The words between the white space of the classic locale.
std::vector<std::string> wordsOf(const std::string& text);

// The groups of a report with this text: its words without those that are "=", and without the first "=" in the others.
std::vector<std::string> groupsOf(const std::string& text);

// The same words with other white space before, between and after them.
std::string respaced(const std::string& text);

// tokens() equals an independent split of the text.
void tokensAreTheSplitText(const Corvane& report, const std::string& text);

// Levels ascend by kind, and levels() gives the same ones kind by kind. No level is of kind LT_GENERIC.
void levelsAscendByKind(const Corvane& report);

// Every group files its levels after those of the groups before it: a report cut short holds, kind by kind, the first
// levels of the whole one.
void levelsKeepFilingOrder(const HaltedReport& whole, const std::vector<std::string>& groups);

// The profile ascends strictly in pressure; its levels are LT_GENERIC; its pressures are those of the surface, the
// standard and the significant levels, no fewer and no more; each quantity is that of the prevailing level.
void profileIsMergedAndAscends(const Corvane& report);

// The dump has a line for each level of the profile.
void dumpHasALineForEachPressure(const Corvane& report);

// The table has its header and a row for each level, each with ten commas, each value as printf writes %g.
void tableHasARowForEachLevel(const std::string& table, const Corvane& report);

// The table that csv() writes.
std::string tableOf(const Corvane& report);

// A fault with a text ends with its context: up to six groups from the first one not taken.
void faultShowsItsPlace(const HaltedReport& halted);

// The queue holds the end of the report, and nothing when there was no fault.
void queueIsTheRestOfTheReport(const HaltedReport& halted, const std::vector<std::string>& groups);

// Two decodings end alike: with the same fault, or with the same report.
void outcomesAgree(const char* property, const Outcome& first, const Outcome& second);

// All of the above for one text.
void everythingHolds(const std::string& text);

}  // namespace fuzz

#endif
