// The edit grid and the nudge value. A record of values (0x2066) holds each value as text in every
// unit of the time line, bars and beats among them: "   0| 1| 000". The edit window's own record
// comes first in the session and holds two, the nudge and the grid; other records of the type hold
// one or three.
#include "session/grid_and_nudge.hpp"

#include <algorithm>

namespace tanrove {

namespace {

constexpr std::uint16_t values_type = 0x2066;
constexpr std::uint32_t min_values_size = 24;
constexpr std::uint32_t max_values_size = 4000;
constexpr std::size_t max_values_blocks = 4096;  // a session has four or five

constexpr std::size_t max_bar_digits = 7;
constexpr std::size_t tick_digits = 3;
constexpr double grid_ticks_per_quarter = 960;
constexpr double max_grid_quarters = 1000;

bool is_digit(std::uint8_t byte) {
    return byte >= '0' && byte <= '9';
}

/// Reads along one text; a step that does not find what it wants leaves the cursor's verdict false.
class Cursor {
public:
    Cursor(ByteView text, std::size_t at) : text_(text), at_(at) {}

    /// Blanks and a number of `least` to `most` digits, with no further digit behind it.
    std::uint32_t number(std::size_t least, std::size_t most) {
        while (text_.has(at_, " ")) ++at_;
        std::uint32_t value = 0;
        std::size_t digits = 0;
        for (; digits < most && is_digit(text_.u8(at_)); ++digits, ++at_) {
            value = value * 10 + (text_.u8(at_) - std::uint32_t{'0'});
        }
        good_ = good_ && digits >= least && !is_digit(text_.u8(at_));
        return value;
    }

    void bar() {
        good_ = good_ && text_.has(at_, "|");
        ++at_;
    }

    bool good() const { return good_; }
    std::size_t at() const { return at_; }

private:
    ByteView text_;
    std::size_t at_;
    bool good_ = true;
};

struct FoundSetting {
    GridSetting setting;
    std::size_t end = 0;
};

std::optional<FoundSetting> read_setting(ByteView record, std::size_t at) {
    Cursor cursor(record, at);
    GridSetting setting;
    setting.bars = cursor.number(1, max_bar_digits);
    cursor.bar();
    if (!cursor.good()) return std::nullopt;
    setting.beats = cursor.number(1, max_bar_digits);
    cursor.bar();
    setting.ticks = cursor.number(tick_digits, tick_digits);
    if (!cursor.good()) return std::nullopt;
    return FoundSetting{setting, cursor.at()};
}

/// The first setting at or behind `from`. It begins where neither a digit nor a blank goes before,
/// so that no setting is read from its middle.
std::optional<FoundSetting> find_setting(ByteView record, std::size_t from) {
    for (std::size_t at = from; at < record.size(); ++at) {
        const auto before = record.u8(at - 1);
        if (is_digit(before) || before == ' ') continue;
        if (const auto found = read_setting(record, at)) return found;
    }
    return std::nullopt;
}

}  // namespace

std::optional<GridAndNudge> readGridAndNudge(const BlockIndex& index) {
    const auto blocks = index.of_type(values_type).all();
    for (const Block& block : blocks.first(std::min(blocks.size(), max_values_blocks))) {
        if (block.size < min_values_size || block.size > max_values_size) continue;
        const ByteView record = index.image().window(block.at, block.end() - block.at);
        const auto nudge = find_setting(record, block_payload_at);
        if (!nudge) continue;
        const auto grid = find_setting(record, nudge->end);
        if (grid) return GridAndNudge{.nudge = nudge->setting, .grid = grid->setting};
    }
    return std::nullopt;
}

std::optional<double> grid_quarter_notes(const GridSetting& grid, std::uint32_t numerator,
                                         std::uint32_t denominator) {
    if (denominator == 0) return std::nullopt;
    const double beat_quarters = 4.0 / denominator;
    const double quarters = grid.bars * (numerator * beat_quarters) + grid.beats * beat_quarters +
                            grid.ticks / grid_ticks_per_quarter;
    if (!(quarters > 0) || !(quarters < max_grid_quarters)) return std::nullopt;
    return quarters;
}

}  // namespace tanrove
