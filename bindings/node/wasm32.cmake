# The toolchain file of CMake for WebAssembly, from Debian's packages: Clang for WASI, since the
# C++ library of the Emscripten in Debian 12 lacks the algorithms of std::ranges.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_CXX_COMPILER_TARGET wasm32-wasi)
set(CMAKE_AR llvm-ar-19)
set(CMAKE_RANLIB llvm-ranlib-19)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
# The C++ library for WebAssembly is built without exceptions: where one would be thrown,
# the module stops.
set(CMAKE_CXX_FLAGS_INIT "-fignore-exceptions")
