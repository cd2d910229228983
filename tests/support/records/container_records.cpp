// The records every session has, field by field as real sessions store them.
#include "support/records/container_records.hpp"

namespace tanrove::builder {

Bytes file_header(bool big_endian) {
    return ByteWriter().u8(0x03).raw("0010111100101011").u8(big_endian ? 1 : 0).zeros(2).bytes();
}

Bytes opening_blocks(std::uint32_t stored_version, std::uint32_t index_at) {
    const Bytes identity = ByteWriter().raw("*").zeros(3).u64(0x0bAA7DB4D94CDC33).bytes();
    const Bytes version = ByteWriter()
                              .zeros(4)
                              .raw(identity)
                              .u16(0)
                              .u32(stored_version)  // offset 27 of the block
                              .u32(1)
                              .counted("Info #1")
                              .zeros(32)
                              .bytes();
    return ByteWriter().raw("Z").u16(1).u32(4).u32(index_at).block(0x2067, version, 10).bytes();
}

Bytes session_index_block() {
    return block(0x0002, Bytes(4));
}

Bytes settings_block(const SettingsSpec& settings) {
    ByteWriter payload;
    payload.u8(settings.audio_format).u8(0x18).u32(settings.rate_hz).zeros(5).u8(1);
    payload.u32(settings.path_parts.size());
    for (const auto& part : settings.path_parts) payload.counted(part);
    payload.zeros(6).u8(settings.pan_depth).u8(settings.is_float ? 1 : 0).u8(0);
    payload.u8(settings.bit_depth).zeros(5);
    return block(0x1028, payload.bytes(), 10);
}

Bytes settings_block_fixed_offsets(const SettingsSpec& settings) {
    constexpr std::size_t header = 9;
    ByteWriter payload;
    payload.u8(settings.audio_format).u8(0x18).u32(settings.rate_hz).zeros(5).u8(1);
    payload.u32(0xffffffff);  // a count of path parts that no block could hold
    payload.pad_to(118 - header).u8(settings.pan_depth).u8(settings.is_float ? 1 : 0).u8(0);
    payload.u8(settings.bit_depth).zeros(5);
    return block(0x1028, payload.bytes(), 10);
}

Bytes product_block(const ProductSpec& product) {
    return block(0x0003,
                 ByteWriter()
                     .u8(1)
                     .counted(product.product)
                     .u32(3)
                     .u32(19)
                     .u32(6)
                     .u32(0)
                     .counted(product.version)
                     .u8(1)
                     .counted("Release")
                     .u8(0)
                     .counted("Pro Tools Session File")
                     .bytes(),
                 4);
}

Bytes file_list_block(const std::vector<AudioFileSpec>& files,
                      const std::vector<std::string>& path_parts, std::uint32_t session_rate_hz,
                      const std::string& tag) {
    constexpr std::uint32_t no_parent = 0xffffffff;
    ByteWriter entries;
    entries.u32(1 + files.size() + path_parts.size());
    entries.u8(1).u32(1).counted("Audio Files").zeros(4);
    for (const auto& file : files) entries.u8(2).u32(0).counted(file.name).raw(tag);
    std::uint32_t parent = no_parent;
    for (std::size_t i = 0; i < path_parts.size(); ++i) {
        entries.u8(i == 0 ? 0 : 1).u32(parent).counted(path_parts[i]).zeros(4);
        parent = static_cast<std::uint32_t>(1 + files.size() + i);
    }
    ByteWriter payload;
    payload.u32(files.size()).block(0x103a, entries.bytes());
    for (const auto& file : files) {
        const std::uint32_t rate = file.rate_hz != 0 ? file.rate_hz : session_rate_hz;
        const Bytes format = ByteWriter().u32(rate).u16(0x1801).u64(file.length_samples).bytes();
        payload.block(0x1003, ByteWriter().u32(1).block(0x1001, format, 2).zeros(20).bytes(), 7);
    }
    return block(0x1004, payload.bytes(), 2);
}

}  // namespace tanrove::builder
