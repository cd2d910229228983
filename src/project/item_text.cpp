// The audio item, line group by line group, in the order of the file.
#include "project/item_text.hpp"

#include "project/fx_chain_text.hpp"
#include "project/quoted_text.hpp"

namespace tanrove {

namespace {

constexpr std::size_t stretch_markers_a_line = 28;

void write_place(TextSink& out, const ClipItem& clip) {
    out.line(3, "POSITION %.10f", clip.start);
    out.line(3, "SNAPOFFS %.10g", snap_offset(clip));
    out.line(3, "LENGTH %.10f", clip.length);
    out.line(3, "LOOP 0");
    out.line(3, "ALLTAKES 0");
}

void write_fades(TextSink& out, const TakePlan& take) {
    const ItemFade& in = take.fade_in;
    const ItemFade& end = take.fade_out;
    out.line(3, "FADEIN %g %.10f 0 %g 0 %g 0", in.shape, in.length, in.shape, in.curve);
    out.line(3, "FADEOUT %g %.10f 0 %g 0 %g 0", end.shape, end.length, end.shape, end.curve);
}

void write_mute_and_lock(TextSink& out, const ClipItem& clip) {
    out.line(3, "MUTE %d 0", clip.muted ? 1 : 0);
    if (clip.locked) out.line(3, "LOCK 1");
}

void write_stretch_markers(TextSink& out, const std::vector<StretchMarker>& markers) {
    if (markers.size() <= 2) return;
    for (std::size_t i = 0; i < markers.size(); ++i) {
        if (i % stretch_markers_a_line != 0) {
            out.text(" + ");
        } else {
            out.text(i == 0 ? "      SM " : "\n      SM ");
        }
        out.text("%.10f %.10f", markers[i].item_position, markers[i].source_position);
    }
    out.text("\n");
}

// REAPER's channel mode for the first channel of a file alone; those behind it follow.
constexpr int first_channel_mode = 3;

void write_volume_envelope(TextSink& out, const std::vector<EnvelopePoint>& points) {
    if (points.empty()) return;
    out.line(3, "<VOLENV");
    out.line(4, "ACT 1 -1");
    out.line(4, "VIS 1 1 1");
    out.line(4, "LANEHEIGHT 0 0");
    out.line(4, "ARM 0");
    out.line(4, "DEFSHAPE 0 -1 -1");
    for (const EnvelopePoint& point : points)
        out.line(4, "PT %.10f %.9f 0", point.seconds, point.value);
    out.line(3, ">");
}

void write_take(TextSink& out, const ClipItem& clip, const TakePlan& take) {
    out.line(3, "PLAYRATE %.9f 1 %.6f -1 0 0.0025", take.playrate, clip.pitch_shift);
    out.line(3, "CHANMODE %d", clip.file_channel ? first_channel_mode + *clip.file_channel : 0);
    out.line(3, "NAME %s", quoted(clip.name).c_str());
    write_stretch_markers(out, clip.stretch_markers);
    if (take.has_volume) {
        out.line(3, "VOLPAN %.9f %g %d -1", take.gain, clip.take_pan,
                 clip.polarity_inverted ? -1 : 1);
    }
    write_volume_envelope(out, take.envelope);
}

void write_source(TextSink& out, const std::string& path) {
    out.line(3, "<SOURCE WAVE");
    out.line(4, "FILE %s", quoted(path).c_str());
    out.line(3, ">");
}

}  // namespace

void write_item_colour(TextSink& out, const ClipItem& clip) {
    if (clip.colour) out.line(3, "COLOR %lu R", static_cast<unsigned long>(*clip.colour));
}

void write_lane_place(TextSink& out, const LanePlace& place) {
    const auto count = static_cast<double>(place.count);
    out.line(3, "YPOS %.6f %.6f 2", static_cast<double>(place.lane) / count, 1 / count);
}

void write_audio_item(TextSink& out, const ClipItem& clip, const TakePlan& take,
                      const std::string& path, const std::optional<LanePlace>& place,
                      std::span<const ChainPlan> take_chains) {
    out.line(2, "<ITEM");
    write_place(out, clip);
    write_fades(out, take);
    write_mute_and_lock(out, clip);
    out.line(3, "SOFFS %.10f", clip.source_offset);
    write_item_colour(out, clip);
    if (place) write_lane_place(out, *place);
    write_take(out, clip, take);
    write_source(out, path);
    if (clip.take_fx && clip.take_fx->chain < take_chains.size()) {
        write_take_fx(out, take_chains[clip.take_fx->chain], clip.take_fx->number);
    }
    out.line(2, ">");
}

}  // namespace tanrove
