// Random mixers, converted whole and held against a second model: what Pro Tools plays, told track
// by track in REAPER's words; and what a record that cannot be read may cost. Volume lanes move in
// small steps here; ramps are measured elsewhere.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "run/convert_session.hpp"
#include "session/block_index.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"
#include "support/told_counts.hpp"

namespace tanrove {
namespace {

using namespace builder;
using Lines = std::vector<std::string>;

constexpr int sample_rate = 48000;
constexpr unsigned mixers = 150;

/// A line of words and numbers.
class Line {
public:
    explicit Line(const std::string& text) : text_(text) {}
    Line& operator<<(const std::string& word) {
        text_ += " " + word;
        return *this;
    }
    Line& operator<<(double number) {
        char digits[40];
        std::snprintf(digits, sizeof(digits), " %.9f", number == 0 ? 0.0 : number);
        text_ += digits;
        return *this;
    }
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

double gain(double db) {
    return std::pow(10, db / 20);
}

struct Mixer {
    std::vector<TrackSpec> tracks;
    std::map<std::size_t, std::set<std::size_t>> members;  ///< of the VCA at this place
    bool plain_master = false;
    bool is_renamed = false;  ///< some buses: tracks name them as they were called first
    bool is_old = false;      ///< a strip table as before 12.8, in a container of no known version
    std::string folder_on_disk;
};

/// Draws mixers. Half of all switches are where a session leaves them.
class Draw {
public:
    explicit Draw(unsigned seed) : random_(seed) {
        std::shuffle(names_.begin(), names_.end(), random_);
    }

    Mixer mixer() {
        Mixer mixer;
        for (std::size_t left = 1 + below(5); left > 0; --left) mixer.tracks.push_back(track());
        for (const char* bus : {"Bus", "Bus", "Mono"}) {
            if (chance(2)) mixer.tracks.push_back(aux(bus));
        }
        for (const TrackKind kind : {TrackKind::midi, TrackKind::instrument}) {
            if (chance(3)) insert(mixer.tracks, other(kind));
        }
        if (chance(2)) insert(mixer.tracks, master());
        for (std::size_t left = below(3); left > 0; --left) {
            TrackSpec vca = switches(TrackKind::vca);
            vca.fader_db = between(-1445, 120) / 10.0;
            vca.mixer = vca_record(static_cast<int>(std::lround(vca.fader_db * 10)));
            mixer.tracks.push_back(vca);
            auto& members = mixer.members[mixer.tracks.size() - 1];
            for (std::size_t at = 0; at + 1 < mixer.tracks.size(); ++at) {
                if (mixer.tracks[at].has_row() && chance(3)) members.insert(at);
            }
        }
        // Behind all others, which it would hold.
        const TrackKind folder = chance(2) ? TrackKind::basic_folder : TrackKind::routing_folder;
        if (chance(3)) mixer.tracks.push_back(other(folder));
        mixer.plain_master = chance(4);
        mixer.is_renamed = chance(2);
        mixer.is_old = chance(4);
        for (TrackSpec& track : mixer.tracks) {
            if (!mixer.is_old) continue;
            track.folder_row = track.kind == TrackKind::basic_folder;
            track.colour_mark = false;
        }
        mixer.folder_on_disk = names_[below(names_.size())];
        return mixer;
    }

private:
    std::size_t below(std::size_t end) { return random_() % end; }
    int between(int least, int most) {
        return least + static_cast<int>(below(static_cast<std::size_t>(most - least + 1)));
    }
    bool chance(std::size_t one_in) { return below(one_in) == 0; }

    void insert(std::vector<TrackSpec>& tracks, const TrackSpec& track) {
        tracks.insert(tracks.begin() + static_cast<std::ptrdiff_t>(below(tracks.size() + 1)),
                      track);
    }

    TrackSpec switches(TrackKind kind) {
        TrackSpec track{.name = names_[next_name_++], .kind = kind};
        if (chance(2)) track.original_name = names_[below(names_.size())];
        track.soloed = chance(4);
        track.solo_safe = chance(6);
        track.automation_mode = static_cast<std::uint8_t>(chance(2) ? 1 : below(6));
        return track;
    }

