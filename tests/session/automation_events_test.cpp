// Records of events as lanes and clip gain hold them: whole ones of any length, and those that do
// not close.
#include "session/automation_events.hpp"

#include <gtest/gtest.h>

#include "reading.hpp"
#include "session/automation_lanes.hpp"
#include "session/clip_gains.hpp"
#include "support/records/clip_table_records.hpp"
#include "support/records/event_records.hpp"
#include "support/records/mixer_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

constexpr int many = 70000;
constexpr std::int64_t step = 100000;  // the last ones lie past 32 bits

TEST(EventRecords, ALaneOfSeventyThousandEventsArrivesWholeInSamplesAndInTicks) {
    LaneSpec spec{.initial = -7};
    for (int i = 0; i < many; ++i) spec.points.push_back({(i + 1) * step, i % 100});
    for (const bool in_ticks : {false, true}) {
        const Bytes image = lane_record(spec, in_ticks);
        Lane lane;
        ASSERT_TRUE(readLane(ByteView(image), 0, lane));
        EXPECT_EQ(fields(lane.initial, lane.in_ticks, lane.points.size()),
                  fields(-7, in_ticks, many));
        int wrong = 0;
        for (int i = 0; i < many; ++i) {
            const auto& point = lane.points[static_cast<std::size_t>(i)];
            if (point.position != (i + 1) * step || point.value != i % 100) ++wrong;
        }
        EXPECT_EQ(wrong, 0);
        Lane short_of_room;
        readLane(ByteView(image), 0, short_of_room, many - 1);
        EXPECT_EQ(short_of_room.points.size(), 0U);
    }
}

TEST(EventRecords, AGainLineOfSeventyThousandPointsArrivesWhole) {
    GainEntrySpec line;
    for (std::uint32_t i = 0; i < many; ++i) {
        line.points.emplace_back(5000 + i * 1000, -static_cast<float>(i % 30));
    }
    const auto entries = over(clip_gain_block({line, {{{7, 1}}}}), readClipGains).entries;
    ASSERT_EQ(entries.size(), 2U);
    ASSERT_EQ(entries[0].size(), std::size_t{many});
    for (const std::size_t i : {0U, 1U, 65535U, 65536U, many - 1U}) {
        EXPECT_EQ(fields(entries[0][i].position, entries[0][i].gain_db),
                  fields(line.points[i].first, line.points[i].second));
    }
    EXPECT_EQ(entries[1][0].position, 7);
}

TEST(EventRecords, TheirRunsCloseOrTheRecordIsNone) {
    const Bytes whole = event_record({{900, 1}, {1000, 2}, {1300, 3}}, 2, false);
    const auto read = [](const Bytes& image, std::size_t width, std::size_t end) {
        const ByteView view(image);
        const auto record = read_event_record(view, 0, end, width);
        if (!record) return std::string("none");
        std::string text = record->in_ticks ? "ticks" : "";
        for_each_event(view, *record, [&](double position, std::size_t value_at) {
            text += " " + fields(position, view.u16(value_at));
        });
        return text;
    };
    EXPECT_EQ(read(whole, 2, whole.size()), " 900 1 1000 2 1300 3");
    EXPECT_EQ(read(whole, 4, whole.size()), "none") << "another width";
    EXPECT_EQ(read(whole, 2, whole.size() - 1), "none") << "past the end";
    EXPECT_EQ(read(event_record({}, 2, false), 2, 16), "");
    const struct {
        const char* what;
        std::size_t at;
        std::uint8_t byte;
        const char* text;
    } cases[] = {
        {"a length of less", 4, static_cast<std::uint8_t>(whole[4] - 1), "none"},
        {"more events than stand there", 10, 4, "none"},
        {"fewer events than stand there", 10, 2, "none"},
        {"a run of more", 16, 3, "none"},
        {"a run of less", 16, 1, "none"},
        {"a base past a year", 18 + 5, 2, "none"},
        {"a base of the end of days", 18 + 7, 0x7f, "none"},
        {"a base later on", 18 + 4, 1, " 4294968196 1 4294968296 2 4294968596 3"},
    };
    for (const auto& c : cases) {
        Bytes image = whole;
        image[c.at] = c.byte;
        EXPECT_EQ(read(image, 2, image.size()), c.text) << c.what;
    }
    EXPECT_EQ(read(event_record({{-5, 1}, {0, 2}, {95, 3}}, 2, true), 2, 44),
              "ticks -5 1 0 2 95 3");
}

}  // namespace
}  // namespace tanrove
