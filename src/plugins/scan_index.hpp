// REAPER's list of plug-ins, looked up by everything that a session's codes and names can be
// compared with. Of several entries that fit, the first in the order of the scan is given: lists
// have tens of thousands of entries and sessions thousands of plug-ins, so no lookup walks the list
// but the one by a part of a name.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "plugins/scan_cache.hpp"
#include "plugins/word_table.hpp"

namespace tanrove {

using ClassBytes = std::array<std::uint8_t, class_id_digits / 2>;

/// The bytes of a class; nullopt unless it is 32 hexadecimal digits.
std::optional<ClassBytes> class_bytes(std::string_view class_id);

/// Four characters of a code as one number, the first the most significant. They have to be there.
std::uint32_t code_word(std::string_view text, std::size_t at);

/// Place of an entry in the list; nullopt where none fits.
using EntryPlace = std::optional<std::size_t>;

/// What of an entry a word is made of.
enum class ScanWord : std::uint8_t {
    vst2_id,
    compatible_id,
    class_end,
    class_word,
    last_code = class_word,
    plain_name,  ///< without all groups
    name,        ///< without the maker, where that is another
    last_name = name,
    vst3_stem,
    last_twin = vst3_stem,
    clap_name,
    clap_stem,
    last_clap = clap_stem,
    id,
    class_id,
    clap_id,
};

/// The words of all codes, and of all names in letters and digits, that will be asked for.
struct AskedWords {
    std::vector<std::uint32_t> codes;
    std::vector<std::uint32_t> names;
};

class ScanIndex {
public:
    /// The lookups by codes and by names find what was announced in `asked`.
    ScanIndex(std::vector<ScanEntry> entries, const AskedWords& asked);

    const std::vector<ScanEntry>& entries() const { return entries_; }
    bool empty() const { return entries_.empty(); }

    /// A VST2 by its number.
    EntryPlace vst2_with_id(std::uint32_t id) const { return first(ScanWord::vst2_id, id); }
    /// A VST3 by the number of the VST2 that it takes the place of, which its class holds behind
    /// "VST".
    EntryPlace compatible_with(std::uint32_t id) const {
        return first(ScanWord::compatible_id, id);
    }
    /// A VST3 whose class ends in this word.
    EntryPlace class_ends_in(std::uint32_t word) const { return first(ScanWord::class_end, word); }
    /// A VST3 whose class holds both words, anywhere.
    EntryPlace class_holds(std::uint32_t maker, std::uint32_t product) const;
    /// A VST3 of a known class in a file named like that of the VST2 with this number.
    EntryPlace vst3_beside(std::uint32_t vst2_id) const;
    /// An entry of this name, without its maker or without all groups in parentheses; in letters
    /// and digits only.
    EntryPlace named(const std::string& plain_name) const;
    /// An entry whose name is a part of this one, or the other way round. Walks the list.
    EntryPlace named_in_part(const std::string& plain_name) const;

    /// False where no entry has this name without all groups, so that nobody need ask for it.
    bool may_be_named(const std::string& plain_name) const;
    /// The build that is preferred among all of one name: a VST3 before a VST2 before a CLAP. Two
    /// makers' plug-ins of one name are no answer. Walks all of that name.
    EntryPlace only_one_named(const std::string& plain_name) const;

    /// A CLAP of this whole name, or else the only one in a file of this stem.
    EntryPlace clap_for(std::string_view name, const std::string& stem) const;

    /// True if REAPER has the plug-in of this ident; also without an ident, or without any list.
    bool is_installed(std::string_view ident) const;

private:
    std::span<const WordTable::Row> places_of(ScanWord kind, std::uint32_t word) const;
    EntryPlace first(ScanWord kind, std::uint32_t word) const;
    template <typename Fits>
    EntryPlace first_text(ScanWord kind, const std::string& text, Fits fits) const;
    void add(std::size_t place);
    void add_class(std::size_t place, const ClassBytes& bytes);
    void add_word(ScanWord kind, std::uint32_t word, std::size_t place);

    std::vector<ScanEntry> entries_;
    WordFilter asked_codes_;
    WordFilter asked_names_;
    /// For lookups by codes, by names, for those of VST3s beside a VST2, for those of CLAPs, and
    /// for those of what is installed. They are asked at different times: so the smaller tables
    /// stay in the processor's cache while thousands of plug-ins are looked up.
    std::array<WordTable, 5> tables_;
};

}  // namespace tanrove
