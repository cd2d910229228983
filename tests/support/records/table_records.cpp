// Groups, folders, video and the smaller tables, field by field. Where no real session shows the
// record, only what is known of it is filled.
#include "support/records/table_records.hpp"

namespace tanrove::builder {

namespace {

Bytes marked(std::uint64_t identity) {
    return ByteWriter().zeros(5).raw("*").zeros(3).u64(identity).bytes();
}

template <typename Spec, typename Write>
Bytes counted_list(const std::vector<Spec>& specs, Write write) {
    ByteWriter list;
    list.u32(specs.size());
    for (const auto& spec : specs) list.raw(write(spec));
    return list.bytes();
}

Bytes folder(const FolderSpec& spec) {
    return ByteWriter().raw(marked(spec.identity)).raw(counted_list(spec.members, marked)).bytes();
}

Bytes file_entry(const FileListEntry& entry) {
    return ByteWriter().u8(entry.kind).u32(entry.parent).counted(entry.name).zeros(4).bytes();
}

Bytes video_list(const std::vector<std::string>& files, const std::vector<std::string>& path) {
    const auto volume = static_cast<std::uint32_t>(1 + files.size());
    const auto last = volume + static_cast<std::uint32_t>(path.size()) - 1;
    std::vector<FileListEntry> entries = {{1, last, "Video Files"}};
    for (const auto& file : files) entries.push_back({2, 0, file});
    entries.push_back({0, 0xffffffff, path[0]});
    for (std::uint32_t i = volume + 1; i <= last; ++i)
        entries.push_back({1, i - 1, path[i - volume]});
    ByteWriter list;
    list.u32(files.size()).raw(file_entries_block(entries));
    for (std::size_t i = 0; i < files.size(); ++i) {
        list.block(0x1005, ByteWriter().u32(1 + i).zeros(8).bytes());
    }
    return block(0x1006, list.bytes());
}

Bytes video_region(const VideoRegionSpec& spec) {
    Bytes point = three_point({.source_offset = spec.source_offset, .length = spec.length});
    point[1] = static_cast<std::uint8_t>(point[1] | spec.unit_mark);
    const Bytes clip = ByteWriter().counted(spec.name).raw(point).i16(-2).zeros(36).bytes();
    return block(0x262d, ByteWriter().block(0x2628, clip, 2).u32(spec.movie).u8(0).bytes());
}

Bytes video_clip(const PlacementSpec& placement) {
    Bytes bytes = placement_block(placement, false);
    bytes[7] = 0x51;  // 0x1051 in place of 0x1050
    return bytes;
}

Bytes video_playlist(const VideoTrackSpec& track) {
    const Bytes clips = counted_list(track.clips, video_clip);
    return block(0x1053, ByteWriter().counted(track.name).raw(clips).u8(1).u8(0).bytes());
}

}  // namespace

Bytes group_block(const GroupSpec& group) {
    ByteWriter record;
    record.counted(group.name).u8(group.kind).u32(group.slot).u8(group.active ? 1 : 0).u8(0);
    record.u16(group.members.size()).u16(0);
    for (const auto member : group.members) record.u16(member);
    record.u16(0xfffe).u16(0x8010).u16(1).u32(0).u16(group.vca_master);
    record.block(0x258e, ByteWriter().raw(group.attributes).pad_to(60).bytes(), 3);
    return block(0x202a, record.bytes(), 5);
}

Bytes picture_settings_block(std::uint8_t quality) {
    ByteWriter settings;
    settings.u32(0).u8(quality).u8(1).zeros(9).u32(6).zeros(10).u16(0x0201).u32(6);
    return block(0x2032, block(0x270a, settings.zeros(20).bytes(), 14));
}

Bytes folder_table_block(const std::vector<FolderSpec>& folders) {
    return block(0x210c, counted_list(folders, folder));
}

Bytes vca_record(int fader_tenths_db) {
    const auto fader = static_cast<std::uint64_t>(fader_tenths_db);
    return block(0x2514, ByteWriter().u32(fader).zeros(9).bytes());
}

Bytes alternates_block(const std::vector<std::pair<std::string, std::uint32_t>>& alternates,
                       bool counted) {
    ByteWriter entries;
    if (counted) entries.u32(alternates.size());
    for (const auto& [name, value] : alternates) {
        entries.raw(region_block({.name = name, .file_index = value}));
    }
    return block(0x2632, entries.bytes());
}

Bytes file_entries_block(const std::vector<FileListEntry>& entries) {
    return block(0x103a, counted_list(entries, file_entry));
}

Bytes colour_settings_block(const Bytes& schemes, bool has_child) {
    const Bytes child = block(0x2011, ByteWriter().u32(3).zeros(15).bytes());
    ByteWriter settings;
    settings.raw(has_child ? child : Bytes(27)).u8(schemes[0]).u8(0).u8(schemes[1]);
    return block(0x20a2, settings.zeros(3).u8(23).u8(0).u8(1).u8(8).u8(0).bytes(), 8);
}

Bytes tables_before_clips(const TablesSpec& tables, const std::vector<std::string>& path) {
    ByteWriter bytes;
    if (!tables.video_files.empty()) bytes.raw(video_list(tables.video_files, path));
    if (!tables.alternates.empty()) bytes.raw(alternates_block(tables.alternates));
    return bytes.bytes();
}

Bytes tables_before_rows(const TablesSpec& tables) {
    ByteWriter bytes;
    const auto& video = tables.video_tracks;
    const auto& regions = tables.video_regions;
    if (!regions.empty()) bytes.block(0x262e, counted_list(regions, video_region), 1);
    if (!video.empty()) bytes.block(0x1055, counted_list(video, video_playlist));
    if (!tables.folders.empty()) bytes.raw(folder_table_block(tables.folders));
    return bytes.bytes();
}

Bytes tables_after_rows(const TablesSpec& tables, std::uint16_t strip_count) {
    ByteWriter bytes;
    if (!tables.groups.empty()) {
        std::vector<GroupSpec> mix = {{.name = "<ALL>", .slot = 0xffffffff, .active = false}};
        for (std::uint16_t i = 0; i < strip_count; ++i) mix[0].members.push_back(i);
        mix.insert(mix.end(), tables.groups.begin(), tables.groups.end());
        std::vector<GroupSpec> edit = mix;
        std::erase_if(edit, [](const auto& group) { return !group.in_both_lists; });
        const Bytes edit_list = counted_list(edit, group_block);
        const Bytes mix_list = counted_list(mix, group_block);
        bytes.block(0x202b, ByteWriter().raw(mix_list).raw(edit_list).zeros(2).bytes());
    }
    if (!tables.colour_schemes.empty()) bytes.raw(colour_settings_block(tables.colour_schemes));
    return bytes.bytes();
}

}  // namespace tanrove::builder
