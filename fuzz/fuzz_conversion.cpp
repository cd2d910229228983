// Whole conversions. The input is a decrypted session: it is encrypted into a file, converted
// twice, and the projects are held against each other.
#include <filesystem>

#include "fuzz/promise.hpp"
#include "run/convert_session.hpp"
#include "support/project_reader.hpp"
#include "support/session_cipher.hpp"
#include "support/temp_folder.hpp"

namespace {

using namespace tanrove;

std::string converted(const RunOptions& options) {
    std::filesystem::remove(options.output_path);
    const bool succeeded = convert_session(options, nullptr, nullptr) == 0;
    const bool is_there = std::filesystem::exists(options.output_path);
    promise(succeeded == is_there, "a conversion that succeeds leaves a project, no other does");
    return is_there ? builder::file_text(options.output_path) : std::string();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const builder::TempFolder folder;
    static NullSink silent;
    console_state().console_sink = &silent;
    RunOptions options;
    options.session_path = folder / "a.ptx";
    options.output_path = folder / "a.rpp";
    options.overwrite = true;
    const auto file = builder::encrypted({data, data + size}, builder::Cipher::ptx, 0x35);
    const bool written = builder::write_file_text(options.session_path, {file.begin(), file.end()});
    promise(written, "the session is there");
    const std::string project = converted(options);
    promise(project == converted(options), "two runs write the same");
    promise(project.empty() || builder::read_project(project).closed, "blocks are balanced");
    return 0;
}
