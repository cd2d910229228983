// Golden sessions of tracks that play into surround buses.
#include "golden/golden_sessions.hpp"

namespace tanrove::golden {

namespace {

using namespace builder;

constexpr std::int64_t second = 48000;

/// A bus from this channel on, with a leg for each speaker.
void add_bus(SessionBuilder& session, std::uint16_t& paths, const std::string& name,
             std::uint16_t first_channel, const std::vector<std::string>& speakers) {
    std::vector<std::uint16_t> channels;
    for (std::size_t i = 0; i < speakers.size(); ++i) {
        channels.push_back(static_cast<std::uint16_t>(first_channel + i));
    }
    const std::uint16_t parent = paths;
    session.io_path({.name = name, .type = 2, .channels = channels});
    for (std::size_t i = 0; i < speakers.size(); ++i) {
        session.io_path({.name = name + "." + speakers[i],
                         .type = 2,
                         .channels = {channels[i]},
                         .parent = parent});
    }
    paths = static_cast<std::uint16_t>(paths + 1 + speakers.size());
}

TrackSpec panned(const std::string& name, const std::string& output,
                 const std::vector<PannerSpec>& panners) {
    TrackSpec track{.name = name};
    track.channels = static_cast<int>(panners.size());
    track.output = output;
    track.panners = panners;
    return track;
}

TrackSpec aux_on(const std::string& bus, int channels) {
    return {.name = bus + " bus",
            .kind = TrackKind::aux,
            .channels = channels,
            .input = bus,
            .input_is_bus = true};
}

PannerSpec at(int front_x, int rear_x, int front_rear) {
    return {{.initial = front_x}, {.initial = rear_x}, {.initial = front_rear}, {.initial = 100},
            {.initial = 80},      {.initial = 90},     {.initial = 60}};
}

/// A mono track behind a plug-in that moves, one with a send whose automation is off, a stereo one
/// and one that plays to the low frequencies alone.
GoldenCase panned_into_5_1() {
    SessionBuilder session;
    std::uint16_t paths = 0;
    add_bus(session, paths, "Film", 1, {"L", "C", "R", "Ls", "Rs", "LFE"});
    TrackSpec voice = panned("Voice", "Film", {at(-100, 0, 100)});
    voice.inserts = {{}};
    voice.panners[0][0].points = {{second, -50}, {3 * second, 100}};
    voice.panners[0][2].points = {{2 * second, 100}, {2 * second, -100}};
    voice.lfe_lane = LaneSpec{.initial = -1440, .points = {{0, -120}, {second, 120}}};
    TrackSpec still = panned("Still", "Film", {at(20, -20, 50)});
    still.panners[0][6].points = {{0, 10}};
    still.automation_mode = 0;
    TrackSpec music = panned("Music", "Film", {at(-80, -60, 100), at(80, 60, 90)});
    music.panners[1][0].points = {{second, 0}};
    music.lfe_lane = LaneSpec{.initial = -60};
    still.sends = {{.target = "Verb"}};
    session.bus("Verb", 7);
    const TrackSpec rumble{.name = "Rumble", .output = "Film.LFE"};
    session.track(voice).track(still).track(music).track(rumble).track(aux_on("Film", 6));
    session.track(aux_on("Verb", 2));
    return {"panned_into_5_1", session, {}, {}};
}

/// A 7.1 bus; one of which only its width is known, with panners as older sessions have them; one
/// whose speakers are not known; and a track without a panner.
GoldenCase panned_into_other_buses() {
    SessionBuilder session;
    std::uint16_t paths = 0;
    add_bus(session, paths, "Hall", 1, {"L", "C", "R", "Lss", "Rss", "Lsr", "Rsr", "LFE"});
    add_bus(session, paths, "Dome", 9, {"L", "R", "Ltf", "Rtf"});
    session.io_path({.name = "Booth", .type = 2, .channels = {21, 22, 23, 24, 25}});
    TrackSpec choir = panned("Choir", "Hall", {at(0, 0, -100), at(100, 100, 0)});
    TrackSpec reader = panned("Reader", "Booth", {{{.initial = 30}, {.points = {{0, 5}}}}});
    reader.stored_panners = {{30, 40, 50, 100, 100, 100, 75}};
    TrackSpec blank{.name = "Blank", .output = "Booth"};
    session.track(choir).track(reader).track(blank).track(panned("Rain", "Dome", {at(1, 2, 3)}));
    session.track(aux_on("Hall", 8)).track(aux_on("Booth", 5)).track(aux_on("Dome", 4));
    return {"panned_into_other_buses", session, {}, {}};
}

}  // namespace

std::vector<GoldenCase> panner_golden_cases() {
    return {panned_into_5_1(), panned_into_other_buses()};
}

}  // namespace tanrove::golden
