// The session of the colours: what has one, what has none, and what each coding looks at.
#include "golden/golden_sessions.hpp"

namespace tanrove::golden {

using namespace builder;

SessionBuilder coloured_session(std::uint8_t scheme) {
    constexpr std::int64_t second = 48000;
    SessionBuilder session;
    session.audio_file({"Voice.wav", 10 * second, 0}).colour_schemes(scheme, scheme);
    session.track(
        {.name = "Voice",
         .clips = {{.region = "Plain", .length = second},
                   {.region = "Auto", .position = second, .length = second, .colour = 5},
                   {.region = "Picked", .position = 2 * second, .length = second, .colour = 60}}});
    session.track({.name = "Chosen",
                   .colour = 30,
                   .clips = {{.region = "Behind", .position = 4 * second, .length = second}}});
    session.track({.name = "Aux", .kind = TrackKind::aux});
    session.track({.name = "Keys",
                   .kind = TrackKind::midi,
                   .midi_clips = {{.region = "Notes", .length = 960000}},
                   .midi_settings = {.output = 1}});
    session.track({.name = "Synth", .kind = TrackKind::instrument, .midi_settings = {.output = 2}});
    session.track({.name = "Mute", .kind = TrackKind::midi, .midi_settings = {.output = 3}});
    session.track({.name = "Film", .kind = TrackKind::video});
    session.track({.name = "Sum", .kind = TrackKind::master, .fader_db = -3, .inserts = {{}}});
    session.midi_output({.name = "Port", .port = 4});
    session.midi_output({.name = "Node", .number = 2, .node = 0});
    session.group({.name = "Pair", .members = {0, 3}, .slot = 2});
    return session.location({.name = "Verse",
                             .start = 3840000,
                             .form = LocationForm::palette,
                             .rgb = 0x2040ff,
                             .comment = "louder"});
}

}  // namespace tanrove::golden
