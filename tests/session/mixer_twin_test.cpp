// The mixer's readers against slow twins that try every byte, on built, damaged and real sessions.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

#include "session/buses.hpp"
#include "session/channel_records.hpp"
#include "session/output_names.hpp"
#include "session/routing.hpp"
#include "session/strip_lanes.hpp"
#include "session/strips.hpp"
#include "slow_scan.hpp"
#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::SessionBuilder;
using builder::TrackKind;

/// A text of up to `bound` bytes whose count stands at `p`.
std::optional<std::string> text_at(ByteView image, std::size_t p, std::size_t bound,
                                   std::size_t end) {
    const auto text = readCountedText(image, p, bound, end);
    if (!text || text->empty() || !is_session_text(*text)) return std::nullopt;
    return std::string(*text);
}

std::vector<std::string> slow_buses(ByteView image) {
    std::set<std::string> names;
    for (std::size_t p = 0; p < image.size(); ++p) {
        const auto text = text_at(image, p, 40, image.size());
        if (!text || text->size() < 3) continue;
        if (text->find_first_of(".:\\/") == std::string::npos) names.insert(*text);
    }
    std::map<std::string, std::set<char>> sides;
    for (std::size_t p = 0; p + 2 < image.size(); ++p) {
        const auto side = static_cast<char>(image.u8(p + 1));
        if (image.u8(p) != '.' || (side != 'L' && side != 'R')) continue;
        if (is_session_text(*image.text(p + 2, 1))) continue;
        for (const auto& name : names) {
            if (name.size() <= p && image.has(p - name.size(), name)) sides[name].insert(side);
        }
    }
    std::vector<std::string> buses;
    for (const auto& name : names) {
        int left = 0;
        int right = 0;
        char rest = 0;
        const bool is_pair = std::sscanf(name.c_str(), "Bus %d-%d%c", &left, &right, &rest) == 2;
        const bool is_bus = name.starts_with("Bus ")
                                ? is_pair && names.contains("Bus " + std::to_string(left)) &&
                                      names.contains("Bus " + std::to_string(right))
                                : sides[name].size() == 2;
        if (is_bus) buses.push_back(name);
    }
    return buses;
}

std::optional<std::string> slow_nearest(ByteView image, const std::vector<std::string>& buses,
                                        std::size_t p) {
    std::optional<std::string> best;
    std::size_t best_distance = 0;
    for (std::size_t at = p < 1500 ? 0 : p - 1500; at <= p + 1500; ++at) {
        const std::size_t distance = at < p ? p - at : at - p;
        for (const auto& bus : buses) {
            if (!image.has(at, bus)) continue;
            const bool is_better = !best || distance < best_distance ||
                                   (distance == best_distance && bus.size() > best->size());
            if (is_better) {
                best = bus;
                best_distance = distance;
            }
        }
    }
    return best;
}

/// Index of the smallest row around `p` among those with a routing, or of no row.
std::size_t slow_smallest(const std::vector<StripRow>& rows, std::size_t p) {
    std::size_t best = rows.size();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool has_routing =
            rows[i].type == StripRowType::audio_or_aux || rows[i].type == StripRowType::instrument;
        if (!has_routing || p <= rows[i].start || p >= rows[i].end) continue;
        if (best == rows.size() ||
            rows[i].end - rows[i].start < rows[best].end - rows[best].start) {
            best = i;
        }
    }
    return best;
}

std::optional<ChannelRecord> slow_slot_record(ByteView image, const Block& slot) {
    const auto record = slow::first(image, channel_record_type, slot.payload(), image.size());
    if (!record || record->at != slot.payload()) return std::nullopt;
    return readChannelRecord(image, *record);
}

std::string slow_input(ByteView image, const std::vector<StripRow>& rows, std::size_t row,
                       const std::vector<IoPath>& paths) {
    const std::size_t end = rows[row].end;
    const auto slots = slow::blocks(image, send_channel_type, rows[row].start + 1, image.size());
    for (std::size_t c = rows[row].start + 1; c < end; ++c) {
        const auto name = text_at(image, c, 80, end);
        if (!name || c + 4 + name->size() + 24 > end || slow_smallest(rows, c) != row) continue;
        const bool is_in_slot = std::any_of(
            slots.begin(), slots.end(), [&](const Block& slot) { return slot.span().encloses(c); });
        const std::size_t n = c + name->size();
        if (is_in_slot || image.u32(n + 4) != 0 || !image.has(n + 8, identity_marker) ||
            image.u8(n + 20) != 0 || image.u8(n + 22) != 0 || image.u8(n + 23) != 0) {
            continue;
        }
        for (const IoPath& path : paths) {
            if (path.identity_low == image.u32(n + 12) && path.type == image.u8(n + 21) &&
                path.identity_high == image.u32(n + 16)) {
                return *name;
            }
        }
    }
    return "";
}