    LaneSpec lane(int least, int most, int step, int now) {
        LaneSpec lane;
        if (chance(3)) lane.initial = now = between(least, most);
        std::int64_t at = 0;
        for (std::size_t left = chance(2) ? 0 : below(4); left > 0; --left) {
            now = std::clamp(now + between(-step, step), least, most);
            lane.points.push_back({at += between(0, sample_rate), now});
        }
        return lane;
    }

    void set_fader(TrackSpec& track) {
        track.fader_db = between(-190, 120) / 10.0;
        track.muted = chance(3);
        track.volume_lane = lane(-190, -1, 14, std::min(-1, static_cast<int>(track.fader_db * 10)));
        track.mute_lane = lane(0, 1, 1, track.muted ? 1 : 0);
    }

    TrackSpec track() {
        TrackSpec track = switches(TrackKind::audio);
        set_fader(track);
        track.channels = chance(2) ? 2 : 1;
        track.active = !chance(8);
        track.voice_off = chance(8);
        track.pan = between(-100, 100);
        if (chance(2)) track.pan_lane = lane(-100, 100, 200, *track.pan);
        if (chance(3)) track.trim_lane = lane(-120, 120, 14, 0);
        if (track.channels == 2) {
            track.pan_right = between(-100, 100);
            if (chance(2)) track.pan_right_lane = lane(-100, 100, 200, *track.pan_right);
        }
        const char* const outputs[] = {"", "Bus", "Bus.L", "Bus.R", "Mono", "Key", "Main.R"};
        if (chance(3)) track.output = outputs[below(std::size(outputs))];
        if (chance(4)) track.inserts = {{.key_input = output_id("Key")}};
        for (std::size_t left = below(3); left > 0; --left) track.sends.push_back(send());
        if (chance(2)) {
            track.clips = {{.region = track.name, .length = 48000, .muted = chance(2)},
                           {.region = track.name + "2", .position = 960000, .length = 48000}};
        }
        return track;
    }

    SendSpec send() {
        const char* const targets[] = {"Bus", "Bus", "Bus.L", "Bus.R", "Mono", "Key"};
        SendSpec send{.target = targets[below(std::size(targets))],
                      .level_db = between(-600, 120) / 10.0};
        send.pre_fader = chance(2);
        send.muted = chance(4);
        send.pan = between(-100, 100);
        send.level_lane = lane(-190, -1, 14, -10);
        if (!send.muted) send.mute_lane = lane(0, 0, 1, 0);
        if (chance(4)) send.level_lane.initial.reset();
        return send;
    }

    TrackSpec aux(const std::string& bus) {
        TrackSpec aux = track();
        aux.kind = TrackKind::aux;
        aux.channels = 2;
        if (!aux.pan_right) aux.pan_right = 100;
        aux.output = "Out 1-2";
        aux.voice_off = false;  // has none
        aux.sends.clear();
        aux.clips.clear();
        aux.input = bus;
        aux.input_is_bus = true;
        return aux;
    }

    /// A track that has its own fader, if any, and nothing else.
    TrackSpec other(TrackKind kind) {
        TrackSpec track = switches(kind);
        track.soloed = track.solo_safe = false;
        if (kind == TrackKind::midi) {
            track.muted = chance(3);
        } else {
            set_fader(track);
        }
        track.pan = 0;
        track.folder_row = kind == TrackKind::basic_folder && chance(2);
        if (kind == TrackKind::midi || kind == TrackKind::instrument)
            track.midi_clips = {{.region = track.name,
                                 .position = 960000,
                                 .length = 960000,
                                 .stream = {.notes = {{0, 1000, 60, 80}}},
                                 .muted = chance(2)}};
        return track;
    }

    TrackSpec master() {
        TrackSpec master = switches(TrackKind::master);
        set_fader(master);
        master.soloed = master.solo_safe = false;
        if (chance(3)) master.fader_db = 0;
        if (chance(2)) master.inserts = {{}};
        return master;
    }

