// The track block, line group by line group, in the order of the file. Nothing is decided here: a
// value that is not in the plan is a constant of the format.
#include "project/track_block.hpp"

#include <cstdint>
#include <optional>
#include <string>

#include "base/formatted_text.hpp"
#include "base/guid.hpp"
#include "project/comment_item.hpp"
#include "project/envelope_text.hpp"
#include "project/frozen_track.hpp"
#include "project/fx_chain_text.hpp"
#include "project/item_text.hpp"
#include "project/midi_item_text.hpp"
#include "project/placeholder_item.hpp"
#include "project/quoted_text.hpp"
#include "project/receive_text.hpp"

namespace tanrove {

namespace {

// Seeds of a track's two identifiers, to which its index is added.
constexpr std::uint32_t track_seed = 1;
constexpr std::uint32_t track_id_seed = 9001;

constexpr int fixed_lanes = 2;  // FREEMODE: 0 plain, 2 fixed lanes

void write_opening(TextSink& out, const TrackPlan& plan, std::uint32_t index) {
    out.line(1, "<TRACK %s", guid(track_seed + index).c_str());
    out.line(2, "NAME %s", quoted(plan.name).c_str());
    out.line(2, "PEAKCOL %lu", static_cast<unsigned long>(plan.colour));
    out.line(2, "BEAT %d", static_cast<int>(plan.timebase));
    out.line(2, "AUTOMODE %d", plan.mixer.automation_mode);
}

void write_mixer(TextSink& out, const TrackPlan& plan) {
    const MixerPlan& mixer = plan.mixer;
    out.line(2, "VOLPAN %.6f %g -1 %.6f %.6f", printable(mixer.gain), printable(mixer.pan),
             printable(mixer.dual_pan_left), printable(mixer.dual_pan_right));
    out.line(2, "MUTESOLO %d %d %d", plan.muted ? 1 : 0, mixer.soloed ? 2 : 0,
             mixer.solo_safe ? 1 : 0);
    out.line(2, "IPHASE %d", mixer.polarity_inverted ? 1 : 0);
    out.line(2, "ISBUS %d %d", plan.folder.kind, plan.folder.depth);
    if (plan.hidden) out.line(2, "SHOWINMIX 0 0.6667 0.5 0 0.5 0 0 0 0");
}

void write_groups_and_pan_mode(TextSink& out, const TrackPlan& plan) {
    if (!plan.group_flags.empty()) {
        std::string words;
        for (const std::uint32_t word : plan.group_flags) words += formatted(" %u", word);
        out.line(2, "GROUP_FLAGS%s", words.c_str());
    }
    if (plan.pan_mode) out.line(2, "PANMODE %d", *plan.pan_mode);
}

void write_layout(TextSink& out, const TrackPlan& plan) {
    out.line(2, "FREEMODE %d", plan.lanes.empty() ? 0 : fixed_lanes);
    out.line(2, "TRACKHEIGHT %d 0 0 0 0 0 0", plan.height_pixels);
    out.line(2, "INQ 0 0 0 0.5 100 0 0 100");
}

void write_channels(TextSink& out, const TrackPlan& plan, std::uint32_t index) {
    out.line(2, "NCHAN %d", plan.written_channels);
    out.line(2, "FX 1");
    out.line(2, "TRACKID %s", guid(track_id_seed + index).c_str());
    out.line(2, "MAINSEND %d 0", plan.mixer.plays_to_parent ? 1 : 0);
    if (plan.parent_channels) out.line(2, "MAINSEND_NCH %d", *plan.parent_channels);
}

/// Pro Tools plays one playlist a track. An alternate that stands as a track of its own is silenced
/// by a second line, which overrides the first.
void write_alternate_mute(TextSink& out, const TrackPlan& plan) {
    if (plan.unmatched_alternate) out.line(2, "MUTESOLO 1 0 0");
}

void write_lanes(TextSink& out, const TrackPlan& plan) {
    if (plan.lanes.empty()) return;
    out.line(2, "FIXEDLANES 9 0 0 0 0");
    out.line(2, "LANESOLO 1 0 0 0 0 0 0 0");
    out.line(2, "ITEMLANES %d", static_cast<int>(plan.lanes.size()) + 1);
    std::string names = quoted(plan.session_name);
    for (const LanePlan& lane : plan.lanes) names += " " + quoted(lane.name);
    out.line(2, "LANENAME %s", names.c_str());
}

/// The items of one playlist; `place` is given on a track with lanes.
void write_playlist(TextSink& out, const std::vector<ClipItem>& clips,
                    const std::optional<LanePlace>& place, const ProjectChains& chains,
                    MediaSearch& media, TakePlanner& takes, WrittenTallies& tallies) {
    const MediaPath* latest_file = nullptr;  // clips of one file come in runs
    for (const ClipItem& clip : clips) {
        if (clip.locked) ++tallies.locked_clips;
        if (clip.is_placeholder) {
            const auto number = static_cast<std::uint32_t>(tallies.placeholders++);
            write_placeholder_item(out, clip, number, place);
            continue;
        }
        const MediaPath& file = media.use(clip.file);
        if (!file.in_media_folder) ++tallies.clips_in_siblings;
        ++tallies.clips;
        if (&file != latest_file) count_untold_path(file.path, tallies);
        latest_file = &file;
        write_audio_item(out, clip, takes.plan(clip), file.path, place, chains.of_takes);
    }
}

void write_items(TextSink& out, const TrackPlan& plan, const ProjectChains& chains,
                 MediaSearch& media, TakePlanner& takes, WrittenTallies& tallies) {
    if (plan.lanes.empty())
        return write_playlist(out, plan.clips, std::nullopt, chains, media, takes, tallies);
    LanePlace place{.lane = 0, .count = plan.lanes.size() + 1};
    write_playlist(out, plan.clips, place, chains, media, takes, tallies);
    for (const LanePlan& lane : plan.lanes) {
        ++place.lane;
        write_playlist(out, lane.clips, place, chains, media, takes, tallies);
    }
}

void write_midi_items(TextSink& out, const TrackPlan& plan, WrittenTallies& tallies) {
    for (const MidiItem& item : plan.midi_items) {
        write_midi_item(out, item, plan.midi_settings);
        tallies.notes += item.note_count;
        if (item.locked) ++tallies.locked_clips;
    }
}

/// What the track itself plays. A frozen track keeps it for the day it is unfrozen.
void write_contents(TextSink& out, const TrackPlan& plan, const ProjectChains& chains,
                    MediaSearch& media, TakePlanner& takes, WrittenTallies& tallies) {
    write_items(out, plan, chains, media, takes, tallies);
    write_midi_items(out, plan, tallies);
}

/// True if the track is frozen in the project now: its contents are written, and counted, then.
/// The plug-ins go with them: the render has them in it.
bool freeze(TextSink& out, const TrackPlan& plan, const ChainPlan& chain,
            const ProjectChains& chains, MediaSearch& media, TakePlanner& takes,
            WrittenTallies& tallies, FreezeWriter* freezer) {
    if (!plan.frozen || freezer == nullptr) return false;
    const WrittenTallies written_before = tallies;
    const TakeTallies takes_before = takes.tallies();
    const bool frozen = freezer->write_block(out, plan.session_name, [&](TextSink& inside) {
        write_fx_chain(inside, chain_level, track_chain_tag, chain);
        write_contents(inside, plan, chains, media, takes, tallies);
    });
    if (frozen) return true;
    tallies = written_before;
    takes.tallies() = takes_before;
    return false;
}

}  // namespace

void count_untold_path(const std::string& path, WrittenTallies& tallies) {
    if (!is_kept_by_quotes(path)) tallies.untold_paths.insert(path);
}

void write_track_envelopes(TextSink& out, const TrackPlan& plan, WrittenTallies& tallies) {
    int points = 0;
    for (const EnvelopePlan& envelope : plan.envelopes) {
        points += write_envelope(out, track_envelope_level, envelope);
    }
    tallies.automation_points += points;
    if (points > 0) ++tallies.automated_tracks;
}

const ChainPlan& chain_of(std::span<const ChainPlan> chains, std::size_t index) {
    static const ChainPlan no_chain;
    return index < chains.size() ? chains[index] : no_chain;
}

TrackFacts write_track(TextSink& out, const TrackPlan& plan, const ProjectChains& chains,
                       std::size_t index, MediaSearch& media, TakePlanner& takes,
                       WrittenTallies& tallies, FreezeWriter* freezer) {
    const auto number = static_cast<std::uint32_t>(index);
    const ChainPlan& chain = chain_of(chains.of_tracks, index);
    const int clips_before = tallies.clips;
    const int notes_before = tallies.notes;
    write_opening(out, plan, number);
    write_mixer(out, plan);
    write_groups_and_pan_mode(out, plan);
    write_layout(out, plan);
    write_channels(out, plan, number);
    tallies.send_points += write_key_receives(out, plan);
    write_channel_receives(out, plan);
    const bool frozen = freeze(out, plan, chain, chains, media, takes, tallies, freezer);
    if (!frozen) write_fx_chain(out, chain_level, track_chain_tag, chain);
    tallies.send_points += write_sends(out, plan);
    write_alternate_mute(out, plan);
    write_lanes(out, plan);
    write_track_envelopes(out, plan, tallies);
    if (frozen) {
        count_untold_path(plan.frozen->path, tallies);
        write_frozen_render(out, *plan.frozen, number);
    } else {
        write_contents(out, plan, chains, media, takes, tallies);
    }
    write_comment_item(out, plan, number);
    out.line(1, ">");

    if (plan.timebase == TrackTimebase::time) ++tallies.time_tracks;
    if (plan.timebase == TrackTimebase::beats_position) ++tallies.beats_tracks;
    ++tallies.tracks;
    return {plan.name, tallies.clips - clips_before, tallies.notes - notes_before};
}

std::vector<TrackFacts> write_tracks(TextSink& out, const std::vector<TrackPlan>& plans,
                                     const ProjectChains& chains, MediaSearch& media,
                                     TakePlanner& takes, WrittenTallies& tallies,
                                     const TrackProgress& progress, FreezeWriter* freezer) {
    std::vector<TrackFacts> facts;
    facts.reserve(plans.size());
    for (std::size_t i = 0; i < plans.size(); ++i) {
        if (progress) progress(i, plans.size());
        facts.push_back(write_track(out, plans[i], chains, i, media, takes, tallies, freezer));
    }
    return facts;
}

}  // namespace tanrove
