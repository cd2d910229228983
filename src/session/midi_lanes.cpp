// A MIDI track's row holds its mixer record 0x2611, whose first 0x260a is the lane of its mute.
// Real sessions hold no other lane there; those that do are counted.
#include "session/midi_lanes.hpp"

#include <algorithm>

#include "session/automation_lanes.hpp"
#include "session/block_types.hpp"

namespace tanrove {

namespace {

const Block* mute_lane(const BlockIndex& index, std::size_t from, std::size_t to) {
    const Block* mixer = index.of_type(block_type::midi_mixer).first_inside(from, to);
    if (mixer == nullptr) return nullptr;
    return index.of_type(block_type::lane).first_inside(mixer->payload(), mixer->end());
}

}  // namespace

std::size_t count_other_midi_lanes(const BlockIndex& index, std::span<const StripRow> rows) {
    std::size_t count = 0;
    std::size_t next_lane =
        0;  // in a damaged session rows and lanes overlap: no byte is read twice
    for (const StripRow& row : rows) {
        const std::size_t from = row.start + block_payload_at;
        if (!plays_midi(row.type)) continue;
        if (index.of_type(block_type::channel_record).first_inside(from, row.end) != nullptr) {
            continue;
        }
        const Block* mute = mute_lane(index, from, row.end);
        const std::size_t first = std::max(from, next_lane);
        for (const Block& lane : index.of_type(block_type::lane).between(first, row.end)) {
            if (lane.at < next_lane) continue;
            next_lane = lane.end();
            if (mute != nullptr && lane.at == mute->at) continue;
            Lane read;
            if (readLane(index.image(), lane.at, read) && !read.points.empty()) ++count;
        }
    }
    return count;
}

}  // namespace tanrove
