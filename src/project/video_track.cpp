// The video track, line group by line group. It is not sent to the master: Pro Tools plays no sound
// from a video track.
#include "project/video_track.hpp"

#include <cstdint>
#include <set>

#include "base/guid.hpp"
#include "project/quoted_text.hpp"
#include "project/video_pass.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t video_track_id_seed = 71000;

void write_head(TextSink& out, const VideoTrackPlan& track, std::uint32_t number) {
    out.line(1, "<TRACK %s", guid(video_track_seed + number).c_str());
    out.line(2, "NAME %s", quoted(track.name).c_str());
    out.line(2, "PEAKCOL %lu", static_cast<unsigned long>(track.colour));
    out.line(2, "BEAT -1");
    out.line(2, "AUTOMODE 0");
    out.line(2, "VOLPAN 1.000000 0 -1 -1 1");
    out.line(2, "MUTESOLO 0 0 0");
    out.line(2, "IPHASE 0");
    out.line(2, "ISBUS 0 0");
    if (track.hidden) out.line(2, "SHOWINMIX 0 0.6667 0.5 0 0.5 0 0 0 0");
    out.line(2, "FREEMODE 0");
    out.line(2, "TRACKHEIGHT %d 0 0 0 0 0 0", track.height_pixels);
    out.line(2, "INQ 0 0 0 0.5 100 0 0 100");
    out.line(2, "NCHAN 2");
    out.line(2, "FX 1");
    out.line(2, "TRACKID %s", guid(video_track_id_seed + number).c_str());
    out.line(2, "PERF 0");
    out.line(2, "MIDIOUT -1 -1");
    out.line(2, "MAINSEND 0 0");
}

void write_item(TextSink& out, const VideoItem& item, const std::string& path) {
    out.line(2, "<ITEM");
    out.line(3, "POSITION %.10f", item.start);
    out.line(3, "SNAPOFFS 0");
    out.line(3, "LENGTH %.10f", item.length);
    out.line(3, "LOOP 0");
    out.line(3, "ALLTAKES 0");
    out.line(3, "FADEIN 1 0 0 1 0 0 0");
    out.line(3, "FADEOUT 1 0 0 1 0 0 0");
    out.line(3, "MUTE 0 0");
    if (item.locked) out.line(3, "LOCK 1");
    out.line(3, "NAME %s", quoted(item.name).c_str());
    out.line(3, "VOLPAN 1 0 1 -1");
    out.line(3, "SOFFS %.10f", item.source_offset);
    if (item.colour) out.line(3, "COLOR %lu R", static_cast<unsigned long>(*item.colour));
    out.line(3, "PLAYRATE 1 1 0 -1 0 0.0025");
    out.line(3, "CHANMODE 0");
    out.line(3, "<SOURCE VIDEO");
    out.line(4, "FILE %s", quoted(path).c_str());
    out.line(3, ">");
    out.line(2, ">");
}

}  // namespace

void write_video_tracks(TextSink& out, const std::vector<VideoTrackPlan>& tracks,
                        MovieSearch& movies, VideoTallies& tallies, WrittenTallies& written) {
    std::uint32_t number = 0;
    std::set<std::string> missing, elsewhere;
    for (const VideoTrackPlan& track : tracks) {
        write_head(out, track, number++);
        for (const VideoItem& item : track.items) {
            const MoviePath& movie = movies.find(item.movie);
            if (!movie.found) missing.insert(item.movie);
            if (movie.elsewhere) elsewhere.insert(movie.path);
            if (item.locked) ++written.locked_clips;
            ++tallies.items;
            count_untold_path(movie.path, written);
            write_item(out, item, movie.path);
        }
        out.line(1, ">");
        ++tallies.tracks;
    }
    tallies.missing_movies.assign(missing.begin(), missing.end());
    tallies.movies_elsewhere.assign(elsewhere.begin(), elsewhere.end());
}

}  // namespace tanrove
