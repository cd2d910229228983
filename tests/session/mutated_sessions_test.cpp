// Every reader on a session of which one number is a lie: each block's size, each count, and the
// end of the file. Readers keep what they can read; what they may not do is crash, or take memory
// that the image cannot account for.
#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "support/rich_session.hpp"
#include "tools/all_readers.hpp"

namespace tanrove {
namespace {

using namespace builder;

/// Memory of all records for each byte of the image; a good session takes 3.
constexpr std::size_t max_record_bytes_per_image_byte = 5;

/// Numbers that may be counts, and which of them are tried: all of them would take a minute.
constexpr std::uint32_t max_count = 100000;
constexpr std::size_t count_stride = 23;

std::size_t record_bytes(const Bytes& image) {
    std::size_t bytes = 0;
    const BlockIndex index{ByteView(image)};
    for (const Reading& reading : read_everything(index)) bytes += reading.bytes;
    return bytes;
}

/// A session of each family; many small ones, since each block of each is tried with all readers.
class MutatedSessions : public testing::TestWithParam<NamedSession> {
protected:
    /// Tries each lie in place of the number at `at`.
    void expect_bounded_with(std::size_t at, std::initializer_list<std::uint32_t> lies) {
        for (const std::uint32_t lie : lies) {
            Bytes image = good_;
            std::memcpy(image.data() + at, &lie, sizeof lie);
            EXPECT_LE(record_bytes(image), limit_) << lie << " at " << at;
        }
    }

    const Bytes good_ = GetParam().session.image();
    const BlockIndex index_{ByteView(good_)};
    const std::size_t limit_ = max_record_bytes_per_image_byte * good_.size();
};

TEST(AllReaders, EachFindsSomethingInARichSession) {
    const std::set<std::string_view> find_nothing = {"scanDamage", "readNameBindings"};
    const Bytes image = rich_session({}).image();
    const BlockIndex index{ByteView(image)};
    for (const Reading& reading : read_everything(index)) {
        EXPECT_EQ(reading.records > 0, find_nothing.count(reading.reader) == 0) << reading.reader;
    }
}

TEST_P(MutatedSessions, EveryBlocksSizeIsALie) {
    for (const Block& block : index_.blocks().all()) {
        expect_bounded_with(block.at + 3, {0, 1, block.size - 1, block.size + 1, 0xffffffff});
    }
}

TEST_P(MutatedSessions, EveryCountIsALie) {
    std::size_t candidates = 0;
    for (std::size_t at = 0; at + 4 <= good_.size(); ++at) {
        const std::uint32_t count = index_.image().u32(at);
        if (count < 1 || count > max_count || ++candidates % count_stride != 0) continue;
        expect_bounded_with(at, {0, 1, count - 1, count + 1, 0xffffffff});
    }
}

TEST_P(MutatedSessions, TheFileEndsAtABlock) {
    for (const Block& block : index_.blocks().all()) {
        const auto end = good_.begin() + static_cast<std::ptrdiff_t>(block.at);
        EXPECT_LE(record_bytes(Bytes(good_.begin(), end)), limit_) << block.at;
    }
}

INSTANTIATE_TEST_SUITE_P(Families, MutatedSessions, testing::ValuesIn(family_sessions()),
                         [](const auto& family) { return family.param.name; });

}  // namespace
}  // namespace tanrove
