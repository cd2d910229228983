// The summary's sentences on the project's head: which are printed, with which numbers.
#include "report/summary_time.hpp"

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

TEST(TempoLines, TellWhatBecameOfDrawnRamps) {
    EXPECT_EQ(tempo_lines({.ramps_wanted = true}), "");
    EXPECT_EQ(tempo_lines({.changes = 3}), "  tempo map with 3 changes\n");
    EXPECT_TRUE(
        holds(tempo_lines({.changes = 3, .ramps_wanted = true}),
              "changes\n      --tempo-ramps: no drawn ramp here; every tempo event is a\n"));
    EXPECT_TRUE(holds(tempo_lines({.changes = 9, .ramps_wanted = true, .ramps = {2, 0, 0.0005}}),
                      "than 0.500 ms (24.0 samples).\n"));
    const auto left = tempo_lines({.changes = 9, .ramps_wanted = true, .ramps = {0, 4, 0}});
    EXPECT_TRUE(holds(left, "      4 ramp(s) left as Pro Tools' steps: the tempos needed to\n"));
    EXPECT_FALSE(holds(left, "--tempo-ramps"));
}

TEST(MeterLines, NameTheFirstEightOfALongList) {
    EXPECT_EQ(meter_lines({}, {}), "  no meter map in this session: 4/4 throughout\n");
    MeterChanges meters{.has_map = true};
    const MeterPoint waltz{.bar = 7, .numerator = 3, .denominator = 4};
    meters.changes.assign(8, waltz);
    EXPECT_FALSE(holds(meter_lines(meters, {}), "more"));
    meters.changes.assign(10, waltz);
    meters.repeated.assign(2, waltz);
    EXPECT_EQ(meter_lines(meters, {}),
              "  meter 4/4, read from the session\n"
              "  NOTE: this session has 10 meter change(s) after the first,\n"
              "      3/4 at bar 7\n      3/4 at bar 7\n      3/4 at bar 7\n      3/4 at bar 7\n"
              "      3/4 at bar 7\n      3/4 at bar 7\n      3/4 at bar 7\n      3/4 at bar 7\n"
              "      ... and 2 more\n"
              "      All 10 are written as REAPER time signature changes, at\n"
              "      the places where Pro Tools has them.\n"
              "  2 meter event(s) repeat the meter already in force -- no bar\n"
              "      line moves because of them, and they are not written: 3/4 at bar 7,"
              " 3/4 at bar 7\n");
    meters.repeated.assign(9, waltz);
    EXPECT_TRUE(holds(meter_lines(meters, {}), "at bar 7, ... and 1 more\n"));
}

TEST(LocationLines, AreToldByTheirOwnCounts) {
    const auto some = meter_lines({}, {.markers = 2,
                                       .regions = 1,
                                       .without_time = 4,
                                       .coloured = 1,
                                       .unknown_colours = 2,
                                       .unknown_colour_slots = {9, 4}});
    EXPECT_TRUE(holds(some, "index(es): 4, 9\n"));
    EXPECT_FALSE(holds(some, "None carried"));
    EXPECT_TRUE(holds(meter_lines({}, {.markers = 1}), "      None carried a stored marker color"));
    EXPECT_FALSE(holds(meter_lines({}, {.without_time = 1}), "None carried"));
}

TEST(PanLawLines, WarnOfAnUnknownDepthAndOfACurveThatDiffers) {
    EXPECT_TRUE(holds(printed<const PanLaw&>(print_pan_law, pan_law(9)),
                      "  *** Pan Depth enum 9 is not one this build knows.\n"));
    EXPECT_FALSE(holds(printed<const PanLaw&>(print_pan_law, pan_law(2)), "Centered"));
    const auto lines = printed<const PanLaw&>(print_pan_law, pan_law(1));
    EXPECT_TRUE(holds(lines, "  Pan law: -2.5 dB, read from the session's Pan Depth\n"));
    EXPECT_TRUE(holds(lines, "plays up to 0.9 dB from Pro Tools.\n"));
}

TEST(BitDepthLines, TellEveryDepthThatIsNotInTheProject) {
    const struct {
        RecordFormat recording;
        std::string_view depth_line;
        bool note;
    } cases[] = {
        {{}, "", false},
        {{.bits = 24}, "", true},
        {{.bits = 24, .is_aiff = true}, "  Bit depth: 24-bit AIFF session; REAPER's", true},
        {{.bits = 32, .is_float = true, .written = true},
         "  Bit depth: 32-bit float written",
         false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.depth_line);
        const auto line = printed<const RecordFormat&>(print_bit_depth, c.recording);
        EXPECT_EQ(line.substr(0, c.depth_line.size()), c.depth_line);
        EXPECT_EQ(line.empty(), c.depth_line.empty());
        const auto note = printed<const RecordFormat&>(print_session_depth_note, c.recording);
        EXPECT_EQ(!note.empty(), c.note);
    }
}

TEST(TimecodeLines, TellWhereTheRulerDoesNotDropFrames) {
    const auto lines = [](FrameRate base, std::optional<ExtendedTimecode> extended) {
        return printed<const TimecodeRuler&>(print_timecode, plan_timecode_ruler(base, extended));
    };
    EXPECT_EQ(lines({7, 0}, std::nullopt), "");
    EXPECT_TRUE(holds(lines({2, 90000}, std::nullopt),
                      "  Timecode: 25 fps, Session Start 01:00:00:00 (3600.0000 s) written as\n"));
    EXPECT_TRUE(holds(lines({1, 0}, std::nullopt), "stores 24 and 23.976 the same way"));
    EXPECT_FALSE(holds(lines({1, 0}, ExtendedTimecode{1, 0}), "23.976"));
    EXPECT_TRUE(holds(lines({8, 0}, std::nullopt), "REAPER has no 30 drop-frame setting; the"));
    EXPECT_TRUE(holds(lines({5, 0}, ExtendedTimecode{12, 0}),
                      "REAPER has no 59.94 drop-frame setting; the ruler runs at 59.94\n"));
}

TEST(GridLines, TellOfTheGridAndOfTheNudge) {
    EXPECT_EQ(printed<const EditGrid&>(print_grid, {}), "");
    const auto lines = printed<const EditGrid&>(
        print_grid, {.quarter_notes = 0.25, .nudge = GridSetting{1, 0, 60}});
    EXPECT_TRUE(holds(lines,
                      "  Edit grid written as REAPER's grid (0.25 of a quarter note).\n"
                      "      Nudge (1| 0| 060) is not carried: REAPER keeps its\n"));
}

}  // namespace
}  // namespace tanrove
