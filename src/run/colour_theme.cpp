// Asks the options, then the session.
#include "run/colour_theme.hpp"

namespace tanrove {

ColourTheme colour_theme(const RunOptions& options, const SessionVersion& version) {
    const bool session_is_dark = saved_after_2020_10(version);
    const bool is_chosen = options.theme_mode != theme_of_session;
    return {.dark = is_chosen ? options.theme_mode == theme_dark : session_is_dark,
            .chosen = is_chosen,
            .session_older = !session_is_dark};
}

}  // namespace tanrove
