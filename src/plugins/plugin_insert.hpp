// What the session says of an inserted plug-in: who it is, where its state lies in the image and in
// which container, whether it played, and the automation of its controls. The state itself stays in
// the image: records hold places in it, never copies.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tanrove {

/// The shapes in which plug-ins hand their state over. The numbers are those of the corpus files.
enum class ContainerKind : std::uint32_t {
    none = 0,            ///< nothing usable
    ffbs = 1,            ///< "FFBS" to "FFEx"
    vc2 = 2,             ///< "VC2!" and a length
    xml = 3,             ///< "<?xml"
    hxmc = 4,            ///< "HXMC", the state behind it
    control_values = 5,  ///< no state, only the values of the controls
    meta_comment = 6,    ///< "/*@Meta"
    sized_magic = 7,     ///< 0x0085988d and a length
    zlib = 8,            ///< a zlib stream with four words in front
    preset_tree = 9,     ///< the XML tree in an "XPst" chunk
    index_text = 10,     ///< "{\n\tindex = " to its closing brace
    archive = 11,        ///< "22 serialization::archive", twice over
    hsin = 12,           ///< "hsin" with its length in front
    scored = 13,         ///< no known tag; the likeliest span of the block
};

struct PluginLanePoint {
    double position = 0;  ///< samples, or ticks from the session's origin (`PluginLane::in_ticks`)
    double value = 0;     ///< the control's range is 0 to 1; damage lies up to 0.5 outside
};

/// The automation of one control.
struct PluginLane {
    std::string name;          ///< the control's name, 1 to 128 bytes
    std::uint32_t index = 0;   ///< the control's number as Pro Tools counts
    std::string id;            ///< the plug-in's own id of the control; empty where it gives none
    bool is_bypass = false;    ///< the control is the plug-in's bypass
    std::uint8_t steps = 0;    ///< of the control; 0 where it moves freely
    double default_value = 0;  ///< as the points' values
    bool in_ticks = false;     ///< the times are ticks: a lane of a tick-based track
    std::vector<PluginLanePoint> points;
};

/// The slot's end of an insert that stands in no slot of its own.
constexpr std::uint64_t no_slot_end = ~std::uint64_t{0};

/// One inserted plug-in. Positions are offsets into the image.
struct PluginInsert {
    std::string code;           ///< four characters of the maker, four of the product
    std::string productText;    ///< text behind the code, up to 64 bytes
    std::string presetName;     ///< empty where the state names none
    std::string pluginSubComp;  ///< of a preset tree; four characters when valid
    std::string pluginName;     ///< of a preset tree
    std::string activeSetup;    ///< of a preset tree: "setA" or another letter
    std::uint64_t blockStart = 0;
    std::uint64_t chunkLimit = 0;  ///< the state ends in front of it
    std::int32_t channels = 1;
    std::uint64_t hostStart = 0;  ///< the strip row that holds the insert; both 0: none does
    std::uint64_t hostEnd = 0;
    std::uint64_t slot_end = no_slot_end;  ///< what belongs to the insert stands in front of it
    ContainerKind containerKind = ContainerKind::none;
    std::uint64_t chunkOffset = 0;  ///< first byte of the state
    std::uint32_t chunkSize = 0;
    std::array<std::uint32_t, 4> zlibWords = {};  ///< the words in front of a zlib stream
    std::uint32_t slotWord = 0;                   ///< number of its automated controls
    std::int32_t keyInput = -1;                   ///< not negative: the key input is in use
    bool bypassed = false;
    bool inactive = false;
    std::string_view how;              ///< what told a scored state; a literal
    std::uint32_t copies = 1;          ///< 1 or 2: how often the state stands there
    std::vector<float> controlValues;  ///< only with `ContainerKind::control_values`
    std::uint64_t elckOffset = 0;      ///< the first chunk behind the parameter map
    std::uint32_t elckSize = 0;        ///< 0: there is none
    std::string_view elckHow;          ///< set along with `elckOffset`; a literal
    std::uint32_t elckCopies = 1;
    std::uint32_t elckChunkCount = 0;  ///< usable chunks behind the parameter map
    std::vector<PluginLane> lanes;
};

/// True for a plug-in that is known by its sub-component and not by its code alone.
inline bool has_sub_component(const PluginInsert& insert) {
    constexpr std::size_t sub_component_bytes = 4;
    return insert.containerKind == ContainerKind::preset_tree &&
           insert.pluginSubComp.size() == sub_component_bytes;
}

/// What the instances of one plug-in have in common: 8 characters, 12 with a sub-component.
inline std::string insert_key(const PluginInsert& insert) {
    return has_sub_component(insert) ? insert.code + insert.pluginSubComp : insert.code;
}

}  // namespace tanrove
