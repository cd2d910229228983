// What a strip row holds of its routing:
//
//   ..  send channels 0x260d, the strip's own and behind it one for each send
//         9    a channel record 0x1029
//         ..   an output name 0x260e
//         ..   lanes 0x260a, some in groups 0x260c
//   ..  the input, behind the send channels, n being the bytes of its name:
//         0       u32 n, 1 to 255, name at 4
//         n + 4   four zeros, then the identity marker
//         n + 12  u64 identity of the path
//         n + 20  u8 0, u8 type of the path, u8 0, u8 0
#include "session/routing.hpp"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "session/block_types.hpp"
#include "session/channel_records.hpp"
#include "session/enclosing_blocks.hpp"
#include "session/output_names.hpp"
#include "session/send_lanes.hpp"

namespace tanrove {

namespace {

constexpr std::size_t count_width = 4;
constexpr std::size_t zeros_behind_name = 4;
constexpr std::size_t identity_behind_marker = 4;
constexpr std::size_t type_behind_marker = 13;
constexpr std::size_t bytes_behind_name = 24;  // what a row holds of an input behind its name
constexpr std::string_view zero_word("\0\0\0\0", 4);

/// A place in the image that reads as the input of a strip.
struct InputMark {
    std::size_t at = 0;   ///< position of the name's count
    std::size_t end = 0;  ///< position that a row must not end in front of
    std::string_view name;
    std::uint32_t identity_low = 0;
    std::uint32_t identity_high = 0;
    std::uint32_t type = 0;
};

/// The text with its count that ends at `end`. No byte of a text is zero and the three behind the
/// low byte of such a count are, so there is one place at most where it can begin.
std::optional<std::string_view> text_ending_at(ByteView image, std::size_t end) {
    std::size_t from = end;
    while (from > 0 && end - from < max_name_bytes && image.u8(from - 1) != 0) --from;
    if (from == end || from < count_width || image.u32(from - count_width) != end - from) {
        return std::nullopt;
    }
    const auto text = image.text(from, end - from);
    return text && is_session_text(*text) ? text : std::nullopt;
}

std::optional<InputMark> read_input(ByteView image, std::size_t marker) {
    const std::size_t type_at = marker + type_behind_marker;
    if (marker < zeros_behind_name || !image.has(marker - zeros_behind_name, zero_word) ||
        !image.holds(type_at, 3) || image.u8(type_at - 1) != 0 || image.u16(type_at + 1) != 0) {
        return std::nullopt;
    }
    const std::size_t name_end = marker - zeros_behind_name;
    const auto name = text_ending_at(image, name_end);
    if (!name) return std::nullopt;
    return InputMark{
        .at = name_end - name->size() - count_width,
        .end = name_end + bytes_behind_name,
        .name = *name,
        .identity_low = image.u32(marker + identity_behind_marker),
        .identity_high = image.u32(marker + identity_behind_marker + 4),
        .type = image.u8(type_at),
    };
}

/// The paths that an input can be: by identity, or by name where a session was put together from
/// others and names an identity that it does not hold.
class KnownPaths {
public:
    explicit KnownPaths(const std::vector<IoPath>& paths) {
        for (const IoPath& path : paths) {
            if (path.identity() != 0) identities_.emplace(path.identity(), path.type);
            names_.emplace(path.name, path.type);
        }
    }

    bool contain(const InputMark& input) const {
        const std::uint64_t identity =
            std::uint64_t{input.identity_high} << 32 | std::uint64_t{input.identity_low};
        return identities_.contains({identity, input.type}) ||
               names_.contains({input.name, input.type});
    }

private:
    std::set<std::pair<std::uint64_t, std::uint32_t>> identities_;
    std::set<std::pair<std::string_view, std::uint32_t>> names_;
};

/// Every place that reads as an input and names one of the paths, in order of position.
std::vector<InputMark> find_inputs(ByteView image, const std::vector<IoPath>& paths) {
    const KnownPaths known(paths);
    std::vector<InputMark> inputs;
    for (auto at = image.find(identity_marker, 0); at != ByteView::npos;
         at = image.find(identity_marker, at + identity_marker.size())) {
        const auto input = read_input(image, at);
        if (input && known.contain(*input)) inputs.push_back(*input);
    }
    return inputs;
}

/// The strip rows that have a routing, and the answer which of them is the smallest around a
/// position.
class RoutingRows {
public:
    explicit RoutingRows(const std::vector<StripRow>& rows) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const StripRow& row = rows[i];
            if (row.type != StripRowType::audio_or_aux && row.type != StripRowType::instrument) {
                continue;
            }
            const auto size = static_cast<std::uint32_t>(row.end - row.start - block_size_base);
            blocks_.push_back({row.start, size, static_cast<std::uint16_t>(row.type)});
            RoutingRow routing;
            routing.start = row.start;
            routing.end = row.end;
            routing.strip_row = i;
            routing.name = row.original_name;
            routing_.push_back(std::move(routing));
        }
    }

