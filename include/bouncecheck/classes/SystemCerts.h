#pragma once

#include <bouncecheck/Export.h>

namespace bouncecheck {

/// The certificate store of the system. Reading an attached message asks for
/// it, so that signed messages could be opened; no certificate is read today.
class SystemCerts {};

/// Gives access to the one store of the process.
class BOUNCECHECK_EXPORT SystemCertsHolder {
public:
    /// The store, which belongs to the process; null where there is none.
    SystemCerts* getSystemCertsPtr() noexcept;

    /// While one lives, the thread that made it finds no store: what a system
    /// without certificates looks like, for tests.
    class BOUNCECHECK_EXPORT Absence {
    public:
        Absence() noexcept;
        Absence(const Absence&) = delete;
        Absence& operator=(const Absence&) = delete;
        ~Absence();
    };
};

}  // namespace bouncecheck
