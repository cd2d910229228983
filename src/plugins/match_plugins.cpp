// Three kinds of plug-ins: Kontakt, whose builds share settings but not names; those that we know a
// build of by heart, which leave it only on demand; and all others, which the rules look for.
#include "plugins/match_plugins.hpp"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "base/fetch_ahead.hpp"
#include "base/paths.hpp"
#include "base/text_lines.hpp"
#include "plugins/identity_rules.hpp"
#include "plugins/product_names.hpp"

namespace tanrove {

namespace {

/// The last word of the header of a row that was found.
constexpr std::int32_t found_tail_word = 65535;
constexpr std::string_view x86_mark = "(x86)";
constexpr std::string_view fabfilter_makers_code = "FabF";

bool is_x86(const ScanEntry& entry) {
    return entry.name.find(x86_mark) != std::string::npos;
}

/// These containers hold what the VST2 itself would have stored.
bool goes_to_both_builds(ContainerKind kind) {
    return kind == ContainerKind::ffbs || kind == ContainerKind::index_text;
}

/// The scan writes `_` for characters that some file systems lack; the file that we know by heart
/// tells which.
std::string file_as_known(const std::string& scanned, const std::string& known) {
    const std::string_view known_stem = raw_file_stem(known);
    const std::string_view stem = raw_file_stem(scanned);
    const bool has_dots = known.find('.') != std::string::npos && stem.size() < scanned.size();
    if (!has_dots || stem.size() != known_stem.size()) return scanned;
    std::string file = scanned;
    const auto stem_at = static_cast<std::size_t>(stem.data() - scanned.data());
    for (std::size_t i = 0; i < stem.size(); ++i) {
        const bool is_letter = !lower_alnum(known_stem.substr(i, 1)).empty();
        if (stem[i] == '_' && !is_letter) file[stem_at + i] = known_stem[i];
    }
    return file;
}

/// The builds of Kontakt on this machine.
struct KontaktBuilds {
    EntryPlace vst2;
    EntryPlace measured;   ///< version 7, which takes the settings of 6
    EntryPlace predicted;  ///< the newest behind that
};

/// The version in "Kontakt 8 (Native Instruments)"; 0 for another name.
std::uint32_t kontakt_version(const ScanEntry& entry) {
    constexpr std::string_view product = "kontakt";
    if (entry.name.find("Native Instruments") == std::string::npos) return 0;
    const std::string name = lower_alnum(without_vendor(entry.name));
    if (!name.starts_with(product)) return 0;
    const std::string version = name.substr(product.size());
    return is_number(version) ? leading_number(version) : 0;
}

KontaktBuilds find_kontakt(const std::vector<ScanEntry>& entries) {
    constexpr const char* measured_class = "5653544e694b376b6f6e74616b742037";
    constexpr std::uint32_t measured_version = 7;
    KontaktBuilds builds;
    std::uint32_t newest = measured_version;
    for (std::size_t place = 0; place < entries.size(); ++place) {
        const ScanEntry& entry = entries[place];
        if (entry.isClap) continue;
        if (!is_vst3_build(entry) && entry.id == kontakt_vst2_id && !is_x86(entry))
            builds.vst2 = place;
        if (entry.classId.empty()) continue;
        const std::uint32_t version = kontakt_version(entry);
        if (lower_cased(entry.classId) == measured_class) {
            if (!builds.measured) builds.measured = place;
        } else if (version > newest) {
            newest = version;
            builds.predicted = place;
        }
    }
    return builds;
}

/// N of a name that ends in "(N out)"; 0 where it does not, or no plug-in has so many.
std::int32_t outputs_in_name(const std::string& name) {
    constexpr std::string_view ending = " out)";
    if (!name.ends_with(ending)) return 0;
    const std::size_t group = name.rfind('(');
    if (group == std::string::npos) return 0;
    const auto digits =
        std::string_view(name).substr(group + 1, name.size() - ending.size() - group - 1);
    const std::uint32_t outputs = is_number(digits) ? leading_number(digits) : 0;
    return outputs <= max_pins ? static_cast<std::int32_t>(outputs) : 0;
}

/// An insert on its way to its key: nearly all keys differ in their beginning, and numbers are
/// sorted faster than texts.
struct KeyPlace {
    std::uint64_t key_beginning = 0;
    std::size_t place = 0;
};

/// The first eight characters as one number, in the order of texts.
std::uint64_t beginning_of(std::string_view key) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < sizeof number; ++i) {
        number = number << 8 | (i < key.size() ? static_cast<std::uint8_t>(key[i]) : 0U);
    }
    return number;
}

