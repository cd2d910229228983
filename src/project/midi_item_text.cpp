// The MIDI item, line group by line group, in the order of the file.
#include "project/midi_item_text.hpp"

#include "base/base64.hpp"
#include "project/quoted_text.hpp"

namespace tanrove {

namespace {

constexpr int event_level = 4;

void write_place(TextSink& out, const MidiItem& item) {
    out.line(3, "POSITION %.10f", item.start);
    out.line(3, "SNAPOFFS 0");
    out.line(3, "LENGTH %.10f", item.length);
    if (item.source_offset <= 0) return;
    out.line(3, "SOFFS %.10f", item.source_length < 0 ? item.source_offset : item.source_length);
}

void write_fades(TextSink& out) {
    out.line(3, "LOOP 0");
    out.line(3, "ALLTAKES 0");
    out.line(3, "FADEIN 1 0 0 1 0 0 0");
    out.line(3, "FADEOUT 1 0 0 1 0 0 0");
}

/// What Pro Tools sends when playback starts.
void write_start_events(TextSink& out, const MidiItem& item, const MidiTrackSettings& settings) {
    const auto send = [&](std::int32_t controller, std::int32_t value) {
        out.line(event_level, "E 0 b0 %02x %02x", static_cast<unsigned>(controller),
                 static_cast<unsigned>(value));
    };
    if (!item.streams_volume && settings.volume >= 0) send(volume_controller, settings.volume);
    if (!item.streams_pan && settings.pan >= 0) send(pan_controller, settings.pan);
    if (settings.patch >= 0) {
        out.line(event_level, "E 0 c0 %02x 00", static_cast<unsigned>(settings.patch));
    }
}

void write_events(TextSink& out, const MidiItem& item) {
    std::uint64_t before = 0;
    for (const MidiItemEvent& event : item.events) {
        const std::uint64_t delta = event.tick > before ? event.tick - before : 0;
        before = event.tick;
        if (event.status == sysex_status) {
            out.row(event_level, "<X ", delta, " 0");
            out.row(event_level + 1, base64(item.sysex[event.sysex]));
            out.line(event_level, ">");
        } else {
            out.row(event_level, event.muted ? "Em " : "E ", delta, " ", HexByte{event.status}, " ",
                    HexByte{event.data1}, " ", HexByte{event.data2});
        }
    }
}

}  // namespace

void write_midi_item(TextSink& out, const MidiItem& item, const MidiTrackSettings& settings) {
    out.line(2, "<ITEM");
    write_place(out, item);
    write_fades(out);
    if (item.colour) out.line(3, "COLOR %lu R", static_cast<unsigned long>(*item.colour));
    out.line(3, "MUTE %d 0", item.muted ? 1 : 0);
    if (item.locked) out.line(3, "LOCK 1");
    out.line(3, "NAME %s", quoted(item.name).c_str());
    out.line(3, "<SOURCE MIDI");
    out.line(event_level, "HASDATA 1 %d QN", item_ticks_per_quarter);
    write_start_events(out, item, settings);
    write_events(out, item);
    out.line(event_level, "E 1 b0 7b 00");  // all notes off
    out.line(3, ">");
    out.line(2, ">");
}

}  // namespace tanrove
