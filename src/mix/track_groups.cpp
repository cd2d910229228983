// Walks the session's groups once, in their order, and hands out REAPER's 32 groups: one bit each,
// shared by mix groups and VCAs. Edit groups link no fader and take none.
#include "mix/track_groups.hpp"

#include <algorithm>
#include <tuple>

#include "session/channel_records.hpp"

namespace tanrove {

namespace {

enum GroupKind : std::int32_t { edit_group = 0, mix_group = 1, edit_and_mix_group = 2 };

// Pro Tools' numbers of what a group links.
constexpr std::size_t volume_attribute = 0;
constexpr std::size_t mute_attribute = 1;
constexpr std::size_t solo_attribute = 7;
constexpr std::size_t automation_mode_attribute = 8;
// The four above, and 4, which links nothing that REAPER could miss.
constexpr std::uint32_t known_attributes = 0x193;

constexpr int group_bits = 32;

/// Live groups that are looked at; Pro Tools has room for 104.
constexpr std::size_t max_live_groups = 1024;

// Faders stand between these; anything else is no fader, and the master stays at unity.
constexpr double tenths = 10;

// Words of REAPER's line. Volume, mute, solo and automation mode have one for leading and, behind
// it, one for following.
constexpr std::size_t flag_words = 22;
constexpr std::size_t volume_word = 0;
constexpr std::size_t mute_word = 4;
constexpr std::size_t solo_word = 6;
constexpr std::size_t automation_mode_word = 12;
constexpr std::size_t vca_lead_word = 20;
constexpr std::size_t vca_follow_word = 21;

/// Orders records by what makes two of them the same group.
struct ByNameAndMembers {
    bool operator()(const GroupRecord* one, const GroupRecord* other) const {
        return std::tie(one->name, one->members) < std::tie(other->name, other->members);
    }
};

/// The groups that stand in both of the session's lists, each once, in their order. A group that
/// was deleted can linger in one of them.
std::vector<const GroupRecord*> live_groups(const std::vector<GroupRecord>& records,
                                            GroupTallies& tallies) {
    std::map<const GroupRecord*, int, ByNameAndMembers> times_listed;
    for (const auto& record : records) {
        if (record.name != all_tracks_group) ++times_listed[&record];
    }
    std::vector<const GroupRecord*> live;
    for (const auto& record : records) {
        const auto found = times_listed.find(&record);
        if (found == times_listed.end() || found->first != &record) continue;
        if (found->second == 1) {
            tallies.in_one_list.push_back(record.name);
        } else if (live.size() < max_live_groups) {
            live.push_back(&record);
        }
    }
    return live;
}

/// How many strips the session says it has; nullopt if it does not say.
std::optional<std::size_t> stated_strip_count(const std::vector<GroupRecord>& records) {
    const auto all = std::ranges::find(records, all_tracks_group, &GroupRecord::name);
    if (all == records.end()) return std::nullopt;
    return all->members.size();
}

class Linking {
public:
    Linking(const std::vector<StripRow>& rows, const VcaSlots& vca_slots, GroupTallies& tallies)
        : rows_(rows), vca_slots_(vca_slots), tallies_(tallies) {}

    void list(const GroupRecord& group) {
        ListedGroup& listed = tallies_.listed.emplace_back();
        listed.name = group.name;
        if (group.vca_master >= 0) {
            const StripRow* master = row_at(group.vca_master);
            listed.vca_master = master == nullptr ? std::string() : shown_name(*master);
        }
        for (const auto position : group.members) {
            if (const auto* row = row_at(position)) listed.members.push_back(shown_name(*row));
        }
    }

    void link(const GroupRecord& group) {
        note_slot(group);
        if (group.vca_master >= 0) {
            link_vca(group);
        } else if (group.kind == edit_group) {
            tallies_.edit_groups.push_back(group.name);
        } else if (group.kind == mix_group || group.kind == edit_and_mix_group) {
            link_faders(group);
        } else {
            tallies_.of_unknown_kind.push_back(group.name);
        }
    }

    TrackGroups take() { return std::move(groups_); }

private:
    void note_slot(const GroupRecord& group) {
        if (group.slot == 0) {
            ++groups_.without_slot;
            return;
        }
        for (const auto position : group.members) {
            const StripRow* row = row_at(position);
            if (row != nullptr) groups_.slot_of_member.try_emplace(shown_name(*row), group.slot);
        }
    }

    const StripRow* row_at(std::int32_t position) const {
        const auto place = static_cast<std::size_t>(position);
        return position >= 0 && place < rows_.size() ? &rows_[place] : nullptr;
    }

    /// The next group of REAPER's, nullopt where all are taken.
    std::optional<std::uint32_t> take_bit() {
        if (bits_taken_ == group_bits) {
            ++tallies_.past_last_bit;
            return std::nullopt;
        }
        return std::uint32_t{1} << bits_taken_++;
    }

