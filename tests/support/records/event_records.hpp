// The record of automation events in lanes, in the lanes of plug-ins and in the clip gain table.
#pragma once

#include <cstdint>
#include <vector>

#include "support/byte_writer.hpp"

namespace tanrove::builder {

struct EventSpec {
    std::int64_t position = 0;  ///< samples, or ticks from the session's origin
    std::uint32_t value = 0;    ///< its bytes
};

/// The events in runs of 65,536 within 32 bits of time, each value in `value_width` bytes.
Bytes event_record(const std::vector<EventSpec>& events, std::size_t value_width, bool in_ticks);

}  // namespace tanrove::builder
