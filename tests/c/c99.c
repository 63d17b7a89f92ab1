/* That C can do what the header says; how the functions behave is tested in C++. */
#include <bouncecheck/bouncecheck_c.h>

#if BOUNCECHECK_VERSION_NUMBER < 200
#error "the number is that of another version"
#endif

/* The number of recipients that are to be suppressed. */
size_t count_suppressed(const void* mail, size_t size) {
    bouncecheck_classifier* classifier;
    bouncecheck_recipient who = {0};
    size_t i, count = 0;

    if (bouncecheck_classifier_new(&classifier) != BOUNCECHECK_OK) return 0;
    bouncecheck_classify(classifier, mail, size, BOUNCECHECK_RECIPIENTS | BOUNCECHECK_FACTS);
    for (i = 0; i < bouncecheck_recipient_count(classifier); ++i) {
        bouncecheck_get_recipient(classifier, i, &who, sizeof who);
        if (who.advice == BOUNCECHECK_ADVICE_SUPPRESS) ++count;
    }
    bouncecheck_classifier_free(classifier);
    return count;
}
