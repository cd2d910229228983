// The scoring of states against its slow twin, which tries every sign at every byte anew: on blocks
// that are put together at random from what the scoring looks for.
#include "plugins/state_scoring.hpp"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "plugins/balanced_braces.hpp"
#include "support/byte_writer.hpp"

namespace tanrove {
namespace {

using namespace builder;

using std::size_t;

/// Scores the block of `block` bytes at `first`, whose chunk limit is `limit`; `b` is the image up
/// to there.
struct SlowScoring {
    ByteView image, b;
    size_t first, limit, block;
    int score = 0;
    size_t at = 0, size = 0;
    std::string how = {};
    unsigned copies = 1;

    bool is_text(size_t p) const { return image.holds(p, 1) && is_state_text(image.u8(p)); }
    size_t text_bytes(size_t p, size_t end) const {
        size_t count = 0;
        for (; p < end; ++p) count += is_text(p) ? 1U : 0U;
        return count;
    }
    bool is_zlib(size_t p) const {
        const std::string_view levels("\x9c\x01\xda\x5e");
        const auto level = static_cast<char>(b.u8(p + 1));
        return b.has(p, "x") && b.holds(p, 2) && levels.find(level) != levels.npos;
    }
    void weigh(int weight, size_t p, size_t bytes, std::string_view tag, unsigned count = 1) {
        if (weight > score || (weight == score && p < at)) {
            score = weight, at = p, size = bytes, how = tag, copies = count;
        }
    }
    void score_all() {
        if (first + 97 < limit) {
            const size_t rest = limit - first - 33;
            if (rest > 255 && text_bytes(first + 33, limit) * 100 >= rest * 96)
                weigh(3, first + 33, rest, "text (no tag)");
            const auto starts = [&](size_t p) { return p + 65 < limit; };
            const auto run = first_balanced_run(b, first + 33, starts, [](const BalancedRun& r) {
                return r.size() >= 64 && r.text_bytes * 10 >= r.size() * 9;
            });
            if (run) weigh(6, run->start, run->size(), "braces balance");
        }
        for (size_t p = first + 33; first + 65 < limit && p + 33 < limit; ++p) {
            for (unsigned k = 0; k < 6; ++k) {
                for (unsigned less = 0; less <= 24; less += 4) {
                    const size_t word = b.u32(p - 4 * (k + 1));
                    const int weight = k == 0 ? 5 : static_cast<int>((6 - k) / 2 + 1);
                    const bool closes = word >= less + 64 && p + word - less == limit;
                    if (closes && weight > score) weigh(weight, p, word - less, "length closes");
                }
            }
        }
        for (size_t p = first + 24; first + 40 < limit && p + 17 < limit; ++p)
            if (p != first + 25) try_opening(p);
    }
    void try_opening(size_t p) {
        std::string_view tag;
        for (const char* known : {"VC2!", "FFBS", "XPst", "hsin", "FabF", "HXMC", "CMXH", "<?xml",
                                  "<AllData", "#AMS", "22 serialization::archive", "RIFF"}) {
            if (b.has(p, known)) tag = known;
        }
        const int weight = tag.empty() ? 5 : 7;
        if (tag.empty() && is_zlib(p)) tag = "zlib";
        if (!tag.empty()) weigh(weight, p, limit - p, tag);
        size_t run = 0;
        while (run < 200 && is_text(p + run)) ++run;
        if (tag.empty() && run < 120) return;
        const int known = tag.empty() ? 0 : 8;
        if (tag.empty()) tag = "text";
        for (unsigned k = 0; k < 6; ++k) {
            const size_t word = b.u32(p - 4 * (k + 1));
            for (size_t less = 0; less <= 24 && less <= word; less += 4) {
                const size_t bytes = word - less;
                if (word < 32 || word > block || bytes < 32 || p + bytes > limit) continue;
                const size_t rest = limit - p - bytes;
                const auto again = [&](size_t q) {
                    const auto here = b.text(p, std::min<size_t>(bytes, 4096));
                    return q + bytes <= limit && b.has(q, *here);
                };
                const bool twice = again(p + bytes) || again(p + bytes + 4);
                const int points = rest == 0 ? 6 : rest < 65 ? 3 : 0;
                if (!twice && points == 0 && known == 0) continue;
                weigh(points + static_cast<int>(6 - k) + known + (twice ? 6 : 0), p, bytes, tag,
                      twice ? 2 : 1);
            }
        }
    }
};

TEST(ScoreState, AgreesWithASearchThatTriesEverything) {
    std::mt19937 random(11);
    const char* const pieces[] = {"RIFF", "FFBS", "x\x9c", "{\"a}\\\"", "}", "#AMS", "VC2!", "{{"};
    std::map<std::string, int> found;
    for (int round = 0; round < 1500; ++round) {
        Bytes bytes(98, 0x81);  // which is no name of a chunk
        while (bytes.size() < 110 + random() % 900) {
            const auto start = static_cast<std::ptrdiff_t>(random() % bytes.size());
            const Bytes copy(bytes.begin() + start, bytes.end());
            const std::string run(random() % 150, "aaa\0\x81"[random() % 5]);
            const Bytes ways[] = {copy, ByteWriter().u32(random() % 300).bytes(),
                                  ByteWriter().raw(pieces[random() % std::size(pieces)]).bytes(),
                                  ByteWriter().raw(run).bytes()};
            const auto& more = ways[random() % std::size(ways)];
            bytes.insert(bytes.end(), more.begin(), more.end());
        }
        const size_t end = bytes.size() - random() % 20;
        for (auto words = random() % 4; words > 0; --words) {
            const size_t p = 50 + random() % (end - 54);
            const auto rest = end - p - 4 * (1 + random() % 6) + 4 * (random() % 8);
            for (size_t i = 0; i < 4; ++i) bytes[p + i] = static_cast<std::uint8_t>(rest >> 8 * i);
        }
        const ByteView image{bytes};
        SlowScoring slow{image, image.window(0, end), 16, end, bytes.size() - 16};
        slow.score_all();
        const auto fast = score_state({image, 16, end, bytes.size()});
        SCOPED_TRACE(testing::Message() << round << ' ' << slow.how << ' ' << slow.score);
        ASSERT_EQ(fast.has_value(), slow.score >= 3 && slow.size >= 32);
        if (!fast) continue;
        ASSERT_EQ(std::tie(fast->at, fast->size, fast->copies),
                  std::tie(slow.at, slow.size, slow.copies));
        ASSERT_EQ(fast->how, slow.how);
        ++found[slow.how + std::to_string(slow.copies)];
    }
    EXPECT_GE(found.size(), 8U) << "signs that won";
}

}  // namespace
}  // namespace tanrove
