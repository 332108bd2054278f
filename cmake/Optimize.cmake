# How the two libraries are optimised. A touch frame crosses many small operations that live in source files of their
# own; these settings let the compiler see them together. None of them changes a result.

# Not for Windows, where g++ 12 then calls into nowhere when the library is loaded.
set(TOUCHNAV_IPO OFF)
if(UNIX)
    include(CheckIPOSupported)
    check_ipo_supported(RESULT TOUCHNAV_IPO LANGUAGES CXX OUTPUT TOUCHNAV_IPO_FAULT)
endif()

# touchnav_optimize(TARGET)
function(touchnav_optimize target)
    # Nobody replaces single functions of these libraries at load time, nobody reads errno after a square root, and
    # what one library calls in the other is bound when it is loaded.
    target_compile_options(${target} PRIVATE -fno-semantic-interposition -fno-math-errno)
    if(UNIX)
        target_compile_options(${target} PRIVATE -fno-plt)
    endif()
    if(TOUCHNAV_IPO)
        set_target_properties(${target} PROPERTIES
            INTERPROCEDURAL_OPTIMIZATION_RELEASE ON
            INTERPROCEDURAL_OPTIMIZATION_RELWITHDEBINFO ON
        )
        # Objects that are also linked elsewhere hold machine code too.
        get_target_property(type ${target} TYPE)
        if(type STREQUAL "OBJECT_LIBRARY" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            target_compile_options(${target} PRIVATE $<$<CONFIG:Release,RelWithDebInfo>:-ffat-lto-objects>)
        endif()
    endif()
endfunction()
