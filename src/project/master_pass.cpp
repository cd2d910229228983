// One walk over the lines of the finished project finds what has to change; a second one copies
// them with the changes.
#include "project/master_pass.hpp"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <vector>

#include "base/fader_law.hpp"
#include "base/formatted_text.hpp"
#include "base/guid.hpp"
#include "base/text_sink.hpp"
#include "mix/channel_codes.hpp"
#include "project/quoted_text.hpp"
#include "project/receive_source.hpp"

namespace tanrove {

namespace {

constexpr const char* pass_suffix = ".mtmp";
constexpr std::uint32_t master_track_seed = 72000;
constexpr std::uint32_t master_track_id_seed = 72001;

constexpr std::size_t min_project_bytes = 16;
constexpr std::string_view project_end = "\n>\n";
constexpr std::string_view volume_opening = "  MASTER_VOLUME ";
constexpr std::string_view mode_opening = "  MASTERAUTOMODE ";
constexpr std::string_view envelope_opening = "  <MASTERVOLENV2";
constexpr std::string_view block_end = "  >";
constexpr std::string_view track_opening = "  <TRACK ";
constexpr std::string_view name_opening = "    NAME ";
constexpr std::string_view folder_opening = "    ISBUS ";
constexpr std::string_view plays_to_master = "    MAINSEND 1 0";
constexpr std::string_view plays_elsewhere = "    MAINSEND 0 0";
constexpr std::string_view channels_opening = "    NCHAN ";
constexpr std::string_view parent_channels_opening = "    MAINSEND_NCH ";
constexpr std::size_t nowhere = std::string_view::npos;

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    lines.reserve(static_cast<std::size_t>(std::ranges::count(text, '\n')));
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return lines;
}

/// The numbers of an `ISBUS` line; nullopt if they are not two.
struct FolderNumbers {
    int kind = 0;
    int depth = 0;
};

std::optional<FolderNumbers> folder_numbers(std::string_view line) {
    std::string_view rest = line.substr(folder_opening.size());
    FolderNumbers numbers;
    const auto kind = std::from_chars(rest.data(), rest.data() + rest.size(), numbers.kind);
    if (kind.ec != std::errc() || kind.ptr == rest.data() + rest.size()) return std::nullopt;
    const char* depth_at = kind.ptr + 1;
    const auto depth = std::from_chars(depth_at, rest.data() + rest.size(), numbers.depth);
    if (depth.ec != std::errc()) return std::nullopt;
    return numbers;
}

int number_behind(std::string_view line, std::string_view opening) {
    int number = 0;
    std::from_chars(line.data() + opening.size(), line.data() + line.size(), number);
    return number;
}

/// What the first walk finds, all of it numbers of lines and tracks.
class ProjectWalk {
public:
    ProjectWalk(const std::vector<std::string_view>& lines, const MasterTrackPlan& plan)
        : lines_(lines), wanted_(plan.in_front_of ? quoted(*plan.in_front_of) : std::string()) {}

    /// False if the text is not a project that the fader can be moved in.
    bool read() {
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            const std::string_view line = lines_[i];
            if (line.starts_with(track_opening)) {
                open_track(i);
            } else if (!has_tracks()) {
                read_head_line(i);
            } else if (in_track_ && !read_track_line(i)) {
                return false;
            }
        }
        const bool envelope_is_whole = (envelope_first == nowhere) == (envelope_last == nowhere);
        return !sender_lines.empty() && depth_ == 0 && volume_line != nowhere && envelope_is_whole;
    }

    std::size_t volume_line = nowhere;
    std::size_t envelope_first = nowhere;
    std::size_t envelope_last = nowhere;
    int automation_mode = 0;
    std::size_t insertion_line = nowhere;
    std::size_t insertion_track = nowhere;
    std::vector<std::size_t> sender_lines;   ///< their `MAINSEND` lines, ascending
    std::vector<std::size_t> sender_tracks;  ///< in step with them
    std::vector<int> sender_channels;        ///< in step with them: what each brings

