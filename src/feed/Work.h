// A part while it is being read: its groups as they will be given to the decoder, each with where it comes from.
#ifndef CORVANE_FEED_WORK_H
#define CORVANE_FEED_WORK_H

#include <corvane/Feed.h>

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::feed {

/// A group to be decoded. One that a mend has written has an empty range: the place where it was written.
struct WorkGroup {
    std::string text;
    GroupRange origin;
};

/// Why a part cannot be read. An empty reason: it can.
struct Refusal {
    std::string reason;
    std::size_t place = 0;  ///< the group concerned; Work::size() is the end

    explicit operator bool() const { return !reason.empty(); }
};

/// The groups of a part after MMMM, and the mends made so far. Places are counted from 0 after MMMM.
class Work {
public:
    explicit Work(const Part& part);

    Corvane::WMO_MESSAGE_TYPE form() const { return _form; }
    char letter() const { return _letter; }
    bool isPartBOrD() const { return _letter == 'B' || _letter == 'D'; }
    const std::string& identifier() const { return _mmmm; }

    std::size_t size() const { return groups.size(); }
    /// The group at a place; an empty text past the end.
    const std::string& at(std::size_t place) const { return place < groups.size() ? groups[place].text : none; }
    /// The groups of the part as received that `count` groups from `place` on come from.
    GroupRange origin(std::size_t place, std::size_t count = 1) const;

    /// Writes groups before the one at `place`.
    void insert(std::size_t place, std::initializer_list<std::string_view> texts);
    /// Removes groups.
    void erase(std::size_t place, std::size_t count);
    /// Gives a group another text.
    void replace(std::size_t place, std::string text);
    /// Makes one group of `count`.
    void join(std::size_t place, std::size_t count);

    /// Notes a mend that touches `count` groups from `place` on.
    void note(std::string name, std::string text, std::size_t place, std::size_t count, bool lost = false);

    /// The groups from `place` on, for a message: up to six, separated by spaces, and dots.
    std::string context(std::size_t place) const;
    /// A refusal whose reason ends with the groups from `place` on, as the decoder's messages do.
    Refusal refuse(const std::string& reason, std::size_t place) const;

    std::vector<Mend> mends;

private:
    inline static const std::string none;

    Corvane::WMO_MESSAGE_TYPE _form;
    char _letter;
    std::string _mmmm;
    std::vector<WorkGroup> groups;
};

}  // namespace corvane::feed

#endif