    std::mt19937 random_;
    /// They lie wherever a session has names, so that each could be taken for another's.
    std::vector<std::string> names_ = {"Kick",    "Verb",   "Vox",       "Bus 1-2", "Audio 1",
                                       "Audio 2", "Bus",    "Aux 1",     "Master",  "Main",
                                       "Music",   "Mono",   "Pro Tools", "Key",     "Print",
                                       "Bus.L",   "Main.R", "Sessions",  "a/b"};
    std::size_t next_name_ = 0;
};

SessionBuilder session_of(const Mixer& mixer) {
    SessionBuilder session;
    session.bus("Bus", 1);
    for (const auto& [name, channel] : {std::pair("Mono", 3), {"Key", 4}}) {
        session.io_path({.name = mixer.is_renamed ? std::string("New ") + name : name,
                         .type = 2,
                         .channels = {static_cast<std::uint16_t>(channel)},
                         .identity = path_identity(name)});
    }
    session.io_path({.name = "Main", .type = 2, .channels = {5, 6}, .mapped = true});
    session.io_path({.name = "Main.R", .type = 2, .channels = {6}, .parent = 5});
    session.audio_file({"Take.wav", 480000, 0}).path({"Disk", mixer.folder_on_disk, "Take"});
    if (mixer.is_old) session.strip_table_form(StripTableForm::before_12_8).container_version(4);
    for (const TrackSpec& track : mixer.tracks) session.track(track);
    const auto row_of = [&](std::size_t place) {
        return static_cast<std::uint16_t>(std::count_if(
            mixer.tracks.begin(), mixer.tracks.begin() + static_cast<std::ptrdiff_t>(place),
            [](const TrackSpec& track) { return track.has_row(); }));
    };
    for (const auto& [vca, members] : mixer.members) {
        GroupSpec group{.name = "Group " + std::to_string(vca), .vca_master = row_of(vca)};
        for (const std::size_t member : members) group.members.push_back(row_of(member));
        session.group(group);
    }
    return session;
}

/// What the project must say of a mixer.
class Model {
public:
    explicit Model(const Mixer& mixer) : tracks_(mixer.tracks), members_(mixer.members) {
        for (std::size_t i = 0; i < tracks_.size(); ++i) {
            if (tracks_[i].kind == TrackKind::master) master_ = &tracks_[i];
            has_key_ |= !tracks_[i].inserts.empty() && tracks_[i].kind != TrackKind::master;
            const bool is_vca = tracks_[i].kind == TrackKind::vca;
            if (is_vca ? leads(i) : &tracks_[i] != master_) written_.push_back(i);
        }
        settle_solos();
        for (const std::size_t i : written_) {
            if (plays_to_master(tracks_[i])) senders_.push_back(tracks_[i].name);
        }
        if (needs_solo_track_) senders_.push_back(solo_track);
        if (master_ == nullptr) return;
        const bool is_moved =
            (moves(*master_, master_->volume_lane)) || std::abs(level(*master_)) > 0.0499;
        own_track_ =
            is_moved && !mixer.plain_master && !master_->inserts.empty() && !senders_.empty();
    }

    std::string text() {
        write_head();
        for (const std::size_t i : written_) {
            const bool is_behind = &tracks_[i] > master_ && tracks_[i].has_row();
            if (own_track_ && !master_is_written_ && is_behind) write_master_track();
            write(i);
        }
        if (needs_solo_track_) {
            add(Line("NAME") << solo_track);
            add(Line("VOLPAN") << 1 << 0 << -1 << -1 << 1);
            add(Line("MUTESOLO") << 0 << 2 << 0);
            add(Line("NCHAN") << 2);
            add(Line("MAINSEND") << (own_track_ ? 0 : 1) << 0);
        }
        if (own_track_ && !master_is_written_) write_master_track();
        return text_;
    }

    /// Receives of what a former taker of the same bus receives already.
    int parallel_receives() const {
        int count = 0;
        for (const std::size_t from : written_) {
            Lines buses = {tracks_[from].output};
            for (const SendSpec& send : tracks_[from].sends) buses.push_back(send.target);
            for (const std::string& bus : buses) {
                const auto takers = std::ranges::count_if(
                    tracks_, [&](const TrackSpec& to) { return takes(to, bus); });
                count += std::max(static_cast<int>(takers) - 1, 0);
            }
        }
        return count;
    }

private:
    static constexpr const char* solo_track = "Pro Tools solo (the soloed tracks were muted)";

    void add(const Line& line) { text_ += line.text() + "\n"; }

