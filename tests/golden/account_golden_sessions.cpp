// Golden sessions that are about the account: one of which much is left out, and one whose file
// breaks off.
#include "golden/golden_sessions.hpp"

namespace tanrove::golden {

namespace {

using namespace builder;

constexpr std::int64_t quarter = 960000;
constexpr std::int64_t second = 48000;

ClipSpec clip(const std::string& region, std::int64_t position) {
    return {.region = region, .position = position, .length = second};
}

TrackSpec voice() {
    TrackSpec track{.name = "Voice"};
    track.clips = {clip("Voice", 0), clip("Voice-01", 2 * second), clip("Voice-02", 4 * second),
                   clip("Voice-03", 6 * second)};
    track.clips[1].loop = LoopSpec{.mode = 9, .count = 4};
    track.clips[2].deleted = true;
    track.clips[3].file_index = 1;
    track.alternates = {{"Voice.01", {clip("Voice-04", second)}}};
    track.sends = {{.target = "Phones"},
                   {.target = "Verb", .pan_lane = {.initial = 0, .points = {{second, 50}}}}};
    track.inserts = {{}, {.code = "NoneSuch"}, {.code = "MakrKnd2", .bypassed = true}};
    return track;
}

/// Every kind of loss: placements, playlists, sends, plug-ins, files, groups, masters, MIDI and
/// picture.
GoldenCase much_left_out() {
    TrackSpec verb{.name = "Room", .kind = TrackKind::aux, .channels = 2};
    verb.input = "Verb";
    verb.input_is_bus = true;
    TrackSpec keys{.name = "Keys", .kind = TrackKind::midi, .tick_based = true};
    keys.midi_clips = {{.region = "Group", .length = quarter, .clip_group = 0}};
    keys.real_time = {.quantize = true};
    keys.volume_lane = {.initial = 0, .points = {{quarter, -60}}};
    SessionBuilder session;
    session.audio_file({"Voice.wav", 10 * second, 0}).audio_file({"Gone.wav", 10 * second, 0});
    session.io_path({.name = "Phones", .type = 2, .channels = {3, 4}, .mapped = true});
    session.bus("Verb", 5).video_file("Reel.mov");
    session.track(voice()).track(verb).track(keys);
    session.track({.name = "Guide", .kind = TrackKind::aux, .inserts = {{.code = "Digiclik"}}});
    session.track({.name = "Print", .kind = TrackKind::master});
    session.track({.name = "Stems", .kind = TrackKind::master});
    session.track({.name = "Picture", .kind = TrackKind::video});
    session.video_region({.name = "Logo", .length = 25, .movie = 9});
    session.video_clips({"Picture", {{.id = 0, .position = frames(0)}, {.id = 7}}});
    session.group({.name = "Cuts", .members = {0, 1}, .kind = 0});
    session.group({.name = "Old", .members = {0}, .in_both_lists = false});
    RunOptions options;
    options.keep_alt_takes = options.placeholders = false;
    options.no_click = options.no_sidechain = options.skip_bypassed_fx = true;
    return {"much_left_out", session, options, {"Voice.wav"}};
}

GoldenCase damaged() {
    TrackSpec track{.name = "Voice", .clips = {clip("Voice", 0), clip("Voice-01", 2 * second)}};
    SessionBuilder session;
    session.audio_file({"Voice.wav", 10 * second, 0}).tempo(0, 100).track(track);
    GoldenCase cut{"damaged", session, {}, {"Voice.wav"}};
    cut.cut_bytes = 20;
    return cut;
}

}  // namespace

std::vector<GoldenCase> account_golden_cases() {
    return {much_left_out(), damaged()};
}

}  // namespace tanrove::golden
