// The manual page: what the program is in a few words, then every option under its subject, in the
// words of the help text, which roff wraps for itself.
#include "base/text_lines.hpp"
#include "base/version.hpp"
#include "pages.hpp"
#include "run/option_table.hpp"

namespace tanrove::pages {

namespace {

struct Section {
    OptionSubject subject;
    const char* title;
};

constexpr Section sections[] = {
    {OptionSubject::files, "The project"},
    {OptionSubject::tracks, "Tempo, tracks and mixer"},
    {OptionSubject::clips, "Clips and fades"},
    {OptionSubject::midi, "MIDI"},
    {OptionSubject::colours, "Colors"},
    {OptionSubject::plugins, "Plug-ins"},
    {OptionSubject::reports, "Reports, bug reports and applications"},
    {OptionSubject::program, "The program itself"},
};

constexpr const char* opening = R"(.SH NAME
tanrove \- convert a Pro Tools session to a REAPER project
.SH SYNOPSIS
.B tanrove
.I SESSION.ptx
.RI [ option " ...]"
.br
.B tanrove \-\-learn
.I CHAIN.RfxChain CODE
.SH DESCRIPTION
.B tanrove
converts one Pro Tools session (Pro Tools 10 and later) to one REAPER project and tells in plain
sentences what it carried, what it approximated and what it left out.
Neither Pro Tools nor any of its plug\-ins has to be installed: their settings are in the session.
To hear a plug\-in in REAPER, a build of it that REAPER can load has to be installed there.
.PP
The project is written beside the session, under its name, and under its own name only when it is
whole. An existing project is never replaced unless
.B \-\-overwrite
is given.
.PP
Options may stand in any order; of two that disagree the later one counts.
.SH OPTIONS
)";

constexpr const char* closing = R"(.SH EXIT STATUS
.TP
.B 0
success
.TP
.B 1
the session could not be converted, or what was asked for could not be written
.TP
.B 2
an unknown option; nothing was done
.SH FILES
.TP
.I tanrove\-plugins.txt
beside the program: the plug\-ins that it was taught, a line each, to be edited freely
.TP
.IR tanrove\-params.tsv ", " tanrove\-params\-local.tsv
beside the program: names of plug\-in parameters
.TP
.I reaper\-vstplugins64.ini
and its like, in REAPER's settings folder: the plug\-ins that REAPER has found
.SH EXAMPLES
.TP
.B tanrove \(dqMy Song.ptx\(dq
write
.I My Song.rpp
beside the session
.TP
.B tanrove \-\-check \(dqMy Song.ptx\(dq
tell what would become of the session, and write nothing
.TP
.B tanrove \(dqMy Song.ptx\(dq \-o /tmp/song.rpp \-\-report
write the project elsewhere, with the conversion report beside it
)";

/// Text as roff prints it: no dash that begins a word becomes a hyphen, no line is a request.
std::string roff_text(std::string_view text) {
    std::string out;
    char before = '\n';
    for (const char c : text) {
        const bool begins_word = before == '\n' || before == ' ' || before == '"' || before == '-';
        if (before == '\n' && (c == '.' || c == '\'')) out += "\\&";
        if (c == '\\') {
            out += "\\e";
        } else if (c == '-' && begins_word) {
            out += "\\-";
        } else {
            out += c;
        }
        before = c;
    }
    return out;
}

/// A name is copied from the page to a shell, so every dash in it is one.
std::string roff_name(std::string_view name) {
    std::string out;
    for (const char c : name) out += c == '-' ? std::string("\\-") : std::string(1, c);
    return out;
}

/// Names in bold, values in italics.
std::string heading_of(const OptionRow& row) {
    std::string line = ".BI " + roff_name(row.name);
    if (!row.values.empty()) line.append(" \" ").append(row.values).append("\"");
    return line + "\n";
}

std::string section_of(OptionSubject subject) {
    std::string text;
    bool shares_text = false;
    for (const OptionRow& row : option_table()) {
        if (row.subject != subject) continue;
        text += shares_text ? ".TQ\n" : ".TP\n";
        text += heading_of(row);
        shares_text = row.text.empty();
        if (!shares_text) text += roff_text(row.text) + "\n";
    }
    return text;
}

}  // namespace

std::string option_names() {
    std::string names;
    for (const OptionRow& row : option_table()) names.append(row.name).append("\n");
    return names;
}

std::string manual_page() {
    std::string page =
        std::string(".TH TANROVE 1 \"\" \"tanrove ") + version_text + "\" \"User Commands\"\n";
    page += opening;
    for (const Section& section : sections) {
        page.append(".SS ").append(section.title).append("\n").append(section_of(section.subject));
    }
    return page + closing;
}

}  // namespace tanrove::pages
