// Readers that search and sort their way through the block index, against slow twins that try every
// byte: on built sessions, on those damaged in many ways, and on real ones.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "session/block_types.hpp"
#include "session/buses.hpp"
#include "session/channel_records.hpp"
#include "session/freeze_renders.hpp"
#include "session/output_names.hpp"
#include "session/strips.hpp"
#include "session/video_files.hpp"
#include "slow_scan.hpp"
#include "support/damaged_sessions.hpp"
#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using namespace builder;
using Names = std::vector<std::string>;

const Names render_tracks = {"Gtr", "Gtr-03", "Film", "monoTone", "region_name_region"};

std::string joined(const Names& names) {
    std::string text;
    for (const auto& name : names) text += name + '\n';
    return text;
}

// Buses that the texts tell: names with both legs beside them.

std::string walked_buses(const BlockIndex& index) {
    return joined(tell_buses(index));
}

std::string scanned_buses(const SlowScan& scan) {
    const ByteView image = scan.image;
    std::set<std::string> names;
    for (std::size_t p = 0; p < image.size(); ++p) {
        const auto text = readCountedText(image, p, 40, image.size());
        if (!text || text->size() < 3 || !is_session_text(*text)) continue;
        if (text->find_first_of(".:\\/") == std::string::npos) names.emplace(*text);
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
    Names buses;
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
    return joined(buses);
}

// Strips by their rows, and by their names where one of them was changed.

Names current_names(const BlockIndex& index, bool by_rows) {
    Names names;
    for (const StripRow& row : readStripRows(index).rows) names.push_back(row.current_name);
    if (by_rows) return names;
    std::erase(names, "");
    if (!names.empty()) names.front() += " renamed";
    return names;
}

std::string strips_text(const BlockIndex& index, bool by_rows) {
    const auto rows = by_rows ? readStripRows(index).rows : std::vector<StripRow>();
    std::ostringstream text;
    for (const Strip& strip :
         readStrips(index, rows, current_names(index, by_rows), readBuses(index))) {
        if (!strip.present || strip.midi_only) continue;
        text << strip.name << ": " << strip.fader_db << ' ' << strip.pan << strip.muted;
        for (const auto& send : strip.sends)
            text << " send " << send.target << ' ' << send.level_db;
        text << '\n';
    }
    return text.str();
}

std::optional<std::string> nearest_bus(ByteView image, const Names& buses, std::size_t p) {
    std::optional<std::string> best;
    std::size_t best_distance = 0;
    for (std::size_t at = p < 1500 ? 0 : p - 1500; at <= p + 1500; ++at) {
        const std::size_t distance = at < p ? p - at : at - p;
        for (const auto& bus : buses) {
            if (!image.has(at, bus)) continue;
            if (best && (distance > best_distance ||
                         (distance == best_distance && bus.size() <= best->size()))) {
                continue;
            }
            best = bus;
            best_distance = distance;
        }
    }
    return best;
}

/// The strip of the channel record at `p`, by the rows or by the names in front.
std::size_t strip_at(ByteView image, const std::vector<StripRow>& rows, const Names& names,
                     std::size_t p) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].start < p && p < rows[i].end) return i;
    }
    for (std::size_t at = p; rows.empty() && at-- > 0;) {
        for (std::size_t i = names.size(); i-- > 0;) {
            if (image.u32(at) == names[i].size() && image.has(at + 4, names[i])) return i;
        }
    }
    return names.size();
}

