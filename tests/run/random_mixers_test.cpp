// Who has which fader, pan, mute and lane: random mixers against a model that knows no session. The
// names lie wherever a session has names, so that each of them could be taken for another's.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <random>
#include <sstream>

#include "run/convert_session.hpp"
#include "session/block_index.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"
#include "support/told_counts.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::SessionBuilder;
using builder::TrackKind;
using builder::TrackSpec;
using Mixer = std::vector<TrackSpec>;

/// What a track of the project does, in thousandths: gain, pan, both knobs; muted; its lane's end;
/// and how many MIDI clips it has.
struct Told {
    std::string name;
    int gain = 1000;
    int pan = 0;
    int left = -1000;
    int right = 1000;
    bool muted = false;
    int lane = -1;
    std::size_t clips = 0;

    auto operator<=>(const Told&) const = default;
};

void PrintTo(const Told& t, std::ostream* out) {
    *out << t.name << " " << t.gain << " " << t.pan << " " << t.left << " " << t.right << " "
         << t.muted << " " << t.lane << " " << t.clips;
}

int thousandths(double value) {
    return static_cast<int>(std::lround(value * 1000));
}

int gain_of(double db) {
    return thousandths(std::pow(10, db / 20));
}

class RandomMixer {
public:
    explicit RandomMixer(unsigned seed) : random_(seed) {}

    Mixer make() {
        std::vector<std::string> names = {"Kick",    "Verb",     "Vox",   "Bus 1-2", "Audio 1",
                                          "Audio 2", "Out 1-2",  "Aux 1", "Master",  "Pro Tools",
                                          "Music",   "Sessions", "Print", "a/b"};
        std::shuffle(names.begin(), names.end(), random_);
        Mixer tracks(1 + below(7));
        for (std::size_t i = 0; i < tracks.size(); ++i) {
            TrackSpec& track = tracks[i];
            track.name = names[i];
            if (below(2) != 0) track.original_name = names[below(names.size())];
            track.kind = kinds[below(std::size(kinds))];
            // Each fader and lane is nobody else's.
            track.fader_db = -static_cast<double>(10 * i + below(10)) / 10;
            track.muted = below(3) == 0;
            if (track.kind != TrackKind::midi && below(3) == 0) {
                const int end = -200 - static_cast<int>(10 * i + below(10));
                track.volume_lane.points = {{4800, end + 100}, {48000, end}};
            }
            describe(track);
        }
        return tracks;
    }

    std::size_t below(std::size_t count) { return random_() % count; }

private:
    void describe(TrackSpec& track) {
        const auto knob = [&] { return static_cast<int>(below(201)) - 100; };
        if (track.kind != TrackKind::midi) track.pan = knob();
        if (track.kind != TrackKind::midi && track.kind != TrackKind::vca && below(2) == 0) {
            track.channels = 2;
            track.pan_right = knob();
        }
        if (track.kind == TrackKind::aux) {
            track.input = track.name;
            track.input_is_bus = true;
        }
        track.tick_based = below(2) != 0;
        track.folder_row = track.kind == TrackKind::basic_folder && below(2) != 0;
        if (track.kind == TrackKind::audio && below(2) == 0) {
            track.clips = {{.region = track.name, .length = 48000, .muted = below(2) == 0},
                           {.region = track.name + "2", .position = 960000, .length = 48000}};
            track.sends = {{.target = "Verb", .level_db = -30}};
        }
        if (track.kind == TrackKind::midi || track.kind == TrackKind::instrument) {
            track.midi_clips = {{.region = track.name,
                                 .position = 960000,
                                 .length = 960000,
                                 .stream = {.notes = {{0, 1000, 60, 80}}},
                                 .muted = below(2) == 0}};
        }
        if (track.kind == TrackKind::vca) track.mixer = {};
    }

    static constexpr TrackKind kinds[] = {
        TrackKind::audio,        TrackKind::audio,         TrackKind::audio, TrackKind::aux,
        TrackKind::master,       TrackKind::vca,           TrackKind::midi,  TrackKind::instrument,
        TrackKind::basic_folder, TrackKind::routing_folder};
    std::mt19937 random_;
};

SessionBuilder session_of(const Mixer& mixer) {
    SessionBuilder session;
    session.audio_file({"Take.wav", 480000, 0});
    std::uint16_t channel = 3;
    for (const TrackSpec& track : mixer) {
        if (track.kind == TrackKind::aux) session.bus(track.name, channel += 2);
        session.track(track);
    }
    return session;
}

