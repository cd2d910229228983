// What EQ3 is to REAPER. A band that is off keeps its sections, switched off.
#include "standins/eq3_slots.hpp"

#include <algorithm>

#include "base/formatted_text.hpp"
#include "base/steady_math.hpp"
#include "eqfit/eq_start_sections.hpp"
#include "standins/eq3_controls.hpp"
#include "standins/js_slots.hpp"
#include "standins/reaeq_slot.hpp"
#include "standins/slot_numbers.hpp"

namespace tanrove {

namespace {

constexpr double noted_error_db = 0.5;
constexpr std::uint32_t seven_band_filter_numbers = 900;
constexpr std::uint32_t one_band_filter_number = 901;

/// The slider of the one-pole filter at this corner.
double filter_slider(double corner) {
    const double octaves = steady_log((corner + 0.5) / 8.17742) / 0.05732506661926935;
    return std::clamp((octaves - 16) / 1.20103, 0.0, 100.0);
}

void add_filter(StandIn& stand_in, const EqBand& band, const std::string& owner,
                std::uint32_t number) {
    const char* type = band.high ? "high-pass" : "low-pass";
    const char* slope = band.slope == 3 ? "6 of 18 dB/oct" : "6 dB/oct";
    FxSlot slot = js_slot(
        "Liteon/simplelp6db", owner + " " + type + " " + slope + " (Simple 1-Pole Filter)",
        formatted("0 %d %.6f 0", band.high ? 1 : 0, filter_slider(band.firstOrderFrequency)),
        number);
    slot.preset_name = std::string("EQ3 ") + type + ", first-order part";
    stand_in.slots.push_back(std::move(slot));
}

/// Sections of a band as REAPER shall have them, fitted where that helps.
void settle_band(EqBand& band, bool is_one_band, double rate_hz, EqFitter& fitter) {
    add_start_sections(band, rate_hz);
    if (is_one_band && band.kind == BandKind::notch) band.sections.resize(1);
    if (is_worth_fitting(band)) fitter.fit(band, rate_hz);
}

void add_notes(StandIn& stand_in, const std::vector<EqBand>& bands, const StandInTrack& track) {
    if (std::ranges::any_of(bands, [](const EqBand& b) { return b.worstDb > noted_error_db; })) {
        stand_in.note(
            "EQ3 band beyond REAPER's reach near the top of the range (worst of these above)");
    }
    stand_in.note_width(track);
}

}  // namespace

StandIn make_eq3(StandInMaker& maker, const PluginInsert& insert, const StandInTrack& track) {
    const bool is_one_band = insert.controlValues.size() == one_band_controls;
    const std::string owner = is_one_band ? "EQ3 1-Band" : "EQ3 7-Band";
    Eq3Settings settings =
        is_one_band ? read_one_band(insert.controlValues) : read_seven_bands(insert.controlValues);
    SlotNumbers numbers = SlotNumbers::of_block(insert.blockStart);
    StandIn stand_in;
    if (settings.inverts) {
        stand_in.slots.push_back(polarity_slot(
            owner, is_one_band ? "EQ3 polarity" : "EQ3 input polarity", numbers.next()));
    }
    ReaEqSettings eq;
    eq.output_gain_db = settings.output_gain_db;
    eq.rate_hz = track.rate_hz;
    for (EqBand& band : settings.bands) {
        settle_band(band, is_one_band, track.rate_hz, maker.eq_fitter());
        stand_in.eq_fits.add(band);
        eq.sections.insert(eq.sections.end(), band.sections.begin(), band.sections.end());
    }
    stand_in.slots.push_back(reaeq_slot(eq, owner, owner, numbers.next()));
    for (std::size_t i = 0; i < settings.bands.size(); ++i) {
        const EqBand& band = settings.bands[i];
        if (!band.enabled || band.firstOrderFrequency <= 0) continue;
        const auto offset = is_one_band ? one_band_filter_number
                                        : seven_band_filter_numbers + static_cast<std::uint32_t>(i);
        add_filter(stand_in, band, owner, numbers.next(offset));
        ++stand_in.one_pole_filters;
    }
    add_notes(stand_in, settings.bands, track);
    return stand_in;
}

}  // namespace tanrove
