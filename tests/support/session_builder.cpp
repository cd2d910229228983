// Whole sessions from their description: the chain of top-level blocks in its usual order.
#include "support/session_builder.hpp"

#include <algorithm>
#include <fstream>

namespace tanrove::builder {

namespace {

constexpr std::uint8_t key_step = 0x35;

}  // namespace

SessionBuilder& SessionBuilder::product(const std::string& product, const std::string& version) {
    product_ = {product, version};
    has_product_ = true;
    return *this;
}

SessionBuilder& SessionBuilder::bus(const std::string& name, std::uint16_t first_channel) {
    const auto second_channel = static_cast<std::uint16_t>(first_channel + 1);
    const auto parent = static_cast<std::uint16_t>(paths_.size());
    io_path({.name = name, .type = 2, .channels = {first_channel, second_channel}});
    io_path({.name = name + ".L", .type = 2, .channels = {first_channel}, .parent = parent});
    return io_path(
        {.name = name + ".R", .type = 2, .channels = {second_channel}, .parent = parent});
}

SessionBuilder& SessionBuilder::top_level(const Bytes& blocks) {
    extra_.insert(extra_.end(), blocks.begin(), blocks.end());
    return *this;
}

SessionBuilder& SessionBuilder::tempo(std::int64_t tick, double bpm, std::uint32_t beat_ticks) {
    time_.tempos.push_back({tick, bpm, beat_ticks});
    return *this;
}

SessionBuilder& SessionBuilder::default_tempo(double bpm, std::uint32_t beat_ticks) {
    time_.default_tempo = TempoSpec{0, bpm, beat_ticks};
    return *this;
}

SessionBuilder& SessionBuilder::meter(std::int64_t tick, std::uint32_t bar, std::uint32_t numerator,
                                      std::uint32_t denominator) {
    time_.meters.push_back({tick, bar, numerator, denominator});
    return *this;
}

SessionBuilder& SessionBuilder::marker(const std::string& name, std::int64_t tick) {
    return location({.name = name, .start = tick, .end = tick});
}

SessionBuilder& SessionBuilder::marker_in_samples(const std::string& name, std::int64_t sample) {
    return location({.name = name, .flags = 2, .start = sample, .end = sample});
}

SessionBuilder& SessionBuilder::selection(const std::string& name, std::int64_t start_tick,
                                          std::int64_t end_tick) {
    return location({.name = name, .kind = 10, .start = start_tick, .end = end_tick});
}

SessionBuilder& SessionBuilder::location(LocationSpec location) {
    const auto next = static_cast<std::uint16_t>(time_.locations.size() + 1);
    if (location.number == 0) location.number = next;
    time_.locations.push_back(std::move(location));
    return *this;
}

SessionBuilder& SessionBuilder::frame_rate(std::uint8_t code, std::uint32_t start_frames) {
    return timecode({code, start_frames, true, code, start_frames});
}

SessionBuilder& SessionBuilder::grid_and_nudge(const BarsSpec& grid, const BarsSpec& nudge) {
    time_.nudge_and_grid = {nudge, grid};
    return *this;
}

SessionBuilder& SessionBuilder::folder(std::size_t folder,
                                       const std::vector<std::size_t>& members) {
    FolderSpec spec{.identity = track_identity(folder)};
    for (const auto place : members) spec.members.push_back(track_identity(place));
    tables_.folders.push_back(std::move(spec));
    return *this;
}

SessionBuilder& SessionBuilder::vca(const std::string& name, int fader_tenths_db) {
    return track({.name = name, .kind = TrackKind::vca, .mixer = vca_record(fader_tenths_db)});
}

SessionBuilder& SessionBuilder::alternate_playlist(const std::string& name, std::uint32_t value) {
    tables_.alternates.emplace_back(name, value);
    return *this;
}

SessionBuilder& SessionBuilder::colour_schemes(std::uint8_t track_scheme,
                                               std::uint8_t clip_scheme) {
    tables_.colour_schemes = {track_scheme, clip_scheme};
    return *this;
}

Bytes SessionBuilder::image() const {
    return image(index_at_.value_or(
        static_cast<std::uint32_t>(image(0).size() - session_index_block().size())));
}

Bytes SessionBuilder::image(std::uint32_t index_at) const {
    ByteWriter image;
    image.raw(file_header(false));
    image.raw(opening_blocks(static_cast<std::uint32_t>(container_version_ - 2), index_at));
    image.raw(strip_table_block(tracks_, strip_table_form_, tables_.picture.frame_rate));
    image.raw(settings_block(settings_)).raw(picture_settings_block(tables_.picture.quality));
    image.raw(file_list_block(files_, path_, settings_.rate_hz, "EVAW"));
    if (time_.timecode) image.raw(timecode_block(*time_.timecode));
    ClipTables clips = clip_tables(tracks_, clip_groups_);
    for (const auto& render : tables_.freeze_renders) clips.regions.push_back(render);
    std::vector<GroupClipSpec> groups;
    std::vector<std::pair<std::uint32_t, std::string>> list_numbers;
    std::vector<std::uint32_t> list_of_group;
    std::uint32_t lists = 0;
    for (const auto& group : clip_groups_) {
        const auto place = static_cast<std::uint32_t>(groups.size());
        groups.push_back({.name = group.name,
                          .start = group.start,
                          .length = group.length,
                          .number_place = place});
        if (group.gain_db) {
            groups.back().gain_entry = static_cast<std::uint32_t>(clips.gains.size());
            clips.gains.push_back({.points = {{0, *group.gain_db}}});
        }
        list_of_group.push_back(group.list_of ? list_of_group.at(*group.list_of) : lists++);
        list_numbers.emplace_back(list_of_group.back(), group.name);
    }
    image.raw(clip_gain_block(clips.gains)).raw(group_definitions_block(groups));
    image.raw(tables_before_clips(tables_, path_));
    image.raw(region_list_block(clips.regions)).raw(fade_list_block(clips.fades));
    image.raw(playlists_block(clips.playlists));
    std::vector<TrackSpec> track_list = tracks_;
    for (const auto& lane : alternate_tracks(tracks_)) track_list.push_back(lane);
    image.raw(track_list_block(track_list));
    if (!plugin_names_.empty()) image.raw(plugin_names_block(plugin_names_));
    image.raw(tables_before_rows(tables_));
    if (has_path_table_) image.raw(path_table_block(paths_));
    if (!paths_.empty()) image.raw(io_paths_block(paths_, has_path_table_));
    image.raw(midi_blocks(tracks_, midi_outputs_));
    image.raw(strip_rows_block(tracks_));
    const auto strip_count = std::ranges::count_if(tracks_, &TrackSpec::has_row);
    image.raw(tables_after_rows(tables_, static_cast<std::uint16_t>(strip_count)));
    image.raw(group_lists_block(clips.group_lists));
    if (!groups.empty()) image.raw(list_numbers_block(list_numbers));
    image.raw(extra_);
    image.raw(tempo_and_meter_blocks(time_));
    image.raw(grid_and_location_blocks(time_));
    if (has_product_) image.raw(product_block(product_));
    return image.raw(session_index_block()).bytes();
}

Bytes SessionBuilder::file() const {
    return encrypted(image(), Cipher::ptx, key_step);
}

bool SessionBuilder::write(const std::string& path) const {
    const Bytes bytes = file();
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    out.close();
    return out.good();
}

}  // namespace tanrove::builder