    static bool is_off(const TrackSpec& track) { return track.automation_mode == 0; }
    static bool moves(const TrackSpec& track, const LaneSpec& lane) {
        return !lane.points.empty() && !is_off(track);
    }
    static bool is_silent(const TrackSpec& track) { return !track.active || track.voice_off; }
    static bool is_muted(const TrackSpec& track) {
        return is_silent(track) || (track.kind != TrackKind::vca && track.muted);
    }
    /// Where the fader stands while nothing moves it: a lane without points still sets it.
    static double level(const TrackSpec& track) {
        const auto& lane = track.volume_lane;
        return lane.points.empty() && lane.initial ? *lane.initial / 10.0 : track.fader_db;
    }
    bool leads(std::size_t vca) const {
        const auto& members = members_.at(vca);
        return std::ranges::any_of(members, [&](std::size_t i) {
            return tracks_[i].kind != TrackKind::master && tracks_[i].has_row();
        });
    }
    bool plays_to_master(const TrackSpec& track) const {
        if (track.output.empty() || (track.output == "Key" && has_key_)) return false;
        return !is_taken(track.output);
    }

    /// Which side of a pair a bus is: -1 left, 1 right, 0 no leg.
    static int side_of(const std::string& bus) {
        return bus.ends_with(".L") ? -1 : bus.ends_with(".R") ? 1 : 0;
    }
    static std::string whole(const std::string& bus) { return bus.substr(0, bus.find('.')); }
    /// Inactive takers hear a bus only where it has no others; a leg goes where its pair goes.
    bool is_taken(const std::string& bus) const {
        return std::ranges::any_of(tracks_, [&](const auto& t) { return t.input == whole(bus); });
    }
    bool takes(const TrackSpec& taker, const std::string& leg) const {
        const std::string bus = whole(leg);
        if (bus.empty() || taker.input != bus) return false;
        return taker.active || std::ranges::none_of(tracks_, [&](const TrackSpec& other) {
                   return other.input == bus && other.active;
               });
    }
    /// Pro Tools has no panner in front of these.
    bool is_unpanned(const TrackSpec& track) const {
        return side_of(track.output) != 0 || (track.output == "Mono" && is_taken("Mono"));
    }
    bool hears_key(const TrackSpec& track) const {
        return track.kind != TrackKind::master && !track.inserts.empty();
    }
    bool has_key_receives(const TrackSpec& track) const {
        return hears_key(track) && std::ranges::any_of(tracks_, [&](const TrackSpec& other) {
                   const auto is_key = [](const SendSpec& send) { return send.target == "Key"; };
                   return &other != &track &&
                          (other.output == "Key" || std::ranges::any_of(other.sends, is_key));
               });
    }

    void solo(std::size_t i, std::set<std::size_t>& soloed) const {
        if (!soloed.insert(i).second || tracks_[i].kind != TrackKind::vca) return;
        for (const std::size_t member : members_.at(i)) solo(member, soloed);
    }

    void settle_solos() {
        std::set<std::size_t> soloed;
        for (std::size_t i = 0; i < tracks_.size(); ++i) {
            if (tracks_[i].soloed) solo(i, soloed);
        }
        bool any_dropped = false;
        for (const std::size_t i : soloed) {
            const TrackSpec& track = tracks_[i];
            if (track.kind == TrackKind::vca || &track == master_) continue;
            const bool will_sound = moves(track, track.mute_lane) && !is_silent(track);
            if (!is_muted(track) || will_sound) soloed_.insert(i);
            any_dropped |= is_muted(track) && !will_sound;
        }
        needs_solo_track_ = any_dropped && soloed_.empty();
    }

    void write_lane(const std::string& block, const LaneSpec& lane, double now, bool active,
                    bool armed) {
        if (lane.points.empty()) return;
        const bool is_mute = block.find("MUTE") != std::string::npos;
        const bool is_pan = block.find("PAN") != std::string::npos;
        const auto value = [&](double stored) {
            if (is_mute) return stored == 1 ? 0.0 : 1.0;
            return is_pan ? -stored / 100 : gain(stored / 10);
        };
        add(Line("<" + block));
        add(Line("ACT") << (active ? 1 : 0) << -1);
        add(Line("ARM") << (armed ? 1 : 0));
        add(Line("DEFSHAPE") << (is_mute ? 1 : 0) << -1 << -1);
        const int shape = is_mute ? 1 : 0;
        add(Line("PT") << 0 << value(lane.initial.value_or(now)) << shape);
        for (const auto& point : lane.points) {
            const double seconds = static_cast<double>(point.position) / sample_rate;
            add(Line("PT") << seconds << value(point.value) << shape);
        }
    }

