// The signs, with the block's start S and the chunk limit E:
//
//   3         S + 33 to E is nearly all text
//   6         a text in braces
//   6         a chunk header: its name field is text and zeros; the chunk from S + 73 to E
//   6         the one chunk behind a parameter map
//   1 to 5    a length word in front of a span that ends at E, the more the nearer it stands
//   5, 7      a known opening: from there to E
//   up to 26  an opening with its length in front: 8 for a known one, 6 for ending at E (3 for
//             nearly so), up to 6 for a near length word, 6 for a copy behind it
#include "plugins/state_scoring.hpp"

#include <array>

#include "plugins/balanced_braces.hpp"
#include "plugins/elck_chunks.hpp"

namespace tanrove {

namespace {

constexpr std::size_t min_state_bytes = 32;
constexpr int min_score = 3;

constexpr std::size_t text_needs_bytes = 97;
constexpr std::size_t min_plain_text = 256;
constexpr std::size_t plain_text_percent = 96;
constexpr int plain_text_score = 3;
constexpr std::size_t bytes_behind_brace = 65;
constexpr std::size_t min_braced = 64;
constexpr std::size_t braced_text_percent = 90;

constexpr std::size_t tag_at = 37;
constexpr std::size_t name_at = 41;
constexpr std::size_t name_bytes = 32;
constexpr std::size_t data_at = 73;
constexpr std::size_t header_needs_bytes = 105;
constexpr int structure_score = 6;

// A length word stands 4 to 24 bytes in front, and may count up to 24 bytes more than the state.
constexpr std::size_t word_step = 4;
constexpr std::size_t word_places = 6;
constexpr std::size_t max_counted_more = 24;
constexpr std::size_t closing_needs_bytes = 65;
constexpr std::size_t bytes_behind_closing = 33;
constexpr std::size_t min_closing_bytes = 64;

constexpr std::size_t search_at = 24;
constexpr std::size_t search_needs_bytes = 40;
constexpr std::size_t bytes_behind_search = 17;
constexpr std::size_t near_end_bytes = 65;
constexpr std::size_t text_run_bytes = 120;
constexpr std::size_t longest_text_run = 200;
constexpr std::size_t compared_bytes = 4096;
constexpr int known_tag_score = 7;
constexpr int zlib_score = 5;
constexpr int tag_points = 8;
constexpr int end_points = 6;
constexpr int near_end_points = 3;
constexpr int copy_points = 6;

// Real states settle within a few comparisons, and most others end at their first byte. Bytes made
// to match almost, over and over, cost no more than this for each byte of the block; copies behind
// that are not sought.
constexpr std::size_t compared_for_each_byte = 256;

constexpr std::array<std::string_view, 12> known_tags = {"VC2!",
                                                         "FFBS",
                                                         "XPst",
                                                         "hsin",
                                                         "FabF",
                                                         "HXMC",
                                                         "CMXH",
                                                         "<?xml",
                                                         "<AllData",
                                                         "#AMS",
                                                         "22 serialization::archive",
                                                         "RIFF"};

/// For each byte whether a known tag begins with it: most places are passed over by this alone.
constexpr std::array<bool, 256> first_bytes_of_tags = [] {
    std::array<bool, 256> is_first = {};
    for (const std::string_view tag : known_tags) {
        is_first[static_cast<std::uint8_t>(tag.front())] = true;
    }
    return is_first;
}();

constexpr std::string_view zlib_tag = "zlib";
constexpr std::string_view text_tag = "text";

class Scoring {
public:
    explicit Scoring(const StateSpan& span)
        : span_(span),
          bytes_(span.bytes()),
          comparisons_left_((span.limit - span.start) * compared_for_each_byte) {}

    std::optional<ScoredState> run() {
        if (reaches(text_needs_bytes)) {
            score_plain_text();
            score_braces();
        }
        score_chunk_header();
        score_elck_chunk();
        if (reaches(closing_needs_bytes)) score_closing_lengths();
        if (reaches(search_needs_bytes)) score_openings();
        if (best_.score < min_score || best_.size < min_state_bytes) return std::nullopt;
        return best_;
    }

private:
    /// True if the byte so far into the block lies in front of the chunk limit.
    bool reaches(std::size_t offset) const { return span_.holds(span_.start + offset, 1); }

    void score_plain_text() {
        const std::size_t at = span_.start + settings_text_at;
        const auto rest = bytes_.window(at, bytes_.size()).span();
        if (rest.size() < min_plain_text) return;
        const auto text = std::count_if(rest.begin(), rest.end(), is_state_text);
        if (static_cast<std::size_t>(text) * 100 < rest.size() * plain_text_percent) return;
        best_ = {at, rest.size(), "text (no tag)", 1, plain_text_score};
    }

    void score_braces() {
        const auto run = first_balanced_run(
            bytes_, span_.start + settings_text_at,
            [&](std::size_t at) { return span_.holds(at, bytes_behind_brace + 1); },
            [](const BalancedRun& braced) {
                return braced.size() >= min_braced &&
                       braced.text_bytes * 100 >= braced.size() * braced_text_percent;
            });
        if (run) best_ = {run->start, run->size(), "braces balance", 1, structure_score};
    }

