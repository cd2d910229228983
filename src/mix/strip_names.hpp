// The names of the mixer's strips, and which of them a playlist's name points at.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "session/strip_rows.hpp"

namespace tanrove {

/// The name that Pro Tools shows: the current one, or the original where that is empty.
const std::string& shown_name(const StripRow& row);

class StripNames {
public:
    explicit StripNames(const StripRows& strips);

    /// The shown name of the strip that an alternate playlist belongs to. Pro Tools names the
    /// playlists of a track by its name, a dot and two digits; a name that is a strip's own, or
    /// was when the strip was made, counts as well.
    std::optional<std::string> parent_of(std::string_view playlist) const;

    /// True if some strip shows this name.
    bool is_shown(std::string_view name) const { return shown_.contains(name); }

    /// The shown name of the strip that is, or was when it was made, called so.
    std::optional<std::string> strip_called(std::string_view name) const;

private:
    std::set<std::string, std::less<>> shown_;
    std::map<std::string, std::string, std::less<>> shown_of_original_;
};

}  // namespace tanrove
