# What our own builds ask for. Nothing of it reaches a program that embeds the
# library: the options are off unless a preset turns them on.
add_library(bouncecheck_developer INTERFACE)

if(BOUNCECHECK_STRICT)
    target_compile_options(bouncecheck_developer INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
        # GCC 12 sees overlapping copies in any string addition (GCC bug 105651).
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
endif()

if(BOUNCECHECK_SANITIZE)
    target_compile_options(bouncecheck_developer INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(bouncecheck_developer INTERFACE -fsanitize=address,undefined)
endif()

if(BOUNCECHECK_TSAN)
    target_compile_options(bouncecheck_developer INTERFACE -fsanitize=thread)
    target_link_options(bouncecheck_developer INTERFACE -fsanitize=thread)
endif()

if(BOUNCECHECK_FUZZ)
    # libFuzzer sees which branches an input takes.
    target_compile_options(bouncecheck_developer INTERFACE -fsanitize=fuzzer-no-link)
endif()
