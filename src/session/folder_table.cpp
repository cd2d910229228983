// The folder table 0x210c: u32 number of folders at 9, the folders from 13, without a gap, up to
// the block's last byte. A folder and a member, offsets from their first byte:
//
//   5    the identity marker
//   9    u64 identity
//   17   folders only: u32 number of members, which follow
#include "session/folder_table.hpp"

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t largest_empty_block = 5;

constexpr std::size_t folder_count_at = 9;
constexpr std::size_t folders_at = 13;
constexpr std::size_t max_folders = 4096;
constexpr std::size_t max_members = 4096;

constexpr std::size_t marker_at = 5;
constexpr std::size_t identity_at = 9;
constexpr std::size_t member_count_at = 17;
constexpr std::size_t member_bytes = 17;
constexpr std::size_t folder_bytes = 21;

/// Reads entry after entry of one table; a read that does not fit fails for good.
class FolderReader {
public:
    FolderReader(ByteView table, std::size_t at) : table_(table), at_(at) {}

    /// Appends one folder to `folders`. False if it breaks the layout.
    bool read_folder(FolderTable& folders) {
        const auto identity = read_identity(folder_bytes);
        if (!identity) return false;
        const std::size_t count = table_.u32(at_ + member_count_at);
        at_ += folder_bytes;
        if (count > max_members || !table_.holds(at_, count * member_bytes)) return false;
        auto& members = folders[*identity];
        for (std::size_t i = 0; i < count; ++i) {
            const auto member = read_identity(member_bytes);
            if (!member) return false;
            members.push_back(*member);
            at_ += member_bytes;
        }
        return true;
    }

    bool is_at_end() const { return at_ == table_.size(); }

private:
    std::optional<std::uint64_t> read_identity(std::size_t entry_bytes) const {
        if (!table_.holds(at_, entry_bytes)) return std::nullopt;
        if (!table_.has(at_ + marker_at, identity_marker)) return std::nullopt;
        return table_.u64(at_ + identity_at);
    }

    ByteView table_;
    std::size_t at_;
};

std::optional<FolderTable> read_table(ByteView table) {
    const std::size_t count = table.u32(folder_count_at);
    if (count > max_folders) return std::nullopt;
    FolderReader reader(table, folders_at);
    FolderTable folders;
    for (std::size_t i = 0; i < count; ++i) {
        if (!reader.read_folder(folders)) return std::nullopt;
    }
    if (!reader.is_at_end()) return std::nullopt;
    return folders;
}

}  // namespace

std::optional<FolderTable> readFolderTable(const BlockIndex& index) {
    for (const Block& block : index.of_type(block_type::folder_table).all()) {
        if (block.size <= largest_empty_block) continue;
        return read_table(index.image().window(block.at, block.end() - block.at));
    }
    return std::nullopt;
}

}  // namespace tanrove
