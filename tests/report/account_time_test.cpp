// The summary's sentences on the project's head: which are printed, with which numbers.
#include "report/account_time.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

template <class... Facts>
std::string printed(void (*print)(TextBuffer&, Facts...), Facts... facts) {
    TextBuffer out;
    print(out, facts...);
    return out.text();
}

std::string tempo_lines(const TempoTallies& tallies) {
    TextBuffer out;
    print_tempo_lines(out, tallies, 48000);
    return out.text();
}

std::string meter_lines(const MeterChanges& meters, const MarkerTallies& locations) {
    TextBuffer out;
    print_meter_and_locations(out, meters, locations);
    return out.text();
}

bool holds(const std::string& text, std::string_view part) {
    return text.find(part) != text.npos;
}

TEST(HeadLines, TellWhatTheWholeAccountDoesNotHold) {
    const MeterPoint waltz{.bar = 7, .numerator = 3, .denominator = 4};
    const auto waltzes = [&](std::size_t changes, std::size_t repeated) {
        MeterChanges meters{.has_map = true};
        meters.changes.assign(changes, waltz);
        meters.repeated.assign(repeated, waltz);
        return meter_lines(meters, {});
    };
    const auto law = [](int depth) {
        return printed<const PanLaw&>(print_pan_law, pan_law(depth));
    };
    const auto ruler = [](FrameRate base, std::optional<ExtendedTimecode> extended = {}) {
        return printed<const TimecodeRuler&>(print_timecode, plan_timecode_ruler(base, extended));
    };
    const auto depth = [](const RecordFormat& recording) {
        return printed<const RecordFormat&>(print_bit_depth, recording) + "|" +
               printed<const RecordFormat&>(print_session_depth_note, recording);
    };
    const MarkerTallies slots{.markers = 2, .unknown_colours = 2, .unknown_colour_slots = {9, 4}};
    const TempoTallies exact{.changes = 9, .ramps_wanted = true, .ramps = {2, 0, 0.0005}};
    const TempoTallies left{.changes = 9, .ramps_wanted = true, .ramps = {0, 4, 0}};
    const struct {
        std::string text;
        const char* part;
        bool held = true;
    } cases[] = {
        {tempo_lines({.changes = 3}) + "|", "  tempo map with 3 changes\n|"},
        {tempo_lines({.changes = 3, .ramps_wanted = true}),
         "changes\n      --tempo-ramps: no drawn ramp here; every tempo event is a\n"},
        {tempo_lines(exact), "than 0.500 ms (24.0 samples).\n"},
        {tempo_lines(left), "      4 ramp(s) left as Pro Tools' steps: the tempos needed to\n"},
        {tempo_lines(left), "--tempo-ramps", false},
        {meter_lines({}, {}), "  no meter map in this session: 4/4 throughout\n"},
        {waltzes(8, 8), "more", false},
        {waltzes(10, 0), "      3/4 at bar 7\n      ... and 2 more\n      All 10 are written"},
        {waltzes(0, 9), "at bar 7, ... and 1 more\n"},
        {meter_lines({}, slots), "index(es): 4, 9\n"},
        {meter_lines({}, {.markers = 1, .coloured = 1}), "None carried", false},
        {meter_lines({}, {.markers = 1}), "      None carried a stored marker color"},
        {meter_lines({}, {.without_time = 1}), "None carried", false},
        {law(9), "  *** Pan Depth enum 9 is not one this build knows.\n"},
        {law(2), "Centered", false},
        {depth({}), "Bit depth", false},
        {depth({.bits = 24}), "24-bit", false},
        {depth({.bits = 24, .is_aiff = true}), "records at", false},
        {depth({.bits = 24, .is_aiff = true}), "  Bit depth: 24-bit AIFF session; REAPER's"},
        {depth({.bits = 24, .is_float = true}), "|  The session records at 24-bit float. Existing"},
        {depth({.bits = 32, .is_float = true, .written = true}) + "|", "||"},
        {ruler({7, 0}), "Timecode", false},
        {ruler({2, 90000}), "  Timecode: 25 fps, Session Start 01:00:00:00 (3600.0000 s) written"},
        {ruler({1, 0}), "stores 24 and 23.976 the same way"},
        {ruler({1, 0}, ExtendedTimecode{1, 0}), "23.976", false},
        {ruler({8, 0}), "REAPER has no 30 drop-frame setting; the"},
        {ruler({5, 0}, ExtendedTimecode{12, 0}), "no 59.94 drop-frame setting; the ruler runs at"},
        {law(1), "plays up to 0.9 dB from Pro Tools.\n"},
    };
    for (const auto& c : cases) EXPECT_EQ(holds(c.text, c.part), c.held) << c.text << c.part;
}

}  // namespace
}  // namespace tanrove
