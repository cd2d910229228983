// Holds the "C" locale while numbers are read and printed, whatever locale the host program is in:
// the same session has to give the same bytes everywhere.
#pragma once

#include <memory>

namespace tanrove {

/// While it lives, the calling thread reads and prints numbers by the rules of the "C" locale.
/// The destructor gives the thread its own locale back.
class CLocaleScope {
public:
    CLocaleScope();
    ~CLocaleScope();
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
    struct Held;
    std::unique_ptr<Held> held_;
};

}  // namespace tanrove
