// The sounds of the demo session: short generated tones and clicks in 16-bit WAV files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tanrove::demo {

/// Mono sound, samples from -1 to 1.
using Sound = std::vector<double>;

/// A tone with its first harmonics that dies away; `length_seconds` at `rate_hz`.
Sound plucked_tone(double frequency_hz, double length_seconds, std::uint32_t rate_hz);

/// A short burst of noise, the same at every run: a click with a bright edge.
Sound click(double length_seconds, std::uint32_t rate_hz);

/// Plays sounds one after the other, each taking `step_seconds`.
Sound in_steps(const std::vector<Sound>& sounds, double step_seconds, std::uint32_t rate_hz);

/// Writes a mono 16-bit WAV file. False if that fails.
[[nodiscard]] bool write_wav(const std::string& path, const Sound& sound, std::uint32_t rate_hz);

}  // namespace tanrove::demo
