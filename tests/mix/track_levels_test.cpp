// Faders, pans, modes and ramps, held against the laws of both programs.
#include "mix/track_levels.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "mix/master_fader.hpp"

namespace tanrove {
namespace {

constexpr double rate_hz = 48000;

/// Where Pro Tools' fader stands at a level: its throw is straight between these places.
struct ThrowPlace {
    double db, at;
};
constexpr ThrowPlace throw_places[] = {{22.488, -1.5721}, {12, -0.5721}, {0, 0.5721},
                                       {-20, 2.3063},     {-40, 3.4102}, {-72, 3.8517},
                                       {-144.5, 4.0}};

double between(double x, double x0, double x1, double y0, double y1) {
    return y0 + (x - x0) / (x1 - x0) * (y1 - y0);
}

double throw_at(double db) {
    std::size_t i = 1;
    while (i + 1 < std::size(throw_places) && db < throw_places[i].db) ++i;
    const auto &a = throw_places[i - 1], &b = throw_places[i];
    return between(db, a.db, b.db, a.at, b.at);
}

double db_at(double at) {
    std::size_t i = 1;
    while (i + 1 < std::size(throw_places) && at > throw_places[i].at) ++i;
    const auto &a = throw_places[i - 1], &b = throw_places[i];
    return between(at, a.at, b.at, a.db, b.db);
}

EnvelopePlanner planner() {
    return {TempoClock({}, 120), rate_hz};
}

/// What REAPER plays at `seconds`: it draws straight lines of gain between points.
double played_gain(const std::vector<EnvelopePoint>& points, std::size_t& next, double seconds) {
    while (next + 1 < points.size() && points[next].seconds < seconds) ++next;
    const EnvelopePoint &a = points[next - 1], &b = points[next];
    if (b.seconds <= a.seconds) return b.value;
    return between(seconds, a.seconds, b.seconds, a.value, b.value);
}

TEST(EnvelopePlanner, KeepsEveryRampWithinATenthOfADbOfTheFadersWay) {
    constexpr int start = 480;
    constexpr int length = 24000;
    const double levels[] = {12, 6, 0, -0.7, -10, -20, -33.3, -40, -60, -72, -110, -144.5};
    for (const double from : levels) {
        for (const double to : levels) {
            SCOPED_TRACE(testing::Message() << from << " to " << to);
            const Lane lane{{{start, from * 10}, {start + length, to * 10}}, from * 10, false};
            EnvelopeTallies tallies;
            const auto points =
                planner().plan("VOLENV2", EnvelopeKind::volume, lane, tallies).points;
            EXPECT_EQ(points.size(), 3U + static_cast<std::size_t>(tallies.ramp_points));
            double worst = 0;
            std::size_t next = 2;
            for (int i = 0; i <= length; ++i) {
                const double told = db_at(between(i, 0, length, throw_at(from), throw_at(to)));
                const double gain = played_gain(points, next, (start + i) / rate_hz);
                worst = std::max(worst, std::abs(20 * std::log10(gain) - told));
            }
            EXPECT_LT(worst, 0.1);
            for (std::size_t i = 2; i < points.size(); ++i) {
                EXPECT_LT(std::abs(20 * std::log10(points[i].value / points[i - 1].value)), 1.51);
            }
        }
    }
}

TEST(EnvelopePlanner, CopiesLanesWithinItsBudgetAndPlansEachOnceWhateverIsLeft) {
    const Lane lane{std::vector<LanePoint>(max_copied_points / 2), 0, false};
    const Lane other{{{0, 0}}, 0, false};
    EnvelopePlanner envelopes = planner();
    EnvelopeTallies tallies;
    for (const bool has_points : {true, true, true, false}) {
        const auto envelope = envelopes.plan("MUTEENV", EnvelopeKind::mute, lane, tallies);
        EXPECT_EQ(!envelope.points.empty(), has_points);
    }
    EXPECT_FALSE(envelopes.plan("MUTEENV", EnvelopeKind::mute, other, tallies).points.empty());
}

TEST(PlanLevels, GivesEveryModeItsPlaceInReaper) {
    struct {
        std::optional<AutomationMode> mode;
        bool automated;
        int written;
        bool armed, active;
        double gain;
    } const cases[] = {
        {AutomationMode::off, true, 0, false, false, 0.5011872336},
        {AutomationMode::read, true, 1, true, true, 1},
        {AutomationMode::touch, true, 2, true, true, 1},
        {AutomationMode::latch, true, 4, true, true, 1},
        {AutomationMode::write, true, 3, false, true, 1},
        {AutomationMode::touch_latch, true, 4, true, true, 1},
        {std::nullopt, true, 1, true, true, 1},
        {std::nullopt, false, 0, false, true, 0.5011872336},
        {AutomationMode::read, false, 1, false, true, 0.5011872336},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.written << ' ' << c.automated);
        std::vector<Strip> strips(1);
        strips[0].name = "Vox";
        strips[0].present = true;
        strips[0].fader_db = -6;
        if (c.automated) {
            strips[0].volume_lane.points = {{0, -60}};
            strips[0].trim_lane.points = {{0, 0}};
        }
        std::vector<StripRow> rows(1);
        rows[0].current_name = "Lead";  // now; the strips know the name of its creation
        rows[0].original_name = "Vox";
        std::vector<TrackDisplay> displays(1);
        displays[0].automation_mode = c.mode;
        std::vector<TrackPlan> plans(2);
        plans[0].session_name = "Vox";
        plans[1].receives.resize(c.automated ? 1 : 0);
        for (auto& send : plans[1].receives) send.envelopes.resize(1);
        EnvelopePlanner envelopes = planner();
        LevelTallies tallies;
        plan_levels(plans, TrackStrips(plans, {rows, strips, displays}), {}, envelopes, tallies);
        for (const auto& send : plans[1].receives) EXPECT_EQ(send.envelopes[0].active, c.active);
        EXPECT_EQ(plans[0].mixer.automation_mode, c.written);
        EXPECT_NEAR(plans[0].mixer.gain, c.gain, 1e-9);
        ASSERT_EQ(plans[0].envelopes.size(), c.automated ? 2U : 0U);
        for (const auto& envelope : plans[0].envelopes) {
            EXPECT_EQ(envelope.armed, c.armed && envelope.block == "VOLENV2");
            EXPECT_EQ(envelope.active, c.active);
        }
    }
}

TEST(PlanLevels, GivesAPanOnlyToWhatHasOneAndStopsItWhereProToolsHasNone) {
    const struct {
        const char* what;
        int channels;
        double leg_pan;
        MonoOutput output;
        bool surround;
        std::string envelopes;  ///< of the pan, "!" where not active; knobs that stand unpanned
        double pan;
    } cases[] = {{"stereo", 2, 0, MonoOutput::no, false, "DUALPANENVL DUALPANENV ", 0},
                 {"right leg", 2, 1, MonoOutput::no, false, "PANENV2 ", 0},
                 {"one side", 2, 0, MonoOutput::right, false, "DUALPANENVL! DUALPANENV! 1 1", 0},
                 {"mono", 2, 0, MonoOutput::whole, false, "DUALPANENVL! DUALPANENV! -1 1", 0},
                 {"wide", 6, 0, MonoOutput::no, false, "", 0},
                 {"surround", 2, 0, MonoOutput::no, true, "", -0.5},
                 {"leg with a panner", 1, 1, MonoOutput::no, false, "", 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<Strip> strips(1);
        strips[0].name = "Vox";
        strips[0].present = strips[0].stereo = true;
        strips[0].surround = c.surround;
        strips[0].pan = -100;
        strips[0].dual_pan_lane.points = strips[0].pan_right_lane.points = {{0, 50}};
        std::vector<TrackPlan> plans(1);
        plans[0].session_name = "Vox";
        plans[0].channels = c.channels;
        plans[0].leg_pan = c.leg_pan;
        plans[0].strip_is_mono = c.channels == 1;
        if (c.channels == 1) plans[0].panner.emplace();
        plans.push_back(plans[0]);  // another leg
        EnvelopePlanner envelopes = planner();
        LevelTallies tallies;
        const bool is_mono = c.output != MonoOutput::no;
        std::vector<StripRow> rows(1);
        rows[0].current_name = "Vox";
        Routes routes;
        routes.strips.resize(1);
        routes.strips[0].mono_output = c.output;
        plan_levels(plans, TrackStrips(plans, {rows, strips, {}}), routes, envelopes, tallies);
        std::string pans;
        for (const auto& e : plans[0].envelopes) pans += e.block + (e.active ? " " : "! ");
        const MixerPlan& knobs = plans[0].mixer;
        if (is_mono) {
            pans += std::to_string(static_cast<int>(knobs.dual_pan_left)) + ' ' +
                    std::to_string(static_cast<int>(knobs.dual_pan_right));
        }
        EXPECT_EQ(pans, c.envelopes);
        EXPECT_EQ(plans[0].mixer.pan, c.pan);
        if (c.channels == 1) {
            EXPECT_FALSE(plans[0].pan_mode);
        }
        EXPECT_EQ(tallies.panners_left_still, c.channels > 2 ? 1 : 0);
        EXPECT_EQ(tallies.wide_strips.size(), c.channels > 2 ? 1U : 0U);
    }
}

TEST(PlanMaster, TakesATrackOfItsOwnWhereTheOrderOfFaderAndPluginsIsHeard) {
    const struct {
        double fader_db;
        bool moves, off;
        int inserts;
        bool plain, own_track, is_noted;
        double gain;
    } cases[] = {{-0.05, false, false, 1, false, true, false, 0.9942600739},
                 {-0.04, false, false, 1, false, false, false, 0.9954054174},
                 {-6, false, false, 0, false, false, false, 0.5011872336},
                 {-6, false, false, 1, true, false, true, 0.5011872336},
                 {-6, true, false, 0, false, false, false, 1},
                 {0, true, false, 1, false, true, false, 1},
                 {0, true, true, 1, false, false, false, 1},
                 {-6, true, true, 1, false, true, false, 0.5011872336}};
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        MasterInput input{{}, c.inserts, c.plain, c.off};
        input.masters.count = 1;
        input.masters.first.fader_db = c.fader_db;
        if (c.moves) input.masters.first.volume_lane.points = {{0, -60}};
        EnvelopePlanner envelopes = planner();
        LevelTallies levels;
        MasterTallies tallies;
        const MasterPlan plan = plan_master(input, envelopes, levels, tallies);
        EXPECT_EQ(plan.envelopes[0].active, !c.off);
        EXPECT_EQ(levels.automation_off.size(), c.off ? 1U : 0U);
        EXPECT_EQ(plan.wants_own_track, c.own_track);
        EXPECT_EQ(tallies.is_moved_before_plugins, c.is_noted);
        EXPECT_NEAR(plan.gain, c.gain, 1e-9);
    }
}

TEST(PlanStripTracks, TakesTheStripsThatNeitherARowNorATrackIsNamedLike) {
    std::vector<Strip> strips;
    for (const char* name : {"Row", "Track", "Alone", "Unread"}) {
        strips.emplace_back().name = name;
        strips.back().fader_db = -20;
        strips.back().present = strips.size() < 4;
    }
    std::vector<StripRow> rows(1);
    rows[0].original_name = "Row";
    std::vector<TrackPlan> plans(1);
    plans[0].session_name = "Track";
    EnvelopePlanner envelopes = planner();
    LevelTallies tallies;
    const auto tracks = plan_strip_tracks(plans, {}, {rows, strips, {}}, envelopes, tallies);
    ASSERT_EQ(tracks.size(), 1U);
    EXPECT_EQ(tracks[0].name, "Alone");
    EXPECT_DOUBLE_EQ(tracks[0].mixer.gain, 0.1);
}

}  // namespace
}  // namespace tanrove
