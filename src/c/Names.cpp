#include <bouncecheck/bouncecheck_c.h>

#include <cstddef>
#include <span>
#include <string_view>

#include <bouncecheck/bouncecheck.h>

#include "c/Structures.h"

namespace bouncecheck {
namespace {

// What the numbers of each enumeration mean to C; the last ones give away where one was added.
static_assert(BOUNCECHECK_OUTCOME_UNKNOWN == static_cast<int>(Outcome::unknown));
static_assert(BOUNCECHECK_REASON_OTHER == static_cast<int>(Reason::other));
static_assert(BOUNCECHECK_ADVICE_FIX == static_cast<int>(Advice::fix));
static_assert(BOUNCECHECK_SOURCE_RETURNED == static_cast<int>(RecipientSource::returned));
static_assert(BOUNCECHECK_BASIS_REPLY_CODE == static_cast<int>(ReasonBasis::replyCode));
static_assert(BOUNCECHECK_IN_REPORT == static_cast<int>(TextOf::report));
static_assert(BOUNCECHECK_ADDRESS_RETURNED == static_cast<int>(AddressSource::returned));
static_assert(static_cast<int>(BOUNCECHECK_TYPE_ABUSE) == static_cast<int>(BOUNCE_ABUSE));

/// The name of an enumerator; "" for a number that is none.
template <class Enumeration>
const char* nameUpTo(Enumeration last, int number) noexcept {
    if (number < 0 || number > static_cast<int>(last)) return "";
    return textOfLiteral(nameOf(static_cast<Enumeration>(number))).bytes;
}

/// A text of the row of a number; "" when there is no such row.
template <class Row>
const char* textOfRow(std::span<const Row> rows, int number, std::string_view Row::*text) noexcept {
    if (number < 0 || static_cast<std::size_t>(number) >= rows.size()) return "";
    return textOfLiteral(rows[static_cast<std::size_t>(number)].*text).bytes;
}

}  // namespace
}  // namespace bouncecheck

using namespace bouncecheck;

const char* bouncecheck_version() { return BOUNCECHECK_VERSION; }

const char* bouncecheck_status_text(int status) {
    switch (status) {
        case BOUNCECHECK_OK: return "ok";
        case BOUNCECHECK_OUT_OF_MEMORY: return "out of memory";
        case BOUNCECHECK_BAD_ARGUMENT: return "bad argument";
        case BOUNCECHECK_BAD_PATTERN: return "not a VERP pattern";
        case BOUNCECHECK_OUT_OF_RANGE: return "nothing at this index";
        case BOUNCECHECK_NO_RESULT: return "no message was classified";
        default: return "";
    }
}

const char* bouncecheck_type_name(int type) { return bounceTypeName(type); }
const char* bouncecheck_outcome_name(int outcome) { return nameUpTo(Outcome::unknown, outcome); }
const char* bouncecheck_reason_name(int reason) { return nameUpTo(Reason::other, reason); }
const char* bouncecheck_advice_name(int advice) { return nameUpTo(Advice::fix, advice); }
const char* bouncecheck_source_name(int source) {
    return nameUpTo(RecipientSource::returned, source);
}
const char* bouncecheck_basis_name(int basis) { return nameUpTo(ReasonBasis::replyCode, basis); }

const char* bouncecheck_reason_meaning(int reason) {
    return textOfRow(allReasons(), reason, &ReasonMeaning::meaning);
}
const char* bouncecheck_reason_action(int reason) {
    return textOfRow(allReasons(), reason, &ReasonMeaning::action);
}
const char* bouncecheck_advice_meaning(int advice) {
    return textOfRow(allAdvices(), advice, &AdviceMeaning::meaning);
}
