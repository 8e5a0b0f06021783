#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace plotwell::moves {

// The moves behind the document's take and put-back operations, for both
// record arrays. Each returns how many of the records it moved are selected.

// Moves every record that passes test into out and its index into at; the
// others close up in their order.
template <typename Record, typename Test>
std::size_t takeWhere(std::vector<Record>& from, Test&& test, std::vector<Record>& out, std::vector<std::uint32_t>& at)
{
    std::size_t selected = 0;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < from.size(); ++i) {
        if (test(from[i])) {
            selected += from[i].selected ? 1 : 0;
            at.push_back(std::uint32_t(i));
            out.push_back(std::move(from[i]));
        } else {
            if (kept != i)
                from[kept] = std::move(from[i]);
            ++kept;
        }
    }
    from.erase(from.begin() + std::ptrdiff_t(kept), from.end());
    // What is taken may be kept a long time: no room beyond it.
    out.shrink_to_fit();
    at.shrink_to_fit();
    return selected;
}

// Moves the records at the ascending indices at into out.
template <typename Record>
std::size_t takeAt(std::vector<Record>& from, const std::vector<std::uint32_t>& at, std::vector<Record>& out)
{
    if (at.empty())
        return 0;
    out.reserve(at.size());
    std::size_t selected = 0;
    std::size_t next = 0;
    std::size_t kept = at.front();
    for (std::size_t i = at.front(); i < from.size(); ++i) {
        if (next < at.size() && at[next] == i) {
            ++next;
            selected += from[i].selected ? 1 : 0;
            out.push_back(std::move(from[i]));
        } else {
            from[kept++] = std::move(from[i]);
        }
    }
    from.erase(from.begin() + std::ptrdiff_t(kept), from.end());
    return selected;
}

// Puts records[k] back at index at[k], the ascending indices it was taken
// from, moving the others up; records is left empty. One pass from the end.
template <typename Record>
std::size_t putBackAt(std::vector<Record>& into, std::vector<Record>& records, const std::vector<std::uint32_t>& at)
{
    std::size_t selected = 0;
    std::size_t read = into.size();
    std::size_t left = records.size();
    into.resize(into.size() + records.size());
    for (std::size_t write = into.size(); left > 0;) {
        --write;
        if (at[left - 1] == write) {
            --left;
            selected += records[left].selected ? 1 : 0;
            into[write] = std::move(records[left]);
        } else {
            into[write] = std::move(into[--read]);
        }
    }
    records.clear();
    records.shrink_to_fit();
    return selected;
}

} // namespace plotwell::moves