/// What the model expects: each track has its own.
std::vector<Told> expected(const Mixer& mixer) {
    std::vector<Told> tracks;
    for (const TrackSpec& track : mixer) {
        if (track.kind == TrackKind::master || track.kind == TrackKind::vca) continue;
        Told told{.name = track.name, .clips = track.midi_clips.size()};
        if (track.kind != TrackKind::basic_folder) {
            told.muted = track.muted;
            if (!track.volume_lane.points.empty()) {
                told.lane = gain_of(track.volume_lane.points.back().value / 10.0);
            } else if (track.kind != TrackKind::midi) {
                told.gain = gain_of(track.fader_db);
            }
            const int left = track.pan.value_or(0);
            told.pan = 10 * left;
            if (track.channels == 2) {
                const int right = track.pan_right.value_or(0);
                told.pan = 5 * (left + right);
                told.left = 10 * left;
                told.right = 10 * right;
            }
        }
        tracks.push_back(told);
    }
    return tracks;
}

/// The master fader of the model, in thousandths.
int expected_master(const Mixer& mixer) {
    for (const TrackSpec& track : mixer) {
        if (track.kind != TrackKind::master) continue;
        return track.volume_lane.points.empty() ? gain_of(track.fader_db) : 1000;
    }
    return 1000;
}

std::vector<Told> tracks_of(const std::string& project, int& master) {
    std::vector<Told> tracks;
    std::istringstream lines(project);
    bool in_volume = false;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string word;
        double gain = 0;
        double pan = 0;
        double law = 0;
        double left = 0;
        double right = 0;
        words >> word;
        if (word == "<VOLENV2") in_volume = !tracks.empty();
        if (word == ">") in_volume = false;
        if (word == "<TRACK") tracks.emplace_back();
        if (word == "MASTER_VOLUME" && words >> gain) master = thousandths(gain);
        if (tracks.empty()) continue;
        Told& track = tracks.back();
        if (line.find("<SOURCE MIDI") != std::string::npos) ++track.clips;
        if (word == "NAME" && track.name.empty()) {
            track.name = line.substr(line.find('"') + 1);
            track.name.pop_back();
        } else if (word == "VOLPAN" && words >> gain >> pan >> law >> left >> right) {
            track.gain = thousandths(gain);
            track.pan = thousandths(pan);
            track.left = thousandths(left);
            track.right = thousandths(right);
        } else if (word == "MUTESOLO") {
            words >> track.muted;
        } else if (word == "PT" && in_volume && words >> law >> gain) {
            track.lane = thousandths(gain);
        }
    }
    return tracks;
}

void expect_model(const std::string& project, const Mixer& mixer, unsigned seed) {
    int master = 0;
    EXPECT_EQ(tracks_of(project, master), expected(mixer)) << seed;
    EXPECT_EQ(master, expected_master(mixer)) << seed;
}

/// The session, one strip of which has lost its entry in the strip table.
Bytes without_entry(Bytes image, RandomMixer& random) {
    const BlockIndex index{ByteView(image)};
    const auto entries = index.of_type(0x251a).all();
    const std::size_t strips = entries.size() / 2;  // the table is stored twice
    const std::size_t lost = random.below(strips);
    for (const auto& entry : {entries[lost], entries[lost + strips]}) ++image[entry.at + 7];
    return image;
}

/// Whichever strip lost its entry keeps all but its name, and nobody takes its place.
void expect_others(const std::string& project, const Mixer& mixer, unsigned seed) {
    const auto has_row = [](const TrackSpec& track) { return track.has_row(); };
    if (std::ranges::count_if(mixer, has_row) < 2) return;
    int master = 0;
    auto told = tracks_of(project, master);
    int renamed = 0;
    for (Told want : expected(mixer)) {
        const bool has_strip = std::ranges::any_of(mixer, [&](const TrackSpec& track) {
            return track.has_row() && track.name == want.name;
        });
        if (!has_strip || std::erase(told, want) == 1) continue;
        ++renamed;
        const auto same = std::ranges::find_if(told, [&](const Told& track) {
            want.name = track.name;
            return track == want;
        });
        EXPECT_TRUE(same != told.end()) << seed;
    }
    EXPECT_LE(renamed, 1) << seed;
}

class RandomMixers : public testing::Test {
protected:
    RandomMixers() {
        console_state().console_sink = &silent_;
        folder_.enter();
    }
    ~RandomMixers() override { console_state().console_sink = nullptr; }

