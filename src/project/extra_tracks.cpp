// Tracks with fewer lines than those of the edit window: they have no items, folders or groups.
#include "project/extra_tracks.hpp"

#include <cstdint>

#include "base/guid.hpp"
#include "project/envelope_text.hpp"
#include "project/fx_chain_text.hpp"
#include "project/quoted_text.hpp"
#include "project/receive_text.hpp"

namespace tanrove {

namespace {

// Seeds of the identifiers, apart from those of the other tracks.
constexpr std::uint32_t strip_track_seed = 60001;
constexpr std::uint32_t strip_track_id_seed = 61001;
constexpr std::uint32_t solo_track_seed = 69999;

constexpr int dual_pan_mode = 6;

void write_strip_mixer(TextSink& out, const TrackPlan& plan) {
    const MixerPlan& mixer = plan.mixer;
    const bool dual_pan = plan.pan_mode == dual_pan_mode;
    if (dual_pan) {
        out.line(2, "VOLPAN %.6f %g -1 %.6f %.6f", printable(mixer.gain), printable(mixer.pan),
                 printable(mixer.dual_pan_left), printable(mixer.dual_pan_right));
    } else {
        out.line(2, "VOLPAN %.6f %g -1 -1 1", printable(mixer.gain), printable(mixer.pan));
    }
    out.line(2, "MUTESOLO %d %d %d", plan.muted ? 1 : 0, mixer.soloed ? 2 : 0,
             mixer.solo_safe ? 1 : 0);
    out.line(2, "IPHASE %d", mixer.polarity_inverted ? 1 : 0);
    out.line(2, "ISBUS 0 0");
    if (dual_pan) out.line(2, "PANMODE %d", dual_pan_mode);
}

void write_strip_track(TextSink& out, const TrackPlan& plan, const ChainPlan& chain,
                       std::uint32_t number, WrittenTallies& tallies) {
    out.line(1, "<TRACK %s", guid(strip_track_seed + number).c_str());
    out.line(2, "NAME %s", quoted(plan.name).c_str());
    out.line(2, "PEAKCOL %lu", static_cast<unsigned long>(plan.colour));
    out.line(2, "BEAT -1");
    out.line(2, "AUTOMODE %d", plan.mixer.automation_mode);
    write_strip_mixer(out, plan);
    out.line(2, "FREEMODE 0");
    out.line(2, "TRACKHEIGHT %d 0 0 0 0 0 0", plan.height_pixels);
    out.line(2, "INQ 0 0 0 0.5 100 0 0 100");
    out.line(2, "NCHAN 2");
    out.line(2, "FX 1");
    out.line(2, "TRACKID %s", guid(strip_track_id_seed + number).c_str());
    out.line(2, "MAINSEND %d 0", plan.mixer.plays_to_parent ? 1 : 0);
    write_fx_chain(out, chain_level, track_chain_tag, chain);
    tallies.send_points += write_sends(out, plan);
    write_track_envelopes(out, plan, tallies);
    out.line(1, ">");
    ++tallies.tracks;
}

}  // namespace

void write_strip_tracks(TextSink& out, const std::vector<TrackPlan>& strips,
                        std::span<const ChainPlan> chains, WrittenTallies& tallies) {
    for (std::size_t i = 0; i < strips.size(); ++i) {
        write_strip_track(out, strips[i], chain_of(chains, i), static_cast<std::uint32_t>(i),
                          tallies);
    }
}

void write_solo_track(TextSink& out) {
    out.line(1, "<TRACK %s", guid(solo_track_seed).c_str());
    out.line(2, "NAME \"Pro Tools solo (the soloed tracks were muted)\"");
    out.line(2, "VOLPAN 1 0 -1 -1 1");
    out.line(2, "MUTESOLO 0 2 0");
    out.line(2, "IPHASE 0");
    out.line(2, "ISBUS 0 0");
    out.line(2, "NCHAN 2");
    out.line(2, "MAINSEND 1 0");
    out.line(1, ">");
}

}  // namespace tanrove
