// What plug-ins REAPER has found on this machine: the lists that it keeps of its own scan, read
// into one. A session names plug-ins by codes of Pro Tools; which of them are here, and under which
// names REAPER loads them, is told by these lists alone. No plug-in file is ever opened.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/formatted_text.hpp"

namespace tanrove {

/// A list past this is cut there: thousands of plug-ins take a few hundred kilobytes.
constexpr std::size_t max_scan_file_bytes = std::size_t{64} << 20;
/// Lines past this come as several, of which the later ones seldom mean anything.
constexpr std::size_t max_scan_line_bytes = 4096;
/// Characters of the class of a VST3.
constexpr std::size_t class_id_digits = 32;

/// One plug-in that REAPER has found.
struct ScanEntry {
    std::string file;       ///< the file's name; of a CLAP the section that holds it
    std::string name;       ///< "Product (Maker)", maybe with a channel layout
    std::string shortName;  ///< the name without its maker
    std::string classId;    ///< of a VST3, as a rule 32 hexadecimal digits; empty: none is known
    std::uint32_t id = 0;   ///< REAPER's number for a VST; 0 for a CLAP
    bool instrument = false;
    bool isVst3 = false;  ///< by its file
    bool isClap = false;
    std::string clapId;  ///< empty for a VST
};

/// The plug-ins of a VST list, in its order. Lines that are none are left out.
std::vector<ScanEntry> read_vst_list(std::string_view text);

/// The plug-ins of a CLAP list, in its order.
std::vector<ScanEntry> read_clap_list(std::string_view text);

/// Where lists are looked for; an empty text adds nothing.
struct ScanPlaces {
    std::string given_path = {};  ///< the user's own choice, tried first
    std::string session_folder = {};
    std::string program_folder = {};
    std::string appdata = {};  ///< the environment's folders of applications and of the user
    std::string home = {};
};

/// The VST lists to try, in their order.
std::vector<std::string> vst_list_candidates(const ScanPlaces& places);

/// The first VST list that holds a plug-in, with the CLAP list beside it. The order of the entries
/// decides wherever several fit.
struct ScanCache {
    std::vector<ScanEntry> entries;
    std::string path;  ///< of the VST list; empty: none was found
};

ScanCache load_scan_cache(const ScanPlaces& places);

/// How a project names a plug-in.
struct ReaperName {
    std::string fx_name;  ///< such as "VST3i: Product (Maker)"
    std::string ident;    ///< the number with the class, or a CLAP's own name
};

ReaperName reaper_name(const ScanEntry& entry);

/// True for a VST3: by its file or by its class.
inline bool is_vst3_build(const ScanEntry& entry) {
    return entry.isVst3 || !entry.classId.empty();
}

/// The class that REAPER gives a VST2, and a VST3 whose own it does not know: 32 digits made of the
/// number and the name.
std::string made_up_class(std::uint32_t id, std::string_view short_name);

/// Every entry under the name that a project would give it, for people who ask why one is not
/// found.
void print_scan_cache(TextBuffer& out, const std::vector<ScanEntry>& entries);

}  // namespace tanrove
