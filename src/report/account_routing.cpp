// The account's sentences about outputs, sends and key inputs.
#include "report/account_routing.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_listed_tracks = 12;

constexpr CountRow<RoutingTallies> send_detail_rows[] = {
    {&RoutingTallies::panned_sends, "      %d send(s) panned off center, carried\n"},
    {&RoutingTallies::sends_off, "      %d send(s) switched off in Pro Tools, written muted\n"},
};

constexpr CountRow<RoutingTallies> surround_send_rows[] = {
    {&RoutingTallies::sends_into_surround,
     "  NOTE: %d send(s) go into a surround bus: their own panner is not carried, and\n"
     "      they play on its first two channels.\n"},
};

constexpr CountRow<RoutingTallies> output_rows[] = {
    {&RoutingTallies::outputs_into_buses,
     "  %d track output(s) routed into the aux that takes their bus\n"},
    {&RoutingTallies::outputs_by_input, "  %d of them routed bus -> aux by the aux's input\n"},
    {&RoutingTallies::outputs_by_pair, "  %d of those matched a mono leg to its stereo pair\n"},
    {&RoutingTallies::outputs_by_part,
     "  %d of them play into a part of a surround bus, on its channels of the aux\n"
     "      that takes the whole\n"},
    {&RoutingTallies::parted_legs,
     "  NOTE: %d send(s) target a stereo bus whose two legs are taken by\n"
     "    DIFFERENT aux tracks. Pro Tools feeds both, one leg each; this\n"
     "    converts to the first. Please send the session in.\n"},
};

constexpr CountRow<RoutingTallies> key_rows[] = {
    {&RoutingTallies::keys_on_first_pair, "  %d sidechain key inputs wired to channels 3/4\n"},
    {&RoutingTallies::keys_on_further_pairs,
     "  %d more key input(s) wired to channels 5/6 and up, for a second\n"
     "      plug-in on the same track keyed off another source (v256)\n"},
    {&RoutingTallies::tracks_passing_first_pair,
     "      %d keyed track(s) pass only channels 1/2 on to their parent, so\n"
     "      no key reaches the mix even with the last plug-in offline\n"},
};

std::string listed(const std::vector<std::string>& names) {
    return quoted_names(names, no_cap);
}

void print_two_knob_tracks(TextBuffer& out, const std::vector<std::string>& tracks) {
    if (tracks.empty()) return;
    out.print(
        "  %d stereo track(s) have a send whose two pan knobs are moved off\n"
        "      their defaults; REAPER gives a send one pan knob, so these\n"
        "      arrive centered -- check them:%s\n",
        count_of(tracks), listed(tracks).c_str());
}

void print_sends_left_out(TextBuffer& out, const RoutingTallies& tallies) {
    if (tallies.sends_left_out == 0) return;
    out.print(
        "  NOTE: %d send(s) play to a hardware output, or into a part of a surround bus\n"
        "      that an aux takes whole: they are left out:%s\n",
        tallies.sends_left_out,
        quoted_names(tallies.tracks_of_sends_left_out, max_listed_tracks).c_str());
}

void print_taken_outputs(TextBuffer& out, const std::vector<std::string>& tracks) {
    if (tracks.empty()) return;
    out.print(
        "  NOTE: %d track(s) play to a hardware output that an aux takes as its input.\n"
        "      Pro Tools plays them there and through the aux; they arrive through\n"
        "      the aux alone, so that nothing is heard twice:%s\n",
        count_of(tracks), quoted_names(tracks, max_listed_tracks).c_str());
}

void print_pre_fader_sources(TextBuffer& out, const RoutingTallies& tallies) {
    if (!tallies.unmuted_sources.empty()) {
        out.print(
            "  %d muted track(s) feed a pre-fader send, and are written UNMUTED with\n"
            "      the fader all the way down:%s\n"
            "      Pro Tools keeps a muted track's pre-fader sends playing; REAPER's\n"
            "      mute would silence them too. With the fader down the send plays\n"
            "      and the track itself is silent, as in Pro Tools.\n",
            count_of(tallies.unmuted_sources), listed(tallies.unmuted_sources).c_str());
    }
    if (!tallies.silent_sources.empty()) {
        out.print(
            "  WARNING: %d muted track(s) feed a pre-fader send but have volume or mute\n"
            "      automation, so they stay muted and the send goes quiet in REAPER:%s\n"
            "      Pro Tools keeps a muted track's pre-fader sends playing.\n",
            count_of(tallies.silent_sources), listed(tallies.silent_sources).c_str());
    }
}

}  // namespace

