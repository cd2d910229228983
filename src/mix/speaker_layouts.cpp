// Pro Tools names the legs of a bus "BUS.SPEAKER". Not every bus has all its legs in the session:
// where one is missing the width code says how the bus was made, if no leg speaks against it.
#include "mix/speaker_layouts.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

namespace tanrove {

namespace {

constexpr int low_frequencies_only = 4;  // flag

constexpr std::array<Speaker, 14> speakers = {{
    {"L", -1, 1},
    {"R", 1, 1},
    {"C", 0, 1},
    {"Lc", -0.5, 1},
    {"Rc", 0.5, 1},
    {"Ls", -1, -1},
    {"Rs", 1, -1},
    {"S", 0, -1},
    {"Cs", 0, -1},
    {"Lss", -1, 0},
    {"Rss", 1, 0},
    {"Lsr", -1, -1},
    {"Rsr", 1, -1},
    {"LFE", 0, 0, low_frequencies_only},
}};

constexpr std::array<std::string_view, 6> speakers_of_5_1 = {"L", "C", "R", "Ls", "Rs", "LFE"};
constexpr std::uint8_t width_5_0 = 5;
constexpr std::uint8_t width_5_1 = 6;

/// The speakers of a width code; none where these are not known.
std::span<const std::string_view> speakers_of_width(std::uint8_t code) {
    if (code == width_5_0) return std::span(speakers_of_5_1).first<5>();
    if (code == width_5_1) return speakers_of_5_1;
    return {};
}

/// The name of a leg without that of its bus. A part of a wide bus, its "5.0", shares the legs of
/// the whole, which are called after that.
std::string speaker_of(const PathLookup& paths, std::size_t leg, std::size_t bus) {
    const std::string& name = paths.at(leg).name;
    const std::size_t point = name.rfind('.');
    if (point == std::string::npos) return name;
    const std::string_view front = std::string_view(name).substr(0, point);
    const auto whole = paths.parent_of(leg);
    const bool is_of_bus = front == paths.at(bus).name || (whole && front == paths.at(*whole).name);
    return is_of_bus ? name.substr(point + 1) : name;
}

/// The speaker of each channel of a bus, nullopt where no leg runs on it. Users make further paths
/// on a channel, under names of their own: the leg is the one that is called after a speaker.
std::vector<std::optional<std::string>> listed_speakers(const PathLookup& paths, std::size_t bus) {
    const std::vector<std::size_t> legs = paths.legs_of(bus);
    std::vector<std::optional<std::string>> listed;
    for (const std::uint16_t channel : paths.at(bus).channels) {
        auto& speaker = listed.emplace_back();
        for (const std::size_t leg : legs) {
            if (paths.at(leg).channels.front() != channel) continue;
            std::string name = speaker_of(paths, leg, bus);
            const bool is_known = speaker_named(name) != nullptr;
            if (is_known || !speaker) speaker = std::move(name);
            if (is_known) break;
        }
    }
    return listed;
}

}  // namespace

const Speaker* speaker_named(std::string_view name) {
    const auto found = std::ranges::find(speakers, name, &Speaker::name);
    return found == speakers.end() ? nullptr : &*found;
}

BusLayout layout_of(const PathLookup& paths, std::size_t bus) {
    const auto listed = listed_speakers(paths, bus);
    const auto made_as = speakers_of_width(paths.at(bus).width_code);
    BusLayout layout;
    bool agrees = made_as.size() == listed.size();
    bool is_placed = true;
    for (std::size_t i = 0; i < listed.size(); ++i) {
        if (!listed[i]) continue;
        ++layout.leg_count;
        layout.speakers.push_back(*listed[i]);
        is_placed = is_placed && speaker_named(*listed[i]) != nullptr;
        agrees = agrees && *listed[i] == made_as[i];
    }
    const bool has_all_legs = layout.leg_count == listed.size();
    if (!has_all_legs && agrees) layout.speakers.assign(made_as.begin(), made_as.end());
    if (has_all_legs ? !is_placed : !agrees) layout.speakers.clear();
    return layout;
}

}  // namespace tanrove
