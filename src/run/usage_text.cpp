// The help text: an opening, a block for each option that has one, and what to do without options.
// Names stand at column 3, descriptions at column 26.
#include "run/usage_text.hpp"

#include "base/text_lines.hpp"
#include "run/option_table.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_column = 2;
constexpr std::size_t text_column = 25;

constexpr const char* opening = R"(tanrove: convert a Pro Tools session to a REAPER project

  tanrove "My Song.ptx" [-o out.rpp] [--tempo N]
          [--audio-dir "Audio Files"] [--drop-alt-takes]
          [--no-fades] [--keep-fade-clips]
          [--no-click] [--report]
          [--vstini reaper-vstplugins64.ini] [--dump-cache]
          [--params tanrove-params.tsv ...] [--want-params FILE]
          [--prefer-vst2]
          [--skip-bypassed-fx] [--offline-bypassed-fx]
          [--pt-theme auto|classic|dark]
          [--no-placeholders] [--no-aax-slots]
          [--comments project|item|none]
  tanrove --learn chain.RfxChain AAXSIGN

  BEFORE YOU START: Pro Tools does NOT need to be installed, and
  neither do its AAX plug-ins: their settings are in the session file.
  REAPER cannot load an AAX, though. To hear a plug-in there you need
  a build of it that REAPER can load, such as its VST, installed on
  the machine that opens the project. An empty slot in REAPER
  is almost always that, not a failed conversion -- the settings are
  in the project either way and appear once the plug-in is there.

)";

constexpr const char* closing = "\nOr drag a .ptx file onto this program.\n";

/// A name that is too long for its column stands on a line of its own.
std::string block_of(const OptionRow& row) {
    std::string block = std::string(name_column, ' ') + std::string(row.help);
    if (block.size() >= text_column) block += "\n";
    std::string_view text = row.text;
    for (std::size_t column = block.ends_with('\n') ? 0 : block.size(); !text.empty(); column = 0) {
        block.append(text_column - column, ' ').append(take_field(text, '\n')).append("\n");
    }
    return block;
}

}  // namespace

std::string usage_text() {
    std::string text = opening;
    for (const OptionRow& row : option_table()) {
        if (!row.help.empty()) text += block_of(row);
    }
    return text + closing;
}

}  // namespace tanrove
