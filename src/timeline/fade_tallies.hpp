// What binding and shaping fades counts for the account.
#pragma once

namespace tanrove {

struct FadeTallies {
    int fade_ins = 0;
    int fade_outs = 0;
    int crossfades = 0;
    int without_edge = 0;        ///< no clip of their track ends or begins where they lie
    int not_understood = 0;      ///< rows whose record is missing or unusable
    int approximated = 0;        ///< sides that take the nearest REAPER shape, though it differs
    int approximated_steps = 0;  ///< of `approximated`: steps, where a REAPER fade slopes
    int unmeasured = 0;          ///< sides whose curve nobody has measured
    int neutral_s_curves = 0;    ///< S-curves without bend: straight lines
    double worst_db = 0;         ///< of `approximated` but the steps: farthest from Pro Tools
    bool plain_fades = false;    ///< the run keeps to REAPER's fades
};

}  // namespace tanrove
