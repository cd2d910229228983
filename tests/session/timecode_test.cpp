// Frame rate, session start, and the row of the table that the two records name together.
#include "session/timecode.hpp"

#include <gtest/gtest.h>

#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::timecode_block;

TEST(Timecode, ReadsBothForms) {
    const Bytes image = builder::SessionBuilder().timecode({7, 54000, true, 13, 108000}).image();
    const BlockIndex index{ByteView(image)};
    ASSERT_TRUE(readFrameRate(index));
    EXPECT_EQ(readFrameRate(index)->base_code, 7U);
    EXPECT_EQ(readFrameRate(index)->start_frames, 54000U);
    ASSERT_TRUE(readExtendedTimecode(index));
    EXPECT_EQ(readExtendedTimecode(index)->code, 13U);
    EXPECT_EQ(readExtendedTimecode(index)->start_frames, 108000U);
}

TEST(Timecode, AFormCountsOnlyWhereItLiesInItsBlock) {
    const Bytes whole = timecode_block({9, 24, true, 15, 48});
    const struct {
        std::size_t end;
        bool base, extended;
    } cases[] = {{28, false, false}, {29, true, false}, {56, true, false}, {57, true, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.end);
        Bytes cut = builder::block(
            0x204d, Bytes(whole.begin() + 9, whole.begin() + static_cast<std::ptrdiff_t>(c.end)));
        cut.resize(cut.size() + 40, 1);  // other bytes behind the block
        const BlockIndex index{ByteView(cut)};
        EXPECT_EQ(readFrameRate(index).has_value(), c.base);
        EXPECT_EQ(readExtendedTimecode(index).has_value(), c.extended);
    }
    // A text of 64 bytes may stand in front of the second form, no longer one.
    const Bytes roomy(whole.begin() + 9, whole.end());
    Bytes padded = builder::block(0x204d, builder::ByteWriter().raw(roomy).zeros(99).bytes());
    padded[34] = 64;
    EXPECT_TRUE(readExtendedTimecode(BlockIndex(ByteView(padded))));
    padded[34] = 65;
    EXPECT_FALSE(readExtendedTimecode(BlockIndex(ByteView(padded))));
}

TEST(Timecode, TheRowFollowsFromCodesAndStarts) {
    const struct {
        FrameRate base;
        std::optional<ExtendedTimecode> extended;
        std::string_view short_name;  // empty: no row
    } cases[] = {
        {{5, 0}, {}, "29.97 drop"},
        {{9, 0}, {}, "23.976"},
        {{4, 0}, {}, ""},
        {{7, 108000}, {{7, 108000}}, "30"},
        {{7, 108000}, {{13, 216000}}, "60"},
        {{7, 108000}, {{13, 216001}}, "60"},  // half a base frame is cut
        {{7, 108000}, {{13, 216002}}, ""},
        {{7, 108000}, {{20, 432000}}, "120"},
        {{7, 108000}, {{14, 216000}}, ""},  // a rate of another base
        {{5, 30}, {{19, 120}}, "119.88 drop"},
        {{7, 0}, {{0, 0}}, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.short_name);
        const TimecodeInfo* row = find_timecode(c.base, c.extended);
        ASSERT_EQ(row != nullptr, !c.short_name.empty());
        if (row != nullptr) {
            EXPECT_EQ(row->short_name, c.short_name);
        }
    }
    EXPECT_EQ(find_timecode({5, 0}, {{12, 0}})->falls_back_to, "59.94");
    EXPECT_EQ(find_timecode({5, 0}, {{12, 0}})->name, "59.94 fps drop frame");
}

}  // namespace
}  // namespace tanrove
