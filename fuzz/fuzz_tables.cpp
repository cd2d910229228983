// The readers of the other tables: groups, folders, VCA masters, video, freeze renders.
#include "fuzz/reader_promises.hpp"
#include "session/folder_table.hpp"
#include "session/groups.hpp"
#include "session/vca_slots.hpp"
#include "session/video_clips.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    const BlockIndex index(input_view(data, size));
    promise_family(index, ReaderFamily::tables);

    for (const GroupRecord& group : readGroups(index)) {
        promise(group.members.size() * 2 <= size, "members are words of the image");
    }
    const auto rows = readStripRows(index).rows;
    for (const auto& [row, value] : readVcaSlots(index, rows)) {
        promise(row < rows.size() && rows[row].type == StripRowType::vca, "slots are masters'");
    }
    if (const auto rate = readVideoRate(index)) {
        promise(*rate > 23 && *rate < 121, "the picture's rate is near a usual one");
    }
    std::size_t members = 0;
    for (const auto& [folder, tracks] : readFolderTable(index).value_or(FolderTable())) {
        members += tracks.size();
    }
    promise(members * 8 <= size, "members are identities in the image");
    return 0;
}
