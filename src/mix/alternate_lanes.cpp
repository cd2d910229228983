// Alternate playlists become lanes of the track they belong to.
#include "mix/alternate_lanes.hpp"

#include <map>
#include <string>
#include <utility>

namespace tanrove {

namespace {

/// Numbers of plans, ascending, by the name of the track they hang on.
using PlansByParent = std::map<std::string, std::vector<std::size_t>>;

void add_lane(TrackPlan& parent, TrackPlan& alternate) {
    parent.lanes.push_back(
        {.name = std::move(alternate.original_name), .clips = std::move(alternate.clips)});
}

class Attaching {
public:
    explicit Attaching(std::vector<TrackPlan> plans)
        : plans_(std::move(plans)), is_used_(plans_.size()) {
        for (std::size_t i = 0; i < plans_.size(); ++i) {
            const TrackPlan& plan = plans_[i];
            if (!plan.lane_parent.empty()) lanes_of_[plan.lane_parent].push_back(i);
            if (plan.is_lane_child) children_of_[plan.lane_child_parent].push_back(i);
        }
    }

    std::vector<TrackPlan> attached() {
        for (std::size_t i = 0; i < plans_.size(); ++i) {
            if (plans_[i].lane_parent.empty() && !is_used_[i]) add_parent(i);
        }
        for (std::size_t i = 0; i < plans_.size(); ++i) {
            if (!is_used_[i]) take(i);
        }
        return std::move(result_);
    }

private:
    void take(std::size_t plan) {
        is_used_[plan] = true;
        result_.push_back(std::move(plans_[plan]));
    }

    void add_parent(std::size_t number) {
        TrackPlan& parent = plans_[number];
        const std::string session_name = parent.session_name;
        if (!session_name.empty()) take_lanes(parent, session_name);
        take(number);
        if (!session_name.empty()) take_children(session_name);
    }

    void take_lanes(TrackPlan& parent, const std::string& session_name) {
        const auto lanes = lanes_of_.find(session_name);
        if (lanes == lanes_of_.end()) return;
        for (const auto alternate : lanes->second) {
            is_used_[alternate] = true;
            add_lane(parent, plans_[alternate]);
        }
        lanes_of_.erase(lanes);
    }

    void take_children(const std::string& session_name) {
        const auto children = children_of_.find(session_name);
        if (children == children_of_.end()) return;
        for (const auto child : children->second) {
            if (!is_used_[child]) take(child);
        }
        children_of_.erase(children);
    }

    std::vector<TrackPlan> plans_;
    std::vector<bool> is_used_;
    PlansByParent lanes_of_;
    PlansByParent children_of_;
    std::vector<TrackPlan> result_;
};

}  // namespace

std::vector<TrackPlan> attach_alternates(std::vector<TrackPlan> plans) {
    return Attaching(std::move(plans)).attached();
}

void fold_into_empty_parents(std::vector<TrackPlan>& placed, std::vector<TrackPlan>& unplaced) {
    std::map<std::string, std::size_t> first_of_name;
    for (std::size_t i = 0; i < placed.size(); ++i) {
        if (!placed[i].session_name.empty()) first_of_name.try_emplace(placed[i].session_name, i);
    }
    std::vector<TrackPlan> left;
    for (auto& alternate : unplaced) {
        const auto parent = alternate.lane_parent.empty()
                                ? first_of_name.end()
                                : first_of_name.find(alternate.lane_parent);
        if (parent == first_of_name.end()) {
            left.push_back(std::move(alternate));
            continue;
        }
        add_lane(placed[parent->second], alternate);
    }
    unplaced = std::move(left);
}

}  // namespace tanrove
