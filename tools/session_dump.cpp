// A look into one session: the tree of its blocks with their names and their own bytes, and what
// each reader finds, a line a record. A record's fields stand in the order of its declaration.
//   session_dump SESSION [BYTES]
// BYTES: how many of a block's own bytes are shown (64; 0 shows none). A block's own bytes are
// those in front of its first child: the texts of real sessions stand there.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "ptformat/ptformat.hpp"
#include "session/block_tree.hpp"
#include "session/block_types.hpp"
#include "tools/all_readers.hpp"

namespace {

using namespace tanrove;

constexpr std::int64_t target_rate_hz = 48000;
constexpr std::size_t bytes_shown = 64;
constexpr std::size_t bytes_a_line = 16;
constexpr int width_of_a_level = 2;

struct NamedType {
    std::uint16_t type;
    const char* name;
};

constexpr NamedType named_types[] = {
#include "block_type_names.inc"
};

const char* name_of(std::uint16_t type) {
    const auto* const found = std::find_if(std::begin(named_types), std::end(named_types),
                                           [&](const NamedType& t) { return t.type == type; });
    return found == std::end(named_types) ? "" : found->name;
}

void print_bytes(ByteView image, std::size_t from, std::size_t end, int indent) {
    for (std::size_t at = from; at < end; at += bytes_a_line) {
        std::printf("%*s%08zx ", indent, "", at);
        std::string text;
        for (std::size_t i = 0; i < bytes_a_line && at + i < end; ++i) {
            const std::uint8_t byte = image.u8(at + i);
            std::printf(" %02x", byte);
            text += byte >= 0x20 && byte < 0x7f ? static_cast<char>(byte) : '.';
        }
        std::printf("  %s\n", text.c_str());
    }
}

// No deeper than `max_block_depth`, as the tree is.
void print_tree(ByteView image, std::span<const BlockNode> nodes, std::size_t shown, int level) {
    const int indent = level * width_of_a_level;
    for (const BlockNode& node : nodes) {
        std::printf("%*s%08zx 0x%04x version %u, %u bytes  %s\n", indent, "", node.offset,
                    node.contentType, node.blockType, node.size, name_of(node.contentType));
        const std::size_t end = std::min(node.offset + node.size, image.size());
        const std::size_t own_end = node.children.empty() ? end : node.children.front().offset;
        print_bytes(image, node.offset, std::min({own_end, end, node.offset + shown}),
                    indent + width_of_a_level);
        print_tree(image, node.children, shown, level + 1);
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2 && count != 3) {
        std::fputs("session_dump SESSION [BYTES]\n", stderr);
        return 2;
    }
    PTFFormat session;
    const int result = session.load(arguments[1], target_rate_hz);
    if (result != PTFFormat::load_ok) {
        std::fprintf(stderr, "%s: load gives %d\n", arguments[1], result);
        return 1;
    }
    const std::size_t shown =
        count == 3 ? std::strtoul(arguments[2], nullptr, 10) : std::size_t{bytes_shown};
    const ByteView image(
        std::span(session.image(), static_cast<std::size_t>(session.image_size())));
    print_tree(image, parseBlockTree(image).blocks(), shown, 0);

    std::vector<AudioFileEntry> files;
    for (const auto& audio : session.audio_files()) files.push_back({audio.name, audio.index});
    std::printf("\nrecords\n");
    for (const Reading& reading : read_everything(BlockIndex(image), files, true)) {
        std::printf("%8zu  %s\n", reading.records, std::string(reading.reader).c_str());
        if (reading.family == ReaderFamily::blocks) continue;  // the tree shows them
        for (const std::string& text : reading.texts) std::printf("          %s\n", text.c_str());
    }
    return 0;
}
