// A class is 16 bytes. Hosts of VST2 plug-ins find the VST3 that takes a VST2's place by a class of
// "VST", the VST2's number and the beginning of its name; other makers put the two halves of their
// AAX code somewhere into it.
#include "plugins/scan_index.hpp"

#include <algorithm>
#include <utility>

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

std::string upper_cased(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return upper;
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

ScanIndex::ScanIndex(std::vector<ScanEntry> entries) : entries_(std::move(entries)) {
    plain_names_.reserve(entries_.size());
    for (std::size_t place = 0; place < entries_.size(); ++place) add(place);
    for (WordPlaces* places : {&vst2_ids_, &compatible_ids_, &class_ends_, &class_words_}) {
        std::ranges::sort(*places);
    }
}

void ScanIndex::add(std::size_t place) {
    const ScanEntry& entry = entries_[place];
    add_name(place);
    if (entry.isClap) {
        clap_ids_.insert(entry.clapId);
        clap_names_.try_emplace(lower_alnum(without_channel_layout(entry.name)), place);
        const auto [stem, is_new] = clap_stems_.try_emplace(file_stem(entry.file), place);
        if (!is_new) stem->second.reset();
        return;
    }
    ids_.insert(entry.id);
    const auto number = static_cast<std::uint32_t>(place);
    if (entry.classId.empty()) {
        vst2_ids_.emplace_back(entry.id, number);
        return;
    }
    classes_.insert(upper_cased(entry.classId));
    const auto bytes = class_bytes(entry.classId);
    if (!bytes) return;
    add_class(number, *bytes, entry.isVst3);
    if (entry.isVst3) vst3_stems_.try_emplace(file_stem(entry.file), place);
}

void ScanIndex::add_class(std::uint32_t place, const ClassBytes& bytes, bool is_vst3) {
    constexpr std::size_t compatible_id_at = 3;
    if (is_vst2_compatible(bytes)) {
        compatible_ids_.emplace_back(word_at(bytes, compatible_id_at), place);
    }
    if (!is_vst3) return;
    constexpr std::size_t last_word_at = class_id_digits / 2 - word_bytes;
    class_ends_.emplace_back(word_at(bytes, last_word_at), place);
    for (std::size_t at = 0; at <= last_word_at; ++at) {
        class_words_.emplace_back(word_at(bytes, at), place);
    }
}

void ScanIndex::add_name(std::size_t place) {
    const ScanEntry& entry = entries_[place];
    std::string plain = lower_alnum(without_vendor(entry.name));
    names_.try_emplace(lower_alnum(entry.shortName), place);
    names_.try_emplace(plain, place);
    std::string maker = lower_alnum(maker_of(entry.name));
    const auto [shared, is_new] = shared_names_.try_emplace(plain);
    SharedName& name = shared->second;
    if (is_new) {
        name = {place, std::move(maker), false};
    } else {
        if (maker != name.maker) name.ambiguous = true;
        if (is_better_build(entry, entries_[name.best])) name.best = place;
    }
    plain_names_.push_back(std::move(plain));
}

EntryPlace ScanIndex::first(const WordPlaces& places, std::uint32_t word) {
    const auto at = std::ranges::lower_bound(places, std::pair(word, std::uint32_t{0}));
    if (at == places.end() || at->first != word) return std::nullopt;
    return at->second;
}

EntryPlace ScanIndex::first(const NamePlaces& places, const std::string& name) {
    const auto found = places.find(name);
    if (name.empty() || found == places.end()) return std::nullopt;
    return found->second;
}

// Walks the entries that hold the rarer of the two words.
EntryPlace ScanIndex::class_holds(std::uint32_t maker, std::uint32_t product) const {
    const auto with = [&](std::uint32_t word) {
        return std::ranges::equal_range(class_words_, word, {}, &WordPlaces::value_type::first);
    };
    const auto with_maker = with(maker);
    const auto with_product = with(product);
    const bool product_is_rarer = with_product.size() < with_maker.size();
    const std::uint32_t other = product_is_rarer ? maker : product;
    for (const auto& [word, place] : product_is_rarer ? with_product : with_maker) {
        if (holds_word(entries_[place].classId, other)) return place;
    }
    return std::nullopt;
}

EntryPlace ScanIndex::vst3_with_stem(const std::string& stem) const {
    return first(vst3_stems_, stem);
}

EntryPlace ScanIndex::named(const std::string& plain_name) const {
    return first(names_, plain_name);
}

EntryPlace ScanIndex::named_in_part(const std::string& plain_name) const {
    if (plain_name.empty()) return std::nullopt;
    for (std::size_t place = 0; place < plain_names_.size(); ++place) {
        const std::string& name = plain_names_[place];
        if (name.size() < least_partial_name) continue;
        if (plain_name.find(name) != std::string::npos) return place;
        if (name.find(plain_name) != std::string::npos) return place;
    }
    return std::nullopt;
}

EntryPlace ScanIndex::only_one_named(const std::string& plain_name) const {
    const auto found = shared_names_.find(plain_name);
    if (found == shared_names_.end() || found->second.ambiguous) return std::nullopt;
    return found->second.best;
}

EntryPlace ScanIndex::clap_for(std::string_view name, const std::string& stem) const {
    const auto by_name = first(clap_names_, lower_alnum(without_channel_layout(name)));
    if (by_name || stem.empty()) return by_name;
    const auto by_stem = clap_stems_.find(stem);
    return by_stem == clap_stems_.end() ? std::nullopt : by_stem->second;
}

bool ScanIndex::is_installed(std::string_view ident) const {
    if (entries_.empty() || ident.empty()) return true;
    if (clap_ids_.contains(std::string(ident))) return true;
    const std::uint32_t id = leading_number(ident);
    if (id != 0 && ids_.contains(id)) return true;
    const std::size_t brace = ident.find('{');
    if (brace == std::string_view::npos) return false;
    std::string_view behind = ident.substr(brace + 1);
    const std::string_view class_id = take_field(behind, '}');
    return !class_id.empty() && classes_.contains(upper_cased(class_id));
}

}  // namespace tanrove