    /// What the members that can be linked are in so far. REAPER's master joins no group.
    std::vector<GroupBits*> linkable_members(const GroupRecord& group) {
        std::vector<GroupBits*> members;
        bool has_master_fader = false;
        for (const auto position : group.members) {
            const StripRow* row = row_at(position);
            if (row == nullptr || position == group.vca_master) continue;
            if (row->type == StripRowType::master) {
                has_master_fader = true;
            } else {
                members.push_back(&groups_.bits[shown_name(*row)]);
            }
        }
        tallies_.with_master_fader += has_master_fader ? 1 : 0;
        return members;
    }

    void link_faders(const GroupRecord& group) {
        const auto bit = take_bit();
        if (!bit) return;
        ++tallies_.written;
        const auto linked = [&](std::size_t attribute) {
            const bool is_set = group.has_attributes ? group.attributes[attribute] != 0
                                                     : attribute == volume_attribute;
            return is_set ? *bit : 0;
        };
        for (GroupBits* member : linkable_members(group)) {
            member->volume |= linked(volume_attribute);
            member->mute |= linked(mute_attribute);
            member->solo |= linked(solo_attribute);
            member->automation_mode |= linked(automation_mode_attribute);
        }
        note_unlinked_attributes(group);
    }

    void note_unlinked_attributes(const GroupRecord& group) {
        if (!group.has_attributes) return;
        std::vector<int> numbers;
        for (std::size_t i = 0; i < group.attributes.size(); ++i) {
            const bool is_known = (known_attributes >> i & 1) != 0;
            if (group.attributes[i] != 0 && !is_known) numbers.push_back(static_cast<int>(i));
        }
        if (!numbers.empty()) tallies_.unlinked_attributes.push_back({group.name, numbers});
    }

    void link_vca(const GroupRecord& group) {
        const StripRow* master = row_at(group.vca_master);
        if (master == nullptr || master->type != StripRowType::vca) {
            tallies_.vca_without_master.push_back(group.name);
            return;
        }
        note_members(group, shown_name(*master));
        const auto bit = take_bit();
        if (!bit) return;
        const auto members = linkable_members(group);
        if (members.empty()) return;
        for (GroupBits* member : members) member->vca_follow |= *bit;
        const std::string& name = shown_name(*master);
        groups_.bits[name].vca_lead |= *bit;
        groups_.vca_fader_db[name] = fader_db(static_cast<std::size_t>(group.vca_master));
        tallies_.vca_written.push_back({name, groups_.vca_fader_db[name]});
    }

    void note_members(const GroupRecord& group, const std::string& master) {
        auto& members = groups_.members_of_vca[master];
        for (const auto position : group.members) {
            const StripRow* row = row_at(position);
            const bool is_track = row != nullptr && row->type != StripRowType::master;
            if (is_track && position != group.vca_master) members.push_back(shown_name(*row));
        }
    }

    double fader_db(std::size_t row) const {
        const auto stored = vca_slots_.find(row);
        if (stored == vca_slots_.end()) return 0;
        const auto fader = static_cast<std::int32_t>(stored->second);
        return fader < min_fader_tenths || fader > max_fader_tenths ? 0 : fader / tenths;
    }

    const std::vector<StripRow>& rows_;
    const VcaSlots& vca_slots_;
    GroupTallies& tallies_;
    TrackGroups groups_;
    int bits_taken_ = 0;
};

}  // namespace

TrackGroups link_groups(const std::vector<GroupRecord>& records, const std::vector<StripRow>& rows,
                        const VcaSlots& vca_slots, GroupTallies& tallies) {
    const auto groups = live_groups(records, tallies);
    Linking linking(rows, vca_slots, tallies);
    for (const GroupRecord* group : groups) linking.list(*group);
    const auto stated = stated_strip_count(records);
    if (stated && *stated != rows.size() && !groups.empty()) {
        // Members are places in the list of strips: behind a missing one, each would be another
        // track.
        tallies.strips_differ = {static_cast<int>(*stated), static_cast<int>(rows.size())};
        return {};
    }
    for (const GroupRecord* group : groups) linking.link(*group);
    return linking.take();
}

std::vector<std::uint32_t> group_flag_words(const GroupBits& bits) {
    std::vector<std::uint32_t> words(flag_words);
    words[volume_word] = words[volume_word + 1] = bits.volume;
    words[mute_word] = words[mute_word + 1] = bits.mute;
    words[solo_word] = words[solo_word + 1] = bits.solo;
    words[automation_mode_word] = words[automation_mode_word + 1] = bits.automation_mode;
    words[vca_lead_word] = bits.vca_lead;
    words[vca_follow_word] = bits.vca_follow;
    while (!words.empty() && words.back() == 0) words.pop_back();
    return words;
}

void set_group_flags(std::vector<TrackPlan>& plans, const TrackGroups& groups) {
    for (auto& plan : plans) {
        if (plan.session_name.empty()) continue;
        const auto bits = groups.bits.find(plan.session_name);
        if (bits != groups.bits.end()) plan.group_flags = group_flag_words(bits->second);
    }
}

}  // namespace tanrove
