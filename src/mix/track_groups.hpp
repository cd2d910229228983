// Pro Tools' mix groups and VCA groups as REAPER's track grouping: which groups of the session
// count, which of 32 groups each takes, and what a track then leads and follows.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "mix/track_plan.hpp"
#include "session/groups.hpp"
#include "session/strip_rows.hpp"
#include "session/vca_slots.hpp"

namespace tanrove {

/// A group as the account names it.
struct ListedGroup {
    std::string name;
    std::optional<std::string> vca_master;  ///< of a VCA group; empty where there is no such strip
    std::vector<std::string> members;
};

struct VcaFader {
    std::string master;
    double fader_db = 0;
};

struct UnlinkedAttributes {
    std::string group;
    std::vector<int> numbers;  ///< Pro Tools' own, ascending
};

struct StripCounts {
    int stated = 0;  ///< members of the group of all tracks
    int found = 0;   ///< strip rows
};

struct GroupTallies {
    std::vector<ListedGroup> listed;  ///< the groups that count, whatever became of them
    int written = 0;                  ///< mix groups
    std::vector<VcaFader> vca_written;
    std::vector<std::string> vca_without_master;
    int past_last_bit = 0;
    std::vector<std::string> in_one_list;  ///< records that are not a live group's
    int with_master_fader = 0;             ///< groups that have the master fader as a member
    std::vector<UnlinkedAttributes> unlinked_attributes;
    std::optional<StripCounts> strips_differ;  ///< then no group was written
    std::vector<std::string> edit_groups;
    std::vector<std::string> of_unknown_kind;
};

/// The groups of one track, a bit each, by what they link.
struct GroupBits {
    std::uint32_t volume = 0;
    std::uint32_t mute = 0;
    std::uint32_t solo = 0;
    std::uint32_t automation_mode = 0;
    std::uint32_t vca_lead = 0;
    std::uint32_t vca_follow = 0;
};

struct TrackGroups {
    std::map<std::string, GroupBits> bits;       ///< by the name that Pro Tools shows
    std::map<std::string, double> vca_fader_db;  ///< the VCA masters that lead a group
    /// The members of each VCA master that the session has, whether it leads a group or not.
    std::map<std::string, std::vector<std::string>, std::less<>> members_of_vca;
    /// Number of the first group that each member is in, of those that have one.
    std::map<std::string, std::uint32_t, std::less<>> slot_of_member;
    int without_slot = 0;  ///< groups that have no number
};

/// Links the members of each live group. `records` holds a live group twice, as the session does;
/// members are places in `rows`. Places past the rows are passed over.
TrackGroups link_groups(const std::vector<GroupRecord>& records, const std::vector<StripRow>& rows,
                        const VcaSlots& vca_slots, GroupTallies& tallies);

/// The words of REAPER's line, up to the last that is not 0.
std::vector<std::uint32_t> group_flag_words(const GroupBits& bits);

/// Gives every plan of a grouped track its words.
void set_group_flags(std::vector<TrackPlan>& plans, const TrackGroups& groups);

}  // namespace tanrove
