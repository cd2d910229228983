// Which tracks the run leaves out: Click tracks by what they hold, hidden and inactive ones unless
// a written track needs them; and where comments go.
#include "mix/leave_out.hpp"

#include <gtest/gtest.h>

#include "mix/click_tracks.hpp"
#include "mix/track_comments.hpp"

namespace tanrove {
namespace {

TrackPlan placed(const std::string& name, std::size_t row) {
    TrackPlan plan;
    plan.name = plan.session_name = name;
    plan.strip_row = row;
    return plan;
}

std::string names_of(const std::vector<TrackPlan>& plans) {
    std::string names;
    for (const auto& plan : plans) names += plan.name + ";";
    return names;
}

TEST(LeaveOutClickTracks, TellsAClickTrackByWhatItHolds) {
    struct Case {
        const char* name;
        std::vector<std::string> codes;
        bool has_send = false;
        bool has_clip = false;
        const char* other_row = "Vox";
        bool is_left_out = false;
        bool is_kept_whole = false;
    };
    const Case cases[] = {
        {.name = "Guide", .codes = {"Digiclik"}, .is_left_out = true},
        {.name = "Guide", .codes = {"Digiclik", "Digiclik"}, .is_left_out = true},
        {.name = "Click", .codes = {"Digiclik", "DigiEQ3 "}, .is_kept_whole = true},
        {.name = "Click", .codes = {"Digiclik", ""}, .is_kept_whole = true},
        {.name = "Click", .codes = {"Digiclik"}, .has_send = true, .is_kept_whole = true},
        {.name = "Click", .codes = {"Digiclik"}, .has_clip = true, .is_kept_whole = true},
        {.name = "Guide", .codes = {"Digiclik"}, .other_row = "Guide", .is_kept_whole = true},
        {.name = "Bus", .codes = {"Digiclik"}, .is_kept_whole = true},
        {.name = "Click", .codes = {}, .is_left_out = true},
        {.name = "Click 1", .codes = {}, .is_left_out = true},
        {.name = "Click.01", .codes = {}, .is_left_out = true},
        {.name = "Clicks", .codes = {}},
        {.name = "click", .codes = {}},
        {.name = "Click", .codes = {"DigiEQ3 "}},
        {.name = "Click", .codes = {}, .has_send = true},
        {.name = "Click 1", .codes = {}, .has_clip = true},
        {.name = "Click Bus", .codes = {}},
    };
    for (const bool no_click : {true, false}) {
        for (const Case& c : cases) {
            SCOPED_TRACE(testing::Message() << c.name << ' ' << &c - cases << ' ' << no_click);
            std::vector<StripRow> rows(2);
            rows[0].current_name = c.name;
            rows[1].current_name = c.other_row;
            std::vector<TrackPlan> plans = {placed(c.name, 0), placed(c.other_row, 1)};
            plans[0].lanes.resize(1);
            plans[0].lanes[0].clips.resize(c.has_clip ? 1 : 0);
            std::vector<RoutingRow> routing(1);
            routing[0].sends.resize(c.has_send ? 1 : 0);
            ClickInput input{.inserts = {}, .click_is_on = true, .no_click = no_click};
            for (const auto& code : c.codes) input.inserts.push_back({0, code, true});
            ClickTallies tallies;
            leave_out_click_tracks(plans, rows, routing, {"Bus", "Click Bus"}, input, tallies);
            const bool is_left_out = no_click && c.is_left_out;
            EXPECT_EQ(plans.size(), is_left_out ? 1u : 2u);
            EXPECT_EQ(tallies.left_out.size(), is_left_out ? 1u : 0u);
            EXPECT_EQ(tallies.kept_whole.size(), no_click && c.is_kept_whole ? 1u : 0u);
            const bool has_click = !c.codes.empty() && c.codes[0] == "Digiclik";
            EXPECT_EQ(tallies.player, has_click && !is_left_out ? c.name : "");
        }
    }
}

/// What is left by going over all tracks again and again, until a pass changes nothing.
std::vector<bool> kept_by_passes(const std::vector<TrackPlan>& plans, const TrackNeeds& needs,
                                 std::vector<bool> is_masked, std::vector<std::string>& kept) {
    for (bool has_changed = true; has_changed;) {
        has_changed = false;
        for (std::size_t i = 0; i < plans.size(); ++i) {
            if (is_masked[i] || !needs.contains(plans[i].session_name)) continue;
            for (const auto& name : needs.at(plans[i].session_name)) {
                for (std::size_t j = 0; j < plans.size(); ++j) {
                    if (!is_masked[j] || plans[j].session_name != name) continue;
                    is_masked[j] = false;
                    has_changed = true;
                    kept.push_back(plans[j].name + " (" + plans[i].name + " needs it)");
                }
            }
        }
    }
    return is_masked;
}

TEST(LeaveOutTracks, KeepsWhatRepeatedPassesOverAllNeedsKeepInTheirOrder) {
    std::uint32_t seed = 1;
    const auto draw = [&seed](std::size_t below) {
        seed = seed * 1664525 + 1013904223;
        return (seed >> 8) % below;
    };
    for (int round = 0; round < 2000; ++round) {
        SCOPED_TRACE(round);
        const std::size_t count = 1 + draw(14);
        std::vector<TrackPlan> plans;
        std::vector<bool> is_masked;
        TrackNeeds needs;
        LeaveOutOptions options{draw(4) != 0, draw(4) != 0, "|"};
        for (std::size_t i = 0; i < count; ++i) {
            const std::string name = "T" + std::to_string(draw(count));
            plans.push_back(placed(name, i));
            plans.back().name += "." + std::to_string(i);
            plans.back().inactive = draw(3) == 0;
            const bool is_hidden = draw(3) == 0;
            if (is_hidden) options.hidden_names += plans.back().name + "|";
            is_masked.push_back((is_hidden && options.skip_hidden_tracks) ||
                                (plans.back().inactive && options.skip_inactive_tracks));
            for (auto n = draw(3); n-- > 0;) {
                needs[name].push_back("T" + std::to_string(draw(count)));
            }
        }
        std::vector<std::string> kept;
        const auto is_left_out = kept_by_passes(plans, needs, is_masked, kept);
        std::string written;
        std::size_t left_out = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (is_left_out[i]) ++left_out;
            if (!is_left_out[i]) written += plans[i].name + ";";
        }
        LeaveOutTallies tallies;
        leave_out_tracks(plans, TrackStrips(plans, {}), options, needs, tallies);
        EXPECT_EQ(names_of(plans), written);
        EXPECT_EQ(tallies.kept, kept);
        EXPECT_EQ(tallies.hidden.size() + tallies.inactive.size(), left_out);
    }
}

TEST(LeaveOutTracks, TakesThePlaylistsBehindATrackWithItAndNothingThatNoRowAskedFor) {
    std::vector<TrackPlan> plans = {placed("Vox", 0), placed("", 0), placed("Bass", 1),
                                    placed("", 1),    placed("", 1), placed("Lost", 2)};
    plans[1].is_alternate = plans[3].is_alternate = plans[4].is_alternate = true;
    plans[2].inactive = plans[5].inactive = true;
    plans[4].strip_row = plans[5].strip_row = std::nullopt;
    for (std::size_t i : {1u, 3u, 4u}) plans[i].name = "alternate " + std::to_string(i);
    LeaveOutTallies tallies;
    const LeaveOutOptions options{true, true, ",Bas,Bass,"};
    leave_out_tracks(plans, TrackStrips(plans, {}), options, {}, tallies);
    EXPECT_EQ(names_of(plans), "Vox;alternate 1;alternate 4;Lost;");
    EXPECT_EQ(tallies.inactive, std::vector<std::string>{"Bass"}) << "inactive goes before hidden";
    EXPECT_TRUE(tallies.hidden.empty());
}

TEST(PlaceComments, OncePerTrackWhereTheRunWantsThem) {
    std::vector<StripRow> rows(3);
    rows[0].current_name = "Vox";
    rows[1].current_name = "Bass";
    rows[2].current_name = "Print";
    rows[2].type = StripRowType::master;
    std::vector<TrackDisplay> displays(3);
    displays[0].comment = "dry\r\n>\n\n";
    displays[1].comment = "\n";
    displays[2].comment = "loud";
    for (const auto place :
         {CommentPlace::items, CommentPlace::project_notes, CommentPlace::nowhere}) {
        SCOPED_TRACE(static_cast<int>(place));
        std::vector<TrackPlan> plans = {placed("Vox", 0), placed("Vox", 0), placed("Bass", 1)};
        CommentTallies tallies;
        const auto notes =
            place_comments(plans, TrackStrips(plans, {rows, {}, displays}), place, tallies);
        EXPECT_EQ(tallies.tracks, (std::vector<std::string>{"Vox", "Print"}));
        const bool is_noted = place != CommentPlace::nowhere;
        EXPECT_EQ(!notes.empty() && notes.back().track_name == "Print", is_noted);
        EXPECT_EQ(notes.size() == 2, place == CommentPlace::project_notes);
        const std::vector<std::string> lines = {"dry", " >"};
        EXPECT_EQ(plans[0].comment_lines == lines, place == CommentPlace::items);
        EXPECT_TRUE(plans[1].comment_lines.empty() && plans[2].comment_lines.empty());
    }
}

}  // namespace
}  // namespace tanrove
