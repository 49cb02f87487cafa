#include "feed/Work.h"

#include <algorithm>
#include <utility>

namespace corvane::feed {

Work::Work(const Part& part) : mends(part.marks), _form(part.form()), _letter(part.letter()), _mmmm(part.mmmm) {
    groups.reserve(part.groups.size() + 4);
    for (const Group& group : part.groups) {
        groups.push_back({group.text, {groups.size(), 1}});
    }
}

GroupRange Work::origin(std::size_t place, std::size_t count) const {
    if (place >= groups.size()) {
        return groups.empty() ? GroupRange() : GroupRange{groups.back().origin.first + groups.back().origin.count, 0};
    }
    GroupRange range = groups[place].origin;
    for (std::size_t i = place + 1; i < std::min(place + count, groups.size()); ++i) {
        const GroupRange& next = groups[i].origin;
        range.count = next.first + next.count - range.first;
    }
    return range;
}

void Work::insert(std::size_t place, std::initializer_list<std::string_view> texts) {
    const GroupRange here{origin(place).first, 0};
    std::vector<WorkGroup> written;
    for (const std::string_view text : texts) {
        written.push_back({std::string(text), here});
    }
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(place), written.begin(), written.end());
}

void Work::erase(std::size_t place, std::size_t count) {
    const auto first = groups.begin() + static_cast<std::ptrdiff_t>(place);
    groups.erase(first, first + static_cast<std::ptrdiff_t>(count));
}

void Work::replace(std::size_t place, std::string text) {
    groups[place].text = std::move(text);
}

void Work::join(std::size_t place, std::size_t count) {
    groups[place].origin = origin(place, count);
    for (std::size_t i = place + 1; i < place + count; ++i) {
        groups[place].text += groups[i].text;
    }
    erase(place + 1, count - 1);
}

void Work::note(std::string name, std::string text, std::size_t place, std::size_t count, bool lost) {
    GroupRange touched = origin(place, std::max<std::size_t>(count, 1));
    if (count == 0) {
        touched.count = 0;
    }
    mends.push_back({std::move(name), std::move(text), lost, touched});
}

std::string Work::context(std::size_t place) const {
    std::string text;
    for (std::size_t i = place; i < std::min(place + 6, groups.size()); ++i) {
        text += groups[i].text + ' ';
    }
    return text + "...";
}

Refusal Work::refuse(const std::string& reason, std::size_t place) const {
    return {reason + " Error detected at " + context(place), place};
}

}  // namespace corvane::feed
