// All readers over one image: the families side by side, as a conversion calls them.
#include "fuzz/reader_promises.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    const BlockIndex index(input_view(data, size));
    for (std::size_t family = 0; family < reader_family_names.size(); ++family) {
        promise_family(index, static_cast<ReaderFamily>(family));
    }
    return 0;
}
