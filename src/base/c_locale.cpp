// The "C" locale for the calling thread, by the means each platform has.
#include "base/c_locale.hpp"

#include <clocale>
#include <string>
#if __has_include(<xlocale.h>)
#include <xlocale.h>  // where macOS has newlocale
#endif

namespace tanrove {

#if defined(_WIN32)

struct CLocaleScope::Held {
    int per_thread = _configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
    std::string former = std::setlocale(LC_ALL, nullptr);
};

CLocaleScope::CLocaleScope() : held_(std::make_unique<Held>()) {
    std::setlocale(LC_ALL, "C");
}

CLocaleScope::~CLocaleScope() {
    std::setlocale(LC_ALL, held_->former.c_str());
    _configthreadlocale(held_->per_thread);
}

#else

struct CLocaleScope::Held {
    locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    locale_t former = uselocale(plain);
};

CLocaleScope::CLocaleScope() : held_(std::make_unique<Held>()) {}

CLocaleScope::~CLocaleScope() {
    uselocale(held_->former);
    if (held_->plain != nullptr) freelocale(held_->plain);
}

#endif

}  // namespace tanrove
