#pragma once

#include <bouncecheck/Export.h>

namespace bouncecheck {

/// The base of objects that the library creates and hands to a caller, who
/// then owns them and releases them with `deleteObject`.
class BOUNCECHECK_EXPORT BrixelObject {
public:
    BrixelObject() = default;
    BrixelObject(const BrixelObject&) = delete;
    BrixelObject& operator=(const BrixelObject&) = delete;
    virtual ~BrixelObject() = default;

    /// Releases an object that was handed out; null is let pass. Never for an
    /// object on the stack or one that belongs to another.
    static void deleteObject(BrixelObject* obj) noexcept { delete obj; }
};

/// Owns an object that was handed out until the end of a scope.
struct BrixelDeleter {
    void operator()(BrixelObject* obj) const noexcept { BrixelObject::deleteObject(obj); }
};

}  // namespace bouncecheck
