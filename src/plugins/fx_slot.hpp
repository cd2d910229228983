// One place in an FX chain as REAPER shall have it, every decision taken, and the chain that it
// stands in. Plug-ins, stand-ins and placeholders are all slots: they differ in what these hold.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tanrove {

/// How a slot's block is written.
enum class SlotForm : std::uint8_t {
    vst,        ///< a VST2 or VST3 build
    stock_vst,  ///< one of REAPER's own: its file stands bare
    clap,
    js,
};

struct FxEnvelopePoint {
    double seconds = 0;  ///< 0 or later
    double value = 0;    ///< 0 to 1
};

/// The automation of one parameter.
struct FxEnvelope {
    std::uint32_t parameter = 0;
    std::string mark;        ///< of REAPER's own plug-ins: the parameter's; empty: its number again
    bool runs_down = false;  ///< from 1 to 0
    std::string name;
    std::uint32_t guid_seed = 0;
    bool active = true;
    bool steps = false;        ///< a control that jumps from value to value
    double default_value = 0;  ///< from time 0 to a later first point
    std::vector<FxEnvelopePoint> points;
};

struct FxSlot {
    SlotForm form = SlotForm::vst;
    std::string name;   ///< as REAPER names it: "VST3: Name (Vendor)"; of a JS its path
    std::string file;   ///< of a VST
    std::string title;  ///< shown in place of the name; empty for none
    std::string ident;
    std::string header;      ///< of a VST: bytes in front of the state
    std::string state;       ///< bytes; empty: none is written
    std::string tail;        ///< of a VST: bytes behind the state
    std::string parameters;  ///< of a JS: its line
    std::string preset_name;
    bool bypassed = false;
    bool offline = false;
    bool is_placeholder = false;   ///< shown as missing, and passes its sound
    bool marks_last_pins = false;  ///< the last of the chain that is heard
    std::uint32_t guid_seed = 0;
    std::vector<FxEnvelope> envelopes;
};

/// The slots of one track in their order, and the switch that its plug-ins ask for.
struct ChainPlan {
    std::vector<FxSlot> slots;
    bool inverts_track = false;  ///< by the track's own polarity switch
};

}  // namespace tanrove
