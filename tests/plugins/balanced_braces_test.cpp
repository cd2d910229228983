// The search for balanced braces against its slow twin, which walks from every brace anew.
#include "plugins/balanced_braces.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace tanrove {
namespace {

std::optional<std::size_t> slow_end(const std::string& text, std::size_t start) {
    bool in_string = false;
    int depth = 0;
    for (std::size_t i = start; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else if (text[i] == '"') {
            in_string = !in_string;
        } else if (!in_string && text[i] == '{') {
            ++depth;
        } else if (!in_string && text[i] == '}' && --depth == 0) {
            return i + 1;
        }
    }
    return std::nullopt;
}

TEST(FirstBalancedRun, AgreesWithAWalkFromEveryBrace) {
    std::mt19937 random(7);
    const std::string letters = "{{}}\"\\\x01 ";
    int found = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (std::size_t i = 0; i < 40; ++i) text += letters[random() % letters.size()];
        const std::size_t min_bytes = random() % 12;
        std::optional<BalancedRun> slow;
        for (std::size_t p = 3; p < text.size() && !slow; ++p) {
            const auto end = text[p] == '{' ? slow_end(text, p) : std::nullopt;
            if (end && *end - p >= min_bytes) slow = BalancedRun{p, *end};
        }
        if (slow) {
            const auto run = text.substr(slow->start, slow->size());
            slow->text_bytes =
                run.size() - static_cast<std::size_t>(std::count(run.begin(), run.end(), '\x01'));
        }
        const std::vector<std::uint8_t> bytes(text.begin(), text.end());
        const auto fast = first_balanced_run(
            ByteView(bytes), 3, [](std::size_t) { return true; },
            [&](const BalancedRun& run) { return run.size() >= min_bytes; });
        SCOPED_TRACE(text);
        ASSERT_EQ(fast.has_value(), slow.has_value());
        if (!slow) continue;
        ++found;
        ASSERT_EQ(fast->start, slow->start);
        ASSERT_EQ(fast->end, slow->end);
        ASSERT_EQ(fast->text_bytes, slow->text_bytes);
    }
    EXPECT_GT(found, 1000);
}

}  // namespace
}  // namespace tanrove
