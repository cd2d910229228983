// The item of a track's comment: two seconds at the start of the project, without a source.
#include "project/comment_item.hpp"

#include "base/guid.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t comment_item_seed = 0x7C000000;

}  // namespace

void write_comment_item(TextSink& out, const TrackPlan& plan, std::uint32_t index) {
    if (plan.comment_lines.empty()) return;
    out.line(2, "<ITEM");
    out.line(3, "POSITION 0");
    out.line(3, "SNAPOFFS 0");
    out.line(3, "LENGTH 2");
    out.line(3, "LOOP 0");
    out.line(3, "ALLTAKES 0");
    out.line(3, "FADEIN 1 0 0 1 0 0 0");
    out.line(3, "FADEOUT 1 0 0 1 0 0 0");
    out.line(3, "MUTE 0 0");
    out.line(3, "IGUID %s", guid(comment_item_seed + index).c_str());
    out.line(3, "NAME \"Pro Tools comment\"");
    out.line(3, "<NOTES");
    for (const std::string& line : plan.comment_lines) out.line(4, "|%s", line.c_str());
    out.line(3, ">");
    out.line(2, ">");
}

}  // namespace tanrove
