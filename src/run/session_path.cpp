// Joins all pieces once and tries windows of the joined text, the widest first.
#include "run/session_path.hpp"

#include <algorithm>
#include <utility>

#include "base/paths.hpp"

namespace tanrove {

namespace {

/// The longest path that any system opens; a longer run of pieces need not be tried.
constexpr std::size_t max_path_bytes = 32767;

/// All pieces with single blanks between them, and where each piece begins and ends.
struct JoinedPieces {
    std::string text;
    std::vector<std::size_t> begins;
    std::vector<std::size_t> ends;
};

JoinedPieces joined(const std::vector<std::string>& pieces) {
    JoinedPieces all;
    for (const std::string& piece : pieces) {
        if (!all.begins.empty()) all.text += ' ';
        all.begins.push_back(all.text.size());
        all.text += piece;
        all.ends.push_back(all.text.size());
    }
    return all;
}

/// The run of `length` pieces from piece `first` on, if it names a readable file; else empty.
std::string readable_run(const JoinedPieces& all, std::size_t first, std::size_t length) {
    const std::size_t begin = all.begins[first];
    const std::size_t bytes = all.ends[first + length - 1] - begin;
    if (bytes > max_path_bytes) return {};
    std::string path = all.text.substr(begin, bytes);
    return can_be_read(path) ? path : std::string();
}

std::vector<std::string> without_run(std::vector<std::string> pieces, std::size_t first,
                                     std::size_t length) {
    const auto begin = pieces.begin() + static_cast<std::ptrdiff_t>(first);
    pieces.erase(begin, begin + static_cast<std::ptrdiff_t>(length));
    return pieces;
}

}  // namespace

SessionWords find_session_path(const std::vector<std::string>& pieces) {
    const JoinedPieces all = joined(pieces);
    std::size_t runs_left = max_piece_runs;
    std::size_t length = pieces.size();
    while (length > 0) {
        const std::size_t run_count = pieces.size() - length + 1;
        if (length > max_short_run && run_count > runs_left) {
            length = max_short_run;
            continue;
        }
        for (std::size_t first = 0; first < run_count; ++first) {
            std::string path = readable_run(all, first, length);
            if (!path.empty()) return {std::move(path), without_run(pieces, first, length)};
        }
        runs_left -= std::min(runs_left, run_count);
        --length;
    }
    return {all.text, {}};
}

}  // namespace tanrove