    void write_head() {
        const bool is_muted = master_ != nullptr && master_->muted;
        add(Line("MASTERMUTESOLO") << (is_muted ? 1 : 0));
        const bool is_parked = master_ != nullptr && moves(*master_, master_->volume_lane);
        const bool at_rest = master_ == nullptr || own_track_ || is_parked;
        add(Line("MASTER_VOLUME") << (at_rest ? 1 : gain(level(*master_))) << 0 << -1 << -1 << 1);
        if (master_ == nullptr) return;
        add(Line("MASTERAUTOMODE") << (is_off(*master_) ? 0 : 1));
        if (!own_track_) write_master_volume("MASTERVOLENV2", false);
        write_lane("MASTERMUTEENV", master_->mute_lane, master_->muted ? 1 : 0, !is_off(*master_),
                   false);
    }

    void write_master_volume(const std::string& block, bool armed) {
        write_lane(block, master_->volume_lane, master_->fader_db * 10, !is_off(*master_), armed);
    }

    void write_master_track() {
        master_is_written_ = true;
        const bool has_lane = !master_->volume_lane.points.empty();
        const bool is_parked = moves(*master_, master_->volume_lane);
        add(Line("NAME") << master_->name + " (Pro Tools master fader)");
        add(Line("AUTOMODE") << (is_parked ? 1 : 0));
        add(Line("VOLPAN") << (is_parked ? 1 : gain(level(*master_))) << 0 << -1 << -1 << 1);
        add(Line("MUTESOLO") << 0 << 0 << 0);
        add(Line("PANMODE") << 6);
        add(Line("NCHAN") << 2);
        add(Line("MAINSEND") << 1 << 0);
        for (const std::string& sender : senders_) receive(sender, 0, 1, 0, 0);
        if (has_lane) write_master_volume("VOLENV2", is_parked);
    }

    void receive(const std::string& source, int mode, double level, double pan, int mute,
                 int channel = 0) {
        add(Line("AUXRECV") << "\"" + source + "\"" << mode << level << pan << mute << 0 << 0 << 0
                            << channel << "31:U" << 4177951 << -1 << "''");
    }

    bool feeds_pre_fader(const TrackSpec& track) const {
        const auto is_heard = [&](const std::string& bus) {
            return std::ranges::any_of(tracks_, [&](const TrackSpec& other) {
                const bool is_keyed = bus == "Key" && hears_key(other) && &other != &track;
                return is_keyed || takes(other, bus);
            });
        };
        return std::ranges::any_of(track.sends, [&](const SendSpec& send) {
            return send.pre_fader && !send.muted && is_heard(send.target);
        });
    }

    void write(std::size_t i) {
        const TrackSpec& track = tracks_[i];
        constexpr int modes[] = {0, 1, 2, 4, 3, 4};
        const int mode = modes[track.automation_mode];
        const bool is_vca = track.kind == TrackKind::vca;
        const bool has_lanes = moves(track, track.volume_lane) || moves(track, track.mute_lane);
        const bool plays_on =
            is_muted(track) && !is_silent(track) && feeds_pre_fader(track) && !has_lanes;
        add(Line("NAME") << track.name);
        if (track.kind == TrackKind::basic_folder)
            return write_plain_folder(track.has_row() ? mode : 0);
        add(Line("AUTOMODE") << mode);
        const bool is_parked = !is_vca && moves(track, track.volume_lane);
        write_volume_and_pan(track, plays_on ? 0 : is_parked ? 1 : gain(level(track)));
        add(Line("MUTESOLO") << (is_muted(track) && !plays_on ? 1 : 0)
                             << (soloed_.contains(i) ? 2 : 0) << (track.solo_safe ? 1 : 0));
        const bool is_dual = track.channels == 2 || is_unpanned(track);
        const bool has_pan = !is_vca && track.kind != TrackKind::midi;
        if (has_pan) add(Line("PANMODE") << (is_dual ? 6 : 3));
        add(Line("NCHAN") << (has_key_receives(track) ? 4 : 2));
        add(Line("MAINSEND") << (plays_to_master(track) && !own_track_ ? 1 : 0) << 0);
        if (has_key_receives(track) && plays_to_master(track)) add(Line("MAINSEND_NCH") << 2);
        write_receives(track);
        if (!is_vca) write_lanes(track, mode == 1 || mode == 2 || mode == 4);
        if (!track.midi_clips.empty()) add(Line("<SOURCE") << "MIDI");
    }

