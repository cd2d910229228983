// The folders of the audio files.
#include "session/audio_file_folders.hpp"

#include <gtest/gtest.h>

#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;

ByteWriter& entry(ByteWriter& list, const std::string& name, const std::string& tag) {
    return list.u8(2).u32(0).counted(name).raw(tag);
}

AudioFileFolders read_list(const ByteWriter& entries) {
    const Bytes image = builder::block(0x103a, entries.bytes());
    return readAudioFileFolders(BlockIndex{ByteView(image)});
}

TEST(ReadAudioFileFolders, FilesLieInTheFolderInFrontOfThem) {
    const std::string folder_tag(4, '\0');
    const std::string volume_tag = "\x88\x74\x8f\xd5";
    ByteWriter list;
    list.u32(9);
    entry(list, "lost.wav", "EVAW");
    entry(list, "Drums", folder_tag);
    entry(list, "kick.wav", "EVAW");
    entry(list, "snare.aif", "FFIA");
    entry(list, "Disk", volume_tag);
    entry(list, "hat.mxf", "MXFf");
    entry(list, "Other", folder_tag);
    entry(list, "kick.wav", "WAVE");
    entry(list, "notes.txt", "TEXT");
    EXPECT_EQ(
        read_list(list),
        (AudioFileFolders{{"kick.wav", "Drums"}, {"snare.aif", "Drums"}, {"hat.mxf", "Drums"}}));
}

TEST(ReadAudioFileFolders, AListEndsAtItsFirstBadName) {
    const struct {
        std::string name;
        std::size_t files;
    } cases[] = {
        {std::string(512, 'n'), 2}, {std::string(513, 'n'), 1}, {"", 1}, {"a\x1f", 1}, {"a\x7f", 1},
        {"\xc3\xa4.wav", 2}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ByteWriter list;
        list.u32(4);
        entry(list, "Audio Files", std::string(4, '\0'));
        entry(list, "a.wav", "EVAW");
        entry(list, c.name, "TEXT");
        entry(list, "b.wav", "EVAW");
        EXPECT_EQ(read_list(list).size(), c.files);
    }
}

TEST(ReadAudioFileFolders, ReadsBuiltAndRealSessions) {
    const Bytes built = builder::SessionBuilder().audio_file({"a.wav", 100}).image();
    EXPECT_EQ(readAudioFileFolders(BlockIndex{ByteView(built)}),
              (AudioFileFolders{{"a.wav", "Audio Files"}}));
    TANROVE_REAL_SESSION(image, "TestPTX.ptx");
    EXPECT_EQ(readAudioFileFolders(BlockIndex{ByteView(image)}),
              (AudioFileFolders{{"monoTone.wav", "Desktop"},
                                {"monoTone.1.aif", "Audio Files"},
                                {"stereoTone.L.aif", "Audio Files"},
                                {"stereoTone.R.aif", "Audio Files"}}));
}

}  // namespace
}  // namespace tanrove
