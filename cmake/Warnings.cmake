# How this project compiles its own code: warnings for every target that links touchnav::warnings privately, and the
# sanitizers of TOUCHNAV_SANITIZE for everything in the tree.

add_library(touchnav-warnings INTERFACE)
add_library(touchnav::warnings ALIAS touchnav-warnings)

target_compile_options(touchnav-warnings INTERFACE
    -Wall
    -Wextra
    -Wpedantic
    -Wconversion
    -Wsign-conversion
    -Wshadow
    -Wswitch-enum
    -Wnon-virtual-dtor
    -Wold-style-cast
    -Wcast-align
    -Wunused
    -Woverloaded-virtual
    -Werror
    # Not -Wuseless-cast: it also rejects casts that only another platform's integer types need.
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond>
    $<$<CXX_COMPILER_ID:GNU>:-Wlogical-op>
    # When it optimises, g++ 12 reports these inside std::string and std::optional, where nothing is wrong.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
)

# Sanitizers have to cover every object of a program, the tests' own included, so they apply to the whole tree.
if(TOUCHNAV_SANITIZE)
    add_compile_options(
        -fsanitize=${TOUCHNAV_SANITIZE}
        # The check of virtual calls needs the type information of the component's classes at link time, which a program
        # that loads the plug-in does not have.
        -fno-sanitize=vptr
        -fno-sanitize-recover=all
        -fno-omit-frame-pointer
    )
    add_link_options(-fsanitize=${TOUCHNAV_SANITIZE})
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()
