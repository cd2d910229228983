// Sections are reckoned with in the plane of their analogue prototypes, to which the rate bends
// every frequency.
#include "plain_eq_fit.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <numbers>

namespace tanrove::bench {

namespace {

using Complex = std::complex<double>;
using Point = std::vector<double>;
using Error = std::function<double(const Point&)>;

double decibels(Complex response) {
    return 20 * std::log10(std::max(std::abs(response), 1e-12));
}

Complex shelf(Complex s, double a, double q, bool high) {
    const Complex middle = std::sqrt(a) / q * s;
    const Complex near = s * s + middle + a;
    const Complex far = a * s * s + middle + 1.0;
    return a * (high ? far / near : near / far);
}

Complex bell(Complex s, double a, double q) {
    return (s * s + s * a / q + 1.0) / (s * s + s / (a * q) + 1.0);
}

Complex target_of(const EqBand& band, double hz) {
    const Complex s(0, hz / band.frequency);
    const double a = std::pow(10, band.gain / 40);
    if (band.kind == BandKind::bell) return bell(s, a, band.q);
    if (band.kind == BandKind::shelf) return shelf(s, a, band.q, band.high);
    const Complex t = band.high ? 1.0 / s : s;
    const auto two_poles = [&](double q) { return 1.0 / (t * t + t / q + 1.0); };
    if (band.slope == 1) return 1.0 / (1.0 + t);
    if (band.slope == 2) return two_poles(0.70710678);
    if (band.slope == 3) return two_poles(1) / (1.0 + t);
    return two_poles(0.5411961) * two_poles(1.30656296);
}

Complex section_at(const EqSection& section, double rate, double hz) {
    const double w0 = std::numbers::pi * section.frequency / rate;
    const Complex s(0, std::tan(std::numbers::pi * hz / rate) / std::tan(w0));
    const double a = std::pow(10, section.gain / 40);
    switch (section.type) {
        case SectionType::low_shelf:
            return shelf(s, a, section.q, false);
        case SectionType::high_shelf:
            return shelf(s, a, section.q, true);
        case SectionType::low_pass:
            return 1.0 / (s * s + s / section.q + 1.0);
        case SectionType::high_pass:
            return s * s / (s * s + s / section.q + 1.0);
        default:
            return bell(s, a, section.q);
    }
}

Complex one_pole_at(const EqBand& band, double rate, double hz) {
    const double w = 2 * std::numbers::pi * band.firstOrderFrequency;
    const double k = 1 / (w + 3 * rate);
    const Complex z = std::polar(1.0, -2 * std::numbers::pi * hz / rate);
    const Complex low = 2 * w * k / (1.0 - (3 * rate - w) * k * z);
    return band.high ? 1.0 - low : low;
}

/// The band's curve and the distance of sections from it.
class Curve {
public:
    Curve(const EqBand& band, double rate) : band_(band), rate_(rate) {
        const double top = std::min(0.46 * rate, 20000.0);
        for (int i = 0; 20 * std::exp2(i / 24.0) <= top; ++i) add(20 * std::exp2(i / 24.0));
        within_ = grid_.size();
        for (int i = 1; i <= 8; ++i) {
            const double hz = top + i * (0.48 * rate - top) / 8;
            if (hz > top + 1) add(hz);
        }
    }

    double error(const std::vector<EqSection>& sections, bool greatest) const {
        double sum = 0;
        double count = 0;
        double worst = 0;
        for (std::size_t i = 0; i < grid_.size(); ++i) {
            if (target_[i] < -50 || (!greatest && i < within_ && i % 2 != 0)) continue;
            const double error = error_at(i, sections);
            worst = std::max(worst, error);
            sum += std::pow(error, 8);
            ++count;
        }
        // In steps, as rounding shall not decide which way the search goes.
        constexpr double steps_a_db = 16777216;
        const double error = greatest ? worst : std::pow(sum / count, 0.125);
        return std::floor(error * steps_a_db + 0.5) / steps_a_db;
    }

private:
    void add(double hz) {
        grid_.push_back(hz);
        target_.push_back(decibels(target_of(band_, hz)));
    }

