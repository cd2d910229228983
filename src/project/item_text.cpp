// The audio item, line group by line group, in the order of the file.
#include "project/item_text.hpp"

#include "project/project_text.hpp"

namespace tanrove {

namespace {

void write_place(TextSink& out, const ClipItem& clip) {
    out.line(3, "POSITION %.10f", clip.start);
    out.line(3, "SNAPOFFS %.10g", snap_offset(clip));
    out.line(3, "LENGTH %.10f", clip.length);
    out.line(3, "LOOP 0");
    out.line(3, "ALLTAKES 0");
}

// An end without a fade is a straight one of no length: what the user gets who draws it longer is
// the plain fade of both programs.
void write_fades(TextSink& out, const ClipFade& fade_in, const ClipFade& fade_out) {
    out.line(3, "FADEIN %g %.10f 0 %g 0 %g 0", fade_in.shape, fade_in.length, fade_in.shape,
             fade_in.curve);
    out.line(3, "FADEOUT %g %.10f 0 %g 0 %g 0", fade_out.shape, fade_out.length, fade_out.shape,
             fade_out.curve);
}

void write_mute_and_lock(TextSink& out, const ClipItem& clip) {
    out.line(3, "MUTE %d 0", clip.muted ? 1 : 0);
    if (clip.locked) out.line(3, "LOCK 1");
}

void write_lane_place(TextSink& out, const LanePlace& place) {
    const auto count = static_cast<double>(place.count);
    out.line(3, "YPOS %.6f %.6f 2", static_cast<double>(place.lane) / count, 1 / count);
}

void write_take(TextSink& out, const ClipItem& clip) {
    out.line(3, "PLAYRATE %.9f 1 %.6f -1 0 0.0025", clip.playrate, 0.0);
    out.line(3, "CHANMODE 0");
    out.line(3, "NAME %s", quoted(clip.name).c_str());
    if (clip.take_pan != 0) out.line(3, "VOLPAN %.9f %g %d -1", 1.0, clip.take_pan, 1);
}

void write_source(TextSink& out, const std::string& path) {
    out.line(3, "<SOURCE WAVE");
    out.line(4, "FILE %s", quoted(path).c_str());
    out.line(3, ">");
}

}  // namespace

void write_audio_item(TextSink& out, const ClipItem& clip, const std::string& path,
                      const std::optional<LanePlace>& place) {
    out.line(2, "<ITEM");
    write_place(out, clip);
    write_fades(out, clip.fade_in, clip.fade_out);
    write_mute_and_lock(out, clip);
    out.line(3, "SOFFS %.10f", clip.source_offset);
    if (place) write_lane_place(out, *place);
    write_take(out, clip);
    write_source(out, path);
    out.line(2, ">");
}

}  // namespace tanrove
