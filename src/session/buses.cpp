// The session's own path table says which buses it has. In sessions without one the texts tell
// those of two channels. A bus "Verb" has paths "Verb.L" and "Verb.R" for its legs, each followed
// by a byte that is no text. A bus that still has its first name, "Bus 3-4", has the legs "Bus 3"
// and "Bus 4".
#include "session/buses.hpp"

#include <algorithm>
#include <set>
#include <unordered_set>

#include "session/path_table.hpp"
#include "session/track_table.hpp"

namespace tanrove {

namespace {

constexpr std::size_t min_name_bytes = 3;
constexpr std::size_t max_scanned_name_bytes = 40;
constexpr std::string_view first_name_prefix = "Bus ";

using NameSet = std::unordered_set<std::string_view>;

/// All counted texts that can be the name of a path or bus: no point in them, no file path.
NameSet find_names(ByteView image) {
    NameSet names;
    for (std::size_t at = 0; at < image.size(); ++at) {
        const std::size_t count = image.u8(at);
        if (count < min_name_bytes || count > max_scanned_name_bytes) continue;
        const auto text = readCountedText(image, at, max_scanned_name_bytes, image.size());
        if (!text || !is_session_text(*text) || !is_track_name(*text)) continue;
        if (text->find('.') == std::string_view::npos) names.insert(*text);
    }
    return names;
}

bool is_digits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string first_name_of(std::string_view number) {
    return std::string(first_name_prefix).append(number);
}

/// True if the name is "Bus ", a number, a hyphen and a number, and both legs are named too.
bool has_numbered_legs(std::string_view name, const NameSet& names) {
    const auto numbers = name.substr(first_name_prefix.size());
    const auto hyphen = numbers.find('-');
    if (hyphen == std::string_view::npos) return false;
    const auto left = numbers.substr(0, hyphen);
    const auto right = numbers.substr(hyphen + 1);
    return is_digits(left) && is_digits(right) && names.contains(first_name_of(left)) &&
           names.contains(first_name_of(right));
}

/// The names that stand in front of ".L" or ".R", whatever stands in front of them.
class LegMarks {
public:
    explicit LegMarks(const NameSet& names)
        : reversed_(reversed_names(names)), marks_(reversed_.names().size(), 0) {}

    void find_in(ByteView image) {
        for (auto point = image.find('.', 0); point != ByteView::npos;
             point = image.find('.', point + 1)) {
            const char side = static_cast<char>(image.u8(point + 1));
            const auto behind = image.text(point + 2, 1);
            if ((side != 'L' && side != 'R') || !behind || is_session_text(*behind)) continue;
            mark(image, point, side == 'L' ? left : right);
        }
    }

    /// The names with both marks.
    std::vector<std::string> both() const {
        std::vector<std::string> found;
        for (std::size_t i = 0; i < marks_.size(); ++i) {
            if (marks_[i] != (left | right)) continue;
            const std::string& name = reversed_.names()[i];
            found.emplace_back(name.rbegin(), name.rend());
        }
        return found;
    }

private:
    static constexpr std::uint8_t left = 1;
    static constexpr std::uint8_t right = 2;

    /// Read backwards, a name that ends at a point is one that the text begins with.
    static std::vector<std::string> reversed_names(const NameSet& names) {
        std::vector<std::string> reversed;
        reversed.reserve(names.size());
        for (const auto name : names) reversed.emplace_back(name.rbegin(), name.rend());
        return reversed;
    }

    void mark(ByteView image, std::size_t point, std::uint8_t side) {
        const std::size_t length = std::min(point, reversed_.longest_bytes());
        const auto text = image.text(point - length, length).value_or("");
        const std::string backwards(text.rbegin(), text.rend());
        auto i = reversed_.longest_prefix_of(backwards);
        // Where a mark stands already, so it does on all shorter names.
        for (; i != PrefixNames::none && (marks_[i] & side) == 0; i = reversed_.next_shorter(i)) {
            marks_[i] |= side;
        }
    }

    PrefixNames reversed_;
    std::vector<std::uint8_t> marks_;
};

}  // namespace

std::vector<std::string> tell_buses(const BlockIndex& index) {
    const NameSet names = find_names(index.image());
    LegMarks marks(names);
    marks.find_in(index.image());
    std::vector<std::string> buses = marks.both();
    std::erase_if(buses, [](const auto& name) { return name.starts_with(first_name_prefix); });
    for (const auto name : names) {
        if (name.starts_with(first_name_prefix) && has_numbered_legs(name, names)) {
            buses.emplace_back(name);
        }
    }
    std::sort(buses.begin(), buses.end());
    return buses;
}

std::vector<std::string> readBuses(const BlockIndex& index) {
    const auto paths = read_path_table(index);
    if (!paths) return tell_buses(index);
    std::set<std::string> buses;
    for (const IoPath& path : *paths) {
        const bool is_bus = !path.mapped && path.parent_identity == 0;
        if (is_bus && !path.name.empty()) buses.insert(path.name);
    }
    return {buses.begin(), buses.end()};
}

/// Looks for occurrences up to `limit`, until one at or behind the position asked for is found.
void NearestBus::advance(std::size_t limit) {
    const std::size_t longest = buses_.longest_bytes();
    limit = std::min(limit, image_.size());
    for (; scanned_ < limit; ++scanned_) {
        const std::size_t length = std::min(longest, image_.size() - scanned_);
        const auto bus = buses_.longest_prefix_of(image_.text(scanned_, length).value_or(""));
        if (bus == PrefixNames::none) continue;
        next_ = {scanned_++, bus};
        return;
    }
}

std::optional<std::string> NearestBus::find(std::size_t position) {
    if (buses_.names().empty()) return std::nullopt;
    const std::size_t first = position > reach ? position - reach : 0;
    scanned_ = std::max(scanned_, first);
    while (next_.bus == PrefixNames::none || next_.at < position) {
        if (next_.bus != PrefixNames::none) previous_ = next_;
        next_ = {};
        advance(position + reach + 1);
        if (next_.bus == PrefixNames::none) break;
    }
    const bool has_previous = previous_.bus != PrefixNames::none && previous_.at >= first;
    const bool has_next = next_.bus != PrefixNames::none && next_.at <= position + reach;
    if (!has_previous && !has_next) return std::nullopt;
    const auto& names = buses_.names();
    if (!has_next) return names[previous_.bus];
    if (!has_previous) return names[next_.bus];
    const std::size_t in_front = position - previous_.at;
    const std::size_t behind = next_.at - position;
    if (in_front != behind) return names[in_front < behind ? previous_.bus : next_.bus];
    const bool next_is_longer = names[next_.bus].size() > names[previous_.bus].size();
    return names[next_is_longer ? next_.bus : previous_.bus];
}

}  // namespace tanrove
