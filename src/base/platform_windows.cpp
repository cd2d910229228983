// Windows: its calls take UTF-16, its C runtime would change line ends, and a console shows the
// code page that it is told.
#define NOMINMAX
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "base/platform.hpp"

namespace tanrove {

namespace {

/// The longest path that the system has.
constexpr DWORD max_path_units = 32767;

constexpr std::size_t console_buffer_bytes = std::size_t{64} * 1024;

/// Set once, before a handler can ask for it.
void (*clean_up_at_end)() noexcept = nullptr;

/// The code page that the console goes back to.
UINT former_code_page = 0;

std::wstring wide(const char* text) {
    const int units = MultiByteToWideChar(CP_UTF8, 0, text, -1, nullptr, 0);
    if (units <= 0) return {};
    std::wstring result(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text, -1, result.data(), units);
    result.pop_back();  // the zero at the end
    return result;
}

std::string narrow(const wchar_t* text) {
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (bytes <= 0) return {};
    std::string result(static_cast<std::size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), bytes, nullptr, nullptr);
    result.pop_back();
    return result;
}

/// What stands in front of a path that the system takes as it is, however long.
constexpr std::wstring_view as_it_is = L"\\\\?\\";
constexpr std::wstring_view share_as_it_is = L"\\\\?\\UNC\\";
constexpr std::wstring_view any_share = L"\\\\";
/// A path that others may still lengthen past `MAX_PATH`, of 260 units: a folder's, or one that
/// gets a suffix.
constexpr std::size_t max_plain_units = 240;

/// The path as the system's calls take it. A long one is whole, with its drive, and without "/" and
/// "..": what is taken as it is has none of these.
std::wstring wide_path(const char* text) {
    std::wstring path = wide(text);
    if (path.size() <= max_plain_units || path.starts_with(as_it_is)) return path;
    std::wstring whole(max_path_units, L'\0');
    const DWORD units = GetFullPathNameW(path.c_str(), max_path_units, whole.data(), nullptr);
    if (units == 0 || units >= max_path_units) return path;
    whole.resize(units);
    if (whole.starts_with(as_it_is)) return whole;
    if (!whole.starts_with(any_share)) return std::wstring(as_it_is) + whole;
    return std::wstring(share_as_it_is) + whole.substr(any_share.size());
}

/// A new file that others may remove: the handler of Ctrl-C does, while it is open.
std::FILE* open_new_file(const wchar_t* path) {
    const HANDLE handle =
        CreateFileW(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                    nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        errno = GetLastError() == ERROR_FILE_EXISTS ? EEXIST : EACCES;
        return nullptr;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY);
    if (descriptor < 0) {
        CloseHandle(handle);
        return nullptr;
    }
    return _fdopen(descriptor, "w+b");
}

BOOL WINAPI clean_up_and_end(DWORD /*event*/) {
    clean_up_at_end();
    return FALSE;  // the next handler ends the process
}

void restore_code_page() {
    SetConsoleOutputCP(former_code_page);
}

/// Our texts are UTF-8. A console gets them in whole pieces: it shows no half of a character.
void show_utf8() {
    if (_isatty(_fileno(stdout)) == 0) return;
    std::setvbuf(stdout, nullptr, _IOFBF, console_buffer_bytes);
    former_code_page = GetConsoleOutputCP();
    if (former_code_page == 0 || SetConsoleOutputCP(CP_UTF8) == 0) return;
    static_cast<void>(std::atexit(restore_code_page));
}

}  // namespace

const char* const null_device = "NUL";
const std::int32_t default_pause_at_end = 1;

std::filesystem::path native_path(const std::string& path) {
    return wide_path(path.c_str());
}

std::string path_text(const std::filesystem::path& path) {
    const std::wstring& text = path.native();
    if (text.starts_with(share_as_it_is)) {
        return "\\\\" + narrow(text.c_str() + share_as_it_is.size());
    }
    return narrow(text.c_str() + (text.starts_with(as_it_is) ? as_it_is.size() : 0));
}

std::filesystem::file_status status_of(const std::string& path) {
    namespace fs = std::filesystem;
    constexpr DWORD nothing_but_a_look = 0;
    const fs::path name = native_path(path);
    const HANDLE handle = CreateFileW(name.c_str(), nothing_but_a_look,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle != INVALID_HANDLE_VALUE) {
        const DWORD type = GetFileType(handle);
        CloseHandle(handle);
        if (type == FILE_TYPE_CHAR) return fs::file_status(fs::file_type::character);
        if (type == FILE_TYPE_PIPE) return fs::file_status(fs::file_type::fifo);
    }
    std::error_code error;
    return fs::status(name, error);
}

std::FILE* open_file(const char* path, const char* mode) {
    const std::wstring name = wide_path(path);
    if (std::strchr(mode, 'x') != nullptr) return open_new_file(name.c_str());
    return _wfopen(name.c_str(), wide(mode).c_str());
}

int remove_file(const char* path) noexcept {
    return DeleteFileW(wide_path(path).c_str()) != 0 ? 0 : -1;
}

std::optional<std::string> environment_value(const char* name) {
    const wchar_t* value = _wgetenv(wide(name).c_str());
    if (value == nullptr) return std::nullopt;
    return narrow(value);
}

std::string user_data_folder() {
    return environment_value("APPDATA").value_or("");
}

std::vector<std::string> command_words(int count, const char* const* words) {
    int wide_count = 0;
    wchar_t** wide_words = CommandLineToArgvW(GetCommandLineW(), &wide_count);
    if (wide_words == nullptr) return {words, words + count};
    std::vector<std::string> result;
    for (int i = 0; i < wide_count; ++i) result.push_back(narrow(wide_words[i]));
    LocalFree(wide_words);
    std::wstring program(max_path_units, L'\0');
    const DWORD units = GetModuleFileNameW(nullptr, program.data(), max_path_units);
    if (units > 0 && units < max_path_units && !result.empty()) {
        result.front() = narrow(program.c_str());
    }
    return result;
}

// A handler has a thread of its own here, which nothing can hold.
SignalsHeld::SignalsHeld() = default;
SignalsHeld::~SignalsHeld() = default;

void prepare_process(void (*clean_up)() noexcept) {
    clean_up_at_end = clean_up;
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    show_utf8();
    SetConsoleCtrlHandler(clean_up_and_end, TRUE);
}

}  // namespace tanrove
