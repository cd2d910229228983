// A colour of the clip's own wins; one whose shade nobody knows leaves the clip in the colour of
// its track, whatever the coding says.
#include "mix/clip_colours.hpp"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/formatted_text.hpp"
#include "mix/palette_colours.hpp"

namespace tanrove {

namespace {

constexpr std::int32_t no_place = -2;

/// MIDI clips are light blue where the clip list's colours count: the tint of this place.
constexpr std::int32_t midi_clip_place = 93;

/// A marker that a clip starts on counts, though one was placed in ticks and one in samples.
constexpr double marker_slack_seconds = 1e-6;

/// What all pieces of one placement share: the passes of a loop, the clips of a group. The legs of
/// a pair have placements of their own.
std::tuple<std::uint32_t, bool, int> placement_of(const ClipItem& clip) {
    const bool is_group = clip.is_placeholder || !clip.grouping->group_name.empty();
    return {clip.index_on_track, is_group, clip.take_pan};
}

}  // namespace

ClipColouring::ClipColouring(std::vector<MarkerColour> markers, ColourTallies& tallies)
    : markers_(std::move(markers)), tallies_(tallies) {
    std::ranges::stable_sort(markers_, {}, &MarkerColour::start_seconds);
}

std::uint32_t ClipColouring::in_theme(std::uint32_t colour) {
    if (!tallies_.theme.dark) return colour;
    const DarkColour dark = darkClipColour(colour);
    ++(dark.measured ? tallies_.dark_measured : tallies_.dark_derived);
    return dark.colour;
}

std::optional<std::uint32_t> ClipColouring::dark_own_colour(std::int32_t place) {
    const auto dark = darkIndexColour(place);
    if (!dark) {
        note_own(place, std::nullopt, ColourQuality::not_measured);
        return std::nullopt;
    }
    ++(dark->measured ? tallies_.dark_measured : tallies_.dark_derived);
    note_own(place, dark->colour, ColourQuality::measured);
    return dark->colour;
}

std::optional<std::uint32_t> ClipColouring::own_colour(std::int32_t place) {
    if (tallies_.theme.dark && is_auto_assigned(place)) return dark_own_colour(place);
    ColourQuality quality = ColourQuality::not_measured;
    const auto colour = clipColour(place, quality);
    note_own(place, colour, quality);
    return colour ? std::optional(in_theme(*colour)) : std::nullopt;
}

void ClipColouring::note_own(std::int32_t place, std::optional<std::uint32_t> colour,
                             ColourQuality quality) {
    if (!colour) {
        ++tallies_.clips_not_measured;
        tallies_.unmeasured_places.insert(place);
        return;
    }
    ++tallies_.clips_own;
    tallies_.own_places.insert(place);
    if (quality == ColourQuality::invented) {
        ++tallies_.clips_off_palette;
    } else if (!is_auto_assigned(place)) {
        ++tallies_.clips_hand_picked;
    }
}

const MarkerColour* ClipColouring::marker_at(double seconds) const {
    const auto behind = std::ranges::upper_bound(markers_, seconds + marker_slack_seconds, {},
                                                 &MarkerColour::start_seconds);
    return behind == markers_.begin() ? nullptr : &*std::prev(behind);
}

/// What the coding draws for a clip that starts here, on a track that it gives the shade `track`;
/// counts the clip.
std::optional<std::uint32_t> ClipColouring::coded_colour(const TrackShade& track,
                                                         double start_seconds) {
    TrackShade shade = track;
    if (tallies_.schemes.clip == by_marker) {
        const MarkerColour* marker = marker_at(start_seconds);
        shade = {marker == nullptr ? 0 : marker->colour, ColourQuality::measured};
    }
    if (shade.colour == 0) {
        ++tallies_.clips_left;
        return std::nullopt;
    }
    ++tallies_.clips_by_scheme;
    // The Dark theme's shades are counted as they are made.
    const bool is_unmeasured = shade.quality != ColourQuality::measured;
    if (is_unmeasured && !tallies_.theme.dark) ++tallies_.scheme_not_measured;
    return in_theme(shade.colour);
}

void ClipColouring::colour_own(std::vector<ClipItem>& clips, int legs) {
    std::set<std::tuple<std::uint32_t, bool, int>> placements;
    for (ClipItem& clip : clips) {
        if (clip.colour_place == no_place) continue;
        clip.colour = own_colour(clip.colour_place);
        if (placements.insert(placement_of(clip)).second) coloured_placements_ += legs;
    }
}

/// The playlists of a track are takes of the same recordings: a clip without a colour has that of
/// its file's first coloured clip.
void ClipColouring::colour_lanes(TrackPlan& plan, const TrackShade& coded) {
    std::map<std::string_view, std::uint32_t> colour_of_file;
    const auto note_files = [&](const std::vector<ClipItem>& clips) {
        for (const ClipItem& clip : clips) {
            if (clip.colour && !clip.file.empty())
                colour_of_file.try_emplace(clip.file, *clip.colour);
        }
    };
    for (LanePlan& lane : plan.lanes) colour_own(lane.clips, 1);
    note_files(plan.clips);
    for (const LanePlan& lane : plan.lanes) note_files(lane.clips);
    for (LanePlan& lane : plan.lanes) {
        for (ClipItem& clip : lane.clips) {
            if (clip.colour_place != no_place) continue;
            const auto known = colour_of_file.find(clip.file);
            if (known == colour_of_file.end()) {
                clip.colour = coded_colour(coded, clip.start);
                continue;
            }
            clip.colour = known->second;
            ++tallies_.lane_clips;
        }
    }
}

void ClipColouring::colour_midi(TrackPlan& plan, const TrackShade& coded) {
    const auto scheme = tallies_.schemes.clip;
    // These codings colour the notes, which REAPER does by its own rules.
    const bool draws_notes = scheme && *scheme >= by_midi_channel && *scheme <= by_midi_device;
    for (MidiItem& item : plan.midi_items) {
        if (item.colour_place != no_place) {
            item.colour = own_colour(item.colour_place);
            ++coloured_placements_;
        } else if (scheme == by_clip_list) {
            item.colour = in_theme(clip_tint(midi_clip_place).colour);
            ++tallies_.midi_clips_as_listed;
        } else {
            item.colour = coded_colour(draws_notes ? TrackShade() : coded, item.start);
        }
    }
}

TrackShade ClipColouring::shade_by_coding(const TrackShade& track, const CodedTrack& coded) const {
    TrackShade shade;
    if (tallies_.schemes.clip == by_track_colour) shade = track;
    if (coded.place) {
        const ClipTint tint = clip_tint(*coded.place);
        shade = {tint.colour, tint.measured ? ColourQuality::measured : ColourQuality::tinted};
    }
    return shade;
}

void ClipColouring::colour_video(std::vector<VideoItem>& items, const TrackShade& shade,
                                 const CodedTrack& coded) {
    const TrackShade by_coding = shade_by_coding(shade, coded);
    for (VideoItem& item : items) {
        if (item.colour_place != no_place) {
            item.colour = own_colour(item.colour_place);
            tallies_.video_clips_own += item.colour ? 1 : 0;
        } else {
            item.colour = coded_colour(by_coding, item.start);
            tallies_.video_clips_coded += item.colour ? 1 : 0;
        }
    }
}

void ClipColouring::colour(TrackPlan& plan, const TrackShade& shade, const CodedTrack& coded) {
    const TrackShade by_coding = shade_by_coding(shade, coded);
    colour_own(plan.clips, std::max(plan.folded_width, 1));
    // The lanes see what the clips of the playing list have of their own, and no more.
    colour_lanes(plan, by_coding);
    for (ClipItem& clip : plan.clips) {
        if (clip.colour_place == no_place) clip.colour = coded_colour(by_coding, clip.start);
    }
    colour_midi(plan, by_coding);
}

std::string clip_colours_text(const std::vector<TrackPlan>& plans) {
    TextBuffer text;
    for (const TrackPlan& plan : plans) {
        const auto print = [&](const auto& item) {
            if (!item.colour) return;
            text.print("CLIPCOL %s | %.6f %s | place %d | 0x%07lx\n", plan.name.c_str(), item.start,
                       std::string(item.name).c_str(), item.colour_place,
                       static_cast<unsigned long>(*item.colour));
        };
        for (const ClipItem& clip : plan.clips) print(clip);
        for (const LanePlan& lane : plan.lanes) {
            for (const ClipItem& clip : lane.clips) print(clip);
        }
        for (const MidiItem& item : plan.midi_items) print(item);
    }
    return text.text();
}

}  // namespace tanrove
