// The edit grid and the nudge value. A record of values (0x2066) holds each value as text in every
// unit of the time line: bars and beats, "   0| 1| 000", then minutes, timecode, feet, samples. The
// edit window's own record stands at the top level of the session; windows of other settings have
// further ones. From the 'Z':
//
//   9       u32 g, number of values: the nudge, the grid, one more
//   13      g u8, the unit that counts
//   13 + g  two more lists of the same form
//   ..      u32 g, then for each value u32 number of units and a counted text for each
#include "session/grid_and_nudge.hpp"

#include <algorithm>
#include <string_view>
#include <vector>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t min_values_size = 24;
constexpr std::uint32_t max_values_size = 4000;
constexpr std::size_t max_values_blocks = 4096;  // a session has four or five

constexpr std::size_t unit_lists = 3;
constexpr std::size_t count_width = 4;
constexpr std::size_t max_values = 16;
constexpr std::size_t unit_count = 5;
constexpr std::size_t max_text_bytes = 64;

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
        if (auto found = read_setting(record, at)) return found;
    }
    return std::nullopt;
}

/// For each value its texts, one a unit; empty where the record does not hold together.
std::vector<std::vector<std::string_view>> read_texts(ByteView record) {
    std::size_t at = block_payload_at;
    for (std::size_t list = 0; list < unit_lists; ++list) {
        const std::size_t count = record.u32(at);
        if (count > max_values) return {};
        at += count_width + count;
    }
    const std::size_t value_count = record.u32(at);
    if (value_count > max_values) return {};
    at += count_width;
    std::vector<std::vector<std::string_view>> values(value_count);
    for (auto& texts : values) {
        if (record.u32(at) != unit_count) return {};
        at += count_width;
        for (std::size_t unit = 0; unit < unit_count; ++unit) {
            const auto text = readCountedText(record, at, max_text_bytes, record.size());
            if (!text) return {};
            texts.push_back(*text);
            at += count_width + text->size();
        }
    }
    return values;
}

/// Gives the value of this number its unit. A record that holds together otherwise counts bars.
void read_unit(ByteView record, std::size_t value, GridSetting& setting) {
    const auto texts = read_texts(record);
    const std::size_t unit = record.u8(block_payload_at + count_width + value);
    if (value >= texts.size() || unit >= unit_count) return;
    setting.unit = static_cast<CountUnit>(unit);
    const std::string_view text = texts[value][unit];
    if (is_ascii_text(text))
        setting.text = text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::optional<GridAndNudge> read_values(const BlockIndex& index, const Block& block) {
    if (block.size < min_values_size || block.size > max_values_size) return std::nullopt;
    const ByteView record = index.image().window(block.at, block.end() - block.at);
    const auto nudge = find_setting(record, block_payload_at);
    if (!nudge) return std::nullopt;
    const auto grid = find_setting(record, nudge->end);
    if (!grid) return std::nullopt;
    GridAndNudge values{.nudge = nudge->setting, .grid = grid->setting};
    read_unit(record, 0, values.nudge);
    read_unit(record, 1, values.grid);
    return values;
}

}  // namespace

std::optional<GridAndNudge> readGridAndNudge(const BlockIndex& index) {
    for (const Block& block : index.top_level()) {
        if (block.content_type != block_type::grid_and_nudge) continue;
        if (auto values = read_values(index, block)) return values;
    }
    const auto blocks = index.of_type(block_type::grid_and_nudge).all();
    for (const Block& block : blocks.first(std::min(blocks.size(), max_values_blocks))) {
        if (auto values = read_values(index, block)) return values;
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
