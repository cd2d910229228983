// The records of the session's time frame: tempo, meter, memory locations, timecode, grid and
// click. Each in the form that real sessions store; where older or plainer forms exist, in those
// too.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"

namespace tanrove::builder {

struct TempoSpec {
    std::int64_t tick = 0;
    double bpm = 120;
    std::uint32_t beat_ticks = 960000;
};

/// The map as stored since Pro Tools 10; the first point carries the marks of the default tempo.
Bytes tempo_block(const std::vector<TempoSpec>& points);
/// The same with 5-byte positions, no length of the beat, and nothing behind the last tempo.
Bytes tempo_block_plain(const std::vector<TempoSpec>& points);
/// The default tempo on its own: 24 marking bytes, or only the first 20 of them, then the tempo.
Bytes default_tempo_bytes(double bpm, std::uint32_t beat_ticks = 960000, bool whole_mark = true);

struct MeterSpec {
    std::int64_t tick = 0;
    std::uint32_t bar = 1;
    std::uint32_t numerator = 4;
    std::uint32_t denominator = 4;
};

Bytes meter_block(const std::vector<MeterSpec>& meters);

/// How many bytes stand behind a location's colour blocks.
enum class LocationForm : std::uint8_t { palette = 128, slot = 39, slot_2021 = 47, other = 60 };

struct LocationSpec {
    std::string name;
    std::uint16_t number = 0;
    std::uint8_t flags = 1;  ///< 2: in samples
    std::uint8_t kind = 9;   ///< 9 marker, 10 selection, 8 neither; 1, 2 and 0 in older sessions
    std::int64_t start = 0;  ///< ticks from the origin, or samples if `flags` has 2
    std::int64_t end = 0;
    LocationForm form = LocationForm::slot_2021;
    std::uint16_t colour = 0xfffe;  ///< slot or place on the palette
    std::optional<std::uint32_t> rgb = {};
    int colour_blocks = 2;
    std::string comment = {};
};

Bytes location_block(const LocationSpec& location);

struct TimecodeSpec {
    std::uint8_t base_code = 7;
    std::uint32_t start_frames = 0;
    bool extended = true;  ///< false: as Pro Tools 12 stores it
    std::uint32_t extended_code = 7;
    std::uint32_t extended_start_frames = 0;
};

Bytes timecode_block(const TimecodeSpec& timecode);

/// Bars, beats and ticks of one value of the edit window.
struct BarsSpec {
    unsigned bars = 0;
    unsigned beats = 0;
    unsigned ticks = 0;
    std::uint8_t unit = 0;  ///< that counts: 0 bars, 1 minutes, 2 timecode, 3 feet, 4 samples
};

/// The values in order: nudge, grid and one more in the edit window's own record.
Bytes values_block(const std::vector<BarsSpec>& values);

Bytes click_block(std::uint8_t on);

/// The time frame of one session. What is not described is not stored.
struct TimeFrameSpec {
    std::vector<TempoSpec> tempos;
    std::optional<TempoSpec> default_tempo;
    std::vector<MeterSpec> meters;
    std::vector<LocationSpec> locations;
    std::optional<TimecodeSpec> timecode;
    std::vector<BarsSpec> nudge_and_grid;
    std::optional<bool> click;
};

/// Tempo, meter and click as they follow each other in a session, the maps stored twice.
Bytes tempo_and_meter_blocks(const TimeFrameSpec& time);
/// The edit window's values, and behind them the memory locations, stored twice.
Bytes grid_and_location_blocks(const TimeFrameSpec& time);

}  // namespace tanrove::builder
