#pragma once

/// Marks what the shared library gives to programs, in C and in C++; the rest of it is hidden.
/// Macros, since attributes have no other names.
#if defined(__GNUC__)
#define BOUNCECHECK_EXPORT __attribute__((visibility("default")))
/// A private member of a class that is marked.
#define BOUNCECHECK_HIDDEN __attribute__((visibility("hidden")))
#else
#define BOUNCECHECK_EXPORT
#define BOUNCECHECK_HIDDEN
#endif
