// Values that follow from one clip alone: what its names say and where it snaps.
#include "timeline/clip_item.hpp"

namespace tanrove {

namespace {

char lower_cased(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

double snap_offset(const ClipItem& clip) {
    return clip.sync_offset > 0 && clip.sync_offset < clip.length ? clip.sync_offset : 0;
}

std::string_view without_folder(std::string_view path) {
    const auto slash = path.find_last_of("/\\");
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string file_kind_of(std::string_view file) {
    const auto dot = file.rfind('.');
    if (dot == std::string_view::npos) return {};
    std::string kind(file.substr(dot + 1));
    for (char& c : kind) c = lower_cased(c);
    return kind;
}

bool ends_in_edit_number(std::string_view name) {
    const auto last_other = name.find_last_not_of("0123456789");
    return last_other != std::string_view::npos && last_other + 1 < name.size() &&
           name[last_other] == '-';
}

}  // namespace tanrove
