# Programs, libraries and the compiler's own runtime go into one folder, because Windows looks for a program's libraries
# beside the program.
#
# The runtime stays shared. A host and the plug-in give each other std::string objects, throw and catch on both sides of
# a library and ask dynamic_cast about each other's classes; with a runtime linked into each, there would be two heaps,
# two sets of type information and two unwinders.

foreach(library libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
    execute_process(
        COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${library}"
        OUTPUT_VARIABLE file
        OUTPUT_STRIP_TRAILING_WHITESPACE
        COMMAND_ERROR_IS_FATAL ANY
    )
    # A name that comes back unchanged is one that the compiler does not know.
    if(IS_ABSOLUTE "${file}")
        file(COPY "${file}" DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    endif()
endforeach()
