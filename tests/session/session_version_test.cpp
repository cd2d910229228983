// The version that saved a session: at its head, in its product record, or nowhere.
#include "session/session_version.hpp"

#include <gtest/gtest.h>

#include "support/byte_writer.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::SessionBuilder;

SessionVersion version_in(const Bytes& image) {
    return scanSessionVersion(BlockIndex(ByteView(image)));
}

Bytes head(std::string_view product, std::string_view version) {
    return ByteWriter().zeros(30).counted(product).zeros(9).counted(version).zeros(40).bytes();
}

TEST(SessionVersion, ReadsTheTextsAtTheHead) {
    const struct {
        const char* what;
        Bytes image;
        std::string product, version;
        std::int32_t major;
    } cases[] = {
        {"plain", head("Pro Tools HD", "12.8.3"), "Pro Tools HD", "12.8.3", 12},
        {"nothing behind the name", head("Pro Tools", "12.8.3"), "", "", -1},
        {"another product", head("Amateur Tools", "12.8.3"), "", "", -1},
        {"letters in the version", head("Pro Tools LE", "8.0.0f314"), "", "", -1},
        {"a version that begins with a point", head("Pro Tools LE", ".12"), "", "", -1},
        {"one byte is no text", head("Pro Tools LE", "9"), "", "", -1},
        {"64 bytes are a text", head("Pro Tools LE", std::string(64, '1')), "Pro Tools LE",
         std::string(64, '1'), INT32_MAX},
        {"65 bytes are none", head("Pro Tools LE", std::string(65, '1')), "", "", -1},
        {"text bytes only", head("Pro Tools \xc1", "12.8"), "", "", -1},
        {"no version", head("Pro Tools LE", ""), "", "", -1},
        {"nothing at all", {}, "", "", -1},
        {"four bytes", Bytes(4, 1), "", "", -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const SessionVersion found = version_in(c.image);
        EXPECT_EQ(found.product, c.product);
        EXPECT_EQ(found.version, c.version);
        EXPECT_EQ(found.major, c.major);
    }
}

TEST(SessionVersion, TheHeadEndsAfter1024Bytes) {
    for (const std::size_t version_end : {1024U, 1025U}) {
        const Bytes product = ByteWriter().counted("Pro Tools HD").bytes();
        const Bytes image = ByteWriter()
                                .zeros(version_end - product.size() - 4 - 6)
                                .raw(product)
                                .counted("12.8.3")
                                .zeros(100)
                                .bytes();
        EXPECT_EQ(version_in(image).version, version_end == 1024 ? "12.8.3" : "");
    }
}

TEST(SessionVersion, ReadsTheProductRecordOfRealSessions) {
    const auto saved_by = [](const char* product, const char* version) {
        return SessionBuilder().product(product, version).image();
    };
    EXPECT_EQ(version_in(saved_by("Pro Tools", "2019.6.0")).version, "2019.6.0");
    EXPECT_EQ(version_in(saved_by("Pro Tools Ultimate", "2021.10.0")).product,
              "Pro Tools Ultimate");
    EXPECT_EQ(version_in(saved_by("Media Composer", "2021.10.0")).version, "");
    EXPECT_EQ(version_in(saved_by("Pro Tools", "2019.6.0b3")).product, "") << "both or none";
    EXPECT_EQ(version_in(SessionBuilder().without_product().image()).major, -1);
}

TEST(SessionVersion, TheLastProductRecordStandsAndTheHeadStandsBeforeIt) {
    const Bytes earlier = builder::product_block({"Pro Tools", "10.3.2"});
    const Bytes no_product = ByteWriter().block(0x0003, Bytes(60, 1)).bytes();
    Bytes image = SessionBuilder().top_level(earlier).product("Pro Tools", "2018.1").image();
    image.insert(image.end(), no_product.begin(), no_product.end());
    EXPECT_EQ(version_in(image).version, "2018.1");

    const Bytes texts = ByteWriter().counted("Pro Tools HD").counted("11.2").bytes();
    const Bytes at_head = ByteWriter().block(0x1111, texts).raw(image).bytes();
    EXPECT_EQ(version_in(at_head).version, "11.2");
}

TEST(SessionVersion, DarkThemeSessionsAreThoseSavedAfter2020_10) {
    const struct {
        const char* version;
        bool later;
    } cases[] = {
        {"", true},        {"2021.1", true},    {"2020.11.0", true},   {"2020.10", false},
        {"2020.9", false}, {"2020", false},     {"2020.", false},      {"2019.12", false},
        {"12.8.3", false}, {"2020.010", false}, {"99999999999", true}, {"2020.99999999999", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.version);
        const auto version =
            *c.version == '\0' ? SessionVersion{} : version_in(head("Pro Tools X", c.version));
        EXPECT_EQ(version.version, c.version);
        EXPECT_EQ(saved_after_2020_10(version), c.later);
    }
}

}  // namespace
}  // namespace tanrove