/// For each plug-in of the session the build that was found.
using Matches = std::vector<std::optional<IdentityMatch>>;

class MatchRun {
public:
    MatchRun(const MatchInput& input, IdentityFindings& findings, TextBuffer& out)
        : input_(input), findings_(findings), out_(out) {}

    RowsByKey run();

private:
    bool take_kontakt(const KeyInstances& instances, const PluginTableRow& known);
    void move_to_vst2(const KeyInstances& instances, const PluginTableRow& known);
    void leave_known(const KeyInstances& instances, const PluginTableRow& known);
    std::optional<IdentityMatch> look_up(const KeyInstances& instances);
    void fetch_entries(const Matches& found, std::size_t row) const;
    void take(const KeyInstances& instances, IdentityMatch found, const PluginTableRow* name_only);
    std::optional<IdentityMatch> match_by_rules(const KeyInstances& instances,
                                                const std::string& product_name);
    std::optional<IdentityMatch> match_by_name(const std::string& key);
    const PluginTableRow& make_row(const KeyInstances& instances, std::size_t place,
                                   const PluginTableRow* known);
    const PluginTableRow& keep(PluginTableRow row);
    void keep_on_vst3(const KeyInstances& instances, const std::string& display_name);
    void tell(const std::string& key, const std::string& fx_name, std::string_view why,
              const char* more = "");
    const ScanEntry& entry(std::size_t place) const { return input_.scan.entries()[place]; }

    const MatchInput& input_;
    IdentityFindings& findings_;
    TextBuffer& out_;
    std::size_t next_name_ = 0;  ///< keys and names come in one order
    std::unordered_map<std::string, std::optional<IdentityMatch>>
        by_session_name_;  ///< letters, digits
    RowsByKey rows_;
};

void MatchRun::tell(const std::string& key, const std::string& fx_name, std::string_view why,
                    const char* more) {
    out_.print("    %s -> %-46s [%s%s]\n", key.c_str(), fx_name.c_str(), std::string(why).c_str(),
               more);
}

void MatchRun::keep_on_vst3(const KeyInstances& instances, const std::string& display_name) {
    findings_.kept_on_vst3[instances.key] = {display_name, instances.count};
}

/// Keys come in their order, so each stands behind all others.
const PluginTableRow& MatchRun::keep(PluginTableRow row) {
    std::string key = row.code;
    return rows_.emplace_hint(rows_.end(), std::move(key), std::move(row))->second;
}

const PluginTableRow& MatchRun::make_row(const KeyInstances& instances, std::size_t place,
                                         const PluginTableRow* known) {
    const std::string& key = instances.key;
    const ScanEntry& found = entry(place);
    ReaperName name = reaper_name(found);
    PluginTableRow row;
    row.code = key;
    row.productName = known != nullptr ? known->productName : found.shortName;
    row.fxName = std::move(name.fx_name);
    row.file = known != nullptr ? file_as_known(found.file, known->file) : found.file;
    row.ident = std::move(name.ident);
    row.pinsIn = instances.keyed ? keyed_pins_in : default_pins;
    row.tailWord = found_tail_word;
    row.fabName = program_name_for(key);
    return keep(std::move(row));
}

