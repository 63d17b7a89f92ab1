#include <cstddef>

// What the C++ library for WebAssembly leaves out. It is built without exceptions and threads.
extern "C" {

/// Called where an exception would be thrown, which is when memory runs out: the module stops.
void* __cxa_allocate_exception(std::size_t) noexcept { __builtin_trap(); }
void __cxa_throw(void*, void*, void (*)(void*)) { __builtin_trap(); }

/// What a thread keeps stays as long as the module, whose only thread never ends.
int __cxa_thread_atexit(void (*)(void*), void*, void*) noexcept { return 0; }

}  // extern "C"
