// With p0 = sin^2(w0 / 2), P = p (1 - p0) and R = (1 - p) p0, the audio cookbook's sections are
//
//   bell        ((R - P)^2 + (A / Q)^2 P R) / ((R - P)^2 + P R / (A Q)^2)
//   low shelf   A^2 ((A R - P)^2 + A P R / Q^2) / ((R - A P)^2 + A P R / Q^2)
//   high shelf  A^2 ((R - A P)^2 + A P R / Q^2) / ((A R - P)^2 + A P R / Q^2)
//   low-pass    R^2 / ((R - P)^2 + P R / Q^2)
//   high-pass   P^2 / ((R - P)^2 + P R / Q^2)
//   notch       (R - P)^2 / ((R - P)^2 + P R / Q^2)
//   band-pass   P R / Q^2 / ((R - P)^2 + P R / Q^2)
//
// Nothing cancels in these forms, low frequencies included.
#include "eqfit/section_response.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "base/steady_math.hpp"

namespace tanrove {

namespace {

constexpr double lowest_counted_db = -50;  // below it nothing is heard of the difference
constexpr double low_level_db = -20;       // below it the difference counts by its size
constexpr double low_level_weight = 25;
constexpr double allowed_above = 3;  // dB over the target above the range that has to fit
constexpr double least_power = 1e-24;
constexpr double db_of_log2 = 3.010299956639812;  // 10 log10(2)
constexpr double rounding_room = 1 + 1e-12;       // of a limit, so that none is passed too early
constexpr double no_answer = std::numeric_limits<double>::infinity();

// Errors come in these steps. What differs by less differs by the rounding of numbers alone, and
// that shall not decide which way a search goes.
constexpr double steps_a_db = 16777216;

double in_steps(double error) {
    return std::floor(error * steps_a_db + 0.5) / steps_a_db;
}

using Values = PointBlock::Values;

double eighth_power(double x) {
    const double square = x * x;
    const double fourth = square * square;
    return fourth * fourth;
}

/// The sections of one evaluation, multiplied.
class Forms {
public:
    void add(const SectionForm& form) {
        gain_ *= form.gain;
        if (count_ < forms_.size()) forms_[count_++] = form;
    }

    /// The power of each point of the block, what plays beside the sections included.
    Values powers(const PointBlock& block) const {
        Values over;
        Values under;
        for (std::size_t i = 0; i < PointBlock::size; ++i) {
            over[i] = gain_ * block.beside[i];
            under[i] = 1;
        }
        for (std::size_t k = 0; k < count_; ++k) {
            const SectionForm form = forms_[k];
            for (std::size_t i = 0; i < PointBlock::size; ++i) {
                const double both = block.p[i] * block.other[i];
                const double near = form.a * block.other[i] - form.b * block.p[i];
                const double far = form.d * block.other[i] - form.e * block.p[i];
                over[i] *= near * near + form.c * both;
                under[i] *= far * far + form.f * both;
            }
        }
        for (std::size_t i = 0; i < PointBlock::size; ++i) {
            const double power = over[i] / under[i];
            over[i] = power > least_power ? power : least_power;
        }
        return over;
    }

private:
    double gain_ = 1;
    std::size_t count_ = 0;
    std::array<SectionForm, max_fit_sections> forms_;
};

Values low_level_errors(const PointBlock& block, const Forms& forms) {
    Values v = forms.powers(block);
    for (std::size_t i = 0; i < PointBlock::size; ++i) {
        v[i] = low_level_weight * std::fabs(block.target[i] - std::sqrt(v[i]));
    }
    return v;
}

/// The greatest error of all points. Levels are compared as ratios of powers: one logarithm at the
/// end does for all.
class GreatestError {
public:
    GreatestError(const Forms& forms, double limit)
        : forms_(forms),
          limit_(limit * rounding_room),
          limit_ratio_(steady_gain(2 * limit_)),
          limit_above_(steady_gain(2 * (limit_ + allowed_above))) {}

    double of(const PointSet& points) {
        for (const PointBlock& block : points.level) {
            if (passes_limit(block)) return no_answer;
        }
        for (const PointBlock& block : points.above) {
            const Values v = forms_.powers(block);
            for (const double ratio : v) highest_above_ = std::max(highest_above_, ratio);
            if (highest_above_ > limit_above_) return no_answer;
        }
        for (const PointBlock& block : points.low_level) {
            const Values v = low_level_errors(block, forms_);
            for (const double error : v) low_level_ = std::max(low_level_, error);
            if (low_level_ > limit_) return no_answer;
        }
        return value();
    }

private:
    bool passes_limit(const PointBlock& block) {
        const Values v = forms_.powers(block);
        for (const double ratio : v) {
            highest_ = std::max(highest_, ratio);
            lowest_ = std::min(lowest_, ratio);
        }
        return highest_ > limit_ratio_ || lowest_ * limit_ratio_ < 1;
    }

    double value() const {
        const double high = db_of_log2 * steady_log2(highest_);
        const double low = -db_of_log2 * steady_log2(lowest_);
        const double above = db_of_log2 * steady_log2(highest_above_) - allowed_above;
        return in_steps(std::max({high, low, above, low_level_}));
    }

