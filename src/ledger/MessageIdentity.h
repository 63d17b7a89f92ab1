#pragma once

#include <string_view>

namespace bouncecheck::ledger {

/// A hash that is told what to hash piece by piece.
class HashInput {
public:
    virtual void add(std::string_view piece) = 0;

protected:
    ~HashInput() = default;
};

/// Adds what makes the message with these bytes the one it is: the same pieces for all deliveries
/// and copies of it. MessageDigest.h says what these are. Linear in the size of the message.
void addIdentity(HashInput& hash, std::string_view message);

/// The same of a message of which only the beginning was read: by its fields alone.
void addIdentityOfHeader(HashInput& hash, std::string_view beginning);

}  // namespace bouncecheck::ledger
