// Counts the values of each controller, chunk by chunk.
#include "session/midi_chunk_dump.hpp"

#include <map>

#include "base/formatted_text.hpp"

namespace tanrove {

namespace {

std::string controller_name(std::uint16_t kind) {
    switch (controller_type(kind)) {
        case MidiControllerType::pitch_bend:
            return "pitch bend";
        case MidiControllerType::aftertouch:
            return "aftertouch";
        case MidiControllerType::continuous:
            break;
    }
    return formatted("CC %03d", controller_number(kind));
}

}  // namespace

std::string midi_chunk_dump(std::span<const MidiChunk> chunks) {
    TextBuffer text;
    int number = 0;
    int streams = 0;
    int events = 0;
    for (const MidiChunk& chunk : chunks) {
        text.print("chunk %-3d notes %-5u origin %llu\n", number++, chunk.note_count,
                   static_cast<unsigned long long>(chunk.origin));
        std::map<std::uint16_t, int> count_of_kind;
        for (const MidiController& event : chunk.controllers) ++count_of_kind[event.kind];
        for (const auto& [kind, count] : count_of_kind) {
            text.print("    %-16s count %d\n", controller_name(kind).c_str(), count);
            ++streams;
            events += count;
        }
    }
    text.print("%d chunks, %d streams with data, %d events\n", number, streams, events);
    return text.text();
}

}  // namespace tanrove
