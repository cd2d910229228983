// Opening a session file: read, decrypt, ask for version and rate, parse the lists. The version
// stands in the block 0x2067 (u32 at 27, two less than the version), the rate in 0x1028 (u32 at
// 11).
#include "ptformat/ptformat.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <optional>

#include "base/paths.hpp"
#include "base/platform.hpp"
#include "base/session_numbers.hpp"
#include "ptformat/audio_file_list.hpp"
#include "ptformat/cipher.hpp"
#include "ptformat/clip_lists.hpp"
#include "ptformat/container.hpp"
#include "ptformat/midi_lists.hpp"

namespace {

using tanrove::ByteView;
using namespace tanrove::ptformat;

constexpr std::uint16_t version_type = 0x2067;
constexpr std::size_t version_at = 27;
constexpr std::uint32_t version_base = 2;
constexpr int lowest_version = 5;
constexpr int highest_version = 12;
constexpr std::uint32_t version_cap = 255;

constexpr std::uint16_t settings_type = 0x1028;
constexpr std::size_t rate_at = 11;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// The bytes of a regular file that begins as a session does; nullopt for any other. The header is
/// looked at first, so that a large file of another kind costs nothing.
std::optional<std::vector<std::uint8_t>> read_file(const std::string& path) {
    if (!tanrove::is_regular_file(path)) return std::nullopt;
    const auto size = tanrove::file_size_of(path);
    if (!size || *size < header_bytes || *size > PTFFormat::max_file_bytes) return std::nullopt;
    const std::unique_ptr<std::FILE, FileCloser> file(tanrove::open_file(path.c_str(), "rb"));
    if (!file) return std::nullopt;
    std::array<std::uint8_t, header_bytes> header{};
    if (std::fread(header.data(), 1, header_bytes, file.get()) != header_bytes) return std::nullopt;
    if (!read_cipher(ByteView(header))) return std::nullopt;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(*size));
    std::copy(header.begin(), header.end(), bytes.begin());
    const std::size_t rest = bytes.size() - header_bytes;
    bytes.resize(header_bytes + std::fread(bytes.data() + header_bytes, 1, rest, file.get()));
    if (std::ferror(file.get()) != 0) return std::nullopt;
    return bytes;
}

/// A u32 of a block's payload; nullopt if the block is missing or ends before it.
std::optional<std::uint32_t> read_field(const Container& session, std::uint16_t type,
                                        std::size_t field_at) {
    const auto block = session.first_of_type(type);
    if (!block || block->end() - block->at < field_at + 4) return std::nullopt;
    return session.u32(block->at + field_at);
}

/// The version that the file states; 0 if it states none.
int read_version(const Container& session) {
    const auto stored = read_field(session, version_type, version_at);
    if (!stored) return 0;
    return static_cast<int>(std::min(*stored, version_cap - version_base) + version_base);
}

/// Rescales positions from the session's rate to the target's, to the nearest sample.
class PositionScale {
public:
    PositionScale(std::int64_t session_rate, std::int64_t target_rate)
        : from_(session_rate), to_(target_rate) {
        if (to_ <= 0 || to_ > PTFFormat::highest_target_rate_hz) to_ = from_;
    }

    void apply(std::int64_t& position) const {
        if (from_ == to_) return;
        const std::int64_t seconds = position / from_;
        const std::int64_t rest = position % from_;
        position = seconds * to_ + (rest * to_ + from_ / 2) / from_;
    }

private:
    std::int64_t from_;
    std::int64_t to_;
};

}  // namespace

struct PTFFormat::State {
    std::vector<std::uint8_t> image;
    std::int64_t rate_hz = 0;
    std::int64_t target_rate_hz = 0;
    int version = 0;
    std::vector<AudioFile> audio_files;
    bool owes_lists = false;  ///< the session is open, and nobody has asked for the lists below
    std::vector<Region> regions;
    std::vector<Region> midi_regions;
    TrackNames names;
    std::vector<Track> tracks;
    std::vector<Track> midi_tracks;

    bool take(std::vector<std::uint8_t> file);
    int parse(std::int64_t target_rate);
    void read_lists();
    void forget_lists();
    State& with_lists();
};

bool PTFFormat::allow_unknown_version = false;

