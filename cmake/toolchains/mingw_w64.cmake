# 64-bit Windows, by GCC on Linux: the posix variant of MinGW-w64, whose standard library supports threads.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(tools ${CMAKE_CURRENT_LIST_DIR}/../../tools)
execute_process(COMMAND ${tools}/qt-for-windows --where OUTPUT_VARIABLE ZTCAD_QT_FOR_WINDOWS
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${tools}/meshoptimizer-for-windows --where OUTPUT_VARIABLE meshoptimizer_for_windows
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

# only libraries and packages for Windows, never those of the build system
set(CMAKE_FIND_ROOT_PATH ${ZTCAD_QT_FOR_WINDOWS} ${meshoptimizer_for_windows} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${tools}/run-under-wine)
