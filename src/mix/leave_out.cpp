// What is to go gets a mask. A track without one takes the mask off all that it needs, and those
// tracks then do the same: repeated over all tracks until nothing changes, told in that order, but
// walked so that each need is looked at once.
#include "mix/leave_out.hpp"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <queue>
#include <set>
#include <string_view>
#include <utility>

namespace tanrove {

namespace {

using Mask = std::uint8_t;

constexpr Mask hidden_bit = 1;
constexpr Mask inactive_bit = 2;

/// The names in a text whose first character stands around each of them.
TrackNameSet enclosed_names(std::string_view text) {
    TrackNameSet names;
    if (text.empty()) return names;
    const char delimiter = text.front();
    while (!text.empty()) {
        text.remove_prefix(1);
        const std::size_t end = std::min(text.find(delimiter), text.size());
        if (end > 0) names.emplace(text.substr(0, end));
        text.remove_prefix(end);
    }
    return names;
}

std::vector<Mask> masks_of(const std::vector<TrackPlan>& plans, const TrackStrips& strips,
                           const LeaveOutOptions& options) {
    const TrackNameSet hidden_names = enclosed_names(options.hidden_names);
    std::vector<Mask> masks;
    masks.reserve(plans.size());
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const TrackPlan& plan = plans[i];
        Mask& mask = masks.emplace_back(Mask{0});
        const bool is_placed = plan.strip_row || plan.is_bare_strip;
        if (plan.is_alternate || !is_placed) continue;
        const TrackDisplay* display = strips.of(i).display;
        const bool is_hidden =
            (display != nullptr && !display->shown) || hidden_names.contains(plan.name);
        if (is_hidden && options.skip_hidden_tracks) mask |= hidden_bit;
        if (plan.inactive && options.skip_inactive_tracks) mask |= inactive_bit;
    }
    return masks;
}

/// Walks from the tracks without a mask to what they need. A pass goes over the tracks in their
/// order; one that is found behind the track that needs it still has its turn in the same pass.
class NeedWalk {
public:
    NeedWalk(const std::vector<TrackPlan>& plans, const TrackNeeds& needs, std::vector<Mask>& masks,
             std::vector<std::string>& kept)
        : plans_(plans), needs_(needs), masks_(masks), kept_(kept) {
        for (std::size_t i = 0; i < plans.size(); ++i) {
            if (masks[i] == 0) {
                turns_.push({0, i});
            } else {
                masked_[plans[i].session_name].push_back(i);
            }
        }
    }

    void run() {
        while (!turns_.empty() && !masked_.empty()) {
            const Turn turn = turns_.top();
            turns_.pop();
            const auto needed = needs_.find(plans_[turn.plan].session_name);
            if (needed == needs_.end()) continue;
            for (const std::string& name : needed->second) keep(name, turn);
        }
    }

private:
    struct Turn {
        std::size_t pass = 0;
        std::size_t plan = 0;
        auto operator<=>(const Turn&) const = default;
    };

    void keep(const std::string& name, const Turn& turn) {
        const auto found = masked_.find(name);
        if (found == masked_.end()) return;
        for (const std::size_t plan : found->second) {
            masks_[plan] = 0;
            kept_.push_back(plans_[plan].name + " (" + plans_[turn.plan].name + " needs it)");
            turns_.push({plan > turn.plan ? turn.pass : turn.pass + 1, plan});
        }
        masked_.erase(found);
    }

    const std::vector<TrackPlan>& plans_;
    const TrackNeeds& needs_;
    std::vector<Mask>& masks_;
    std::vector<std::string>& kept_;
    std::map<std::string_view, std::vector<std::size_t>> masked_;
    std::priority_queue<Turn, std::vector<Turn>, std::greater<>> turns_;
};

/// Adds the folder of each track that the folder table puts into one.
void add_folders(TrackNeeds& needs, const std::vector<StripTableEntry>& strip_table,
                 const FolderTable& folder_table) {
    std::map<std::uint64_t, const std::string*> name_of;
    for (const StripTableEntry& entry : strip_table) {
        if (entry.identity != 0) name_of.try_emplace(entry.identity, &entry.name);
    }
    for (const auto& [identity, members] : folder_table) {
        const auto folder = name_of.find(identity);
        if (folder == name_of.end()) continue;
        for (const std::uint64_t member : members) {
            const auto track = name_of.find(member);
            if (track != name_of.end()) needs[*track->second].push_back(*folder->second);
        }
    }
}

/// Adds the VCA masters of each track: without its master a track would play at another level. No
/// more than 32 lead groups.
void add_vca_masters(TrackNeeds& needs, const TrackGroups& groups) {
    for (const auto& [master, fader_db] : groups.vca_fader_db) {
        const std::uint32_t led = groups.bits.at(master).vca_lead;
        for (const auto& [member, bits] : groups.bits) {
            if ((bits.vca_follow & led) != 0) needs[member].push_back(master);
        }
    }
}

}  // namespace

TrackNeeds track_needs(const Routes& routes, const std::vector<StripTableEntry>& strip_table,
                       const std::optional<FolderTable>& folder_table, const TrackGroups& groups) {
    TrackNeeds needs;
    auto needed = needed_strips(routes);
    for (std::size_t i = 0; i < routes.strips.size(); ++i) {
        auto& names = needs[routes.strips[i].name];
        std::ranges::move(needed[i], std::back_inserter(names));
    }
    if (folder_table) add_folders(needs, strip_table, *folder_table);
    add_vca_masters(needs, groups);
    return needs;
}

void leave_out_tracks(std::vector<TrackPlan>& plans, const TrackStrips& strips,
                      const LeaveOutOptions& options, const TrackNeeds& needs,
                      LeaveOutTallies& tallies) {
    std::vector<Mask> masks = masks_of(plans, strips, options);
    NeedWalk(plans, needs, masks, tallies.kept).run();

    std::vector<TrackPlan> written;
    written.reserve(plans.size());
    bool last_is_left_out = false;
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const bool goes_with_last = plans[i].is_alternate && plans[i].strip_row;
        last_is_left_out = masks[i] != 0 || (last_is_left_out && goes_with_last);
        if (!last_is_left_out) {
            written.push_back(std::move(plans[i]));
        } else if (masks[i] != 0) {
            auto& list = (masks[i] & inactive_bit) != 0 ? tallies.inactive : tallies.hidden;
            list.push_back(plans[i].name);
        }
    }
    plans = std::move(written);
}

TrackNameSet names_left_out(TrackNameSet before, const std::vector<TrackPlan>& plans) {
    for (const TrackPlan& plan : plans) before.erase(plan.session_name);
    return before;
}

void forget_tracks(const TrackNameSet& names, std::vector<StripTableEntry>& strip_table,
                   std::optional<FolderTable>& folder_table) {
    if (names.empty()) return;
    const bool has_table = folder_table && !folder_table->empty();
    std::set<std::uint64_t> identities;
    std::erase_if(strip_table, [&](const StripTableEntry& entry) {
        const bool is_folder = entry.flag || entry.type == strip_table_folder_type;
        if (!names.contains(entry.name) || (is_folder && !has_table)) return false;
        identities.insert(entry.identity);
        return true;
    });
    if (!has_table) return;
    std::erase_if(*folder_table,
                  [&](const auto& folder) { return identities.contains(folder.first); });
    for (auto& [folder, members] : *folder_table) {
        std::erase_if(members, [&](std::uint64_t member) { return identities.contains(member); });
    }
}

}  // namespace tanrove
