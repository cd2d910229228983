// What every rule of the translation sees: one insert, the build that stands for it, and the bytes
// up to the insert's chunk limit.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/byte_view.hpp"
#include "plugins/plugin_insert.hpp"
#include "plugins/plugin_table_row.hpp"
#include "plugins/translate_settings.hpp"

namespace tanrove {

/// The kind of build that a row's ident tells: a class id in braces is a VST3 build's.
enum class BuildKind : std::uint8_t { unknown, vst3, other };

struct SettingsCase {
    const PluginInsert& insert;
    const PluginTableRow& row;
    ByteView bytes;  ///< the image up to the chunk limit
    const TranslationInput& input;

    BuildKind build() const {
        if (row.ident.empty()) return BuildKind::unknown;
        return row.ident.find('{') == std::string::npos ? BuildKind::other : BuildKind::vst3;
    }
    bool is_vst3() const { return build() == BuildKind::vst3; }
    bool is_clap() const { return row.fxName.starts_with("CLAP"); }
    ContainerKind kind() const { return insert.containerKind; }

    /// The state's bytes; empty where they pass the limit.
    std::string_view state() const {
        return bytes.text(insert.chunkOffset, insert.chunkSize).value_or(std::string_view());
    }
    /// Everything from `at` to the limit; empty at or behind it.
    std::string_view rest_from(std::size_t at) const {
        if (at >= bytes.size()) return {};
        return bytes.text(at, bytes.size() - at).value_or(std::string_view());
    }
};

/// A rule's answer: nullopt where the rule does not apply, an empty text where it refuses.
using RuleAnswer = std::optional<std::string>;

inline const std::string refused_state;

/// The class id of a VST3 row's ident in upper-case hexadecimal, without its braces.
std::string class_id_of(const PluginTableRow& row);

}  // namespace tanrove
