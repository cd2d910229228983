// Sessions in the shape of a large edit: clips side by side, a hundred regions a track.
#include "built_session.hpp"

namespace tanrove::bench {

builder::SessionBuilder session_of(std::size_t tracks, std::size_t clips_per_track) {
    constexpr std::int64_t clip_samples = 24000;
    constexpr std::int64_t quarter_ticks = 960000;
    constexpr int tempo_changes = 500;
    constexpr std::size_t regions_per_track = 100;  // a session numbers 65535 regions at most
    builder::SessionBuilder session;
    session.audio_file({"Take.wav", clip_samples * 1000, 0});
    for (int i = 0; i < tempo_changes; ++i) {
        session.tempo(std::int64_t{i} * 4 * quarter_ticks, 90.0 + i % 60);
    }
    for (std::size_t t = 0; t < tracks; ++t) {
        builder::TrackSpec track;
        track.name = "Track " + std::to_string(t + 1);
        track.tick_based = t % 2 == 1;
        track.clips.reserve(clips_per_track);
        for (std::size_t c = 0; c < clips_per_track; ++c) {
            builder::ClipSpec clip;
            clip.region = track.name + "-" + std::to_string(c % regions_per_track + 1);
            clip.position = static_cast<std::int64_t>(c) * clip_samples;
            clip.length = clip_samples;
            clip.source_offset = static_cast<std::int64_t>(c % regions_per_track) * clip_samples;
            track.clips.push_back(clip);
        }
        session.track(track);
    }
    return session;
}

builder::SessionBuilder edited_session_of(std::size_t tracks, std::size_t clips_per_track) {
    constexpr std::int64_t step = 24000;
    constexpr std::size_t regions_per_track = 100;
    builder::SessionBuilder session;
    session.audio_file({"Take.wav", step * 1000, 0});
    for (std::size_t t = 0; t < tracks; ++t) {
        builder::TrackSpec track;
        track.name = "Track " + std::to_string(t + 1);
        for (std::size_t c = 0; c < clips_per_track; ++c) {
            const bool meets_next = c % 2 == 0;
            builder::ClipSpec clip;
            clip.region = track.name + "-" + std::to_string(c % regions_per_track + 1);
            clip.position = static_cast<std::int64_t>(c) * step;
            clip.length = meets_next ? step : step + step / 2;
            clip.source_offset = static_cast<std::int64_t>(1 + c % regions_per_track) * step;
            track.clips.push_back(clip);
            builder::ClipSpec fade;
            fade.is_fade = true;
            fade.position = clip.position + (meets_next ? step : 0);
            fade.fade = {.kind = 1, .pre = 1200, .length = 2400};
            if (!meets_next) fade.fade = {.kind = 3, .length = 2400};
            track.clips.push_back(fade);
        }
        session.track(track);
    }
    return session;
}

builder::SessionBuilder midi_session_of(std::size_t clips, std::size_t notes_per_clip) {
    constexpr std::int64_t note_ticks = 120000;
    constexpr std::size_t tracks = 2;
    const std::int64_t clip_ticks = static_cast<std::int64_t>(notes_per_clip) * note_ticks;
    builder::SessionBuilder session;
    for (std::size_t t = 0; t < tracks; ++t) {
        builder::TrackSpec track;
        track.name = "Keys " + std::to_string(t + 1);
        track.kind = builder::TrackKind::instrument;
        track.tick_based = true;
        for (std::size_t c = 0; c < clips / tracks; ++c) {
            builder::MidiClipSpec clip;
            clip.region = track.name + "-" + std::to_string(c + 1);
            clip.position = static_cast<std::int64_t>(c) * clip_ticks;
            clip.length = clip_ticks;
            for (std::size_t n = 0; n < notes_per_clip; ++n) {
                const auto key = static_cast<std::uint8_t>(36 + n * 7 % 48);
                clip.stream.notes.push_back(
                    {static_cast<std::int64_t>(n) * note_ticks, note_ticks, key});
            }
            track.midi_clips.push_back(std::move(clip));
        }
        session.track(track);
    }
    return session;
}

}  // namespace tanrove::bench
