// The block of a frozen track, by way of a temporary file beside the project, and its render.
#include "project/frozen_track.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>
#include <utility>

#include "base/guid.hpp"
#include "base/text_lines.hpp"
#include "project/quoted_text.hpp"

namespace tanrove {

namespace {

// Seeds of the render's two identifiers, to which the track's index is added.
constexpr std::uint32_t render_item_seed = 0x465A0000;
constexpr std::uint32_t render_take_seed = render_item_seed + 0x10000;

// What WAV, its two forms past 4 GB, and AIFF begin with.
constexpr std::array<std::string_view, 4> audio_marks = {"RIFF", "RF64", "BW64", "FORM"};
constexpr std::size_t mark_bytes = 4;

/// All that was written to the stream; nullopt if less comes back.
std::optional<std::string> read_back(std::FILE* stream) {
    const long size = std::ftell(stream);
    if (size < 0 || std::fseek(stream, 0, SEEK_SET) != 0) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (std::fread(bytes.data(), 1, bytes.size(), stream) != bytes.size()) return std::nullopt;
    return bytes;
}

}  // namespace

FreezeWriter::FreezeWriter(std::string project_path, bool is_kept, DiskSteps disk,
                           FrozenTallies& tallies)
    : project_path_(std::move(project_path)),
      is_kept_(is_kept),
      disk_(std::move(disk)),
      tallies_(tallies) {}

bool FreezeWriter::write_block(TextSink& out, const std::string& track, const Contents& contents) {
    const auto bytes = through_file(contents);
    if (!bytes) {
        tallies_.refused.push_back({track, FreezeRefusal::no_temporary_file});
        return false;
    }
    out.line(2, "<FREEZE 0");
    out.raw(*bytes);
    out.line(2, ">");
    ++tallies_.delivered;
    return true;
}

std::optional<std::string> FreezeWriter::through_file(const Contents& contents) const {
    if (!is_kept_) {
        std::string counted_only;
        TextSink inside(counted_only);
        contents(inside);
        return std::string();
    }
    TemporaryFile file(project_path_, ".freeze.tmp", disk_);
    if (file.stream() == nullptr) return std::nullopt;
    bool failed = false;
    {
        TextSink inside(file.stream());
        contents(inside);
        inside.flush();
        failed = inside.failed();
    }
    std::optional<std::string> bytes;
    if (!failed) bytes = read_back(file.stream());
    if (!file.close()) bytes.reset();
    return bytes;
}

void write_frozen_render(TextSink& out, const FrozenRender& render, std::uint32_t index) {
    out.line(2, "<ITEM");
    out.line(3, "POSITION %.10f", render.start);
    out.line(3, "SNAPOFFS 0");
    out.line(3, "LENGTH %.10f", render.length);
    out.line(3, "LOOP 0");
    out.line(3, "ALLTAKES 0");
    out.line(3, "FADEIN 1 0 0 1 0 0 0");
    out.line(3, "FADEOUT 1 0 0 1 0 0 0");
    out.line(3, "MUTE 0 0");
    out.line(3, "FREEZE %.10f %.10f 0", render.start, render.length);
    out.line(3, "LOCK 1");
    out.line(3, "SEL 0");
    out.line(3, "IGUID %s", guid(render_item_seed + index).c_str());
    out.line(3, "NAME \"Freeze 1\"");
    out.line(3, "VOLPAN 1 0 1 -1");
    out.line(3, "SOFFS %.10f", render.source_offset);
    out.line(3, "PLAYRATE 1 1 0 -1 0 0.0025");
    out.line(3, "CHANMODE 0");
    out.line(3, "GUID %s", guid(render_take_seed + index).c_str());
    out.line(3, "<SOURCE WAVE");
    out.line(4, "FILE %s", quoted(render.path).c_str());
    out.line(3, ">");
    out.line(2, ">");
}

RenderFile find_render(MediaSearch& media, const std::string& file) {
    const MediaPath& answer = media.find(file);
    const std::string mark = read_text_file(answer.path, mark_bytes).value_or("");
    const bool is_audio = std::ranges::find(audio_marks, mark) != audio_marks.end();
    return {.path = answer.path, .found = answer.found, .readable = is_audio};
}

}  // namespace tanrove