/// Output, sends with their levels, and input of every row, one line a row.
std::string slow_routing(ByteView image, const std::vector<StripRow>& rows,
                         const std::vector<IoPath>& paths) {
    std::ostringstream text;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].type != StripRowType::audio_or_aux &&
            rows[row].type != StripRowType::instrument) {
            continue;
        }
        bool is_own = true;
        text << rows[row].original_name << ':';
        for (const Block& slot :
             slow::blocks(image, send_channel_type, rows[row].start + 1, rows[row].end)) {
            const auto record = slow_slot_record(image, slot);
            if (!record || slow_smallest(rows, slot.at) != row) continue;
            const auto output = slow::first(image, output_name_type, slot.payload(), slot.end());
            const auto name = output ? readOutputName(image, *output) : std::nullopt;
            if (is_own && name) text << " -> " << *name;
            if (!is_own && name) text << " send " << *name << ' ' << record->fader_db;
            is_own = false;
        }
        text << " <- " << slow_input(image, rows, row, paths) << '\n';
    }
    return text.str();
}

std::string routing_text(const std::vector<RoutingRow>& rows) {
    std::ostringstream text;
    for (const RoutingRow& row : rows) {
        text << row.name << ':';
        if (row.has_output) text << " -> " << row.output_name;
        for (const auto& send : row.sends) text << " send " << send.target << ' ' << send.level_db;
        text << " <- " << row.input_name << '\n';
    }
    return text.str();
}

/// The strip of each channel record, by the rows or by the names in front.
std::size_t slow_strip(ByteView image, const std::vector<StripRow>& rows,
                       const std::vector<std::string>& names, bool by_rows, std::size_t p) {
    if (by_rows) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (rows[i].start < p && p < rows[i].end) return i;
        }
        return names.size();
    }
    for (std::size_t at = p; at-- > 0;) {
        for (std::size_t i = names.size(); i-- > 0;) {
            if (image.u32(at) == names[i].size() && image.has(at + 4, names[i])) return i;
        }
    }
    return names.size();
}

/// Fader and sends of every strip with a channel record, one line a strip.
std::string slow_strips(ByteView image, const std::vector<StripRow>& rows,
                        const std::vector<std::string>& names,
                        const std::vector<std::string>& buses, bool by_rows) {
    std::map<std::size_t, std::string> strips;
    std::set<std::size_t> seen;
    std::size_t last_strip = names.size();
    std::size_t last_at = 0;
    std::size_t target = names.size();
    for (const Block& block : slow::blocks(image, channel_record_type)) {
        const auto record = readChannelRecord(image, block);
        if (!record) continue;
        const auto strip = slow_strip(image, rows, names, by_rows, block.at + 10);
        if (strip == names.size()) continue;
        const auto slots =
            slow::blocks(image, send_channel_type, block.at < 9 ? 0 : block.at - 9, image.size());
        const bool is_in_slot = !slots.empty() && slots.front().at + 9 == block.at;
        const bool is_nameless =
            is_in_slot && !slow::first(image, output_name_type, block.end(), slots.front().end());
        if (is_nameless && seen.contains(strip)) continue;
        seen.insert(strip);
        const bool begins = strip != last_strip || block.at - last_at > 2700;
        last_strip = strip;
        last_at = block.at;
        bool is_own = false;
        if (begins) {
            target = strip;
            if (!by_rows) {
                while (target < names.size() && strips.contains(target)) ++target;
            }
            is_own = target < names.size() && !strips.contains(target);
        }
        if (target >= names.size()) continue;
        std::ostringstream text;
        const auto bus = is_own ? std::nullopt : slow_nearest(image, buses, block.at + 10);
        if (is_own) text << record->fader_db << ' ' << record->pan << (record->muted ? " M" : "");
        if (bus) text << " send " << *bus << ' ' << record->fader_db;
        strips[target] += text.str();
    }
    std::string all;
    for (const auto& [strip, text] : strips) all += names[strip] + ": " + text + '\n';
    return all;
}

std::string strips_text(const std::vector<Strip>& strips) {
    std::ostringstream text;
    for (const Strip& strip : strips) {
        if (!strip.present || strip.midi_only) continue;
        text << strip.name << ": " << strip.fader_db << ' ' << strip.pan
             << (strip.muted ? " M" : "");
        for (const auto& send : strip.sends) {
            text << " send " << send.target << ' ' << send.level_db;
        }
        text << '\n';
    }
    return text.str();
}

