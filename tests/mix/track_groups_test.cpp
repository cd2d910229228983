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
    void group(const GroupRecord& group) { records.insert(records.end(), 2, group); }

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

GroupRecord record(const std::string& name, std::vector<std::int32_t> members, int kind,
                   int vca_master = -1, std::initializer_list<std::size_t> attributes = {}) {
    GroupRecord group{.name = name, .members = std::move(members), .kind = kind};
    group.vca_master = vca_master;
    group.has_attributes = attributes.size() > 0;
    for (const auto number : attributes) group.attributes[number] = 1;
    return group;
}

TEST(LinkGroups, LinksWhatEachKindOfGroupLinks) {
    struct {
        GroupRecord record;
        std::string words_of_a;
        std::string account;
    } const cases[] = {
        {record("no attributes", {0, 1}, 1), "1 1 ", "1000000"},
        {record("all known", {0}, 2, -1, {1, 4, 7, 8}), "0 0 0 0 1 1 1 1 0 0 0 0 1 1 ", "1000000"},
        {record("others", {0}, 1, -1, {0, 2, 31}), "1 1 ", "1000001 2 31"},
        {record("Edit group", {0}, 0), "", "0001000"},
        {record("unknown kind", {0}, 3), "", "0000100"},
        {record("only the master fader", {5, 4, -1}, 1), "", "1000010"},
        {record("VCA", {0, 3, 4}, 0, 3), "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 ", "0100010"},
        {record("VCA of a track", {0}, 1, 1), "", "0010000"},
        {record("VCA past the strips", {0}, 1, 5), "", "0010000"},
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

TEST(LinkGroups, LeavesAVcaAtUnityWhereNoFaderIsStored) {
    const std::pair<std::int32_t, double> cases[] = {
        {125, 12.5}, {126, 0}, {-1450, -145}, {-1451, 0}};
    for (const auto& [stored, fader_db] : cases) {
        Scene scene;
        scene.group(record("VCA", {0}, 1, 3));
        scene.faders[3] = static_cast<std::uint32_t>(stored);
        scene.words("V");
        EXPECT_EQ(scene.groups.vca_fader_db.at("V"), fader_db);
    }
}

TEST(LinkGroups, CountsRecordsOnlyWhereThePlacesOfStripsCanBeTrusted) {
    Scene scene;
    scene.group(record("Live", {0}, 1));
    scene.records.push_back(record("Gone", {0}, 1));
    scene.records.push_back(record("Live", {1}, 1));
    scene.group(record("<ALL>", {0, 1, 2, 3, 4}, 2));
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
