// The sweep: blocks enter a heap at their start, smallest on top, and leave it when they reach the
// top behind their end. Damaged sessions may hold spans that overlap without nesting; that is no
// case of its own here.
#include "session/enclosing_blocks.hpp"

#include <queue>

namespace tanrove {

std::vector<std::size_t> starts_of(std::span<const Block> blocks) {
    std::vector<std::size_t> starts;
    starts.reserve(blocks.size());
    for (const Block& block : blocks) starts.push_back(block.at);
    return starts;
}

std::vector<const Block*> smallest_enclosing(std::span<const Block> blocks,
                                             std::span<const std::size_t> positions) {
    const auto is_larger = [](const Block* a, const Block* b) {
        return a->size != b->size ? a->size > b->size : a->at > b->at;
    };
    std::priority_queue<const Block*, std::vector<const Block*>, decltype(is_larger)> open(
        is_larger);
    std::vector<const Block*> holders;
    holders.reserve(positions.size());
    std::size_t next = 0;
    for (const std::size_t position : positions) {
        for (; next < blocks.size() && blocks[next].at < position; ++next) {
            open.push(&blocks[next]);
        }
        while (!open.empty() && open.top()->end() <= position) open.pop();
        holders.push_back(open.empty() ? nullptr : open.top());
    }
    return holders;
}

}  // namespace tanrove
