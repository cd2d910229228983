// A VST list has a line a plug-in,
//
//   FILE=opaque,NUMBER,NAME                a VST2, or a VST3 of an old scan
//   FILE=opaque,NUMBER{CLASS,NAME          a VST3
//   FILE<NUMBER=opaque,NUMBER{CLASS,NAME   one of many plug-ins in a file, a shell
//
// and others that name none: "FILE=opaque" for a file that is no plug-in, number 0 for a shell
// itself, and a second section that pairs classes. A NAME may hold commas, and ends in "!!!VSTi"
// for an instrument. A CLAP list has a section a file, with lines ID=FLAGS|NAME.
#include "plugins/scan_cache.hpp"

#include <algorithm>

#include "base/paths.hpp"
#include "base/text_lines.hpp"
#include "plugins/product_names.hpp"

namespace tanrove {

namespace {

constexpr std::string_view instrument_mark = "!!!VSTi";

constexpr const char* vst_list_names[] = {
    "reaper-vstplugins_arm64.ini",
    "reaper-vstplugins_aarch64.ini",
    "reaper-vstplugins64.ini",
    "reaper-vstplugins.ini",
};

constexpr const char* clap_list_names[] = {
    "reaper-clap-win64.ini",        "reaper-clap-win32.ini",        "reaper-clap-macos-arm64.ini",
    "reaper-clap-macos-x86_64.ini", "reaper-clap-linux-x86_64.ini", "reaper-clap-linux-aarch64.ini",
};

/// Where applications keep their data under a user's folders, on each system.
constexpr const char* settings_folders[] = {
    "/REAPER",
    "/Library/Application Support/REAPER",
    "/.config/REAPER",
};

std::string path_in(std::string folder, const char* name) {
    folder += '/';
    folder += name;
    return folder;
}

/// The file that a key names, and the class where the key holds it.
void read_key(ScanEntry& entry, std::string_view key) {
    entry.file = key;
    const std::size_t mark = key.find('<');
    if (mark == std::string_view::npos) return;
    const std::string_view behind = key.substr(mark + 1);
    if (behind.size() > 1 && behind.ends_with('>')) {
        entry.classId = behind.substr(0, behind.size() - 1);
        entry.file = key.substr(0, mark);
    } else if (is_number(behind)) {
        entry.file = key.substr(0, mark);
    }
}

/// The class behind the number; empty where there is none.
std::string_view class_behind(std::string_view number) {
    const std::size_t brace = number.find('{');
    if (brace == std::string_view::npos) return {};
    std::string_view digits = number.substr(brace + 1);
    while (digits.ends_with('}')) digits.remove_suffix(1);
    const bool is_class =
        digits.size() == class_id_digits && std::ranges::all_of(digits, is_hex_digit);
    return is_class ? digits : std::string_view();
}

void read_name(ScanEntry& entry, std::string_view name) {
    entry.instrument = name.size() > instrument_mark.size() && name.ends_with(instrument_mark);
    if (entry.instrument) name.remove_suffix(instrument_mark.size());
    entry.name = name;
    entry.shortName = short_name(name);
}

bool is_vst3_file(const std::string& file) {
    constexpr std::string_view extension = ".vst3";
    return file.size() > extension.size() &&
           lower_cased(file.substr(file.size() - extension.size())) == extension;
}

void add_vst_line(std::vector<ScanEntry>& entries, std::string_view line) {
    if (line.empty() || line.front() == '[' || line.front() == ';') return;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return;
    std::string_view value = line.substr(equals + 1);
    if (std::ranges::count(value, ',') < 2) return;
    take_field(value, ',');
    const std::string_view number = take_field(value, ',');

    ScanEntry entry;
    entry.id = leading_number(number);
    if (entry.id == 0 || value.empty()) return;
    read_key(entry, line.substr(0, equals));
    if (entry.classId.empty()) entry.classId = class_behind(number);
    read_name(entry, value);
    entry.isVst3 = is_vst3_file(entry.file);
    entries.push_back(std::move(entry));
}

void add_clap_line(std::vector<ScanEntry>& entries, std::string_view section,
                   std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || equals == 0) return;
    const std::string_view key = line.substr(0, equals);
    std::string_view name = line.substr(equals + 1);
    const std::size_t bar = name.find('|');
    if (key == "_" || bar == std::string_view::npos) return;
    const std::uint32_t flags = leading_number(name.substr(0, bar));
    name.remove_prefix(bar + 1);
    if (name.empty()) return;

