// The options of one conversion, as a plain record: what the command line fills, and what a caller
// in the same process fills by hand. Copied by value, so that one run can be made with a change.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tanrove {

/// Values of `RunOptions::bypass_mode`.
constexpr std::int32_t bypass_kept = 0;      ///< bypassed plug-ins stay, as bypassed slots
constexpr std::int32_t bypass_offline = 1;   ///< they stay, offline
constexpr std::int32_t bypass_left_out = 2;  ///< they are left out

/// Values of `RunOptions::comments_mode`: where track comments go.
constexpr std::int32_t comments_in_items = 0;
constexpr std::int32_t comments_in_project = 1;
constexpr std::int32_t comments_nowhere = 2;

/// Values of `RunOptions::theme_mode`: whose default colours the session's tracks and clips have.
constexpr std::int32_t theme_of_session = 0;
constexpr std::int32_t theme_classic = 1;
constexpr std::int32_t theme_dark = 2;

/// `RunOptions::tempo_override` where the text that was given is no tempo at all.
constexpr double no_tempo = -1;

/// One conversion's options, in the order in which callers know them. `tanrove --help` and the
/// manual tell what each switch does to the project; as it stands here, a record with nothing but
/// `session_path` set is a run without options.
struct RunOptions {
    std::string session_path;
    std::string output_path;                ///< empty: beside the session, under its name
    std::string audio_dir = "Audio Files";  ///< counts where it is given; else beside the session
    bool audio_dir_given = false;
    std::string program_path;  ///< files that belong to the program are looked for beside it
    std::string vstini_path;   ///< empty: REAPER's list where REAPER keeps it
    std::vector<std::string> params_paths;  ///< empty: the tables beside the program
    std::string want_params_path;           ///< empty: no list is written
    /// Quarter notes a minute; 0: the session's own, and so is, with a word about it, what lies at
    /// or outside the bounds of a session's tempo.
    double tempo_override = 0;
    bool keep_alt_takes = true;
    bool list_only = false;
    bool no_stretch = false;
    bool ghost_clips = false;  ///< deleted clips are never recovered: stays false
    bool check_only = false;
    bool keep_fade_clips = false;
    bool no_fades = false;
    bool no_click = false;
    bool write_report = false;
    bool dump_cache = false;
    bool dump_cc = false;
    bool no_sidechain = false;
    bool skip_bypassed_fx = false;
    bool placeholders = true;
    bool overwrite = false;
    bool prefer_vst3 = true;
    bool keep_plugin_midi = false;
    bool aax_slots = true;
    bool skip_missing_fx = false;
    bool predict = false;  ///< accepted, without effect
    bool kontakt_state = true;
    bool prefer_clap = false;
    bool tempo_ramps = false;
    bool keep_frozen = false;
    bool keep_inaudible_midi = false;
    bool truncate_midi_to_clip = false;
    bool no_track_colors = false;
    bool no_clip_colors = false;
    bool plain_fades = false;
    bool plain_master = false;
    bool no_stand_ins = false;
    bool no_ara = false;
    bool skip_hidden_tracks = false;
    bool skip_inactive_tracks = false;
    std::string usage_json_path;  ///< for the command line; a caller in the process writes its own
    bool usage_shared = false;
    std::int32_t bypass_mode = bypass_kept;  ///< not kept in step with `skip_bypassed_fx`
    std::int32_t comments_mode = comments_in_project;
    std::int32_t theme_mode = theme_of_session;
    std::string corpus_dir;  ///< folder for samples of plug-in settings; empty: none are written

    bool operator==(const RunOptions&) const = default;
};

}  // namespace tanrove
