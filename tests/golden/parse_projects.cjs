// Reads every project in the folders it is given with an independent parser of the format, and
// checks what any reader relies on: one project block, tracks that close, items with a source.
// Lines that this version of the parser cannot take are left out of the copy it is given: muted MIDI
// events, SysEx text with "/" or "=" in it, the state of a CLAP, and the first value of a JS
// where it is no whole number, and the project's notes. A VST without a state gets one there: the parser
// wants a header, a state and a tail. It also wants each of them to end in a line of less than 128
// characters: the header of many channels is cut there. An item of notes alone has no source.
const fs = require("fs");
const path = require("path");
const { parse, ReaperBase } = require("rppp");

function projects(folder) {
    return fs.readdirSync(folder, { withFileTypes: true }).flatMap((entry) => {
        const full = path.join(folder, entry.name);
        if (entry.isDirectory()) return projects(full);
        return entry.name.endsWith(".rpp") ? [full] : [];
    });
}

function withoutUnreadableLines(text) {
    return text
        .replace(/^ *Em .*\n/gm, "")
        .replace(/^( *)<STATE\n(?: *[A-Za-z0-9+\/=]+\n)+ *>\n/gm, "")
        .replace(/^( *<JS .*\n *)-?[0-9]+[.][0-9]+/gm, "$10")
        .replace(/^  <NOTES [^\n]*\n(?: *\|[^\n]*\n)* *>\n/m, "")
        .replace(/^( *<VST .*\n)( *)([A-Za-z0-9+\/]{128})([A-Za-z0-9+\/=]+)\n/gm, "$1$2$3\n$2$4\n")
        .replace(/^( *<VST .*\n *[A-Za-z0-9+\/=]+\n)( *[A-Za-z0-9+\/=]+\n *>\n)/gm, "$1AAAA\n$2")
        .replace(/^ *<X [^\n]*\n[^\n]*[=/][^\n]*\n *>\n/gm, "");
}

function blocks(base, token) {
    return base.contents.filter((c) => c instanceof ReaperBase && c.token === token);
}

let failed = 0;
let read = 0;
for (const folder of process.argv.slice(2)) {
    for (const file of projects(folder)) {
        try {
            const project = parse(withoutUnreadableLines(fs.readFileSync(file, "utf8")));
            if (project.token !== "REAPER_PROJECT") throw new Error("no project block");
            for (const track of blocks(project, "TRACK")) {
                for (const item of blocks(track, "ITEM")) {
                    const sources = blocks(item, "SOURCE").length + blocks(item, "NOTES").length;
                    if (sources !== 1) throw new Error("an item without source");
                }
            }
            read += 1;
        } catch (error) {
            failed += 1;
            console.error(`${file}: ${error.message}`);
        }
    }
}
console.log(`${read} projects read, ${failed} not`);
process.exit(failed > 0 || read === 0 ? 1 : 0);
