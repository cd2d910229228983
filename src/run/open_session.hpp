// The door of every conversion: from a path to a decrypted session, or to the words that say why
// not.
#pragma once

#include <memory>
#include <optional>

#include "ptformat/ptformat.hpp"
#include "run/run_options.hpp"
#include "session/damage_scan.hpp"
#include "session/session_image.hpp"

namespace tanrove {

/// An open session. `image` shows bytes that `file` owns, so the two live and move together.
struct OpenedSession {
    std::unique_ptr<PTFFormat> file;
    SessionImage image;
};

/// Opens `options.session_path` at the session's own rate. nullopt if the session is refused: the
/// console then tells why, and where no other words fit, the problem record says "unreadable".
std::optional<OpenedSession> openSession(const RunOptions& options);

/// Prints the warning of a damaged or incomplete file; under `check_only` its word first.
void tell_damage(const DamageReport& damage, bool check_only);

}  // namespace tanrove
