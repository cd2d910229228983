// The readers of automation lanes: on strips and sends, plain and surround.
#include "fuzz/reader_promises.hpp"
#include "session/strip_lanes.hpp"
#include "session/strips.hpp"

namespace {

using namespace tanrove;

std::size_t points_of(const Strip& strip) {
    std::size_t points = strip.dual_pan_lane.points.size();
    if (strip.surround_master_lane) points += strip.surround_master_lane->points.size();
    for (const Lane* lane : {&strip.volume_lane, &strip.mute_lane, &strip.pan_lane,
                             &strip.pan_right_lane, &strip.trim_lane}) {
        points += lane->points.size();
    }
    for (const PannerLanes& panner : strip.surround_lanes) {
        for (const Lane& lane : panner) points += lane.points.size();
    }
    return points;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const BlockIndex index(input_view(data, size));
    promise_family(index, ReaderFamily::lanes);

    const auto rows = readStripRows(index).rows;
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (const StripRow& row : rows) names.push_back(row.current_name);
    auto strips = readStrips(index, rows, names, {});
    promise(strips.size() == names.size(), "a strip for each name");
    readStripLanes(index, strips);
    std::size_t points = 0;
    for (const Strip& strip : strips) points += points_of(strip);
    promise(strip_lanes_text(strips).size() <= 600 * (points + strips.size()), "lines of a point");
    promise(points <= size, "points are bytes of the image, and of one lane each");
    return 0;
}
