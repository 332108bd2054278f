# Programs and libraries stand to each other in the build tree as they do once installed: bin/ beside lib/. So one search
# path, relative to the file that searches, holds for both, and a program finds its plug-in the same way in both. Nothing
# is ever looked for in the current folder or at an absolute path of the machine that built it.

# A project that includes this one has folders of its own.
if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()

file(RELATIVE_PATH TOUCHNAV_PROGRAMS_TO_LIBRARIES "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
cmake_path(APPEND CMAKE_RUNTIME_OUTPUT_DIRECTORY "${TOUCHNAV_PROGRAMS_TO_LIBRARIES}" OUTPUT_VARIABLE libraries)
cmake_path(NORMAL_PATH libraries OUTPUT_VARIABLE CMAKE_LIBRARY_OUTPUT_DIRECTORY)

set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/${TOUCHNAV_PROGRAMS_TO_LIBRARIES}")
