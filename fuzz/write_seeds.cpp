// Writes the seeds of all fuzzing targets into a folder: small decrypted sessions of every kind
// that the session builder makes, and a text of every kind that is read.
//   write_seeds FOLDER
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>

#include "support/fx_chain_text.hpp"
#include "support/records/old_session_records.hpp"
#include "support/records/plugin_records.hpp"
#include "support/rich_session.hpp"

namespace {

using namespace tanrove::builder;

struct Seed {
    std::string name;
    Bytes image;
};

OldSessionSpec old_song(bool big_endian, bool newer_playlists) {
    OldSessionSpec song;
    song.big_endian = big_endian;
    song.newer_playlists = newer_playlists;
    song.files = {{"a.aif", 96000}, {"b.aif", 70000, 44100}};
    song.regions = {{"a", 0, 96000, 0}, {"b-01", 300, 65000, 1}};
    song.tracks = {{"Drums", {0, 1}, {{0, 0}, {0, 99999}}}, {"Bass", {2}, {{1, 24000}}}};
    song.midi = {{"keys", "Piano", 3, 1920000}};
    return song;
}

/// A section of a state: its tag, its length, contents behind `head_bytes`.
ByteWriter& add_section(ByteWriter& state, std::string_view tag, std::size_t contents,
                        std::size_t head_bytes) {
    state.raw(tag).zeros(4).u32(contents).zeros(head_bytes - 12);
    return state.raw(Bytes(contents, 'x'));
}

/// What the target of settings makes of its first twelve bytes: ident, name, form, least bytes,
/// head of the row, code, container, places of block, state and chunk, chunks, values.
std::vector<Seed> settings_seeds() {
    ByteWriter session_chain;
    session_chain.raw(std::string_view("\2\0\0\0\0\1\3\0\0\0\0\0..6SMC", 18)).zeros(32);
    for (const char* tag : {"DHSH", "LGSH", "APSH"}) add_section(session_chain, tag, 5, 24);

    ByteWriter presets, presets_elsewhere;
    presets.raw(std::string_view("\2\0\0\0\x13\0\4\0\0\0\0\0", 12)).zeros(32);
    presets_elsewhere = presets;
    add_section(add_section(presets, "RHCP", 68, 16), "DPCP", 99, 16);
    for (const char* tag : {"RHCP", "DPCP", "VGCP"}) add_section(presets_elsewhere, tag, 4, 16);

    const std::string code = "MakePrd1";
    ByteWriter chunks;
    chunks.raw(plugin_chunk(code, "elck", "",
                            ByteWriter().zeros(4).raw(real_control("A", 0.5, 4)).bytes()));
    for (const char* tag : {"one.", "two."}) {
        ByteWriter named;
        named.raw(std::string_view("HEAD\0\0\0\2\0A", 10)).raw(Bytes(40, 3));
        chunks.raw(plugin_chunk(code, tag, "", named.bytes()));
    }
    ByteWriter chain;
    chain.raw(std::string_view("\2\0\0\0\0\0\5\0\1\1\2\0", 12));
    chain.raw(plugin_settings_block({.code = code, .state = chunks.bytes()}));
    return {{"settings_session_chain", session_chain.bytes()},
            {"settings_presets", presets.bytes()},
            {"settings_presets_elsewhere", presets_elsewhere.bytes()},
            {"settings_chunks", chain.bytes()}};
}

std::vector<Seed> seeds() {
    std::vector<Seed> all = {
        {"empty", SessionBuilder().image()},
        {"two_files", SessionBuilder().audio_file({"a.wav", 5}).audio_file({"b.wav", 9}).image()},
        {"no_version", SessionBuilder().without_product().rate(96000).image()},
        {"unknown_container", SessionBuilder().container_version(13).image()},
        {"fixed_settings", SessionBuilder().top_level(settings_block_fixed_offsets({})).image()},
        {"old", old_session_image(old_song(false, false))},
        {"old_newer_playlists", old_session_image(old_song(false, true))},
        {"old_big_endian", old_session_image(old_song(true, false))},
        {"old_big_endian_newer_playlists", old_session_image(old_song(true, true))},
    };
    for (const auto& family : family_sessions()) {
        all.push_back({family.name, family.session.image()});
    }
    all.push_back({"rich", rich_session({}).image()});
    for (Seed& seed : settings_seeds()) all.push_back(std::move(seed));
    const struct {
        const char* name;
        std::string text;
    } texts[] = {
        {"vst_list",
         "[vstcache]\na.dll=00,1349674033,A (Me)\nb.vst3=00,7{5653544D6462316D6F646F2062617373,B "
         "(Me) (mono)!!!VSTi\nsh.vst3<12=00,12{ABCDEF019182FAEB4D61676552616E6A,C (W)\n"
         "d.vst3=0,9,D, E (Me, Inc.)\nMakePrd1 Kontakt NiInNi$D iZtpZab0 KsWVWavesubC\n"},
        {"clap_list", "[one.clap]\n_=00\ncom.one=1|One (Me)\n[two.clap]\ncom.two=0|Two (Me)\n"},
        {"learned", "# mine\nMakePrd1 | VST3: A (B) | a.vst3 | 1{2} | 4 | 2 | 65535 | Default\n"},
        {"chain", fx_chain_text({1, 0xfeed5eee, 1, 1, 0, 1, 1, 0, 9, 1, 77}, "FabF")},
        {"parameters", "plugin\tbuild\tx\tn\tname\nVST: A (B)\t1<2>\t\t0\tGain\n"},
    };
    for (const auto& seed : texts) {
        all.push_back({seed.name, Bytes(seed.text.begin(), seed.text.end())});
    }
    return all;
}

bool write(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    out.close();
    return out.good();
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("write_seeds FOLDER\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = arguments[1];
    for (const Seed& seed : seeds()) {
        if (write(folder / (seed.name + ".img"), seed.image)) continue;
        std::fprintf(stderr, "cannot write %s\n", seed.name.c_str());
        return 1;
    }
    return 0;
}
