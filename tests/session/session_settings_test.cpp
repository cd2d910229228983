// Audio format, bit depth, pan depth and the click.
#include "session/session_settings.hpp"

#include <gtest/gtest.h>

#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::settings_block;
using builder::settings_block_fixed_offsets;
using builder::SettingsSpec;

struct Settings {
    AudioFormat format = AudioFormat::unknown;
    int bits = 0;
    bool is_float = false;
    int pan_depth = -1;

    bool operator==(const Settings&) const = default;
};

Settings read(const Bytes& image) {
    const BlockIndex index{ByteView(image)};
    const auto depth = readBitDepth(index).value_or(BitDepth{});
    return {readAudioFormat(index), depth.bits, depth.is_float, readPanDepth(index).value_or(-1)};
}

TEST(SessionSettings, ReadsTheValuesBehindAPathOfAnyLength) {
    SettingsSpec spec = {.audio_format = 4, .pan_depth = 3, .is_float = true, .bit_depth = 32};
    const Settings expected = {AudioFormat::aiff, 32, true, 3};
    for (const std::size_t parts : {0U, 1U, 8U, 256U}) {
        SCOPED_TRACE(parts);
        spec.path_parts.assign(parts, "Disk");
        EXPECT_EQ(read(settings_block(spec)), expected);
    }
    EXPECT_EQ(read(settings_block_fixed_offsets(spec)), expected);
}

TEST(SessionSettings, ValuesThatMakeNoSenseBehindThePathAreReadAtTheFixedPlace) {
    const struct {
        std::uint8_t pan_depth, bits;
        bool behind_path;
    } cases[] = {{1, 16, true}, {4, 24, true}, {0, 24, false}, {5, 24, false}, {2, 20, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << int{c.pan_depth} << ' ' << int{c.bits});
        const Bytes path =
            settings_block({.path_parts = {"Disk"}, .pan_depth = c.pan_depth, .bit_depth = c.bits});
        Bytes image = settings_block_fixed_offsets({.pan_depth = 3, .bit_depth = 32});
        for (std::size_t at = 21; at < path.size(); ++at) image[at] = path[at];
        const Settings expected = {AudioFormat::wav, c.behind_path ? c.bits : 32, false,
                                   c.behind_path ? c.pan_depth : 3};
        EXPECT_EQ(read(image), expected);
    }
}

TEST(SessionSettings, AtTheFixedPlaceThePanDepthIsSignedAndTheBitDepthOneOfThree) {
    const Bytes image = settings_block_fixed_offsets({.pan_depth = 0xff, .bit_depth = 20});
    EXPECT_EQ(readPanDepth(BlockIndex(ByteView(image))), -1);
    EXPECT_FALSE(readBitDepth(BlockIndex(ByteView(image))));
    const Bytes whole = settings_block_fixed_offsets({.audio_format = 5, .pan_depth = 2});
    for (const std::size_t bytes : {118U, 119U, 121U, 122U}) {
        SCOPED_TRACE(bytes);
        const auto end = whole.begin() + static_cast<std::ptrdiff_t>(bytes);
        const Settings settings = read(builder::block(0x1028, Bytes(whole.begin() + 9, end)));
        EXPECT_EQ(settings.pan_depth, bytes >= 119 ? 2 : -1);
        EXPECT_EQ(settings.bits, bytes == 122 ? 24 : 0);
        EXPECT_EQ(settings.format, AudioFormat::unknown);
    }
    EXPECT_EQ(read({}), Settings{});
}

TEST(ClickSetting, IsOnOffOrUnknown) {
    Bytes longer = builder::click_block(1);
    longer.push_back(0);
    ++longer[3];
    const struct {
        Bytes image;
        int setting;
    } cases[] = {{builder::SessionBuilder().click(true).image(), 1},
                 {builder::SessionBuilder().click(false).image(), 0},
                 {builder::click_block(2), -1},
                 {{}, -1},
                 {builder::ByteWriter().raw(longer).raw(builder::click_block(0)).bytes(), 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(readClickSetting(BlockIndex(ByteView(c.image))), c.setting);
    }
}

}  // namespace
}  // namespace tanrove
