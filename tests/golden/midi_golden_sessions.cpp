// The golden projects that are about MIDI.
#include "golden/golden_sessions.hpp"

namespace tanrove::golden {

namespace {

using namespace builder;

constexpr std::int64_t quarter = 960000;
constexpr std::int64_t second = 48000;

/// A MIDI clip that plays its stream from the stream's origin on.
MidiClipSpec midi_clip(const std::string& region, std::int64_t position, std::int64_t length,
                       std::vector<NoteSpec> notes) {
    MidiClipSpec spec;
    spec.region = region;
    spec.position = position;
    spec.length = length;
    spec.stream.notes = std::move(notes);
    return spec;
}

TrackSpec midi_track(const std::string& name, std::vector<MidiClipSpec> clips) {
    TrackSpec spec;
    spec.name = name;
    spec.kind = TrackKind::midi;
    spec.tick_based = true;
    spec.midi_clips = std::move(clips);
    return spec;
}

GoldenCase midi_overlaps() {
    const std::vector<NoteSpec> bar = {{0, quarter},
                                       {quarter, quarter, 62},
                                       {2 * quarter, quarter, 64},
                                       {3 * quarter, 2 * quarter, 65}};
    TrackSpec tails = midi_track("Tails", {midi_clip("First", 0, 4 * quarter, bar),
                                           midi_clip("Second", 2 * quarter, 4 * quarter, bar)});
    tails.midi_clips[1].muted = tails.midi_clips[1].locked = true;
    TrackSpec heads = midi_track("Heads", tails.midi_clips);
    heads.midi_clips[1].overlap = 1;
    heads.muted = true;
    heads.mute_lane.points = {{4 * quarter, 0}};
    TrackSpec sum = midi_track("In samples", {midi_clip("Third", second, 2 * second, {}),
                                              midi_clip("Fourth", 2 * second, 2 * second, {})});
    sum.tick_based = false;
    for (auto& clip : sum.midi_clips) {
        clip.stream.notes = {{0, second / 4}, {second, 2 * second, 62}};
    }
    SessionBuilder session;
    session.tempo(0, 120).tempo(3 * quarter, 60);
    session.track(tails).track(heads).track(sum);
    return {"midi_overlaps", session, {}, {}};
}

GoldenCase midi_edges() {
    TrackSpec edges = midi_track("Edges", {midi_clip("Both edges", 4 * quarter, 2 * quarter,
                                                     {{0, 2 * quarter, 60},
                                                      {quarter, quarter, 62},
                                                      {2 * quarter, 10, 63},
                                                      {2 * quarter, 2 * quarter, 64},
                                                      {4 * quarter, quarter, 65}})});
    auto& stream = edges.midi_clips[0].stream;
    edges.midi_clips[0].head = quarter;
    stream.controllers = {{2 + 256 * 7, quarter, 100},
                          {2 + 256 * 7, 2 * quarter, 90},
                          {1, 0, 0},
                          {4, 2 * quarter, 33}};
    stream.sysex = {{quarter, {0xf0, 0x7e, 0xf7}}, {4 * quarter, {0xf0, 0x7f, 0xf7}}};
    edges.midi_settings = {.volume = 96, .pan = 64, .patch = 12};
    TrackSpec high = midi_track("Transposed", {midi_clip("High", 0, quarter,
                                                         {{0, quarter, 120},
                                                          {0, 50000, 60},
                                                          {50000, 50000, 60},
                                                          {100000, 300000, 60},
                                                          {0, 100000, 64}})});
    high.real_time = {
        .quantize = true, .delay = true, .delay_ticks = -100, .transpose = true, .octaves = 1};
    TrackSpec group = midi_track("Grouped", {midi_clip("Group", 0, quarter, {})});
    group.midi_clips[0].clip_group = 0;
    SessionBuilder session;
    session.track(edges).track(high).track(group);
    return {"midi_edges", session, {}, {}};
}

GoldenCase midi_edges_as_stored() {
    GoldenCase kept = midi_edges();
    kept.name = "midi_edges_as_stored";
    kept.options.keep_inaudible_midi = kept.options.truncate_midi_to_clip = true;
    return kept;
}

}  // namespace

std::vector<GoldenCase> midi_golden_cases() {
    return {midi_overlaps(), midi_edges(), midi_edges_as_stored()};
}

}  // namespace tanrove::golden
