// What the routing counts for the account.
#pragma once

#include <string>
#include <vector>

namespace tanrove {

struct RoutingTallies {
    int sends = 0;
    int return_tracks = 0;        ///< tracks that sends play into
    int panned_sends = 0;         ///< of mono tracks, off center
    int sends_off = 0;            ///< switched off, written muted
    int sends_into_surround = 0;  ///< of mono and stereo tracks
    int sends_left_out = 0;       ///< although Pro Tools plays them somewhere
    std::vector<std::string> tracks_of_sends_left_out;
    int send_pan_lanes = 0;                    ///< that move, and are left out
    std::vector<std::string> two_knob_tracks;  ///< stereo tracks with a send whose knobs are moved

    int outputs_into_buses = 0;
    int outputs_by_input = 0;  ///< of them: the aux takes the very bus
    int outputs_by_pair = 0;   ///< of them: the aux takes the stereo bus of the leg
    int outputs_by_part = 0;   ///< of them: the aux takes the surround bus of the part
    int parted_legs = 0;       ///< sends and outputs whose bus is taken leg by leg
    std::vector<std::string> taken_from_hardware;  ///< their output plays to the hardware as well
    std::vector<std::string> without_output;
    std::vector<std::string> leading_astray;  ///< they play to what can neither be read nor found
    int wide_auxes = 0;                       ///< auxes that take a surround bus
    int master_channels = 2;                  ///< that the widest track plays to it

    bool keys_left_out = false;  ///< the run was told to
    int keys_on_first_pair = 0;
    int keys_on_further_pairs = 0;
    int tracks_passing_first_pair = 0;  ///< keyed tracks that send 1/2 alone to their parent
    int unresolved_keys = 0;
    int misled_keys = 0;  ///< plug-ins that hear another key
    std::vector<std::string> tracks_of_misled_keys;

    std::vector<std::string> unmuted_sources;  ///< muted tracks whose pre-fader sends play on
    std::vector<std::string> silent_sources;   ///< those that stay muted, their sends with them

    std::vector<std::string> hardware_inserts;       ///< "track: insert"
    std::vector<std::string> tracks_of_instruments;  ///< MIDI tracks that play another's plug-in
};

}  // namespace tanrove
