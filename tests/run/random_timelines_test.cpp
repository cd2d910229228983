// What sounds when: random tracks of clips and clip groups that cover each other, repeat, fade,
// cross and hold groups, against a model that asks from the outside in. Places are in cells.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "base/formatted_text.hpp"
#include "run/convert_session.hpp"
#include "support/project_reader.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"
#include "support/told_counts.hpp"

namespace tanrove {
namespace {

using namespace builder;

constexpr int cell = 2400;  // samples
constexpr double rate_hz = 48000;
constexpr int cells = 300;  // of a track
constexpr int crossfade_half = 2;
enum Fade : std::uint8_t { no_fade, crossfade, fade_out, fade_in };

/// The clips of all sessions: as its file, with a drawn line and a warp map, with a line alone,
/// with a fixed gain and a sync point.
const struct {
    int cells;
    double gain_db;
    bool is_bent;
} regions[] = {{6, 0, false}, {8, -6, true}, {10, -6, false}, {5, 3, false}};

int number_of(const ClipSpec& clip) {
    return clip.region.back() - 'a';
}

/// The cell at which a placement begins; it is stored where its sync point lies.
int head_of(const ClipSpec& row) {
    return static_cast<int>(row.position - row.sync_samples) / cell;
}

/// Where in the file a region plays, in cells from its own head: a bent one plays its first half
/// half as fast.
double bent(int region, double from_head) {
    const int bend = regions[region].cells;
    if (!regions[region].is_bent) return from_head;
    return from_head < bend ? from_head / 2 : from_head - bend / 2.0;
}

std::string heard_text(int region, double from_head, double db) {
    return formatted("%c %.2f %.1f; ", 'a' + region, bent(region, from_head), db);
}

double db_of(double gain) {
    return 20 * std::log10(std::max(gain, 1e-9));
}

class RandomTimeline {
public:
    explicit RandomTimeline(unsigned seed) : random_(seed) {
        for (int i = 0; i < 4; ++i) groups.push_back(make_group(i));
    }

    std::vector<ClipSpec> make_rows() {
        std::vector<ClipSpec> rows;
        int meeting = -1;
        for (int i = 0; i < 7; ++i) {
            const bool is_met = meeting >= 0;
            const int at = is_met ? meeting : 20 + below(50);
            ClipSpec row = below(2) == 0 ? clip(below(4), at) : group(below(4), at);
            row.muted = below(5) == 0;
            row.overlap = below(4) == 0 ? 1 : 3;
            const int kind = below(6);
            if (kind == 0 && !is_met) loop(row, 2 + below(2));
            if (kind == 1 && !is_met) rows.push_back(fade(fade_in, at, 2 + below(4)));
            rows.push_back(row);
            const int end = at + length(row);
            if (kind == 2) rows.push_back(fade(fade_out, end, 2 + below(4)));
            meeting = kind == 3 && i < 6 ? end : -1;
            if (meeting >= 0) rows.push_back(fade(crossfade, end, 2 * crossfade_half));
        }
        return rows;
    }

    /// Clips side by side, crossfaded.
    std::vector<ClipSpec> make_chain() {
        std::vector<ClipSpec> rows = {clip(below(4), 20)};
        for (int i = 0; i < 5; ++i) {
            const int at = head_of(rows.back()) + length(rows.back());
            rows.push_back(fade(crossfade, at, 2 * crossfade_half));
            rows.push_back(clip(below(4), at));
        }
        return rows;
    }

    /// What a chain plays, inside its crossfades as well.
    std::vector<std::string> hear_chain(const std::vector<ClipSpec>& rows, double at) const {
        std::vector<std::string> heard;
        for (std::size_t i = 0; i < rows.size(); i += 2) {
            const double from_head = at - head_of(rows[i]);
            const double to_tail = length(rows[i]) - from_head;
            const double rise = i == 0 ? from_head : from_head + crossfade_half;
            const double fall = i + 1 == rows.size() ? to_tail : to_tail + crossfade_half;
            if (rise < 0 || fall < 0) continue;
            double gain = 1;
            if (i > 0) gain *= std::min(rise / (2 * crossfade_half), 1.0);
            if (i + 1 < rows.size()) gain *= std::min(fall / (2 * crossfade_half), 1.0);
            const int region = number_of(rows[i]);
            heard.push_back(heard_text(region, from_head, db_of(gain) + regions[region].gain_db));
        }
        std::ranges::sort(heard);
        return heard;
    }

    /// Cells of one pass.
    int length(const ClipSpec& row) const {
        if (row.clip_group) return static_cast<int>(groups[*row.clip_group].length) / cell;
        const auto& region = regions[number_of(row)];
        return region.is_bent ? region.cells * 3 / 2 : region.cells;
    }

