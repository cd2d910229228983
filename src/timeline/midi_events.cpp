// The events of one item. Positions are those of the stream, from the clip's head; the source
// begins with whatever comes first, the clip's head or its stream's first note, so that nothing in
// front of the clip is lost.
#include "timeline/midi_events.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "session/record_forms.hpp"

namespace tanrove {

namespace {

constexpr double item_ticks_per_stream_tick = 0.001;
constexpr double seconds_per_minute = 60;
constexpr double rounding = 0.5;

constexpr std::uint8_t highest_data = 127;
constexpr std::int64_t bend_centre = 0x2000;
constexpr std::int64_t highest_bend = 0x3fff;

}  // namespace

/// How a clip's stream becomes ticks of its item. REAPER plays the ticks through the project's
/// tempo map: samples come out right only if they went in through it.
struct ClipTime {
    std::int64_t length = 0;
    std::int64_t lead = 0;  ///< what the source holds in front of the clip's head
    double item_ticks_per_unit = item_ticks_per_stream_tick;        ///< up to `steady_until`
    double steady_until = std::numeric_limits<double>::infinity();  ///< from the clip's head
    const TempoClock* clock = nullptr;                              ///< asked behind it
    double start = 0;                                               ///< seconds
    double rate_hz = 0;

    bool is_inside(std::int64_t position) const {
        return position >= 0 && (length == 0 || position < length);
    }

    std::uint64_t tick(std::int64_t position) const {
        double ticks = static_cast<double>(position + lead) * item_ticks_per_unit;
        if (static_cast<double>(position) > steady_until) {
            const double moment = start + static_cast<double>(position) / rate_hz;
            const double played = clock->ticks(moment) - clock->ticks(start);
            ticks = static_cast<double>(lead) * item_ticks_per_unit +
                    played * item_ticks_per_stream_tick;
        }
        return static_cast<std::uint64_t>(std::max(ticks + rounding, 0.0));
    }
};

namespace {

/// What a message counts as.
std::size_t events_in(const MidiSysex& message) {
    return 1 + message.data.size() / sysex_bytes_per_event;
}

/// What an item may still take.
struct EventRoom {
    bool only_inside = false;  ///< what lies outside the clip is left out
    std::size_t events = 0;
    bool left_out_outside = false;
    bool left_out_inside = false;

    bool takes(bool is_inside, std::size_t count) {
        if (!is_inside && only_inside) {
            left_out_outside = true;
            return false;
        }
        if (count > events) {
            left_out_inside = true;
            return false;
        }
        events -= count;
        return true;
    }
};

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
                EventRoom& room, MidiItem& item, MidiTallies& tallies)
        : time_(time),
          source_offset_(source_offset),
          keep_inaudible_(keep_inaudible),
          room_(room),
          item_(item),
          tallies_(tallies) {}

    void add_notes(const MidiStream& stream) {
        if (!room_.only_inside) item_.events.reserve(2 * stream.events.size());
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
        const bool is_inside = time_.is_inside(on);
        if (stop <= on || !room_.takes(is_inside, 2)) return;
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

        const bool is_short = end.tick <= begin.tick;
        if (is_short) end.tick = begin.tick + 1;
        if (is_short && (is_inside || keep_inaudible_)) {
            begin.muted = end.muted = true;
            tallies_.too_short_events += 2;
        } else {
            begin.muted = end.muted = silences(is_inside, 2);
        }
        item_.events.push_back(begin);
        item_.events.push_back(end);
        ++item_.note_count;
        if (is_inside && !end.muted) item_.quiet_tick = std::max(item_.quiet_tick, end.tick);
        if (is_inside && time_.length > 0 && stop > time_.length) {
            ++tallies_.notes_past_edge;
            overrun_ = std::max(overrun_, stop - time_.length);
        }
    }

    void add_controller(const MidiController& controller, std::int64_t position) {
        const bool is_inside = time_.is_inside(position);
        if (!room_.takes(is_inside, 1)) return;
        MidiItemEvent event = controller_event(controller);
        event.tick = time_.tick(position);
        event.muted = silences(is_inside, 1);
        const bool is_controller = event.status == controller_status && !event.muted;
        item_.streams_volume |= is_controller && event.data1 == volume_controller;
        item_.streams_pan |= is_controller && event.data1 == pan_controller;
        item_.events.push_back(event);
        ++tallies_.controllers;
    }

    /// REAPER cannot store a muted message: one outside the clip stays, live.
    void add_sysex(const MidiSysex& message, std::int64_t position) {
        const bool is_inside = time_.is_inside(position);
        if (!room_.takes(is_inside, events_in(message))) return;
        MidiItemEvent event;
        event.status = sysex_status;
        event.tick = time_.tick(position);
        event.sysex = static_cast<std::uint32_t>(item_.sysex.size());
        item_.sysex.push_back(message.data);
        item_.events.push_back(event);
        ++tallies_.sysex;
        if (!is_inside) ++tallies_.sysex_outside;
    }

