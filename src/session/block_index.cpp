// One memchr walk over the image keeps every block candidate; the lists by type and the answers to
// "the first child that fits" are made from those.
#include "session/block_index.hpp"

#include <algorithm>
#include <functional>

namespace tanrove {

namespace {

constexpr std::size_t content_type_count = 0x10000;
constexpr std::size_t run_length = 16;  // blocks or runs that one entry of the next level sums up
constexpr std::size_t blocks_a_stretch = 4;

std::vector<Block> find_blocks(ByteView image) {
    std::vector<Block> blocks;
    constexpr std::size_t header = block_payload_at;
    if (image.size() < header) return blocks;
    const std::size_t most = image.size() / header;
    const std::size_t last = image.size() - header;
    const bool opens_with_pointer = read_first_pointer(image).has_value();
    for (std::size_t p = image.find(block_marker, 0); p <= last && blocks.size() < most;
         p = image.find(block_marker, p + 1)) {
        if (!isBlockAt(image, p, image.size())) continue;
        if (p == first_block_at && opens_with_pointer) continue;  // its word reads as any type
        blocks.push_back({p, image.u32(p + block_size_at), image.u16(p + block_content_at)});
    }
    return blocks;
}

/// For each run of the list the least of what `end_of` tells of its entries.
template <typename Entry, typename EndOf>
std::vector<std::size_t> least_of_runs(const std::vector<Entry>& entries, EndOf end_of) {
    std::vector<std::size_t> least;
    least.reserve((entries.size() + run_length - 1) / run_length);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::size_t end = end_of(entries[i]);
        if (i % run_length == 0) least.push_back(end);
        least.back() = std::min(least.back(), end);
    }
    return least;
}

bool begins_before(const Block& block, std::size_t position) {
    return block.at < position;
}

}  // namespace

BlockList::BlockList(std::vector<Block> blocks) : blocks_(std::move(blocks)) {
    lay_out_stretches();
    if (blocks_.size() <= run_length) return;
    least_ends_.push_back(least_of_runs(blocks_, [](const Block& block) { return block.end(); }));
    while (least_ends_.back().size() > run_length) {
        least_ends_.push_back(least_of_runs(least_ends_.back(), std::identity()));
    }
}

void BlockList::lay_out_stretches() {
    if (blocks_.empty()) return;
    const std::size_t first = blocks_.front().at;
    const std::size_t length = blocks_.back().at - first;
    const std::size_t most = blocks_.size() / blocks_a_stretch;
    while (length >> stretch_bits_ > most) ++stretch_bits_;
    stretches_.reserve((length >> stretch_bits_) + 2);
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const std::size_t stretch = (blocks_[i].at - first) >> stretch_bits_;
        while (stretches_.size() <= stretch) stretches_.push_back(static_cast<std::uint32_t>(i));
    }
    stretches_.push_back(static_cast<std::uint32_t>(blocks_.size()));
}

std::size_t BlockList::place_from(std::size_t position) const {
    if (blocks_.empty() || position <= blocks_.front().at) return 0;
    if (position > blocks_.back().at) return blocks_.size();
    const std::size_t stretch = (position - blocks_.front().at) >> stretch_bits_;
    const auto first = blocks_.begin() + stretches_[stretch];
    const auto last = blocks_.begin() + stretches_[stretch + 1];
    return static_cast<std::size_t>(std::lower_bound(first, last, position, begins_before) -
                                    blocks_.begin());
}

std::span<const Block> BlockList::between(std::size_t from, std::size_t to) const {
    if (to <= from) return {};
    const std::size_t first = place_from(from);
    return all().subspan(first, place_from(to) - first);
}

std::size_t BlockList::first_index_inside(std::size_t index, std::size_t limit) const {
    // Up: pass over whole runs in which no block ends in time. Down: into the run that has one.
    std::size_t level = 0;
    const auto level_size = [&] {
        return level == 0 ? blocks_.size() : least_ends_[level - 1].size();
    };
    const auto fits = [&](std::size_t i) {
        return (level == 0 ? blocks_[i].end() : least_ends_[level - 1][i]) <= limit;
    };
    while (true) {
        while (index < level_size() && !fits(index)) {
            ++index;
            if (index % run_length == 0 && level < least_ends_.size()) {
                index /= run_length;
                ++level;
            }
        }
        if (index >= level_size()) return blocks_.size();
        if (level == 0) return index;
        --level;
        index *= run_length;
    }
}

const Block* BlockList::first_inside(std::size_t from, std::size_t limit) const {
    const std::size_t index = first_index_inside(place_from(from), limit);
    return index < blocks_.size() ? &blocks_[index] : nullptr;
}

BlockSpan BlockList::reach() const {
    BlockSpan reach;
    if (!blocks_.empty()) reach.start = blocks_.front().at;
    for (const Block& block : blocks_) reach.end = std::max(reach.end, block.end());
    return reach;
}

std::vector<std::size_t> find_in(ByteView image, const BlockSpan& span, std::string_view bytes) {
    std::vector<std::size_t> places;
    const ByteView up_to_end = image.window(0, span.end);
    for (auto at = up_to_end.find(bytes, span.start); at != ByteView::npos;
         at = up_to_end.find(bytes, at + 1)) {
        places.push_back(at);
    }
    return places;
}

BlockIndex::BlockIndex(ByteView image)
    : image_(image), list_of_type_(content_type_count, 0), lists_(1) {
    std::vector<Block> blocks = find_blocks(image);

    std::vector<std::uint32_t> counts(content_type_count, 0);
    for (const Block& block : blocks) ++counts[block.content_type];
    std::vector<std::vector<Block>> by_type(1);
    for (const Block& block : blocks) {
        auto& list = list_of_type_[block.content_type];
        if (list == 0) {
            list = static_cast<std::uint32_t>(by_type.size());
            by_type.emplace_back().reserve(counts[block.content_type]);
        }
        by_type[list].push_back(block);
    }
    lists_.reserve(by_type.size());
    for (std::size_t i = 1; i < by_type.size(); ++i) lists_.emplace_back(std::move(by_type[i]));
    all_ = BlockList(std::move(blocks));
}

const BlockList& BlockIndex::of_type(std::uint16_t content_type) const {
    return lists_[list_of_type_[content_type]];
}

std::vector<Block> BlockIndex::of_types(std::span<const std::uint16_t> content_types) const {
    std::vector<Block> blocks;
    for (const auto type : content_types) {
        const auto list = of_type(type).all();
        blocks.insert(blocks.end(), list.begin(), list.end());
    }
    std::sort(blocks.begin(), blocks.end(),
              [](const Block& a, const Block& b) { return a.at < b.at; });
    return blocks;
}

std::vector<Block> BlockIndex::top_level() const {
    std::vector<Block> chain;
    std::size_t p = first_block_at;
    if (read_first_pointer(image_)) p += block_size_base + pointer_block_size;
    for (const Block* block = at(p); block != nullptr; block = at(block->end())) {
        chain.push_back(*block);
    }
    return chain;
}

const Block* BlockIndex::at(std::size_t p) const {
    const std::size_t place = all_.place_from(p);
    const auto blocks = all_.all();
    return place < blocks.size() && blocks[place].at == p ? &blocks[place] : nullptr;
}

}  // namespace tanrove
