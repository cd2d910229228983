// Tones, clicks and the WAV file around them.
#include "wav_file.hpp"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>

#include "support/byte_writer.hpp"

namespace tanrove::demo {

namespace {

std::size_t sample_count(double seconds, std::uint32_t rate_hz) {
    return static_cast<std::size_t>(std::lround(seconds * rate_hz));
}

}  // namespace

Sound plucked_tone(double frequency_hz, double length_seconds, std::uint32_t rate_hz) {
    constexpr int harmonics = 4;
    constexpr double decay_per_second = 5.0;
    constexpr double level = 0.4;
    Sound sound(sample_count(length_seconds, rate_hz));
    for (std::size_t i = 0; i < sound.size(); ++i) {
        const double t = static_cast<double>(i) / rate_hz;
        double sum = 0;
        for (int h = 1; h <= harmonics; ++h) {
            sum += std::sin(2 * std::numbers::pi * frequency_hz * h * t) / (h * h);
        }
        sound[i] = level * sum * std::exp(-decay_per_second * t);
    }
    return sound;
}

Sound click(double length_seconds, std::uint32_t rate_hz) {
    constexpr double decay_per_second = 60.0;
    constexpr double level = 0.5;
    Sound sound(sample_count(length_seconds, rate_hz));
    std::uint32_t noise = 1;
    for (std::size_t i = 0; i < sound.size(); ++i) {
        noise = noise * 1664525U + 1013904223U;
        const double value = static_cast<double>(noise >> 8) / (1 << 23) - 1.0;
        const double t = static_cast<double>(i) / rate_hz;
        sound[i] = level * value * std::exp(-decay_per_second * t);
    }
    return sound;
}

Sound in_steps(const std::vector<Sound>& sounds, double step_seconds, std::uint32_t rate_hz) {
    const std::size_t step = sample_count(step_seconds, rate_hz);
    Sound all(step * sounds.size());
    for (std::size_t n = 0; n < sounds.size(); ++n) {
        const std::size_t count = std::min(step, sounds[n].size());
        std::copy_n(sounds[n].begin(), count, all.begin() + static_cast<std::ptrdiff_t>(n * step));
    }
    return all;
}

bool write_wav(const std::string& path, const Sound& sound, std::uint32_t rate_hz) {
    constexpr std::uint16_t bytes_per_sample = 2;
    constexpr double full_scale = 32767.0;
    const std::size_t data_bytes = sound.size() * bytes_per_sample;
    builder::ByteWriter wav;
    wav.raw("RIFF").u32(36 + data_bytes).raw("WAVEfmt ").u32(16).u16(1).u16(1);
    wav.u32(rate_hz).u32(std::uint64_t{rate_hz} * bytes_per_sample).u16(bytes_per_sample).u16(16);
    wav.raw("data").u32(data_bytes);
    for (const double value : sound) {
        wav.i16(static_cast<int>(std::lround(std::clamp(value, -1.0, 1.0) * full_scale)));
    }
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(wav.bytes().data()),
              static_cast<std::streamsize>(wav.size()));
    out.close();
    return out.good();
}

}  // namespace tanrove::demo
