// The sweep: spans enter a heap at their start, the first of the list on top, and leave it when
// they reach the top behind their end.
#include "session/first_enclosing.hpp"

#include <functional>
#include <queue>

namespace tanrove {

std::vector<std::size_t> first_enclosing(std::span<const BlockSpan> spans,
                                         std::span<const std::size_t> positions) {
    std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> open;
    std::vector<std::size_t> holders;
    holders.reserve(positions.size());
    std::size_t next = 0;
    for (const std::size_t position : positions) {
        for (; next < spans.size() && spans[next].start < position; ++next) open.push(next);
        while (!open.empty() && spans[open.top()].end <= position) open.pop();
        holders.push_back(open.empty() ? no_span : open.top());
    }
    return holders;
}

}  // namespace tanrove
