// The recording format's setting: seven bytes in base64.
#include "project/record_format.hpp"

#include <array>
#include <cstdint>

#include "base/base64.hpp"

namespace tanrove {

RecordFormat plan_record_format(AudioFormat format, const std::optional<BitDepth>& depth) {
    RecordFormat plan{.is_aiff = format == AudioFormat::aiff};
    if (!depth) return plan;
    plan.bits = depth->bits;
    plan.is_float = depth->is_float;
    plan.written = !plan.is_aiff && (plan.bits == 16 || plan.bits == 32);
    return plan;
}

std::string wav_record_config(int bits) {
    const std::array<std::uint8_t, 7> setting = {
        'e', 'v', 'a', 'w', static_cast<std::uint8_t>(bits), 0, 1,
    };
    return base64(setting);
}

}  // namespace tanrove
