// Which of Pro Tools' own plug-ins have a stand-in here, and the road to each.
#pragma once

#include <string_view>

#include "base/byte_view.hpp"
#include "plugins/plugin_insert.hpp"
#include "standins/stand_in.hpp"

namespace tanrove {

class StandInMaker;

/// A product, and how its stand-in is made.
struct StandInProduct {
    std::string_view name;
    StandIn (*make)(StandInMaker&, const PluginInsert&, const StandInTrack&);
    bool can_be_declined = true;  ///< the user can ask for none
};

/// Makes the stand-ins of a run: one for the run, as what is worked out for equal settings is kept.
class StandInMaker {
public:
    explicit StandInMaker(ByteView image) : image_(image) {}

    ByteView image() const { return image_; }
    EqFitter& eq_fitter() { return eq_fitter_; }

    /// The product of an insert that a stand-in can be made of on this track; null for all others.
    const StandInProduct* product_of(const PluginInsert& insert, const StandInTrack& track) const;

private:
    ByteView image_;
    EqFitter eq_fitter_;
};

}  // namespace tanrove