    static std::string project_of(const SessionBuilder& session) {
        return project_of(session.image());
    }
    static std::string project_of(const Bytes& image) {
        const Bytes file = builder::encrypted(image, builder::Cipher::ptx, 1);
        std::ofstream("Song.ptx", std::ios::binary)
            .write(reinterpret_cast<const char*>(file.data()), std::ssize(file));
        RunOptions options;
        options.session_path = "Song.ptx";
        options.overwrite = true;
        ConversionResult result;
        if (convert_session(options, &result, nullptr) != 0) return "";
        const std::string project = builder::file_text("Song.rpp");
        builder::expect_told_counts(project, result.console_text, result.report_text,
                                    console_state().usage_body);
        return project;
    }

private:
    NullSink silent_;
    builder::TempFolder folder_;
};

TEST_F(RandomMixers, EachTrackHasItsOwnWhateverElseIsNamedLikeIt) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        RandomMixer random(seed);
        Mixer mixer = random.make();
        const std::string project = project_of(session_of(mixer));
        expect_model(project, mixer, seed);
        const std::string folder = mixer[random.below(mixer.size())].name;
        SessionBuilder elsewhere = session_of(mixer);
        EXPECT_EQ(project_of(elsewhere.path({"Disk", folder, "Take"})), project) << seed;
        expect_others(project_of(without_entry(session_of(mixer).image(), random)), mixer, seed);
        for (TrackSpec& track : mixer) {
            track.folder_row = track.kind == TrackKind::basic_folder;
            track.colour_mark = false;
        }
        SessionBuilder older = session_of(mixer);
        older.strip_table_form(builder::StripTableForm::before_12_8);
        expect_model(project_of(older), mixer, seed);
        if (HasFailure()) return;
    }
}

/// The tracks' blocks, without their identities.
std::vector<std::string> blocks_of_tracks(const std::string& project) {
    std::vector<std::string> blocks;
    std::istringstream lines(project);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  <TRACK")) blocks.emplace_back();
        if (!blocks.empty() && line.find('{') == std::string::npos) blocks.back() += line + "\n";
    }
    return blocks;
}

std::string positions_in(const std::string& block) {
    std::string positions;
    std::istringstream lines(block);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("      POSITION")) positions += line;
    }
    return positions;
}

/// The ways in which a playlist cannot be read: its name, its rows' number, its kind.
std::vector<Bytes> with_broken_playlist(const Bytes& image, std::size_t playlist) {
    constexpr std::size_t name_at = 13;
    const ByteView view(image);
    const std::size_t count_at = playlist + name_at + view.u32(playlist + name_at - 4);
    std::size_t kind_at = count_at + 4;
    while (view.u8(kind_at) == 'Z') kind_at += 7 + view.u32(kind_at + 3);
    std::vector<Bytes> broken(4, image);
    broken[0][playlist + name_at - 2] = 1;
    broken[1][count_at + 2] = 1;
    broken[2][kind_at] = 0;
    broken[3][kind_at] = 3;
    return broken;
}

TEST_F(RandomMixers, APlaylistThatCannotBeReadCostsItsTrackAlone) {
    constexpr std::uint16_t playlist_types[] = {0x1052, 0x1057};
    for (unsigned seed = 0; seed < 60 && !HasFailure(); ++seed) {
        RandomMixer random(seed);
        Bytes image = session_of(random.make()).image();
        const auto playlists = BlockIndex(ByteView(image)).of_types(playlist_types);
        // Those that have their tracks' names find them by these, all others by their place.
        for (const Block& playlist : playlists) image[playlist.at + 13] ^= seed % 2;
        const auto whole = blocks_of_tracks(project_of(image));
        for (const Block& playlist : playlists) {
            for (const Bytes& broken : with_broken_playlist(image, playlist.at)) {
                const auto told = blocks_of_tracks(project_of(broken));
                ASSERT_EQ(told.size(), whole.size()) << seed;
                int changed = 0;
                for (std::size_t i = 0; i < whole.size(); ++i) {
                    changed += told[i] == whole[i] ? 0 : 1;
                    EXPECT_EQ(positions_in(told[i]), positions_in(whole[i])) << seed;
                }
                EXPECT_LE(changed, 1) << seed << " " << playlist.content_type;
            }
        }
    }
}

}  // namespace
}  // namespace tanrove
