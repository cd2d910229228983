// Paths as text: session paths come from any system, so both slashes count everywhere.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tanrove {

/// All before the last `/` or `\`; "." if there is neither.
std::string folder_of(const std::string& path);

/// All behind the last `/` or `\`; the whole path if there is neither.
std::string file_name_of(const std::string& path);

/// Position of the `.` that begins the extension: the last one, if it stands behind the last slash.
/// `std::string::npos` if the path has no extension.
std::string::size_type extension_at(const std::string& path);

/// The path up to its extension, whole if it has none.
std::string without_extension(const std::string& path);

/// True of a file, not of a folder, a pipe or a device.
bool is_regular_file(const std::string& path);

bool is_folder(const std::string& path);

/// The size of a file in bytes; nullopt if there is none.
std::optional<std::uintmax_t> file_size_of(const std::string& path);

/// True if both paths lead to one file, which is there.
bool are_one_file(const std::string& path, const std::string& other);

/// True if the file can be opened for reading. A folder, a pipe or a device counts as no file: some
/// of them would be waited for.
bool can_be_read(const std::string& path);

/// ASCII letters in lower case, other bytes as they stand.
std::string lower_cased(std::string text);

}  // namespace tanrove
