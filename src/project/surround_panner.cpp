// The state of ReaSurroundPan, i32 and f64 little-endian, a text with an i32 length in front:
//
//   i32 5, 0, 5, 0, 0, 0, 1, inputs
//   f64 center, side; i32 inputs, channels
//   an input    f64 1, LFE gain, x, y, 0, divergence, 0; i32 0 or 8; text name; i32 colour
//   a speaker   f64 1, x, y, 0, 1; i32 flags; text name
//   f64 pan law; i32 0
#include "project/surround_panner.hpp"

#include <string_view>

#include "base/formatted_text.hpp"
#include "mix/speaker_layouts.hpp"
#include "plugins/state_frames.hpp"
#include "plugins/vst_blocks.hpp"

namespace tanrove {

namespace {

// Seeds of the slot's identifier and of its envelopes', to which the track's own come.
constexpr std::uint32_t slot_seed = 0x53555200;
constexpr std::uint32_t envelope_seed = 0x5e000000;
constexpr std::uint32_t track_seed = 1;

constexpr std::uint32_t plugin_id = 0x72737232;

constexpr std::size_t first_words[] = {5, 0, 5, 0, 0, 0, 1};
constexpr double pan_law_db = -3;

/// What tells the two inputs apart in the plug-in's window.
struct InputLook {
    std::uint32_t mark = 0;
    std::string_view name;
    std::int32_t colour = 0;
};

constexpr InputLook input_looks[] = {{0, "channel 1", -986896}, {8, "channel 2", -57312}};

void add_text(StateBytes& state, std::string_view text) {
    state.little(text.size()).text(text);
}

void add_reals(StateBytes& state, std::initializer_list<double> values) {
    for (const double value : values) state.wide_real(value);
}

void add_input(StateBytes& state, const PannerInput& input, const InputLook& look) {
    add_reals(state, {1, input.lfe_gain, input.x, input.y, 0, input.divergence, 0});
    state.little(look.mark);
    add_text(state, look.name);
    state.little(static_cast<std::uint32_t>(look.colour));
}

void add_speaker(StateBytes& state, const std::string& name) {
    const Speaker* known = speaker_named(name);
    const Speaker speaker = known == nullptr ? Speaker{} : *known;
    add_reals(state, {1, speaker.x, speaker.y, 0, 1});
    state.little(static_cast<std::uint32_t>(speaker.flags));
    add_text(state, name);
}

FxEnvelope parameter_envelope(const PannerEnvelope& planned, std::uint32_t index) {
    FxEnvelope envelope;
    envelope.parameter = planned.id;
    envelope.mark = planned.name;
    envelope.runs_down = planned.runs_down;
    envelope.name = planned.display + " / ReaSurroundPan";
    envelope.guid_seed = (planned.id + envelope_seed) ^ (track_seed + index);
    for (const auto& point : planned.points)
        envelope.points.push_back({point.seconds, point.value});
    return envelope;
}

}  // namespace

std::string panner_state(const PannerPlan& plan) {
    const std::size_t inputs = plan.is_stereo ? 2 : 1;
    const auto channels = static_cast<std::size_t>(plan.channels);
    StateBytes state;
    for (const std::size_t word : first_words) state.little(word);
    state.little(inputs);
    add_reals(state,
              {plan.center_percent / 100.0, plan.is_stereo ? plan.side_percent : whole_side});
    state.little(inputs).little(channels);
    for (std::size_t i = 0; i < inputs; ++i) {
        add_input(state, panner_input(plan, i == 1), input_looks[i]);
    }
    for (const std::string& speaker : plan.speakers) add_speaker(state, speaker);
    add_reals(state, {pan_law_db});
    return state.little(0).take();
}

FxSlot panner_slot(const TrackPlan& track, std::uint32_t index) {
    const PannerPlan& plan = *track.panner;
    FxSlot slot;
    slot.form = SlotForm::stock_vst;
    slot.name = "VST: ReaSurroundPan (Cockos)";
    slot.file = "reasurround2.dll";
    slot.ident = "1920168498<56535472737232726561737572726F75>";
    slot.state = panner_state(plan);
    VstHeader header{.id = plugin_id,
                     .pins_in = {channel_mask(0), channel_mask(1)},
                     .pins_out = {},
                     .state_bytes = slot.state.size(),
                     .tail_word = stock_tail_word};
    for (std::size_t i = 0; i < plan.speakers.size(); ++i) {
        header.pins_out.push_back(channel_mask(i + static_cast<std::size_t>(plan.first_channel)));
    }
    slot.header = vst_header(header);
    slot.tail = stock_block_tail;
    slot.guid_seed = slot_seed + index;
    for (const PannerEnvelope& envelope : plan.envelopes) {
        slot.envelopes.push_back(parameter_envelope(envelope, index));
        slot.envelopes.back().active = !track.mixer.automation_off;
    }
    return slot;
}

}  // namespace tanrove