    bool has_envelope() const { return envelope_first != nowhere; }

private:
    bool has_tracks() const { return track_count_ > 0; }

    void open_track(std::size_t line) {
        ++track_count_;
        track_line_ = line;
        in_track_ = true;
        is_named_ = false;
        channels_ = stereo_channels;
        is_top_level_ = depth_ == 0;
    }

    void read_head_line(std::size_t i) {
        const std::string_view line = lines_[i];
        if (line.starts_with(volume_opening)) volume_line = i;
        if (line.starts_with(mode_opening)) {
            automation_mode = std::atoi(std::string(line.substr(mode_opening.size())).c_str());
        }
        if (line.starts_with(envelope_opening)) envelope_first = i;
        const bool is_open = envelope_first != nowhere && envelope_last == nowhere;
        if (is_open && line == block_end) envelope_last = i;
    }

    bool read_track_line(std::size_t i) {
        const std::string_view line = lines_[i];
        if (line == block_end) {
            in_track_ = false;
        } else if (line.starts_with(name_opening)) {
            read_name(line.substr(name_opening.size()));
        } else if (line.starts_with(folder_opening)) {
            const auto numbers = folder_numbers(line);
            if (numbers && (numbers->kind == 1 || numbers->kind == 2)) depth_ += numbers->depth;
            return depth_ >= 0;
        } else if (line.starts_with(channels_opening)) {
            channels_ = number_behind(line, channels_opening);
        } else if (is_top_level_ && line == plays_to_master) {
            sender_lines.push_back(i);
            sender_tracks.push_back(track_count_ - 1);
            sender_channels.push_back(channels_);
        } else if (line.starts_with(parent_channels_opening) && !sender_tracks.empty() &&
                   sender_tracks.back() == track_count_ - 1) {
            sender_channels.back() = number_behind(line, parent_channels_opening);
        }
        return true;
    }

    void read_name(std::string_view name) {
        const bool is_first = !is_named_;
        is_named_ = true;
        if (!is_first || !is_top_level_ || insertion_line != nowhere) return;
        if (wanted_.empty() || name != wanted_) return;
        insertion_line = track_line_;
        insertion_track = track_count_ - 1;
    }

    const std::vector<std::string_view>& lines_;
    std::string wanted_;
    std::size_t track_count_ = 0;
    std::size_t track_line_ = 0;
    long depth_ = 0;
    int channels_ = stereo_channels;  ///< of the track
    bool in_track_ = false;
    bool is_named_ = false;
    bool is_top_level_ = false;
};

/// The `MASTER_VOLUME` line at 0 dB; nullopt if nothing stands behind its first value.
std::optional<std::string> volume_at_rest(std::string_view line) {
    const std::size_t rest = line.find(' ', volume_opening.size());
    if (rest == nowhere) return std::nullopt;
    return std::string(volume_opening) + "1.000000000" + std::string(line.substr(rest));
}

/// True in the modes in which a moved fader writes: its envelope is armed.
bool arms_envelope(int automation_mode) {
    return automation_mode == 1 || automation_mode == 2 || automation_mode == 4;
}

void write_envelope(TextSink& out, const std::vector<std::string_view>& lines,
                    const ProjectWalk& walk) {
    out.raw("    <VOLENV2\n");
    for (std::size_t i = walk.envelope_first + 1; i <= walk.envelope_last; ++i) {
        std::string line = "  " + std::string(lines[i]);
        if (line == "      ARM 0" && arms_envelope(walk.automation_mode)) line.back() = '1';
        out.raw(line + "\n");
    }
}