std::string scanned_strips(const SlowScan& scan, bool by_rows) {
    const ByteView image = scan.image;
    const BlockIndex index(image);
    const auto rows = by_rows ? readStripRows(index).rows : std::vector<StripRow>();
    const Names names = current_names(index, by_rows);
    const Names buses = readBuses(index);
    std::map<std::size_t, std::string> strips;
    std::set<std::size_t> seen;
    std::size_t last_strip = names.size();
    std::size_t last_at = 0;
    std::size_t target = names.size();
    for (const Block& block : scan.blocks(block_type::channel_record)) {
        const auto record = read_channel_record(image, block);
        const auto strip = strip_at(image, rows, names, block.at + 10);
        if (!record || (by_rows && rows.empty()) || strip == names.size()) continue;
        const auto slots = scan.blocks(block_type::send_channel, block.at < 9 ? 0 : block.at - 9);
        const bool is_in_slot = !slots.empty() && slots.front().at + 9 == block.at;
        const bool is_nameless =
            is_in_slot && !scan.first(block_type::path_reference, block.end(), slots.front().end());
        if (!seen.insert(strip).second && is_nameless) continue;
        bool is_own = false;
        if (strip != last_strip || block.at - last_at > 2700) {
            target = strip;
            while (!by_rows && target < names.size() && strips.contains(target)) ++target;
            is_own = target < names.size() && !strips.contains(target);
        }
        last_strip = strip;
        last_at = block.at;
        if (target >= names.size()) continue;
        std::ostringstream text;
        const auto bus = is_own ? std::nullopt : nearest_bus(image, buses, block.at + 10);
        if (is_own) text << record->fader_db << ' ' << record->pan << record->muted;
        if (bus) text << " send " << *bus << ' ' << record->fader_db;
        strips[target] += text.str();
    }
    std::string all;
    for (const auto& [strip, text] : strips) all += names[strip] + ": " + text + '\n';
    return all;
}

// Names of movies, and renders by the name of their track.

std::string walked_names(const BlockIndex& index) {
    const auto files = readVideoFiles(index);
    std::ostringstream text;
    for (const auto& file : std::set<std::string>(files.begin(), files.end())) text << file << '\n';
    for (const auto& [track, renders] : readFreezeRenders(index, render_tracks)) {
        text << track << ' ' << renders.size() << '\n';
    }
    return text.str();
}

std::string scanned_names(const SlowScan& scan) {
    std::set<std::string> files;
    const auto lists = scan.blocks(0x103a);
    std::set<std::size_t> of_movies;
    for (const int type : {0x1006, 0x2096}) {
        for (const Block& movies : scan.blocks(static_cast<std::uint16_t>(type))) {
            const auto list = std::ranges::find_if(lists, [&](const Block& b) {
                return b.at >= movies.at + 9 && b.end() <= movies.end();
            });
            if (list != lists.end()) of_movies.insert(list->at);
        }
    }
    for (const Block& list : lists) {
        const bool fits = list.size >= 8 && (list.size <= 4000 || of_movies.contains(list.at));
        for (std::size_t q = list.at + 9; fits && q < list.end(); ++q) {
            const auto name = readCountedText(scan.image, q, 200, list.end());
            if (!name || name->size() < 5 || !is_session_text(*name)) continue;
            if (name->ends_with(".MOV") || name->ends_with(".mxf")) files.emplace(*name);
        }
    }
    std::map<std::string, std::size_t> renders;
    for (const Block& block : scan.blocks(0x2628)) {
        const auto name = readCountedText(scan.image, block.at + 9, 200, block.end());
        if (block.size < 12 || block.size > 4000 || !name) continue;
        const auto regions = scan.blocks(0x2629, block.at < 9 ? block.at : block.at - 9);
        const bool is_regions = !regions.empty() && regions.front().at + 9 == block.at;
        if (!is_regions || regions.front().end() < block.end()) continue;
        for (const auto& track : render_tracks) {
            const auto rest = name->substr(std::min(track.size(), name->size()));
            const bool digits = rest.find_first_not_of("0123456789", 1) == std::string_view::npos;
            const bool is_numbered = rest.size() > 1 && rest[0] == '-' && digits;
            if (name->starts_with(track) && (rest.empty() || is_numbered)) ++renders[track];
        }
    }
    std::ostringstream text;
    for (const auto& file : files) text << file << '\n';
    for (const auto& [track, count] : renders) text << track << ' ' << count << '\n';
    return text.str();
}

struct Twin {
    const char* what;
    std::string (*walk)(const BlockIndex&);
    std::string (*scan)(const SlowScan&);
};

