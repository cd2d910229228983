// The head of the account, sentence by sentence.
#include "report/account_head.hpp"

#include "report/name_lists.hpp"

namespace tanrove {

namespace {

/// The Pro Tools that saved the sessions which settled how this tool reads them.
constexpr const char* tested_version = "12.5";

}  // namespace

void print_session_read(TextBuffer& out, const AccountFacts& facts) {
    const auto rate = static_cast<long long>(facts.sample_rate_hz);
    if (facts.product_version.empty()) {
        out.print(
            "\n  Read:  Pro Tools (this session does not record which version saved it), %lld Hz, "
            "%g BPM\n",
            rate, facts.tempo_bpm);
        return;
    }
    out.print("\n  Read:  %s %s, %lld Hz, %g BPM\n", shown_name(facts.product).c_str(),
              shown_name(facts.product_version).c_str(), rate, facts.tempo_bpm);
}

void print_project_written(TextBuffer& out, const AccountFacts& facts) {
    if (facts.check_only) {
        out.print("  Not written (%s).\n", "--check");
    } else {
        out.print("  Wrote: %s\n", facts.project_path.c_str());
    }
}

void print_version_note(TextBuffer& out, const AccountFacts& facts) {
    const std::string& version = facts.product_version;
    if (version.empty() || version.starts_with(tested_version)) return;
    out.print(
        "  NOTE: the sessions this tool is tested against were all saved\n"
        "      by Pro Tools 12.5. %s is outside that.\n"
        "      Anything it could not read is named above rather than\n"
        "      skipped silently, but please check the result against Pro\n"
        "      Tools before relying on it -- and send the session in\n",
        shown_name(version).c_str());
}

void print_counts(TextBuffer& out, const WrittenTallies& written) {
    out.print("\n  %d tracks, %d clips, %d MIDI notes\n", written.tracks, written.clips,
              written.notes);
}

}  // namespace tanrove