    void write_plain_folder(int mode) {
        add(Line("AUTOMODE") << mode);
        add(Line("VOLPAN") << 1 << 0 << -1 << -1 << 1);
        add(Line("MUTESOLO") << 0 << 0 << 0);
        add(Line("PANMODE") << 6);
        add(Line("NCHAN") << 2);
        add(Line("MAINSEND") << (own_track_ ? 0 : 1) << 0);
    }

    void write_volume_and_pan(const TrackSpec& track, double volume) {
        Line line("VOLPAN");
        const double left = track.pan.value_or(0);
        const double right = track.pan_right.value_or(0);
        const bool stands =
            is_off(track) || (track.pan_lane.points.empty() && track.pan_right_lane.points.empty());
        const double pan = track.channels == 2 ? (left + right) / 2 : left;
        line << volume << (stands && !is_unpanned(track) ? pan / 100 : 0) << -1;
        if (const int side = side_of(track.output)) {
            line << side << side;
        } else if (track.channels == 2 && !is_unpanned(track)) {
            line << track.pan_lane.initial.value_or(*track.pan) / 100.0
                 << track.pan_right_lane.initial.value_or(*track.pan_right) / 100.0;
        } else {
            line << -1 << 1;
        }
        add(line);
    }

    void write_lanes(const TrackSpec& track, bool armed) {
        const bool on = !is_off(track);
        write_lane("VOLENV2", track.volume_lane, track.fader_db * 10, on, armed);
        write_lane("MUTEENV", track.mute_lane, track.muted ? 1 : 0, on && !is_silent(track), armed);
        const bool pans = on && !is_unpanned(track);
        if (track.channels == 2) {
            write_lane("DUALPANENVL", track.pan_lane, *track.pan, pans, armed);
            write_lane("DUALPANENV", track.pan_right_lane, *track.pan_right, pans, armed);
        } else {
            write_lane("PANENV2", track.pan_lane, *track.pan, pans, armed);
        }
        write_lane("VOLENV3", *track.trim_lane, 0, on, false);
    }

    void write_receives(const TrackSpec& to) {
        for (const std::size_t i : written_) {
            const TrackSpec& source = tracks_[i];
            if (!hears_key(to) || &source == &to) continue;
            if (source.output == "Key") receive(source.name, 0, 1, 0, 0, 2);
            write_sends(source, "Key", 2);
        }
        for (const std::size_t i : written_) {
            const TrackSpec& source = tracks_[i];
            if (takes(to, source.output)) receive(source.name, 0, 1, 0, 0);
        }
        for (const std::size_t i : written_) {
            if (takes(to, to.input) && &tracks_[i] != &to) write_sends(tracks_[i], to.input, 0);
        }
    }

    void write_sends(const TrackSpec& source, const std::string& bus, int channel) {
        for (const SendSpec& send : source.sends) {
            if (whole(send.target) != bus) continue;
            const int side = side_of(send.target);
            const double own_pan = source.channels == 1 && bus == "Bus" ? send.pan / 100.0 : 0;
            const double pan = side != 0 ? side : own_pan;
            receive(source.name, send.pre_fader ? 3 : 0, gain(send.level_db), pan,
                    send.muted ? 1 : 0, channel);
            write_lane("AUXVOLENV", send.level_lane, send.level_db * 10, !is_off(source), false);
            write_lane("AUXMUTEENV", send.mute_lane, 0, !is_off(source), false);
        }
    }