    const ClipTime& time_;
    std::int64_t source_offset_;
    bool keep_inaudible_;
    EventRoom& room_;
    MidiItem& item_;
    MidiTallies& tallies_;
    std::int64_t overrun_ = 0;
};

}  // namespace

/// What a region plays; null where it has none.
struct MidiItemMaker::Source {
    const MidiStream* stream = nullptr;
    const MidiChunk* chunk = nullptr;
};

MidiItemMaker::MidiItemMaker(const MidiMaterial& material, const TempoClock& clock,
                             const MidiEventOptions& options, MidiTallies& tallies,
                             const MidiLimits& limits)
    : material_(material),
      clock_(clock),
      options_(options),
      tallies_(tallies),
      limits_(limits),
      told_regions_(material.regions.size()) {
    // Counted once a chunk: any number of clips may ask.
    chunk_events_.reserve(material.chunks.size());
    for (const MidiChunk& chunk : material.chunks) {
        std::size_t count = chunk.controllers.size();
        for (const MidiSysex& message : chunk.sysex) count += events_in(message);
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

std::size_t MidiItemMaker::events_of(const Source& source) const {
    const std::size_t notes = source.stream != nullptr ? 2 * source.stream->events.size() : 0;
    if (source.chunk == nullptr) return notes;
    return notes + chunk_events_[static_cast<std::size_t>(source.chunk - material_.chunks.data())];
}

ClipTime MidiItemMaker::time_of(const PlacedMidiClip& clip) const {
    ClipTime time;
    time.length = clip.length;
    time.lead = std::max<std::int64_t>(-clip.source_offset, 0);
    if (!clip.in_samples) return time;
    time.item_ticks_per_unit =
        tempo_at(clip.start) * item_ticks_per_quarter / (material_.rate_hz * seconds_per_minute);
    time.steady_until =
        (clock_.next_change(just_behind(clip.start)) - clip.start) * material_.rate_hz;
    time.clock = &clock_;
    time.start = clip.start;
    time.rate_hz = material_.rate_hz;
    return time;
}

MidiItem MidiItemMaker::item(const PlacedMidiClip& clip) {
    MidiItem item;
    item.start = clip.start;
    item.length = item.item_length_raw = clip.length_seconds;
    item.name = material_.regions[clip.region].name;
    item.muted = clip.muted;
    item.locked = clip.locked;
    item.colour_place = clip.colour_place;

    const ClipTime time = time_of(clip);
    set_source_offset(item, clip, time.lead);
    item.end_tick = time.tick(clip.length);
    const std::int64_t overrun = fill(item, clip, time);
    if (options_.truncate_midi_to_clip) return item;
    const double end_tempo = tempo_at(clip.start + clip.length_seconds);
    item.seconds_per_late_tick = seconds_per_minute / (end_tempo * item_ticks_per_quarter);
    const auto units = static_cast<double>(overrun);
    item.length += clip.in_samples
                       ? units / material_.rate_hz
                       : units * item_ticks_per_stream_tick * item.seconds_per_late_tick;
    return item;
}

/// Writes the events as far as the limits allow. Returns how far the last note that sounds runs
/// past the clip, in the stream's unit.
std::int64_t MidiItemMaker::fill(MidiItem& item, const PlacedMidiClip& clip, const ClipTime& time) {
    const Source source = source_of(material_.regions[clip.region]);
    const std::size_t count = events_of(source);
    EventRoom room;
    room.only_inside = events_written_ + count > limits_.events;
    room.events = limits_.audible_events - events_written_;
    if (room.only_inside) events_searched_ += count;
    if (events_searched_ > limits_.searched_events) {
        events_searched_ -= count;
        ++tallies_.incomplete_clips;
        return 0;
    }
    EventWriter writer(time, clip.source_offset, options_.keep_inaudible_midi, room, item,
                       tallies_);
    if (source.stream != nullptr) writer.add_notes(*source.stream);
    if (source.chunk != nullptr) writer.add_chunk(*source.chunk);
    std::ranges::stable_sort(item.events, plays_before);
    events_written_ = limits_.audible_events - room.events;
    if (room.left_out_inside) {
        ++tallies_.incomplete_clips;
    } else if (room.left_out_outside) {
        ++tallies_.trimmed_clips;
    }
    return writer.overrun();
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
    item.source_offset = units * seconds_per_minute / (session_tempo * ticks_per_quarter);
    item.source_length = item.source_offset * session_tempo / tempo_at(clip.start);
    const double difference = std::abs(item.source_offset - item.source_length);
    if (difference * material_.rate_hz >= rounding) ++tallies_.offsets_at_other_tempo;
}

/// Half a tick on: a tempo event that stands at the moment itself counts for it.
double MidiItemMaker::just_behind(double seconds) const {
    return seconds + rounding * seconds_per_minute / (material_.session_tempo * ticks_per_quarter);
}

}  // namespace tanrove