    /// What a group plays `at` cells behind its origin, where its window is this.
    void hear(std::uint32_t number, double at, double first, double end, double db,
              std::vector<std::string>& heard) const {
        const ClipGroupSpec& played = groups[number];
        db += played.gain_db.value_or(0);
        for (std::size_t i = 0; i < played.members.size(); ++i) {
            const ClipSpec& member = played.members[i];
            if (member.is_fade || member.muted) continue;
            const unsigned passes = member.loop ? member.loop->count : 1;
            for (unsigned pass = 0; pass < passes; ++pass) {
                const int head = head_of(member) + static_cast<int>(pass) * length(member);
                const int tail = head + length(member);
                const double shown = std::min<double>(end, tail) - std::max<double>(first, head);
                if (at < std::max<double>(first, head) || at >= std::min<double>(end, tail))
                    continue;
                // A fade whose edge is not in the window is seen in part, else squeezed into it.
                const double rise = fade_beside(played.members, i, fade_in);
                const double fall = fade_beside(played.members, i, fade_out);
                double gain = 1;
                if (rise > 0 && pass == 0)
                    gain *=
                        std::min((at - head) / (head < first ? rise : std::min(rise, shown)), 1.0);
                if (fall > 0)
                    gain *=
                        std::min((tail - at) / (tail > end ? fall : std::min(fall, shown)), 1.0);
                const double faded = db + db_of(gain);
                if (!member.clip_group) {
                    const int region = number_of(member);
                    heard.push_back(heard_text(region, at - head, faded + regions[region].gain_db));
                    continue;
                }
                const double inner =
                    static_cast<double>(groups[*member.clip_group].start) / cell - head;
                hear(*member.clip_group, at + inner, std::max<double>(first, head) + inner,
                     std::min<double>(end, tail) + inner, faded, heard);
            }
        }
    }

    /// Cells of the fade in front of a row, or behind it; 0 for none of that kind.
    static double fade_beside(const std::vector<ClipSpec>& rows, std::size_t row, Fade kind) {
        const bool in_front = kind == fade_in;
        if (in_front ? row == 0 : row + 1 == rows.size()) return 0;
        const ClipSpec& beside = rows[in_front ? row - 1 : row + 1];
        const bool is_one =
            beside.is_fade && (beside.fade.kind == kind || beside.fade.kind == crossfade);
        return is_one ? beside.fade.length / double{cell} : 0;
    }

    std::vector<ClipGroupSpec> groups;

private:
    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

    static ClipSpec clip(int number, int at) {
        const auto& region = regions[number];
        ClipSpec made;
        made.region = std::string("clip ") + static_cast<char>('a' + number);
        made.position = at * cell;
        made.length = region.cells * cell;
        made.source_offset = (100 + 30 * number) * cell;
        if (number == 3) made.sync_samples = cell;
        made.position += made.sync_samples;
        const auto db = static_cast<float>(region.gain_db);
        if (db != 0) made.gain = {{0, db}};
        if (db < 0) made.gain.emplace_back(9'000'000, db);
        if (!region.is_bent) return made;
        const auto whole = static_cast<double>(made.length);
        const auto bend = static_cast<std::uint64_t>(made.length);
        made.warp = WarpSpec{{{0, 0}, {bend, whole / 2}, {bend * 3 / 2, whole}},
                             false,
                             static_cast<std::uint64_t>(made.source_offset)};
        return made;
    }

    static ClipSpec group(int number, int at) {
        ClipSpec row;
        row.position = at * cell;
        row.clip_group = static_cast<std::uint32_t>(number);
        return row;
    }

    static ClipSpec fade(Fade kind, int at, int length) {
        ClipSpec row;
        row.position = at * cell;
        row.is_fade = true;
        const auto samples = static_cast<std::uint32_t>(length * cell);
        row.fade = {.kind = kind, .pre = kind == crossfade ? samples / 2 : 0, .length = samples};
        return row;
    }

    /// Stretched clips do not repeat.
    static void loop(ClipSpec& row, int passes) {
        if (!row.clip_group && regions[number_of(row)].is_bent) return;
        row.loop = LoopSpec{.mode = 2, .count = static_cast<std::uint32_t>(passes)};
    }

