// A class is 16 bytes. Hosts of VST2 plug-ins find the VST3 that takes a VST2's place by a class of
// "VST", the VST2's number and the beginning of its name; other makers put the two halves of their
// AAX code somewhere into it.
#include "plugins/scan_index.hpp"

#include <algorithm>
#include <utility>

#include "base/paths.hpp"
#include "base/text_lines.hpp"
#include "plugins/product_names.hpp"

namespace tanrove {

namespace {

constexpr std::size_t word_bytes = 4;
/// Shorter names are part of far too many others.
constexpr std::size_t least_partial_name = 4;

std::uint8_t digit_value(char digit) {
    if (is_digit(digit)) return static_cast<std::uint8_t>(digit - '0');
    return static_cast<std::uint8_t>((digit & 0x5f) - 'A' + 10);
}

std::uint32_t word_at(const ClassBytes& bytes, std::size_t at) {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < word_bytes; ++i) word = word << 8 | bytes[at + i];
    return word;
}

bool is_vst2_compatible(const ClassBytes& bytes) {
    return bytes[0] == 'V' && bytes[1] == 'S' && bytes[2] == 'T';
}

bool holds_word(const std::string& class_id, std::uint32_t word) {
    const auto bytes = class_bytes(class_id);
    if (!bytes) return false;
    for (std::size_t at = 0; at + word_bytes <= bytes->size(); ++at) {
        if (word_at(*bytes, at) == word) return true;
    }
    return false;
}

std::string plain_name_of(const ScanEntry& entry) {
    return lower_alnum(without_vendor(entry.name));
}

std::string clap_name_of(const ScanEntry& entry) {
    return lower_alnum(without_channel_layout(entry.name));
}

std::size_t table_of(ScanWord kind) {
    if (kind <= ScanWord::last_code) return 0;
    if (kind <= ScanWord::last_name) return 1;
    if (kind <= ScanWord::last_twin) return 2;
    return kind <= ScanWord::last_clap ? 3 : 4;
}

bool is_better_build(const ScanEntry& later, const ScanEntry& best) {
    if (later.isClap) return false;
    return best.isClap || (is_vst3_build(later) && !is_vst3_build(best));
}

}  // namespace

std::optional<ClassBytes> class_bytes(std::string_view class_id) {
    if (class_id.size() != class_id_digits) return std::nullopt;
    if (!std::ranges::all_of(class_id, is_hex_digit)) return std::nullopt;
    ClassBytes bytes = {};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(digit_value(class_id[2 * i]) << 4 |
                                             digit_value(class_id[2 * i + 1]));
    }
    return bytes;
}

std::uint32_t code_word(std::string_view text, std::size_t at) {
    std::uint32_t word = 0;
    for (const char c : text.substr(at, word_bytes))
        word = word << 8 | static_cast<std::uint8_t>(c);
    return word;
}

ScanIndex::ScanIndex(std::vector<ScanEntry> entries, const AskedWords& asked)
    : entries_(std::move(entries)), asked_codes_(asked.codes), asked_names_(asked.names) {
    for (std::size_t place = 0; place < entries_.size(); ++place) add(place);
    for (WordTable& table : tables_) table.finish();
}

void ScanIndex::add(std::size_t place) {
    const ScanEntry& entry = entries_[place];
    const std::string plain_name = plain_name_of(entry);
    const std::string name = lower_alnum(entry.shortName);
    add_word(ScanWord::plain_name, text_word(plain_name), place);
    if (name != plain_name) add_word(ScanWord::name, text_word(name), place);
    if (entry.isClap) {
        add_word(ScanWord::clap_id, text_word(entry.clapId), place);
        add_word(ScanWord::clap_name, text_word(clap_name_of(entry)), place);
        add_word(ScanWord::clap_stem, text_word(file_stem(entry.file)), place);
        return;
    }
    add_word(ScanWord::id, entry.id, place);
    if (entry.classId.empty()) {
        add_word(ScanWord::vst2_id, entry.id, place);
        return;
    }
    add_word(ScanWord::class_id, text_word(lower_cased(entry.classId)), place);
    if (const auto bytes = class_bytes(entry.classId)) add_class(place, *bytes);
}

void ScanIndex::add_class(std::size_t place, const ClassBytes& bytes) {
    constexpr std::size_t compatible_id_at = 3;
    if (is_vst2_compatible(bytes)) {
        add_word(ScanWord::compatible_id, word_at(bytes, compatible_id_at), place);
    }
    if (!entries_[place].isVst3) return;
    constexpr std::size_t last_word_at = class_id_digits / 2 - word_bytes;
    add_word(ScanWord::class_end, word_at(bytes, last_word_at), place);
    for (std::size_t at = 0; at <= last_word_at; ++at) {
        add_word(ScanWord::class_word, word_at(bytes, at), place);
    }
    add_word(ScanWord::vst3_stem, text_word(file_stem(entries_[place].file)), place);
}

void ScanIndex::add_word(ScanWord kind, std::uint32_t word, std::size_t place) {
    if (kind <= ScanWord::last_name) {
        const WordFilter& asked = kind <= ScanWord::last_code ? asked_codes_ : asked_names_;
        if (!asked.may_hold(word)) return;
    }
    tables_[table_of(kind)].add(word, static_cast<std::uint32_t>(kind), place);
}

