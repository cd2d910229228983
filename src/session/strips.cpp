// Every channel record of the image belongs to some strip: the row's own stands first in it, those
// of its sends follow. Records of one strip that stand close together make a run; the run's first
// record is the strip's own, all others are sends, and each send leads to the bus whose name stands
// nearest to it.
//
// A MIDI track has no channel record. Its row holds a mixer record 0x2611 instead, and the first
// lane in that is its mute, 1 while muted.
#include "session/strips.hpp"

#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <unordered_set>

#include "session/block_types.hpp"
#include "session/buses.hpp"
#include "session/channel_records.hpp"
#include "session/first_enclosing.hpp"

namespace tanrove {

namespace {

/// Farthest that a record stands from the one before it in the same run, bytes.
constexpr std::size_t max_run_gap = 2700;
constexpr std::size_t count_width = 4;

constexpr std::size_t no_strip = no_span;

/// A channel record and the strip it belongs to.
struct StripRecord {
    std::size_t strip = no_strip;
    ChannelRecord record;
};

bool rows_agree(const std::vector<StripRow>& rows, std::span<const std::string> track_names) {
    if (rows.size() != track_names.size()) return false;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].current_name != track_names[i]) return false;
    }
    return true;
}

/// For each record the first row that holds its fader.
std::vector<std::size_t> rows_of_records(const std::vector<StripRow>& rows,
                                         const std::vector<ChannelRecord>& records) {
    std::vector<BlockSpan> spans;
    spans.reserve(rows.size());
    for (const StripRow& row : rows) spans.push_back({row.start, row.end});
    std::vector<std::size_t> positions;
    positions.reserve(records.size());
    for (const auto& record : records) positions.push_back(record.fader_position());
    return first_enclosing(spans, positions);
}

/// For each record the strip whose name stands last in front of it, as a counted text. Where
/// several strips share the name it is the last of them.
std::vector<std::size_t> names_in_front(ByteView image, std::span<const std::string> track_names,
                                        const std::vector<ChannelRecord>& records) {
    std::unordered_map<std::string_view, std::size_t> strips;
    std::size_t longest = 0;
    for (std::size_t i = 0; i < track_names.size(); ++i) {
        if (track_names[i].empty()) continue;
        strips[track_names[i]] = i;
        longest = std::max(longest, track_names[i].size());
    }
    std::vector<std::size_t> found;
    found.reserve(records.size());
    std::size_t last = no_strip;
    std::size_t at = 0;
    for (const auto& record : records) {
        for (; at < record.fader_position(); ++at) {
            const std::size_t count = image.u32(at);
            if (count == 0 || count > longest) continue;
            const auto text = image.text(at + count_width, count);
            if (!text) continue;
            const auto strip = strips.find(*text);
            if (strip != strips.end()) last = strip->second;
        }
        found.push_back(last);
    }
    return found;
}

/// True if the record opens a send channel that names no output behind it.
bool is_nameless(const BlockIndex& index, const ChannelRecord& record) {
    if (record.at < record_in_slot) return false;
    const Block* slot = index.at(record.at - record_in_slot);
    if (slot == nullptr || slot->content_type != block_type::send_channel) return false;
    return index.of_type(block_type::path_reference).first_inside(record.end, slot->end()) ==
           nullptr;
}

/// The records that count, each with its strip, in order of position.
std::vector<StripRecord> strip_records(const BlockIndex& index,
                                       const std::vector<ChannelRecord>& records,
                                       const std::vector<std::size_t>& strips) {
    std::vector<StripRecord> kept;
    std::unordered_set<std::size_t> seen;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (strips[i] == no_strip) continue;
        const bool is_first = !seen.contains(strips[i]);
        if (!is_first && is_nameless(index, records[i])) continue;
        seen.insert(strips[i]);
        kept.push_back({strips[i], records[i]});
    }
    return kept;
}

/// Answers which is the next strip that is not yet present; each answer shortens the way of later
/// ones.
class FreeStrips {
public:
    explicit FreeStrips(std::size_t count) : next_(count + 1) {
        std::iota(next_.begin(), next_.end(), std::size_t{0});
    }

    /// The first strip at or behind `strip` that has not been taken; the count if there is none.
    std::size_t first_from(std::size_t strip) {
        while (next_[strip] != strip) {
            next_[strip] = next_[next_[strip]];
            strip = next_[strip];
        }
        return strip;
    }

    void take(std::size_t strip) { next_[strip] = strip + 1; }

private:
    std::vector<std::size_t> next_;
};

