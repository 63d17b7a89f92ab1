// Classifies messages while one allocation after the other fails: each time the
// failure comes out as std::bad_alloc, in C as a status, nothing is lost, and the
// classifier says of the next message what it says otherwise.
//
//   failing_allocations FILE...

#include <cstdio>
#include <fstream>
#include <iterator>
#include <new>
#include <string>
#include <utility>

#include <bouncecheck/LogTrace.h>
#include <bouncecheck/bouncecheck_c.h>
#include <bouncecheck/classes/BounceCheck.h>
#include <bouncecheck/classes/Email2.h>
#include "allocation/FailAllocation.h"

namespace {

std::pair<int, std::string> classify(bouncecheck::BounceCheck& check, const std::string& message) {
    bouncecheck::Email2 email(message);
    bouncecheck::StringBuffer address;
    bouncecheck::StringBuffer data;
    bouncecheck::LogTrace log;
    const int type = check.checkEmail(email, address, data, log);
    return {type, std::string(address.view())};
}

/// False when the classifier said something else after a failure.
bool survives(const std::string& message) {
    bouncecheck::BounceCheck check;
    const auto expected = classify(check, message);
    for (long failing = 0;; ++failing) {
        bouncecheck::failAllocation(failing);
        try {
            const bool same = classify(check, message) == expected;
            const bool none = bouncecheck::takeBackFailure();
            // A log that fails is no failure of the classifier.
            if (!same) return false;
            if (none) return true;
        } catch (const std::bad_alloc&) {
            bouncecheck::takeBackFailure();
        }
        if (classify(check, message) != expected) return false;
    }
}

/// The same in C, from the making of a classifier to its end.
bool survivesInC(const std::string& message) {
    for (long failing = 0;; ++failing) {
        bouncecheck_classifier* classifier = nullptr;
        bouncecheck_evidence evidence;
        bouncecheck_text field;
        bouncecheck::failAllocation(failing);
        int status = bouncecheck_classifier_new(&classifier);
        if (status == BOUNCECHECK_OK) {
            status = bouncecheck_classify(classifier, message.data(), message.size(),
                                          BOUNCECHECK_RECIPIENTS | BOUNCECHECK_FACTS);
        }
        if (status == BOUNCECHECK_OK) {
            status = bouncecheck_get_evidence(classifier, &evidence, sizeof evidence);
        }
        if (status == BOUNCECHECK_OK) {
            status = bouncecheck_get_field(classifier, "subject", 7, &field);
        }
        const bool none = bouncecheck::takeBackFailure();
        bouncecheck_classifier_free(classifier);
        if (status != (none ? BOUNCECHECK_OK : BOUNCECHECK_OUT_OF_MEMORY)) return false;
        if (none) return true;
    }
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        const std::string message{std::istreambuf_iterator<char>(file), {}};
        if (survives(message) && survivesInC(message)) continue;
        std::fprintf(stderr, "%s: another verdict after a failed allocation\n", argv[i]);
        return 1;
    }
    return argc > 1 ? 0 : 2;
}