constexpr Twin twins[] = {
    {"buses", walked_buses, scanned_buses},
    {"strips by rows", [](const BlockIndex& index) { return strips_text(index, true); },
     [](const SlowScan& scan) { return scanned_strips(scan, true); }},
    {"strips by names", [](const BlockIndex& index) { return strips_text(index, false); },
     [](const SlowScan& scan) { return scanned_strips(scan, false); }},
    {"names", walked_names, scanned_names},
};

void expect_twins_agree(const Bytes& bytes) {
    if (testing::Test::HasFailure()) return;
    const BlockIndex index{ByteView(bytes)};
    const SlowScan scan{ByteView(bytes)};
    for (const Twin& twin : twins) EXPECT_EQ(twin.walk(index), twin.scan(scan)) << twin.what;
}

TEST(ByteScanTwins, AgreeOnADamagedMixer) {
    const auto session = SessionBuilder()
                             .bus("Verb", 1)
                             .bus("Verb 2", 3)
                             .track({.name = "Vox",
                                     .channels = 2,
                                     .fader_db = -3.5,
                                     .sends = {{.target = "Verb", .level_db = -6},
                                               {.target = "Verb 2", .pan_right = 100}}})
                             .track({.name = "Keys", .kind = TrackKind::midi})
                             .track({.name = "Room", .kind = TrackKind::aux, .input = "Verb"});
    const Bytes good = session.image();
    const std::string strips = strips_text(BlockIndex{ByteView(good)}, true);
    EXPECT_EQ(std::count(strips.begin(), strips.end(), '\n'), 2) << strips;
    for_each_damage(good, 400, expect_twins_agree);
}

TEST(ByteScanTwins, AgreeOnBusesAmongLegsOfOthers) {
    const char* const texts[] = {
        "Verb",   "Verb.L", "Verb.R",   "Big Verb", "Big Verb.L", "Big Verb.R", "Room.Left",
        "a/b",    "a/b.L",  "a/b.R",    "ab",       "ab.L",       "ab.R",       "Room",
        "Bus 1",  "Bus 2",  "Bus 1-2",  "Bus 9-1",  "Bus a-b",    "Bus a",      "Bus b",
        "Room.L", "Room.R", "Verb 2.L", "Verb 2.R", "Verb 2",     "Bus a-b.L",  "Bus a-b.R"};
    const std::string longest(40, 'n');
    std::size_t buses = 0;
    for (unsigned seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        builder::ByteWriter image;
        const std::string name = seed % 2 == 0 ? longest : longest + "n";
        for (const auto* leg : {"", ".L", ".R"}) image.counted(name + leg).zeros(1);
        for (const auto* text : texts) {
            if (random() % 8 != 0) image.counted(text).zeros(random() % 2);
        }
        const Bytes bytes = image.zeros(40).bytes();
        EXPECT_EQ(walked_buses(BlockIndex{ByteView(bytes)}),
                  scanned_buses(SlowScan{ByteView(bytes)}));
        buses += tell_buses(BlockIndex{ByteView(bytes)}).size();
    }
    EXPECT_GT(buses, 500U);
}

TEST(ByteScanTwins, AgreeOnDamagedNames) {
    auto session = SessionBuilder().video_file("Film.MOV").video_file("a.txt").video_file("b.mxf");
    session.freeze_render({.name = "Gtr-03"}).freeze_render({.name = "Gtr-a"});
    session.freeze_render({.name = "Gtr 2"}).freeze_render({.name = "Gtr"});
    for_each_damage(session.image(), 23, expect_twins_agree);
}

TEST(ByteScanTwins, AgreeOnRealSessions) {
    for (const auto* file :
         {"RegionTest.ptx", "TempoTimeKeySig.ptx", "Untitled32.ptx", "TestPTX.ptx"}) {
        SCOPED_TRACE(file);
        TANROVE_REAL_SESSION(image, file);
        expect_twins_agree(image);
    }
}

}  // namespace
}  // namespace tanrove