void fill_strip(const ChannelRecord& record, Strip& strip) {
    strip.fader_db = record.fader_db;
    strip.pan = record.pan;
    strip.pan_right = record.pan_right;
    strip.muted = record.muted;
    strip.stored_panners = record.panners;
    strip.present = true;
    strip.channel_position = record.payload();
}

/// Gives the runs their strips. In a strip's row a send can stand so far behind the strip's own
/// record, which a long lane of points follows, that a run begins with it: where the row is known
/// such a run is all sends. By names alone it would be the next strip's.
class Runs {
public:
    Runs(bool by_rows, NearestBus& buses, std::vector<Strip>& strips)
        : by_rows_(by_rows), buses_(buses), strips_(strips), free_(strips.size()) {
        for (std::size_t i = 0; i < strips.size(); ++i) {
            if (strips[i].present) free_.take(i);
        }
    }

    void add(std::span<const StripRecord> run) {
        std::size_t strip = run.front().strip;
        if (!by_rows_) strip = free_.first_from(strip);
        if (strip >= strips_.size()) return;
        if (!strips_[strip].present) {
            fill_strip(run.front().record, strips_[strip]);
            free_.take(strip);
            run = run.subspan(1);
        }
        for (const StripRecord& send : run) add_send(send.record, strips_[strip]);
    }

private:
    void add_send(const ChannelRecord& record, Strip& strip) {
        auto target = buses_.find(record.fader_position());
        if (target) strip.sends.push_back({std::move(*target), record.fader_db});
    }

    bool by_rows_;
    NearestBus& buses_;
    std::vector<Strip>& strips_;
    FreeStrips free_;
};

std::size_t run_length(std::span<const StripRecord> records) {
    std::size_t length = 1;
    while (length < records.size() && records[length].strip == records[0].strip &&
           records[length].record.at - records[length - 1].record.at <= max_run_gap) {
        ++length;
    }
    return length;
}

/// Reads the strip of a MIDI row; false if the row has no mixer record.
bool read_midi_strip(const BlockIndex& index, const StripRow& row, Strip& strip) {
    const Block* mixer =
        index.of_type(block_type::midi_mixer).first_inside(row.start + block_payload_at, row.end);
    if (mixer == nullptr) return false;
    strip.present = true;
    strip.midi_only = true;
    strip.channel_position = mixer->payload();
    if (const Block* lane = index.first_child(*mixer, block_type::lane)) {
        strip.muted = lane_initial(index.image(), lane->at) == 1.0;
    }
    return true;
}

/// Fills the strips of the MIDI and instrument rows that hold no channel record.
void read_midi_strips(const BlockIndex& index, const std::vector<StripRow>& rows,
                      const std::vector<std::size_t>& record_rows, bool by_rows,
                      std::vector<Strip>& strips) {
    std::vector<bool> has_record(rows.size(), false);
    for (const std::size_t row : record_rows) {
        if (row != no_strip) has_record[row] = true;
    }
    std::unordered_map<std::string_view, std::size_t> strips_by_name;
    for (std::size_t i = 0; i < strips.size(); ++i) strips_by_name.try_emplace(strips[i].name, i);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool is_midi =
            rows[i].type == StripRowType::midi || rows[i].type == StripRowType::instrument;
        if (!is_midi || has_record[i]) continue;
        std::size_t strip = i;
        if (!by_rows) {
            const auto named = strips_by_name.find(rows[i].current_name);
            if (named == strips_by_name.end()) continue;
            strip = named->second;
        }
        if (!strips[strip].present) read_midi_strip(index, rows[i], strips[strip]);
    }
}

}  // namespace

std::vector<Strip> readStrips(const BlockIndex& index, const std::vector<StripRow>& rows,
                              std::span<const std::string> track_names,
                              const std::vector<std::string>& buses) {
    std::vector<Strip> strips(track_names.size());
    for (std::size_t i = 0; i < strips.size(); ++i) strips[i].name = track_names[i];

    const bool by_rows = rows_agree(rows, track_names);
    const auto records = read_channel_records(index);
    const auto record_rows = rows_of_records(rows, records);
    read_midi_strips(index, rows, record_rows, by_rows, strips);

    const auto kept =
        strip_records(index, records,
                      by_rows ? record_rows : names_in_front(index.image(), track_names, records));
    NearestBus nearest(index.image(), buses);
    Runs runs(by_rows, nearest, strips);
    for (std::span<const StripRecord> rest = kept; !rest.empty();) {
        const std::size_t length = run_length(rest);
        runs.add(rest.first(length));
        rest = rest.subspan(length);
    }
    return strips;
}

}  // namespace tanrove
