// A section of the band itself stays near its start; an added one may go anywhere.
#include "eqfit/fit_bounds.hpp"

#include <algorithm>

#include "base/steady_math.hpp"
#include "eqfit/eq_start_sections.hpp"
#include "eqfit/reaeq_width.hpp"

namespace tanrove {

namespace {

constexpr double least_frequency = 10;
constexpr double greatest_share_of_rate = 0.48;

constexpr double lowest_frequency_ratio = 0.8;
constexpr double highest_frequency_ratio = 1.25;
constexpr double highest_pass_ratio = 1.8;  // of a pass filter near half of the rate
constexpr double high_pass_filter_share = 0.2;
constexpr double gain_room = 3;
constexpr double least_q_ratio = 0.5;
constexpr double greatest_q_ratio = 2;
constexpr double least_high_q_ratio = 0.3;
constexpr double greatest_high_q_ratio = 3;

constexpr double least_fit_q = 0.02;
constexpr double greatest_fit_q = 30;
constexpr double greatest_pass_q = 2;
constexpr double greatest_added_gain = 12;

// No width above the greatest has a Q above this one, whatever the frequency and gain.
constexpr double always_narrow_from = 0.27;

constexpr double log_step = 0.1;  // of a displacement, for frequency and Q

}  // namespace

FitBounds::FitBounds(const std::vector<EqSection>& start, double rate_hz)
    : start_(start), rate_hz_(rate_hz) {
    for (const EqSection& section : start_) {
        const bool is_wide = reaeq_width(section, rate_hz_) > greatest_fit_width;
        least_start_q_.push_back(is_wide ? section.q : greatest_fit_q);
    }
}

std::vector<double> FitBounds::coordinates(const std::vector<EqSection>& sections) {
    std::vector<double> point;
    for (const EqSection& section : sections) {
        if (section.locked) continue;
        point.push_back(steady_log(section.frequency));
        if (has_gain(section.type)) point.push_back(section.gain);
        point.push_back(steady_log(section.q));
    }
    return point;
}

std::vector<double> FitBounds::displacements(const std::vector<EqSection>& sections, double step) {
    std::vector<double> steps;
    for (const EqSection& section : sections) {
        if (section.locked) continue;
        steps.push_back(log_step * step);
        if (has_gain(section.type)) steps.push_back(step);
        steps.push_back(log_step * step);
    }
    return steps;
}

void FitBounds::hold_to_start(std::size_t index, EqSection& section) const {
    const EqSection& start = start_[index];
    const bool is_high_pass_filter =
        is_pass(section.type) && start.frequency > high_pass_filter_share * rate_hz_;
    section.frequency = std::clamp(
        section.frequency, lowest_frequency_ratio * start.frequency,
        (is_high_pass_filter ? highest_pass_ratio : highest_frequency_ratio) * start.frequency);
    if (has_gain(section.type)) {
        section.gain = std::clamp(section.gain, start.gain - gain_room, start.gain + gain_room);
    }
    section.q =
        std::clamp(section.q, (is_high_pass_filter ? least_high_q_ratio : least_q_ratio) * start.q,
                   (is_high_pass_filter ? greatest_high_q_ratio : greatest_q_ratio) * start.q);
}

void FitBounds::hold_added(EqSection& section) const {
    section.gain = std::clamp(section.gain, -greatest_added_gain, greatest_added_gain);
}

double FitBounds::least_q(const EqSection& section, std::size_t index) const {
    const double least = least_q_for_width(section, rate_hz_);
    return index < start_.size() ? std::min(least, least_start_q_[index]) : least;
}

void FitBounds::apply(const std::vector<double>& coordinates,
                      std::vector<EqSection>& sections) const {
    std::size_t next = 0;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        EqSection& section = sections[i];
        if (section.locked) continue;
        section.frequency = std::clamp(steady_exp(coordinates[next++]), least_frequency,
                                       greatest_share_of_rate * rate_hz_);
        if (has_gain(section.type)) section.gain = coordinates[next++];
        section.q = steady_exp(coordinates[next++]);
        if (i < start_.size()) {
            hold_to_start(i, section);
        } else {
            hold_added(section);
        }
        section.q = std::clamp(section.q, least_fit_q,
                               is_pass(section.type) ? greatest_pass_q : greatest_fit_q);
        if (has_gain(section.type) && section.q < always_narrow_from) {
            section.q = std::max(section.q, least_q(section, i));
        }
        if (is_shelf(section.type)) {
            section.q = std::min(section.q, greatest_shelf_q(section.gain));
        }
    }
}

}  // namespace tanrove
