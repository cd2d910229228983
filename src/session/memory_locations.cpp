// Memory locations (0x2077). A session keeps its list twice with the same content. From the 'Z':
//
//   9       u16 number
//   11      u8 flags; `sample_bit` marks positions in samples
//   12      u8 kind; 8 to 10 are the kinds 0 to 2 of newer sessions
//   15      u32 count n and the name, n bytes
//   19 + n  start, 8 bytes: the body begins here, and the colours are told from here
//   27 + n  end, 8 bytes
//
// The colour stands around a run of small blocks (0x2506) at a place of the body that moves. `run`
// is where that run begins, `tail` where it ends, and the length of what follows tells the form:
//
//   run - 6    i16 or u16, a colour's place on a palette; -2 none
//   tail + 61  three u16, red, green and blue, in the high bytes (palette form only)
//
//   128 bytes behind the run  palette form: an index, and perhaps a colour of its own
//   39 bytes                  slot form
//   47 bytes                  slot form of 2021, eight more bytes at its end
//
// These are the lengths without the location's comment, which stands four zero bytes behind the
// run, a text with a u32 count in front.
#include "session/memory_locations.hpp"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t number_at = 9;
constexpr std::size_t flags_at = 11;
constexpr std::size_t kind_at = 12;
constexpr std::size_t name_count_at = 15;
constexpr std::size_t name_at = 19;
constexpr std::size_t body_end_at = 8;  // counted from the body, as the colours are
constexpr std::size_t min_body_bytes = 16;

constexpr std::uint32_t sample_bit = 2;
constexpr std::uint32_t newer_kinds = 8;
constexpr std::uint32_t last_kind = 2;

constexpr std::string_view colour_type_bytes("\x06\x25", 2);
constexpr std::size_t colour_block_bytes = 17;
constexpr std::size_t place_before_run = 6;
constexpr std::size_t palette_rest_bytes = 128;
constexpr std::size_t slot_rest_bytes = 39;
constexpr std::size_t slot_rest_bytes_2021 = 47;
constexpr std::size_t rgb_behind_run = 61;
constexpr std::size_t comment_behind_run = 4;
constexpr std::size_t max_comment_bytes = 65535;

/// Colour blocks that follow each other without a gap.
struct ColourRun {
    std::size_t at = 0;
    std::size_t count = 0;

    std::size_t end() const { return at + count * colour_block_bytes; }
};

/// Where the colour blocks of all locations stand, so that no location has to search for its own.
/// They are told by the 'Z' and their type alone.
class ColourRuns {
public:
    ColourRuns(ByteView image, const BlockSpan& locations) {
        for (const std::size_t hit : find_in(image, locations, colour_type_bytes)) {
            const std::size_t at = hit - block_content_at;  // a location begins with more bytes
            if (image.u8(at) == block_marker) runs_.push_back({at, 1});
        }
        for (std::size_t i = runs_.size(); i-- > 0;) {
            const ColourRun* next = first_at(runs_[i].end());
            if (next != nullptr && next->at == runs_[i].end()) runs_[i].count += next->count;
        }
    }

    /// The first run that begins at or behind `from`, as far as its blocks' headers lie before
    /// `limit`.
    std::optional<ColourRun> first_inside(std::size_t from, std::size_t limit) const {
        const ColourRun* run = first_at(from);
        if (run == nullptr || run->at + block_payload_at > limit) return std::nullopt;
        const std::size_t room = limit - block_payload_at - run->at;
        return ColourRun{run->at, std::min(run->count, room / colour_block_bytes + 1)};
    }

private:
    const ColourRun* first_at(std::size_t from) const {
        const auto run = std::lower_bound(
            runs_.begin(), runs_.end(), from,
            [](const ColourRun& r, std::size_t position) { return r.at < position; });
        return run == runs_.end() ? nullptr : &*run;
    }

    std::vector<ColourRun> runs_;  ///< in order of position, one for each block of a run
};

std::optional<LocationKind> read_kind(ByteView record) {
    std::uint32_t kind = record.u8(kind_at);
    if (kind >= newer_kinds && kind <= newer_kinds + last_kind) kind -= newer_kinds;
    if (kind > last_kind) return std::nullopt;
    return static_cast<LocationKind>(kind);
}

