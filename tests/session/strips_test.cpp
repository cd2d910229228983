// Strip rows, strip table, track list and what hangs on them: names, active marks, voices.
#include <gtest/gtest.h>

#include <random>

#include "reading.hpp"
#include "session/enclosing_blocks.hpp"
#include "session/first_enclosing.hpp"
#include "session/inactive_tracks.hpp"
#include "session/long_texts.hpp"
#include "session/master_name.hpp"
#include "session/name_bindings.hpp"
#include "session/strip_rows.hpp"
#include "session/strip_table.hpp"
#include "session/track_displays.hpp"
#include "session/track_names.hpp"
#include "session/track_table.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using namespace builder;

constexpr StripTableForm all_forms[] = {StripTableForm::before_12_8, StripTableForm::before_2019,
                                        StripTableForm::before_2022, StripTableForm::since_2022};

std::vector<StripRow> rows_of(const Bytes& image) {
    return over(image, readStripRows).rows;
}

/// One track of each kind that has a row, renamed.
std::vector<TrackSpec> one_of_each() {
    return {
        {.name = "Vox", .original_name = "Audio 1", .channels = 2, .voice_off = true},
        {.name = "Verb", .original_name = "Aux 1", .kind = TrackKind::aux, .active = false},
        {.name = "Main", .original_name = "Master 1", .kind = TrackKind::master},
        {.name = "Band", .original_name = "VCA 1", .kind = TrackKind::vca},
        {.name = "Keys", .original_name = "MIDI 1", .kind = TrackKind::midi},
        {.name = "Synth", .original_name = "Inst 1", .kind = TrackKind::instrument},
        {.name = "Film", .original_name = "Video 1", .kind = TrackKind::video},
    };
}

SessionBuilder session_of(const std::vector<TrackSpec>& tracks) {
    SessionBuilder session;
    for (const auto& track : tracks) session.track(track);
    return session;
}

TEST(ReadStripRows, EachKindOfTrackHasARowWithBothOfItsNames) {
    const auto tracks = one_of_each();
    const auto rows = rows_of(session_of(tracks).image());
    ASSERT_EQ(rows.size(), tracks.size()) << "the strip inside a master fader is no row";
    constexpr std::uint16_t types[] = {0x261b, 0x261b, 0x261d, 0x261f, 0x2620, 0x2621, 0x2623};
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        const auto& [row, track] = std::pair(rows[i], tracks[i]);
        EXPECT_EQ(fields(row.type, row.original_name, row.current_name, row.active, row.is_aux),
                  fields(types[i], track.original_name, track.name, track.active,
                         track.kind == TrackKind::aux));
    }
}

TEST(ReadStripRows, ANameOutsideItsLimitsLeavesTheRowNameless) {
    const std::pair<std::string, bool> cases[] = {{"A", true},
                                                  {std::string(255, 'x'), true},
                                                  {std::string(256, 'x'), false},
                                                  {"\xc3\xa9", true},
                                                  {"\xc1\xa9", false},
                                                  {"a\x1f", false},
                                                  {"\xf4\x80", true},
                                                  {"\xf5\x80", false}};
    for (const auto& [name, accepted] : cases) {
        const StripRow plain = rows_of(strip_row({.name = name}, 0)).at(0);
        EXPECT_EQ(plain.original_name, accepted ? name : "");
        EXPECT_EQ(plain.current_name, plain.original_name);
        const auto renamed = rows_of(session_of({{.name = name, .original_name = "old"}}).image());
        EXPECT_EQ(renamed.at(0).current_name, accepted ? name : "old");
    }
}

TEST(ReadStripRows, RowsWithinARowDoNotShareItsName) {
    Bytes nested = block(0x2619, ByteWriter().counted("inner").bytes());
    for (int i = 0; i < 3; ++i) nested = block(0x2620, nested);
    std::string names;
    for (const auto& row : rows_of(nested)) names += row.original_name + '.';
    EXPECT_EQ(names, "..inner.");
}

TEST(ReadStripRows, ThereIsAMostOfThem) {
    ByteWriter image;
    for (std::size_t i = 0; i < 16385; ++i) image.block(0x2620, {});
    EXPECT_EQ(rows_of(image.bytes()).size(), 16384U);
}

