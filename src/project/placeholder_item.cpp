// An item without a source shows its notes, so the group's name stands in them as well.
#include "project/placeholder_item.hpp"

#include "base/guid.hpp"
#include "mix/track_comments.hpp"
#include "project/quoted_text.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t placeholder_item_seed = 0x50000000;

}  // namespace

void write_placeholder_item(TextSink& out, const ClipItem& clip, std::uint32_t number,
                            const std::optional<LanePlace>& place) {
    out.line(2, "<ITEM");
    out.line(3, "POSITION %.10f", clip.start);
    out.line(3, "SNAPOFFS 0");
    out.line(3, "LENGTH %.10f", clip.length);
    out.line(3, "LOOP 0");
    out.line(3, "ALLTAKES 0");
    out.line(3, "FADEIN 1 0 0 1 0 0 0");
    out.line(3, "FADEOUT 1 0 0 1 0 0 0");
    out.line(3, "MUTE %d 0", clip.muted ? 1 : 0);
    if (clip.locked) out.line(3, "LOCK 1");
    write_item_colour(out, clip);
    if (place) write_lane_place(out, *place);
    out.line(3, "IGUID %s", guid(placeholder_item_seed + number).c_str());
    out.line(3, "NAME %s", quoted(clip.name).c_str());
    out.line(3, "<NOTES");
    for (const std::string& line : comment_lines(std::string(clip.name)))
        out.line(4, "|%s", line.c_str());
    out.line(3, ">");
    out.line(2, ">");
}

}  // namespace tanrove
