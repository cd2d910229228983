// Tempo events, the default tempo, and the clock that turns ticks into seconds.
//
// The tempo map is a block named "Tempo" (0x2028). Real sessions store it twice, once among the
// ruler's own data and once behind it, and both hold the same. From its 'Z':
//
//   9   "Tempo"
//   20  u32 number of points; 0 in records that do not say
//   58  the first point; points step by 61 bytes
//
// A point:
//
//   0   position, 8 bytes, ticks
//   10  f64 tempo in beats a minute
//   18  u32 length of that beat in ticks; 0 in records that do not say
//
// The point at the session's origin begins with bytes of its own, and by those the default tempo is
// found wherever it stands, also in a map that this reader refuses.
#include "session/tempo_map.hpp"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::string_view tempo_map_name = "Tempo";
constexpr std::size_t min_map_bytes = 76;
constexpr std::size_t min_map_image_bytes = 88;

constexpr std::size_t count_at = 20;
constexpr std::size_t first_point_at = 58;
constexpr std::size_t point_step = 61;
constexpr std::size_t point_tempo_at = 10;
constexpr std::size_t point_unit_at = 18;
constexpr std::size_t point_bytes = 18;  // the beat's length may lie behind the end

// What stands in front of the tempo at the session's origin. The last four bytes are not in every
// session.
constexpr std::string_view origin_point(
    "\x14\0\0\0\0\x01\0\0\0\0\0\0\0\0\0\x10\xa5\xd4\xe8\0\0\0\0\x01", 24);
constexpr std::size_t origin_point_short_bytes = 20;
constexpr std::size_t origin_tempo_at = 24;
constexpr std::size_t origin_unit_at = 32;

/// Tempos strictly between two bounds, quarter notes a minute.
struct TempoRange {
    double above = 0;
    double below = 0;

    bool holds(double bpm) const { return bpm > above && bpm < below; }
};

constexpr TempoRange point_range = {5, 500};
constexpr TempoRange default_range = {20, 400};

/// The tempo in quarter notes: 200 beats of 240000 ticks are 50 of 960000.
double quarters_a_minute(double beats_a_minute, std::uint32_t beat_ticks) {
    if (beat_ticks == 0 || beat_ticks == ticks_per_quarter) return beats_a_minute;
    return beats_a_minute * beat_ticks / ticks_per_quarter;
}

bool is_tempo_map(ByteView record) {
    return record.size() >= min_map_bytes && record.has(block_payload_at, tempo_map_name);
}

/// Takes the point at `at` behind those that are there; false if it breaks a limit.
bool read_point(ByteView record, std::size_t at, TempoRecords& records) {
    const auto position = read_position(record, at);
    if (position < tick_origin) return false;
    const double bpm =
        quarters_a_minute(record.f64(at + point_tempo_at), record.u32(at + point_unit_at));
    if (!point_range.holds(bpm)) {
        records.first_point_refused = records.points.empty();
        return false;
    }
    const auto tick = static_cast<double>(position - tick_origin);
    if (!records.points.empty() && tick < records.points.back().tick) return false;
    records.points.push_back({tick, bpm});
    return true;
}

/// The points that the record has room for, no more than it says.
std::size_t stored_points(ByteView record) {
    if (!record.holds(first_point_at, point_bytes)) return 0;
    const std::size_t room = (record.size() - first_point_at - point_bytes) / point_step + 1;
    const std::size_t count = record.u32(count_at);
    return count == 0 ? room : std::min(room, count);
}

TempoRecords read_points(ByteView record) {
    TempoRecords records;
    auto at = first_point_at;
    while (record.holds(at, point_bytes) && read_point(record, at, records)) at += point_step;

    const std::size_t stored = stored_points(record);
    if (records.points.size() < stored && !records.first_point_refused) {
        records.breaks_off = {.event = static_cast<int>(records.points.size()) + 1,
                              .stored = static_cast<int>(stored)};
    }
    return records;
}

std::optional<double> find_default_tempo(ByteView image, std::string_view in_front) {
    for (auto at = image.find(in_front, 0); at != ByteView::npos;
         at = image.find(in_front, at + 1)) {
        const double bpm =
            quarters_a_minute(image.f64(at + origin_tempo_at), image.u32(at + origin_unit_at));
        if (default_range.holds(bpm)) return bpm;
    }
    return std::nullopt;
}

}  // namespace

TempoRecords readTempoMap(const BlockIndex& index) {
    const ByteView image = index.image();
    if (image.size() < min_map_image_bytes) return {};
    // Each map replaces the one before it, so that only the last is worth reading.
    const auto blocks = index.of_type(block_type::tempo_map).all();
    for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) {
        const ByteView record = image.window(block->at, block->end() - block->at);
        if (is_tempo_map(record)) return read_points(record);
    }
    return {};
}

double readDefaultTempo(const BlockIndex& index) {
    const ByteView image = index.image();
    auto bpm = find_default_tempo(image, origin_point);
    if (!bpm) bpm = find_default_tempo(image, origin_point.substr(0, origin_point_short_bytes));
    return bpm.value_or(default_tempo_bpm);
}

double TempoClock::Stretch::seconds(double ticks) const {
    return start_seconds + (ticks - start_ticks) * 60 / (bpm * ticks_per_quarter);
}

TempoClock::TempoClock(const TempoMap& map, double default_bpm) {
    stretches_.reserve(std::max<std::size_t>(map.size(), 1));
    stretches_.push_back({0, 0, map.empty() ? default_bpm : map.front().bpm});
    for (std::size_t i = 1; i < map.size(); ++i) {
        stretches_.push_back({map[i].tick, stretches_.back().seconds(map[i].tick), map[i].bpm});
    }
}

double TempoClock::seconds(double ticks) const {
    const auto behind = std::upper_bound(
        stretches_.begin() + 1, stretches_.end(), ticks,
        [](double position, const Stretch& stretch) { return position < stretch.start_ticks; });
    return (behind - 1)->seconds(ticks);
}

std::vector<TempoClock::Stretch>::const_iterator TempoClock::first_behind(double seconds) const {
    return std::upper_bound(
        stretches_.begin() + 1, stretches_.end(), seconds,
        [](double moment, const Stretch& stretch) { return moment < stretch.start_seconds; });
}

double TempoClock::ticks(double seconds) const {
    const Stretch& stretch = stretch_at(seconds);
    return stretch.start_ticks +
           (seconds - stretch.start_seconds) * stretch.bpm * ticks_per_quarter / 60;
}

double TempoClock::bpm_at(double seconds) const {
    return stretch_at(seconds).bpm;
}

double TempoClock::next_change(double seconds) const {
    const auto behind = first_behind(seconds);
    return behind == stretches_.end() ? std::numeric_limits<double>::infinity()
                                      : behind->start_seconds;
}

double ticksToSeconds(const TempoMap& map, double ticks, double default_bpm) {
    return TempoClock(map, default_bpm).seconds(ticks);
}

}  // namespace tanrove
