// Texts that stand whole in a file beside their test.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "support/temp_folder.hpp"

namespace tanrove::builder {

/// Holds `text` against the file, or rewrites the file when scripts/refresh_goldens.sh asks for it.
inline void expect_golden(const std::string& path, const std::string& text) {
    if (std::getenv("TANROVE_REFRESH_GOLDENS") != nullptr) {
        ASSERT_TRUE(write_file_text(path, text));
    }
    EXPECT_EQ(text, file_text(path)) << path << " differs; scripts/refresh_goldens.sh shows how";
}

}  // namespace tanrove::builder
