// The help text, whole.
#include "run/usage_text.hpp"

#include <gtest/gtest.h>

#include "support/golden_text.hpp"

namespace tanrove {
namespace {

TEST(UsageText, IsTheOneOfItsGolden) {
    builder::expect_golden(TANROVE_TEXTS_FOLDER "/usage_text.txt", usage_text());
}

}  // namespace
}  // namespace tanrove
