// Old sessions as real ones store them. In big-endian ones every field is turned round except the
// clip's own numbers, which take as many bytes as they need and stay little-endian.
#include "support/records/old_session_records.hpp"

namespace tanrove::builder {

namespace {

constexpr std::uint64_t tick_base = 1000000000000;

std::size_t bytes_needed(std::uint64_t value) {
    std::size_t width = 0;
    for (; value != 0; value >>= 8) ++width;
    return width;
}

/// Writes the blocks of one session in its byte order.
class OldSessionWriter {
public:
    explicit OldSessionWriter(const OldSessionSpec& session) : session_(session) {}

    ByteWriter writer() const { return ByteWriter(session_.big_endian); }
    Bytes block(std::uint16_t type, const ByteWriter& payload) const {
        return writer().block(type, payload.bytes()).bytes();
    }

    Bytes clip_numbers(std::uint64_t first, std::uint64_t second, std::uint64_t third) const {
        const std::size_t a = bytes_needed(first);
        const std::size_t b = bytes_needed(second);
        const std::size_t c = bytes_needed(third);
        const ByteWriter numbers = ByteWriter().number(first, a).number(second, b).number(third, c);
        return writer().u8(0).u32(a << 4 | b << 12 | c << 20).raw(numbers.bytes()).bytes();
    }

    Bytes opening() const {
        return writer()
            .raw(block(0x0000, writer().u16(0)))
            .raw(block(0x0003, writer().u8(0).counted("Pro Tools LE").u32(5).u32(1)))
            .raw(block(0x2067, writer().zeros(18).u32(10).u32(0).counted("Info #1")))
            .raw(block(0x1028, writer().u8(4).u8(16).u32(session_.rate_hz).zeros(5)))
            .bytes();
    }

    Bytes files() const {
        ByteWriter entries = writer().u32(1 + session_.files.size());
        entries.u8(1).u32(0xffffffff).counted("Audio Files").zeros(4);
        for (const auto& file : session_.files) {
            entries.u8(2).u32(0).counted(file.name).raw("AIFF");
        }
        ByteWriter list = writer().u32(session_.files.size()).raw(block(0x103a, entries));
        for (const auto& file : session_.files) {
            const std::uint32_t rate = file.rate_hz != 0 ? file.rate_hz : session_.rate_hz;
            const auto format = writer().u32(rate).u8(1).u8(16).u64(file.length_samples).zeros(8);
            list.raw(block(0x1003, writer().u32(1).raw(block(0x1001, format))));
        }
        return block(0x1004, list);
    }

    Bytes regions() const {
        ByteWriter list = writer().u32(session_.regions.size());
        for (const auto& region : session_.regions) {
            const auto numbers = clip_numbers(region.source_offset, region.length, 0);
            const auto inner = block(0x1007, writer().counted(region.name).raw(numbers));
            list.raw(block(0x1008, writer().raw(inner).u32(region.file)));
        }
        return block(0x100b, list);
    }

    Bytes track_names() const {
        ByteWriter list = writer().u32(session_.tracks.size());
        for (const auto& track : session_.tracks) {
            ByteWriter entry = writer().counted(track.name).u8(0).u32(track.channels.size());
            for (const auto channel : track.channels) entry.u16(channel);
            list.raw(block(0x1014, entry));
        }
        return block(0x1015, list);
    }

    Bytes placement(std::uint32_t region, std::uint64_t position, std::uint8_t top_byte) const {
        const std::uint64_t field = position | std::uint64_t{top_byte} << 56;
        return block(0x104f, writer().zeros(2).u32(region).u8(0).u64(field).zeros(20));
    }

    Bytes clip(const OldClipSpec& spec) const {
        if (session_.newer_playlists) {
            return block(0x1050, writer().raw(placement(spec.region, spec.start, 0)).zeros(2));
        }
        const auto numbers = clip_numbers(spec.start, 24000, 0);
        return block(
            0x100f,
            writer().raw(block(0x100e, writer().u16(0).u32(spec.region).raw(numbers))).u8(0));
    }

    Bytes playlists() const {
        ByteWriter list = writer().u32(session_.tracks.size());
        for (const auto& track : session_.tracks) {
            for (std::size_t i = 0; i < track.channels.size(); ++i) {
                ByteWriter channel = writer().counted(track.name).u32(track.clips.size());
                for (const auto& spec : track.clips) channel.raw(clip(spec));
                list.raw(block(session_.newer_playlists ? 0x1052 : 0x1011, channel));
            }
        }
        return block(session_.newer_playlists ? 0x1054 : 0x1012, list);
    }

    Bytes midi() const {
        ByteWriter streams = writer().u32(session_.midi.size());
        ByteWriter regions = writer().u32(session_.midi.size());
        ByteWriter strips = writer();
        ByteWriter rows = writer();
        ByteWriter playlists = writer().u32(session_.midi.size());
        const std::uint64_t origin = tick_base | std::uint64_t{0x40} << 56;
        for (std::size_t i = 0; i < session_.midi.size(); ++i) {
            const OldMidiSpec& midi = session_.midi[i];
            streams.raw("MdNLB").zeros(6).u32(midi.notes);
            for (std::uint32_t note = 0; note < midi.notes; ++note) {
                streams.u64(origin + note * 960000).u8(60).u64(480000).u8(80).zeros(17);
            }
            const auto numbers = clip_numbers(0, midi.notes * 960000, 0);
            const auto named = block(0x1007, writer().counted(midi.region).raw(numbers));
            regions.raw(block(0x2001, writer().raw(named).u32(i)));
            strips.raw(block(0x251a, writer().u16(0).counted(midi.track).zeros(10)));
            rows.raw(block(0x2620, writer().zeros(4)));
            const auto at = tick_base + static_cast<std::uint64_t>(midi.start_ticks);
            const auto clip =
                block(0x1056, writer().raw(placement(static_cast<std::uint32_t>(i), at, 0x40)));
            playlists.raw(block(0x1057, writer().counted(midi.track).u32(1).raw(clip)));
        }
        return writer()
            .raw(block(0x2000, streams))
            .raw(block(0x2002, regions))
            .raw(block(0x2519, strips))
            .raw(block(0x2624, rows))
            .raw(block(0x1058, playlists))
            .bytes();
    }

private:
    const OldSessionSpec& session_;
};

}  // namespace

Bytes old_session_image(const OldSessionSpec& session) {
    const OldSessionWriter parts(session);
    return ByteWriter()
        .raw(file_header(session.big_endian))
        .raw(parts.opening())
        .raw(parts.files())
        .raw(parts.regions())
        .raw(parts.playlists())
        .raw(parts.track_names())
        .raw(parts.midi())
        .bytes();
}

}  // namespace tanrove::builder