TEST(ReadStripRows, NamesBindByIdentityAndElseInTheOrderOfTheTable) {
    // A letter is a track of this name and identity, in the table as shown, in its row as made; "S"
    // is a Basic folder.
    const struct {
        bool has_identities;
        std::string table, rows, names;
        bool bound;
    } cases[] = {{false, "", "a", "a", false},       {false, "A", "ab", "ab", false},
                 {false, "AB", "ab", "AB", true},    {false, "ABC", "ab", "ab", false},
                 {false, "ABAB", "ab", "AB", true},  {false, "ABABC", "ab", "ab", false},
                 {false, "SAB", "ab", "AB", true},   {false, "SASA", "a", "A", true},
                 {false, "SAB", "abc", "SAB", true}, {false, "SAB", "abcd", "abcd", false},
                 {false, "SA", "a", "A", true},      {false, "SASA", "as", "SA", true},
                 {true, "SABSAB", "ab", "AB", true}, {true, "SABSAB", "abs", "ABS", true},
                 {true, "SA", "as", "AS", true},     {true, "AB", "ba", "BA", true},
                 {true, "A", "ab", "Ab", false},     {true, "AAB", "aab", "AAB", true},
                 {true, "XYS", "abs", "XYS", true},  {true, "XYSXYS", "sab", "SXY", true}};
    for (const auto& c : cases) {
        ByteWriter image;
        const auto place = [&](char letter) {
            return static_cast<std::size_t>(letter | 0x20);  // of a small letter
        };
        for (const char letter : c.table) {
            const auto kind = letter == 'S' ? TrackKind::basic_folder : TrackKind::audio;
            image.raw(strip_table_entry({.name = std::string(1, letter), .kind = kind},
                                        place(letter), StripTableForm::before_2022));
        }
        for (const char letter : c.rows) {
            image.raw(strip_row({.name = std::string(1, letter)}, place(letter)));
        }
        Bytes bytes = image.bytes();
        if (!c.has_identities)
            std::replace(bytes.begin(), bytes.end(), Bytes::value_type{'*'},
                         Bytes::value_type{'+'});
        const auto read = over(bytes, readStripRows);
        std::string names;
        for (const auto& row : read.rows) names += row.current_name;
        EXPECT_EQ(names, c.names) << c.table << " " << c.rows;
        EXPECT_EQ(read.bound, c.bound) << c.table << " " << c.rows;
    }
}

TEST(ReadStripRows, TheActiveMarkCountsOnlyInItsOwnRow) {
    const Bytes marks = ByteWriter().zeros(1).block(0x2627, {}).bytes();
    Bytes broken = marks;  // a mark that claims to be longer than the session
    broken[4] = 0xff;
    const auto is_active = [](const Bytes& inside, const Bytes& behind) {
        return rows_of(ByteWriter().block(0x2621, inside).raw(behind).bytes()).at(0).active;
    };
    EXPECT_FALSE(is_active(marks, {}) || is_active(broken, {}));
    EXPECT_TRUE(is_active({}, {}) && is_active({}, marks));
    EXPECT_TRUE(is_active(ByteWriter().u8(1).block(0x2627, {}).raw(marks).bytes(), {}));
}

TEST(ReadStripTable, AllThreeFormsGiveTheEntriesOnce) {
    for (const auto form : all_forms) {
        const bool is_long = form == StripTableForm::since_2022;
        const Bytes image = session_of({{.name = "Vox", .channels = 2},
                                        {.name = "", .kind = TrackKind::midi},
                                        {.name = "Set", .kind = TrackKind::basic_folder},
                                        {.name = "Sub", .kind = TrackKind::routing_folder}})
                                .strip_table_form(form)
                                .image();
        std::string text;
        for (const auto& e : over(image, readStripTable)) {
            text += fields(e.name, e.type, e.width, e.width_is_code, e.flag) + ", ";
        }
        EXPECT_EQ(text, is_long ? "Vox 0 2 0 0,  1 1 0 0, Set 11 1 0 1, Sub 0 1 0 1, "
                                : "Vox 0 1 1 0,  1 0 1 0, Set 11 0 1 1, Sub 0 0 1 0, ");
        EXPECT_EQ(over(image, readStripTable).at(0).identity, track_identity(0));
    }
}

TEST(ReadStripTable, AnEntryThatBreaksItsLayoutClearsTheTable) {
    const auto entry = [](const std::string& name, std::size_t number = 0) {
        return strip_table_entry({.name = name}, number, StripTableForm::since_2022);
    };
    const auto as_long_as = [&](std::size_t bytes) {
        Bytes cut = entry("b");
        cut[3] = static_cast<std::uint8_t>(bytes - 7);  // the size word
        cut.resize(bytes);
        return cut;
    };
    const std::pair<Bytes, std::size_t> cases[] = {{entry("b"), 2},
                                                   {entry("a"), 1},
                                                   {entry("a", 1), 2},
                                                   {as_long_as(81), 2},
                                                   {as_long_as(34), 2},  // the identity ends it
                                                   {as_long_as(33), 0},
                                                   {entry(std::string(255, 'x')), 2},
                                                   {entry(std::string(256, 'x')), 0}};
    for (const auto& [second, count] : cases) {
        const Bytes entries = ByteWriter().u32(2).raw(entry("a")).raw(second).bytes();
        EXPECT_EQ(over(block(0x2519, entries), readStripTable).size(), count);
    }
    Bytes unmarked = block(0x2519, entry("a"));
    unmarked[9 + 15 + 1 + 6] = '+';  // the identity's marker
    EXPECT_EQ(over(unmarked, readStripTable).at(0).identity, 0U);
}

