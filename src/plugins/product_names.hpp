// Names of plug-ins as REAPER shows them: "Product (Maker)", often with a channel layout behind,
// such as "(mono)", "(2->6ch)" or "(32 out)". What they have in common when they mean one product.
#pragma once

#include <string>
#include <string_view>

namespace tanrove {

/// Letters in lower case and digits; the rest is dropped, bytes beyond ASCII with it.
std::string lower_alnum(std::string_view text);

/// The name without the channel layouts at its end.
std::string_view without_channel_layout(std::string_view name);

/// The name without its last group in parentheses, a channel layout apart.
std::string_view short_name(std::string_view name);

/// The name without all groups in parentheses at its end.
std::string_view without_vendor(std::string_view name);

/// The text of the last group in parentheses, a channel layout apart; empty where there is none.
std::string_view maker_of(std::string_view name);

/// The text behind the first ": ", which stands behind the kind of plug-in; all of it where there
/// is none.
std::string_view behind_kind(std::string_view fx_name);

/// True of "VST3: Product (Maker)" and the like: the name that REAPER has for a plug-in.
bool is_named_by_reaper(std::string_view fx_name);

/// The file's name up to its last dot, in its own characters.
std::string_view raw_file_stem(std::string_view path);

/// What two builds' files have in common: the stem's letters and digits.
std::string file_stem(std::string_view path);

}  // namespace tanrove
