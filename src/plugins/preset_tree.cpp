// A chunk with the "XPst" at p:
//
//   p - 20   u32 big-endian, bytes of the chunk from here on, 24 at least
//   p + 4    anything, then "<PresetChunkXMLTree" and the XML to the chunk's end
//
// The elements PluginSubComp, PluginName and ActiveSetup ("SETUP_" and a letter) are read.
#include "plugins/preset_tree.hpp"

namespace tanrove {

namespace {

constexpr std::size_t head_bytes = 20;
constexpr std::size_t min_chunk_bytes = 24;
constexpr std::size_t min_bytes_behind = 23;
constexpr std::size_t min_tree_bytes = 20;
constexpr std::string_view tree_tag = "<PresetChunkXMLTree";
constexpr std::string_view setup_prefix = "SETUP_";

/// The text of the first element of this name; empty where it is missing.
std::string element_text(ByteView tree, const std::string& name) {
    const std::string opening = "<" + name + ">";
    const std::size_t opening_at = tree.find(opening, 0);
    if (opening_at == ByteView::npos) return {};
    const std::size_t at = opening_at + opening.size();
    const std::string closing = "</" + name + ">";
    const std::size_t end = tree.find(closing, at);
    if (end == ByteView::npos) return {};
    return std::string(tree.text(at, end - at).value_or(std::string_view()));
}

std::string setup_name(std::string_view setup) {
    if (setup.size() > setup_prefix.size() &&
        setup.substr(0, setup_prefix.size()) == setup_prefix) {
        const char letter = setup[setup_prefix.size()];
        if (letter >= 'A' && letter <= 'Z') return std::string("set") + letter;
    }
    return "setA";
}

}  // namespace

bool PresetTrees::take(std::size_t p, PluginInsert& insert) {
    if (p < span_.start + head_bytes) return false;
    const std::size_t chunk = big_endian_u32(bytes_, p - head_bytes);
    if (chunk < min_chunk_bytes || !span_.holds(p - head_bytes, chunk)) return false;
    const std::size_t end = p - head_bytes + chunk;
    if (end < p + min_bytes_behind) return false;
    const std::size_t tree = next_tree(p + 4);
    if (tree == ByteView::npos || tree > end - min_tree_bytes) return false;

    const ByteView text = bytes_.window(tree, end - tree);
    insert.pluginSubComp = element_text(text, "PluginSubComp");
    insert.pluginName = element_text(text, "PluginName");
    insert.activeSetup = setup_name(element_text(text, "ActiveSetup"));
    insert.containerKind = ContainerKind::preset_tree;
    if (has_sub_component(insert)) {
        insert.chunkOffset = tree;
        insert.chunkSize = chunk_bytes(end - tree);
    } else {
        insert.containerKind = ContainerKind::none;
    }
    return true;
}

std::size_t PresetTrees::next_tree(std::size_t from) {
    if (!next_ || *next_ < from) next_ = bytes_.find(tree_tag, from);
    return *next_;
}

}  // namespace tanrove
