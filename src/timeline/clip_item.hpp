// The central record of the timeline: one thing that plays on a track, in seconds.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tanrove {

/// Times are seconds of the session timeline unless the name says otherwise.
struct ClipItem {
    std::uint32_t region = 0;           ///< index in the session's region table
    std::uint64_t stored_position = 0;  ///< as stored; its low 32 bits are the key of lookups
    std::uint32_t source_offset_samples = 0;
    std::uint64_t index_on_track = 0;  ///< running number of the placement on its track
    double start = 0;                  ///< the raw stored position until the timebase is known
    double length = 0;
    double source_offset = 0;
    std::string name;
    std::string file;       ///< audio file name without its folder
    std::string file_kind;  ///< lower-cased extension
    bool muted = false;
    bool head_of_file = false;  ///< starts within 63 samples of its file and bears no edit number
    double playrate = 1.0;
    bool is_fade_reference = false;    ///< a fade's rendered file, kept on demand: it has no row
    std::int32_t edit_row = -1;        ///< row in the track's edit list
    bool tail_kept = false;            ///< this clip's tail survives over the next clip
    bool drawn_over_next = false;      ///< row overlap kind 1
    bool drawn_over_previous = false;  ///< row overlap kind 2
    double take_pan = 0;               ///< -1 left leg, +1 right leg of a split stereo pair
    std::int32_t color_index = -2;     ///< stored clip colour, -2 none
    double sync_offset = 0;            ///< from the clip's start to its sync point; 0 none
    bool locked = false;
};

/// Where REAPER snaps the item, in seconds from its start: the sync point when it lies inside the
/// item, else 0.
double snap_offset(const ClipItem& clip);

/// The name without its folder, cut at the last "/" or "\\".
std::string_view without_folder(std::string_view path);

/// The lower-cased text behind a file name's last dot; empty where it has none.
std::string file_kind_of(std::string_view file);

/// True if the name ends in "-" and digits, as Pro Tools names what an edit leaves of a clip.
bool ends_in_edit_number(std::string_view name);

}  // namespace tanrove
