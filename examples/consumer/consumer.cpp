// Lists the audio files of a session and converts it, with nothing on stdout but its own lines.
//   consumer SESSION PROJECT
#include <cstdio>
#include <string>
#include <tanrove/convert_session.hpp>
#include <tanrove/ptformat.hpp>

namespace {

/// Shows how far the conversion is.
class Stages : public tanrovegui::Progress {
public:
    bool stage(int index, int total, const char* text) override {
        std::printf("stage %d of %d: %s\n", index, total, text);
        return true;
    }
};

bool list_audio_files(const std::string& session) {
    PTFFormat file;
    if (file.load(session, 0) != PTFFormat::load_ok) return false;
    std::printf("%d audio file(s) at %d Hz\n", static_cast<int>(file.audio_files().size()),
                static_cast<int>(file.session_rate()));
    for (const PTFFormat::AudioFile& audio : file.audio_files()) {
        std::printf("  %s\n", audio.name.c_str());
    }
    return true;
}

/// The account goes into the result; the console stays ours.
bool convert(const std::string& session, const std::string& project) {
    tanrove::NullSink silent;
    tanrove::console_state().console_sink = &silent;
    tanrove::RunOptions options;
    options.session_path = session;
    options.output_path = project;
    options.overwrite = true;
    tanrove::ConversionResult result;
    Stages stages;
    const bool converted = tanrove::convert_session(options, &result, &stages) == 0;
    tanrove::console_state().console_sink = nullptr;
    if (!converted) std::fputs(result.console_text.c_str(), stderr);
    return converted;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::puts("usage: consumer SESSION PROJECT");
        return 2;
    }
    if (!list_audio_files(argv[1]) || !convert(argv[1], argv[2])) return 1;
    std::printf("wrote %s\n", argv[2]);
    return 0;
}
