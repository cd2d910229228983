// Composes whole sessions from a plain description, in the order in which real sessions store their
// blocks, encrypts them and writes them. It makes the sessions of all tests, of the demo and of the
// fuzzing seeds; it can also lie on purpose.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"
#include "support/records/clip_records.hpp"
#include "support/records/clip_table_records.hpp"
#include "support/records/container_records.hpp"
#include "support/records/midi_records.hpp"
#include "support/records/mixer_records.hpp"
#include "support/records/plugin_records.hpp"
#include "support/records/strip_records.hpp"
#include "support/records/table_records.hpp"
#include "support/records/time_records.hpp"
#include "support/session_cipher.hpp"
#include "support/track_spec.hpp"

namespace tanrove::builder {

class SessionBuilder {
public:
    SessionBuilder& rate(std::uint32_t rate_hz) { return set(settings_.rate_hz, rate_hz); }
    SessionBuilder& settings(const SettingsSpec& settings) { return set(settings_, settings); }
    SessionBuilder& product(const std::string& product, const std::string& version);
    /// Leaves the product and version text out, as the oldest sessions do.
    SessionBuilder& without_product() { return set(has_product_, false); }
    /// The version that the container states (10 in sessions of Pro Tools 12 and later, plus 2).
    SessionBuilder& container_version(int v) { return set(container_version_, v); }
    SessionBuilder& audio_file(const AudioFileSpec& file) { return keep(files_, file); }
    /// A track, behind those that are there; a strip row, table entry and display record come
    /// along, and a playlist a channel with its clips, their regions and fades; on a MIDI track a
    /// playlist with its clips, their regions and streams.
    SessionBuilder& track(const TrackSpec& track) { return keep(tracks_, track); }
    /// A clip group with its members; rows of tracks place it.
    SessionBuilder& clip_group(const ClipGroupSpec& g) { return keep(clip_groups_, g); }
    /// An input, output or bus, behind those that are there.
    SessionBuilder& io_path(const IoPathSpec& path) { return keep(paths_, path); }
    /// A stereo bus on this channel and the next, with its two legs.
    SessionBuilder& bus(const std::string& name, std::uint16_t first_channel);
    /// Leaves out the table of the session's own paths, as old sessions do.
    SessionBuilder& without_path_table() { return set(has_path_table_, false); }
    /// A place where MIDI tracks can send to, behind those that are there.
    SessionBuilder& midi_output(const MidiOutputSpec& o) { return keep(midi_outputs_, o); }
    SessionBuilder& strip_table_form(StripTableForm form) { return set(strip_table_form_, form); }

    /// A tempo event; `beat_ticks` is the length of the beat that it counts.
    SessionBuilder& tempo(std::int64_t tick, double bpm, std::uint32_t beat_ticks = 960000);
    /// A default tempo that stands in front of the map, if there is one.
    SessionBuilder& default_tempo(double bpm, std::uint32_t beat_ticks = 960000);
    SessionBuilder& meter(std::int64_t tick, std::uint32_t bar, std::uint32_t numerator,
                          std::uint32_t denominator);
    SessionBuilder& marker(const std::string& name, std::int64_t tick);
    SessionBuilder& marker_in_samples(const std::string& name, std::int64_t sample);
    SessionBuilder& selection(const std::string& name, std::int64_t start_tick,
                              std::int64_t end_tick);
    /// Any memory location. One without a number gets the next.
    SessionBuilder& location(LocationSpec location);
    SessionBuilder& timecode(const TimecodeSpec& timecode) { return set(time_.timecode, timecode); }
    /// Frame rate and session start of a rate that is no multiple of another.
    SessionBuilder& frame_rate(std::uint8_t code, std::uint32_t start_frames);
    SessionBuilder& grid_and_nudge(const BarsSpec& grid, const BarsSpec& nudge);
    SessionBuilder& click(bool on) { return set(time_.click, on); }

    /// A group; the one of all tracks comes along with the first.
    SessionBuilder& group(const GroupSpec& group) { return keep(tables_.groups, group); }
    /// Puts tracks into a folder track; all are named by their places.
    SessionBuilder& folder(std::size_t folder, const std::vector<std::size_t>& members);
    /// A track that is a VCA master.
    SessionBuilder& vca(const std::string& name, int fader_tenths_db);
    SessionBuilder& alternate_playlist(const std::string& name, std::uint32_t value);
    SessionBuilder& video_file(const std::string& name) { return keep(tables_.video_files, name); }
    /// A stretch of a movie, that clips of video tracks call by its place.
    SessionBuilder& video_region(const VideoRegionSpec& r) {
        return keep(tables_.video_regions, r);
    }
    /// What lies on a video track.
    SessionBuilder& video_clips(const VideoTrackSpec& v) { return keep(tables_.video_tracks, v); }
    SessionBuilder& picture(const PictureSpec& picture) { return set(tables_.picture, picture); }
    /// A clip that no track plays.
    SessionBuilder& freeze_render(const RegionSpec& r) { return keep(tables_.freeze_renders, r); }
    SessionBuilder& colour_schemes(std::uint8_t track_scheme, std::uint8_t clip_scheme);

    /// A plug-in that the session knows by name.
    SessionBuilder& plugin_name(const PluginNameSpec& n) { return keep(plugin_names_, n); }

    /// The folders that the session lies in, the disk first.
    SessionBuilder& path(const std::vector<std::string>& folders) { return set(path_, folders); }

    /// A block of any kind, placed behind the settings and in front of the product text.
    SessionBuilder& top_level(const Bytes& blocks);

    /// The word of the first block, in place of what it says in a whole session.
    SessionBuilder& index_word(std::uint32_t word) { return set(index_at_, word); }

    /// The decrypted image.
    Bytes image() const;
    /// The encrypted file.
    Bytes file() const;
    /// Writes the encrypted file. False if that fails.
    [[nodiscard]] bool write(const std::string& path) const;

private:
    template <typename Field, typename Value>
    SessionBuilder& set(Field& field, const Value& value) {
        field = value;
        return *this;
    }
    template <typename Spec>
    SessionBuilder& keep(std::vector<Spec>& list, const Spec& spec) {
        list.push_back(spec);
        return *this;
    }

    Bytes image(std::uint32_t index_at) const;

    std::optional<std::uint32_t> index_at_;
    SettingsSpec settings_;
    ProductSpec product_;
    bool has_product_ = true;
    bool has_path_table_ = true;
    int container_version_ = 12;
    std::vector<AudioFileSpec> files_;
    std::vector<TrackSpec> tracks_;
    std::vector<ClipGroupSpec> clip_groups_;
    std::vector<IoPathSpec> paths_;
    std::vector<MidiOutputSpec> midi_outputs_;
    std::vector<PluginNameSpec> plugin_names_;
    StripTableForm strip_table_form_ = StripTableForm::before_2022;
    std::vector<std::string> path_ = {"Disk", "Sessions", "Built"};
    Bytes extra_;
    TimeFrameSpec time_;
    TablesSpec tables_;
};

}  // namespace tanrove::builder
