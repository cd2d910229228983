// A warp map 0x2636 stands behind an audio clip's name, in front of the next clip's block. Offsets
// from its content type:
//   28      u16 number of points, 2 to 4000
//   36      8 bytes: the anchor, samples or ticks
//   44      points: position, and an f64 source sample 8 bytes behind its start
// A point takes 16 bytes; in the narrow form 12, where the next point begins in the number.
// A raw position of half a tick origin or more is ticks, a smaller one samples.
#include "session/warp_maps.hpp"

#include <algorithm>

#include "session/block_types.hpp"
#include "session/clip_names.hpp"

namespace tanrove {

namespace {

constexpr std::size_t point_count_at = 28;
constexpr std::size_t anchor_at = 36;
constexpr std::size_t points_at = 44;
constexpr std::size_t source_at = 8;
constexpr std::size_t point_bytes = source_at + 8;  // in the narrow form points overlap

/// Bytes from point to point, and of a position.
struct PointForm {
    std::size_t step;
    std::size_t width;
};
constexpr PointForm wide_form = {16, position_width};
constexpr PointForm narrow_form = {12, 5};
constexpr std::size_t min_points = 2;
constexpr std::size_t max_points = 4000;
constexpr std::uint64_t least_ticks = tick_origin / 2;

/// Ticks from the session's start; below 0 in front of it.
double from_origin(std::uint64_t raw) {
    return static_cast<double>(static_cast<std::int64_t>(raw) -
                               static_cast<std::int64_t>(tick_origin));
}

bool ascends(const WarpMap& points) {
    const auto falls = [](const WarpPoint& a, const WarpPoint& b) {
        return !(a.position <= b.position && a.source_sample <= b.source_sample);
    };
    return std::adjacent_find(points.begin(), points.end(), falls) == points.end();
}

struct ReadPoints {
    WarpMap points;
    bool in_ticks = false;
};

ReadPoints read_points(ByteView image, std::size_t at, std::size_t count, const PointForm& form) {
    std::vector<std::uint64_t> raw(count);
    ReadPoints read;
    for (std::size_t i = 0; i < count; ++i) {
        raw[i] = readWide(image, at + i * form.step, form.width);
        read.in_ticks = read.in_ticks || raw[i] >= least_ticks;
    }
    read.points.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double position =
            read.in_ticks ? std::max(from_origin(raw[i]), 0.0) : static_cast<double>(raw[i]);
        read.points.push_back({position, image.f64(at + i * form.step + source_at)});
    }
    return read;
}

/// The wide form if the block has room for it and time runs forward in it, else the narrow one.
ReadPoints read_either_form(ByteView image, std::size_t at, std::size_t count, std::size_t room) {
    if (room >= wide_form.step * count) {
        ReadPoints wide = read_points(image, at, count, wide_form);
        if (ascends(wide.points)) return wide;
    }
    return read_points(image, at, count, narrow_form);
}

WarpAnchor read_anchor(ByteView image, std::size_t at) {
    const std::uint64_t raw = read_position(image, at);
    if (raw >= least_ticks) return {from_origin(raw), true};
    return {static_cast<double>(raw), false};
}

}  // namespace

WarpMaps readWarpMaps(const BlockIndex& index) {
    const ByteView image = index.image();
    WarpMaps maps;
    // Maps do not overlap: all of them together have no more points than the image has room for.
    std::size_t points_left = image.size() / narrow_form.step;
    const auto clips = index.of_type(block_type::clip).all();
    for (std::size_t i = 0; i < clips.size(); ++i) {
        const auto name = read_clip_name(image, clips[i]);
        if (!name || clip_kind(index, clips[i]) != ClipKind::audio) continue;
        const std::size_t next_clip = i + 1 < clips.size() ? clips[i + 1].at : image.size();
        const std::size_t behind_name = clips[i].payload() + 4 + name->size();
        const auto found = index.of_type(block_type::warp_map).between(behind_name, next_clip);
        if (found.empty()) continue;
        const Block& map = found.front();
        const std::size_t p = map.at + block_content_at;
        const std::size_t count = image.u16(p + point_count_at);
        if (count < min_points || count > max_points || count > points_left) continue;
        const std::size_t room = p + points_at < map.end() ? map.end() - p - points_at : 0;
        if (room < narrow_form.step * (count - 1) + point_bytes) continue;
        points_left -= count;
        ReadPoints read = read_either_form(image, p + points_at, count, room);
        const std::string clip(*name);
        maps.in_samples.erase(clip);
        maps.in_ticks.erase(clip);
        (read.in_ticks ? maps.in_ticks : maps.in_samples)[clip] = std::move(read.points);
        maps.anchors[clip] = read_anchor(image, p + anchor_at);
    }
    return maps;
}

}  // namespace tanrove
