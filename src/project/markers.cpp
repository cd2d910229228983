// Memory locations into markers and regions: place, number, colour.
#include "project/markers.hpp"

#include "base/guid.hpp"
#include "project/quoted_text.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t marker_seed = 0x4D41524BU;  // plus the marker's number
constexpr std::uint32_t is_set = 0x1000000U;        // REAPER's mark of a colour that was chosen

// Pro Tools' own marker colour, which says that the user chose none: as a value, and as a place on
// the palette.
constexpr std::int32_t default_rgb = 0xFFB300;
constexpr std::int32_t default_slot = 11;

struct PaletteColour {
    std::int32_t slot;
    std::uint32_t rgb;
};

/// The places of the marker palette whose colour is known, read off sessions that hold both.
constexpr PaletteColour palette[] = {
    {2, 0x6600FE}, {3, 0x9202DD}, {5, 0xFE7CD5}, {12, 0xDFDF00}, {13, 0x8DE702}, {17, 0x00DA32},
};

/// Red in the low byte, as REAPER has it.
std::uint32_t reaper_colour(std::uint32_t rgb) {
    return is_set | (rgb & 0xFF) << 16 | (rgb & 0xFF00) | (rgb >> 16 & 0xFF);
}

std::uint32_t unknown_colour(std::int32_t slot, MarkerTallies& tallies) {
    ++tallies.unknown_colours;
    tallies.unknown_colour_slots.insert(slot);
    return 0;
}

std::uint32_t colour_of(const MemoryLocation& location, MarkerTallies& tallies) {
    // The slots are a palette of their own, of which no colour is known.
    if (location.colour_slot >= 0) return unknown_colour(location.colour_slot, tallies);
    if (location.colour_rgb >= 0) {
        if (location.colour_rgb == default_rgb) return 0;
        ++tallies.coloured;
        return reaper_colour(static_cast<std::uint32_t>(location.colour_rgb));
    }
    if (location.colour_index < 0 || location.colour_index == default_slot) return 0;
    for (const PaletteColour& known : palette) {
        if (known.slot != location.colour_index) continue;
        ++tallies.coloured;
        return reaper_colour(known.rgb);
    }
    return unknown_colour(location.colour_index, tallies);
}

}  // namespace

std::vector<MarkerPlan> plan_markers(std::span<const MemoryLocation> locations,
                                     const TempoClock& clock, std::int64_t sample_rate,
                                     MarkerTallies& tallies) {
    const auto rate_hz = static_cast<double>(sample_rate);
    std::vector<MarkerPlan> plans;
    plans.reserve(locations.size());
    for (const MemoryLocation& location : locations) {
        if (location.kind == LocationKind::none) {
            ++tallies.without_time;
            continue;
        }
        const auto seconds = [&](double stored) {
            return printable(location.in_samples ? stored / rate_hz : clock.seconds(stored));
        };
        MarkerPlan& plan = plans.emplace_back();
        plan.number = static_cast<int>(plans.size());
        plan.start_seconds = seconds(location.start);
        plan.name = location.name;
        plan.colour = colour_of(location, tallies);
        if (location.kind == LocationKind::selection && location.end > location.start) {
            plan.end_seconds = seconds(location.end);
        }
        ++(plan.end_seconds ? tallies.regions : tallies.markers);
    }
    return plans;
}

void write_markers(TextSink& out, std::span<const MarkerPlan> markers) {
    for (const MarkerPlan& marker : markers) {
        const std::string id = guid(marker_seed + static_cast<std::uint32_t>(marker.number));
        const std::string name = quoted(marker.name);
        const unsigned long colour = marker.colour;
        if (!marker.end_seconds) {
            out.line(1, "MARKER %d %.10f %s 0 %lu 1 R %s 0", marker.number, marker.start_seconds,
                     name.c_str(), colour, id.c_str());
            continue;
        }
        out.line(1, "MARKER %d %.10f %s 1 %lu 1 R %s 0", marker.number, marker.start_seconds,
                 name.c_str(), colour, id.c_str());
        out.line(1, "MARKER %d %.10f \"\" 1", marker.number, *marker.end_seconds);
    }
}

}  // namespace tanrove