    /// No two members begin or end at one place: there a fade could be either's.
    ClipGroupSpec make_group(int number) {
        ClipGroupSpec made;
        made.name = "group " + std::to_string(number);
        std::vector<int> starts, ends;
        for (int i = 0; i < 3; ++i) {
            const int at = below(14);
            const bool nests = number > 0 && below(3) == 0;
            ClipSpec member = nests ? group(below(number), at) : clip(below(4), at);
            member.muted = below(6) == 0;
            const int kind = below(5);
            if (kind == 1) loop(member, 2);
            const int end = at + length(member);
            const int loop_end = end + (member.loop ? length(member) : 0);
            if (std::ranges::count(starts, at) + std::ranges::count(starts, end) > 0) continue;
            if (std::ranges::count(ends, end) + std::ranges::count(ends, loop_end) > 0) continue;
            starts.push_back(at);
            if (member.loop) starts.push_back(end);
            ends.push_back(end);
            ends.push_back(loop_end);
            if (kind == 0) made.members.push_back(fade(fade_in, at, 2 + below(3)));
            made.members.push_back(member);
            if (kind == 2) made.members.push_back(fade(fade_out, end, 2 + below(3)));
        }
        made.length = static_cast<std::uint64_t>((8 + below(14)) * cell);
        made.start = below(6) * cell;
        if (below(3) == 0) made.gain_db = -static_cast<float>(1 + number);
        return made;
    }

    std::mt19937 random_;
};

/// One row as it is drawn.
struct DrawnRow {
    std::size_t row = 0;
    int placed = 0, start = 0, end = 0;  ///< with what crossfades draw out
    int shared_from = cells;             ///< its crossfade into the next row
};

/// Paints rows over each other. One that keeps its tail lies over those behind it; one that is met
/// behind its head does not come back.
class Painter {
public:
    Painter(const RandomTimeline& timeline, const std::vector<ClipSpec>& rows)
        : timeline_(timeline), rows_(rows) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (!rows[i].is_fade) paint(i);
        }
    }

    /// What sounds at a moment, a text a clip; nothing inside crossfades.
    std::optional<std::vector<std::string>> heard(int at) const {
        if (is_shared_[static_cast<std::size_t>(at)]) return std::nullopt;
        std::vector<std::string> heard;
        const int top = top_[static_cast<std::size_t>(at)];
        if (top < 0 || rows_[drawn_[static_cast<std::size_t>(top)].row].muted) return heard;
        const DrawnRow& drawn = drawn_[static_cast<std::size_t>(top)];
        const ClipSpec& row = rows_[drawn.row];
        const auto shows = [&](int t) {
            return top_[static_cast<std::size_t>(t)] == top ||
                   (t >= drawn.shared_from && t < drawn.end);
        };
        int first = at, end = at + 1;
        while (shows(first - 1)) --first;
        while (shows(end)) ++end;
        const double now = at + 0.5;
        const double rise =
            RandomTimeline::fade_beside(rows_, drawn.row, fade_in) - (first - drawn.start);
        const double fall = RandomTimeline::fade_beside(rows_, drawn.row, fade_out);
        double gain = 1;
        if (rise > 0) gain *= std::min((now - first) / std::min<double>(rise, end - first), 1.0);
        if (fall > 0) gain *= std::min((end - now) / std::min<double>(fall, end - first), 1.0);
        const int length = timeline_.length(row);
        const int pass_start =
            drawn.placed + (row.loop ? (at - drawn.placed) / length * length : 0);
        if (!row.clip_group) {
            const int region = number_of(row);
            heard.push_back(
                heard_text(region, now - pass_start, db_of(gain) + regions[region].gain_db));
            return heard;
        }
        if (row.loop) {
            first = std::max(first, pass_start);
            end = std::min(end, pass_start + length);
        }
        const double in_group =
            static_cast<double>(timeline_.groups[*row.clip_group].start) / cell - pass_start;
        timeline_.hear(*row.clip_group, now + in_group, first + in_group, end + in_group,
                       db_of(gain), heard);
        std::ranges::sort(heard);
        return heard;
    }

private:
    void paint(std::size_t i) {
        const auto is_crossfade = [&](std::size_t row) {
            return row < rows_.size() && rows_[row].is_fade && rows_[row].fade.kind == crossfade;
        };
        const bool crosses = is_crossfade(i + 1);
        const int number = static_cast<int>(drawn_.size());
        const int placed = head_of(rows_[i]);
        const int passes = rows_[i].loop ? static_cast<int>(rows_[i].loop->count) : 1;
        const int stored_end = placed + passes * timeline_.length(rows_[i]);
        DrawnRow row{i, placed, placed - (i > 0 && is_crossfade(i - 1) ? crossfade_half : 0)};
        row.end = stored_end + (crosses ? crossfade_half : 0);
        if (crosses) row.shared_from = stored_end - crossfade_half;
        auto at = static_cast<std::size_t>(row.start);
        const auto end = static_cast<std::size_t>(row.end);
        while (at < end && is_kept_[at]) ++at;
        const auto first = at;
        const int in_front = top_[at - 1];
        for (; at < end && !is_kept_[at]; ++at) {
            const int under = top_[at];
            const bool ends_there = under >= 0 && under == in_front;
            if (ends_there)
                std::replace(top_.begin() + static_cast<int>(at), top_.end(), under, -1);
            const bool is_shared = static_cast<int>(at) >= row.shared_from;
            top_[at] = is_shared ? -1 : number;
        }
        row.end = static_cast<int>(at);
        for (int t = row.shared_from; crosses && t < stored_end + crossfade_half; ++t)
            is_shared_[static_cast<std::size_t>(t)] = true;
        const bool keeps =
            rows_[i].overlap == 1 || RandomTimeline::fade_beside(rows_, i, fade_out) > 0;
        for (auto t = first; t < at && keeps && !crosses; ++t) is_kept_[t] = true;
        drawn_.push_back(row);
    }

