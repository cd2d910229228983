// Each tag at position p, with the chunk limit E:
//
//   "FFBS"                   to behind the 4 bytes that follow the last "FFEx", else to E
//   "VC2!"                   9 bytes and the u32 at p + 4, cut at E
//   "/*@Meta"                to E
//   "{\n\tindex = "          to the closing brace; without one the search goes on
//   0x0085988d               12 bytes and the u32 at p + 8; past E the search fails
//   zlib header              the four u32 in front are A, B, C, D: C counts the stream and 4, D
//                            what it unpacks to; C under 12, D under 64 or past E the search fails
//   "22 serialization::archive"  the u32 in front bytes; four bytes behind them it stands again
//   "HXMC"                   from behind the tag to E
//   "<?xml"                  to E, of zeros at the end only one
//   "XPst"                   a big-endian chunk that begins 20 bytes in front; see preset_tree
//   "hsin"                   12 bytes in front: u32 size and 12, u32 0, u32 1
#include "plugins/container_kinds.hpp"

#include "plugins/balanced_braces.hpp"
#include "plugins/preset_tree.hpp"

namespace tanrove {

namespace {

constexpr std::size_t last_scan_bytes = 5;  // the search ends where fewer are left

constexpr std::string_view index_tag = "{\n\tindex = ";
constexpr std::string_view archive_tag = "22 serialization::archive";
constexpr std::uint32_t sized_magic = 0x0085988d;

constexpr std::size_t vc2_bytes_around = 9;
constexpr std::size_t sized_header_bytes = 12;
constexpr std::size_t min_zlib_at = 7;  // from the block's start
constexpr std::size_t zlib_head_bytes = 16;
constexpr std::uint32_t min_zlib_counted = 12;
constexpr std::uint32_t min_unpacked_bytes = 64;
constexpr std::size_t min_archive_at = 4;
constexpr std::size_t min_archive_bytes = 64;
constexpr std::size_t min_hsin_at = 12;
constexpr std::size_t hsin_head_bytes = 12;
constexpr std::size_t max_hsin_refused = 75;

/// One pass over a settings block.
class TagSearch {
public:
    TagSearch(const StateSpan& span, PluginInsert& insert)
        : span_(span), bytes_(span.bytes()), insert_(insert), trees_(span) {}

    void run() {
        for (std::size_t p = span_.start; span_.holds(p, last_scan_bytes); ++p) {
            if (stops_at(p)) return;
        }
    }

private:
    /// True if a container was found at `p`, or one that ends the search.
    bool stops_at(std::size_t p) {
        switch (bytes_.u8(p)) {
            case 'F':
                return bytes_.has(p, "FFBS") && take(ContainerKind::ffbs, p, ffbs_end(p));
            case 'V':
                return bytes_.has(p, "VC2!") && take(ContainerKind::vc2, p, vc2_end(p));
            case '/':
                return span_.image.has(p, "/*@Meta") &&
                       take(ContainerKind::meta_comment, p, span_.limit);
            case '{':
                return bytes_.has(p, index_tag) && is_index_text(p);
            case sized_magic & 0xff:
                return bytes_.u32(p) == sized_magic && is_sized(p);
            case 'x':
                return p >= span_.start + min_zlib_at && is_zlib_header(bytes_, p) && is_zlib(p);
            case '2':
                return bytes_.has(p, archive_tag) && is_archive(p);
            case 'H':
                return bytes_.has(p, "HXMC") && take(ContainerKind::hxmc, p + 4, span_.limit);
            case '<':
                return bytes_.has(p, "<?xml") && take(ContainerKind::xml, p, xml_end(p));
            case 'X':
                return bytes_.has(p, "XPst") && trees_.take(p, insert_);
            case 'h':
                return bytes_.has(p, "hsin") && is_hsin(p);
            default:
                return false;
        }
    }