bool MatchRun::take_kontakt(const KeyInstances& instances, const PluginTableRow& known) {
    const KontaktBuilds builds = find_kontakt(input_.scan.entries());
    if (!input_.prefer_vst3 && builds.vst2) return false;
    if (!builds.measured && (builds.vst2 || !builds.predicted)) return false;
    const bool predicted = !builds.measured;
    const std::size_t place = predicted ? *builds.predicted : *builds.measured;
    const ScanEntry& found = entry(place);
    const ReaperName name = reaper_name(found);
    PluginTableRow row = known;
    row.fxName = name.fx_name;
    row.file = file_as_known(found.file, known.file);
    row.ident = name.ident;
    row.tailWord = found_tail_word;
    if (const std::int32_t outputs = outputs_in_name(found.name)) row.pinsOut = outputs;
    keep(std::move(row));
    findings_.kontakt = {found.name, instances.count, predicted};
    tell(instances.key, name.fx_name,
         predicted ? "predicted: written the way Kontakt 7 takes them"
                   : "Kontakt 7 takes Kontakt 6's settings, measured");
    return true;
}

/// For a plug-in whose VST3 we know by heart, and a user who wants VST2s.
void MatchRun::move_to_vst2(const KeyInstances& instances, const PluginTableRow& known) {
    const std::string& key = instances.key;
    const bool knows_vst3 = known.ident.find('{') != std::string::npos;
    const bool re_framed = !known.headerTemplate.empty() || !known.trailer.empty();
    if (!knows_vst3 || re_framed || key.size() == shell_key_characters) return;
    const auto twin = match_by_code(input_.scan, key, known.productName, false);
    if (!twin || entry(twin->entry).isClap || is_vst3_build(entry(twin->entry)) ||
        is_x86(entry(twin->entry))) {
        return;
    }
    if (!instances.fits_both_builds) {
        keep_on_vst3(instances, known.productName);
        tell(key, known.fxName, "kept on VST3: its VST2 build cannot take these settings");
        return;
    }
    const PluginTableRow& row = make_row(instances, twin->entry, &known);
    findings_.moved_to_vst2.insert(key);
    tell(key, row.fxName, "--prefer-vst2 over the table row");
}

std::optional<IdentityMatch> MatchRun::match_by_rules(const KeyInstances& instances,
                                                      const std::string& product_name) {
    const std::string& key = instances.key;
    if (key.size() == shell_key_characters) return match_in_shell(input_.scan, key);
    if (key.size() != code_characters) return std::nullopt;
    const bool stays_on_vst3 = !input_.prefer_vst3 && key.starts_with(fabfilter_makers_code) &&
                               !instances.fits_both_builds;
    auto found = match_by_code(input_.scan, key, product_name, input_.prefer_vst3 || stays_on_vst3);
    if (!stays_on_vst3 || !found || !is_vst3_build(entry(found->entry))) return found;
    const auto vst2 = match_by_code(input_.scan, key, product_name, false);
    if (!vst2 || is_vst3_build(entry(vst2->entry))) return found;
    const std::string maker = "FabFilter ";
    const std::string& name = entry(found->entry).shortName;
    keep_on_vst3(instances, name.starts_with(maker) ? name : maker + name);
    found->rule = "kept on VST3: its VST2 build cannot take these settings";
    return found;
}

std::optional<IdentityMatch> MatchRun::match_by_name(const std::string& key) {
    if (key.size() != code_characters || is_stock(key)) return std::nullopt;
    const NamesByCode& names = input_.session_names;
    while (next_name_ < names.size() && names[next_name_].first < key) ++next_name_;
    if (next_name_ == names.size() || names[next_name_].first != key) return std::nullopt;
    std::string name = lower_alnum(names[next_name_].second);
    if (!input_.scan.may_be_named(name)) return std::nullopt;
    const auto [match, is_new] = by_session_name_.try_emplace(std::move(name));
    if (is_new) match->second = match_by_session_name(input_.scan, match->first);
    return match->second;
}

/// A build that we know by heart is left only for another Kontakt, or on demand.
void MatchRun::leave_known(const KeyInstances& instances, const PluginTableRow& known) {
    if (instances.key == kontakt_code && take_kontakt(instances, known)) return;
    if (!input_.prefer_vst3) move_to_vst2(instances, known);
}

