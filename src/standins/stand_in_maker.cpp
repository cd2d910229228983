// A line of the table for each product. The names are those that tell the shape of the settings,
// except Trim's: its settings are in a form of their own.
#include "standins/stand_in_maker.hpp"

#include <algorithm>
#include <iterator>

#include "plugins/avid_stand_ins.hpp"
#include "standins/channel_strip_slots.hpp"
#include "standins/dyn3_slots.hpp"
#include "standins/eq3_slots.hpp"
#include "standins/trim.hpp"

namespace tanrove {

namespace {

constexpr std::string_view trim_name = "Trim";

constexpr StandInProduct products[] = {
    {trim_name, make_trim, false},
    {"EQ3 7-Band", make_eq3},
    {"EQ3 1-Band", make_eq3},
    {"Dyn3 Compressor/Limiter", make_dyn3_compressor},
    {"Dyn3 Expander/Gate", make_dyn3_gate},
    {"Channel Strip", make_channel_strip},
};

}  // namespace

const StandInProduct* StandInMaker::product_of(const PluginInsert& insert,
                                               const StandInTrack& track) const {
    const auto name =
        carries_trim_gain(insert, image_, track) ? trim_name : stand_in_product(insert, image_);
    const auto product = std::ranges::find(products, name, &StandInProduct::name);
    return product == std::end(products) ? nullptr : &*product;
}

}  // namespace tanrove