std::string master_track(const std::vector<std::string_view>& lines, const ProjectWalk& walk,
                         const MasterTrackPlan& plan) {
    std::string text;
    TextSink out(text);
    const bool is_parked = walk.has_envelope() && !plan.automation_off;
    const double gain = is_parked ? 1 : printable(gain_of_db(plan.fader_db));
    out.line(1, "<TRACK %s", guid(master_track_seed).c_str());
    out.line(2, "NAME %s", quoted(plan.name).c_str());
    out.line(2, "PEAKCOL %lu", static_cast<unsigned long>(plan.colour));
    out.line(2, "BEAT -1");
    out.line(2, "AUTOMODE %d", walk.has_envelope() ? walk.automation_mode : 0);
    out.line(2, "VOLPAN %.9f 0 -1 -1.000000 1.000000", gain);
    out.raw("    MUTESOLO 0 0 0\n    IPHASE 0\n    ISBUS 0 0\n    PANMODE 6\n");
    out.line(2, "NCHAN %d", std::max(stereo_channels, std::ranges::max(walk.sender_channels)));
    out.raw("    FX 1\n");
    out.line(2, "TRACKID %s", guid(master_track_id_seed).c_str());
    out.raw("    PERF 0\n    MIDIOUT -1 -1\n    MAINSEND 1 0\n");
    for (std::size_t i = 0; i < walk.sender_tracks.size(); ++i) {
        const std::size_t track = walk.sender_tracks[i];
        const int width_code = receive_width_code(walk.sender_channels[i]);
        const bool moves_down = walk.insertion_track != nowhere && track >= walk.insertion_track;
        const auto source = static_cast<unsigned long>(moves_down ? track + 1 : track);
        out.line(2, "AUXRECV %lu 0 1.0000000000 0 0 0 0 %d 0 31:U 4177951 -1 ''", source,
                 width_code);
    }
    if (walk.has_envelope()) write_envelope(out, lines, walk);
    out.line(1, ">");
    out.flush();
    return text;
}

/// A line with its source counted past the new track; nullopt if the source cannot be read.
std::optional<std::string> moved_receive(std::string_view line, std::size_t insertion_track) {
    const std::string_view behind = line.substr(receive_opening.size());
    const auto source = receive_source(behind);
    if (!source) return std::nullopt;
    if (source->track < insertion_track) return std::string(line);
    return std::string(receive_opening) + std::to_string(source->track + 1) +
           std::string(behind.substr(source->digits));
}

}  // namespace

std::optional<MasterTrackText> with_master_track(std::string_view text,
                                                 const MasterTrackPlan& plan) {
    if (text.size() < min_project_bytes || !text.ends_with(project_end)) return std::nullopt;
    const std::vector<std::string_view> lines = lines_of(text);
    ProjectWalk walk(lines, plan);
    if (!walk.read()) return std::nullopt;
    const auto volume = volume_at_rest(lines[walk.volume_line]);
    if (!volume) return std::nullopt;

    const std::string track = master_track(lines, walk, plan);
    const std::size_t track_at =
        walk.insertion_line != nowhere ? walk.insertion_line : lines.size() - 1;
    MasterTrackText result;
    result.rerouted = walk.sender_lines.size();
    result.text.reserve(text.size() + track.size());
    auto next_sender = walk.sender_lines.begin();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i == track_at) result.text += track;
        const bool in_envelope =
            walk.has_envelope() && i >= walk.envelope_first && i <= walk.envelope_last;
        if (in_envelope) continue;
        if (i == walk.volume_line) {
            result.text += *volume;
        } else if (next_sender != walk.sender_lines.end() && i == *next_sender) {
            result.text += plays_elsewhere;
            ++next_sender;
        } else if (walk.insertion_track != nowhere && lines[i].starts_with(receive_opening)) {
            const auto moved = moved_receive(lines[i], walk.insertion_track);
            if (!moved) return std::nullopt;
            result.text += *moved;
        } else {
            result.text += lines[i];
        }
        result.text += '\n';
    }
    return result;
}

std::size_t give_master_its_track(const std::string& path, const MasterTrackPlan& plan,
                                  const DiskSteps& disk) {
    const auto text = read_whole_file(path, disk);
    if (!text) return 0;
    const auto changed = with_master_track(*text, plan);
    if (!changed || !write_whole_file(path, changed->text, disk, pass_suffix)) return 0;
    return changed->rerouted;
}

}  // namespace tanrove