    /// For each position, which ascend, its row; nullptr for none.
    std::vector<RoutingRow*> around(std::span<const std::size_t> positions) {
        std::vector<RoutingRow*> found;
        found.reserve(positions.size());
        for (const Block* holder : smallest_enclosing(blocks_, positions)) {
            found.push_back(holder == nullptr ? nullptr : &routing_[place_of(holder)]);
        }
        return found;
    }

    std::vector<RoutingRow> take() { return std::move(routing_); }

private:
    std::size_t place_of(const Block* block) const {
        return static_cast<std::size_t>(block - blocks_.data());
    }

    std::vector<Block> blocks_;
    std::vector<RoutingRow> routing_;
};

RoutingSend read_send(const BlockIndex& index, const Block& slot, const ChannelRecord& record,
                      OutputName target, LaneReader& lanes) {
    RoutingSend send;
    send.target = std::move(target.name);
    send.target_identity = target.identity;
    send.level_db = record.fader_db;
    send.pre_fader = record.link;
    send.muted = record.muted;
    send.pan = record.pan;
    send.pan_right = record.pan_right;
    read_send_lanes(index, slot, lanes, send);
    return send;
}

/// Outputs and sends. The first send channel of a row is the row's own; the later ones that lead
/// somewhere are its sends.
void read_slots(const BlockIndex& index, RoutingRows& rows) {
    const auto slots = index.of_type(block_type::send_channel).all();
    const auto holders = rows.around(starts_of(slots));
    LaneReader lanes(index);
    for (std::size_t i = 0; i < slots.size(); ++i) {
        RoutingRow* row = holders[i];
        if (row == nullptr || slots[i].end() > row->end) continue;
        const Block* inner = index.at(slots[i].at + record_in_slot);
        if (inner == nullptr || inner->content_type != block_type::channel_record) continue;
        const auto record = read_channel_record(index.image(), *inner);
        if (!record) continue;
        const Block* output = index.first_child(slots[i], block_type::path_reference);
        auto name = output == nullptr ? std::nullopt : read_output_name(index.image(), *output);
        if (!row->has_slot) {
            row->has_slot = true;
            row->has_output = name.has_value();
            row->output_identity = name ? name->identity : 0;
            row->output_name = name ? std::move(name->name) : std::string();
        } else if (name) {
            row->sends.push_back(read_send(index, slots[i], *record, std::move(*name), lanes));
        }
    }
}

/// Inputs: the first in each row that stands in none of the row's send channels.
void read_inputs(const BlockIndex& index, const std::vector<IoPath>& paths, RoutingRows& rows) {
    const auto inputs = find_inputs(index.image(), paths);
    std::vector<std::size_t> positions;
    positions.reserve(inputs.size());
    for (const InputMark& input : inputs) positions.push_back(input.at);
    const auto holders = rows.around(positions);
    const auto slots = smallest_enclosing(index.of_type(block_type::send_channel).all(), positions);
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        RoutingRow* row = holders[i];
        if (row == nullptr || !row->input_name.empty() || inputs[i].end > row->end) continue;
        if (slots[i] != nullptr && slots[i]->at > row->start) continue;
        row->input_name = inputs[i].name;
        row->input_identity_low = inputs[i].identity_low;
        row->input_identity_high = inputs[i].identity_high;
        row->input_type = inputs[i].type;
        row->input_position = inputs[i].at;
    }
}

}  // namespace

std::vector<RoutingRow> readRouting(const BlockIndex& index, const std::vector<StripRow>& rows,
                                    const std::vector<IoPath>& paths) {
    RoutingRows routing(rows);
    read_slots(index, routing);
    read_inputs(index, paths, routing);
    return routing.take();
}

}  // namespace tanrove
