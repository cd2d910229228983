// Where a state that is text in braces ends. Braces count outside strings only, a double quote
// begins and ends a string, a backslash takes the byte behind it out of the count.
//
// Every brace is a start of its own, and in bytes that are no text most are never closed. All walks
// go on together, so that the search is one pass: two walks that stand at the same byte differ only
// in whether they are in a string, and in how deep they are. Of either sort the walks form a stack;
// the one begun last is closed first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "plugins/state_span.hpp"

namespace tanrove {

/// A deeper nest of braces is no text of a plug-in; what begins below it is not tried.
constexpr std::size_t max_open_braces = 65536;

struct BalancedRun {
    std::size_t start = 0;  ///< the opening brace
    std::size_t end = 0;    ///< behind the closing one
    std::size_t text_bytes = 0;

    std::size_t size() const { return end - start; }
};

/// The walks that agree on being in a string or out of it.
class BraceWalks {
public:
    bool empty() const { return walks_.empty(); }

    /// A walk begins at a brace that the others count as well, or, being escaped, do not.
    void begin(std::size_t at, std::size_t text_before, bool is_escaped) {
        if (walks_.size() < max_open_braces) {
            walks_.push_back({at, text_before, is_escaped ? level_ - 1 : level_});
        }
    }

    void open() { ++level_; }

    /// Calls `closed(start, text_before)` for each walk that this closing brace ends.
    template <typename Closed>
    void close(Closed closed) {
        --level_;
        while (!walks_.empty() && walks_.back().level_before == level_) {
            closed(walks_.back().start, walks_.back().text_before);
            walks_.pop_back();
        }
    }

private:
    struct Walk {
        std::size_t start = 0;
        std::size_t text_before = 0;
        std::int64_t level_before = 0;
    };

    std::vector<Walk> walks_;
    std::int64_t level_ = 0;
};

/// The run that begins first among those from `from` on that begin where `is_start(position)` says
/// so, close in front of the end of `bytes`, and are wanted by `accept(run)`.
template <typename IsStart, typename Accept>
std::optional<BalancedRun> first_balanced_run(ByteView bytes, std::size_t from, IsStart is_start,
                                              Accept accept) {
    BraceWalks outside;
    BraceWalks in_string;
    std::optional<BalancedRun> first;
    std::size_t text_bytes = 0;
    bool is_escaped = false;
    for (std::size_t i = from; i < bytes.size(); ++i) {
        const std::uint8_t byte = bytes.u8(i);
        if (byte == '{' && !first && is_start(i)) outside.begin(i, text_bytes, is_escaped);
        if (is_state_text(byte)) ++text_bytes;
        if (std::exchange(is_escaped, !is_escaped && byte == '\\')) continue;
        if (byte == '"') std::swap(outside, in_string);
        if (byte == '{') outside.open();
        if (byte != '}') continue;
        outside.close([&](std::size_t start, std::size_t text_before) {
            const BalancedRun run{start, i + 1, text_bytes - text_before};
            if ((!first || start < first->start) && accept(run)) first = run;
        });
        if (first && outside.empty() && in_string.empty()) break;
    }
    return first;
}

}  // namespace tanrove
