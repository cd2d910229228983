// The numbers from which the slots of a stand-in get their identifiers: one insert makes several.
#pragma once

#include <cstdint>

namespace tanrove {

/// Numbers the slots of one insert, each with a number of its own.
class SlotNumbers {
public:
    explicit SlotNumbers(std::uint32_t base) : base_(base) {}

    /// Those of the insert at this block of the session.
    static SlotNumbers of_block(std::uint64_t block_start) {
        constexpr std::uint32_t stand_ins = 0x53540000;
        constexpr std::uint64_t low_bytes = 0xffffff;
        return SlotNumbers(static_cast<std::uint32_t>(block_start & low_bytes) ^ stand_ins);
    }

    std::uint32_t next(std::uint32_t offset = 0) { return base_ + count_++ + offset; }

private:
    std::uint32_t base_;
    std::uint32_t count_ = 0;
};

}  // namespace tanrove
