// The help text, as it is printed: names at column 3, descriptions at column 26. It stands here in
// a few pieces only because some compilers limit the length of one literal.
#include "run/usage_text.hpp"

namespace tanrove {

namespace {

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

constexpr const char* plugins_and_tracks =
    R"(  --check                answer "will this session convert?" and write
                         NOTHING. Same reading, same report, no files.
                         Use it before converting, or to see exactly
                         which plug-ins you are missing.
  --skip-bypassed-fx     leave out every plug-in that was bypassed or
                         made inactive in Pro Tools. Without it they
                         come along as bypassed slots.
  --prefer-vst2          where REAPER has both the VST2 and the VST3
                         build of a plug-in, load the VST2. Without
                         it the VST3 is loaded.
  --offline-bypassed-fx  keep plug-ins that were bypassed or inactive
                         in the chain, but offline, so that they load
                         nothing until you bring them online.
  --pt-theme classic     the Pro Tools theme whose default colors you
                         want: classic (or light), dark, or auto.
                         A session does not say which one it was seen
                         in; auto goes by the version that saved it.
  --no-placeholders      leave out a plug-in whose settings could not
                         be read. Without it the plug-in goes in
                         offline, so that you see where it sat.
  --no-aax-slots         leave nothing where a plug-in sat that exists
                         as an AAX only. Without it a bypassed slot
                         with its name keeps the place.
  --skip-missing-fx      leave out a plug-in that is not installed for
                         REAPER on this machine. Without it its slot is
                         written all the same.
  --no-click             leave out Click tracks.
  --skip-hidden-tracks   leave out tracks that are hidden in Pro Tools.
                         One that a written track needs is kept.
  --skip-inactive-tracks leave out inactive tracks. One that a written
                         track needs is kept. Without it they come
                         along muted.
  --comments MODE        where track comments go: project (the project
                         notes, which is also what you get without
                         this option), item (an item with notes on
                         each track), or none.
  --keep-frozen          deliver a track that was frozen in Pro Tools
                         frozen in REAPER, where you can unfreeze it.
                         Without it frozen tracks arrive unfrozen.
)";

constexpr const char* midi_to_tempo =
    R"(  --keep-inaudible-midi  write notes and controllers that lie outside
                         their clip's boundary unmuted. Pro Tools does
                         not play them; without it they arrive muted.
  --truncate-midi-to-clip
                         cut notes at the edge of their clip. Without
                         it a note that Pro Tools lets ring past the
                         edge rings on in REAPER as well.
  --no-stand-ins         leave Avid's own plug-ins (EQ3, Dyn3, Channel
                         Strip, Trim) as named, switched-off slots.
                         Without it they are rebuilt on REAPER's own
                         plug-ins.
  --progress             for the app: on stderr, one line per stage
                         ("progress 2/6 tracks") while converting, then
                         "progress 6/6 done" and one summary line
                         ("summary tracks=.. clips=.. notes=.. fx=..
                         written=.. needs_look=.."). Stdout is unchanged.
                         When something went wrong on this tool's side,
                         "problem kind=<kind> <detail>" comes just before
                         the summary, which then ends "problem=1".
  --no-track-colors      leave every track in REAPER's default color.
  --plain-master         keep the master fader on REAPER's master. There
                         the master's plug-ins run before the fader; in
                         Pro Tools they run after it.
  --plain-fades          write every fade as an ordinary REAPER fade.
                         Without it a shape that REAPER's fades cannot
                         make becomes a volume envelope on the item.
  --no-clip-colors       leave clips in the color of their track.
  --tempo-ramps [ramps|steps]
                         write a tempo ramp drawn in Pro Tools as a
                         ramp you can grab in REAPER, instead of the
                         run of small steps that Pro Tools stores.
                         "steps" keeps the steps, as without it.
  --prefer-clap          use the CLAP build of a plug-in where REAPER
                         has one and its settings can be carried.
)";

constexpr const char* summaries_to_learning =
    R"(  --usage-json FILE      also write an anonymous summary of this run to
                         FILE (counts, plug-in names and how each one
                         converted; no names of yours, no paths). This
                         program sends nothing; the app sends the file
                         only for people who switched usage summaries on.
  --usage-shared         for the app: the PRIVACY paragraph of the
                         report says that the summary is being shared.
                         Nothing else changes.
  --predict              accepted and ignored: since v194 every plug-in
                         the converter can name is tried, including ones
                         no rule was written for, and the report names
                         every one whose settings were predicted.
  --no-kontakt-state     insert Kontakt without its settings. With
                         --kontakt-state, which is what you get without
                         either, its settings go in.
  --keep-plugin-midi     leave the MIDI trigger of FabFilter Pro-C 2 and
                         Saturn 2 as the session saved it. Without it
                         one that is on is switched off where the track
                         carries MIDI: Pro Tools routes no MIDI to it,
                         REAPER would.
  --no-sidechain         leave out key inputs: no side-chain routing is
                         written.
  --no-stretch           ignore elastic audio: clips play unstretched.
                         Pitch shifts are kept.
  --list                 print the session's tempo, sample rate, tracks
                         and buses, and write nothing.
  --dump-cc              print the decoded MIDI controller streams, for
                         bug reports, and go on with the conversion.
  --pause / --no-pause   wait for Enter before the window closes, or do
                         not. It waits by itself only on Windows.
  --report               also write the conversion report, a text file,
                         next to the project.
  --learn                teach the converter a plug-in it does not know.
                         In REAPER, put the plug-in on a track and save
                         the FX chain as an .RfxChain. Give that file and
                         the 8-character signature by which the converter
                         names the plug-in. Nothing is converted.

Or drag a .ptx file onto this program.
)";

}  // namespace

std::string usage_text() {
    return std::string(opening) + plugins_and_tracks + midi_to_tempo + summaries_to_learning;
}

}  // namespace tanrove