TEST(ReadTrackNames, GivesNameChannelsAndTheLastIdentity) {
    const auto tracks =
        over(session_of({{.name = "Vox", .channels = 2}, {.name = "Choir", .channels = 6}}).image(),
             read_track_names);
    ASSERT_EQ(tracks.size(), 2U);
    EXPECT_EQ(fields(tracks[1].name, tracks[1].channels), "Choir 2,3,4,5,6,7");
    EXPECT_NE(tracks[1].identity, 0U);
    ByteWriter odd;  // more channels than the record holds, and two markers
    odd.counted("Odd").u8(1).u32(60).raw("*").zeros(3).u64(1).raw("*").zeros(3).u64(2);
    const auto read = over(block(0x1014, odd.bytes()), read_track_names).at(0);
    EXPECT_EQ(fields(read.channels, read.identity), " 2");
}

TEST(ReadInactiveNames, OnlyTheLongFormMarksThemInTheTable) {
    const std::string longest(255, 'x');
    for (const auto form : all_forms) {
        const Bytes image = session_of({{.name = "On"},
                                        {.name = longest, .active = false},
                                        {.name = longest + 'x', .active = false}})
                                .strip_table_form(form)
                                .image();
        const bool is_long = form == StripTableForm::since_2022;
        EXPECT_EQ(over(image, readInactiveNames), is_long ? TrackNameSet{longest} : TrackNameSet());
    }
}

TEST(ReadVoiceOffNames, TheVoiceStandsBehindTheRowOrInAnIdentityInsideIt) {
    const auto off_names = [](const Bytes& image) { return over_rows(image, readVoiceOffNames); };
    EXPECT_EQ(off_names(session_of(one_of_each()).image()), (TrackNameSet{"Audio 1", "Vox"}));
    auto renamed = one_of_each();
    renamed.push_back({.name = "Audio 1", .original_name = "Audio 9"});
    EXPECT_EQ(off_names(session_of(renamed).image()), TrackNameSet{"Vox"})
        << "a later track bears the first name of the silent one";

    const auto row_around = [](std::uint16_t in_front) {
        const Bytes voice = ByteWriter().u16(in_front).block(0x200b, {}).bytes();
        const Bytes name = ByteWriter().block(0x2619, ByteWriter().counted("In").bytes()).bytes();
        return block(0x261b, ByteWriter().raw(name).block(0x261c, voice).bytes());
    };
    EXPECT_EQ(off_names(row_around(0)), TrackNameSet{"In"});
    EXPECT_EQ(off_names(row_around(0x0100)), TrackNameSet());
}

TEST(ReadMasterName, TakesTheFirstMasterFader) {
    for (const std::size_t length : {0U, 1U, 255U, 256U}) {
        const std::string name(length, 'm');
        const Bytes image = session_of({{.name = name, .kind = TrackKind::master},
                                        {.name = "Second", .kind = TrackKind::master}})
                                .image();
        EXPECT_EQ(over(image, readMasterName), length > 255 ? "" : name);
    }
}

TEST(ReadLongTexts, NamesWhatIsOverTheLimitOfItsReaderOnce) {
    const auto texts = [](std::size_t more) {
        const auto name = [&](char c) { return std::string(255 + more, c); };
        SessionBuilder session;
        session.track({.name = name('T'), .comment = std::string(65535 + more, 'C')});
        session.marker(name('M'), 0).bus(name('B').substr(2), 1).io_path({.name = name('I')});
        return over(session.image(), read_long_texts);
    };
    EXPECT_EQ(shown(texts(0)), "");
    EXPECT_EQ(texts(2).size(), 5U) << shown(texts(2));
}

