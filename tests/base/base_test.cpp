// Bytes, text, identifiers and paths: the edges that every other folder leans on.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <clocale>
#include <cmath>
#include <limits>
#include <random>

#include "base/base64.hpp"
#include "base/byte_view.hpp"
#include "base/c_locale.hpp"
#include "base/formatted_text.hpp"
#include "base/guid.hpp"
#include "base/paths.hpp"
#include "base/text_sink.hpp"

namespace tanrove {
namespace {

TEST(ByteView, NeverReadsPastItsEnd) {
    const std::array<std::uint8_t, 4> bytes = {0x01, 0x02, 0x03, 0x04};
    const ByteView view(bytes);
    EXPECT_EQ(view.u32(0), 0x04030201U);
    EXPECT_EQ(view.u32(1), 0U);
    EXPECT_EQ(view.number(1, 3), 0x040302U);
    const auto far = std::numeric_limits<std::size_t>::max();
    EXPECT_FALSE(view.holds(far, 2));
    EXPECT_FALSE(view.holds(2, far));
    EXPECT_EQ(view.u8(far), 0);
    EXPECT_FALSE(view.text(3, 2).has_value());
    EXPECT_EQ(view.window(2, far).size(), 2U);
    EXPECT_EQ(view.find(0x03, far), ByteView::npos);
    EXPECT_EQ(ByteView().find("x", 0), ByteView::npos);
}

TEST(FormattedText, KeepsLongTextsWhole) {
    for (const std::size_t length : {4095U, 4096U, 4097U, 100000U}) {
        const std::string text(length, 'x');
        EXPECT_EQ(formatted("<%s>", text.c_str()), "<" + text + ">");
    }
}

TEST(TextSink, PrintsNumbersToTheByteAsPrintfDoes) {
    static constexpr char format[] = "%.10f %.9f %.6f %.0f %f %g %.10g %s%% %d %u %lu";
    std::mt19937_64 random(7);
    for (int i = 0; i < 12000; ++i) {
        const auto bits = random();
        const double few = static_cast<double>(bits >> 40) * (i % 8 < 4 ? 1 : -1);
        const double x = i % 4 == 0   ? std::bit_cast<double>(bits)
                         : i % 4 == 1 ? few / 48000
                         : i % 4 == 2 ? few / 2048  // half of the last digit among them
                                      : std::ldexp(few, -i % 160);
        std::string text;
        TextSink(text).line(1, format, x, x, x, x, x, x, x, "a", i, 8U, 9UL);
        ASSERT_EQ(text, "  " + formatted(format, x, x, x, x, x, x, x, "a", i, 8U, 9UL) + "\n");
    }
    std::string text;
    TextSink(text).line(0, "%02x %s %.3s", 10, "of", "printf's own");
    EXPECT_EQ(text, "0a of pri\n");
}

TEST(CLocale, NumbersHavePointsWhateverTheHostUses) {
    const char* host = std::setlocale(LC_ALL, "de_DE.UTF-8");
    if (host == nullptr) GTEST_SKIP() << "no locale with a decimal comma on this machine";
    {
        const CLocaleScope plain;
        EXPECT_EQ(formatted("%.2f", 1.5), "1.50");
    }
    EXPECT_EQ(formatted("%.2f", 1.5), "1,50");
    std::setlocale(LC_ALL, "C");
}

TEST(Guid, IsAFunctionOfItsSeed) {
    // Worked out by hand for seed 1: a = 0x9E3779B1 + 0x9E3779B9 = 0x3C6EF36A.
    EXPECT_EQ(guid(1).substr(0, 10), "{3C6EF36A-");
    EXPECT_EQ(guid(1).size(), 38U);
    EXPECT_NE(guid(1), guid(2));
    EXPECT_EQ(guid(0), guid(0));
}

TEST(Base64, PadsToFours) {
    const std::array<std::uint8_t, 7> evaw = {0x65, 0x76, 0x61, 0x77, 0x20, 0x00, 0x01};
    EXPECT_EQ(base64(evaw), "ZXZhdyAAAQ==");
    EXPECT_EQ(base64(std::span(evaw).first(6)), "ZXZhdyAA");
    EXPECT_EQ(base64(std::span(evaw).first(5)), "ZXZhdyA=");
    EXPECT_EQ(base64({}), "");
}

TEST(Paths, TheExtensionStandsBehindTheLastSlash) {
    const struct {
        const char* path;
        const char* folder;
        const char* stem;
    } cases[] = {
        {"a.b/c", "a.b", "a.b/c"},
        {"a.b/c.ptx", "a.b", "a.b/c"},
        {"C:\\x.y\\song", "C:\\x.y", "C:\\x.y\\song"},
        {"song.v2.ptx", ".", "song.v2"},
        {"song", ".", "song"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(folder_of(c.path), c.folder);
        EXPECT_EQ(without_extension(c.path), c.stem);
    }
    EXPECT_FALSE(can_be_read("/"));
}

TEST(TextSink, TellsOfAFullDevice) {
    std::FILE* full = std::fopen("/dev/full", "wb");
    if (full == nullptr) GTEST_SKIP() << "no /dev/full on this machine";
    TextSink sink(full);
    sink.line(0, "%s", std::string(100000, 'x').c_str());
    sink.flush();
    EXPECT_TRUE(sink.failed());
    std::fclose(full);
}

}  // namespace
}  // namespace tanrove