void print_sends(TextBuffer& out, const RoutingTallies& tallies) {
    if (tallies.sends > 0) {
        out.print("  %d sends into %d return tracks\n", tallies.sends, tallies.return_tracks);
    }
    print_pre_fader_sources(out, tallies);
}

void print_tracks_without_output(TextBuffer& out, const RoutingTallies& tallies) {
    if (!tallies.leading_astray.empty()) {
        out.print(
            "  WARNING: %d track(s) play or send to something whose name this tool could\n"
            "      not read and that is not among the session's paths. Such outputs play\n"
            "      to the master here, and such sends are missing:%s\n",
            count_of(tallies.leading_astray),
            quoted_names(tallies.leading_astray, max_listed_tracks).c_str());
    }
    if (tallies.without_output.empty()) return;
    out.print(
        "  %d track(s) have NO OUTPUT in Pro Tools, so they reach the mix only through\n"
        "      their sends (or not at all); REAPER's master send is off on them:%s\n",
        count_of(tallies.without_output),
        quoted_names(tallies.without_output, max_listed_tracks).c_str());
}

void print_send_details_and_outputs(TextBuffer& out, const RoutingTallies& tallies) {
    print_rows(out, tallies, send_detail_rows);
    print_two_knob_tracks(out, tallies.two_knob_tracks);
    const bool has_pan_lanes =
        print_count(out, tallies.send_pan_lanes,
                    "  %d send pan automation lane(s) NOT carried: the send keeps its\n"
                    "      static pan\n");
    if (has_pan_lanes) {
        out.print(
            "      Follow Main Pan on a send is not read yet: such a send keeps\n"
            "      its own pan setting\n");
    }
    print_rows(out, tallies, surround_send_rows);
    print_sends_left_out(out, tallies);
    print_rows(out, tallies, output_rows);
    print_taken_outputs(out, tallies.taken_from_hardware);
}

void print_key_inputs(TextBuffer& out, const RoutingTallies& tallies) {
    print_rows(out, tallies, key_rows);
}

void print_keys_left_out(TextBuffer& out, const RoutingTallies& tallies) {
    if (tallies.keys_left_out) out.print("  --no-sidechain: key inputs left unwired\n");
    print_count(out, tallies.unresolved_keys, "  %d sidechain key inputs could not be resolved\n");
    if (tallies.misled_keys == 0) return;
    out.print(
        "  %d sidechained plug-in(s) key off a different source than the key\n"
        "      wired on their track, one that could not be wired itself (or the\n"
        "      second leg of a multi-mono pair), so they hear that key (3/4)\n"
        "      instead of their own:%s\n",
        tallies.misled_keys, listed(tallies.tracks_of_misled_keys).c_str());
}

void print_tracks_of_instruments(TextBuffer& out, const RoutingTallies& tallies) {
    if (tallies.tracks_of_instruments.empty()) return;
    out.print(
        "  WARNING: %d MIDI track(s) play an instrument on another track:%s\n"
        "      Not carried yet. In REAPER those notes stay on the MIDI track,\n"
        "      which has no instrument, so they are silent. To hear them, give\n"
        "      the MIDI track a MIDI send to the instrument's track.\n",
        count_of(tallies.tracks_of_instruments), listed(tallies.tracks_of_instruments).c_str());
}

void print_wide_auxes(TextBuffer& out, const RoutingTallies& tallies) {
    print_count(out, tallies.wide_auxes,
                "  %d aux(es) taking a surround bus written as wide as that bus, and\n"
                "      the tracks feeding it send every channel, not just the first two.\n");
    if (tallies.master_channels > 2) {
        out.print(
            "  REAPER's master has %d channels, as many as the widest track that plays to\n"
            "      it, so that none of them is lost. Listen through hardware outputs of\n"
            "      that width, or fold them down.\n",
            tallies.master_channels);
    }
}

void print_hardware_inserts(TextBuffer& out, const RoutingTallies& tallies) {
    if (tallies.hardware_inserts.empty()) return;
    out.print(
        "  %d hardware I/O insert(s) found. These route through a physical\n"
        "      interface path on your rig, so no converter can carry them:\n",
        count_of(tallies.hardware_inserts));
    out.append(one_name_a_line(tallies.hardware_inserts, no_cap));
    out.print(
        "      Whatever outboard sat on those inserts is NOT in the .rpp.\n"
        "      If it mattered to the sound, print those tracks before converting.\n");
}

}  // namespace tanrove
