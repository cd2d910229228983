// Which MIDI tracks play an instrument on another track.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// Stands for an instrument whose track could not be found.
constexpr const char* unknown_instrument = "an instrument on another track";

/// A MIDI track and the instrument it plays: the name of a plug-in's MIDI node, or of the
/// instrument's track.
struct InstrumentLink {
    std::string midi_track;
    std::string instrument;

    bool operator==(const InstrumentLink&) const = default;
};

/// The links in the order of the rows; a MIDI track that plays a port, or nothing, has none.
std::vector<InstrumentLink> readInstrumentLinks(const BlockIndex& index,
                                                std::span<const StripRow> rows);

}  // namespace tanrove
