// Takes the cipher off a real session: it undoes itself, once the key's step is found that belongs
// to the value byte.
#include "support/real_sessions.hpp"

#include <cstdlib>
#include <filesystem>

#include "support/session_cipher.hpp"
#include "support/temp_folder.hpp"

namespace tanrove::builder {

std::string real_session(const std::string& file) {
    const char* given = std::getenv("TANROVE_REAL_SESSIONS");
    const std::filesystem::path folder = given != nullptr ? given : TANROVE_REAL_SESSIONS_FOLDER;
    const auto path = folder / file;
    return std::filesystem::exists(path) ? path.string() : std::string();
}

std::optional<Bytes> real_session_image(const std::string& file) {
    const std::string path = real_session(file);
    if (path.empty()) return std::nullopt;
    const std::string text = file_text(path);
    constexpr std::size_t value_at = 19;
    if (text.size() <= value_at) return std::nullopt;
    Bytes bytes(text.begin(), text.end());
    unsigned step = 0;
    while ((step * 11 & 0xff) != bytes[value_at]) ++step;
    return encrypted(std::move(bytes), Cipher::ptx, static_cast<std::uint8_t>(step));
}

std::optional<std::string> real_reaper_text(const std::string& file) {
    const std::filesystem::path folder = TANROVE_REAL_SESSIONS_FOLDER;
    const auto path = folder / ".." / "reaper" / file;
    if (!std::filesystem::exists(path)) return std::nullopt;
    return file_text(path.string());
}

}  // namespace tanrove::builder
