// Golden sessions of plug-ins: settings of every container for a VST2, a VST3 and a CLAP build,
// with what REAPER's lists of plug-ins hold.
#include <algorithm>

#include "golden/golden_sessions.hpp"
#include "support/named_controls.hpp"
#include "support/records/plugin_records.hpp"

namespace tanrove::golden {

namespace {

using namespace builder;

// One build for each product: "Knd2", "Knd3", "Knd4" with a CLAP beside it, and one of a shell.
constexpr const char* vst_list =
    "[vstcache]\n"
    "two.dll=00,1265525810,Two (Makr)\n"
    "three.vst3=00,3{5653544B6E643374687265650000000A},Three \"III\" (Makr)\n"
    "four.vst3=00,4{5653544B6E6434666F7572000000000B},Four (Makr)\n"
    "shell.vst3<5=00,5{565354575131307368656C6C0000000C},Ten (Waves)\n";
constexpr const char* clap_list = "[four.clap]\nmakr.four=0|Four (Makr)\n";

/// All kinds of settings for the plug-in of this code.
std::vector<InsertSpec> inserts_for(const std::string& code) {
    std::vector<InsertSpec> inserts = inserts_of_all_kinds();
    for (InsertSpec& insert : inserts) {
        const std::string usual = insert.code;
        auto at = insert.state.begin();
        while ((at = std::search(at, insert.state.end(), usual.begin(), usual.end())) !=
               insert.state.end()) {
            at = std::copy(code.begin(), code.end(), at);
        }
        insert.code = code;
    }
    return inserts;
}

TrackSpec track_with(const std::string& name, const std::vector<InsertSpec>& inserts,
                     std::size_t from, std::size_t count) {
    TrackSpec track;
    track.name = name;
    track.kind = TrackKind::aux;
    for (std::size_t i = from; i < from + count && i < inserts.size(); ++i) {
        track.inserts.push_back(inserts[i]);
    }
    return track;
}

/// Bypassed and inactive in all combinations, with lanes that are placed by the control's own
/// number, by a known distance and not at all.
void switch_and_automate(std::vector<InsertSpec>& inserts) {
    constexpr std::int32_t half = 1 << 29;
    for (std::size_t i = 0; i < inserts.size(); ++i) {
        inserts[i].bypassed = i % 2 != 0;
        inserts[i].active = i % 4 < 2;
        inserts[i].lanes = {
            {.name = "Gain \"main\"", .index = 2, .id = "1", .points = {{48000, half}, {96000, 0}}},
            {.name = "Mode", .index = 7, .id = "mode", .points = {{0, -half}}, .steps = 3},
            {.name = "Master Bypass", .points = {{0, 0}}},
            {.name = "Unmoved"}};
    }
}

SessionBuilder session_with_plugins() {
    SessionBuilder session;
    session.io_path({.name = "Key", .type = 2, .channels = {9}});
    const auto two = inserts_for("MakrKnd2");
    auto three = inserts_for("MakrKnd3");
    switch_and_automate(three);
    const auto four = inserts_for("MakrKnd4");
    TrackSpec first = track_with("Two", two, 0, 7);
    first.sends = {{.target = "Key"}};
    session.track(first).track(track_with("Two more", two, 7, 7));
    session.track(track_with("Three", three, 0, 7)).track(track_with("Three more", three, 7, 7));
    session.track(track_with("Four", four, 0, 7)).track(track_with("Four more", four, 7, 7));
    TrackSpec keyed = track_with("Keyed", two, 1, 1);
    keyed.channels = 2;
    keyed.inserts[0].key_input = output_id("Key");
    keyed.inserts.push_back({});
    session.track(keyed);
    TrackSpec unlinked = track_with("Unlinked", two, 2, 2);
    unlinked.channels = 2;
    for (InsertSpec& insert : unlinked.inserts) insert.channels = 1;
    session.track(unlinked);
    TrackSpec source = track_with("Key source", {}, 0, 0);
    source.input = "Key";
    source.input_is_bus = true;
    session.track(source);
    TrackSpec master = track_with("Print", two, 5, 1);
    master.kind = TrackKind::master;
    master.inserts[0].key_input = output_id("Key");
    master.inserts.push_back({.code = "NoneSuch"});
    return session.track(master);
}

/// A track of this width with a Trim for each list of channels.
TrackSpec trimmed(const std::string& name, int channels,
                  const std::vector<std::vector<TrimSpec>>& trims) {
    TrackSpec track;
    track.name = name;
    track.kind = TrackKind::aux;
    track.channels = channels;
    for (const auto& trim : trims) {
        track.inserts.push_back({.code = "DigiTrim",
                                 .channels = static_cast<std::uint8_t>(channels),
                                 .state = trim_state(trim)});
    }
    return track;
}

SessionBuilder session_with_trims() {
    const TrimSpec inverted = {.inverted = true}, up = {.gain_word = 1635278356};
    const TrimSpec far_down = {.gain_word = -1000000000, .inverted = true};
    SessionBuilder session;
    TrackSpec linked = trimmed("Linked", 2, {{inverted}, {up}});
    linked.inserts[1].lanes = {{.name = "Gain", .points = {{0, 0}}}};
    session.track(linked).track(trimmed("Mono", 1, {{far_down}}));
    session.track(trimmed("Left", 2, {{inverted, up}}));
    session.track(trimmed("Both sides", 2, {{inverted, {}}, {{}, inverted}}));
    session.track(trimmed("Twice", 2, {{inverted}, {inverted}}));
    TrackSpec off = trimmed("Off", 2, {{inverted}, {inverted}});
    off.inserts[0].bypassed = true;
    off.inserts[1].active = false;
    session.track(off);
    TrackSpec only_side = trimmed("Right", 2, {{{}, inverted}});
    only_side.inserts.push_back({.code = "NoneSuch"});
    session.track(only_side);
    // Too wide for one track: each of its legs has its own gain and polarity.
    TrackSpec wide = trimmed("Atmos", 9, {{{}, inverted, up}});
    wide.kind = TrackKind::audio;
    wide.clips = {{.region = "Bed", .length = 48000}};
    session.audio_file({"Bed.wav", 48000, 0}).track(wide);
    TrackSpec master = trimmed("Print", 2, {{far_down}});
    master.kind = TrackKind::master;
    return session.track(master);
}

/// The state of a plug-in that stores the values of its controls and nothing else.
Bytes control_state(const std::string& code, const std::vector<double>& values) {
    ByteWriter records;
    records.zeros(4);
    for (const double value : values) records.raw(real_control("Ctrl", value, 8));
    return plugin_chunk(code, "elck", "", records.bytes());
}

/// An insert of this plug-in; every control that is not given is 0.
InsertSpec avid_insert(const std::string& code, std::size_t count,
                       const std::vector<std::pair<std::size_t, double>>& controls) {
    std::vector<double> values(count);
    for (const auto& [index, value] : controls) values[index] = value;
    return {.code = code, .state = control_state(code, values)};
}

/// All kinds of bands at once, an inverted one of the smaller kind, and the first once more.
std::vector<InsertSpec> equalisers() {
    const InsertSpec seven =
        avid_insert("Digi47e3", 38,
                    {{2, 1.5},   {5, 1},   {6, 1},     {8, 2},    {9, 80},  // 18 dB high-pass
                     {10, 1},    {11, -4}, {12, 120},  {13, 1},   {14, 1},  // low shelf
                     {15, 1},    {16, 3},  {17, 400},  {18, 2},   {19, 0},    {20, 6},  // one off
                     {21, 1000}, {22, 1},  {23, 1},    {24, 5},   {25, 9000}, {26, 1},  // bells
                     {27, 1},    {28, 6},  {29, 8000}, {30, 1.9}, {31, 1},  // steep high shelf
                     {32, 0},    {33, 1},  {34, 3},    {36, 7000}});        // notch
    InsertSpec one = avid_insert("Digi1be3", 8, {{2, 15000}, {4, 0}, {5, 0}, {6, -3}, {7, 1}});
    one.bypassed = true;
    InsertSpec again = seven;
    again.active = false;
    again.lanes = {{.name = "Gain", .points = {{0, 0}}}};
    return {seven, one, again};
}

SessionBuilder session_with_equalisers() {
    const std::vector<InsertSpec> inserts = equalisers();
    SessionBuilder session;
    session.track(track_with("Voice", inserts, 0, inserts.size()));
    TrackSpec wide = track_with("Wide", inserts, 1, 1);
    wide.channels = 6;
    return session.track(wide);
}

/// A compressor and a gate, both with a key that is wired, and both with one that is not; and an
/// expander.
SessionBuilder session_with_dynamics() {
    const auto compressor = [](bool keyed) {
        return avid_insert(
            "Digidn3c", 14,
            {{0, 10}, {1, 4}, {2, 0.01}, {3, 0.1}, {4, 9}, {5, -24}, {6, 1}, {13, keyed ? 1 : 0}});
    };
    const auto gate = [](double ratio, bool keyed) {
        return avid_insert("Digidn3e", 15,
                           {{0, -80},
                            {1, ratio},
                            {2, 0.001},
                            {3, 0.2},
                            {4, 0.02},
                            {5, -36},
                            {7, 1},
                            {14, keyed ? 1 : 0}});
    };
    std::vector<InsertSpec> keyed = {compressor(true), gate(100, true), gate(1.5, true)};
    for (InsertSpec& insert : keyed) insert.key_input = output_id("Key");
    TrackSpec ducked = track_with("Ducked", keyed, 0, keyed.size());
    ducked.channels = 2;
    TrackSpec plain = ducked;
    plain.name = "Plain";
    plain.inserts = {compressor(false), gate(100, true), gate(1.5, false)};
    TrackSpec source = track_with("Source", {}, 0, 0);
    source.sends = {{.target = "Key"}};
    SessionBuilder session;
    session.io_path({.name = "Key", .type = 2, .channels = {9}});
    return session.track(ducked).track(plain).track(source);
}

/// A Channel Strip with this map of its controls.
InsertSpec channel_strip(const std::string& controls) {
    ByteWriter records;
    records.zeros(4);
    for (const auto& [name, value] : named_controls(controls)) {
        records.raw(real_control(name, value, (name.size() + 6) / 4 * 4));
    }
    return {.code = "AVIDChSt", .state = plugin_chunk("AVIDChSt", "elck", "", records.bytes())};
}

/// One with every block at work, and one at its defaults.
SessionBuilder session_with_channel_strips() {
    TrackSpec track;
    track.name = "Strip";
    track.kind = TrackKind::aux;
    track.inserts = {
        channel_strip(
            "Phase Switch In/Out 1, Input Trim 3, EQ Low Gain 4, EQ Low Type 1, EQ High Gain -6, "
            "EQ High Q 2, EQ High Frequency 8000, Filter 1 In/Out 1, Filter 1 Frequency 80, "
            "Filter 1 Slope 12/24dB 1, Filter 2 Type 2, Exp Ratio 20, Exp Threshold -50, "
            "Cmp Ratio 4, Cmp Threshold -18, Cmp Gain Makeup 8, Sc Source 1, Fader Volume -1.5"),
        channel_strip("Cmp Ratio 1, EQ Low Gain 0, Filter 2 Type 1, Sc Source 0")};
    return SessionBuilder().track(track);
}

TrackSpec instrument() {
    TrackSpec keys;
    keys.name = "Keys";
    keys.kind = TrackKind::instrument;
    keys.tick_based = true;
    keys.inserts = {{.code = "MakrKnd4"}};
    keys.midi_clips.resize(1);
    keys.midi_clips[0].region = "Chords";
    keys.midi_clips[0].length = 3840000;
    keys.midi_clips[0].stream.notes = {{0}, {960000, 240000, 64}, {1920000, 240000, 67}};
    return keys;
}

/// A bit of everything that a mix has: clips, MIDI, automation, sends, a group, a master, plug-ins
/// that are here, that are nowhere, and that REAPER's own stand in for.
SessionBuilder session_of_a_mix() {
    constexpr std::int64_t second = 48000;
    SessionBuilder session;
    session.audio_file({"Voice.wav", 10 * second, 0}).bus("Verb", 5);
    session.tempo(0, 90).meter(0, 1, 3, 4).marker("Verse", 0);
    TrackSpec voice = track_with("Voice", equalisers(), 0, 1);
    voice.kind = TrackKind::audio;
    voice.clips = {{.region = "Voice", .length = second},
                   {.region = "Voice-01", .position = 2 * second, .length = second}};
    voice.clips[0].gain = {{0, -3}};
    voice.volume_lane = {.initial = 0, .points = {{second, 0}, {2 * second, -60}}};
    voice.sends = {{.target = "Verb", .level_lane = {.initial = -60, .points = {{second, 0}}}}};
    voice.comment = "lead";
    voice.inserts.push_back({.code = "MakrKnd3"});
    voice.inserts.back().lanes = {{.index = 2, .id = "1", .points = {{second, 0}}}};
    TrackSpec drums = trimmed("Drums", 2, {{TrimSpec{.inverted = true}}});
    drums.kind = TrackKind::audio;
    drums.inserts.push_back(avid_insert("Digidn3c", 14, {{0, 10}, {1, 4}, {5, -24}, {6, 1}}));
    TrackSpec verb = track_with("Room", {{.code = "MakrKnd2"}, {.code = "NoneSuch"}, {}}, 0, 3);
    verb.input = "Verb";
    verb.input_is_bus = true;
    TrackSpec master = track_with("Print", {{.code = "MakrKnd4"}}, 0, 1);
    master.kind = TrackKind::master;
    session.track(voice).track(drums).track(instrument()).track(verb).track(master);
    return session.group({.name = "Band", .members = {0, 1}, .kind = 1, .slot = 0});
}

GoldenCase with_lists(const std::string& name, const SessionBuilder& session,
                      const RunOptions& options) {
    GoldenCase made{name, session, options, {}};
    made.options.vstini_path = "lists.ini";
    made.other_files = {{"lists.ini", vst_list}, {"reaper-clap-linux-x86_64.ini", clap_list}};
    return made;
}

}  // namespace

std::vector<GoldenCase> plugin_golden_cases() {
    RunOptions clap;
    clap.prefer_clap = true;
    clap.bypass_mode = bypass_offline;
    clap.aax_slots = false;
    RunOptions fewer;
    fewer.placeholders = false;
    fewer.skip_bypassed_fx = true;
    fewer.skip_missing_fx = true;
    fewer.kontakt_state = false;
    RunOptions plain;
    plain.no_stand_ins = plain.skip_bypassed_fx = true;
    const SessionBuilder session = session_with_plugins();
    GoldenCase mix = with_lists("full_mix", session_of_a_mix(), {});
    mix.audio_on_disk = {"Voice.wav"};
    return {mix,
            with_lists("plugins", session, {}),
            with_lists("plugins_as_clap", session, clap),
            with_lists("plugins_fewer", session, fewer),
            {"trims", session_with_trims(), {}, {"Bed.wav"}},
            {"trims_plain", session_with_trims(), plain, {"Bed.wav"}},
            {"equalisers", session_with_equalisers(), {}, {}},
            {"dynamics", session_with_dynamics(), {}, {}},
            {"channel_strips", session_with_channel_strips(), {}, {}},
            {"channel_strips_declined", session_with_channel_strips(), plain, {}}};
}

}  // namespace tanrove::golden
