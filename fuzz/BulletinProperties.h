// What holds for every stream of bulletins, however garbled. Each function returns what does not hold, in words; an
// empty text when all is well.
#ifndef CORVANE_FUZZ_BULLETIN_PROPERTIES_H
#define CORVANE_FUZZ_BULLETIN_PROPERTIES_H

#include <corvane/Feed.h>

#include <cstddef>
#include <string>
#include <vector>

namespace fuzz {

std::vector<corvane::Part> partsOf(const std::string& bulletins);

// A part as it could stand in a bulletin: MMMM and its groups as --print writes them.
std::string bulletinOf(const corvane::Part& part);

// The rows of corvane-feed, in table order, without source, heading and mends.
std::vector<std::string> rowsOf(const corvane::Reading& reading);

// The parts follow each other in the input, each within its limits and its groups in order.
std::string partsAreInOrder(const std::vector<corvane::Part>& parts, std::size_t size);

// A reading is whole: a reason only where it is refused, levels only where it is decoded, ranges within the part.
std::string readingIsWhole(const corvane::Part& part, const corvane::Reading& reading);

// Every number of a level stands as digits in its groups, by a second reading of the code form.
std::string numbersComeFromDigits(const corvane::Part& part, const corvane::Reading& reading);

// What was mended needs no mend, and reads as it did.
std::string printedPartReadsTheSame(const corvane::Reading& reading);

// The rows of a part do not depend on the parts before and after it.
std::string orderDoesNotMatter(const std::vector<corvane::Part>& parts);

// Whether the group at `place` is one that may be split: five digits and solidi before the national groups, with no
// other piece beside it, in a part whose status does not depend on words.
bool maySplit(const corvane::Part& part, std::size_t place);

// A group that may be split gives the same rows in two pieces, the first of `length` characters.
std::string splitGroupReadsTheSame(const corvane::Part& part, std::size_t place, std::size_t length);

// All of the above.
std::string brokenProperty(const std::string& bulletins);

}  // namespace fuzz

#endif
