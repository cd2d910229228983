// The readers of the tables beside the clips: gain, warp, pitch, loops, effects, groups.
#include <cmath>

#include "fuzz/reader_promises.hpp"
#include "session/clip_effects.hpp"
#include "session/clip_gains.hpp"
#include "session/group_lists.hpp"
#include "session/pitch_shifts.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    const BlockIndex index(input_view(data, size));
    promise_family(index, ReaderFamily::clip_tables);

    const ClipGains gains = readClipGains(index);
    for (const auto* clips : {&gains.audio, &gains.groups}) {
        for (const auto& [clip, entry] : clips->line_of_clip) {
            promise(gains.entries.at(entry).size() >= 2, "a clip's line is a line");
        }
    }
    const ClipEffects effects = readClipEffects(index);
    for (const auto& [clip, record] : effects.record_of_clip) {
        promise(record < effects.records.size(), "a clip's effects are there");
    }
    for (const auto& [clip, semitones] : readPitchShifts(index)) {
        promise(semitones != 0 && std::abs(semitones) <= 49, "shifts are in range");
    }
    ClipGroups groups = readClipGroups(index);
    number_group_lists(groups, {});
    for (const ClipGroupClip& clip : groups.clips) {
        const bool known = clip.table_index < static_cast<std::int32_t>(groups.lists.size());
        promise(clip.table_index >= -1 && known, "a group's list is there");
    }
    return 0;
}
