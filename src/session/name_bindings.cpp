// A track's identity stands in its 0x1014 record, and again somewhere in the 0x261c that holds the
// channel record of its strip. Sessions may have any number of either, so the image is searched for
// all identities at once, with a window of 8 bytes that moves byte by byte.
#include "session/name_bindings.hpp"

#include <algorithm>
#include <bitset>
#include <unordered_map>
#include <vector>

#include "session/block_types.hpp"
#include "session/track_names.hpp"

namespace tanrove {

namespace {

constexpr std::size_t identity_width = 8;

/// The names that still look for a strip, by identity.
using OpenNames = std::unordered_map<std::uint64_t, std::vector<std::string>>;

OpenNames names_by_identity(const BlockIndex& index) {
    OpenNames names;
    for (TrackName& track : read_track_names(index)) {
        if (track.identity != 0) names[track.identity].push_back(std::move(track.name));
    }
    return names;
}

/// Every position from `from` to `to` at which one of the identities stands, in order.
std::vector<std::size_t> find_identities(ByteView image, const OpenNames& names, std::size_t from,
                                         std::size_t to) {
    // Answers nearly every position without a look-up, also where identities are running numbers.
    constexpr int mark_bits = 18;
    std::bitset<std::size_t{1} << mark_bits> marks;
    const auto mark_of = [](std::uint64_t identity) {
        return static_cast<std::size_t>(identity * 0x9e3779b97f4a7c15 >> (64 - mark_bits));
    };
    for (const auto& [identity, unused] : names) marks.set(mark_of(identity));

    std::vector<std::size_t> hits;
    std::uint64_t window = 0;
    for (std::size_t at = from; at < to; ++at) {
        window = window >> 8 | static_cast<std::uint64_t>(image.u8(at)) << 56;
        if (at + 1 - from < identity_width || !marks.test(mark_of(window))) continue;
        if (names.contains(window)) hits.push_back(at + 1 - identity_width);
    }
    return hits;
}

/// Strips in order of their channel records, to be asked for the first inside a span.
class StripPositions {
public:
    explicit StripPositions(std::span<const BindableStrip> strips) {
        for (std::size_t i = 0; i < strips.size(); ++i) {
            if (strips[i].channel_position) places_.emplace(*strips[i].channel_position, i);
        }
    }
    std::optional<std::size_t> first_in(const BlockSpan& span) const {
        const auto place = places_.upper_bound(span.start);
        if (place == places_.end() || !span.encloses(place->first)) return std::nullopt;
        return place->second;
    }

private:
    std::map<std::size_t, std::size_t> places_;
};

/// The hits that no strip has claimed yet; each is given out once.
class OpenHits {
public:
    explicit OpenHits(std::vector<std::size_t> hits) : hits_(std::move(hits)) {
        next_.resize(hits_.size() + 1);
        for (std::size_t i = 0; i < next_.size(); ++i) next_[i] = i;
    }

    /// Takes the first hit that lies wholly between `from` and `to`.
    std::optional<std::size_t> take(std::size_t from, std::size_t to) {
        const auto first = std::lower_bound(hits_.begin(), hits_.end(), from);
        const auto i = next_open(static_cast<std::size_t>(first - hits_.begin()));
        if (i == hits_.size() || hits_[i] + identity_width > to) return std::nullopt;
        next_[i] = i + 1;
        return hits_[i];
    }

private:
    std::size_t next_open(std::size_t i) {
        while (next_[i] != i) {
            next_[i] = next_[next_[i]];  // shortens the way for those who come after
            i = next_[i];
        }
        return i;
    }

    std::vector<std::size_t> hits_;
    std::vector<std::size_t> next_;
};

}  // namespace

std::map<std::string, std::size_t> readNameBindings(const BlockIndex& index,
                                                    std::span<const BindableStrip> strips) {
    std::map<std::string, std::size_t> bindings;
    OpenNames names = names_by_identity(index);
    const BlockList& blocks = index.of_type(block_type::strip_identity);
    if (names.empty()) return bindings;

    const ByteView image = index.image();
    const BlockSpan reach = blocks.reach();
    OpenHits hits(find_identities(image, names, reach.start, reach.end));
    const StripPositions positions(strips);
    for (const Block& block : blocks.all()) {
        const auto strip = positions.first_in(block.span());
        if (!strip) continue;
        while (const auto hit = hits.take(block.at, block.end())) {
            auto& found = names[image.u64(*hit)];
            for (const auto& name : found) {
                if (name != strips[*strip].name) bindings.emplace(name, *strip);
            }
            found.clear();
        }
    }
    return bindings;
}

}  // namespace tanrove
