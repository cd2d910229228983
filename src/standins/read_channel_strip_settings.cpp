// How far a clip's control stands along its throw is turned into units by the scales that were
// measured in Pro Tools.
#include "standins/read_channel_strip_settings.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>
#include <span>
#include <string_view>

#include "base/steady_math.hpp"

namespace tanrove {

namespace {

constexpr double on_from = 0.5;
constexpr double moved_from = 0.0001;
constexpr double greatest_control = 1e9;  // far above all ranges
constexpr double ms_a_second = 1000;
constexpr double log2_of_10 = 3.321928094887362;
constexpr double least_fader_db = 0.005;
constexpr double clip_fader_rest = 0.888889;

constexpr std::array<const char*, 4> band_names = {"EQ Low", "EQ Low-Mid", "EQ High-Mid",
                                                   "EQ High"};
constexpr std::array<const char*, 2> filter_names = {"Filter 1", "Filter 2"};

struct ControlDefault {
    std::string_view control;
    double value;
};

// Where the controls of new Clip Effects stand.
constexpr ControlDefault clip_defaults[] = {
    {"Input Trim", 0.5},
    {"EQ On/Off", 1},
    {"EQ Low In/Out", 1},
    {"EQ Low Type", 0},
    {"EQ Low Gain", 0.5},
    {"EQ Low Frequency", 0.103889},
    {"EQ Low Q", 0.147441},
    {"EQ Low-Mid In/Out", 1},
    {"EQ Low-Mid Gain", 0.5},
    {"EQ Low-Mid Frequency", 0.402545},
    {"EQ Low-Mid Q", 0.147441},
    {"EQ High-Mid In/Out", 1},
    {"EQ High-Mid Gain", 0.5},
    {"EQ High-Mid Frequency", 0.701355},
    {"EQ High-Mid Q", 0.147441},
    {"EQ High In/Out", 1},
    {"EQ High Type", 0},
    {"EQ High Gain", 0.5},
    {"EQ High Frequency", 0.90036},
    {"EQ High Q", 0.147441},
    {"Filters On/Off", 1},
    {"Filter 1 In/Out", 0},
    {"Filter 1 Type", 0},
    {"Filter 1 Frequency", 0.0042},
    {"Filter 1 Q", 0.147441},
    {"Filter 1 Slope 12/24dB", 0},
    {"Filter 2 In/Out", 0},
    {"Filter 2 Type", 0.333333},
    {"Filter 2 Frequency", 1},
    {"Filter 2 Q", 0.147441},
    {"Filter 2 Slope 12/24dB", 0},
    {"Dynamics On/Off", 1},
    {"Sc Detector Type Avg/Pk", 1},
    {"Sc Filter In/Out", 1},
    {"Sc Filter Type", 0},
    {"Sc Filter Frequency", 0},
    {"Sc Source", 0},
    {"Exp In/Out", 1},
    {"Exp Ratio", 0},
    {"Exp Threshold", 0.314286},
    {"Exp Attack Time", 0},
    {"Exp Release Time", 0.575257},
    {"Exp Hold Time", 0},
    {"Exp Knee", 0},
    {"Exp Depth", 0.666667},
    {"Exp Hysteresis", 0},
    {"Cmp In/Out", 1},
    {"Cmp Ratio", 0},
    {"Cmp Threshold", 0.6},
    {"Cmp Attack Time", 0},
    {"Cmp Release Time", 0.575257},
    {"Cmp Knee", 0},
    {"Cmp Gain Makeup", 0},
    {"Cmp Depth", 0.666667},
    {"Fader Volume", clip_fader_rest},
    {"Fader Volume On/Off", 1},
    {"Fader Volume Pre/Post", 0},
    {"Process Order", 0},
    {"EQ Range", 0},
    {"Dynamics Range", 0},
};

/// A value of a ratio's throw.
struct RatioNode {
    double share;
    double ratio;
};

constexpr RatioNode expander_ratios[] = {{0, 1}, {0.614583, 3}, {0.909404, 10}};
constexpr RatioNode compressor_ratios[] = {
    {0, 1}, {0.171875, 2}, {0.253906, 3}, {0.3359375, 4}, {0.593715, 10}};

double ratio_at(std::span<const RatioNode> nodes, double share) {
    if (share <= 0) return 1;
    std::size_t at = 0;
    while (at + 2 < nodes.size() && share > nodes[at + 1].share) ++at;
    const double low = steady_log(nodes[at].ratio);
    const double high = steady_log(nodes[at + 1].ratio);
    const double part = (share - nodes[at].share) / (nodes[at + 1].share - nodes[at].share);
    return steady_exp(low + part * (high - low));
}

bool is_past(std::span<const RatioNode> nodes, double share) {
    constexpr double rounding = 1e-6;
    return share > nodes.back().share + rounding;
}

/// A power of ten times a factor.
double decades(double factor, double exponent) {
    return factor * steady_exp2(exponent * log2_of_10);
}

double clip_frequency(double share) {
    return 20 * steady_exp2(share * steady_log2(1050));
}

StripFilterType filter_type(double number) {
    const double held = std::clamp(std::floor(number + 0.5), 0.0, 3.0);
    return static_cast<StripFilterType>(static_cast<int>(held));
}

/// Controls by their names, in the units in which they are stored.
class Controls {
public:
    void set(const std::string& name, double value) {
        if (!std::isfinite(value)) return;
        values_.try_emplace(name, std::clamp(value, -greatest_control, greatest_control));
    }
    std::optional<double> find(const std::string& name) const {
        const auto value = values_.find(name);
        if (value == values_.end()) return std::nullopt;
        return value->second;
    }
    double value(const std::string& name, double otherwise) const {
        return find(name).value_or(otherwise);
    }
    bool is_on(const std::string& name, bool otherwise) const {
        return value(name, otherwise ? 1 : 0) >= on_from;
    }

private:
    std::map<std::string, double> values_;
};

/// The switches, which both kinds store alike.
ChannelStripSettings read_switches(const Controls& controls) {
    ChannelStripSettings strip;
    strip.inverts = controls.is_on("Phase Switch In/Out", false);
    strip.eq_on = controls.is_on("EQ On/Off", true);
    strip.filters_on = controls.is_on("Filters On/Off", true);
    strip.dynamics_on = controls.is_on("Dynamics On/Off", true);
    for (std::size_t i = 0; i < strip.bands.size(); ++i) {
        const std::string name = band_names[i];
        strip.bands[i].on = controls.is_on(name + " In/Out", true);
        const bool is_outer = i == 0 || i + 1 == strip.bands.size();
        strip.bands[i].is_shelf = is_outer && controls.is_on(name + " Type", false);
    }
    for (std::size_t i = 0; i < strip.filters.size(); ++i) {
        const std::string name = filter_names[i];
        strip.filters[i].on = controls.is_on(name + " In/Out", false);
        strip.filters[i].is_steep = controls.is_on(name + " Slope 12/24dB", false);
    }
    strip.detector.averages = controls.is_on("Sc Detector Type Avg/Pk", true);
    strip.detector.filter_on = controls.is_on("Sc Filter In/Out", true);
    strip.expander.on = controls.is_on("Exp In/Out", true);
    strip.compressor.on = controls.is_on("Cmp In/Out", true);
    return strip;
}

void read_channel_strip_dynamics(const Controls& controls, ChannelStripSettings& strip) {
    StripExpander& exp = strip.expander;
    exp.ratio = controls.value("Exp Ratio", 1);
    exp.threshold_db = controls.value("Exp Threshold", -80);
    exp.attack_ms = ms_a_second * controls.value("Exp Attack Time", 0);
    exp.release_ms = ms_a_second * controls.value("Exp Release Time", 0.2);
    exp.hold_ms = ms_a_second * controls.value("Exp Hold Time", 0.001);
    exp.knee_db = controls.value("Exp Knee", 0);
    exp.depth_db = controls.value("Exp Depth", -36);
    exp.hysteresis_db = controls.value("Exp Hysteresis", 0);
    StripCompressor& cmp = strip.compressor;
    cmp.ratio = controls.value("Cmp Ratio", 1);
    cmp.threshold_db = controls.value("Cmp Threshold", -24);
    cmp.attack_ms = ms_a_second * controls.value("Cmp Attack Time", 0);
    cmp.release_ms = ms_a_second * controls.value("Cmp Release Time", 0.2);
    cmp.knee_db = controls.value("Cmp Knee", 0);
    cmp.makeup_db = controls.value("Cmp Gain Makeup", 0);
    cmp.depth_db = controls.value("Cmp Depth", -36);
}

/// A clip's control in units.
template <typename Scale>
void set_scaled(const Controls& controls, const std::string& name, double& target,
                const Scale& scale) {
    if (const auto share = controls.find(name)) target = scale(std::clamp(*share, 0.0, 1.0));
}

void read_clip_expander(const Controls& controls, StripExpander& exp) {
    const auto depth = [](double v) { return (1 - v) * -108; };
    set_scaled(controls, "Exp Ratio", exp.ratio,
               [](double v) { return ratio_at(expander_ratios, v); });
    exp.past_table = is_past(expander_ratios, controls.value("Exp Ratio", 0));
    set_scaled(controls, "Exp Threshold", exp.threshold_db, [](double v) { return 70 * v - 80; });
    set_scaled(controls, "Exp Attack Time", exp.attack_ms,
               [](double v) { return decades(0.02, 5 * v); });
    set_scaled(controls, "Exp Release Time", exp.release_ms,
               [](double v) { return decades(1, 4 * v); });
    set_scaled(controls, "Exp Hold Time", exp.hold_ms, [](double v) { return decades(1, 4 * v); });
    set_scaled(controls, "Exp Knee", exp.knee_db, [](double v) { return 30 * v; });
    set_scaled(controls, "Exp Depth", exp.depth_db, depth);
    exp.hysteresis_db = controls.value("Exp Hysteresis", 0);
}

void read_clip_compressor(const Controls& controls, StripCompressor& cmp) {
    set_scaled(controls, "Cmp Ratio", cmp.ratio,
               [](double v) { return ratio_at(compressor_ratios, v); });
    cmp.past_table = is_past(compressor_ratios, controls.value("Cmp Ratio", 0));
    set_scaled(controls, "Cmp Threshold", cmp.threshold_db, [](double v) { return 60 * v - 60; });
    set_scaled(controls, "Cmp Attack Time", cmp.attack_ms,
               [](double v) { return decades(0.1, 4 * v); });
    set_scaled(controls, "Cmp Release Time", cmp.release_ms,
               [](double v) { return decades(1, 4 * v); });
    set_scaled(controls, "Cmp Knee", cmp.knee_db, [](double v) { return 30 * v; });
    set_scaled(controls, "Cmp Gain Makeup", cmp.makeup_db, [](double v) { return 30 * v; });
    set_scaled(controls, "Cmp Depth", cmp.depth_db, [](double v) { return (1 - v) * -108; });
}

Controls controls_of(const ClipEffectsRecord& record) {
    Controls controls;
    for (const ClipEffectsParameter& parameter : record.parameters) {
        const double value = std::bit_cast<float>(parameter.value);
        if (std::isfinite(value)) controls.set(parameter.name, std::clamp(value, 0.0, 1.0));
    }
    return controls;
}

}  // namespace

ChannelStripSettings read_channel_strip(const std::map<std::string, double>& stored) {
    Controls controls;
    for (const auto& [name, value] : stored) controls.set(name, value);
    ChannelStripSettings strip = read_switches(controls);
    strip.input_trim_db = controls.value("Input Trim", 0);
    for (std::size_t i = 0; i < strip.bands.size(); ++i) {
        const std::string name = band_names[i];
        strip.bands[i].gain_db = controls.value(name + " Gain", 0);
        strip.bands[i].frequency = controls.value(name + " Frequency", 1000);
        strip.bands[i].q = controls.value(name + " Q", 1);
    }
    for (std::size_t i = 0; i < strip.filters.size(); ++i) {
        const std::string name = filter_names[i];
        strip.filters[i].type = filter_type(controls.value(name + " Type", 0));
        strip.filters[i].frequency = controls.value(name + " Frequency", 1000);
        strip.filters[i].q = controls.value(name + " Q", 1);
    }
    strip.detector.filter = filter_type(controls.value("Sc Filter Type", 0));
    strip.detector.frequency = controls.value("Sc Filter Frequency", 20);
    strip.detector.source = static_cast<int>(std::clamp(controls.value("Sc Source", 0), 0.0, 2.0));
    read_channel_strip_dynamics(controls, strip);
    const double fader = controls.value("Fader Volume", 0);
    const bool fader_on = controls.is_on("Fader Volume On/Off", true);
    if (fader_on && std::fabs(fader) >= least_fader_db) strip.fader_db = fader;
    strip.other_order = controls.is_on("Process Order", false);
    strip.other_ranges =
        controls.is_on("EQ Range", false) || controls.is_on("Dynamics Range", false);
    return strip;
}

ChannelStripSettings read_clip_effects(const ClipEffectsRecord& record) {
    Controls controls = controls_of(record);
    for (const ControlDefault& rest : clip_defaults) {
        controls.set(std::string(rest.control), rest.value);
    }
    ChannelStripSettings strip = read_switches(controls);
    strip.is_clip = true;
    const auto gain = [](double v) { return (v - 0.5) * 48; };
    const auto q = [](double v) { return 0.2 * steady_exp2(v * steady_log2(500)); };
    set_scaled(controls, "Input Trim", strip.input_trim_db,
               [](double v) { return (v - 0.5) * 72; });
    for (std::size_t i = 0; i < strip.bands.size(); ++i) {
        const std::string name = band_names[i];
        set_scaled(controls, name + " Gain", strip.bands[i].gain_db, gain);
        set_scaled(controls, name + " Frequency", strip.bands[i].frequency, clip_frequency);
        set_scaled(controls, name + " Q", strip.bands[i].q, q);
    }
    for (std::size_t i = 0; i < strip.filters.size(); ++i) {
        const std::string name = filter_names[i];
        strip.filters[i].type = filter_type(3 * controls.value(name + " Type", 0));
        set_scaled(controls, name + " Frequency", strip.filters[i].frequency, clip_frequency);
        set_scaled(controls, name + " Q", strip.filters[i].q, q);
    }
    strip.detector.filter = filter_type(3 * controls.value("Sc Filter Type", 0));
    set_scaled(controls, "Sc Filter Frequency", strip.detector.frequency, clip_frequency);
    strip.detector.source = controls.is_on("Sc Source", false) ? 2 : 0;
    read_clip_expander(controls, strip.expander);
    read_clip_compressor(controls, strip.compressor);
    const double fader = controls.value("Fader Volume", clip_fader_rest);
    strip.fader_is_lost = std::fabs(fader - clip_fader_rest) > moved_from;
    strip.other_order = controls.value("Process Order", 0) >= moved_from;
    strip.other_ranges = controls.value("EQ Range", 0) >= moved_from ||
                         controls.value("Dynamics Range", 0) >= moved_from;
    return strip;
}

bool changes_sound(const ClipEffectsRecord& record) {
    const Controls controls = controls_of(record);
    return std::ranges::any_of(clip_defaults, [&](const ControlDefault& rest) {
        const auto value = controls.find(std::string(rest.control));
        return value && std::fabs(*value - rest.value) >= moved_from;
    });
}

bool inverts_clip(const ClipEffectsRecord& record) {
    return controls_of(record).is_on("Phase Switch In/Out", false);
}

}  // namespace tanrove
