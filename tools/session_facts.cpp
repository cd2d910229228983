// Prints how many records each reader finds in each of some sessions, side by side.
//   session_facts SESSION...
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "ptformat/ptformat.hpp"
#include "tools/all_readers.hpp"

namespace {

using namespace tanrove;

constexpr std::int64_t target_rate_hz = 48000;
constexpr std::size_t column_bytes = 15;

struct Column {
    std::string head;
    std::vector<Reading> readings;
};

Column column_of(const std::string& path) {
    PTFFormat file;
    const int result = file.load(path, target_rate_hz);
    if (result != PTFFormat::load_ok) {
        std::fprintf(stderr, "%s: load gives %d\n", path.c_str(), result);
    }
    std::vector<AudioFileEntry> files;
    for (const auto& audio : file.audio_files()) files.push_back({audio.name, audio.index});
    const ByteView image(std::span(file.image(), static_cast<std::size_t>(file.image_size())));
    std::string head = std::filesystem::path(path).stem().string().substr(0, column_bytes);
    return {std::move(head), read_everything(BlockIndex(image), files)};
}

void print_table(const std::vector<Column>& columns) {
    constexpr int width = static_cast<int>(column_bytes);
    std::printf("| %-11s | %-32s |", "family", "reader");
    for (const Column& column : columns) std::printf(" %*s |", width, column.head.c_str());
    std::printf("\n|---|---|");
    for (std::size_t i = 0; i < columns.size(); ++i) std::printf("---:|");
    std::printf("\n");
    for (std::size_t row = 0; row < columns.front().readings.size(); ++row) {
        const Reading& first = columns.front().readings[row];
        const auto family = reader_family_names[static_cast<std::size_t>(first.family)];
        std::printf("| %-11s | %-32s |", std::string(family).c_str(),
                    std::string(first.reader).c_str());
        for (const Column& column : columns) {
            std::printf(" %*zu |", width, column.readings[row].records);
        }
        std::printf("\n");
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fputs("session_facts SESSION...\n", stderr);
        return 2;
    }
    std::vector<Column> columns;
    for (int i = 1; i < count; ++i) columns.push_back(column_of(arguments[i]));
    print_table(columns);
    return 0;
}
