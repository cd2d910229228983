// The audio item, line group by line group, in the order of the file.
#include "project/item_text.hpp"

#include "project/fx_chain_text.hpp"
#include "project/quoted_text.hpp"

namespace tanrove {

namespace {

constexpr std::size_t stretch_markers_a_line = 28;

// Digits behind the point.
constexpr int place_digits = 10;
constexpr int gain_digits = 9;
constexpr int rate_digits = 9;

void write_place(TextSink& out, const ClipItem& clip) {
    out.row(3, "POSITION ", Fixed{clip.start, place_digits});
    out.row(3, "SNAPOFFS ", General{snap_offset(clip), place_digits});
    out.row(3, "LENGTH ", Fixed{clip.length, place_digits});
    out.row(3, "LOOP 0");
    out.row(3, "ALLTAKES 0");
}

void write_fades(TextSink& out, const TakePlan& take) {
    const auto write = [&](const char* side, const ItemFade& fade) {
        const General shape{fade.shape};
        out.row(3, side, shape, " ", Fixed{fade.length, place_digits}, " 0 ", shape, " 0 ",
                General{fade.curve}, " 0");
    };
    write("FADEIN ", take.fade_in);
    write("FADEOUT ", take.fade_out);
}

void write_mute_and_lock(TextSink& out, const ClipItem& clip) {
    out.row(3, clip.muted ? "MUTE 1 0" : "MUTE 0 0");
    if (clip.locked) out.row(3, "LOCK 1");
}

void write_stretch_markers(TextSink& out, const std::vector<StretchMarker>& markers) {
    if (markers.size() <= 2) return;
    for (std::size_t i = 0; i < markers.size(); ++i) {
        if (i % stretch_markers_a_line != 0) {
            out.put(" + ");
        } else {
            out.put(i == 0 ? "      SM " : "\n      SM ");
        }
        out.put(Fixed{markers[i].item_position, place_digits}, " ",
                Fixed{markers[i].source_position, place_digits});
    }
    out.put("\n");
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
        out.row(4, "PT ", Fixed{point.seconds, place_digits}, " ", Fixed{point.value, gain_digits},
                " 0");
    out.line(3, ">");
}

void write_take(TextSink& out, const ClipItem& clip, const TakePlan& take) {
    out.row(3, "PLAYRATE ", Fixed{take.playrate, rate_digits}, " 1 ",
            Fixed{clip.stretch->pitch_shift}, " -1 0 0.0025");
    out.row(3, "CHANMODE ", clip.file_channel ? first_channel_mode + *clip.file_channel : 0);
    out.row(3, "NAME ", Quoted{clip.name});
    write_stretch_markers(out, clip.stretch->stretch_markers);
    if (take.has_volume) {
        out.row(3, "VOLPAN ", Fixed{take.gain, gain_digits}, " ", clip.take_pan,
                clip.polarity_inverted ? " -1 -1" : " 1 -1");
    }
    write_volume_envelope(out, take.envelope);
}

void write_source(TextSink& out, const std::string& path) {
    out.row(3, "<SOURCE WAVE");
    out.row(4, "FILE ", Quoted{path});
    out.row(3, ">");
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
    out.row(2, "<ITEM");
    write_place(out, clip);
    write_fades(out, take);
    write_mute_and_lock(out, clip);
    out.row(3, "SOFFS ", Fixed{clip.source_offset, place_digits});
    write_item_colour(out, clip);
    if (place) write_lane_place(out, *place);
    write_take(out, clip, take);
    write_source(out, path);
    if (clip.take_fx && clip.take_fx->chain < take_chains.size()) {
        write_take_fx(out, take_chains[clip.take_fx->chain], clip.take_fx->number);
    }
    out.row(2, ">");
}

}  // namespace tanrove
