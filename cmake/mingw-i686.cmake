# Builds for 32-bit Windows with Debian's cross compiler.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)
set(TAMRIX_WIDL i686-w64-mingw32-widl)

# wxWidgets as scripts/windows.sh builds it.
set(cache $ENV{XDG_CACHE_HOME})
if(NOT cache)
    set(cache $ENV{HOME}/.cache)
endif()
set(windows_wx ${cache}/tamrix/wx-i686-2)
set(wxWidgets_CONFIG_EXECUTABLE ${windows_wx}/bin/wx-config)

# Doubles are rounded after every operation, as everywhere else; the old registers of this processor would not. The
# realignment is for hosts that call with a stack aligned to 4 bytes.
# This compiler's -Wrestrict takes joined texts for overlapping copies.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign -Wno-restrict")
# One file, without libraries of the compiler beside it.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")

set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32 ${windows_wx})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
