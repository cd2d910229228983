#include "support/told_counts.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string_view>
#include <vector>

namespace tanrove::builder {

namespace {

/// What the lines of a project hold.
struct Counts {
    int tracks = 0;  ///< of the session: those that the converter adds and those of video apart
    int clips = 0;
    int notes = 0;
    int midi_tracks = 0;
    int video_items = 0;
    int lanes = 0;
    int receives = 0;      ///< on channels 1/2
    int key_receives = 0;  ///< behind them
    int points = 0;        ///< of tracks and the master
    int automated_tracks = 0;
    int send_points = 0;
    int plugin_points = 0;
    int panner_envelopes = 0;  ///< of surround panners, which are plug-ins of REAPER's own
    int panner_points = 0;
    int vst2 = 0, vst3 = 0, clap = 0;  ///< plug-ins of tracks, but none of REAPER's own
    int without_settings = 0;          ///< of those
    bool has_frozen = false;           ///< such a track keeps what it plays in another form
};

/// Tracks that the converter adds are no tracks of the session.
bool is_added(const std::string& name) {
    return name.find("NAME \"Pro Tools solo (") != std::string::npos ||
           name.find(" (Pro Tools master fader)\"") != std::string::npos;
}

bool is_envelope(std::string_view block) {
    return block.find("ENV") != std::string_view::npos && block != "TEMPOENVEX";
}

class ProjectCount {
public:
    void read(const std::string& line) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word.starts_with('<')) return open(word.substr(1), line);
        if (word == ">" && !blocks_.empty()) return close();
        if (word == "PT") return count_point();
        if (word == "AUXRECV") return count_receive(words);
        if (is_inside("SOURCE")) return count_note(word, words);
        if (line.find("PRESETNAME \"** Pro Tools settings not") != std::string::npos) {
            ++counts.without_settings;
        }
        if (line.find("PRESETNAME \"** Pro Tools only") != std::string::npos) --counts.vst3;
        if (blocks_.size() != 2 || blocks_[1] != "TRACK") return;
        if (word == "NAME" && is_added(line)) {
            --counts.tracks;
            is_of_master_ = true;
        }
        int lanes = 0;
        if (word == "ITEMLANES" && words >> lanes) counts.lanes += lanes - 1;
    }

    Counts counts;

private:
    bool is_inside(std::string_view block) const {
        return std::ranges::find(blocks_, block) != blocks_.end();
    }

    void open(const std::string& block, const std::string& line) {
        if (block == "TRACK") {
            ++counts.tracks;
            has_points_ = has_midi_ = is_of_master_ = false;
        }
        counts.has_frozen = counts.has_frozen || block == "FREEZE";
        if (block == "SOURCE") count_source(line);
        const bool is_plugin = block == "VST" || block == "CLAP";
        if (is_plugin) plays_panner_ = line.find("ReaSurroundPan") != std::string::npos;
        if (block == "PARMENV" && plays_panner_) ++counts.panner_envelopes;
        if (is_plugin && !is_inside("TAKEFX") && line.find("(Cockos)") == std::string::npos) {
            ++(block == "CLAP"                            ? counts.clap
               : line.find("VST3: ") != std::string::npos ? counts.vst3
                                                          : counts.vst2);
        }
        blocks_.push_back(block);
    }

    void close() {
        if (blocks_.back() == "TRACK") {
            const bool is_counted = is_of_master_ && master_has_points_;
            counts.automated_tracks += has_points_ && !is_counted ? 1 : 0;
            counts.midi_tracks += has_midi_ ? 1 : 0;
        }
        blocks_.pop_back();
    }

    void count_source(const std::string& line) {
        if (line.ends_with(" WAVE")) ++counts.clips;
        if (line.ends_with(" VIDEO")) ++counts.video_items;
        has_midi_ = has_midi_ || line.ends_with(" MIDI");
    }

    void count_note(const std::string& word, std::istringstream& words) {
        std::string ticks, status, pitch, velocity;
        words >> ticks >> status >> pitch >> velocity;
        const bool is_event = word == "E" || word == "Em";
        if (is_event && status.starts_with('9') && velocity != "00") ++counts.notes;
    }

