// What the shells offer behind "tanrove": options by name, the words and files that an option
// takes, and sessions.
#include <vector>

#include "base/text_lines.hpp"
#include "pages.hpp"
#include "run/option_table.hpp"

namespace tanrove::pages {

namespace {

std::string replaced(std::string text, std::string_view what, std::string_view with) {
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

/// The words of an option's values, with blanks between them.
std::string words_of(const OptionRow& row) {
    std::string_view words = row.values;
    if (words.starts_with('[')) words = words.substr(1, words.size() - 2);
    return replaced(std::string(words), "|", " ");
}

bool is_optional(const OptionRow& row) {
    return row.values.starts_with('[');
}

/// The first sentence of an option's text, or of the row whose text it shares, up to its colon.
std::string summary_of(const OptionRow* row) {
    while (row->text.empty()) ++row;
    const std::string text = replaced(std::string(row->text), "\n", " ") + " ";
    return text.substr(0, std::min(text.find(". "), text.find(": ")));
}

/// All options whose values are of this kind, as the pattern of a `case`.
std::string names_of(ValueKind kind) {
    std::string names;
    for (const OptionRow& row : option_table()) {
        if (row.kind != kind) continue;
        names.append(names.empty() ? "" : "|").append(row.name);
    }
    return names;
}

std::string in_quotes(const std::string& text) {
    return "'" + replaced(text, "'", "'\\''") + "'";
}

std::string zsh_values(const OptionRow& row) {
    const std::string mark = is_optional(row) ? "::" : ":";
    switch (row.kind) {
        case ValueKind::none:
            return {};
        case ValueKind::file:
            if (row.value_count() == 1) return ":file:_files";
            return ":chain:_files -g \"*.RfxChain\":code: ";
        case ValueKind::folder:
            return ":folder:_files -/";
        case ValueKind::words:
            return mark + "word:(" + words_of(row) + ")";
        case ValueKind::other:
            break;
    }
    return ":value: ";
}

std::string fish_values(const OptionRow& row) {
    switch (row.kind) {
        case ValueKind::none:
            return {};
        case ValueKind::file:
            return " -r -F";
        case ValueKind::folder:
            return " -x -a '(__fish_complete_directories)'";
        case ValueKind::words:
            return (is_optional(row) ? " -a '" : " -x -a '") + words_of(row) + "'";
        case ValueKind::other:
            break;
    }
    return " -x";
}

}  // namespace

std::string bash_completion() {
    std::string names;
    std::string words;
    std::string optional_words;
    for (const OptionRow& row : option_table()) {
        names.append(names.empty() ? "" : " ").append(row.name);
        if (row.kind != ValueKind::words) continue;
        std::string& target = is_optional(row) ? optional_words : words;
        target.append("    ").append(row.name).append(") offered='").append(words_of(row));
        target.append("' ;;\n");
    }
    return R"(# bash completion for tanrove

_tanrove_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen "$@" -- "$cur")
}

_tanrove() {
    local cur=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} offered=
    COMPREPLY=()
    # The second word behind --learn is a code.
    [[ $COMP_CWORD -gt 2 && ${COMP_WORDS[COMP_CWORD - 2]} == --learn ]] && return
    case $before in
    )" + names_of(ValueKind::file) +
           R"() _tanrove_files -f; return ;;
    )" + names_of(ValueKind::folder) +
           R"() _tanrove_files -d; return ;;
    )" + names_of(ValueKind::other) +
           ") return ;;\n" + words + R"(    esac
    if [[ -n $offered ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$offered" -- "$cur")
        return
    fi
    case $before in
)" + optional_words +
           R"(    esac
    if [[ $cur == -* ]]; then
        offered=')" +
           names + R"('
    else
        _tanrove_files -d
        _tanrove_files -f -X '!*.[pP][tT][xX]'
    fi
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -W "$offered" -- "$cur")
}

complete -F _tanrove tanrove
)";
}

std::string zsh_completion() {
    std::string text = "#compdef tanrove\n\n_arguments \\\n";
    for (const OptionRow& row : option_table()) {
        std::string summary = summary_of(&row);
        for (const char* special : {"[", "]"}) {
            summary = replaced(summary, special, std::string("\\") + special);
        }
        const std::string repeats = row.name == "--params" ? "*" : "";
        std::string words = repeats + std::string(row.name);
        words.append("[").append(summary).append("]").append(zsh_values(row));
        text += "  " + in_quotes(words);
        text += " \\\n";
    }
    return text + "  '*:session:_files -g \"*.(#i)ptx\"'\n";
}

std::string fish_completion() {
    std::string text = "# fish completion for tanrove\ncomplete -c tanrove -f\n";
    for (const OptionRow& row : option_table()) {
        const bool is_long = row.name.starts_with("--");
        text.append("complete -c tanrove ").append(is_long ? "-l " : "-s ");
        text.append(row.name.substr(is_long ? 2 : 1)).append(fish_values(row)).append(" -d ");
        text += "'" + replaced(replaced(summary_of(&row), "\\", "\\\\"), "'", "\\'") + "'\n";
    }
    return text + "complete -c tanrove -k -x -a '(__fish_complete_suffix .ptx)'\n";
}

}  // namespace tanrove::pages
