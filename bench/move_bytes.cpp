// The floor under a conversion: reads and deciphers a session, looks at every byte, and writes as
// many bytes as its project has.
//   move_bytes SESSION PROJECT BYTES
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>

#include "ptformat/ptformat.hpp"
#include "session/session_image.hpp"

int main(int argument_count, char** arguments) {
    if (argument_count != 4) return 1;
    PTFFormat file;
    if (file.load(arguments[1], tanrove::default_session_rate_hz) != 0) return 1;
    const auto image =
        tanrove::ByteView({file.image(), static_cast<std::size_t>(file.image_size())});
    std::uint8_t sum = 0;
    for (std::size_t at = 0; at < image.size(); ++at) sum ^= image.u8(at);
    std::ofstream project(arguments[2], std::ios::binary);
    project.put(static_cast<char>(sum));
    const auto* bytes = reinterpret_cast<const char*>(file.image());
    for (std::size_t left = std::strtoull(arguments[3], nullptr, 10) - 1; left > 0;) {
        const std::size_t count = std::min(left, image.size());
        project.write(bytes, static_cast<std::streamsize>(count));
        left -= count;
    }
    project.close();
    return project ? 0 : 1;
}
