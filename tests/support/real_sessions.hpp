// Where the real sessions stand that some tests read. They are no part of the project.
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

}  // namespace tanrove::builder

/// Opens a real session as `image`, or skips the test.
#define TANROVE_REAL_SESSION(image, file)                                              \
    const auto image##_or_none = tanrove::builder::real_session_image(file);           \
    if (!image##_or_none) GTEST_SKIP() << "real session " << (file) << " is not here"; \
    const auto& image = *image##_or_none
