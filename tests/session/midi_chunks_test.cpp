// Controllers and SysEx of the streams, and their dump.
#include "session/midi_chunks.hpp"

#include <gtest/gtest.h>

#include <sstream>

#include "session/midi_chunk_dump.hpp"
#include "session/midi_streams.hpp"
#include "support/damaged_sessions.hpp"
#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::MidiStreamSpec;

Bytes image_of(const Bytes& blocks) {
    return ByteWriter().zeros(20).raw(blocks).zeros(20).bytes();
}

std::vector<MidiChunk> chunks_of(const Bytes& image) {
    return readMidiChunks(BlockIndex{ByteView(image)});
}

const MidiStreamSpec full_stream = {
    .notes = {{480, 240000, 60, 80}, {960, 240000, 62, 80}},
    .controllers = {{0x0702, 480, 100},
                    {0x0702, 500, 90},
                    {1, 490, 0xffffff38},
                    {4, 495, 7},
                    {0x4002, 480, 127}},
    .sysex = {{480, {0xf0, 0x7e, 0xf7}}, {481, {}}, {482, {'M', 'd', 'N', 'L', 'B'}}}};

TEST(ReadMidiChunks, GivesBackControllersAndMessagesStreamByStream) {
    const Bytes image = image_of(builder::midi_streams_block(
        {full_stream, {}, {.notes = {{7}}, .controllers = {{1, 9, 2}}}}));
    const auto chunks = chunks_of(image);
    ASSERT_EQ(chunks.size(), 3U);
    EXPECT_EQ(read_midi_streams(ByteView(image), parseBlockTree(ByteView(image))).size(), 3U);
    EXPECT_EQ(chunks[0].note_count, 2U);
    EXPECT_EQ(chunks[0].origin, 1000000000480U);
    EXPECT_EQ(chunks[1].note_count, 0U);
    EXPECT_EQ(chunks[1].origin, 1000000000000U);
    ASSERT_EQ(chunks[0].controllers.size(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
        const auto& expected = full_stream.controllers[i];
        EXPECT_EQ(chunks[0].controllers[i].kind, expected.kind);
        EXPECT_EQ(chunks[0].controllers[i].position,
                  1000000000000U + static_cast<std::uint64_t>(expected.position));
        EXPECT_EQ(chunks[0].controllers[i].value, expected.value);
    }
    ASSERT_EQ(chunks[0].sysex.size(), 3U) << "a message may hold what a record begins with";
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(chunks[0].sysex[i].data, full_stream.sysex[i].data);
    EXPECT_EQ(chunks[2].controllers.size(), 1U);
    EXPECT_EQ(midi_chunk_dump(chunks),
              "chunk 0   notes 2     origin 1000000000480\n"
              "    pitch bend       count 1\n"
              "    aftertouch       count 1\n"
              "    CC 007           count 2\n"
              "    CC 064           count 1\n"
              "chunk 1   notes 0     origin 1000000000000\n"
              "chunk 2   notes 1     origin 1000000000007\n"
              "    pitch bend       count 1\n"
              "3 chunks, 5 streams with data, 6 events\n");
}

TEST(ReadMidiChunks, ListsBehindANoteListOutsideAnyBlockBelongToNoStream) {
    const Bytes lists = ByteWriter()
                            .raw(builder::controller_list({{1, 2, 3}}))
                            .raw(builder::sysex_list({{4, {5}}}))
                            .bytes();
    const Bytes stream = builder::midi_streams_block({{.notes = {{0}}}});
    const Bytes stray = builder::note_list({.notes = {{0}}});
    const auto count = [](const Bytes& blocks) {
        const auto chunks = chunks_of(image_of(blocks));
        EXPECT_EQ(chunks.size(), 1U);
        return chunks.at(0).controllers.size() + chunks.at(0).sysex.size();
    };
    EXPECT_EQ(count(ByteWriter().raw(lists).raw(stream).bytes()), 0U);
    EXPECT_EQ(count(ByteWriter().raw(stream).raw(stray).raw(lists).bytes()), 0U);
    EXPECT_EQ(count(ByteWriter().raw(stream).raw(lists).bytes()), 2U);
}

TEST(ReadMidiChunks, OneWrongByteCostsOneList) {
    const Bytes sysex = builder::sysex_list({{4, {5, 6}}});
    const Bytes controllers = builder::controller_list({{0x0702, 2, 3}});
    const auto read = [&](const Bytes& first) {
        const Bytes notes = builder::note_list({.notes = {{0}}});
        const auto chunks = chunks_of(image_of(builder::block(
            0x2000, ByteWriter().raw(notes).raw(first).raw(sysex).raw(controllers).bytes())));
        return std::pair(chunks.at(0).sysex.size(), chunks.at(0).controllers.size());
    };
    using Counts = std::pair<std::size_t, std::size_t>;
    const auto damaged = [](Bytes list, std::size_t at, std::uint8_t value) {
        list.at(at) = value;
        return list;
    };
    EXPECT_EQ(read(sysex), Counts(2, 1));
    EXPECT_EQ(read(controllers), Counts(1, 2));
    const std::vector<std::pair<std::size_t, std::uint8_t>> in_sysex = {
        {10, 'x'}, {17, 24}, {17, 26}, {17, 3}, {21, 2},
        {21, 0},   {33, 0},  {35, 8},  {40, 1}, {40, 3}};
    for (const auto& [at, value] : in_sysex) {
        EXPECT_EQ(read(damaged(sysex, at, value)), Counts(1, 1)) << at;
    }
    // The kind's record has 6 bytes, so that the events' record begins at 27.
    const decltype(in_sysex) in_controllers = {{11, 'x'}, {17, 1},  {17, 7}, {21, 3},
                                               {27, 'x'}, {33, 15}, {37, 0}, {37, 2}};
    for (const auto& [at, value] : in_controllers) {
        EXPECT_EQ(read(damaged(controllers, at, value)), Counts(1, 1)) << at;
    }
}

/// The same walk at its plainest: every byte, every test spelled out.
std::vector<MidiChunk> chunks_byte_by_byte(ByteView image) {
    std::vector<std::pair<std::size_t, std::size_t>> spans;
    for (std::size_t p = 0; p + 9 <= image.size(); ++p) {
        if (isBlockAt(image, p, image.size()) && image.u16(p + 7) == 0x2000) {
            spans.emplace_back(p, p + 7 + image.u32(p + 3));
        }
    }
    std::vector<MidiChunk> chunks;
    bool open = false;
    const auto sysex_at = [&](std::size_t p) -> std::size_t {
        const std::uint64_t length = image.u32(p + 17);
        const std::uint64_t end = p + 21 + length;
        if (length < 4 || end > image.size()) return 0;
        std::vector<MidiSysex> events;
        std::size_t e = p + 25;
        for (std::uint32_t i = 0; i < image.u32(p + 21); ++i) {
            const std::uint64_t data = image.u32(e + 15);
            if (e + 19 > end || image.u8(e + 8) != 1 || image.u32(e + 10) != data + 5) return 0;
            if (e + 19 + data > end) return 0;
            const auto bytes = image.window(e + 19, data).span();
            events.push_back({image.number(e, 7), {bytes.begin(), bytes.end()}});
            e += 19 + data;
        }
        if (e != end) return 0;
        for (auto& event : events) chunks.back().sysex.push_back(event);
        return end;
    };
    const auto controllers_at = [&](std::size_t p) -> std::size_t {
        const std::size_t n = image.u32(p + 17);
        const std::uint16_t kind = image.u16(p + 21);
        const int type = kind & 0xff;
        const std::size_t d = p + 21 + n;
        if (n <= 1 || (type != 1 && type != 2 && type != 4) || !image.has(d, "MdCD")) return 0;
        const std::uint64_t c = image.u32(d + 10);
        if (image.u32(d + 6) != c * 12 + 4 || d + 14 + c * 12 > image.size()) return 0;
        for (std::size_t i = 0; i < c; ++i) {
            const std::size_t e = d + 14 + i * 12;
            chunks.back().controllers.push_back({kind, image.number(e, 7), image.u32(e + 8)});
        }
        return d + 14 + c * 12;
    };
    for (std::size_t p = 0; p + 17 <= image.size();) {
        std::size_t end = 0;
        if (image.has(p, "MdNLB")) {
            open = false;
            for (const auto& [start, stop] : spans) open = open || (start < p && p < stop);
            if (open) chunks.push_back({tick_origin, image.u32(p + 11), {}, {}});
            const bool has_origin = image.u32(p + 11) != 0 && image.holds(p + 15, 7);
            if (open && has_origin) chunks.back().origin = image.number(p + 15, 7);
            std::size_t block_end = 0;
            for (const auto& [start, stop] : spans) {
                if (start < p) block_end = std::max(block_end, stop);
            }
            for (end = p + 15; open && end + 35 <= block_end; end += 35) {
                if ((end - p - 15) / 35 == image.u32(p + 11)) break;
            }
            if (!open) end = 0;
        } else if (open && image.has(p, "MdES") && image.has(p + 10, "MdTEL")) {
            end = sysex_at(p);
        } else if (open && image.has(p, "MdCDS") && image.has(p + 11, "Mdss")) {
            end = controllers_at(p);
        }
        p = end != 0 ? end : p + 1;
    }
    return chunks;
}

std::string as_text(const std::vector<MidiChunk>& chunks) {
    std::ostringstream text;
    for (const auto& chunk : chunks) {
        text << "origin " << chunk.origin << " notes " << chunk.note_count << '\n';
        for (const auto& c : chunk.controllers) {
            text << c.kind << ' ' << c.position << ' ' << c.value << '\n';
        }
        for (const auto& message : chunk.sysex) {
            text << message.position << ' ';
            text.write(reinterpret_cast<const char*>(message.data.data()),
                       static_cast<std::streamsize>(message.data.size()));
        }
    }
    return text.str();
}

void compare_walks(const Bytes& image) {
    ASSERT_EQ(as_text(chunks_of(image)), as_text(chunks_byte_by_byte(ByteView(image))));
}

TEST(ReadMidiChunks, DamagedStreamsReadAsAWalkOverEveryByteDoes) {
    const Bytes good =
        image_of(ByteWriter()
                     .raw(builder::midi_streams_block({full_stream, {}, full_stream}))
                     .raw(builder::midi_streams_block({{.controllers = {{1, 2, 3}, {4, 5, 6}}}}))
                     .bytes());
    builder::for_each_damage(good, 1, compare_walks);
}

TEST(ReadMidiChunks, RealSessionsReadAsAWalkOverEveryByteDoes) {
    for (const auto* file :
         {"RegionTest.ptx", "TempoTimeKeySig.ptx", "Untitled32.ptx", "TestPTX.ptx"}) {
        TANROVE_REAL_SESSION(image, file);
        compare_walks(image);
        const bool has_midi = std::string(file) == "TestPTX.ptx";
        EXPECT_EQ(midi_chunk_dump(chunks_of(image)),
                  has_midi ? "chunk 0   notes 16    origin 1000000000000\n"
                             "chunk 1   notes 9     origin 1000000000000\n"
                             "chunk 2   notes 4     origin 1000000000000\n"
                             "3 chunks, 0 streams with data, 0 events\n"
                           : "0 chunks, 0 streams with data, 0 events\n")
            << file;
    }
}

}  // namespace
}  // namespace tanrove
