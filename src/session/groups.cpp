// A group 0x202a, offsets from its 'Z', n being the bytes of its name, A = 13 + n:
//
//   9       u32 n, 1 to 128, text at 13
//   A       u8 kind
//   A + 1   u8 slot (0xff, with three more behind it, on "<ALL>")
//   A + 5   u8 not 0: active
//   A + 7   u16 number of members, at most 256
//   A + 11  u16 a member
//   T       0xfe 0xff behind the last member
//   T + 10  u16 the VCA master's position, 0xffff none
//   ..      0x258e with the attributes from its offset 9, the first 32 of them read
//
// Groups stand in a 0x202b: u32 count and the mix groups, u32 count and the edit groups.
#include "session/groups.hpp"

#include <algorithm>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_count_at = 9;
constexpr std::size_t name_at = 13;
constexpr std::size_t max_group_name_bytes = 128;
// A block of this size and the name's reaches to the place of its first member.
constexpr std::size_t size_without_name = 17;

// Behind the name.
constexpr std::size_t slot_at = 1;
constexpr std::size_t active_at = 5;
constexpr std::size_t member_count_at = 7;
constexpr std::size_t members_at = 11;
constexpr std::size_t member_width = 2;
constexpr std::size_t max_members = 256;

constexpr std::string_view terminator("\xfe\xff", 2);
constexpr std::size_t vca_behind_terminator = 10;
constexpr std::size_t vca_width = 2;
constexpr std::uint16_t no_vca = 0xffff;

constexpr std::uint32_t least_attributes_size = 4;

std::int32_t vca_master_at(ByteView image, std::size_t at, std::size_t end) {
    const std::uint16_t position = image.u16(at);
    return at + vca_width > end || position == no_vca ? -1 : position;
}

void take_attributes(ByteView image, const Block& block, GroupRecord& group) {
    const auto stored = image.window(block.payload(), block.end() - block.payload()).span();
    const auto count = std::min(stored.size(), group.attributes.size());
    std::copy_n(stored.begin(), count, group.attributes.begin());
    group.has_attributes = true;
}

std::optional<GroupRecord> read_group(ByteView image, const Block& block,
                                      const BlockList& attributes) {
    const auto name =
        readCountedText(image, block.at + name_count_at, max_group_name_bytes, block.end());
    if (!name || name->empty() || !is_session_text(*name)) return std::nullopt;
    if (block.size < name->size() + size_without_name) return std::nullopt;

    const std::size_t fields = block.at + name_at + name->size();
    const std::size_t members = fields + members_at;
    const std::size_t member_count = image.u16(fields + member_count_at);
    if (member_count > max_members) return std::nullopt;
    const std::size_t members_end = members + member_count * member_width;
    if (members_end + terminator.size() > block.end()) return std::nullopt;
    if (!image.has(members_end, terminator)) return std::nullopt;

    GroupRecord group;
    group.name = *name;
    group.kind = image.u8(fields);
    group.slot = image.u8(fields + slot_at);
    group.active = image.u8(fields + active_at) != 0;
    group.members.reserve(member_count);
    for (std::size_t at = members; at < members_end; at += member_width) {
        group.members.push_back(image.u16(at));
    }
    const std::size_t vca_at = members_end + vca_behind_terminator;
    group.vca_master = vca_master_at(image, vca_at, block.end());
    if (const Block* found = attributes.first_inside(vca_at, block.end())) {
        take_attributes(image, *found, group);
    }
    return group;
}

/// The blocks that are long enough to hold attributes.
BlockList attribute_blocks(const BlockIndex& index) {
    std::vector<Block> blocks;
    for (const Block& block : index.of_type(block_type::group_attributes).all()) {
        if (block.size >= least_attributes_size) blocks.push_back(block);
    }
    return BlockList(std::move(blocks));
}

}  // namespace

std::vector<GroupRecord> readGroups(const BlockIndex& index) {
    const BlockList attributes = attribute_blocks(index);
    std::vector<GroupRecord> groups;
    for (const Block& block : index.of_type(block_type::group).all()) {
        auto group = read_group(index.image(), block, attributes);
        if (group) groups.push_back(std::move(*group));
    }
    return groups;
}

}  // namespace tanrove