    void count_receive(std::istringstream& words) {
        std::vector<int> numbers(10);
        double number = 0;
        for (int& field : numbers) {
            words >> number;
            field = static_cast<int>(number);
        }
        constexpr int single_channel = 1024;  // and up: of an output into a part of a surround bus
        const bool is_key = numbers[8] != 0 && numbers[8] < single_channel;
        ++(is_key ? counts.key_receives : counts.receives);
    }

    void count_point() {
        const std::string& block = blocks_.back();
        if (!is_envelope(block) || is_inside("ITEM")) return;
        if (block == "PARMENV") {
            ++(plays_panner_ ? counts.panner_points : counts.plugin_points);
        } else if (block.starts_with("AUX")) {
            ++counts.send_points;
        } else {
            ++counts.points;
            if (!is_inside("TRACK") && !master_has_points_) ++counts.automated_tracks;
            master_has_points_ = master_has_points_ || !is_inside("TRACK");
            has_points_ = true;
        }
    }

    std::vector<std::string> blocks_;
    bool has_points_ = false;
    bool master_has_points_ = false;
    bool has_midi_ = false;
    bool is_of_master_ = false;
    bool plays_panner_ = false;  ///< the last plug-in is one
};

Counts count_project(const std::string& project) {
    ProjectCount count;
    std::istringstream lines(project);
    for (std::string line; std::getline(lines, line);) count.read(line);
    return count.counts;
}

/// The number that ends at `end`; 0 where none does.
int number_ending(const std::string& text, std::size_t end) {
    std::size_t begin = end;
    while (begin > 0 && text[begin - 1] >= '0' && text[begin - 1] <= '9') --begin;
    return begin == end ? 0 : std::stoi(text.substr(begin, end - begin));
}

/// The number in front of the first of these words; 0 where the text has none.
int number_before(const std::string& text, const std::string& words) {
    const std::size_t at = text.find(words);
    return at == std::string::npos ? 0 : number_ending(text, at);
}

int count_of(const std::string& text, const std::string& words) {
    int count = 0;
    for (std::size_t at = 0; (at = text.find(words, at)) != std::string::npos; ++at) ++count;
    return count;
}

/// The numbers in front of all of these words.
int sum_before(const std::string& text, const std::string& words) {
    int sum = 0;
    for (std::size_t at = 0; (at = text.find(words, at)) != std::string::npos; ++at) {
        sum += number_ending(text, at);
    }
    return sum;
}

int number_of(const std::string& usage, const std::string& key) {
    const std::size_t at = usage.find("\"" + key + "\":");
    return at == std::string::npos ? -1 : std::stoi(usage.substr(at + key.size() + 3));
}

/// Of the plug-ins that the summary lists in this format.
int plugins_as(const std::string& usage, const std::string& format) {
    const std::string key = "\"as\":\"" + format + "\",\"count\":";
    int sum = 0;
    for (std::size_t at = 0; (at = usage.find(key, at)) != std::string::npos;) {
        at += key.size();
        sum += std::stoi(usage.substr(at));
    }
    return sum;
}

struct Columns {
    int tracks = 0, clips = 0, notes = 0, plugins = 0;
};

/// The sums of the columns of the report's track list.
Columns add_columns(const std::string& report) {
    constexpr std::string_view empty_mark = "   (empty)";
    Columns sums;
    const std::size_t head = report.find("\n  #  ", report.find("\nTRACK LIST"));
    std::istringstream lines(report.substr(report.find('\n', head + 1) + 1));
    for (std::string line; std::getline(lines, line) && !line.empty();) {
        if (line.ends_with(empty_mark)) line.resize(line.size() - empty_mark.size());
        if (!line.starts_with("  M ")) ++sums.tracks;
        std::istringstream cells(line.substr(line.size() - 17));
        int clips = 0, notes = 0, plugins = 0;
        cells >> clips >> notes >> plugins;
        sums.clips += clips;
        sums.notes += notes;
        sums.plugins += plugins;
    }
    return sums;
}

