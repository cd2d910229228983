// The account's sentences about outputs, sends and key inputs. Each function prints what stands
// together in the summary.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/routing_tallies.hpp"

namespace tanrove {

/// Behind the source of the track list, in front of the MIDI tracks that arrive muted.
void print_sends(TextBuffer& out, const RoutingTallies& tallies);

/// Behind the MIDI tracks that arrive muted, in front of the click.
void print_tracks_without_output(TextBuffer& out, const RoutingTallies& tallies);

/// Behind the click, in front of the plug-ins that are bypassed.
void print_send_details_and_outputs(TextBuffer& out, const RoutingTallies& tallies);

/// Behind the plug-ins that are offline, in front of MIDI triggering.
void print_key_inputs(TextBuffer& out, const RoutingTallies& tallies);

/// Behind MIDI triggering, in front of the send automation.
void print_keys_left_out(TextBuffer& out, const RoutingTallies& tallies);

/// Among the track properties: behind real-time properties, in front of the automation modes.
void print_tracks_of_instruments(TextBuffer& out, const RoutingTallies& tallies);

/// Behind the stand-ins, in front of the surround panners.
void print_wide_auxes(TextBuffer& out, const RoutingTallies& tallies);

/// In front of the timebases.
void print_hardware_inserts(TextBuffer& out, const RoutingTallies& tallies);

}  // namespace tanrove
