// Media and closing lines, sentence by sentence.
#include "report/account_media.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_missing_names = 6;
constexpr double seconds_a_minute = 60;

std::string folder_list(const MediaTallies& media) {
    std::vector<CountedName> folders;
    for (const auto& [folder, count] : media.files_by_folder) {
        folders.push_back({.name = "\"" + folder + "\"", .count = count});
    }
    return counted_names(folders);
}

}  // namespace

void print_sibling_files(TextBuffer& out, const MediaTallies& media,
                         const WrittenTallies& written) {
    if (media.files_in_siblings <= 0) return;
    out.print(
        "  %d audio file(s) the session lists are in its own sibling\n"
        "      folder(s), beside the media folder: %s",
        media.files_in_siblings, folder_list(media).c_str());
    if (written.clips_in_siblings > 0) {
        out.print("\n      %d clip(s) use them; their FILE lines point there.\n",
                  written.clips_in_siblings);
    } else {
        out.print(
            "\n      No clip uses them (freeze renders are not needed: the\n"
            "      tracks they froze play their own clips), so no FILE line\n"
            "      points there.\n");
    }
}

void print_missing_files(TextBuffer& out, const MediaTallies& media) {
    if (media.missing_files.empty()) return;
    out.print(
        "  WARNING: %d referenced audio file(s) are not in \"Audio Files\"\n"
        "      or beside it:\n",
        count_of(media.missing_files));
    out.append(one_name_a_line(media.missing_files, max_missing_names));
    out.print(
        "      REAPER will search for these on load and may look frozen\n"
        "      while it does. Copy them into the media folder, or re-run\n"
        "      with --audio-dir \"<the folder they are in>\".\n");
    print_count(out, media.missing_unused,
                "      %d more that no clip uses are missing as well; the project does not need "
                "them.\n");
}

void print_untold_paths(TextBuffer& out, const WrittenTallies& written) {
    if (written.untold_paths.empty()) return;
    out.print(
        "  WARNING: REAPER cannot be told of %d file(s) that items play: their path\n"
        "      holds a line end or a tab, or all three of \" ' and `, which no line\n"
        "      of a project can hold. Rename them, or the folder they are in, and\n"
        "      choose them again in REAPER:\n",
        count_of(written.untold_paths));
    out.append(one_name_a_line({written.untold_paths.begin(), written.untold_paths.end()},
                               max_missing_names));
}

void print_long_media(TextBuffer& out, const LongMedia& found) {
    if (found.longest_clip_seconds <= long_media_seconds &&
        found.longest_source_seconds <= long_media_seconds) {
        return;
    }
    if (found.clips == 0) {
        out.print(
            "  note: a source file is over 10 minutes (%.1f min). REAPER builds peaks\n"
            "        for the whole file on first open --\n"
            "        it can sit on \"loading file\" for a while. That is not a hang.\n",
            found.longest_source_seconds / seconds_a_minute);
        return;
    }
    out.print(
        "  note: %d clip(s) over 10 minutes (longest %.1f min, from a %.1f min\n"
        "        source). REAPER builds peaks for the whole file on first open --\n"
        "        it can sit on \"loading file\" for a while. That is not a hang.\n",
        found.clips, found.longest_clip_seconds / seconds_a_minute,
        found.longest_source_seconds / seconds_a_minute);
}

void print_media_folder(TextBuffer& out, const AccountFacts& facts, const WrittenTallies& written) {
    out.print("  Media folder written into %sFILE line:\n      %s\n",
              written.clips_in_siblings > 0 ? "every other " : "every ", facts.media_dir.c_str());
    out.print(
        "  If REAPER shows OFFLINE, that path is wrong - re-run with\n"
        "      --audio-dir \"<the folder your .wav files are really in>\"\n");
}

void print_privacy(TextBuffer& out, bool usage_shared) {
    if (usage_shared) {
        out.print(
            "\n  PRIVACY: this program contains no network code. It wrote an\n"
            "      anonymous summary of this conversion (counts, and which plug-ins\n"
            "      converted how), which vorlane sends because usage summaries are on\n"
            "      in Help > App settings. The summary holds no track, clip or file\n"
            "      names, no paths and no audio. Nothing else about this session\n"
            "      left this computer. A report reaches vorlane only when it is\n"
            "      attached to an email and sent.\n");
        return;
    }
    out.print(
        "\n  PRIVACY: this program contains no network code. No information\n"
        "      about this session was transmitted from this computer: no\n"
        "      upload, no telemetry, no usage reporting. A report reaches\n"
        "      vorlane only when it is attached to an email and sent.\n");
}

}  // namespace tanrove
