// What the golden projects are made from. Each session holds what its subject needs and no more.
#include "golden/golden_sessions.hpp"

#include <bit>

#include "support/named_controls.hpp"
#include "support/records/plugin_records.hpp"

namespace tanrove::golden {

namespace {

using namespace builder;

constexpr std::int64_t quarter = 960000;
constexpr std::int64_t second = 48000;

/// A session with two files of ten seconds, "Voice.wav" and "Tone.L.wav", "Tone.R.wav" behind it.
SessionBuilder with_files() {
    SessionBuilder session;
    session.audio_file({"Voice.wav", 10 * second, 0});
    session.audio_file({"Tone.L.wav", 10 * second, 0});
    session.audio_file({"Tone.R.wav", 10 * second, 0});
    return session;
}

ClipSpec clip(const std::string& region, std::int64_t position, std::int64_t length,
              std::int64_t source_offset = 0) {
    ClipSpec spec;
    spec.region = region;
    spec.position = position;
    spec.length = length;
    spec.source_offset = source_offset;
    return spec;
}

ClipSpec placed_group(std::uint32_t group, std::int64_t position) {
    ClipSpec placed = clip("", position, 0);
    placed.clip_group = group;
    return placed;
}

FadeSpec fade(std::uint8_t kind, std::uint32_t pre, std::uint32_t length, std::uint8_t family = 2,
              std::uint8_t type = 0, std::int16_t setting = 0) {
    return {kind, pre, length, family, false, type, setting, type, setting};
}

/// The row of a fade that an edit list holds between its clips.
ClipSpec fade_row(std::int64_t position, const FadeSpec& fade) {
    ClipSpec row;
    row.position = position;
    row.is_fade = true;
    row.fade = fade;
    return row;
}

TrackSpec track(const std::string& name, std::vector<ClipSpec> clips) {
    TrackSpec spec;
    spec.name = name;
    spec.clips = std::move(clips);
    return spec;
}

TrackSpec stereo_track(const std::string& name, std::vector<ClipSpec> clips) {
    for (auto& spec : clips) {
        spec.file_index = 1;
        spec.file_per_channel = true;
    }
    TrackSpec spec = track(name, std::move(clips));
    spec.channels = 2;
    return spec;
}

GoldenCase empty_session() {
    return {"empty_session", SessionBuilder().without_product(), {}, {}};
}

GoldenCase time_frame() {
    SettingsSpec settings;
    settings.bit_depth = 16;
    settings.pan_depth = 4;
    TimecodeSpec timecode;
    timecode.base_code = 5;
    timecode.start_frames = 107892;
    timecode.extended_code = 5;
    timecode.extended_start_frames = 107892;
    SessionBuilder session;
    session.settings(settings).product("Pro Tools Ultimate", "2019.6.0").timecode(timecode);
    session.tempo(0, 200, 240000).tempo(4 * quarter, 87.5).tempo(10 * quarter, 140);
    session.meter(0, 1, 3, 4).meter(9 * quarter, 4, 7, 8).meter(10 * quarter, 5, 7, 8);
    session.marker("It's \"here\"", 0).marker_in_samples("At a sample", 3 * second);
    session.selection("Chorus", 4 * quarter, 8 * quarter);
    session.grid_and_nudge({0, 1, 0}, {0, 0, 240});
    return {"time_frame", session, {}, {}};
}

/// A drawn ramp: a run of steps of half a quarter note each.
GoldenCase tempo_ramps() {
    SessionBuilder session;
    session.tempo(0, 100);
    for (int step = 0; step <= 20; ++step) {
        session.tempo(4 * quarter + step * quarter / 2, 100 + 2 * step);
    }
    RunOptions options;
    options.tempo_ramps = true;
    return {"tempo_ramps", session, options, {}};
}

GoldenCase clips() {
    TrackSpec voice =
        track("Voice", {clip("Voice", 0, 2 * second), clip("Voice-01", 3 * second, second, second),
                        clip("Voice-02", 5 * second, second, 4 * second)});
    voice.original_name = "Audio 1";
    voice.clips[0].locked = true;
    voice.clips[1].muted = true;
    voice.clips[2].sync_samples = second / 2;
    TrackSpec on_ticks = track("On the grid", {clip("Voice-03", quarter, second, 2 * second),
                                               clip("Voice-03", 5 * quarter, second, 2 * second)});
    on_ticks.tick_based = true;
    SessionBuilder session = with_files();
    session.tempo(0, 60).tempo(4 * quarter, 120).audio_file({"Outtake.wav", second, 0});
    session.track(voice).track(on_ticks);
    session.track(stereo_track(
        "Tone", {clip("Tone", second, second), clip("Tone-01", 4 * second, second, 100)}));
    session.track(track("Nothing yet", {}));
    TrackSpec sides =
        track("Sides of a file", {clip("Pair.L", 0, second), clip("Pair.R", second, second)});
    for (auto& side : sides.clips) side.file_index = 3;
    sides.clips[1].file_channel = 1;
    session.track(sides);
    return {"clips", session, {}, {"Voice.wav", "Tone.L.wav"}};
}

GoldenCase clip_gain() {
    TrackSpec voice = track("Voice", {clip("Voice", 0, second), clip("Voice-01", second, second),
                                      clip("Voice-02", 2 * second, second, second)});
    voice.clips[0].gain = {{0, -3}};
    voice.clips[1].gain = {{0, 0}, {second / 2, -1}, {2 * second, 9}};
    voice.clips[2].gain = {{second, 0}, {second + 1, -144}};
    SessionBuilder session = with_files();
    session.track(voice);
    return {"clip_gain", session, {}, {"Voice.wav"}};
}

/// A clip that follows the grid over a tempo change, a pitched one at half speed, and loops.
GoldenCase stretched_and_looped() {
    constexpr auto at = [](double quarters, double seconds) {
        return std::pair(static_cast<std::uint64_t>(quarters * quarter), seconds * second);
    };
    TrackSpec on_ticks = track("Elastic", {clip("Voice", 2 * quarter, 3 * second)});
    on_ticks.tick_based = true;
    on_ticks.clips[0].warp = WarpSpec{{at(2, 0), at(3, 1.5), at(9, 4)}, true, 0};
    TrackSpec loops = track("Loops", {clip("Voice-01", 0, second / 2, second),
                                      clip("Voice-02", 4 * second, 2 * second, second),
                                      clip("Voice-03", 8 * second, second, 3 * second),
                                      clip("Voice-04", 12 * second, second, 2 * second)});
    loops.clips[0].loop = LoopSpec{.mode = 2, .count = 4};
    loops.clips[1].loop = LoopSpec{.mode = 1, .length = second};
    loops.clips[2].loop = LoopSpec{.mode = 9, .count = 4};
    loops.clips[3].pitch.semitones = -3;
    loops.clips[3].warp = WarpSpec{{{0, 0}, {20 * second, 10.0 * second}}, false, 0};
    SessionBuilder session = with_files();
    session.tempo(0, 60).tempo(4 * quarter, 120);
    session.track(on_ticks).track(loops);
    return {"stretched_and_looped", session, {}, {"Voice.wav"}};
}

GoldenCase left_out_placements() {
    TrackSpec edited = track(
        "Edited", {clip("Voice", 0, 2 * second), clip("Voice-01", 2 * second, second, second),
                   clip("Voice-02", 3 * second, second), clip("Voice-03", 6 * second, second)});
    edited.clips[1].is_fade = true;
    edited.clips[1].fade.kind = 2;
    edited.clips[1].fade.length = 4800;
    edited.clips[3].deleted = true;
    SessionBuilder session = with_files();
    session.track(edited);
    return {"left_out_placements", session, {}, {"Voice.wav"}};
}

/// Clips over each other: the later row on top, a kept tail, a clip covered whole, a muted one.
GoldenCase overlaps() {
    TrackSpec edited = track(
        "Edited", {clip("Voice", 0, 4 * second), clip("Voice-01", 2 * second, 3 * second),
                   clip("Voice-02", 4 * second, 2 * second, second),
                   clip("Voice-03", 4 * second + 24000, second),
                   clip("Voice-04", 8 * second, 2 * second), clip("Voice-05", 9 * second, second)});
    edited.clips[1].overlap = 1;
    edited.clips[2].overlap = 1;
    edited.clips[5].muted = true;
    SessionBuilder session = with_files();
    session.track(edited);
    return {"overlaps", session, {}, {"Voice.wav"}};
}

/// Clip Effects: every block at work on one clip, on its own, as a piece of a group and in a loop;
/// the polarity alone on another; and on a third what changes nothing.
GoldenCase clip_effects() {
    const auto stored = [](const std::string& controls) {
        std::vector<std::pair<std::string, std::uint32_t>> bits;
        for (const auto& [name, value] : named_controls(controls)) {
            bits.emplace_back(name, std::bit_cast<std::uint32_t>(static_cast<float>(value)));
        }
        return bits;
    };
    const std::vector<EffectsSpec> effects = {
        {1, stored("Phase Switch In/Out 1, Input Trim 0.6, EQ Low Gain 0.75, EQ High Type 1, "
                   "EQ High Gain 0.4, Filter 1 In/Out 1, Filter 1 Frequency 0.3, Exp Ratio 0.3, "
                   "Cmp Ratio 0.7, Cmp Gain Makeup 0.5, Fader Volume 0.5")},
        {2, stored("Phase Switch In/Out 1, EQ On/Off 1")},
        {3, stored("EQ Low Gain 0.5")}};
    const auto with = [](std::uint64_t identity, ClipSpec plain) {
        plain.effects_identity = identity;
        return plain;
    };
    const ClipSpec shaped = with(1, clip("Voice-01", 0, second));
    const ClipSpec inverted = with(2, clip("Voice-02", 2 * second, second));
    const ClipSpec plain = with(3, clip("Voice-03", 4 * second, second));
    ClipSpec looped = with(1, clip("Voice-01", 6 * second, second));
    looped.loop = LoopSpec{.mode = 2, .count = 2};
    SessionBuilder session;
    session.audio_file({"Voice.wav", 100 * second, 0});
    session.clip_group({"Phrase", 2 * second, {shaped}});
    session.track(track("Voice", {shaped, inverted, plain, looped, placed_group(0, 10 * second)}));
    session.top_level(effects_block(effects));
    return {"clip_effects", session, {}, {"Voice.wav"}};
}

/// A group of two crossfaded clips inside a group that mutes one copy of it and shows a part of the
/// other; a group that is not there.
GoldenCase nested_groups() {
    ClipSpec muted = placed_group(0, 6 * second);
    muted.muted = true;
    SessionBuilder session = with_files();
    session.clip_group({"Phrase",
                        4 * second,
                        {clip("Voice", 0, 2 * second), fade_row(2 * second, fade(1, 4800, 9600)),
                         clip("Voice-01", 2 * second, 2 * second, 3 * second)}});
    session.clip_group(
        {"Verse", 9 * second, {clip("Voice-02", 0, second), placed_group(0, second), muted}});
    session.track(track("Voice", {placed_group(1, second), placed_group(0, 12 * second),
                                  placed_group(7, 20 * second)}));
    return {"nested_groups", session, {}, {"Voice.wav"}};
}

/// Three copies of a group that share its list, the last one faded at both ends; a group cut in two
/// with a crossfade at the cut; one that covers a clip and is covered by another. Its second clip
/// is stretched and pitched.
GoldenCase cut_groups() {
    ClipSpec stretched = clip("Voice-01", 2 * second, second, 3 * second);
    stretched.warp = WarpSpec{.points = {{0, 0}, {30000, 24000}, {72000, 48000}},
                              .anchor = static_cast<std::uint64_t>(3 * second)};
    stretched.pitch.semitones = 2;
    SessionBuilder session = with_files();
    session.clip_group({"Riff", 4 * second, {clip("Voice", 0, 2 * second), stretched}});
    for (const char* copy : {"Riff-01", "Riff-02"}) {
        session.clip_group({.name = copy, .length = 4 * second, .list_of = 0});
    }
    session.clip_group({.name = "Left", .length = second, .list_of = 0});
    session.clip_group({.name = "Right", .length = 2 * second, .start = second, .list_of = 0});
    ClipSpec first = placed_group(0, 0);
    first.locked = true;
    session.track(
        track("Voice", {first, placed_group(1, 5 * second), fade_row(10 * second, fade(3, 0, 9600)),
                        placed_group(2, 10 * second), fade_row(14 * second, fade(2, 0, 9600)),
                        placed_group(3, 15 * second), fade_row(16 * second, fade(1, 4800, 9600)),
                        placed_group(4, 16 * second), clip("Voice-02", 20 * second, 2 * second),
                        placed_group(0, 21 * second), clip("Voice-03", 24 * second, 2 * second)}));
    return {"cut_groups", session, {}, {"Voice.wav"}};
}

/// A cue list: groups without audio on a mono track, on its other playlist and on both legs of a
/// stereo track. One lies over a clip, one under the next, one wholly under another.
GoldenCase cue_list() {
    TrackSpec cues = track("Cues", {clip("Voice", second, 2 * second), placed_group(0, 2 * second),
                                    placed_group(1, 4 * second), placed_group(0, 8 * second),
                                    placed_group(1, 8 * second)});
    cues.clips[2].muted = cues.clips[2].locked = true;
    cues.clips[2].colour = 5;
    cues.alternates = {{"Cues.01", {placed_group(0, 0)}}};
    TrackSpec wide = track("Wide", {placed_group(1, second)});
    wide.channels = 2;
    SessionBuilder session = with_files();
    session.clip_group({"\"Hold there!\" $QN=1", 3 * second, {}});
    session.clip_group({.name = "It's him", .length = 3 * second, .start = -second, .list_of = 0});
    session.track(cues).track(wide).alternate_playlist("Cues.01", 1);
    return {"cue_list", session, {}, {"Voice.wav"}};
}

GoldenCase alternates() {
    TrackSpec lead = track("Lead", {clip("Voice", 0, 2 * second)});
    lead.alternates = {{"Lead.01", {clip("Voice-01", second, second, second)}},
                       {"Lead.02", {clip("Voice-02", 0, second, 3 * second)}},
                       {"Lead.03", {clip("Voice-02", second, second, 3 * second)}},
                       {"Of nobody", {clip("Voice-03", 0, second, 5 * second)}}};
    TrackSpec only_takes = track("Takes", {});
    only_takes.alternates = {{"Takes.01", {clip("Voice-01", 0, second, second)}}};
    TrackSpec off = track("Switched off", {clip("Voice-04", 0, second)});
    off.active = false;
    SessionBuilder session = with_files();
    TrackSpec pad = stereo_track("Pad", {clip("Tone", 0, second)});
    pad.alternates = {{"Pad.01", stereo_track("", {clip("Tone-01", second, second)}).clips}};
    session.track(lead).track(off).track(only_takes).track(pad);
    return {"alternates", session, {}, {"Voice.wav"}};
}

GoldenCase alternates_dropped() {
    GoldenCase dropped = alternates();
    dropped.name = "alternates_dropped";
    dropped.options.keep_alt_takes = false;
    return dropped;
}

GoldenCase surround() {
    TrackSpec wide = track("5.1 bed", {clip("Voice", second, second)});
    wide.channels = 6;
    SessionBuilder session = with_files();
    session.track(wide);
    return {"surround", session, {}, {"Voice.wav"}};
}

TrackSpec routed(const std::string& name, const std::string& output,
                 TrackKind kind = TrackKind::audio) {
    TrackSpec spec = track(name, {});
    spec.kind = kind;
    spec.output = output;
    return spec;
}

/// A Routing folder with another in it, a Basic folder and a track that plays past it.
GoldenCase nested_folders() {
    TrackSpec drums = routed("Drums", "Out 1-2", TrackKind::routing_folder);
    drums.input = "Drum Bus";
    TrackSpec toms = routed("Toms", "Drum Bus", TrackKind::routing_folder);
    toms.input = "Tom Bus";
    drums.input_is_bus = toms.input_is_bus = true;
    SessionBuilder session;
    session.bus("Drum Bus", 0).bus("Tom Bus", 2).track(drums).track(routed("Kick", "Drum Bus"));
    session.track(toms).track(routed("Floor", "Tom Bus")).track(routed("Dry", "Out 1-2"));
    session.track(routed("Rooms", "", TrackKind::basic_folder)).track(routed("Far", "Out 1-2"));
    session.track(routed("Voice", "Out 1-2"));
    session.folder(0, {1, 2, 4, 5}).folder(2, {3}).folder(5, {6});
    session.strip_table_form(StripTableForm::since_2022);
    return {"nested_folders", session, {}, {}};
}

GoldenCase groups_and_vcas() {
    SessionBuilder session;
    for (const char* name : {"Kick", "Snare", "Bass"}) session.track(track(name, {}));
    session
        .track({.name = "Rhythm VCA",
                .kind = TrackKind::vca,
                .soloed = true,
                .mixer = vca_record(-65)})
        .track(routed("Mix", "", TrackKind::master));
    session.group({.name = "Rhythm", .members = {0, 1, 2, 4}, .vca_master = 3});
    session.group({.name = "Cuts", .members = {0, 1}, .kind = 0});
    session.group({.name = "Old", .members = {0}, .in_both_lists = false});
    for (std::uint32_t i = 0; i < 33; ++i) {
        session.group({.name = "Mix " + std::to_string(i + 1),
                       .members = {static_cast<std::uint16_t>(i % 3), 4},
                       .kind = 1,
                       .slot = i,
                       .attributes = {1, 1, 0, 0, 0, 0, 0, 1, 1, i == 5}});
    }
    return {"groups_and_vcas", session, {}, {}};
}

/// Crossfades on a cut with handles, on one without, and on one beside its fade's middle.
GoldenCase crossfades() {
    SessionBuilder session = with_files();
    session.track(
        track("Cuts",
              {clip("Voice", 0, second), fade_row(second, fade(1, 2400, 4800)),
               clip("Voice-01", second, second, second), fade_row(2 * second, fade(1, 2400, 4800)),
               clip("Voice-02", 2 * second, second), fade_row(3 * second + 50, fade(1, 0, 4800, 1)),
               clip("Voice-03", 3 * second, second, 4 * second),
               fade_row(4 * second, fade(1, 2400, 4800, 1, 0, 4000)),
               clip("Voice-04", 4 * second, second, 6 * second),
               fade_row(7 * second, fade(2, 4800, 4800))}));
    return {"crossfades", session, {}, {"Voice.wav"}};
}

/// A clip a family, type and preset, with the same fade at both ends.
GoldenCase fade_shapes() {
    const struct {
        std::uint8_t family, type;
        std::int16_t setting;
    } shapes[] = {{1, 0, 0},  {1, 0, 5000}, {1, 1, 0},     {1, 1, -5000}, {1, 2, -2},
                  {1, 2, 1},  {2, 0, 0},    {2, 0, -1000}, {2, 1, 0},     {2, 1, 5000},
                  {2, 2, -1}, {2, 2, 2},    {2, 2, 3},     {3, 0, 1000},  {3, 2, 0}};
    std::vector<ClipSpec> rows;
    std::int64_t at = 0;
    for (const auto& [family, type, setting] : shapes) {
        rows.push_back(fade_row(at, fade(3, 0, 4800, family, type, setting)));
        rows.push_back(clip("Voice", at, second));
        at += second;
        rows.push_back(fade_row(at, fade(2, 4800, 4800, family, type, setting)));
    }
    SessionBuilder session = with_files();
    session.track(track("Shapes", rows));
    return {"fade_shapes", session, {}, {"Voice.wav"}};
}

GoldenCase fade_shapes_plain() {
    GoldenCase plain = fade_shapes();
    plain.name = "fade_shapes_plain";
    plain.options.plain_fades = true;
    return plain;
}

/// Faders and pans at rest and on the move, each mode, and solos that meet mutes.
GoldenCase mixer() {
    TrackSpec at_rest = track("Voice at rest", {clip("Voice", 0, second)});
    at_rest.fader_db = -7.3;
    at_rest.pan = -37;
    at_rest.solo_safe = true;
    at_rest.hidden = true;
    TrackSpec moves = track("All that moves", {clip("Voice-01", 0, second)});
    moves.volume_lane = {0, {{0, 0}, {second, 0}, {2 * second, -300}, {2 * second, 14}}};
    moves.mute_lane = {0, {{second, 1}, {2 * second, 0}}};
    moves.pan_lane = {25, {{second, 100}, {2 * second, 0}, {3 * second, -50}}};
    moves.trim_lane = {{0, {{second, -14}}}};
    moves.automation_mode = 5;
    moves.pan = 25;
    TrackSpec knobs = stereo_track("Two knobs", {clip("Tone", 0, second)});
    knobs.pan = -100;
    knobs.pan_right = 40;
    knobs.pan_lane = {-100, {{0, -100}, {second, -20}}};
    knobs.pan_right_lane = {40, {{second, 60}}};
    TrackSpec ignored = track("Moves nobody hears", {clip("Voice-02", 0, second)});
    ignored.tick_based = true;
    ignored.automation_mode = 0;
    ignored.fader_db = 6;
    ignored.volume_lane = {60, {{4 * quarter, 60}, {8 * quarter, -1445}}};
    TrackSpec silent = track("Soloed and muted", {clip("Voice-03", 0, second)});
    silent.muted = silent.soloed = true;
    TrackSpec off = track("Off, with a mute that moves", {clip("Voice-04", 0, second)});
    off.active = false;
    off.soloed = true;
    off.mute_lane = {0, {{second, 0}}};
    off.automation_mode = 4;
    TrackSpec right = track("One side", {clip("Voice-05", 0, second)});
    right.output = "Out 2";
    SessionBuilder session = with_files();
    session.tempo(0, 60).tempo(4 * quarter, 120);
    session.io_path({"Out 1-2", 1, {1, 2}}).io_path({"Out 1", 1, {1}}).io_path({"Out 2", 1, {2}});
    session.track(at_rest).track(moves).track(knobs).track(ignored);
    session.track(silent).track(off).track(right);
    return {"mixer", session, {}, {"Voice.wav"}};
}

/// A master fader that moves in front of its plug-in stands on a track of its own; a second master
/// has no place.
GoldenCase master_fader() {
    TrackSpec music = track("Music", {clip("Tone", 0, second)});
    TrackSpec master = track("Print", {});
    master.kind = TrackKind::master;
    master.fader_db = -3;
    master.volume_lane = {-30, {{second, -30}, {2 * second, -80}}};
    master.mute_lane = {0, {{3 * second, 1}}};
    master.inserts = {{}};
    TrackSpec second_master = track("Stems", {});
    second_master.kind = TrackKind::master;
    SessionBuilder session = with_files();
    session.track(music).track(master).track(track("Voice", {clip("Voice", 0, second)}));
    session.track(second_master);
    return {"master_fader", session, {}, {"Voice.wav"}};
}

TrackSpec aux(const std::string& name, const std::string& bus, int channels) {
    TrackSpec spec = track(name, {});
    spec.kind = TrackKind::aux;
    spec.channels = channels;
    spec.input = bus;
    spec.input_is_bus = true;
    return spec;
}

/// Buses into auxes, sends in front of and behind the fader, a leg of a stereo bus, a key input;
/// with a video track and a master fader between them that the passes behind the writing move.
GoldenCase routing() {
    SessionBuilder session = with_files();
    session.bus("Verb", 1).bus("Drums", 3).io_path({.name = "Key", .type = 2, .channels = {9}});
    TrackSpec kick = track("Kick", {clip("Voice", 0, second)});
    kick.output = "Drums";
    kick.sends = {{.target = "Verb", .level_db = -6, .pre_fader = true, .pan = -40},
                  {.target = "Key", .pan = 30}};
    TrackSpec snare = track("Snare", {clip("Voice-01", 0, second)});
    snare.output = "Drums.L";
    snare.sends = {{.target = "Verb", .muted = true},
                   {.target = "Nobody takes it"},
                   {.target = "Verb.R",
                    .level_lane = {.initial = -60, .points = {{second, 0}}},
                    .pan_lane = {.initial = 20, .points = {{second, -20}}}}};
    TrackSpec pad = stereo_track("Pad", {clip("Tone", 0, second)});
    pad.sends = {{.target = "Verb", .pan = -100, .pan_right = 50}};
    TrackSpec cue = track("Cue source", {clip("Voice-02", 0, second)});
    cue.muted = true;
    cue.sends = {{.target = "Verb", .pre_fader = true}};
    TrackSpec nowhere = track("Nowhere", {clip("Voice-03", 0, second)});
    nowhere.output = "";
    TrackSpec drums = aux("Drum bus", "Drums", 2);
    drums.inserts = {{.key_input = output_id("Key")}, {.key_input = output_id("Nobody takes it")}};
    TrackSpec verb = aux("Room", "Verb", 2);
    verb.sends = {{.target = "Verb"}};
    TrackSpec master = routed("Print", "", TrackKind::master);
    master.volume_lane = {0, {{second, -80}}};
    master.inserts = {{}};
    session.track(routed("Picture", "", TrackKind::video)).track(kick).track(snare).track(pad);
    session.track(master).track(cue).track(nowhere).track(drums).track(verb);
    session.track(aux("Key source", "Key", 1));
    return {"routing", session, {}, {"Voice.wav"}};
}

/// Who takes a bus: parallel auxes, an inactive one before an active one, a bus that was renamed, a
/// key that no aux takes, a mono bus, one leg of the main output, a hardware output with an aux on
/// it, a wide send; and a Routing folder with a MIDI track in front of a track that leaves it.
GoldenCase bus_takers() {
    const auto bed_channels = std::vector<std::uint16_t>{20, 21, 22, 23, 24, 25};
    SessionBuilder session = with_files();
    session.io_path({.name = "Main", .type = 2, .channels = {1, 2}, .mapped = true});
    session.io_path({.name = "Main.R", .type = 2, .channels = {2}, .parent = 0});
    session.io_path({.name = "Phones", .type = 2, .channels = {3, 4}, .mapped = true});
    session.bus("Comp", 5).bus("Band", 7).io_path({"Key", 2, {9}}).io_path({"Mono", 2, {10}});
    const std::uint64_t as_assigned = path_identity("Drums");
    session.io_path({.name = "Kit", .type = 2, .channels = {11, 12}, .identity = as_assigned});
    session.io_path({"Bed", 2, bed_channels});
    TrackSpec kick = track("Kick", {clip("Voice", 0, second)});
    kick.output = "Drums";
    kick.sends = {{.target = "Comp", .level_db = -6, .level_lane = {-60, {{second, 0}}}},
                  {.target = "Key", .level_db = -3, .pre_fader = true},
                  {.target = "Bed", .pan = -40}};
    TrackSpec bass = routed("Bass", "Mono");
    bass.inserts = {{.key_input = output_id("Key")}};
    bass.pan_lane = {0, {{second, 50}}};
    TrackSpec off = aux("Old kit", "Drums", 2);
    off.active = false;
    TrackSpec keys = routed("Keys", "");
    keys.kind = TrackKind::midi;
    TrackSpec wide = routed("Wide", "Main");
    wide.channels = 6;
    wide.sends = {{.target = "Bed"}};
    TrackSpec band = routed("Band", "Main", TrackKind::routing_folder);
    band.input = "Band";
    band.input_is_bus = true;
    session.track(kick).track(routed("Trigger", "Key")).track(bass).track(routed("Hat", "Main.R"));
    session.track(routed("Guide", "Phones")).track(off).track(aux("Drum bus", "Drums", 2));
    session.track(aux("Comp 1", "Comp", 2)).track(aux("Comp 2", "Comp", 2));
    session.track(aux("Mono aux", "Mono", 1)).track(aux("Monitor", "Phones", 2));
    session.track(wide).track(aux("Bed bus", "Bed", 6));
    session.track(band).track(keys).track(routed("Guitar", "Band")).track(routed("Solo", "Main"));
    session.folder(13, {14, 15, 16}).strip_table_form(StripTableForm::since_2022);
    GoldenCase takers{"bus_takers", session, {}, {"Voice.wav"}};
    takers.parallel_receives = 1;
    return takers;
}

/// Hidden and inactive tracks, some of them needed: by a send of what is written, by a key of what
/// is kept, by the members of a folder, of a VCA.
GoldenCase left_out_tracks() {
    SessionBuilder session;
    session.bus("Verb", 1).bus("Delay", 3).io_path({.name = "Key", .type = 2, .channels = {9}});
    TrackSpec key = aux("Key source", "Key", 1);
    TrackSpec verb = aux("Room", "Verb", 2);
    TrackSpec delay = aux("Echo", "Delay", 2);
    key.hidden = verb.hidden = delay.hidden = true;
    verb.inserts = {{.key_input = output_id("Key")}};
    delay.sends = {{.target = "Key"}};
    verb.comment = "long\n>";
    TrackSpec voice = routed("Voice", "Out 1-2");
    voice.sends = {{.target = "Verb"}};
    TrackSpec off = routed("Off", "Out 1-2");
    TrackSpec band = routed("Band", "", TrackKind::basic_folder);
    TrackSpec spare = routed("Spares", "", TrackKind::basic_folder);
    off.active = band.active = spare.active = false;
    TrackSpec click = aux("Guide", "", 1);
    click.inserts = {{.code = "Digiclik"}};
    TrackSpec cue = aux("Click", "", 1);
    cue.inserts = {{.code = "Digiclik"}, {}};
    session.click(true).track(key).track(band).track(voice).track(off).track(verb).track(delay);
    off.name = "Off as well";
    session.track(spare).track(off).track(click).track(cue);
    session.track(
        {.name = "VCA 1", .kind = TrackKind::vca, .hidden = true, .mixer = vca_record(-65)});
    session.group({.name = "Level", .members = {1, 3}, .vca_master = 8});
    session.folder(1, {2, 3}).folder(6, {7}).strip_table_form(StripTableForm::since_2022);
    RunOptions options;
    options.skip_hidden_tracks = options.skip_inactive_tracks = options.no_click = true;
    options.comments_mode = comments_in_items;
    return {"left_out_tracks", session, options, {}};
}

/// Picture above the tracks, which moves in front of them: a split clip, one whose movie is not on
/// the disk, one whose movie is unknown, one without a clip; a track without picture; and a key
/// that the run leaves unwired.
GoldenCase video() {
    SessionBuilder session = with_files();
    session.bus("Verb", 1).picture({25, 2}).video_file("Reel 1.mov").video_file("Reel 2.mov");
    session.track(routed("Main", "", TrackKind::master));
    TrackSpec film = routed("Picture", "", TrackKind::video);
    film.hidden = true;
    film.height = 80;
    TrackSpec voice = track("Voice", {clip("Voice", 0, second)});
    voice.sends = {{.target = "Verb"}};
    voice.inserts = {{.key_input = output_id("Verb")}};
    session.track(film).track(routed("Second picture", "", TrackKind::video)).track(voice);
    session.track(aux("Room", "Verb", 2));
    session.video_region({.name = "Opening", .length = 100});  // of reel 1, whatever its name
    session.video_region({.name = "Reel 1-02", .source_offset = 100, .length = 50});
    session.video_region({.name = "Reel 2", .length = 25, .movie = 1});
    session.video_region({.name = "Logo", .length = 1, .movie = 9});
    session.video_clips({"Picture",
                         {{.id = 0, .position = frames(0), .locked = true},
                          {.id = 1, .position = frames(100)},
                          {.id = 2, .position = 6 * second},
                          {.id = 3, .position = frames(175)},
                          {.id = 99, .position = frames(200)}}});
    RunOptions options;
    options.no_sidechain = true;
    return {"video", session, options, {"Voice.wav", "../Video Files/Reel 1.mov"}};
}

/// A track that arrives frozen with its sends and envelopes, and one whose render is gone.
GoldenCase frozen() {
    SessionBuilder session = with_files();
    session.audio_file({"Voice-FZ.wav", 10 * second, 0}).audio_file({"Gone-FZ.wav", second, 0});
    TrackSpec voice =
        track("Voice", {clip("Voice_01", 0, second), clip("Voice_02", second, second)});
    voice.mute_lane = {0, {{second, 1}, {2 * second, 0}}};
    voice.inserts = {{.code = "DigiTrim", .state = trim_state({TrimSpec{.inverted = true}})}};
    session.track(voice).track(track("Gone", {clip("Gone_01", 0, second)}));
    session.freeze_render(
        {.name = "Voice-01", .file_index = 3, .source_offset = 48, .length = 96000});
    session.freeze_render({.name = "Gone", .file_index = 4, .length = 48000});
    RunOptions options;
    options.keep_frozen = true;
    return {"frozen", session, options, {"Voice.wav", "Voice-FZ.wav"}};
}

}  // namespace

std::vector<GoldenCase> golden_cases() {
    return {
        empty_session(),   time_frame(),
        tempo_ramps(),     clips(),
        clip_gain(),       left_out_placements(),
        overlaps(),        nested_groups(),
        cut_groups(),      cue_list(),
        alternates(),      alternates_dropped(),
        surround(),        nested_folders(),
        groups_and_vcas(), crossfades(),
        fade_shapes(),     fade_shapes_plain(),
        mixer(),           stretched_and_looped(),
        clip_effects(),    master_fader(),
        routing(),         left_out_tracks(),
        video(),           frozen(),
        bus_takers(),
    };
}

}  // namespace tanrove::golden
