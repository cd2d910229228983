// The text of a track that arrives frozen: what Unfreeze shall restore, kept in a block of its own,
// and the render that plays in its place.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/text_sink.hpp"
#include "mix/frozen_plan.hpp"
#include "project/file_replacement.hpp"
#include "project/media_search.hpp"

namespace tanrove {

/// Writes the `<FREEZE` blocks of a project. What goes into one takes the way over a temporary
/// file, so that a block is in the project whole or not at all.
class FreezeWriter {
public:
    using Contents = std::function<void(TextSink&)>;

    /// `path` is the temporary file's, or a device: that is never removed and gives nothing back.
    FreezeWriter(std::string path, bool is_device, DiskSteps disk, FrozenTallies& tallies);

    /// Writes a block with what `contents` writes. False, the project as it was and no file left,
    /// if the disk fails.
    bool write_block(TextSink& out, const std::string& track, const Contents& contents);

private:
    std::optional<std::string> through_file(const Contents& contents) const;

    std::string path_;
    bool is_device_;
    DiskSteps disk_;
    FrozenTallies& tallies_;
};

/// Writes the render as the item of the track with this index.
void write_frozen_render(TextSink& out, const FrozenRender& render, std::uint32_t index);

/// A render as the media search finds it, and whether its first bytes are an audio file's.
RenderFile find_render(MediaSearch& media, const std::string& file);

}  // namespace tanrove