    bool take(ContainerKind kind, std::size_t at, std::size_t end) {
        insert_.containerKind = kind;
        insert_.chunkOffset = at;
        insert_.chunkSize = chunk_bytes(end - at);
        return true;
    }

    std::size_t ffbs_end(std::size_t p) const {
        constexpr std::size_t tag_bytes = 4;
        constexpr std::size_t end_mark_bytes = 8;
        if (span_.limit - p < tag_bytes + end_mark_bytes) return span_.limit;
        for (auto at = span_.limit - end_mark_bytes; at >= p + tag_bytes; --at) {
            if (bytes_.has(at, "FFEx")) return at + end_mark_bytes;
        }
        return span_.limit;
    }

    std::size_t vc2_end(std::size_t p) const {
        constexpr std::size_t length_at = 4;
        const std::size_t size =
            bytes_.holds(p, 2 * length_at) ? bytes_.u32(p + length_at) : std::size_t{0};
        return p + std::min(size + vc2_bytes_around, span_.limit - p);
    }

    std::size_t xml_end(std::size_t p) const {
        std::size_t end = span_.limit;
        while (end - p >= 2 && bytes_.u8(end - 1) == 0 && bytes_.u8(end - 2) == 0) --end;
        return end;
    }

    /// All starts of this form are walked at once when the first is met.
    bool is_index_text(std::size_t p) {
        if (!index_walked_) {
            index_walked_ = true;
            index_run_ = first_balanced_run(
                bytes_, p, [&](std::size_t at) { return bytes_.has(at, index_tag); },
                [](const BalancedRun&) { return true; });
        }
        if (!index_run_ || index_run_->start != p) return false;
        return take(ContainerKind::index_text, p, index_run_->end);
    }

    bool is_sized(std::size_t p) {
        constexpr std::size_t length_at = 8;
        const std::size_t size = std::size_t{bytes_.u32(p + length_at)} + sized_header_bytes;
        if (!span_.holds(p, sized_header_bytes) || !span_.holds(p, size)) return true;
        return take(ContainerKind::sized_magic, p, p + size);
    }

    bool is_zlib(std::size_t p) {
        if (p < zlib_head_bytes) return true;
        auto& words = insert_.zlibWords;
        for (std::size_t i = 0; i < words.size(); ++i) {
            words[i] = bytes_.u32(p - zlib_head_bytes + 4 * i);
        }
        const std::uint32_t counted = words[2];
        const bool is_sane = counted >= min_zlib_counted && words[3] >= min_unpacked_bytes &&
                             span_.holds(p, counted - 4);
        if (is_sane) return take(ContainerKind::zlib, p, p + counted - 4);
        words = {};
        return true;
    }

    bool is_archive(std::size_t p) {
        if (p < span_.start + min_archive_at) return false;
        const std::size_t size = bytes_.u32(p - 4);
        if (size < min_archive_bytes || !span_.holds(p, size + 4 + archive_tag.size()))
            return false;
        if (!bytes_.has(p + size + 4, archive_tag)) return false;
        return take(ContainerKind::archive, p, p + size);
    }

    bool is_hsin(std::size_t p) {
        if (p < span_.start + min_hsin_at) return false;
        const std::size_t size = bytes_.u32(p - 12);
        if (size <= max_hsin_refused || !span_.holds(p, size - hsin_head_bytes)) return false;
        if (bytes_.u32(p - 8) != 0 || bytes_.u32(p - 4) != 1) return false;
        return take(ContainerKind::hsin, p, p + size - hsin_head_bytes);
    }

    const StateSpan& span_;
    ByteView bytes_;
    PluginInsert& insert_;
    PresetTrees trees_;
    bool index_walked_ = false;
    std::optional<BalancedRun> index_run_;
};

}  // namespace

void find_tagged_container(const StateSpan& span, PluginInsert& insert) {
    TagSearch(span, insert).run();
}

}  // namespace tanrove