    double error_at(std::size_t i, const std::vector<EqSection>& sections) const {
        Complex response = 1;
        if (band_.firstOrderFrequency > 0) response = one_pole_at(band_, rate_, grid_[i]);
        for (const EqSection& section : sections) response *= section_at(section, rate_, grid_[i]);
        const double over = decibels(response) - target_[i];
        if (i >= within_) return std::max(0.0, over - 3);
        if (target_[i] >= -20) return std::abs(over);
        return 25 * std::abs(std::pow(10, target_[i] / 20) - std::abs(response));
    }

    const EqBand& band_;
    double rate_;
    std::vector<double> grid_;
    std::vector<double> target_;
    std::size_t within_ = 0;
};

double greatest_shelf_q_at(double gain) {
    const double a = std::pow(10, gain / 40);
    return 0.9999 / std::sqrt(2 - (a + 1 / a) / 6);
}

/// The width by which REAPER knows a shelf or a bell.
double width_of(const EqSection& section, double rate) {
    const double a = std::pow(10, section.gain / 40);
    if (section.type != SectionType::bell) {
        const double s = 1 / ((1 / (section.q * section.q) - 2) / (a + 1 / a) + 1);
        return 1 / std::sqrt(s);
    }
    const double w =
        std::min(2 * std::numbers::pi * section.frequency / rate, std::numbers::pi / 2);
    return 2 / std::numbers::ln2 * std::asinh(1 / (2 * section.q)) * std::sin(w) / w;
}

/// The Q at which the section is as wide as a fit may make it.
double least_q(const EqSection& section, double rate) {
    const double a = std::pow(10, section.gain / 40);
    if (section.type != SectionType::bell) return 1 / std::sqrt(2 + 15 * (a + 1 / a));
    const double w =
        std::min(2 * std::numbers::pi * section.frequency / rate, std::numbers::pi / 2);
    return 1 / (2 * std::sinh(2 * std::numbers::ln2 * w / std::sin(w)));
}

bool passes(const EqSection& section) {
    return section.type == SectionType::low_pass || section.type == SectionType::high_pass;
}

void hold_to_start(EqSection& section, const EqSection& start, double rate) {
    const bool high = passes(section) && start.frequency > 0.2 * rate;
    section.frequency =
        std::clamp(section.frequency, 0.8 * start.frequency, (high ? 1.8 : 1.25) * start.frequency);
    if (!passes(section)) {
        section.gain = std::clamp(section.gain, start.gain - 3, start.gain + 3);
    }
    section.q = std::clamp(section.q, (high ? 0.3 : 0.5) * start.q, (high ? 3 : 2) * start.q);
}

std::vector<EqSection> placed(const Point& point, std::vector<EqSection> sections,
                              const std::vector<EqSection>& start, double rate) {
    auto next = point.begin();
    for (std::size_t i = 0; i < sections.size(); ++i) {
        EqSection& section = sections[i];
        if (section.locked) continue;
        section.frequency = std::clamp(std::exp(*next++), 10.0, 0.48 * rate);
        if (!passes(section)) section.gain = *next++;
        section.q = std::exp(*next++);
        if (i < start.size()) {
            hold_to_start(section, start[i], rate);
        } else {
            section.gain = std::clamp(section.gain, -12.0, 12.0);
        }
        section.q = std::clamp(section.q, 0.02, passes(section) ? 2.0 : 30.0);
        if (passes(section)) continue;
        double least = least_q(section, rate);
        if (i < start.size() && width_of(start[i], rate) > 4) least = std::min(least, start[i].q);
        section.q = std::max(section.q, least);
        if (section.type != SectionType::bell) {
            section.q = std::min(section.q, greatest_shelf_q_at(section.gain));
        }
    }
    return sections;
}

struct Vertex {
    Point point;
    double error = 0;
};

void insert(std::vector<Vertex>& simplex, Vertex vertex) {
    const auto behind =
        std::upper_bound(simplex.begin(), simplex.end(), vertex,
                         [](const Vertex& a, const Vertex& b) { return a.error < b.error; });
    simplex.insert(behind, std::move(vertex));
}

Vertex search(const Error& error, const Point& start, const Point& steps, int iterations) {
    std::vector<Vertex> simplex = {{start, error(start)}};
    for (std::size_t i = 0; i < start.size(); ++i) {
        Point point = start;
        point[i] += steps[i];
        const double at = error(point);
        insert(simplex, {std::move(point), at});
    }
    for (int n = 0; n < iterations; ++n) {
        Vertex worst = std::move(simplex.back());
        simplex.pop_back();
        const auto from_centroid = [&](double distance) {
            Vertex moved{worst.point, 0};
            for (std::size_t i = 0; i < start.size(); ++i) {
                double sum = 0;
                for (const Vertex& v : simplex) sum += v.point[i];
                const double centre = sum / static_cast<double>(start.size());
                moved.point[i] = centre + distance * (centre - worst.point[i]);
            }
            moved.error = error(moved.point);
            return moved;
        };
        Vertex reflected = from_centroid(1);
        if (reflected.error < simplex.front().error) {
            Vertex expanded = from_centroid(2);
            insert(simplex, expanded.error < reflected.error ? expanded : reflected);
            continue;
        }
        // With one coordinate there is no second worst but the best.
        if (reflected.error < simplex.back().error) {
            insert(simplex, reflected);
            continue;
        }
        Vertex contracted = from_centroid(-0.5);
        if (contracted.error < worst.error) {
            insert(simplex, contracted);
            continue;
        }
        std::vector<Vertex> old = std::move(simplex);
        old.push_back(std::move(worst));
        simplex = {old.front()};
        for (std::size_t k = 1; k < old.size(); ++k) {
            Point point = old[k].point;
            for (std::size_t i = 0; i < point.size(); ++i) {
                point[i] = old[0].point[i] + 0.5 * (point[i] - old[0].point[i]);
            }
            const double at = error(point);
            insert(simplex, {std::move(point), at});
        }
    }
    return simplex.front();
}

PlainFit search_twice(const Curve& curve, std::vector<EqSection> sections,
                      const std::vector<EqSection>& start, double rate) {
    PlainFit fit;
    for (const bool greatest : {false, true}) {
        Point from;
        Point steps;
        const double step = greatest ? 0.1 : 1;
        for (const EqSection& section : sections) {
            if (section.locked) continue;
            from.push_back(std::log(section.frequency));
            steps.push_back(0.1 * step);
            if (!passes(section)) {
                from.push_back(section.gain);
                steps.push_back(step);
            }
            from.push_back(std::log(section.q));
            steps.push_back(0.1 * step);
        }
        const Error error = [&](const Point& point) {
            return curve.error(placed(point, sections, start, rate), greatest);
        };
        const int n = static_cast<int>(sections.size());
        const Vertex best = search(error, from, steps, greatest ? 200 + 50 * n : 400 + 150 * n);
        sections = placed(best.point, sections, start, rate);
        fit.error = best.error;
    }
    fit.sections = std::move(sections);
    return fit;
}

}  // namespace

PlainFit fit_plainly(const EqBand& band, double rate_hz) {
    const Curve curve(band, rate_hz);
    PlainFit best{band.sections, curve.error(band.sections, true)};
    if (best.error <= 0.05) return best;
    const auto take = [&](const PlainFit& fit) {
        if (fit.error <= best.error - 1e-9) best = fit;
    };
    const bool moves = std::ranges::any_of(band.sections, [](const auto& s) { return !s.locked; });
    if (moves) take(search_twice(curve, band.sections, band.fitStart, rate_hz));
    constexpr double shares[3][3] = {{0.45, 0.4, 0.33}, {0.42, 0.38, 0.3}, {0.36, 0.3, 0.25}};
    constexpr double gains[3] = {0, 3, -1.5};
    for (int round = 0; round < 3 && best.error > 0.05; ++round) {
        PlainFit best_of_round;
        for (int k = 0; k < 3; ++k) {
            std::vector<EqSection> more = best.sections;
            EqSection& added = more.emplace_back();
            added.type = round == 0 ? SectionType::high_shelf : SectionType::bell;
            added.frequency = shares[round][k] * rate_hz;
            added.gain = gains[k];
            added.q = round == 0 ? 0.7 : 1;
            const PlainFit fit = search_twice(curve, more, band.fitStart, rate_hz);
            if (k == 0 || fit.error < best_of_round.error) best_of_round = fit;
        }
        take(best_of_round);
    }
    return best;
}

}  // namespace tanrove::bench
