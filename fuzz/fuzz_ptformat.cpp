// The container library: any bytes as a file, and the same bytes as the plain text of one.
#include <algorithm>

#include "fuzz/promise.hpp"
#include "ptformat/ptformat.hpp"
#include "support/session_cipher.hpp"

namespace {

using tanrove::promise;
using tanrove::builder::Bytes;
using tanrove::builder::Cipher;

void load(const Bytes& file, std::int64_t target_rate) {
    PTFFormat format;
    const int result = format.load_bytes(file, target_rate);
    promise(result <= 0 && result >= PTFFormat::load_not_parsed, "a load gives one of its codes");
    promise(format.image_size() == (result == -1 ? 0 : file.size()), "the image is the file");
    if (result != PTFFormat::load_ok) return;
    promise(format.session_rate() >= 44100 && format.session_rate() <= 192000, "rates are ours");
    promise(format.audio_files().size() * 13 <= file.size(), "every audio file is in the file");
    const auto in_list = [](const auto& regions) {
        return [&](const PTFFormat::Track& row) {
            return static_cast<std::uint64_t>(row.region_index) < regions.size();
        };
    };
    const auto& rows = format.tracks();
    const auto& midi_rows = format.midi_tracks();
    promise(std::all_of(rows.begin(), rows.end(), in_list(format.regions())), "rows have regions");
    promise(std::all_of(midi_rows.begin(), midi_rows.end(), in_list(format.midi_regions())),
            "MIDI rows have regions");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes input(data, data + size);
    load(input, 48000);
    load(tanrove::builder::encrypted(input, Cipher::ptx, 0x35), 96000);
    load(tanrove::builder::encrypted(input, Cipher::old_sessions, 0x35), 44100);
    return 0;
}