/// By the rules and by name, for a plug-in that we know no build of.
std::optional<IdentityMatch> MatchRun::look_up(const KeyInstances& instances) {
    const PluginTableRow* known = row_in(input_.built_in.rows, instances.key);
    if (has_build(known) || input_.learned.contains(instances.key)) return std::nullopt;
    const auto found = match_by_rules(instances, known != nullptr ? known->productName : "");
    return found || known != nullptr ? found : match_by_name(instances.key);
}

void MatchRun::take(const KeyInstances& instances, IdentityMatch found,
                    const PluginTableRow* name_only) {
    const ScanEntry& build = entry(found.entry);
    const bool without_class = build.isVst3 && build.classId.empty();
    if (without_class) findings_.without_class.insert(instances.key);
    tell(instances.key, make_row(instances, found.entry, name_only).fxName, found.rule,
         without_class ? ", VST3 class id unknown - marker only" : "");
}

/// The entries of a long list are met in no order of theirs: each is called for some rows ahead of
/// its own, and its texts when it has come.
[[gnu::always_inline]] inline void MatchRun::fetch_entries(const Matches& found,
                                                           std::size_t row) const {
    constexpr std::size_t entry_ahead = 16;
    constexpr std::size_t texts_ahead = entry_ahead / 2;
    if (row + entry_ahead >= found.size()) return;
    if (const auto& match = found[row + entry_ahead]) {
        fetch_ahead(&entry(match->entry), sizeof(ScanEntry));
    }
    if (const auto& match = found[row + texts_ahead]) {
        const ScanEntry& build = entry(match->entry);
        for (const std::string* text : {&build.file, &build.name, &build.classId}) {
            fetch_ahead(text->data(), text->size());
        }
    }
}

// All are looked up before the first row is made: so a long list's tables stay in the processor's
// cache, which thousands of rows would drive them out of.
RowsByKey MatchRun::run() {
    if (input_.scan.empty()) return {};
    Matches found;
    found.reserve(input_.instances.size());
    for (const auto& instances : input_.instances) found.push_back(look_up(instances));
    for (std::size_t i = 0; i < found.size(); ++i) {
        fetch_entries(found, i);
        const KeyInstances& instances = input_.instances[i];
        const PluginTableRow* known = row_in(input_.built_in.rows, instances.key);
        if (found[i]) {
            take(instances, *found[i], known);
        } else if (has_build(known)) {
            leave_known(instances, *known);
        }
    }
    if (rows_.empty()) out_.print("    (nothing new matched)\n");
    return std::move(rows_);
}

}  // namespace

InstancesByKey instances_by_key(const std::vector<PluginInsert>& inserts) {
    InstancesByKey single;
    std::vector<KeyPlace> places;
    single.reserve(inserts.size());
    places.reserve(inserts.size());
    for (const PluginInsert& insert : inserts) {
        const std::size_t place = single.size();
        single.push_back({.key = insert_key(insert),
                          .first_insert = place,
                          .count = 1,
                          .keyed = insert.keyInput >= 0,
                          .fits_both_builds = goes_to_both_builds(insert.containerKind)});
        places.push_back({beginning_of(single.back().key), place});
    }
    std::ranges::sort(places, [&](const KeyPlace& a, const KeyPlace& b) {
        if (a.key_beginning != b.key_beginning) return a.key_beginning < b.key_beginning;
        return std::pair(std::string_view(single[a.place].key), inserts[a.place].blockStart) <
               std::pair(std::string_view(single[b.place].key), inserts[b.place].blockStart);
    });
    InstancesByKey keys;
    keys.reserve(places.size());
    for (const KeyPlace& at : places) {
        KeyInstances& instance = single[at.place];
        if (keys.empty() || keys.back().key != instance.key) {
            keys.push_back(std::move(instance));
            continue;
        }
        KeyInstances& instances = keys.back();
        ++instances.count;
        instances.keyed = instances.keyed || instance.keyed;
        instances.fits_both_builds = instances.fits_both_builds && instance.fits_both_builds;
    }
    return keys;
}

RowsByKey match_plugins(const MatchInput& input, IdentityFindings& findings, TextBuffer& out) {
    return MatchRun(input, findings, out).run();
}

}  // namespace tanrove
