// The events of one item. Positions are those of the stream, from the clip's head; the source
// begins with whatever comes first, the clip's head or its stream's first note, so that nothing in
// front of the clip is lost.
#include "timeline/midi_events.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tanrove {

namespace {

constexpr double stream_ticks_per_item_tick_inverse = 0.001;
constexpr double stream_ticks_per_quarter = 960000;
constexpr double seconds_per_minute = 60;
constexpr double rounding = 0.5;

constexpr std::uint8_t highest_data = 127;
constexpr std::int64_t bend_centre = 0x2000;
constexpr std::int64_t highest_bend = 0x3fff;

/// How a clip's stream becomes ticks of its item.
struct ClipTime {
    std::int64_t length = 0;
    std::int64_t lead = 0;  ///< what the source holds in front of the clip's head
    double item_ticks_per_unit = stream_ticks_per_item_tick_inverse;

    bool is_inside(std::int64_t position) const {
        return position >= 0 && (length == 0 || position < length);
    }

    std::uint64_t tick(std::int64_t position) const {
        const double ticks = static_cast<double>(position + lead) * item_ticks_per_unit + rounding;
        return ticks > 0 ? static_cast<std::uint64_t>(ticks) : 0;
    }
};

ClipTime time_of(const PlacedMidiClip& clip, const MidiMaterial& material) {
    ClipTime time;
    time.length = clip.length;
    time.lead = std::max<std::int64_t>(-clip.source_offset, 0);
    if (clip.in_samples) {
        time.item_ticks_per_unit = material.session_tempo * item_ticks_per_quarter /
                                   (material.rate_hz * seconds_per_minute);
    }
    return time;
}

MidiItemEvent controller_event(const MidiController& controller) {
    MidiItemEvent event;
    const auto low_bits = static_cast<std::uint8_t>(controller.value & highest_data);
    switch (controller_type(controller.kind)) {
        case MidiControllerType::continuous:
            event.status = controller_status;
            event.data1 = controller_number(controller.kind) & highest_data;
            event.data2 = low_bits;
            return event;
        case MidiControllerType::aftertouch:
            event.status = aftertouch_status;
            event.data1 = low_bits;
            return event;
        case MidiControllerType::pitch_bend:
            break;
    }
    const auto stored = std::int64_t{static_cast<std::int32_t>(controller.value)};
    const std::int64_t bend = std::clamp<std::int64_t>(stored + bend_centre, 0, highest_bend);
    event.status = pitch_bend_status;
    event.data1 = static_cast<std::uint8_t>(bend & highest_data);
    event.data2 = static_cast<std::uint8_t>(bend >> 7);
    return event;
}

/// Fills the events of one item.
class EventWriter {
public:
    EventWriter(const ClipTime& time, std::int64_t source_offset, bool keep_inaudible,
                MidiItem& item, MidiTallies& tallies)
        : time_(time),
          source_offset_(source_offset),
          keep_inaudible_(keep_inaudible),
          item_(item),
          tallies_(tallies) {}

    void add_notes(const MidiStream& stream) {
        item_.events.reserve(2 * stream.events.size());
        for (const MidiEvent& note : stream.events) add_note(note);
    }

    void add_chunk(const MidiChunk& chunk) {
        for (const MidiController& controller : chunk.controllers) {
            add_controller(controller, position_in(chunk, controller.position));
        }
        for (const MidiSysex& message : chunk.sysex) {
            add_sysex(message, position_in(chunk, message.position));
        }
    }

    /// How far the last note that sounds runs past the clip, in the stream's unit.
    std::int64_t overrun() const { return overrun_; }

private:
    std::int64_t position_in(const MidiChunk& chunk, std::uint64_t stored) const {
        return source_offset_ + static_cast<std::int64_t>(stored) -
               static_cast<std::int64_t>(chunk.origin);
    }

    /// Pro Tools plays nothing outside the clip. Counts `events` that lie there, and tells whether
    /// they are silenced.
    bool silences(bool is_inside, int events) {
        if (is_inside) return false;
        (keep_inaudible_ ? tallies_.unmuted_events : tallies_.muted_events) += events;
        return !keep_inaudible_;
    }

    void add_note(const MidiEvent& note) {
        const std::int64_t on = source_offset_ + note.position;
        const std::int64_t stop = on + note.length;
        if (stop <= on) return;
        MidiItemEvent begin;
        begin.order = MidiOrder::note_on;
        begin.tick = time_.tick(on);
        begin.data1 = std::min(note.note, highest_data);
        begin.data2 = std::min(note.velocity, highest_data);
        MidiItemEvent end = begin;
        end.status = note_off_status;
        end.order = MidiOrder::note_off;
        end.tick = time_.tick(stop);
        end.data2 = 0;

        const bool is_inside = time_.is_inside(on);
        bool muted = silences(is_inside, 2);
        if (end.tick <= begin.tick) {
            end.tick = begin.tick + 1;
            if (!muted) tallies_.too_short_events += 2;
            muted = true;
        }
        begin.muted = end.muted = muted;
        item_.events.push_back(begin);
        item_.events.push_back(end);
        ++item_.note_count;
        if (is_inside && time_.length > 0 && stop > time_.length) {
            ++tallies_.notes_past_edge;
            overrun_ = std::max(overrun_, stop - time_.length);
        }
    }

    void add_controller(const MidiController& controller, std::int64_t position) {
        MidiItemEvent event = controller_event(controller);
        event.tick = time_.tick(position);
        event.muted = silences(time_.is_inside(position), 1);
        const bool is_controller = event.status == controller_status;
        item_.streams_volume |= is_controller && event.data1 == volume_controller;
        item_.streams_pan |= is_controller && event.data1 == pan_controller;
        item_.events.push_back(event);
        ++tallies_.controllers;
    }

