// An envelope's block: its switches, then its points.
#include "project/envelope_text.hpp"

#include "project/quoted_text.hpp"
#include "timeline/envelope_point.hpp"

namespace tanrove {

namespace {

// Digits behind the point.
constexpr int time_digits = 10;
constexpr int value_digits = 9;

}  // namespace

int write_envelope(TextSink& out, int level, const std::string& block,
                   const EnvelopePlan& envelope) {
    if (envelope.points.empty()) return 0;
    out.line(level, "<%s", block.c_str());
    out.line(level + 1, "ACT %d -1", envelope.active ? 1 : 0);
    out.line(level + 1, "VIS 1 1 1");
    out.line(level + 1, "LANEHEIGHT 0 0");
    out.line(level + 1, "ARM %d", envelope.armed ? 1 : 0);
    out.line(level + 1, "DEFSHAPE %d -1 -1",
             envelope.kind == EnvelopeKind::mute ? square_shape : linear_shape);
    for (const EnvelopePoint& point : envelope.points) {
        out.row(level + 1, "PT ", Fixed{printable(point.seconds), time_digits}, " ",
                Fixed{printable(point.value), value_digits}, " ", point.shape);
    }
    out.line(level, ">");
    return static_cast<int>(envelope.points.size());
}

int write_envelope(TextSink& out, int level, const EnvelopePlan& envelope) {
    return write_envelope(out, level, envelope.block, envelope);
}

}  // namespace tanrove
