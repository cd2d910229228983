// Where the real sessions, and REAPER's own real files, stand that some tests read. They are no
// part of the project.
#pragma once

#include <optional>
#include <string>

#include "support/byte_writer.hpp"

namespace tanrove::builder {

/// The path of a real session, or an empty text where the sessions are not on this machine: beside
/// the project, or in the folder that TANROVE_REAL_SESSIONS names.
std::string real_session(const std::string& file);

/// The decrypted image of a real `.ptx` session; nullopt where the file is absent.
std::optional<Bytes> real_session_image(const std::string& file);

/// A text that REAPER wrote, by its path in `reaper` beside the project; nullopt where it is
/// absent.
std::optional<std::string> real_reaper_text(const std::string& file);

}  // namespace tanrove::builder

/// Reads a file of REAPER's as `text`, or skips the test.
#define TANROVE_REAL_REAPER_TEXT(text, file)                                               \
    const auto text##_or_none = tanrove::builder::real_reaper_text(file);                  \
    if (!text##_or_none) GTEST_SKIP() << "REAPER's own file " << (file) << " is not here"; \
    const auto& text = *text##_or_none

/// Opens a real session as `image`, or skips the test.
#define TANROVE_REAL_SESSION(image, file)                                              \
    const auto image##_or_none = tanrove::builder::real_session_image(file);           \
    if (!image##_or_none) GTEST_SKIP() << "real session " << (file) << " is not here"; \
    const auto& image = *image##_or_none
