// The names of the mixer's strips, and which of them a playlist's name points at.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "session/strip_rows.hpp"

namespace tanrove {

/// Looks into a list that outlives it.
class StripNames {
public:
    explicit StripNames(std::span<const StripRow> rows);

    /// The first row that shows this name. No row is found by no name.
    std::optional<std::size_t> row_shown(std::string_view name) const;

    /// That one, else the first that was made under this name: playlists keep their names when the
    /// track is renamed.
    std::optional<std::size_t> row_called(std::string_view name) const;

    /// The shown name of the strip that an alternate playlist belongs to. Pro Tools names the
    /// playlists of a track by its name, a dot and two digits; a name that is a strip's own, or
    /// was when the strip was made, counts as well.
    std::optional<std::string> parent_of(std::string_view playlist) const;

    /// True if some strip shows this name.
    bool is_shown(std::string_view name) const { return row_of_shown_.contains(name); }

    /// The shown name of the strip that is, or was when it was made, called so.
    std::optional<std::string> strip_called(std::string_view name) const;

private:
    std::span<const StripRow> rows_;
    std::map<std::string_view, std::size_t> row_of_shown_;
    std::map<std::string_view, std::size_t> row_of_original_;
};

}  // namespace tanrove