void expect_tracks_and_items(const Counts& counted, const std::string& account,
                             const std::string& report, const std::string& usage) {
    const int tracks = counted.tracks - number_before(account, " video track(s), ");
    const Columns sums = add_columns(report);
    EXPECT_EQ(number_before(account, " tracks, "), tracks);
    EXPECT_EQ(number_of(usage, "tracks"), tracks);
    EXPECT_EQ(sums.tracks, tracks);
    EXPECT_EQ(number_before(report, " tracks (") + number_before(report, " send-return bus"),
              tracks);
    const int clips = number_before(account.substr(account.find("\n  Read:")), " clips, ");
    const int notes = number_before(account, " MIDI notes\n");
    if (!counted.has_frozen) {
        EXPECT_EQ(clips, counted.clips);
        EXPECT_EQ(notes, counted.notes);
        EXPECT_EQ(number_of(usage, "midi_tracks"), counted.midi_tracks);
    }
    EXPECT_EQ(number_before(report, " clips, "), clips);
    EXPECT_EQ(number_before(report, " MIDI notes\n"), notes);
    EXPECT_EQ(sums.clips, clips);
    EXPECT_EQ(sums.notes, notes);
    EXPECT_EQ(number_of(usage, "clips"), clips);
    EXPECT_EQ(number_of(usage, "midi_notes"), notes);
    EXPECT_EQ(number_before(account, " video item(s) written"), counted.video_items);
    EXPECT_EQ(number_before(report, " video item(s) written"), counted.video_items);
    const int set_aside = number_before(account, " alternate playlists set aside");
    EXPECT_EQ(number_of(usage, "alt_playlists"), counted.lanes + set_aside);
}

void expect_plugins(const Counts& counted, const std::string& account, const std::string& report,
                    const std::string& usage) {
    const int plugins = number_before(report, " instance(s) found");
    EXPECT_EQ(add_columns(report).plugins, plugins);
    EXPECT_EQ(number_before(report, " instance(s): "), plugins);
    EXPECT_EQ(number_of(usage, "plugin_instances"), plugins);
    EXPECT_EQ(number_before(account, " plug-in instances found"), plugins);
    const int carried = number_before(report, " arrived with Pro Tools settings");
    EXPECT_EQ(number_before(account, " written with their settings"), carried);
    if (counted.has_frozen) return;
    EXPECT_EQ(plugins_as(usage, "vst2"), counted.vst2);
    EXPECT_EQ(plugins_as(usage, "vst3"), counted.vst3);
    EXPECT_EQ(plugins_as(usage, "clap"), counted.clap);
    EXPECT_EQ(number_before(report, " inserted at\n"), counted.without_settings);
    EXPECT_EQ(number_before(account, " placed OFFLINE"), counted.without_settings);
    EXPECT_EQ(carried + counted.without_settings,
              counted.vst2 + counted.vst3 + counted.clap + plugins_as(usage, "reaper"));
}

void expect_mix(const Counts& counted, const std::string& account, const std::string& report,
                int parallel_receives) {
    EXPECT_EQ(number_before(account, " automation points across "), counted.points);
    EXPECT_EQ(
        number_before(account.substr(std::min(account.find("points across "), account.size())),
                      " tracks\n"),
        counted.automated_tracks);
    EXPECT_EQ(number_before(account, " send automation points"), counted.send_points);
    EXPECT_EQ(number_before(account, " plug-in parameter automation points"),
              counted.plugin_points);
    EXPECT_EQ(sum_before(report, " automation point(s)"), counted.plugin_points);
    EXPECT_EQ(number_before(account, " surround panner automation envelope(s) written"),
              counted.panner_envelopes);
    EXPECT_EQ(number_before(account, " points): position, divergence"), counted.panner_points);
    EXPECT_EQ(number_before(account, " sends into ") +
                  number_before(account, " track output(s) routed") +
                  number_before(account, " track(s) play through that"),
              counted.receives - parallel_receives);
    EXPECT_EQ(number_before(account, " sidechain key inputs wired") > 0, counted.key_receives > 0);
}

}  // namespace

void expect_told_counts(const std::string& project, const std::string& account,
                        const std::string& report, const std::string& usage,
                        int parallel_receives) {
    const Counts counted = count_project(project);
    expect_tracks_and_items(counted, account, report, usage);
    expect_plugins(counted, account, report, usage);
    expect_mix(counted, account, report, parallel_receives);
    // What no item of the report's list tells, the report points to.
    int untold = count_of(account, " WARNING: ") + count_of(account, "*** THIS SESSION FILE");
    for (const char* item : {" referenced audio file(s) not in", " unlinked multi-mono instance(s)",
                             " of an unrecognized width"}) {
        untold -= count_of(report, item);
    }
    EXPECT_EQ(count_of(report, "Read those as well."), untold > 0 ? 1 : 0) << account;
}

}  // namespace tanrove::builder
