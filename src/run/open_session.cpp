// The gates of opening, in their order: is there a file, is it of an older format, did it load, and
// if it did not, is its rate the reason, or its emptiness, or nothing that we have a name for.
#include "run/open_session.hpp"

#include <string>
#include <string_view>

#include "base/formatted_text.hpp"
#include "base/paths.hpp"
#include "base/session_numbers.hpp"
#include "base/text_lines.hpp"
#include "run/console.hpp"

namespace tanrove {

namespace {

constexpr const char* support_address = "the address on the program's download page";

// Bytes that tell the age of a session, whatever its name says.
constexpr std::size_t age_bytes = 19;
constexpr std::size_t cipher_type_at = 18;
constexpr unsigned char session_first_byte = 3;
constexpr unsigned char older_cipher_type = 1;

constexpr std::string_view header_text_marker = "ProTools";
constexpr std::size_t header_text_window = 4096;
constexpr std::size_t max_header_text_bytes = 40;

constexpr std::size_t max_detail_bytes = 160;

/// An application that shows one line to its user gets that line as well.
bool has_listener() {
    return console_state().progress != nullptr;
}

/// Loads the session so that no position is resampled. An unknown version is a request to try
/// harder, no refusal.
int load_at_own_rate(PTFFormat& file, const std::string& path) {
    constexpr std::int64_t own_rate = 0;
    const int result = file.load(path, own_rate);
    if (result != PTFFormat::load_unknown_version) return result;
    PTFFormat::allow_unknown_version = true;
    return file.load(path, own_rate);
}

void tell_no_such_file(const std::string& path) {
    if (has_listener()) {
        console_print(
            "\n  No such file:\n    %s\n\n"
            "  Not converted: the session file was not found. The file may have been moved, "
            "renamed or deleted, or its drive is not connected.\n",
            path.c_str());
        return;
    }
    console_print(
        "\n  No such file:\n    %s\n\n"
        "  If the name has spaces, put it in quotes:\n"
        "    tanrove \"My Song.ptx\"\n",
        path.c_str());
}

bool has_older_name(const std::string& path) {
    constexpr std::size_t extension_bytes = 4;
    if (path.size() <= extension_bytes) return false;
    const std::string extension = lower_cased(path.substr(path.size() - extension_bytes));
    return extension == ".ptf" || extension == ".pts";
}

bool has_older_bytes(const std::string& path) {
    const std::string head = read_text_file(path, age_bytes).value_or("");
    return head.size() == age_bytes && static_cast<unsigned char>(head[0]) == session_first_byte &&
           static_cast<unsigned char>(head[cipher_type_at]) == older_cipher_type;
}

void tell_older_format(const std::string& path) {
    console_print(
        "\n  Could not convert: %s\n"
        "  Reason: this is an OLDER Pro Tools session format (Pro Tools 5 - 9,\n"
        "          .pts or .ptf). This tool converts .ptx sessions (Pro Tools\n"
        "          10 and later) only. An older session is refused rather than\n"
        "          converted partly, because a partial mix would look finished.\n"
        "\n"
        "  To convert it: open the session in Pro Tools 10 or later, use\n"
        "  File > Save As to save it as a .ptx, and convert that file.\n",
        path.c_str());
    if (!has_listener()) return;
    console_print(
        "\n  Not converted: this is an older Pro Tools session format (.pts or .ptf). Save the "
        "session as a .ptx from Pro Tools 10 or later, then convert that file.\n");
}

void tell_rate(const std::string& path, std::int64_t rate) {
    const auto hz = static_cast<long long>(rate);
    console_print(
        "\n  Could not read: %s\n"
        "  Reason: this session is at %lld Hz, which is outside the range\n"
        "          this tool supports (44100 - 192000 Hz).\n"
        "\n"
        "  The file itself is fine -- it is the rate that is not handled.\n"
        "  Re-save the session from Pro Tools at a supported rate, or send\n"
        "  this text if you need %lld Hz supported.\n",
        path.c_str(), hz, hz);
    if (!has_listener()) return;
    console_print(
        "\n  Not converted: the session is at %lld Hz, outside the supported range (44100 - "
        "192000 Hz).\n",
        hz);
}

bool is_empty_file(const std::string& path) {
    return file_size_of(path) == 0;
}

void tell_empty_file(const std::string& path) {
    console_print(
        "\n  Could not read: %s\n"
        "  Reason: the file is EMPTY (0 bytes). There is no session in it\n"
        "          to convert. If the session folder has a \"Session File\n"
        "          Backups\" folder, the newest .ptx in it may convert.\n",
        path.c_str());
    if (!has_listener()) return;
    console_print(
        "\n  Not converted: the session file is empty (0 bytes), so there is no session to "
        "convert.\n");
}

bool is_too_large(const std::string& path) {
    return file_size_of(path) > PTFFormat::max_file_bytes;
}

void tell_too_large(const std::string& path) {
    console_print(
        "\n  Could not read: %s\n"
        "  Reason: the file is TOO LARGE to be a session: over 2 GiB. A session\n"
        "          holds no audio and stays far below that. If this one really\n"
        "          is that large, save a copy of it in Pro Tools (File > Save\n"
        "          Copy In) with fewer tracks and convert the copy.\n",
        path.c_str());
    if (!has_listener()) return;
    console_print("\n  Not converted: the session file is too large (over 2 GiB) to be read.\n");
}

const char* reason_of(int result) {
    switch (result) {
        case PTFFormat::load_not_decrypted:
            return "could not be decrypted - is this really a Pro Tools session file?";
        case PTFFormat::load_no_version:
            return "has no readable version marker";
        case PTFFormat::load_unknown_version:
            return "is a Pro Tools version this tool does not understand";
        case PTFFormat::load_not_parsed:
            return "was decrypted but the contents could not be parsed";
        default:
            return "could not be parsed";
    }
}

/// Up to 40 printable bytes from the product's name on; nullopt where the head of the image does
/// not name it.
std::optional<std::string> header_text(ByteView image) {
    const std::size_t at = image.window(0, header_text_window).find(header_text_marker, 0);
    if (at == ByteView::npos) return std::nullopt;
    std::string text;
    for (const std::uint8_t byte : image.window(at, max_header_text_bytes).span()) {
        if (byte < 0x20 || byte > 0x7e) break;
        text += static_cast<char>(byte);
    }
    return text;
}

/// What a report of the problem needs to say about the file: how far it can be read at all.
void tell_decryption(const std::string& path) {
    PTFFormat file;
    file.unxor(path);
    if (file.image() == nullptr || file.image_size() == 0) {
        console_print("  Decryption: FAILED\n");
        return;
    }
    console_print("  Decryption: OK (%llu bytes)\n",
                  static_cast<unsigned long long>(file.image_size()));
    console_print("  Version byte: %d\n", file.version());
    const ByteView image({file.image(), static_cast<std::size_t>(file.image_size())});
    if (const auto text = header_text(image)) console_print("  Header text: %s\n", text->c_str());
}

void tell_unreadable(const std::string& path, int result) {
    console_print("\n  Could not read: %s\n  Reason: that session %s.  (code %d)\n", path.c_str(),
                  reason_of(result), result);
    tell_decryption(path);
    if (has_listener()) {
        console_print("\n  vorlane will offer to send this as a problem report.\n");
    } else {
        console_print("\n  Please send this text and the .ptx file to %s.\n", support_address);
    }
    const auto detail = formatted("the session %s (code %d)", reason_of(result), result);
    record_problem("unreadable", detail.substr(0, max_detail_bytes));
}

/// The words for a session that did not load.
void tell_why_not_loaded(const PTFFormat& file, const std::string& path, int result) {
    const std::int64_t rate = file.session_rate();
    if (rate > 0 && (rate < lowest_rate_hz || rate > highest_rate_hz)) {
        tell_rate(path, rate);
    } else if (is_empty_file(path)) {
        tell_empty_file(path);
    } else if (is_too_large(path)) {
        tell_too_large(path);
    } else {
        tell_unreadable(path, result);
    }
}

}  // namespace

std::optional<OpenedSession> openSession(const RunOptions& options) {
    const std::string& path = options.session_path;
    report_stage(stage_reading, "reading");
    auto file = std::make_unique<PTFFormat>();
    const int result = load_at_own_rate(*file, path);

    if (!can_be_read(path)) {
        tell_no_such_file(path);
        return std::nullopt;
    }
    if (has_older_name(path) || has_older_bytes(path)) {
        tell_older_format(path);
        return std::nullopt;
    }
    if (result != PTFFormat::load_ok) {
        tell_why_not_loaded(*file, path, result);
        return std::nullopt;
    }

    OpenedSession session;
    session.image.bytes = ByteView({file->image(), static_cast<std::size_t>(file->image_size())});
    session.image.rate = file->session_rate() > 0 ? file->session_rate() : default_session_rate_hz;
    session.file = std::move(file);
    return session;
}

void tell_damage(const DamageReport& damage, bool check_only) {
    if (check_only) console_print("damage %s\n", damage_word(damage.verdict));
    switch (damage.verdict) {
        case DamageVerdict::incomplete:
            console_print(
                "  *** THIS SESSION FILE LOOKS INCOMPLETE ***\n"
                "      %llu byte(s) after the last complete block. The file was very\n"
                "      likely truncated in a copy or a sync. Tracks, clips and\n"
                "      automation may be MISSING from this conversion.\n"
                "      Re-copy the .ptx from the original and convert it again.\n",
                static_cast<unsigned long long>(damage.trailing_bytes));
            break;
        case DamageVerdict::damaged:
            console_print(
                "  *** THIS SESSION FILE IS DAMAGED ***\n"
                "      Its structure breaks at byte %llu, %.0f%% of the way in, as a bad\n"
                "      disk or a failed copy leaves it. Tracks, clips, mixer settings\n"
                "      and automation after that point may be MISSING or wrong in\n"
                "      this conversion. Convert a backup instead if you have one --\n"
                "      the newest .ptx in the session's \"Session File Backups\"\n"
                "      folder, or a copy from another drive.\n",
                static_cast<unsigned long long>(damage.break_at), damage.break_percent);
            break;
        case DamageVerdict::none:
            break;
    }
}

}  // namespace tanrove
