// Groups of the session as the words of REAPER's line, and the VCA masters among them.
#include "mix/track_groups.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace tanrove {
namespace {

/// Strips A, B, C, a VCA "V" at place 3 and the master fader "M" at place 4.
struct Scene {
    Scene() {
        for (const char* name : {"A", "B", "C", "V", "M"}) rows.emplace_back().current_name = name;
        rows[3].type = StripRowType::vca;
        rows[4].type = StripRowType::master;
        faders = {{3, static_cast<std::uint32_t>(-65)}};
    }

    /// In both lists, as a live group is.
    void group(const GroupRecord& record) { records.insert(records.end(), 2, record); }

    std::string words(const std::string& track) {
        tallies = {};
        groups = link_groups(records, rows, faders, tallies);
        std::vector<TrackPlan> plans(1);
        plans[0].session_name = track;
        set_group_flags(plans, groups);
        std::string text;
        for (const auto word : plans[0].group_flags) text += std::to_string(word) + " ";
        return text;
    }

    std::vector<GroupRecord> records;
    std::vector<StripRow> rows;
    VcaSlots faders;
    TrackGroups groups;
    GroupTallies tallies;
};

/// "written vca no-master edit unknown with-master-fader unlinked", and the unlinked numbers.
std::string account_of(const GroupTallies& t) {
    std::ostringstream text;
    text << t.written << t.vca_written.size() << t.vca_without_master.size() << t.edit_groups.size()
         << t.of_unknown_kind.size() << t.with_master_fader << t.unlinked_attributes.size();
    for (const auto& group : t.unlinked_attributes) {
        for (const int number : group.numbers) text << ' ' << number;
    }
    return text.str();
}

TEST(LinkGroups, LinksWhatEachKindOfGroupLinks) {
    const auto with = [](std::initializer_list<std::size_t> set) {
        std::array<std::uint8_t, group_attribute_count> attributes = {};
        for (const auto number : set) attributes[number] = 1;
        return attributes;
    };
    struct {
        GroupRecord record;
        std::string words_of_a;
        std::string account;
    } const cases[] = {
        {{.name = "no attributes", .members = {0, 1}, .kind = 1}, "1 1 ", "1000000"},
        {{.name = "all that REAPER links",
          .members = {0},
          .kind = 2,
          .attributes = with({1, 4, 7, 8}),
          .has_attributes = true},
         "0 0 0 0 1 1 1 1 0 0 0 0 1 1 ",
         "1000000"},
        {{.name = "other attributes",
          .members = {0},
          .kind = 1,
          .attributes = with({0, 2, 31}),
          .has_attributes = true},
         "1 1 ",
         "1000001 2 31"},
        {{.name = "Edit group", .members = {0}, .kind = 0}, "", "0001000"},
        {{.name = "unknown kind", .members = {0}, .kind = 3}, "", "0000100"},
        {{.name = "only the master fader", .members = {5, 4, -1}, .kind = 1}, "", "1000010"},
        {{.name = "VCA", .members = {0, 3, 4}, .kind = 0, .vca_master = 3},
         "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 ",
         "0100010"},
        {{.name = "VCA of a track", .members = {0}, .kind = 1, .vca_master = 1}, "", "0010000"},
        {{.name = "VCA past the strips", .members = {0}, .kind = 1, .vca_master = 5},
         "",
         "0010000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.record.name);
        Scene scene;
        scene.group(c.record);
        EXPECT_EQ(scene.words("A"), c.words_of_a);
        EXPECT_EQ(account_of(scene.tallies), c.account);
        EXPECT_EQ(scene.tallies.listed.size(), 1u);
        if (scene.groups.vca_fader_db.empty()) continue;
        EXPECT_EQ(scene.words("V"), "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 ");
        EXPECT_EQ(scene.groups.vca_fader_db.at("V"), -6.5);
    }
}

TEST(LinkGroups, SharesThirtyTwoBitsBetweenMixGroupsAndVcas) {
    Scene scene;
    for (int i = 0; i < 35; ++i) {
        GroupRecord record{.name = std::to_string(i), .members = {0}, .kind = i == 30 ? 0 : 1};
        if (i % 8 == 7) record.vca_master = 3;
        scene.group(record);
    }
    // Bit 30 is group 31's, which is a VCA; Edit group 30 takes none.
    EXPECT_EQ(scene.words("A").substr(0, 22), "3212803967 3212803967 ");
    EXPECT_EQ(scene.groups.bits.at("A").volume, ~scene.groups.bits.at("A").vca_follow);
    EXPECT_EQ(scene.groups.bits.at("V").vca_lead, 1u << 7 | 1u << 15 | 1u << 23 | 1u << 30);
    EXPECT_EQ(scene.tallies.written, 28);
    EXPECT_EQ(scene.tallies.past_last_bit, 2);
}

TEST(LinkGroups, CountsRecordsOnlyWhereThePlacesOfStripsCanBeTrusted) {
    Scene scene;
    scene.group({.name = "Live", .members = {0}, .kind = 1});
    scene.records.push_back({.name = "Gone", .members = {0}, .kind = 1});
    scene.records.push_back({.name = "Live", .members = {1}, .kind = 1});
    scene.group({.name = "<ALL>", .members = {0, 1, 2, 3, 4}});
    EXPECT_EQ(scene.words("A"), "1 1 ");
    EXPECT_EQ(scene.tallies.in_one_list, (std::vector<std::string>{"Gone", "Live"}));
    EXPECT_FALSE(scene.tallies.strips_differ);

    scene.rows.pop_back();
    EXPECT_EQ(scene.words("A"), "");
    EXPECT_EQ(scene.tallies.strips_differ->stated, 5);
    EXPECT_EQ(scene.tallies.strips_differ->found, 4);
    EXPECT_EQ(scene.tallies.listed.size(), 1u);
    EXPECT_EQ(scene.tallies.written, 0);
}

}  // namespace
}  // namespace tanrove