void expect_lanes_of_a_scan(const BlockIndex& index) {
    const ByteView image = index.image();
    for (const Block& holder : slow::blocks(image, send_channel_type)) {
        LaneGroups slow;
        const auto groups = slow::blocks(image, 0x260c, holder.payload(), holder.end());
        slow.groups.resize(groups.size());
        for (const Block& lane : slow::blocks(image, lane_type, holder.payload(), holder.end())) {
            std::size_t g = 0;
            while (g < groups.size() && !groups[g].span().encloses(lane.at)) ++g;
            (g < groups.size() ? slow.groups[g] : slow.flat).push_back(lane.at);
        }
        const auto read = sortLanes(index, holder.at, holder.end());
        ASSERT_EQ(read.flat, slow.flat);
        ASSERT_EQ(read.groups, slow.groups);
    }
}

/// Everything that is found by walking must be what the scans of every byte find.
void expect_twins_agree(const Bytes& bytes) {
    const ByteView image(bytes);
    const BlockIndex index(image);
    const auto rows = readStripRows(index).rows;
    const auto buses = readBuses(index);
    ASSERT_EQ(buses, slow_buses(image));
    const auto paths = readIoPaths(index);
    ASSERT_EQ(routing_text(readRouting(index, rows, paths)), slow_routing(image, rows, paths));
    std::vector<std::string> names;
    for (const StripRow& row : rows) names.push_back(row.current_name);
    ASSERT_EQ(strips_text(readStrips(index, rows, names, buses)),
              slow_strips(image, rows, names, buses, true));
    std::erase(names, "");
    if (names.empty()) return;
    names.front() += " renamed";
    ASSERT_EQ(strips_text(readStrips(index, {}, names, buses)),
              slow_strips(image, {}, names, buses, false));
    expect_lanes_of_a_scan(index);
    auto strips = readStrips(index, rows, names, buses);
    readStripLanes(index, strips);
}

Bytes session_with_sends() {
    SessionBuilder session;
    session.bus("Verb", 1).bus("Verb 2", 3).io_path({.name = "Mic", .channels = {1}});
    session.track(
        {.name = "Vox",
         .original_name = "Audio 1",
         .channels = 2,
         .fader_db = -3.5,
         .input = "Mic",
         .sends = {{.target = "Verb", .level_db = -6}, {.target = "Verb 2", .pan_right = 100}},
         .volume_lane = {.points = {{0, -30}, {48000, 10}}}});
    session.track({.name = "Keys", .kind = TrackKind::midi, .muted = true});
    session.track({.name = "Room",
                   .kind = TrackKind::aux,
                   .input = "Verb",
                   .input_is_bus = true,
                   .sends = {{.target = "Verb 2", .level_db = -12.5}}});
    session.track({.name = "Main", .kind = TrackKind::master});
    return session.image();
}

TEST(MixerTwins, AgreeOnEveryDamagedSize) {
    const Bytes good = session_with_sends();
    expect_twins_agree(good);
    if (HasFatalFailure()) return;
    const BlockIndex index{ByteView(good)};
    const std::set<std::uint16_t> damaged = {0x1029, 0x1021, 0x260a, 0x260c, 0x260d,
                                             0x260e, 0x261b, 0x261c, 0x2611, 0x2624};
    int damaged_count = 0;
    for (const Block& block : index.blocks().all()) {
        if (!damaged.contains(block.content_type)) continue;
        ++damaged_count;
        const std::uint32_t to_end = static_cast<std::uint32_t>(good.size() - block.at - 7);
        for (const std::uint32_t size : {0U, block.size - 1, to_end}) {
            SCOPED_TRACE(testing::Message() << "block at " << block.at << " size " << size);
            Bytes bad = good;
            for (std::size_t i = 0; i < 4; ++i) {
                bad[block.at + 3 + i] = static_cast<std::uint8_t>(size >> (8 * i));
            }
            expect_twins_agree(bad);
            if (HasFatalFailure()) return;
        }
    }
    EXPECT_GT(damaged_count, 50);
}

TEST(MixerTwins, AgreeOnRealSessions) {
    TANROVE_REAL_SESSION(regions, "RegionTest.ptx");
    TANROVE_REAL_SESSION(tones, "TestPTX.ptx");
    TANROVE_REAL_SESSION(times, "TempoTimeKeySig.ptx");
    for (const auto* image : {&regions, &tones, &times}) expect_twins_agree(*image);
}

}  // namespace
}  // namespace tanrove
