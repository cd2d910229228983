// `AUXRECV` lines: source track, mode, gain, pan, mute, three switches, source channels,
// destination channels, and a tail that is REAPER's default of every receive.
#include "project/receive_text.hpp"

#include "base/formatted_text.hpp"
#include "project/envelope_text.hpp"
#include "project/quoted_text.hpp"

namespace tanrove {

namespace {

/// REAPER finds a receive's envelopes by its place among all receives of the track.
int write_receive_envelopes(TextSink& out, const ReceivePlan& receive, std::size_t place) {
    int points = 0;
    for (const EnvelopePlan& envelope : receive.envelopes) {
        const std::string block =
            formatted("%s %d", envelope.block.c_str(), static_cast<int>(place));
        points += write_envelope(out, track_envelope_level, block, envelope);
    }
    return points;
}

}  // namespace

int write_key_receives(TextSink& out, const TrackPlan& plan) {
    int points = 0;
    std::size_t place = 0;
    for (const ReceivePlan& key : plan.key_receives) {
        out.line(2, "AUXRECV %d %d %.10g 0 %d 0 0 0 %d 31:U 4177951 -1 ''",
                 static_cast<int>(key.source), key.mode, printable(key.gain), key.muted ? 1 : 0,
                 key.destination_channel);
        points += write_receive_envelopes(out, key, place++);
    }
    return points;
}

void write_channel_receives(TextSink& out, const TrackPlan& plan) {
    for (const ChannelReceive& receive : plan.channel_receives) {
        out.line(2, "AUXRECV %d 0 1 0 0 0 0 %d %d 31:U 4177951 -1 ''",
                 static_cast<int>(receive.source), receive.width_code, receive.destination_code);
    }
}

int write_sends(TextSink& out, const TrackPlan& plan) {
    int points = 0;
    std::size_t place = plan.key_receives.size() + plan.channel_receives.size();
    for (const ReceivePlan& send : plan.receives) {
        out.line(2, "AUXRECV %d %d %.10f %g %d 0 0 %d 0 31:U 4177951 -1 ''",
                 static_cast<int>(send.source), send.mode, printable(send.gain),
                 printable(send.pan), send.muted ? 1 : 0, send.width_code);
        points += write_receive_envelopes(out, send, place++);
    }
    return points;
}

}  // namespace tanrove
