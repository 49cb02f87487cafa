// The remarks of a dropsonde after 62626 that give a level: where they are, and whether they are whole.
#ifndef CORVANE_FEED_REMARKS_H
#define CORVANE_FEED_REMARKS_H

#include "feed/Work.h"

#include <corvane/Corvane.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace corvane::feed {

/// A remark that gives a level.
struct Remark {
    Corvane::LEVEL_TYPE kind;
    std::size_t place;  ///< of its keyword
    std::size_t count;  ///< of its groups, the keyword included
    bool isWhole;  ///< whether its keyword is one word and its values are digits, or solidi where a wind may be missing
};

/// Every remark that gives a level, from the first 62626 at or after `place`. The decoder makes numbers of whatever
/// follows a keyword: DLM WND 09523 MBL WND 08023 would be a layer from 1000 to 1000 hPa.
std::vector<Remark> findRemarks(const Work& work, std::size_t place);

/// Whether a word is one of those that the decoder does not skip in the remarks.
bool isKeyword(std::string_view word);

}  // namespace corvane::feed

#endif
