// The account's sentences about mix, edit and VCA groups.
#include "report/account_groups.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

/// `      "Drums"  [VCA: Drum VCA]  ->  Kick, Snare`
void print_listed_group(TextBuffer& out, const ListedGroup& group) {
    out.print("      \"%s\"", shown_name(group.name).c_str());
    if (group.vca_master) out.print("  [VCA: %s]", shown_name(*group.vca_master).c_str());
    out.append("  ->  ");
    const char* separator = "";
    for (const auto& member : group.members) {
        out.append(separator + shown_name(member));
        separator = ", ";
    }
    out.append("\n");
}

void print_vcas(TextBuffer& out, const GroupTallies& tallies) {
    print_count(out, count_of(tallies.vca_written),
                "      %d VCA group(s) written as REAPER VCA links. The master is\n"
                "      an empty track carrying its Pro Tools fader; members follow\n"
                "      it without their own faders moving, as in Pro Tools.\n");
    for (const auto& vca : tallies.vca_written) {
        out.print("        VCA master \"%s\" at %+.1f dB\n", shown_name(vca.master).c_str(),
                  vca.fader_db);
    }
    if (tallies.vca_without_master.empty()) return;
    out.print(
        "      WARNING: %d VCA group(s) name a master this decoder could\n"
        "      not resolve, so nothing was written for them:\n",
        count_of(tallies.vca_without_master));
    out.append(one_name_a_line(tallies.vca_without_master, no_cap));
    out.append(
        "      Their members keep their own faders, which is what Pro Tools\n"
        "      shows, but the VCA's offset is NOT applied. Send this session\n"
        "      in -- the group points at a strip type not recognized here.\n");
}

void print_records_in_one_list(TextBuffer& out, const GroupTallies& tallies) {
    const bool any =
        print_count(out, count_of(tallies.in_one_list),
                    "  WARNING: %d group record(s) ignored -- they appeared only once,\n"
                    "      and a live group is listed in BOTH the Mix and the Edit list:\n");
    if (!any) return;
    out.append(one_name_a_line(tallies.in_one_list, no_cap));
    out.append("      Named rather than dropped silently, in case the assumption is wrong.\n");
}

void print_edit_groups(TextBuffer& out, const GroupTallies& tallies) {
    const bool any =
        print_count(out, count_of(tallies.edit_groups),
                    "  %d group(s) are EDIT groups and were deliberately not linked:\n");
    if (!any) return;
    out.append(one_name_a_line(tallies.edit_groups, no_cap));
    out.append(
        "      A Pro Tools Edit group links EDITING, not faders. Linking\n"
        "      its faders in REAPER would make tracks move together that\n"
        "      Pro Tools keeps independent -- a wrong mix rather than a\n"
        "      missing feature. Mix groups on this session still transfer.\n");
}

void print_groups_of_unknown_kind(TextBuffer& out, const GroupTallies& tallies) {
    const bool any =
        print_count(out, count_of(tallies.of_unknown_kind),
                    "  WARNING: %d group(s) have a type this decoder has not seen and\n"
                    "      were NOT linked:\n");
    if (!any) return;
    out.append(one_name_a_line(tallies.of_unknown_kind, no_cap));
    out.append(
        "      Pro Tools groups are Mix, Edit, or both -- 01, 00 and 02.\n"
        "      This session holds another value, so whether it links\n"
        "      faders is unknown and it was left alone. Please send the\n"
        "      session in -- this is a gap in the tool.\n");
}

}  // namespace

void print_groups(TextBuffer& out, const GroupTallies& tallies) {
    print_count(out, count_of(tallies.listed), "  %d mix/VCA group(s) decoded from the session:\n");
    for (const auto& group : tallies.listed) print_listed_group(out, group);
    print_count(out, tallies.written,
                "      %d written as REAPER fader-link group(s).\n"
                "      Volume, Mute, Solo and Automation Mode are linked where\n"
                "      the Pro Tools group links them.\n");
    print_vcas(out, tallies);
    print_count(out, tallies.past_last_bit,
                "      WARNING: %d group(s) past the first 32 were not written (REAPER\n"
                "      takes 64; groups 33 and up are not written yet).\n");
    print_records_in_one_list(out, tallies);
    print_count(out, tallies.with_master_fader,
                "  WARNING: %d group(s) include the MASTER FADER as a member:\n"
                "      REAPER's master is not an ordinary track and cannot join a\n"
                "      track group, so the master is NOT linked. The other members\n"
                "      of those groups still are. If you move them in REAPER the\n"
                "      master will stay put, which Pro Tools would not do.\n");
}

void print_unlinked_attributes(TextBuffer& out, const GroupTallies& tallies) {
    const bool any =
        print_count(out, count_of(tallies.unlinked_attributes),
                    "  %d group(s) link controls beyond volume, mute and solo that are not\n"
                    "      carried yet (Pro Tools attribute numbers shown):\n");
    if (!any) return;
    for (const auto& group : tallies.unlinked_attributes) {
        out.print("      \"%s\": ", shown_name(group.group).c_str());
        const char* separator = "";
        for (const int number : group.numbers) {
            out.print("%s#%d", separator, number);
            separator = ", ";
        }
        out.append("\n");
    }
}

void print_groups_left_alone(TextBuffer& out, const GroupTallies& tallies) {
    if (tallies.strips_differ) {
        out.print(
            "  WARNING: group membership NOT written. Pro Tools says this session\n"
            "      has %d strips; this decoder found %d. Group members are stored\n"
            "      as POSITIONS in that list, so a mismatch means every member ID\n"
            "      past the missing strip points at the WRONG TRACK.\n"
            "      Groups are named above but not applied. Send this session in --\n"
            "      it contains a strip type the decoder does not yet recognize.\n",
            tallies.strips_differ->stated, tallies.strips_differ->found);
    }
    print_edit_groups(out, tallies);
    print_groups_of_unknown_kind(out, tallies);
}

}  // namespace tanrove
