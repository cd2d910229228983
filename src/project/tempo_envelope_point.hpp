// One point of the project's tempo envelope.
#pragma once

#include <cstdint>
#include <vector>

namespace tanrove {

/// How the tempo goes on from a point.
enum class TempoShape : std::int8_t {
    ramp = 0,  ///< in a straight line to the next point's tempo
    step = 1,  ///< held until the next point
};

/// What a point does besides setting a tempo.
enum class TempoPointFlag : std::int8_t {
    tempo = 0,            ///< nothing; it carries no time signature
    tempo_and_meter = 1,  ///< sets a time signature as well
    meter_only = 3,       ///< sets a time signature and leaves the tempo in force
};

struct TempoEnvelopePoint {
    double position_seconds = 0;
    double bpm = 120;
    std::int32_t signature = 0;  ///< numerator in the low 16 bits, denominator in the high 16
    TempoPointFlag flag = TempoPointFlag::tempo;
    TempoShape shape = TempoShape::step;
};

/// In order of time.
using TempoEnvelope = std::vector<TempoEnvelopePoint>;

}  // namespace tanrove