/// Keeps the file and decrypts it. False if its header names no cipher that is known.
bool PTFFormat::State::take(std::vector<std::uint8_t> file) {
    const auto cipher = read_cipher(ByteView(file));
    if (!cipher) return false;
    image = std::move(file);
    decrypt(image, *cipher);
    return true;
}

int PTFFormat::State::parse(std::int64_t target_rate) {
    const Container session{ByteView(image)};
    version = read_version(session);
    if (version == 0) return load_no_version;
    rate_hz = read_field(session, settings_type, rate_at).value_or(0);
    const bool is_known = version >= lowest_version && version <= highest_version;
    if (!is_known && !allow_unknown_version) return load_unknown_version;
    if (rate_hz < tanrove::lowest_rate_hz || rate_hz > tanrove::highest_rate_hz)
        return load_not_parsed;
    auto files = read_audio_files(session);
    if (!files) return load_not_parsed;
    audio_files = std::move(*files);
    target_rate_hz = target_rate;
    owes_lists = true;
    return load_ok;
}

void PTFFormat::State::read_lists() {
    const Container session{ByteView(image)};
    regions = read_audio_regions(session);
    tracks = read_audio_tracks(session, regions, names);
    midi_regions = read_midi_regions(session);
    midi_tracks = read_midi_tracks(session, midi_regions, names);

    const PositionScale scale(rate_hz, target_rate_hz);
    for (Region& region : regions) {
        scale.apply(region.start);
        scale.apply(region.source_offset);
        scale.apply(region.length);
    }
    for (Track& track : tracks) scale.apply(track.start);
}

void PTFFormat::State::forget_lists() {
    for (auto* list : {&regions, &midi_regions}) *list = {};
    for (auto* list : {&tracks, &midi_tracks}) *list = {};
}

/// Most programs decode the clips themselves: the lists are read for those who ask.
PTFFormat::State& PTFFormat::State::with_lists() {
    if (!owes_lists) return *this;
    owes_lists = false;
    try {
        read_lists();
    } catch (const std::bad_alloc&) {
        forget_lists();
    }
    return *this;
}

PTFFormat::PTFFormat() : state_(std::make_unique<State>()) {}
PTFFormat::~PTFFormat() = default;

int PTFFormat::load(const std::string& path, std::int64_t target_rate) {
    *state_ = State();
    try {
        auto file = read_file(path);
        return file ? load_bytes(std::move(*file), target_rate) : load_not_decrypted;
    } catch (const std::bad_alloc&) {
        return load_not_decrypted;
    }
}

int PTFFormat::load_bytes(std::vector<std::uint8_t> file, std::int64_t target_rate) {
    *state_ = State();
    try {
        return state_->take(std::move(file)) ? state_->parse(target_rate) : load_not_decrypted;
    } catch (const std::bad_alloc&) {
        return load_not_parsed;
    }
}

int PTFFormat::unxor(const std::string& path) {
    *state_ = State();
    try {
        auto file = read_file(path);
        if (!file || !state_->take(std::move(*file))) return load_not_decrypted;
        state_->version = read_version(Container{ByteView(state_->image)});
        return load_ok;
    } catch (const std::bad_alloc&) {
        return load_not_decrypted;
    }
}

const std::uint8_t* PTFFormat::image() const {
    return state_->image.empty() ? nullptr : state_->image.data();
}

std::uint64_t PTFFormat::image_size() const {
    return state_->image.size();
}

std::int64_t PTFFormat::session_rate() const {
    return state_->rate_hz;
}

int PTFFormat::version() const {
    return state_->version;
}

const std::vector<PTFFormat::AudioFile>& PTFFormat::audio_files() const {
    return state_->audio_files;
}

const std::vector<PTFFormat::Region>& PTFFormat::regions() const {
    return state_->with_lists().regions;
}

const std::vector<PTFFormat::Region>& PTFFormat::midi_regions() const {
    return state_->with_lists().midi_regions;
}

const std::vector<PTFFormat::Track>& PTFFormat::tracks() const {
    return state_->with_lists().tracks;
}

const std::vector<PTFFormat::Track>& PTFFormat::midi_tracks() const {
    return state_->with_lists().midi_tracks;
}