TEST(ReadTrackTable, TheRunOpensWithAClipTrackAndEndsAtAGap) {
    const auto names_of = [](const Bytes& image) {
        const std::vector<std::string> clip_tracks = {"Vox", "Bass"};
        return readTrackTable(BlockIndex(ByteView(image)), clip_tracks, StripRows()).names;
    };
    const auto after_gap = [&](std::size_t gap) {
        return names_of(ByteWriter().counted("Vox").zeros(gap).counted("Keys").bytes()).size();
    };
    EXPECT_EQ(after_gap(40), 2U);
    EXPECT_EQ(after_gap(41), 1U);
    EXPECT_EQ(names_of(ByteWriter().zeros(400000 - 7).counted("Vox").bytes()).size(), 1U);
    EXPECT_EQ(names_of(ByteWriter().zeros(400000 - 6).counted("Vox").bytes()).size(), 0U);

    ByteWriter image;
    for (const auto* name : {"Aux", "Vox", "Audio Files", "take.WAV", "a/b", "B", "Keys", "Vox",
                             "take.wave", "Pro Tools 2"}) {
        image.counted(name);
    }
    EXPECT_EQ(names_of(image.bytes()),
              (std::vector<std::string>{"Vox", "Keys", "take.wave", "Pro Tools 2"}));
}

TEST(ReadTrackTable, RowsKnowBetterThanAScanThatMissesTheFirst) {
    using Names = std::vector<std::string>;
    const std::pair<Names, Names> cases[] = {// auxiliary tracks, and what the scan would give
                                             {{}, {"Vox"}},
                                             {{"Verb"}, {"Vox", "Verb"}},
                                             {{"Verb", "Echo"}, {"Vox", "Verb"}}};
    for (const auto& [auxes, scanned] : cases) {
        SessionBuilder session;
        Names all = auxes;
        all.push_back("Vox");
        for (const auto& name : auxes) session.track({.name = name, .kind = TrackKind::aux});
        const Bytes image = session.track({.name = "Vox", .original_name = "Audio 1"}).image();
        const BlockIndex index{ByteView(image)};
        auto rows = readStripRows(index);
        for (const bool bound : {true, false}) {
            rows.bound = rows.some_bound = bound;
            const auto table = readTrackTable(index, Names{"Vox"}, rows);
            EXPECT_EQ(table.names, bound ? all : scanned);
            EXPECT_EQ(table.from_strip_rows, bound && auxes.size() == 2);
            EXPECT_EQ(table.scanned_count, scanned.size());
        }
    }
}

TEST(ReadNameBindings, ARenamedTrackFindsTheStripThatHoldsItsIdentity) {
    constexpr std::size_t track_count = 300;
    ByteWriter image;
    std::vector<BindableStrip> strips;
    const auto identity = [](std::size_t i) { return 0x1122334455660000ULL + i * 0x10001; };
    for (std::size_t i = 0; i < track_count; ++i) {
        image.raw(track_list_entry("old " + std::to_string(i), {0}, identity(i)));
    }
    for (std::size_t i = 0; i < track_count; ++i) {
        // Strips stand in reverse order. Every third kept its name, every fifth has no record.
        const std::size_t track = track_count - 1 - i;
        strips.push_back({(i % 3 == 0 ? "old " : "new ") + std::to_string(track), {}});
        if (i % 5 != 0) strips.back().channel_position = image.size() + 12;
        image.block(0x261c, ByteWriter().zeros(i % 9).u64(identity(track)).zeros(20).bytes());
    }
    const auto bindings = readNameBindings(BlockIndex(ByteView(image.bytes())), strips);
    for (std::size_t i = 0; i < track_count; ++i) {
        const auto found = bindings.find("old " + std::to_string(track_count - 1 - i));
        EXPECT_EQ(found == bindings.end() ? track_count : found->second,
                  i % 3 != 0 && i % 5 != 0 ? i : track_count);
    }
}

TEST(EnclosingBlocks, AgreeWithALookAtEveryBlock) {
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        std::vector<Block> blocks;
        std::vector<BlockSpan> spans;
        std::vector<std::size_t> positions;
        for (std::size_t at = 0; at < 300; ++at) {
            const auto size = static_cast<std::uint32_t>(1 + random() % 90);
            if (random() % 4 == 0) blocks.push_back({at, size, 0x261c});
            if (random() % 3 == 0) positions.push_back(at);
        }
        for (const Block& b : blocks) spans.push_back(b.span());
        const auto smallest = smallest_enclosing(blocks, positions);
        const auto first = first_enclosing(spans, positions);
        ASSERT_TRUE(smallest.size() == positions.size() && first.size() == positions.size());
        for (std::size_t i = 0; i < positions.size(); ++i) {
            const Block* least = nullptr;
            std::size_t earliest = no_span;
            for (std::size_t b = blocks.size(); b-- > 0;) {
                if (!spans[b].encloses(positions[i])) continue;
                earliest = b;
                if (least == nullptr || blocks[b].size <= least->size) least = &blocks[b];
            }
            ASSERT_EQ(smallest[i], least);
            ASSERT_EQ(first[i], earliest);
        }
    }
}

}  // namespace
}  // namespace tanrove
