// The usage summary: its words, its limits, and text that is no text.
#include "report/usage_summary.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace tanrove {
namespace {

PluginOutcome outcome(std::string name, OutcomeKind kind) {
    PluginOutcome plugin;
    plugin.display_name = std::move(name);
    plugin.kind = kind;
    plugin.format = "vst3";
    return plugin;
}

std::string behind(const std::string& body, const std::string& key) {
    return body.substr(std::min(body.find(key), body.size()));
}

TEST(UsageSummary, OfARunThatEndedEarlyHasAnEmptyBody) {
    EXPECT_EQ(usage_summary(false, ""),
              "{\"schema\":\"vorlane-usage 1\",\"converter\":\"1.0.2\",\"build\":308,"
              "\"result\":\"failed\",\"session\":{},\"plugins\":[],\"not_converted\":[],"
              "\"warnings\":[]}\n");
}

TEST(UsageSummary, QuotesTextThatMayHoldAnyByte) {
    const struct {
        std::string_view text;
        const char* json;
    } rows[] = {
        {"a \"b\" \\", "\"a \\\"b\\\" \\\\\""},
        {"\x01\t", "\"\\u0001\\u0009\""},
        {"Bl\xC3\xA4ser \xF0\x9F\x8E\xBA", "\"Bl\xC3\xA4ser \xF0\x9F\x8E\xBA\""},
        {"cut \xC3", "\"cut \xEF\xBF\xBD\""},
        {"long slash \xC0\xAF", "\"long slash \xEF\xBF\xBD\xEF\xBF\xBD\""},
        {"surrogate \xED\xA0\x80", "\"surrogate \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""},
        {"past the last \xF4\x90\x80\x80",
         "\"past the last \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""},
    };
    for (const auto& row : rows) EXPECT_EQ(json_text(row.text), row.json);
}

TEST(UsageSummary, CountsEqualPluginsOnceAndNamesEachResult) {
    RunTallies tallies;
    auto& outcomes = tallies.chains.outcomes;
    outcomes = {outcome("Settings", OutcomeKind::carried),
                outcome("Settings", OutcomeKind::carried),
                outcome("Default", OutcomeKind::without_settings),
                outcome("Avid's", OutcomeKind::aax_only),
                outcome("Unknown", OutcomeKind::not_recognized),
                outcome("Unheard", OutcomeKind::left_out_unheard),
                outcome("Stateless", OutcomeKind::left_out_without_settings),
                outcome("Gone", OutcomeKind::left_out_not_installed),
                outcome("Absent", OutcomeKind::carried),
                outcome("Off", OutcomeKind::carried)};
    outcomes[0].maker = outcomes[1].maker = "Maker";
    outcomes[8].not_installed = true;
    outcomes[9].inactive = outcomes[9].not_installed = true;
    tallies.chains.plugin_list_missing = true;
    tallies.mix.panners.lanes_left_out = 1;
    tallies.timeline.loops.unlooped = 1;
    tallies.mix.video.clips_without_movie = 1;
    tallies.media.missing_files = {"gone.wav"};
    UsageFacts facts;
    facts.problem_recorded = true;
    EXPECT_EQ(
        behind(usage_body(facts, tallies), "\"plugins\""),
        "\"plugins\":["
        "{\"product\":\"Absent\",\"result\":\"missing\",\"as\":\"vst3\",\"count\":1},"
        "{\"product\":\"Avid's\",\"result\":\"unsupported\",\"as\":\"none\",\"count\":1},"
        "{\"product\":\"Default\",\"result\":\"default\",\"as\":\"vst3\",\"count\":1},"
        "{\"product\":\"Gone\",\"result\":\"missing\",\"as\":\"none\",\"count\":1},"
        "{\"product\":\"Off\",\"result\":\"inactive\",\"as\":\"vst3\",\"count\":1},"
        "{\"product\":\"Settings\",\"maker\":\"Maker\",\"result\":\"settings\",\"as\":\"vst3\","
        "\"count\":2},"
        "{\"product\":\"Stateless\",\"result\":\"left-out\",\"as\":\"none\",\"count\":1},"
        "{\"product\":\"Unheard\",\"result\":\"left-out\",\"as\":\"none\",\"count\":1},"
        "{\"product\":\"Unknown\",\"result\":\"unsupported\",\"as\":\"none\",\"count\":1}],"
        "\"not_converted\":[\"aax-only-plugins\",\"unrecognized-plugins\","
        "\"surround-panner-lanes\",\"loops-not-written\",\"video-not-written\"],"
        "\"warnings\":[\"no-plugin-list\",\"plugins-not-installed\",\"media-missing\","
        "\"needs-a-look\"]");
}

TEST(UsageSummary, ListsFourHundredPluginsAndSaysThatThereAreMore) {
    RunTallies tallies;
    auto& outcomes = tallies.chains.outcomes;
    for (int i = 0; i < 400; ++i) {
        outcomes.push_back(outcome("Plug-in " + std::to_string(i), OutcomeKind::carried));
    }
    EXPECT_EQ(usage_body({}, tallies).find("plugins-truncated"), std::string::npos);
    outcomes.push_back(outcome("One more", OutcomeKind::carried));
    const std::string body = usage_body({}, tallies);
    EXPECT_NE(body.find("\"warnings\":[\"plugins-truncated\"]"), std::string::npos);
    std::size_t listed = 0;
    for (std::size_t at = 0; (at = body.find("{\"product\"", at)) != std::string::npos; ++at) {
        ++listed;
    }
    EXPECT_EQ(listed, 400U);
}

}  // namespace
}  // namespace tanrove