std::span<const WordTable::Row> ScanIndex::places_of(ScanWord kind, std::uint32_t word) const {
    return tables_[table_of(kind)].places_of(word, static_cast<std::uint32_t>(kind));
}

EntryPlace ScanIndex::first(ScanWord kind, std::uint32_t word) const {
    const auto places = places_of(kind, word);
    if (places.empty()) return std::nullopt;
    return places.front().place();
}

/// The first entry of the text's word for which the text itself fits.
template <typename Fits>
EntryPlace ScanIndex::first_text(ScanWord kind, const std::string& text, Fits fits) const {
    if (text.empty()) return std::nullopt;
    for (const auto& row : places_of(kind, text_word(text))) {
        if (fits(entries_[row.place()])) return row.place();
    }
    return std::nullopt;
}

// Walks the entries that hold the rarer of the two words.
EntryPlace ScanIndex::class_holds(std::uint32_t maker, std::uint32_t product) const {
    const auto with_product = places_of(ScanWord::class_word, product);
    if (with_product.empty()) return std::nullopt;
    const auto with_maker = places_of(ScanWord::class_word, maker);
    const bool product_is_rarer = with_product.size() < with_maker.size();
    const std::uint32_t other = product_is_rarer ? maker : product;
    for (const auto& row : product_is_rarer ? with_product : with_maker) {
        if (holds_word(entries_[row.place()].classId, other)) return row.place();
    }
    return std::nullopt;
}

EntryPlace ScanIndex::vst3_beside(std::uint32_t vst2_id) const {
    const EntryPlace vst2 = vst2_with_id(vst2_id);
    if (!vst2) return std::nullopt;
    const std::string stem = file_stem(entries_[*vst2].file);
    return first_text(ScanWord::vst3_stem, stem,
                      [&](const ScanEntry& entry) { return file_stem(entry.file) == stem; });
}

EntryPlace ScanIndex::named(const std::string& plain_name) const {
    const auto by_short_name = first_text(ScanWord::name, plain_name, [&](const ScanEntry& entry) {
        return lower_alnum(entry.shortName) == plain_name;
    });
    const auto by_plain_name =
        first_text(ScanWord::plain_name, plain_name,
                   [&](const ScanEntry& entry) { return plain_name_of(entry) == plain_name; });
    if (!by_short_name || !by_plain_name) return by_short_name ? by_short_name : by_plain_name;
    return std::min(*by_short_name, *by_plain_name);
}

EntryPlace ScanIndex::named_in_part(const std::string& plain_name) const {
    if (plain_name.empty()) return std::nullopt;
    for (std::size_t place = 0; place < entries_.size(); ++place) {
        const std::string name = plain_name_of(entries_[place]);
        if (name.size() < least_partial_name) continue;
        if (plain_name.find(name) != std::string::npos) return place;
        if (name.find(plain_name) != std::string::npos) return place;
    }
    return std::nullopt;
}

bool ScanIndex::may_be_named(const std::string& plain_name) const {
    return !places_of(ScanWord::plain_name, text_word(plain_name)).empty();
}

EntryPlace ScanIndex::only_one_named(const std::string& plain_name) const {
    EntryPlace best;
    std::string maker;
    for (const auto& row : places_of(ScanWord::plain_name, text_word(plain_name))) {
        const ScanEntry& entry = entries_[row.place()];
        if (plain_name_of(entry) != plain_name) continue;
        std::string its_maker = lower_alnum(maker_of(entry.name));
        if (!best) {
            best = row.place();
            maker = std::move(its_maker);
            continue;
        }
        if (its_maker != maker) return std::nullopt;
        if (is_better_build(entry, entries_[*best])) best = row.place();
    }
    return best;
}

EntryPlace ScanIndex::clap_for(std::string_view name, const std::string& stem) const {
    const std::string plain_name = lower_alnum(without_channel_layout(name));
    const auto by_name = first_text(ScanWord::clap_name, plain_name, [&](const ScanEntry& entry) {
        return clap_name_of(entry) == plain_name;
    });
    if (by_name) return by_name;
    const auto has_stem = [&](const ScanEntry& entry) { return file_stem(entry.file) == stem; };
    const auto by_stem = first_text(ScanWord::clap_stem, stem, has_stem);
    if (!by_stem) return std::nullopt;
    const auto another = first_text(ScanWord::clap_stem, stem, [&](const ScanEntry& entry) {
        return &entry != &entries_[*by_stem] && has_stem(entry);
    });
    return another ? std::nullopt : by_stem;
}

bool ScanIndex::is_installed(std::string_view ident) const {
    if (entries_.empty() || ident.empty()) return true;
    const auto clap = first_text(ScanWord::clap_id, std::string(ident),
                                 [&](const ScanEntry& entry) { return entry.clapId == ident; });
    const std::uint32_t id = leading_number(ident);
    if (clap || (id != 0 && first(ScanWord::id, id))) return true;
    const std::size_t brace = ident.find('{');
    if (brace == std::string_view::npos) return false;
    std::string_view behind = ident.substr(brace + 1);
    const std::string class_id = lower_cased(std::string(take_field(behind, '}')));
    return first_text(
               ScanWord::class_id, class_id,
               [&](const ScanEntry& entry) { return lower_cased(entry.classId) == class_id; })
        .has_value();
}

}  // namespace tanrove
