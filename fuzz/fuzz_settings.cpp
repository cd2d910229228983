// The translation of plug-in settings: bytes as a state of every container, under rows of every
// build. The first bytes choose the case, the rest is the state and what stands in front of it.
#include <array>
#include <string>
#include <vector>

#include "fuzz/promise.hpp"
#include "plugins/elck_chunks.hpp"
#include "plugins/translate_settings.hpp"

namespace tanrove {
namespace {

constexpr std::size_t choice_bytes = 12;
constexpr std::array codes = {"MakePrd1", "Lin66SAX", "FabFFC2p", "AntrAPan",
                              "AntrVMax", "JptrATLv", "xlnAxaAK", "X"};
constexpr std::array idents = {"", "12<00>", "12{ABCDEF019182FAEB4D616B6550726431}",
                               "12{F2AEE70D00DE4F4E}", "com.maker.product"};

PluginTableRow chosen_row(ByteView choice) {
    PluginTableRow row;
    row.ident = idents[choice.u8(0) % idents.size()];
    row.fxName = choice.u8(1) % 2 != 0 ? "CLAP: Product" : "VST3: Product";
    row.fabName = choice.u8(1) % 4 > 1 ? default_program_name : "";
    row.stateForm = choice.u8(2) % 2;
    row.minChunk = choice.u8(3);
    row.headerTemplate = std::string(choice.u8(4) % 20, 'h');
    row.trailerFlag = choice.u8(4) % 2;
    return row;
}

/// An insert with places inside the image, as its reader promises them.
PluginInsert chosen_insert(ByteView choice, ByteView image) {
    constexpr std::uint32_t container_kinds = 14;
    constexpr std::size_t value_bytes = 4;
    const std::size_t size = image.size();
    PluginInsert insert;
    insert.code = codes[choice.u8(5) % codes.size()];
    insert.containerKind = static_cast<ContainerKind>(choice.u8(6) % container_kinds);
    insert.chunkLimit = size;
    insert.blockStart = choice.u8(7) % (size + 1);
    insert.chunkOffset = choice.u8(8) % (size + 1);
    insert.chunkSize = static_cast<std::uint32_t>(size - insert.chunkOffset);
    insert.elckOffset = choice.u8(9) % (size + 1);
    insert.elckSize = static_cast<std::uint32_t>(size - insert.elckOffset);
    insert.elckChunkCount = choice.u8(10) % 3;
    insert.copies = 1 + choice.u8(10) % 2;
    if (choice.u8(10) % 5 == 4) insert.how = elck_how;
    if (choice.u8(9) % 3 == 2) insert.elckHow = elck_how;
    insert.pluginSubComp = "ABCD";
    for (std::size_t i = 0; i < choice.u8(11); ++i) {
        insert.controlValues.push_back(image.f32(i * value_bytes));
    }
    return insert;
}

}  // namespace
}  // namespace tanrove

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    if (size <= choice_bytes) return 0;
    const ByteView choice = input_view(data, choice_bytes);
    // A copy of its own: a read behind the limit is one behind the memory.
    const std::vector<std::uint8_t> image(data + choice_bytes, data + size);
    const PluginInsert insert = chosen_insert(choice, ByteView(image));
    const TranslatedSettings settings =
        translate_settings(insert, chosen_row(choice), ByteView(image), {.track_has_midi = true});
    constexpr std::size_t most_bytes_around = 4096;
    promise(settings.state.size() <= 4 * size + most_bytes_around, "frames are small");
    return 0;
}
