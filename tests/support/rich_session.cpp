// Each part describes one family; a rich session is all of them in one.
#include "support/rich_session.hpp"

#include <algorithm>

namespace tanrove::builder {

namespace {

constexpr std::int64_t quarter_ticks = 960000;
constexpr std::int64_t clip_samples = 24000;
constexpr std::uint64_t effects_identity = 0x0123456789abcdef;

std::size_t tenth(std::size_t count) {
    return std::max<std::size_t>(count / 10, 1);
}

void describe_time(SessionBuilder& session, const RichSize& size) {
    const auto count = static_cast<int>(tenth(size.clips_per_track));
    for (int i = 0; i <= count; ++i) {
        const std::int64_t tick = i * 4 * quarter_ticks;
        session.tempo(tick, 90.0 + i % 60).meter(tick, static_cast<std::uint32_t>(i + 1), 4, 4);
        session.marker("Marker " + std::to_string(i), tick);
        session.selection("Part " + std::to_string(i), tick, tick + quarter_ticks);
    }
    session.default_tempo(96).marker_in_samples("Hit", 4800).timecode({});
    session.grid_and_nudge({0, 1, 0}, {0, 0, 240}).click(true);
}

void describe_tables(SessionBuilder& session) {
    session.group({.name = "Band", .members = {0, 1}, .slot = 1}).folder(1, {0});
    session.alternate_playlist("Track 1.01", 3).video_file("Reel 1.mov").picture({25, 2});
    session.video_region({.name = "Reel 1-01", .source_offset = 5, .length = 25});
    session.video_clips({"Video 1", {{.position = frames(0)}, {.position = frames(25)}}});
    session.freeze_render({.name = "Track 1", .length = 48000}).colour_schemes(4, 5);
    session.vca("VCA 1", -35);
}

void describe_routes(SessionBuilder& session) {
    session.top_level(hardware_insert("Outboard")).strip_table_form(StripTableForm::since_2022);
    session.io_path({"Mic", 0, {1}}).io_path({"Out 1-2", 1, {1, 2}}).bus("Reverb", 3);
    session.track({.name = "Verb",
                   .kind = TrackKind::aux,
                   .channels = 2,
                   .input = "Reverb",
                   .input_is_bus = true});
    session.io_path({.name = "Film", .type = 2, .channels = {5, 6, 7, 8, 9}});
    TrackSpec panned{.name = "Steps", .output = "Film", .stored_panners = {{9, 8, 7, 6, 5, 4, 3}}};
    panned.panners = {PannerSpec(7, {.initial = 50, .points = {{0, 20}, {4800, 80}}})};
    session.track(panned);
    session.track({.name = "Film bus",
                   .kind = TrackKind::aux,
                   .channels = 5,
                   .input = "Film",
                   .input_is_bus = true});
    session.track({.name = "Main", .kind = TrackKind::master, .channels = 2});
}

/// One of the inserts that the kinds give in turn, with a lane of its own.
std::vector<InsertSpec> some_insert(std::size_t number) {
    static const std::vector<InsertSpec> kinds = inserts_of_all_kinds();
    std::vector<InsertSpec> one = {kinds[number % kinds.size()]};
    one.front().lanes = {{.points = {{0, 0}, {4800, 1 << 29}}}};
    return one;
}

void describe_plugins(SessionBuilder& session) {
    session.plugin_name({.name = "Test EQ", .code = "DigiTest"});
    session.top_level(block(0x2602, ByteWriter().counted("Out 1-2").bytes()));
    constexpr std::ptrdiff_t slots = 10;  // on one track
    const auto all = inserts_of_all_kinds();
    session.track({.name = "Inserted", .inserts = {all.begin(), all.begin() + slots}});
    TrackSpec further = {.name = "Inserted too", .inserts = {all.begin() + slots, all.end()}};
    further.inserts.push_back({.code = "DigiTrim", .state = trim_state({{.inverted = true}, {}})});
    session.track(further);
}

LaneSpec lane_of(std::size_t points, bool in_ticks) {
    LaneSpec lane = {.initial = -10};
    lane.points.reserve(points);
    const std::int64_t step = in_ticks ? quarter_ticks / 100 : 400;
    for (std::size_t i = 0; i < points; ++i) {
        lane.points.push_back({static_cast<std::int64_t>(i) * step, static_cast<int>(i % 90)});
    }
    return lane;
}

TrackSpec mixed_track(std::size_t number, const RichSize& size) {
    TrackSpec track;
    track.name = "Track " + std::to_string(number + 1);
    track.original_name = "Audio " + std::to_string(number + 1);
    track.tick_based = number % 2 == 1;
    track.channels = number % 3 == 2 ? 2 : 1;
    track.comment = "Take " + std::to_string(number);
    track.colour = static_cast<int>(number % 90);
    track.active = number % 7 != 2;
    track.voice_off = number % 5 == 1;
    track.volume_lane = lane_of(size.points_per_lane, track.tick_based);
    track.pan_lane = lane_of(1, track.tick_based);
    track.input = "Mic";
    track.inserts = some_insert(number);
    track.sends = {{.target = "Reverb", .level_db = -12, .level_lane = lane_of(2, false)}};
    return track;
}

/// Every eighth clip has the same of what clips can have; a fade's row stands behind the third.
ClipSpec rich_clip(std::size_t track, std::size_t number, std::size_t region) {
    ClipSpec clip;
    clip.region = "Take " + std::to_string(track + 1) + "-";
    clip.region += std::to_string(region);
    clip.position = static_cast<std::int64_t>(number) * clip_samples;
    clip.length = clip_samples;
    clip.source_offset = static_cast<std::int64_t>(region) * clip_samples;
    clip.colour = static_cast<int>(number % 60);
    const std::size_t kind = number % 8;
    clip.is_fade = kind == 2;
    if (kind == 1) clip.gain = {{0, -3.0F}, {1000, 2.0F}};
    if (kind == 3) clip.warp = WarpSpec{.points = {{0, 0}, {9000, 10000}}};
    if (kind == 4) clip.pitch = {.semitones = -2, .cents = 25};
    if (kind == 5) clip.effects_identity = effects_identity;
    if (kind == 6) clip.loop = LoopSpec{.count = 4, .length = 4 * clip_samples};
    if (kind == 7) clip.sync_samples = 2400;
    if (clip.is_fade) clip.fade = {.kind = 3, .pre = 0, .length = 4800};
    return clip;
}

void describe_audio(SessionBuilder& session, const RichSize& size) {
    session.audio_file({"Take.wav", clip_samples * 100, 0}).audio_file({"Room.wav", 480000, 0});
    for (std::size_t t = 0; t < size.audio_tracks; ++t) {
        TrackSpec track = mixed_track(t, size);
        track.clips.reserve(size.clips_per_track);
        for (std::size_t c = 0; c < size.clips_per_track; ++c) {
            track.clips.push_back(rich_clip(t, c, c % size.regions_per_track));
        }
        session.track(track);
    }
}

void describe_clip_tables(SessionBuilder& session) {
    session.clip_group({"Verse", 4 * clip_samples, {rich_clip(0, 0, 0), rich_clip(0, 3, 3)}});
    TrackSpec track = {.name = "Comped", .active = false, .voice_off = true};
    track.clips = {rich_clip(900, 0, 0)};
    track.clips.back().clip_group = 0;
    track.alternates = {{"Comped.01", {rich_clip(900, 4, 4)}}};
    session.track(track);
    session.top_level(effects_block({{effects_identity, {{"Gain", 7}, {"Freq", 9}}}}));
}

void describe_midi(SessionBuilder& session, const RichSize& size) {
    session.midi_output({.name = "Synth 1", .node = 3});
    for (std::size_t t = 0; t < tenth(size.audio_tracks); ++t) {
        TrackSpec track;
        track.name = "Keys " + std::to_string(t + 1);
        track.kind = t % 2 == 0 ? TrackKind::midi : TrackKind::instrument;
        track.midi_settings = {.volume = 90, .patch = 5, .output = 1};
        track.real_time = {.quantize = true, .swing = 20, .transpose = true, .semitones = -5};
        for (std::size_t c = 0; c < tenth(size.clips_per_track); ++c) {
            MidiClipSpec clip;
            clip.region = track.name + "-" + std::to_string(c + 1);
            clip.position = static_cast<std::int64_t>(c) * 4 * quarter_ticks;
            clip.length = 4 * quarter_ticks;
            for (std::int64_t n = 0; n < 8; ++n) {
                clip.stream.notes.push_back({.position = n * quarter_ticks / 2});
            }
            clip.stream.controllers = {{.kind = 256 + 2, .position = 0, .value = 64}};
            clip.stream.sysex = {{.position = 0, .data = {0xf0, 1, 0xf7}}};
            track.midi_clips.push_back(clip);
        }
        track.midi_clips.back().clip_group = 0;
        session.track(track);
    }
}

}  // namespace

SessionBuilder rich_session(const RichSize& size) {
    SessionBuilder session;
    describe_audio(session, size);
    describe_routes(session);
    describe_clip_tables(session);
    describe_midi(session, size);
    describe_time(session, size);
    describe_tables(session);
    describe_plugins(session);
    return session;
}

std::vector<NamedSession> family_sessions() {
    constexpr RichSize one = {.audio_tracks = 1, .clips_per_track = 1, .points_per_lane = 1};
    std::vector<NamedSession> all;
    const auto add = [&](const char* name) -> SessionBuilder& {
        return all.emplace_back(NamedSession{name, {}}).session;
    };
    describe_time(add("time"), one);
    describe_tables(add("tables"));
    describe_audio(add("tracks"), {.audio_tracks = 2, .clips_per_track = 0, .points_per_lane = 0});
    describe_routes(add("mixer"));
    describe_audio(add("lanes"), {.audio_tracks = 1, .clips_per_track = 0, .points_per_lane = 9});
    describe_audio(add("clips"), {.audio_tracks = 1, .clips_per_track = 8, .points_per_lane = 0});
    describe_clip_tables(add("clip_tables"));
    describe_midi(add("midi"), one);
    describe_plugins(add("plugins"));
    return all;
}

}  // namespace tanrove::builder
