# Builds for 64-bit Windows with MinGW-w64 (posix threads). The libraries are those that
# tools/windows/libraries.sh has built; it names their folder in SONTARO_WINDOWS_LIBRARIES.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(host x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${host}-gcc-posix)
set(CMAKE_CXX_COMPILER ${host}-g++-posix)
set(CMAKE_RC_COMPILER ${host}-windres)

set(CMAKE_FIND_ROOT_PATH $ENV{SONTARO_WINDOWS_LIBRARIES} /usr/${host})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_FIND_LIBRARY_SUFFIXES .a)  # no import library of a DLL
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
