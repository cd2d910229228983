// The text of the strips that no track of the session shows, whole.
#include "project/extra_tracks.hpp"

#include <gtest/gtest.h>

#include "support/golden_text.hpp"

namespace tanrove {
namespace {

TEST(WriteStripTracks, PrintsStripsToTheLetter) {
    TrackPlan stereo_strip;
    stereo_strip.mixer.gain = 0.5;
    TrackPlan dual_pan_strip;
    dual_pan_strip.pan_mode = 6;
    std::string text;
    {
        TextSink out(text);
        WrittenTallies tallies;
        write_strip_tracks(out, {stereo_strip, dual_pan_strip}, {}, tallies);
        EXPECT_EQ(tallies.tracks, 2);
    }
    builder::expect_golden(TANROVE_TEXTS_FOLDER "/strip_tracks.txt", text);
}

}  // namespace
}  // namespace tanrove
