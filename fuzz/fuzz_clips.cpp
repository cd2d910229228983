// The readers of clips: session lists, playlists, fades, sync points.
#include "fuzz/reader_promises.hpp"
#include "session/fades.hpp"
#include "session/playlists.hpp"

using namespace tanrove;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const BlockIndex index(input_view(data, size));
    promise_family(index, ReaderFamily::clips);

    const auto walks = walk_playlists(index);
    const Playlists playlists = readPlaylists(walks, parse_list_tree(index.image()).blocks());
    const auto details = readPlaylistDetails(index.image(), walks);
    promise(playlists.records.size() == playlists.clip_counts.size(), "a count for each playlist");
    promise(details.size() == playlists.records.size(), "an edit list for each playlist");
    for (std::size_t i = 0; i < details.size(); ++i) {
        promise(details[i].rows.size() <= playlists.clip_counts[i], "a placement for each row");
    }
    const auto fades = readFades(index);
    promise(fades.size() * 2 <= size, "a fade for each type word at most");
    for (const FadeRecord& fade : fades) promise(fade.length >= 0 && fade.pre >= 0, "lengths");
    return 0;
}
