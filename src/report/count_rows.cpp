// A count message printed: its text, cut at the field, with the number between the halves.
#include "report/count_rows.hpp"

#include <string>

namespace tanrove {

namespace {

constexpr std::size_t field_width = 2;  // "%d"

void append_plain(TextBuffer& out, std::string_view text) {
    for (auto percent = text.find("%%"); percent != std::string_view::npos;
         percent = text.find("%%")) {
        out.append(std::string(text.substr(0, percent + 1)));
        text.remove_prefix(percent + 2);
    }
    out.append(std::string(text));
}

}  // namespace

void CountText::print(TextBuffer& out, int count) const {
    append_plain(out, text_.substr(0, field_at_));
    out.append(std::to_string(count));
    append_plain(out, text_.substr(field_at_ + field_width));
}

bool print_count(TextBuffer& out, int count, CountText text) {
    if (count <= 0) return false;
    text.print(out, count);
    return true;
}

}  // namespace tanrove