    void score_chunk_header() {
        if (!span_.holds(span_.start, header_needs_bytes) || best_.score >= structure_score) return;
        if (bytes_.has(span_.start + tag_at, "elck")) return;
        if (!is_padded_text(bytes_, span_.start + name_at, name_bytes)) return;
        const std::size_t at = span_.start + data_at;
        best_ = {at, span_.limit - at, "AAX chunk data", 1, structure_score};
    }

    void score_elck_chunk() {
        const auto state = find_elck_state(span_.image, span_.start, span_.limit);
        if (!state || state->chunk_count != 1 || best_.score == structure_score) return;
        best_ = {state->offset, state->size, elck_how, 1, structure_score};
    }

    /// True if a length word that counts `size` bytes, or a little more, stands `distance` in
    /// front.
    bool has_length_in_front(std::size_t at, std::size_t distance, std::size_t size) const {
        const std::size_t word = bytes_.u32(at - distance);
        return word >= size && word - size <= max_counted_more && (word - size) % word_step == 0;
    }

    void score_closing_lengths() {
        std::size_t at = span_.start + settings_text_at;
        for (; span_.holds(at, bytes_behind_closing + 1); ++at) {
            const std::size_t size = span_.limit - at;
            if (size < min_closing_bytes) return;
            for (std::size_t k = 0; k < word_places; ++k) {
                const int weight = k == 0 ? 5 : ((6 - static_cast<int>(k)) >> 1) + 1;
                if (weight <= best_.score) break;
                if (!has_length_in_front(at, word_step * (k + 1), size)) continue;
                best_ = {at, size, "length closes", 1, weight};
            }
        }
    }

    void score_openings() {
        std::size_t at = span_.start + search_at;
        for (; span_.holds(at, bytes_behind_search + 1); ++at) {
            if (at == span_.start + settings_code_at) continue;  // a code may spell a tag
            const std::string_view tag = opening_at(at);
            if (tag.empty()) continue;
            if (tag != text_tag) {
                const int weight = tag == zlib_tag ? zlib_score : known_tag_score;
                offer({at, span_.limit - at, tag, 1, weight});
            }
            score_lengths_in_front(at, tag);
        }
    }

    /// What opens at this place: a known tag, a zlib stream, a long text, or nothing.
    std::string_view opening_at(std::size_t at) {
        if (first_bytes_of_tags[bytes_.u8(at)]) {
            for (const std::string_view tag : known_tags) {
                if (bytes_.has(at, tag)) return tag;
            }
        }
        if (is_zlib_header(bytes_, at)) return zlib_tag;
        return text_run(at) >= text_run_bytes ? text_tag : std::string_view();
    }

    /// Bytes of text from `at` on, past the chunk limit too, but none further on than a longest run
    /// behind it. Asked for in ascending order: each byte is looked at once.
    std::size_t text_run(std::size_t at) {
        if (text_end_ <= at) {
            text_end_ = at;
            const auto reach = span_.image.window(0, span_.limit + longest_text_run);
            while (text_end_ < reach.size() && is_state_text(reach.u8(text_end_))) ++text_end_;
        }
        return std::min(text_end_ - at, longest_text_run);
    }

    bool wins(int score, std::size_t at) const {
        return score > best_.score || (score == best_.score && at < best_.at);
    }

    void offer(const ScoredState& state) {
        if (wins(state.score, state.at)) best_ = state;
    }

    void score_lengths_in_front(std::size_t at, std::string_view tag) {
        for (std::size_t k = 0; k < word_places; ++k) {
            const std::size_t word = bytes_.u32(at - word_step * (k + 1));
            if (word < min_state_bytes || word > span_.block_end - span_.start) continue;
            for (std::size_t more = 0; more <= max_counted_more && more <= word;
                 more += word_step) {
                score_length(at, word - more, tag, static_cast<int>(word_places - k));
            }
        }
    }

    void score_length(std::size_t at, std::size_t size, std::string_view tag, int nearness) {
        if (size < min_state_bytes || !span_.holds(at, size)) return;
        const std::size_t behind = span_.limit - at - size;
        const bool is_text = tag == text_tag;
        const int points = behind == 0 ? end_points : behind < near_end_bytes ? near_end_points : 0;
        const int score = points + nearness + (is_text ? 0 : tag_points);
        if (wins(score + copy_points, at) && has_copy_behind(at, size)) {
            best_ = {at, size, tag, 2, score + copy_points};
        } else if (points != 0 || !is_text) {
            offer({at, size, tag, 1, score});
        }
    }

    /// True if the same bytes stand behind the state once more, at once or four bytes on.
    bool has_copy_behind(std::size_t at, std::size_t size) {
        constexpr std::size_t gap_bytes = 4;
        for (const std::size_t copy : {at + size, at + size + gap_bytes}) {
            if (!span_.holds(copy, size)) continue;
            const std::size_t count = std::min({size, compared_bytes, comparisons_left_});
            const auto state = bytes_.window(at, count).span();
            const auto differs = std::ranges::mismatch(state, bytes_.window(copy, count).span());
            const auto equal = static_cast<std::size_t>(differs.in1 - state.begin());
            comparisons_left_ -= equal;
            if (equal == std::min(size, compared_bytes)) return true;
        }
        return false;
    }

    const StateSpan& span_;
    ByteView bytes_;
    std::size_t comparisons_left_;
    std::size_t text_end_ = 0;
    ScoredState best_;
};

}  // namespace

std::optional<ScoredState> score_state(const StateSpan& span) {
    return Scoring(span).run();
}

}  // namespace tanrove
