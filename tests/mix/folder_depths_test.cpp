// Folders as outlines: a session's tree goes in as "R( a b! ) c", and what REAPER would show is
// read back from the plans in the same form.
#include "mix/folder_depths.hpp"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace tanrove {
namespace {

using Path = std::vector<std::string>;

/// Names that begin with R are Routing folders, with B Basic folders, with Q Routing folders of a
/// table that does not mark them; "!" plays to the main output, "~" plays nothing, "-" has no
/// plan, "+" has an alternate playlist behind it.
struct Scene {
    explicit Scene(const std::string& outline) {
        input.folder_table.emplace();
        std::istringstream words(outline);
        for (std::string word; words >> word;) {
            if (word == ")") {
                open.pop_back();
            } else {
                add_row(word);
            }
        }
    }

    void add_row(std::string word) {
        const bool opens = word.back() == '(';
        if (opens) word.pop_back();
        const char mark = word.back();
        if (std::string_view("!~-+").find(mark) != std::string_view::npos) word.pop_back();
        StripTableEntry& entry = input.strip_table.emplace_back();
        entry.name = word;
        entry.identity = 0x100000000 + input.strip_table.size();
        entry.type = word[0] == 'B' ? strip_table_folder_type : 0;
        entry.flag = word[0] == 'B' || word[0] == 'R';
        entry.width_is_code = word[0] == 'Q';
        if (entry.flag || entry.width_is_code) (*input.folder_table)[entry.identity];
        if (!open.empty()) (*input.folder_table)[identities[open.back()]].push_back(entry.identity);
        identities[word] = entry.identity;
        folders_of[word] = open;
        if (mark != '!') input.without_main_send.insert(word);
        if (mark == '~') input.silent.insert(word);
        if (mark != '-') plans.emplace_back().session_name = word;
        if (mark == '+') plans.emplace_back();
        if (opens) open.push_back(word);
    }

    FolderInput input;
    std::vector<TrackPlan> plans;
    FolderTallies tallies;
    std::map<std::string, std::uint64_t> identities;
    std::map<std::string, Path> folders_of;
    Path open;
};

/// The plans as REAPER draws them. Fails where a folder is left open or more close than are open.
std::string outline_of(const std::vector<TrackPlan>& plans) {
    std::string outline;
    int depth = 0;
    for (const auto& plan : plans) {
        outline += (outline.empty() ? "" : " ") + plan.session_name;
        if (plan.folder.kind == 1) outline += "(";
        for (int i = plan.folder.depth; i < 0; ++i) outline += " )";
        depth += plan.folder.depth;
        EXPECT_EQ(plan.folder.kind, plan.folder.depth > 0 ? 1 : plan.folder.depth < 0 ? 2 : 0);
        EXPECT_LE(plan.folder.depth, 1);
        EXPECT_GE(depth, 0);
    }
    EXPECT_EQ(depth, 0);
    return outline;
}

/// "routing basic empty all-moved not-written nested by-order maybe-nested; names".
std::string account_of(const FolderTallies& t) {
    std::ostringstream text;
    text << t.routing_written << t.basic_written << t.empty << t.all_members_moved_out
         << t.not_written.size() << t.nested << t.by_order << t.maybe_nested;
    for (const auto* list : {&t.folders_moved, &t.tracks_moved, &t.could_not_move}) {
        for (const auto& name : *list) text << "; " << name;
    }
    return text.str();
}

/// "R0( R1( R2( " or, with other text behind each, likewise.
std::string routing_folders(int count, const std::string& behind) {
    std::string names;
    for (int i = 0; i < count; ++i) names += "R" + std::to_string(i) + behind;
    return names;
}

TEST(PlanFolders, FollowsTheFolderTableOrWithoutAUsableOneTheOrderOfTheStrips) {
    enum class Table { whole, missing, empty, two_folders, no_member, no_row, no_folder };
    std::string deep = routing_folders(16, "( ") + "a";
    for (int i = 0; i < 16; ++i) deep += " )";
    struct {
        std::string session;
        std::string project;
        std::string account;
        Table table = Table::whole;
    } const cases[] = {
        {"a b", "a b", "00000000"},
        {"R( a b ) c", "R( a b ) c", "10000000"},
        {"B( a! b! )", "B( a b )", "01000000"},
        {"R( a S+ ) c", "R( a S  ) c", "10000000"},
        {"R( a Q( b c ) ) d", "R( a Q( b c ) ) d", "20000100"},
        {"R( ) B( ) a", "R B a", "00200000"},
        {"R( a b! ) c", "R( a ) b c", "10000000; b out of R"},
        {"R( a b! c ) d", "R( a b c ) d", "10000000; b (in R)"},
        {"R( b! m~ ) c", "R b m c", "00010000; b out of R; m out of R"},
        {"R( a m~ b! n~ ) c", "R( a m ) b n c", "10000000; b out of R; n out of R"},
        {"R( b! m~ a ) c", "R( b m a ) c", "10000000; b (in R)"},
        {"R( a! b! ) c", "R a b c", "00010000; a out of R; b out of R"},
        {"R( a B( b! c ) ) d", "R( a ) B( b c ) d", "11000000; B out of R"},
        {"B1( R( a B2( b ) ) c! )", "B1( R( a ) B2( b ) c )", "12000200; B2 out of R"},
        {"R1( R2( a B( b ) ) )", "R1( R2( a ) ) B( b )", "21000100; B out of R1"},
        {"R1( R2( a ) R3!( b c! ) )", "R1( R2( a ) ) R3( b ) c",
         "30000100; R3 out of R1; c out of R3"},
        {"R( a- ) b", "R b", "00001000"},
        {deep, deep,
         "160000"
         "1500"},
        {"R( " + deep + " )", "R " + routing_folders(15, " ") + "R15( a )", "101600010"},
        {"a R( b c ) d", "a R( b c d )", "10000010", Table::missing},
        {"R( a- ) B-( b )", "R b", "00002011", Table::missing},
        {"R( a ) B( b )", "R( a ) B( b )", "11000011", Table::empty},
        {"R1( a ) R2( b )", "R1( a ) R2( b )", "20000011", Table::two_folders},
        {"R( a B( b ) ) c", "R( a ) B( b c )", "11000011", Table::no_member},
        {"R1( R2( a ) )", "R1 R2( a )", "10100010", Table::no_row},
        {"R( a ) b", "R( a b )", "10000010", Table::no_folder},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.session);
        Scene scene(c.session);
        FolderTable& table = *scene.input.folder_table;
        if (c.table == Table::two_folders) table.begin()->second = table.rbegin()->second;
        if (c.table == Table::no_member) table.begin()->second.push_back(1);
        if (c.table == Table::no_row) table[1];
        if (c.table == Table::no_folder) table[scene.identities["b"]];
        if (c.table == Table::empty) table.clear();
        if (c.table == Table::missing) scene.input.folder_table.reset();
        plan_folders(scene.plans, scene.input, scene.tallies);
        EXPECT_EQ(outline_of(scene.plans), c.project);
        EXPECT_EQ(account_of(scene.tallies), c.account);
    }
}

