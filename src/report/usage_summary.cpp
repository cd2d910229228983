#include "report/usage_summary.hpp"

#include <algorithm>
#include <cstddef>
#include <map>
#include <tuple>
#include <utility>

#include "base/formatted_text.hpp"
#include "base/utf8.hpp"
#include "base/version.hpp"

namespace tanrove {

namespace {

constexpr const char* empty_body =
    "\"session\":{},\"plugins\":[],\"not_converted\":[],\"warnings\":[]";
constexpr unsigned first_printable = 0x20;

const char* result_word(const PluginOutcome& outcome) {
    if (outcome.inactive) return "inactive";
    if (outcome.kind == OutcomeKind::left_out_not_installed || outcome.not_installed) {
        return "missing";
    }
    switch (outcome.kind) {
        case OutcomeKind::carried:
            return "settings";
        case OutcomeKind::without_settings:
            return "default";
        case OutcomeKind::left_out_unheard:
        case OutcomeKind::left_out_without_settings:
            return "left-out";
        default:
            return "unsupported";
    }
}

bool has_slot(const PluginOutcome& outcome) {
    return outcome.kind == OutcomeKind::carried || outcome.kind == OutcomeKind::without_settings;
}

/// Product, maker, result and format of equal plug-ins; they are listed in this order.
using PluginKey = std::tuple<std::string, std::string, std::string, std::string>;

std::map<PluginKey, int> counted_plugins(const ChainTallies& chains) {
    std::map<PluginKey, int> counted;
    for (const PluginOutcome& outcome : chains.outcomes) {
        const std::string& product = outcome.named_by_user ? outcome.key : outcome.display_name;
        ++counted[{product, outcome.maker, result_word(outcome),
                   has_slot(outcome) ? outcome.format : "none"}];
    }
    return counted;
}

void add_plugins(std::string& out, const std::map<PluginKey, int>& counted) {
    out += "\"plugins\":[";
    std::size_t listed = 0;
    for (const auto& [key, count] : counted) {
        if (listed == max_usage_plugins) break;
        if (listed++ > 0) out += ',';
        out += "{\"product\":" + json_text(std::get<0>(key));
        if (!std::get<1>(key).empty()) out += ",\"maker\":" + json_text(std::get<1>(key));
        out += ",\"result\":" + json_text(std::get<2>(key));
        out += ",\"as\":" + json_text(std::get<3>(key));
        out += ",\"count\":" + std::to_string(count) + "}";
    }
    out += ']';
}

struct Word {
    const char* word;
    bool is_on;
};

void add_words(std::string& out, const char* name, std::initializer_list<Word> words) {
    out += std::string(",\"") + name + "\":[";
    const char* between = "";
    for (const Word& word : words) {
        if (!word.is_on) continue;
        out += between + json_text(word.word);
        between = ",";
    }
    out += ']';
}

void add_session(std::string& out, const UsageFacts& facts, const RunTallies& tallies) {
    const auto& mix = tallies.mix;
    out += "\"session\":{\"pt_saved_by\":" + json_text(facts.version);
    const auto add = [&](const char* name, std::int64_t number) {
        out += std::string(",\"") + name + "\":" + std::to_string(number);
    };
    add("sample_rate", facts.sample_rate_hz);
    if (facts.bit_depth > 0) {
        add("bit_depth", facts.bit_depth);
        out += std::string(",\"float_audio\":") + (facts.is_float ? "true" : "false");
    }
    add("tracks", tallies.written.tracks);
    add("midi_tracks", facts.midi_tracks);
    add("hidden_tracks", facts.hidden_tracks);
    add("inactive_tracks", facts.inactive_tracks);
    add("master_faders", facts.master_faders);
    add("vcas", static_cast<std::int64_t>(mix.groups.vca_written.size()));
    add("clips", tallies.written.clips);
    add("midi_notes", tallies.written.notes);
    add("alt_playlists", facts.lanes + mix.tracks.alternates_set_aside);
    add("frozen_tracks", tallies.frozen.frozen_tracks);
    add("plugin_instances", static_cast<std::int64_t>(tallies.chains.outcomes.size()));
    out += "},";
}

/// True if panner automation of some track, wide or not, was not written.
bool has_lost_panner_lanes(const MixTallies& mix) {
    return mix.levels.panners_left_still > 0 || mix.panners.lanes_left_out > 0 ||
           mix.panners.lanes_past_limit > 0;
}

}  // namespace

std::string json_text(std::string_view text) {
    std::string out = "\"";
    for (const char c : valid_utf8(text)) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') out += '\\';
        if (byte < first_printable) {
            out += formatted("\\u%04x", static_cast<unsigned>(byte));
        } else {
            out += c;
        }
    }
    return out + '"';
}

std::string usage_body(const UsageFacts& facts, const RunTallies& tallies) {
    const ChainTallies& chains = tallies.chains;
    const auto any = [&](auto&& is_meant) {
        return std::ranges::any_of(chains.outcomes, is_meant);
    };
    const auto any_of_kind = [&](OutcomeKind kind) {
        return any([kind](const PluginOutcome& outcome) { return outcome.kind == kind; });
    };
    std::string out;
    add_session(out, facts, tallies);
    const auto plugins = counted_plugins(chains);
    add_plugins(out, plugins);
    const VideoTallies& video = tallies.mix.video;
    add_words(
        out, "not_converted",
        {{"aax-only-plugins", any_of_kind(OutcomeKind::aax_only)},
         {"unrecognized-plugins", any_of_kind(OutcomeKind::not_recognized)},
         {"surround-panner-lanes", has_lost_panner_lanes(tallies.mix)},
         {"loops-not-written", tallies.timeline.loops.unlooped > 0},
         {"video-not-written", video.clips_without_region > 0 || video.clips_without_movie > 0}});
    const bool installed_unknown = chains.plugin_list_missing && !chains.outcomes.empty();
    add_words(
        out, "warnings",
        {{"no-plugin-list", installed_unknown},
         {"plugins-not-installed", any([](const PluginOutcome& o) { return o.not_installed; })},
         {"media-missing", !tallies.media.missing_files.empty()},
         {"needs-a-look", facts.problem_recorded},
         {"plugins-truncated", plugins.size() > max_usage_plugins}});
    return out;
}

std::string usage_summary(bool converted, const std::string& body) {
    return "{\"schema\":\"vorlane-usage 1\",\"converter\":" + json_text(version_text) +
           ",\"build\":" + build_text + ",\"result\":\"" + (converted ? "converted" : "failed") +
           "\"," + (body.empty() ? empty_body : body) + "}\n";
}

}  // namespace tanrove