    const Forms& forms_;
    double limit_;
    double limit_ratio_;
    double limit_above_;
    double highest_ = 1;
    double lowest_ = 1;
    double highest_above_ = 1;
    double low_level_ = 0;
};

/// The 8-norm of the errors. The sum only grows: once it has passed the limit it stays behind it.
class EighthNorm {
public:
    EighthNorm(const Forms& forms, std::size_t count, double limit)
        : forms_(forms),
          count_(static_cast<double>(std::max<std::size_t>(count, 1))),
          limit_(eighth_power(limit) * count_ * rounding_room) {}

    double of(const PointSet& points) {
        for (const PointBlock& block : points.level) {
            if (add(block, levels(block, 0))) return no_answer;
        }
        for (const PointBlock& block : points.above) {
            Values v = levels(block, allowed_above);
            for (double& error : v) error = std::max(error, 0.0);
            if (add(block, v)) return no_answer;
        }
        for (const PointBlock& block : points.low_level) {
            if (add(block, low_level_errors(block, forms_))) return no_answer;
        }
        return value();
    }

private:
    /// The levels in dB over the target and what is allowed above it.
    Values levels(const PointBlock& block, double allowed) const {
        Values v = forms_.powers(block);
        for (std::size_t i = 0; i < PointBlock::size; ++i) {
            v[i] = db_of_log2 * steady_log2(v[i]) - allowed;
        }
        return v;
    }

    /// True once the limit is passed.
    bool add(const PointBlock& block, Values errors) {
        for (std::size_t i = 0; i < PointBlock::size; ++i) errors[i] = eighth_power(errors[i]);
        for (std::size_t i = 0; i < block.count; ++i) sum_ += errors[i];
        return sum_ > limit_;
    }

    double value() const { return in_steps(std::sqrt(std::sqrt(std::sqrt(sum_ / count_)))); }

    const Forms& forms_;
    double count_;
    double limit_;
    double sum_ = 0;
};

/// Adds a point to the last block and fills the block up with it.
void add_point(std::vector<PointBlock>& blocks, double p, double beside, double target) {
    if (blocks.empty() || blocks.back().count == PointBlock::size) blocks.emplace_back();
    PointBlock& block = blocks.back();
    for (std::size_t i = block.count; i < PointBlock::size; ++i) {
        block.p[i] = p;
        block.other[i] = 1 - p;
        block.beside[i] = beside;
        block.target[i] = target;
    }
    ++block.count;
}

}  // namespace

SectionForm section_form(const EqSection& section, double rate_hz) {
    const double root = steady_sin(std::numbers::pi * section.frequency / rate_hz);
    const double p0 = root * root;
    const double q0 = 1 - p0;
    const double amp = has_gain(section.type) ? steady_gain(section.gain / 2) : 1;
    const double bend = p0 * q0 / (section.q * section.q);
    SectionForm form;
    form.d = p0;
    form.e = q0;
    form.f = bend;
    switch (section.type) {
        case SectionType::bell:
            form.a = p0;
            form.b = q0;
            form.c = bend * amp * amp;
            form.f = bend / (amp * amp);
            break;
        case SectionType::low_shelf:
        case SectionType::high_shelf: {
            const bool is_low = section.type == SectionType::low_shelf;
            form.gain = amp * amp;
            form.c = form.f = amp * bend;
            form.a = is_low ? amp * p0 : p0;
            form.b = is_low ? q0 : amp * q0;
            form.d = is_low ? p0 : amp * p0;
            form.e = is_low ? amp * q0 : q0;
            break;
        }
        case SectionType::low_pass:
            form.a = p0;
            break;
        case SectionType::high_pass:
            form.b = q0;
            break;
        case SectionType::notch:
            form.a = p0;
            form.b = q0;
            break;
        case SectionType::band_pass:
            form.c = bend;
            break;
    }
    return form;
}

SectionResponse::SectionResponse(const EqGrid& grid, const std::vector<double>& target,
                                 const std::vector<double>& one_pole, double rate_hz)
    : rate_hz_(rate_hz) {
    // From the top down: there the errors are, and the answer that cannot matter shows first.
    for (std::size_t i = grid.frequencies.size(); i-- > 0;) {
        if (target[i] < lowest_counted_db) continue;
        const bool is_above = i >= grid.within;
        const bool is_low_level = !is_above && target[i] < low_level_db;
        const double root = steady_sin(std::numbers::pi * grid.frequencies[i] / rate_hz);
        const double gain = steady_gain(target[i]);
        double beside = one_pole.empty() ? 1 : one_pole[i];
        if (!is_low_level) beside /= gain * gain;
        const auto add_to = [&](PointSet& set) {
            auto& blocks = is_above ? set.above : is_low_level ? set.low_level : set.level;
            add_point(blocks, root * root, beside, gain);
            ++set.count;
        };
        add_to(all_);
        if (is_above || i % 2 == 0) add_to(halved_);
    }
}

double SectionResponse::error(const std::vector<EqSection>& sections, FitMeasure measure,
                              double limit) const {
    Forms forms;
    for (const EqSection& section : sections) forms.add(section_form(section, rate_hz_));
    if (measure == FitMeasure::greatest) return GreatestError(forms, limit).of(all_);
    return EighthNorm(forms, halved_.count, limit).of(halved_);
}

}  // namespace tanrove