    /// REAPER cannot store a muted message: one outside the clip stays, live.
    void add_sysex(const MidiSysex& message, std::int64_t position) {
        MidiItemEvent event;
        event.status = sysex_status;
        event.tick = time_.tick(position);
        event.sysex = static_cast<std::uint32_t>(item_.sysex.size());
        item_.sysex.push_back(message.data);
        item_.events.push_back(event);
        ++tallies_.sysex;
        if (!time_.is_inside(position)) ++tallies_.sysex_outside;
    }

    const ClipTime& time_;
    std::int64_t source_offset_;
    bool keep_inaudible_;
    MidiItem& item_;
    MidiTallies& tallies_;
    std::int64_t overrun_ = 0;
};

void sort_events(std::vector<MidiItemEvent>& events) {
    std::ranges::stable_sort(events, [](const MidiItemEvent& a, const MidiItemEvent& b) {
        return a.tick != b.tick ? a.tick < b.tick : a.order < b.order;
    });
}

}  // namespace

/// What a region plays; null where it has none.
struct MidiItemMaker::Source {
    const MidiStream* stream = nullptr;
    const MidiChunk* chunk = nullptr;
};

MidiItemMaker::MidiItemMaker(const MidiMaterial& material, const TempoClock& clock,
                             const MidiEventOptions& options, MidiTallies& tallies,
                             std::size_t event_limit)
    : material_(material),
      clock_(clock),
      options_(options),
      tallies_(tallies),
      events_left_(event_limit),
      told_regions_(material.regions.size()) {
    // Counted once a chunk: any number of clips may ask.
    chunk_events_.reserve(material.chunks.size());
    for (const MidiChunk& chunk : material.chunks) {
        std::size_t count = chunk.controllers.size() + chunk.sysex.size();
        for (const MidiSysex& message : chunk.sysex) {
            count += message.data.size() / sysex_bytes_per_event;
        }
        chunk_events_.push_back(count);
    }
}

/// Controllers that belong to other notes are left out: they would land anywhere.
MidiItemMaker::Source MidiItemMaker::source_of(const Region& region) {
    Source source;
    if (region.midi_stream < 0) return source;
    const auto number = static_cast<std::size_t>(region.midi_stream);
    if (number < material_.streams.size()) source.stream = &material_.streams[number];
    if (source.stream == nullptr || number >= material_.chunks.size()) return source;
    const MidiChunk& chunk = material_.chunks[number];
    if (chunk.controllers.empty() && chunk.sysex.empty()) return source;
    if (chunk.note_count == source.stream->events.size()) {
        source.chunk = &chunk;
        return source;
    }
    const auto place = static_cast<std::size_t>(&region - material_.regions.data());
    if (!told_regions_[place]) ++tallies_.mismatched_regions;
    told_regions_[place] = true;
    return source;
}

/// True if the project can take these events; they are then counted.
bool MidiItemMaker::takes(const Source& source) {
    std::size_t count = source.stream != nullptr ? 2 * source.stream->events.size() : 0;
    if (source.chunk != nullptr) {
        count += chunk_events_[static_cast<std::size_t>(source.chunk - material_.chunks.data())];
    }
    if (count > events_left_) return false;
    events_left_ -= count;
    return true;
}

MidiItem MidiItemMaker::item(const PlacedMidiClip& clip) {
    const Region& region = material_.regions[clip.region];
    MidiItem item;
    item.start = clip.start;
    item.length = item.item_length_raw = clip.length_seconds;
    item.name = region.name;
    item.muted = clip.muted;
    item.locked = clip.locked;
    item.color_index = clip.color_index;

    const ClipTime time = time_of(clip, material_);
    set_source_offset(item, clip, time.lead);
    const Source source = source_of(region);
    if (!takes(source)) {
        ++tallies_.emptied_clips;
        return item;
    }
    EventWriter writer(time, clip.source_offset, options_.keep_inaudible_midi, item, tallies_);
    if (source.stream != nullptr) writer.add_notes(*source.stream);
    if (source.chunk != nullptr) writer.add_chunk(*source.chunk);
    sort_events(item.events);
    if (writer.overrun() > 0 && !options_.truncate_midi_to_clip) {
        const double quarters = static_cast<double>(writer.overrun()) * time.item_ticks_per_unit /
                                item_ticks_per_quarter;
        item.length += quarters * seconds_per_minute / tempo_at(clip.start + clip.length_seconds);
    }
    return item;
}

/// REAPER counts an offset into the source at the tempo where the item starts.
void MidiItemMaker::set_source_offset(MidiItem& item, const PlacedMidiClip& clip,
                                      std::int64_t lead) {
    const auto units = static_cast<double>(lead);
    if (clip.in_samples) {
        item.source_offset = units / material_.rate_hz;
        return;
    }
    const double session_tempo = material_.session_tempo;
    item.source_offset = units * seconds_per_minute / (session_tempo * stream_ticks_per_quarter);
    item.source_length = item.source_offset * session_tempo / tempo_at(clip.start);
    const double difference = std::abs(item.source_offset - item.source_length);
    if (difference * material_.rate_hz >= rounding) ++tallies_.offsets_at_other_tempo;
}

/// The tempo half a tick on: an event that stands at the moment itself counts.
double MidiItemMaker::tempo_at(double seconds) const {
    const double half_tick =
        rounding * seconds_per_minute / (material_.session_tempo * stream_ticks_per_quarter);
    return clock_.bpm_at(seconds + half_tick);
}

}  // namespace tanrove
