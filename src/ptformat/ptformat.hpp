// The session file's container: header, cipher, version and rate gates, and the few lists that the
// library owes. The program links it as the shared library libptformat and decodes nearly all else
// from the decrypted image with its own readers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// The library itself is built with PTFORMAT_BUILDING.
#if defined(_WIN32) && defined(PTFORMAT_BUILDING)
#define PTFORMAT_API __declspec(dllexport)
#define PTFORMAT_PRIVATE
#elif defined(_WIN32)
#define PTFORMAT_API __declspec(dllimport)
#define PTFORMAT_PRIVATE
#else
#define PTFORMAT_API __attribute__((visibility("default")))
#define PTFORMAT_PRIVATE __attribute__((visibility("hidden")))
#endif

/// One opened session file. Every member is safe on a file of any content: what cannot be read is
/// a negative code or an empty list. Memory stays within a small multiple of the file's size. All
/// objects share `allow_unknown_version`, so a process loads one session at a time. Paths are UTF-8
/// on every system; what is handed out belongs to the object.
class PTFORMAT_API PTFFormat {
public:
    /// An audio file that the session lists, numbered from 0 in the order of the file list.
    struct AudioFile {
        std::string name;
        std::uint16_t index = 0;
        std::int64_t length = 0;   ///< samples at the file's own rate; 0 where the session has none
        std::int64_t rate_hz = 0;  ///< 0 where the session has none
    };

    /// A clip of an audio file, its positions in samples at the target rate, or a MIDI clip, its
    /// positions in ticks.
    struct Region {
        std::string name;
        std::uint16_t index = 0;
        std::int64_t start = 0;
        std::int64_t source_offset = 0;
        std::int64_t length = 0;
        std::uint16_t file_index = 0;
    };

    /// One clip on a track; a track without clips has no row. The clips of a track share its name,
    /// which lives as long as the lists do.
    struct Track {
        std::string_view name;
        std::uint16_t index = 0;        ///< the track's number
        std::int64_t region_index = 0;  ///< of `regions`, or of `midi_regions` on a MIDI track
        std::int64_t start = 0;         ///< samples at the target rate; on a MIDI track ticks
    };

    /// What `load` gives. A file that cannot be read as a file is one that cannot be decrypted.
    static constexpr int load_ok = 0;
    static constexpr int load_not_decrypted = -1;
    static constexpr int load_no_version = -2;
    static constexpr int load_unknown_version = -3;
    static constexpr int load_not_parsed = -4;

    /// No session comes near this; a larger file is not worth its memory and cannot be loaded.
    static constexpr std::uint64_t max_file_bytes = std::uint64_t{1} << 31;

    /// Positions have 56 bits; with rates up to here their product stays inside 63.
    static constexpr std::int64_t highest_target_rate_hz = 768000;

    PTFFormat();
    ~PTFFormat();
    PTFFormat(const PTFFormat&) = delete;
    PTFFormat& operator=(const PTFFormat&) = delete;

    /// Decrypts and parses the file, positions scaled to `target_rate` (Hz); 0, less, or more than
    /// `highest_target_rate_hz` stands for the session's own rate and scales nothing. 0 or one of
    /// the negative codes above; the rate and the version byte stay readable as far as they were
    /// found.
    int load(const std::string& path, std::int64_t target_rate);

    /// The same for a file that is in memory already, still encrypted.
    int load_bytes(std::vector<std::uint8_t> file, std::int64_t target_rate);

    /// Decrypts only: 0 or -1. The image is then there and, where it can be read, the version.
    int unxor(const std::string& path);

    /// While true, `load` takes a version outside the known range. Stays set for the process.
    static bool allow_unknown_version;

    /// The decrypted bytes, owned by this object; nullptr if there are none.
    const std::uint8_t* image() const;
    std::uint64_t image_size() const;

    /// The session's own rate in Hz; 0 while unknown.
    std::int64_t session_rate() const;

    /// The version that the file states, 255 for any beyond; 0 while unknown.
    int version() const;

    const std::vector<AudioFile>& audio_files() const;

    /// The clips and their tracks, read from the image when one of these is first asked for. Empty
    /// where the memory does not suffice.
    const std::vector<Region>& regions() const;
    const std::vector<Region>& midi_regions() const;
    const std::vector<Track>& tracks() const;
    const std::vector<Track>& midi_tracks() const;

private:
    struct PTFORMAT_PRIVATE State;
    std::unique_ptr<State> state_;
};
