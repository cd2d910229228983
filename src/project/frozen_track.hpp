// The text of a track that arrives frozen: what Unfreeze shall restore, kept in a block of its own,
// and the render that plays in its place.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/text_sink.hpp"
#include "base/whole_file.hpp"
#include "mix/frozen_plan.hpp"
#include "project/media_search.hpp"

namespace tanrove {

/// Writes the `<FREEZE` blocks of a project. What goes into one takes the way over a temporary
/// file, so that a block is in the project whole or not at all.
class FreezeWriter {
public:
    using Contents = std::function<void(TextSink&)>;

    /// The temporary file lies beside the project. Where that is not kept none is made: what goes
    /// into a block is counted and its bytes are left out.
    FreezeWriter(std::string project_path, bool is_kept, DiskSteps disk, FrozenTallies& tallies);

    /// Writes a block with what `contents` writes. False, the project as it was and no file left,
    /// if the disk fails.
    bool write_block(TextSink& out, const std::string& track, const Contents& contents);

private:
    std::optional<std::string> through_file(const Contents& contents) const;

    std::string project_path_;
    bool is_kept_;
    DiskSteps disk_;
    FrozenTallies& tallies_;
};

/// Writes the render as the item of the track with this index.
void write_frozen_render(TextSink& out, const FrozenRender& render, std::uint32_t index);

/// A render as the media search finds it, and whether its first bytes are an audio file's.
RenderFile find_render(MediaSearch& media, const std::string& file);

}  // namespace tanrove