    const RandomTimeline& timeline_;
    const std::vector<ClipSpec>& rows_;
    std::vector<DrawnRow> drawn_;
    std::vector<int> top_ = std::vector<int>(cells, -1);
    std::vector<bool> is_kept_ = std::vector<bool>(cells, false);
    std::vector<bool> is_shared_ = std::vector<bool>(cells, false);
};

double line_at(const std::vector<std::pair<double, double>>& points, double at) {
    const auto behind = std::ranges::upper_bound(points, at, {}, &std::pair<double, double>::first);
    if (behind == points.begin()) return points.front().second;
    if (behind == points.end()) return points.back().second;
    const auto& from = *(behind - 1);
    return std::lerp(from.second, behind->second, (at - from.first) / (behind->first - from.first));
}

/// What the items play at a moment, as the model tells it. All fades of these sessions are
/// straight.
std::vector<std::string> played(const std::vector<ReadItem>& items, double seconds) {
    std::vector<std::string> played;
    for (const ReadItem& item : items) {
        const double at = seconds - item.position;
        if (item.file.empty() || item.muted || at < 0 || at >= item.length) continue;
        const double source = item.markers.empty() ? item.source_offset + at * item.playrate
                                                   : line_at(item.markers, at);
        double gain = item.volume;
        if (!item.envelope.empty()) gain *= line_at(item.envelope, at * item.playrate);
        if (at < item.fade_in) gain *= at / item.fade_in;
        if (item.length - at < item.fade_out) gain *= (item.length - at) / item.fade_out;
        const int region = item.name.back() - 'a';
        played.push_back(formatted("%c %.2f %.1f; ", item.name.back(),
                                   source * rate_hz / cell - 100 - 30 * region, db_of(gain)));
    }
    std::ranges::sort(played);
    return played;
}

TEST(RandomTimelines, PlayWhatIsDrawnOnTopWithItsFadesAndGains) {
    NullSink silent;
    console_state().console_sink = &silent;
    TempFolder folder;
    folder.enter();
    constexpr int tracks = 10;
    for (unsigned seed = 0; seed < 100 && !testing::Test::HasFailure(); ++seed) {
        RandomTimeline timeline(seed);
        SessionBuilder session;
        session.audio_file({"a.wav", 10'000'000, 0});
        for (const auto& group : timeline.groups) session.clip_group(group);
        std::vector<std::vector<ClipSpec>> rows;
        for (int i = 0; i < tracks; ++i) {
            rows.push_back(timeline.make_rows());
            session.track({.name = std::to_string(i), .clips = rows.back()});
        }
        const auto chain = timeline.make_chain();
        session.track({.name = "chain", .clips = chain});
        ASSERT_TRUE(session.write("s.ptx"));
        RunOptions options;
        options.session_path = "s.ptx";
        options.overwrite = true;
        ConversionResult result;
        convert_session(options, &result, nullptr);
        const std::string text = file_text("s.rpp");
        expect_told_counts(text, result.console_text, result.report_text,
                           console_state().usage_body);
        const auto project = read_project(text);
        ASSERT_EQ(project.tracks.size(), tracks + 1);
        for (int at = 0; at < cells; ++at) {
            ASSERT_EQ(played(project.tracks.back().items, (at + 0.5) * cell / rate_hz),
                      timeline.hear_chain(chain, at + 0.5))
                << "seed " << seed << ", chain, cell " << at;
        }
        for (std::size_t i = 0; i < tracks; ++i) {
            const Painter painter(timeline, rows[i]);
            for (int at = 0; at < cells; ++at) {
                const auto heard = painter.heard(at);
                if (!heard) continue;
                ASSERT_EQ(played(project.tracks[i].items, (at + 0.5) * cell / rate_hz), *heard)
                    << "seed " << seed << ", track " << i << ", cell " << at;
            }
        }
    }
    console_state().console_sink = nullptr;
}

}  // namespace
}  // namespace tanrove
