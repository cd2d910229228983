// The damage scan on sessions that were cut, broken in the middle, or left whole.
#include "session/damage_scan.hpp"

#include <gtest/gtest.h>

#include "support/byte_writer.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::SessionBuilder;

DamageReport damage_of(const Bytes& image) {
    return scanDamage(BlockIndex(ByteView(image)));
}

/// A header of 20 bytes and four top-level blocks of 109 bytes; the third one holds a block.
constexpr std::size_t block_bytes = 109;
constexpr std::size_t nested_at = 20 + 2 * block_bytes + 9 + 40;
constexpr std::size_t nested_end = nested_at + 29;

Bytes four_blocks() {
    const Bytes nested = ByteWriter().zeros(40).block(0x2222, Bytes(20)).zeros(31).bytes();
    return ByteWriter()
        .zeros(20)
        .block(0x1111, Bytes(100))
        .block(0x1111, Bytes(100))
        .block(0x1111, nested)
        .block(0x1111, Bytes(100))
        .bytes();
}

TEST(DamageScan, NamesWhatIsWrongAndWhere) {
    const Bytes whole = four_blocks();
    const auto cut_to = [&](std::size_t size) {
        return Bytes(whole.begin(), whole.begin() + static_cast<long>(size));
    };
    const auto with = [&](std::size_t at, std::uint8_t value) {
        Bytes bytes = whole;
        bytes[at] = value;
        return bytes;
    };
    Bytes longer = whole;
    longer.resize(whole.size() + 7);
    const std::size_t second = 20 + block_bytes;
    const std::size_t third = second + block_bytes;
    const std::size_t fourth = third + block_bytes;
    const auto none = DamageVerdict::none;
    const auto damaged = DamageVerdict::damaged;
    const auto incomplete = DamageVerdict::incomplete;
    const struct {
        const char* what;
        Bytes image;
        DamageVerdict verdict;
        std::uint64_t number;
    } cases[] = {
        {"whole", whole, none, 0},
        {"nine bytes", Bytes(9, 'Z'), none, 0},
        {"no block at all", Bytes(300), none, 0},
        {"an empty file", {}, none, 0},
        {"bytes behind the last block", longer, incomplete, 7},
        {"cut between two blocks", cut_to(fourth), none, 0},
        {"cut in the last block", cut_to(fourth + 60), incomplete, 60},
        {"cut in a header", cut_to(fourth + 6), incomplete, 6},
        {"cut behind a nested block", cut_to(nested_end + 10), incomplete, 10},
        {"a cut at a nested block's end hides itself", cut_to(nested_end), damaged, third},
        {"a marker lost", with(second, 'Y'), damaged, second},
        {"a size of zero", with(third + 3, 0), damaged, third},
        {"a size that leads astray", with(second + 3, 90), damaged, second + 97},
        {"a size past the end", with(second + 6, 0x40), damaged, second},
        {"a type that is none", with(fourth + 2, 1), incomplete, whole.size() - fourth},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const DamageReport report = damage_of(c.image);
        EXPECT_EQ(report.verdict, c.verdict) << damage_word(report.verdict);
        EXPECT_EQ(report.trailing_bytes, c.verdict == incomplete ? c.number : 0);
        EXPECT_EQ(report.break_at, c.verdict == damaged ? c.number : 0);
        if (c.verdict == damaged) {
            EXPECT_DOUBLE_EQ(report.break_percent, 100.0 * static_cast<double>(c.number) /
                                                       static_cast<double>(c.image.size()));
        }
    }
}

TEST(DamageScan, TheLastBlockMustHoldAByteToCount) {
    const Bytes image = ByteWriter().zeros(20).block(0x1111, Bytes(10)).block(0x1111, {}).bytes();
    EXPECT_EQ(damage_of(image).verdict, DamageVerdict::incomplete);
    EXPECT_EQ(damage_of(image).trailing_bytes, 9U);
}

TEST(DamageScan, CallsABuiltSessionWholeAndEveryCutOfItNot) {
    const Bytes image = SessionBuilder().audio_file({"a.wav", 100}).image();
    EXPECT_EQ(damage_of(image).verdict, DamageVerdict::none);
    const std::size_t last_block = image.size() - builder::product_block({}).size();
    for (std::size_t size = last_block + 1; size < image.size(); ++size) {
        SCOPED_TRACE(size);
        const Bytes cut(image.begin(), image.begin() + static_cast<long>(size));
        EXPECT_EQ(damage_of(cut).verdict, DamageVerdict::incomplete);
        EXPECT_EQ(damage_of(cut).trailing_bytes, size - last_block);
    }
}

}  // namespace
}  // namespace tanrove
