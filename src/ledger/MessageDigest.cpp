#include "ledger/MessageDigest.h"

#include <nettle/sha2.h>

#include <cstdint>

#include "ledger/MessageIdentity.h"

namespace bouncecheck::ledger {
namespace {

class Sha256 final : public HashInput {
public:
    Sha256() { ::sha256_init(&state_); }

    void add(std::string_view text) override {
        ::sha256_update(&state_, text.size(), reinterpret_cast<const std::uint8_t*>(text.data()));
    }
    Digest result() {
        Digest digest;
        ::sha256_digest(&state_, digest.size(), reinterpret_cast<std::uint8_t*>(digest.data()));
        return digest;
    }

private:
    sha256_ctx state_{};
};

}  // namespace

Digest digestOf(std::string_view message) {
    Sha256 hash;
    addIdentity(hash, message);
    return hash.result();
}

Digest digestOfHeader(std::string_view beginning) {
    Sha256 hash;
    addIdentityOfHeader(hash, beginning);
    return hash.result();
}

}  // namespace bouncecheck::ledger
