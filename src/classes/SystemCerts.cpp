#include <bouncecheck/classes/SystemCerts.h>

namespace bouncecheck {
namespace {

thread_local int absences = 0;

}  // namespace

SystemCerts* SystemCertsHolder::getSystemCertsPtr() noexcept {
    static SystemCerts store;
    return absences > 0 ? nullptr : &store;
}

SystemCertsHolder::Absence::Absence() noexcept { ++absences; }
SystemCertsHolder::Absence::~Absence() { --absences; }

}  // namespace bouncecheck