/// Start and end, in ticks from the origin or in samples. False if they are neither.
bool read_positions(ByteView body, MemoryLocation& location) {
    const auto start = read_position(body, 0);
    const auto end = read_position(body, body_end_at);
    const bool are_ticks = start >= tick_origin && end >= tick_origin;
    location.in_samples = !are_ticks;
    if (!are_ticks && ((location.flags & sample_bit) == 0 || end < start)) return false;
    const auto origin = are_ticks ? tick_origin : 0;
    location.start = static_cast<double>(start - origin);
    location.end = static_cast<double>(end - origin);
    return true;
}

std::string_view comment_behind(ByteView body, const ColourRun& run) {
    if (body.u32(run.end()) != 0) return {};
    const auto comment =
        readCountedText(body, run.end() + comment_behind_run, max_comment_bytes, body.size());
    return comment.value_or(std::string_view());
}

void read_palette_colour(ByteView body, const ColourRun& run, MemoryLocation& location) {
    const std::int32_t index = body.u16(run.at - place_before_run);
    const bool is_none = index >= 0xfffe;  // -1 and -2 stand for no colour
    if (!is_none) location.colour_index = index;
    const std::size_t rgb_at = run.end() + location.comment.size() + rgb_behind_run;
    const bool has_rgb =
        body.u8(rgb_at) == 0 && body.u8(rgb_at + 2) == 0 && body.u8(rgb_at + 4) == 0;
    if (has_rgb) {
        location.colour_rgb =
            body.u8(rgb_at + 1) << 16 | body.u8(rgb_at + 3) << 8 | body.u8(rgb_at + 5);
    } else if (run.count != 1) {
        location.colour_index = -1;
    }
}

/// `run` counts from the body, like all places of the colour.
void read_colour(ByteView body, const ColourRun& run, MemoryLocation& location) {
    if (run.at < place_before_run || run.end() > body.size()) return;
    const std::size_t rest = body.size() - run.end() - location.comment.size();
    if (rest == palette_rest_bytes) {
        read_palette_colour(body, run, location);
    } else if (rest == slot_rest_bytes || rest == slot_rest_bytes_2021) {
        location.colour_slot = body.i16(run.at - place_before_run);
    }
}

std::optional<MemoryLocation> read_location(ByteView image, const Block& block,
                                            const ColourRuns& colours) {
    const ByteView record = image.window(block.at, block.end() - block.at);
    const auto name = readCountedText(record, name_count_at, max_name_bytes, record.size());
    const auto kind = read_kind(record);
    if (!name || !kind) return std::nullopt;
    const std::size_t body_at = name_at + name->size();
    const ByteView body = record.window(body_at, record.size() - body_at);
    if (body.size() < min_body_bytes) return std::nullopt;

    MemoryLocation location;
    location.name = *name;
    location.number = record.u16(number_at);
    location.flags = record.u8(flags_at);
    location.kind = *kind;
    if (!read_positions(body, location)) return std::nullopt;

    const std::size_t body_in_image = block.at + body_at;
    if (auto run = colours.first_inside(body_in_image + min_body_bytes, block.end())) {
        run->at -= body_in_image;
        location.comment = comment_behind(body, *run);
        read_colour(body, *run, location);
    }
    return location;
}

}  // namespace

std::vector<MemoryLocation> readMemoryLocations(const BlockIndex& index) {
    std::vector<MemoryLocation> locations;
    const BlockList& blocks = index.of_type(block_type::memory_location);
    const ColourRuns colours(index.image(), blocks.reach());
    // The number belongs to the key: two locations of one name and place are two.
    std::set<std::tuple<std::uint32_t, std::uint32_t, double, double, std::string>> seen;
    for (const Block& block : blocks.all()) {
        auto location = read_location(index.image(), block, colours);
        if (!location) continue;
        const bool is_new = seen.emplace(location->number, location->flags, location->start,
                                         location->end, location->name)
                                .second;
        if (!is_new) continue;
        locations.push_back(std::move(*location));
    }
    return locations;
}

}  // namespace tanrove
