// The rules, from the surest to the boldest.
#include "plugins/identity_rules.hpp"

#include <algorithm>
#include <iterator>
#include <string>

#include "plugins/product_names.hpp"

namespace tanrove {

namespace {

constexpr std::size_t product_at = 4;

std::optional<IdentityMatch> matched(EntryPlace place, std::string_view rule) {
    if (!place) return std::nullopt;
    return IdentityMatch{*place, rule};
}

/// This maker's AAX codes are "iZtpZ..0"; the dots stand in the number of its VSTs.
std::optional<std::uint32_t> izotope_number(std::string_view key) {
    constexpr std::string_view maker = "iZtp";
    constexpr std::size_t letters_at = 5;
    constexpr std::size_t letter_count = 2;
    if (!key.starts_with(maker) || key[4] != 'Z' || key[7] != '0') return std::nullopt;
    return code_word("Zn" + std::string(key.substr(letters_at, letter_count)), 0);
}

std::optional<IdentityMatch> match_izotope(const ScanIndex& scan, std::string_view key) {
    const auto number = izotope_number(key);
    if (!number) return std::nullopt;
    const auto match = matched(scan.compatible_with(*number), "iZotope code rule");
    return match ? match : matched(scan.vst2_with_id(*number), "iZotope code rule (VST2)");
}

}  // namespace

std::optional<IdentityMatch> match_by_code(const ScanIndex& scan, std::string_view key,
                                           std::string_view product_name, bool prefer_vst3) {
    if (key.size() < code_characters) return std::nullopt;
    const std::uint32_t maker = code_word(key, 0);
    const std::uint32_t product = code_word(key, product_at);
    if (const auto match = match_izotope(scan, key)) return match;
    if (prefer_vst3) {
        if (const auto match =
                matched(scan.compatible_with(product), "VST3 compat id (--prefer-vst3)")) {
            return match;
        }
        if (const auto match =
                matched(scan.vst3_beside(product), "VST3 by filename stem (--prefer-vst3)")) {
            return match;
        }
    }
    if (const auto match = matched(scan.vst2_with_id(product), "VST2 id")) return match;
    if (const auto match = matched(scan.compatible_with(product), "VST3 compat id")) return match;
    if (const auto match =
            matched(scan.class_ends_in(product), "VST3 class id ends in the AAX code")) {
        return match;
    }
    if (const auto match =
            matched(scan.class_holds(maker, product), "VST3 class id holds both AAX codes")) {
        return match;
    }
    const std::string plain_name = lower_alnum(product_name);
    if (const auto match = matched(scan.named(plain_name), "name")) return match;
    return matched(scan.named_in_part(plain_name), "name (partial)");
}

std::optional<IdentityMatch> match_in_shell(const ScanIndex& scan, std::string_view key) {
    if (key.size() != shell_key_characters) return std::nullopt;
    return matched(scan.compatible_with(code_word(key, code_characters)), "Waves PluginSubComp");
}

std::optional<IdentityMatch> match_by_session_name(const ScanIndex& scan, std::string_view name) {
    constexpr std::size_t least_characters = 3;
    const std::string plain_name = lower_alnum(name);
    if (plain_name.size() < least_characters) return std::nullopt;
    return matched(scan.only_one_named(plain_name), "the name Pro Tools stores");
}

void add_asked_by_key(AskedWords& asked, std::string_view key) {
    if (key.size() < code_characters) return;
    std::vector<std::uint32_t>& words = asked.codes;
    words.push_back(code_word(key, 0));
    words.push_back(code_word(key, product_at));
    if (const auto number = izotope_number(key)) words.push_back(*number);
    if (key.size() == shell_key_characters) words.push_back(code_word(key, code_characters));
}

void add_asked_by_name(AskedWords& asked, std::string_view name) {
    asked.names.push_back(text_word(lower_alnum(name)));
}

bool is_stock(std::string_view key) {
    constexpr std::string_view makers[] = {"Digi", "AVID", "Avid", "BFD ", "TrLn"};
    return std::ranges::any_of(makers, [&](auto maker) { return key.starts_with(maker); });
}

}  // namespace tanrove