    ScanEntry entry;
    entry.file = section;
    entry.name = name;
    entry.shortName = short_name(name);
    entry.instrument = flags % 2 == 1;
    entry.isClap = true;
    entry.clapId = key;
    entries.push_back(std::move(entry));
}

/// Appends the first CLAP list in `folder` that holds a plug-in.
void add_clap_list(std::vector<ScanEntry>& entries, const std::string& folder) {
    for (const char* name : clap_list_names) {
        const auto text = read_text_file(folder + name, max_scan_file_bytes);
        if (!text) continue;
        auto found = read_clap_list(*text);
        if (found.empty()) continue;
        std::ranges::move(found, std::back_inserter(entries));
        return;
    }
}

}  // namespace

std::vector<ScanEntry> read_vst_list(std::string_view text) {
    std::vector<ScanEntry> entries;
    LineReader lines(text, max_scan_line_bytes);
    while (const auto line = lines.next()) add_vst_line(entries, *line);
    return entries;
}

std::vector<ScanEntry> read_clap_list(std::string_view text) {
    std::vector<ScanEntry> entries;
    std::string_view section;
    LineReader lines(text, max_scan_line_bytes);
    while (const auto line = lines.next()) {
        if (line->starts_with(';')) continue;
        if (line->starts_with('[')) {
            section = line->substr(1, line->find(']') - 1);
        } else {
            add_clap_line(entries, section, *line);
        }
    }
    return entries;
}

std::vector<std::string> vst_list_candidates(const ScanPlaces& places) {
    std::vector<std::string> paths;
    if (!places.given_path.empty()) paths.push_back(places.given_path);
    for (const char* name : vst_list_names) {
        for (const std::string& folder : {places.session_folder, places.program_folder}) {
            if (!folder.empty()) paths.push_back(path_in(folder, name));
        }
        paths.push_back(path_in(".", name));
        for (const std::string& folder : {places.appdata, places.home}) {
            if (folder.empty()) continue;
            for (const char* settings : settings_folders) {
                paths.push_back(path_in(folder + settings, name));
            }
        }
    }
    return paths;
}

ScanCache load_scan_cache(const ScanPlaces& places) {
    for (const std::string& path : vst_list_candidates(places)) {
        const auto text = read_text_file(path, max_scan_file_bytes);
        if (!text) continue;
        ScanCache cache{read_vst_list(*text), path};
        if (cache.entries.empty()) continue;
        const std::size_t slash = path.find_last_of("/\\");
        add_clap_list(cache.entries, path.substr(0, slash + 1));
        return cache;
    }
    return {};
}

std::string made_up_class(std::uint32_t id, std::string_view short_name) {
    constexpr std::size_t name_bytes = 9;
    std::string bytes = "VST";
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(id >> shift & 0xff);
    bytes += lower_cased(std::string(short_name.substr(0, name_bytes)));
    bytes.resize(class_id_digits / 2);
    constexpr std::string_view digit = "0123456789ABCDEF";
    std::string digits;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        digits += digit[byte >> 4];
        digits += digit[byte & 0xf];
    }
    return digits;
}

ReaperName reaper_name(const ScanEntry& entry) {
    const std::string kind_end = (entry.instrument ? "i: " : ": ") + entry.name;
    if (entry.isClap) return {"CLAP" + kind_end, entry.clapId};
    const std::string class_id =
        entry.classId.empty() ? made_up_class(entry.id, entry.shortName) : entry.classId;
    const std::string number = formatted("%u", entry.id);
    if (is_vst3_build(entry)) return {"VST3" + kind_end, number + "{" + class_id + "}"};
    return {"VST" + kind_end, number + "<" + class_id + ">"};
}

void print_scan_cache(TextBuffer& out, const std::vector<ScanEntry>& entries) {
    out.print("  --- plug-in cache dump ---\n");
    for (const ScanEntry& entry : entries) {
        const ReaperName name = reaper_name(entry);
        out.print("    %-46s %s\n      %s\n", entry.file.c_str(), name.fx_name.c_str(),
                  name.ident.c_str());
    }
    out.print("  --- %d entries ---\n\n", static_cast<int>(entries.size()));
}

}  // namespace tanrove
