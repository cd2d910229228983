// Which of REAPER's plug-ins stands in for an AAX plug-in: the rules by which the codes in a
// session, and the name that we know for some of them, are compared with what REAPER has found. The
// surest rule comes first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "plugins/scan_index.hpp"

namespace tanrove {

/// Characters of a plug-in's code: four of the maker, four of the product.
constexpr std::size_t code_characters = 8;
/// A key with the plug-in's own part behind the code, as plug-ins of a shell have it.
constexpr std::size_t shell_key_characters = 12;

/// The plug-in that a rule has found, and the rule's name.
struct IdentityMatch {
    std::size_t entry = 0;
    std::string_view rule;
};

/// The build for a key of at least 8 characters. `product_name` is what we know the product by;
/// empty: nothing. A VST3 is looked for ahead of a VST2 while `prefer_vst3` is on.
std::optional<IdentityMatch> match_by_code(const ScanIndex& scan, std::string_view key,
                                           std::string_view product_name, bool prefer_vst3);

/// The plug-in of a shell for a key of 12 characters.
std::optional<IdentityMatch> match_in_shell(const ScanIndex& scan, std::string_view key);

/// The build for the name that the session itself gives a code.
std::optional<IdentityMatch> match_by_session_name(const ScanIndex& scan, std::string_view name);

/// What the rules will ask the list for this key, and for a name.
void add_asked_by_key(AskedWords& asked, std::string_view key);
void add_asked_by_name(AskedWords& asked, std::string_view name);

/// True for the makers of the plug-ins that come with Pro Tools.
bool is_stock(std::string_view key);

}  // namespace tanrove
