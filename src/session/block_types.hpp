// What kinds of blocks a session holds, by the content type behind a block's mark. A reader names
// the blocks it looks for from this list; what stands inside of one is told at the head of its
// reader.
#pragma once

#include <cstdint>

namespace tanrove::block_type {

inline constexpr std::uint16_t product = 0x0003;     ///< the program that saved the session
inline constexpr std::uint16_t movie = 0x1005;       ///< one movie file
inline constexpr std::uint16_t movie_list = 0x1006;  ///< the session's movie files
inline constexpr std::uint16_t older_midi_region_name = 0x1007;  ///< of an `older_midi_region`
inline constexpr std::uint16_t older_audio_region =
    0x1008;  ///< an audio clip of the clip list, before 10
inline constexpr std::uint16_t older_audio_region_list =
    0x100b;                                                      ///< the audio clip list, before 10
inline constexpr std::uint16_t older_placement_record = 0x100e;  ///< where one clip lies, before 10
inline constexpr std::uint16_t older_placement = 0x100f;         ///< one row of an `older_playlist`
inline constexpr std::uint16_t older_playlist = 0x1011;       ///< the clips of one track, before 10
inline constexpr std::uint16_t older_playlist_list = 0x1012;  ///< all of them
inline constexpr std::uint16_t track_name = 0x1014;       ///< one audio track's name and channels
inline constexpr std::uint16_t track_name_list = 0x1015;  ///< all of them
inline constexpr std::uint16_t plugin_name = 0x1017;  ///< what a plug-in and its maker are called
inline constexpr std::uint16_t io_path = 0x1021;      ///< one bus, input or output
inline constexpr std::uint16_t session_settings = 0x1028;  ///< rate, bit depth and their like
inline constexpr std::uint16_t channel_record = 0x1029;    ///< the mixer's numbers for one channel
inline constexpr std::uint16_t track_attributes = 0x102d;  ///< a track's flags in the edit window
inline constexpr std::uint16_t plugin_settings = 0x1038;   ///< one plug-in's code and settings
inline constexpr std::uint16_t file_names = 0x103a;        ///< the names of files and their folders
inline constexpr std::uint16_t real_time_grid = 0x103d;    ///< of `real_time_properties`
inline constexpr std::uint16_t placement_record = 0x104f;  ///< where one clip lies and how
inline constexpr std::uint16_t audio_placement = 0x1050;   ///< one row of an `audio_playlist`
inline constexpr std::uint16_t video_placement = 0x1051;   ///< one row of a `video_playlist`
inline constexpr std::uint16_t audio_playlist =
    0x1052;  ///< the clips and fades of one audio playlist
inline constexpr std::uint16_t video_playlist = 0x1053;       ///< the clips of the video track
inline constexpr std::uint16_t audio_playlist_list = 0x1054;  ///< all audio playlists
inline constexpr std::uint16_t midi_placement = 0x1056;       ///< one row of a `midi_playlist`
inline constexpr std::uint16_t midi_playlist = 0x1057;        ///< the clips of one MIDI playlist
inline constexpr std::uint16_t midi_playlist_list = 0x1058;   ///< all MIDI playlists
inline constexpr std::uint16_t midi_streams = 0x2000;         ///< the events of all MIDI clips
inline constexpr std::uint16_t older_midi_region =
    0x2001;  ///< a MIDI clip of the clip list, before 10
inline constexpr std::uint16_t older_midi_region_list = 0x2002;  ///< the MIDI clip list, before 10
inline constexpr std::uint16_t midi_output_list = 0x2004;  ///< the MIDI outputs of this machine
inline constexpr std::uint16_t midi_output = 0x2005;       ///< one device
inline constexpr std::uint16_t midi_output_name = 0x2006;  ///< its name
inline constexpr std::uint16_t voice = 0x200b;             ///< a track's voice
inline constexpr std::uint16_t track_display = 0x2015;     ///< a track as the edit window shows it
inline constexpr std::uint16_t tempo_map = 0x2028;         ///< all tempo events
inline constexpr std::uint16_t meter_map = 0x2029;         ///< all meter events
inline constexpr std::uint16_t group = 0x202a;             ///< one mix or edit group
inline constexpr std::uint16_t midi_track_settings =
    0x2036;                                        ///< a MIDI track's output, program and offsets
inline constexpr std::uint16_t timecode = 0x204d;  ///< rate and start
inline constexpr std::uint16_t click = 0x2055;     ///< whether the click is on
inline constexpr std::uint16_t grid_and_nudge = 0x2066;     ///< the values of both
inline constexpr std::uint16_t memory_location = 0x2077;    ///< one marker or selection
inline constexpr std::uint16_t midi_output_group = 0x2086;  ///< a block that only holds others
inline constexpr std::uint16_t midi_output_port = 0x208c;   ///< likewise
inline constexpr std::uint16_t newer_movie_list =
    0x2096;  ///< the session's movie files, of later sessions
inline constexpr std::uint16_t midi_output_node = 0x2097;   ///< where an output leads
inline constexpr std::uint16_t colour_settings = 0x20a2;    ///< the colour codings chosen
inline constexpr std::uint16_t audio_colour_mark = 0x2104;  ///< stands in front of a track's colour
inline constexpr std::uint16_t video_colour_mark = 0x2105;  ///< likewise, of the video track
inline constexpr std::uint16_t folder_table = 0x210c;       ///< which track lies in which folder
inline constexpr std::uint16_t midi_port = 0x2401;          ///< a port of an output
inline constexpr std::uint16_t group_list_number = 0x2423;  ///< which list one clip group plays
inline constexpr std::uint16_t group_list_numbers = 0x2424;    ///< all of them
inline constexpr std::uint16_t group_list_table = 0x2428;      ///< the lists that clip groups play
inline constexpr std::uint16_t loop = 0x242b;                  ///< how a placement is looped
inline constexpr std::uint16_t row_anchor = 0x2434;            ///< ties a display to its row
inline constexpr std::uint16_t real_time_properties = 0x2502;  ///< of one MIDI playlist
inline constexpr std::uint16_t real_time_defaults = 0x2505;    ///< those of the session
inline constexpr std::uint16_t vca_slot = 0x2514;           ///< the group that a VCA master governs
inline constexpr std::uint16_t strip_table = 0x2519;        ///< the names of all strips
inline constexpr std::uint16_t strip_table_entry = 0x251a;  ///< one of them
inline constexpr std::uint16_t plain_midi_mark = 0x2523;    ///< this is no clip group
inline constexpr std::uint16_t group_attributes = 0x258e;   ///< what the members of a group share
inline constexpr std::uint16_t played_hardware = 0x2600;    ///< an output of one machine
inline constexpr std::uint16_t played_hardware_list =
    0x2601;                                        ///< those that an `own_path` plays to
inline constexpr std::uint16_t own_path = 0x2602;  ///< one bus or output of the session's own table
inline constexpr std::uint16_t own_path_table = 0x2603;  ///< the whole table
inline constexpr std::uint16_t lane = 0x260a;            ///< one automated control of a strip
inline constexpr std::uint16_t control_lane = 0x260b;    ///< one automated control of a plug-in
inline constexpr std::uint16_t lane_group = 0x260c;      ///< the lanes of one channel
inline constexpr std::uint16_t send_channel =
    0x260d;  ///< the mixer's numbers for one channel of a send
inline constexpr std::uint16_t path_reference =
    0x260e;                                          ///< the path that something plays to or takes
inline constexpr std::uint16_t slot_part = 0x260f;   ///< one control of an insert
inline constexpr std::uint16_t midi_mixer = 0x2611;  ///< a MIDI track's mixer numbers
inline constexpr std::uint16_t hardware_insert = 0x2612;    ///< outboard gear in an insert
inline constexpr std::uint16_t slot_record = 0x2614;        ///< the controls of an insert
inline constexpr std::uint16_t plugin_slot = 0x2616;        ///< the place of a plug-in
inline constexpr std::uint16_t other_plugin_slot = 0x2618;  ///< likewise
inline constexpr std::uint16_t strip_name = 0x2619;         ///< name and identity of a strip row
inline constexpr std::uint16_t audio_row = 0x261b;          ///< the strip of an audio or aux track
inline constexpr std::uint16_t strip_identity = 0x261c;     ///< name, kind and switches of a strip
inline constexpr std::uint16_t master_row = 0x261d;         ///< the strip of a master fader
inline constexpr std::uint16_t aux_row = 0x261e;         ///< what holds the `audio_row` of an aux
inline constexpr std::uint16_t vca_row = 0x261f;         ///< the strip of a VCA master
inline constexpr std::uint16_t midi_row = 0x2620;        ///< the strip of a MIDI track
inline constexpr std::uint16_t instrument_row = 0x2621;  ///< the strip of an instrument track
inline constexpr std::uint16_t video_row = 0x2623;       ///< the strip of a video track
inline constexpr std::uint16_t clip = 0x2628;          ///< name, offset, length and place of a clip
inline constexpr std::uint16_t audio_region = 0x2629;  ///< an audio clip of the clip list
inline constexpr std::uint16_t audio_region_list = 0x262a;  ///< the audio clip list
inline constexpr std::uint16_t clip_group =
    0x262b;  ///< a clip group, and a MIDI clip of the same list
inline constexpr std::uint16_t clip_group_table = 0x262c;   ///< all of them
inline constexpr std::uint16_t video_region = 0x262d;       ///< a video clip of the clip list
inline constexpr std::uint16_t video_region_list = 0x262e;  ///< the video clip list
inline constexpr std::uint16_t alternate_playlist_table =
    0x2632;                                                ///< playlists that are not in use
inline constexpr std::uint16_t midi_region = 0x2633;       ///< a MIDI clip of the clip list
inline constexpr std::uint16_t midi_region_list = 0x2634;  ///< the MIDI clip list
inline constexpr std::uint16_t warp_map = 0x2636;          ///< the elastic audio markers of a clip
inline constexpr std::uint16_t clip_gain_table = 0x2637;   ///< the clip gain lines
inline constexpr std::uint16_t picture_settings = 0x270a;  ///< the rate of the session's picture

}  // namespace tanrove::block_type