std::string random_outline(std::uint32_t& seed, int& next, int depth) {
    const auto draw = [&seed](std::uint32_t below) {
        seed = seed * 1664525 + 1013904223;
        return (seed >> 8) % below;
    };
    std::string outline;
    for (auto count = draw(4) + (depth == 0 ? 2 : 0); count-- > 0;) {
        const char* const marks[] = {"", "", "", "!", "", "-", "+", "!"};
        const std::string name = std::to_string(next++) + marks[draw(depth < 5 ? 8 : 4)];
        const auto kind = draw(5);
        if (kind > 1 || depth == 6) {
            outline += "t" + name + " ";
        } else {
            outline += (kind == 0 ? "R" : "B") + name + "( ";
            outline += random_outline(seed, next, depth + 1) + ") ";
        }
    }
    return outline;
}

/// Where a row belongs: a Basic folder, and a track that plays to the main output, goes where the
/// outermost Routing folder around it stands.
Path path_as_it_sounds(const Scene& scene, const std::string& name) {
    const Path& shown = scene.folders_of.at(name);
    Path path;
    if (!shown.empty()) {
        path = path_as_it_sounds(scene, shown.back());
        path.push_back(shown.back());
    }
    if (name[0] != 'B' && scene.input.without_main_send.contains(name)) return path;
    const auto routing = [](const std::string& folder) { return folder[0] == 'R'; };
    path.erase(std::find_if(path.begin(), path.end(), routing), path.end());
    return path;
}

TEST(PlanFolders, PutsEveryTrackOfAnyTreeIntoItsOwnFolders) {
    std::uint32_t seed = 7;
    std::map<std::string, int> ways;
    for (int round = 0; round < 1000; ++round) {
        int next = 0;
        const std::string outline = random_outline(seed, next, 0);
        SCOPED_TRACE(outline);
        Scene scene(outline);
        plan_folders(scene.plans, scene.input, scene.tallies);
        outline_of(scene.plans);
        int folders = 0;
        for (const auto& entry : scene.input.strip_table) folders += entry.flag ? 1 : 0;
        ASSERT_EQ(scene.tallies.folders(), folders);

        const bool by_order = scene.tallies.by_order > 0;
        const bool as_shown = !scene.tallies.could_not_move.empty();
        ++ways[by_order ? "by order" : as_shown ? "as shown" : "as it sounds"];
        Path open;
        for (const auto& plan : scene.plans) {
            const std::string& name = plan.session_name;
            if (by_order) {
                ASSERT_LE(open.size(), 1u);
            } else if (!name.empty()) {
                ASSERT_EQ(open, as_shown ? scene.folders_of[name] : path_as_it_sounds(scene, name));
            }
            if (plan.folder.kind == 1) open.push_back(name);
            for (int i = plan.folder.depth; i < 0; ++i) open.pop_back();
        }
    }
    for (const char* way : {"by order", "as shown", "as it sounds"}) EXPECT_GT(ways[way], 50);
}

}  // namespace
}  // namespace tanrove
