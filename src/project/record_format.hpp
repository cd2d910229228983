// The project's recording format, from the session's bit depth and audio file type.
#pragma once

#include <optional>
#include <string>

#include "session/session_settings.hpp"

namespace tanrove {

struct RecordFormat {
    int bits = 0;  ///< of the session; 0 where it records none
    bool is_float = false;
    bool is_aiff = false;
    bool written = false;  ///< false: REAPER's own default stays, which is 24-bit WAV
};

/// Only 16 and 32-bit WAV are written: 24-bit WAV is the default, and of REAPER's settings only
/// those for WAV are known.
RecordFormat plan_record_format(AudioFormat format, const std::optional<BitDepth>& depth);

/// The text that REAPER keeps a WAV recording format in; `bits` is 16 or 32.
std::string wav_record_config(int bits);

}  // namespace tanrove
