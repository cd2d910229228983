// Pro Tools draws the source on the line between a place on the front line and one on the rear
// line; REAPER places it in a square. The speakers that Pro Tools' divergence reaches are those
// that REAPER's, which runs the other way, lets in.
#include "mix/panner_plan.hpp"

#include <algorithm>
#include <cmath>

namespace tanrove {

namespace {

constexpr double hundred = 100.0;

// Places among the values.
enum : std::uint8_t {
    front_x,
    rear_x,
    front_rear,
    front_divergence,
    rear_divergence,
    front_rear_divergence,
    center_percent,
    lfe_level,
};

constexpr double silent_lfe_db = -143.9;
constexpr double db_in_decade = 20;  // of gain
constexpr double tenths_of_a_db = 10;
constexpr double full_lfe_gain = 4;  // REAPER's knob ends there

/// How far in front the source is, 0 to 1.
double frontness(const PannerValues& values) {
    return (values[front_rear] / hundred + 1) * 0.5;
}

/// Between what holds on the rear line and what holds on the front line.
double between_lines(double rear, double front, double frontness) {
    return (front - rear) * frontness + rear;
}

double place_x(const PannerValues& values) {
    return between_lines(values[rear_x], values[front_x], frontness(values)) / hundred;
}

double divergence(const PannerValues& values) {
    const double on_lines =
        between_lines(values[rear_divergence], values[front_divergence], frontness(values));
    return (hundred - std::min(on_lines, values[front_rear_divergence])) / hundred;
}

double center(const PannerValues& values) {
    return values[center_percent] / hundred;
}

double x_parameter(const PannerValues& values) {
    return (place_x(values) + 1) * 0.5;
}

double lfe_gain(double db) {
    return db > silent_lfe_db ? std::min(std::pow(10, db / db_in_decade), full_lfe_gain) : 0;
}

double lfe_parameter(const PannerValues& values) {
    return lfe_gain(values[lfe_level] / tenths_of_a_db) / full_lfe_gain;
}

PannerValues values_of(const PannerPlan& plan, bool is_right) {
    const auto both = [](std::int32_t a, std::int32_t b, std::int32_t c, std::int32_t d,
                         std::int32_t e, std::int32_t f) {
        return PannerValues{double(a), double(b), double(c), double(d), double(e), double(f)};
    };
    return is_right ? both(plan.right_front_x, plan.right_rear_x, plan.right_front_rear,
                           plan.right_front_divergence, plan.right_rear_divergence,
                           plan.right_front_rear_divergence)
                    : both(plan.front_x, plan.rear_x, plan.front_rear, plan.front_divergence,
                           plan.rear_divergence, plan.front_rear_divergence);
}

}  // namespace

PannerInput panner_input(const PannerPlan& plan, bool is_right) {
    const PannerValues values = values_of(plan, is_right);
    return {.x = place_x(values),
            .y = values[front_rear] / hundred,
            .divergence = std::clamp(divergence(values), 0.0, 1.0),
            .lfe_gain = plan.has_lfe ? lfe_gain(plan.lfe_db) : 0};
}

const std::vector<PannerParameter>& panner_parameters() {
    static const std::vector<PannerParameter> parameters = {
        {0, "_center__", "center %", false, {center_percent}, center},
        {7, "_in_1_X", "in 1 X", true, {front_x, rear_x, front_rear}, x_parameter},
        {8, "_in_1_Y", "in 1 Y", false, {front_rear}, frontness},
        {10, "_in_1_LFE", "in 1 LFE", false, {lfe_level}, lfe_parameter},
        {11,
         "_in_1_divergence",
         "in 1 divergence",
         false,
         {front_rear, front_divergence, rear_divergence, front_rear_divergence},
         divergence},
    };
    return parameters;
}

double held_panner_value(std::size_t place, double stored) {
    if (place == lfe_level) return stored;
    const bool is_position = place <= front_rear;
    return std::clamp(stored, is_position ? -hundred : 0.0, hundred);
}

}  // namespace tanrove