    const std::vector<TrackSpec>& tracks_;
    const std::map<std::size_t, std::set<std::size_t>>& members_;
    const TrackSpec* master_ = nullptr;
    std::vector<std::size_t> written_;  ///< places of the tracks that become tracks
    std::set<std::size_t> soloed_;
    std::vector<std::string> senders_;  ///< into the master, by name
    bool has_key_ = false;
    bool needs_solo_track_ = false;
    bool own_track_ = false;  ///< the master's
    bool master_is_written_ = false;
    std::string text_;
};

/// The project's lines that a model speaks of, sources of receives by name.
std::string mixer_lines(const std::string& project) {
    const std::string kept =
        " MASTERMUTESOLO MASTER_VOLUME MASTERAUTOMODE <MASTERVOLENV2 <MASTERMUTEENV NAME AUTOMODE "
        "VOLPAN MUTESOLO PANMODE NCHAN MAINSEND MAINSEND_NCH AUXRECV <VOLENV2 <MUTEENV <PANENV2 "
        "<DUALPANENVL <DUALPANENV <VOLENV3 <AUXVOLENV <AUXMUTEENV ACT ARM DEFSHAPE PT ";
    Lines names;
    std::istringstream lines(project);
    for (std::string line; std::getline(lines, line);) {
        constexpr std::string_view track_name = "    NAME \"";
        if (line.starts_with(track_name))
            names.push_back(line.substr(track_name.size(), line.size() - track_name.size() - 1));
    }
    std::string text;
    std::istringstream again(project);
    bool in_item = false;
    for (std::string line; std::getline(again, line);) {
        in_item = (in_item || line == "    <ITEM") && line != "    >";
        if (line.ends_with("<SOURCE MIDI")) text += "<SOURCE MIDI\n";
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (kept.find(" " + word + " ") == kept.npos || in_item) continue;
        Line told(word);
        if (word == "NAME") {
            told << line.substr(line.find('"') + 1, line.size() - line.find('"') - 2);
        } else if (word == "AUXRECV") {
            std::size_t source = 0;
            words >> source;
            told << "\"" + names.at(source) + "\"";
        }
        while (word != "NAME" && word[0] != '<' && words >> word) {
            char* end = nullptr;
            const double number = std::strtod(word.c_str(), &end);
            *end == '\0' ? told << number : told << word;
        }
        text += told.text() + "\n";
    }
    return text;
}

/// The model's text with the project's numbers where the two are the same but for their last digit.
std::string with_numbers_of(const std::string& project, const std::string& model) {
    constexpr double last_digit = 2e-6;
    std::istringstream written(project), told(model);
    std::string text, line, word, other_line, other;
    while (std::getline(told, line)) {
        std::getline(written, other_line);
        std::istringstream words(line), others(other_line);
        for (const char* gap = ""; words >> word; gap = " ") {
            others >> other;
            const bool same = std::abs(std::strtod(word.c_str(), nullptr) -
                                       std::strtod(other.c_str(), nullptr)) < last_digit;
            text += gap + (same && std::isdigit(word.back()) ? other : word);
        }
        text += "\n";
    }
    return text;
}

class MixerModel : public testing::Test {
protected:
    MixerModel() {
        console_state().console_sink = &silent_;
        folder_.enter();
        options_.session_path = "Song.ptx";
        options_.overwrite = true;
    }
    ~MixerModel() override { console_state().console_sink = nullptr; }

    std::string project_of(const Bytes& image) {
        const Bytes file = encrypted(image, Cipher::ptx, 1);
        EXPECT_TRUE(write_file_text("Song.ptx", {file.begin(), file.end()}));
        if (convert_session(options_, &run_, nullptr) != 0) return "";
        return file_text("Song.rpp");
    }

    RunOptions options_;
    ConversionResult run_;

private:
    NullSink silent_;
    TempFolder folder_;
};

TEST_F(MixerModel, AgreesOnRandomMixersAndSoDoesACheck) {
    for (unsigned seed = 0; seed < mixers && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        const Mixer mixer = Draw(seed).mixer();
        options_.plain_master = mixer.plain_master;
        options_.check_only = false;
        const std::string project = project_of(session_of(mixer).image());
        ASSERT_FALSE(project.empty());
        Model model(mixer);
        const std::string lines = mixer_lines(project);
        EXPECT_EQ(lines, with_numbers_of(lines, model.text()));
        expect_told_counts(project, run_.console_text, run_.report_text, console_state().usage_body,
                           model.parallel_receives());
        options_.check_only = true;
        ConversionResult check;
        ASSERT_EQ(convert_session(options_, &check, nullptr), 0);
        const std::string account = run_.console_text.substr(run_.console_text.find(" tracks, "));
        EXPECT_NE(check.console_text.find(account), std::string::npos)
            << run_.console_text << check.console_text;
    }
}

/// The tracks' blocks, without their identities and names.
Lines blocks_of_tracks(const std::string& project) {
    Lines blocks;
    std::istringstream lines(project);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  <TRACK")) blocks.emplace_back();
        const bool is_own = line.find('{') == line.npos && !line.starts_with("    NAME");
        if (!blocks.empty() && is_own) blocks.back() += line + "\n";
    }
    return blocks;
}

/// The lines of a block that begin so.
std::string lines_with(const std::string& block, const std::string& words) {
    std::string text;
    std::istringstream lines(block);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(words)) text += line + "\n";
    }
    return text;
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

/// Each image of the session in which one strip has lost its entry in the strip table.
std::vector<Bytes> with_lost_entries(const Bytes& image) {
    const BlockIndex index{ByteView(image)};
    const auto entries = index.of_type(0x251a).all();
    const std::size_t strips = entries.size() / 2;  // the table is stored twice
    std::vector<Bytes> images(strips, image);
    for (std::size_t lost = 0; strips > 1 && lost < strips; ++lost) {
        for (const auto& entry : {entries[lost], entries[lost + strips]})
            ++images[lost][entry.at + 7];
    }
    return images;
}

TEST_F(MixerModel, ARecordThatCannotBeReadCostsItsTrackAlone) {
    constexpr std::uint16_t playlist_types[] = {0x1052, 0x1057};
    for (unsigned seed = 0; seed < 20 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Bytes image = session_of(Draw(seed).mixer()).image();
        const auto playlists = BlockIndex(ByteView(image)).of_types(playlist_types);
        // Those that have their tracks' names find them by these, all others by their place.
        for (const Block& playlist : playlists) image[playlist.at + 13] ^= seed % 2;
        const Lines whole = blocks_of_tracks(project_of(image));
        for (const Block& playlist : playlists) {
            for (const Bytes& broken : with_broken_playlist(image, playlist.at)) {
                const Lines told = blocks_of_tracks(project_of(broken));
                ASSERT_EQ(told.size(), whole.size());
                int changed = 0;
                for (std::size_t i = 0; i < whole.size(); ++i) {
                    changed += told[i] == whole[i] ? 0 : 1;
                    EXPECT_EQ(lines_with(told[i], "      POSITION"),
                              lines_with(whole[i], "      POSITION"));
                }
                EXPECT_LE(changed, 1) << playlist.content_type;
            }
        }
    }
}

/// Whichever strip lost its entry keeps its knobs and lanes, and nobody takes its place.
TEST_F(MixerModel, AStripWithoutAnEntryKeepsAllButItsName) {
    const auto knobs = [](const std::string& project) {
        std::multiset<std::string> strips;
        for (const std::string& block : blocks_of_tracks(project))
            strips.insert(lines_with(block, "    VOLPAN") + lines_with(block, "      PT"));
        strips.erase("    VOLPAN 1.000000 0 -1 -1.000000 1.000000\n");
        strips.erase("    VOLPAN 1 0 -1 -1 1\n");  // of a track that the converter adds
        return strips;
    };
    for (unsigned seed = 0; seed < 40 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Mixer mixer = Draw(seed).mixer();
        mixer.members.clear();  // a VCA that leads nobody is none
        std::erase_if(mixer.tracks, [](const auto& t) { return t.kind == TrackKind::vca; });
        const Bytes image = session_of(mixer).image();
        const auto whole = knobs(project_of(image));
        for (const Bytes& lost : with_lost_entries(image)) {
            Lines missing;
            std::ranges::set_difference(whole, knobs(project_of(lost)),
                                        std::back_inserter(missing));
            EXPECT_EQ(missing, Lines());
        }
    }
}

}  // namespace
}  // namespace tanrove
