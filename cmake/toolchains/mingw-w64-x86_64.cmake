# Windows (64 bits) from Debian: MinGW-w64 with posix threads, everything linked statically, programs run by Wine.
# HDF5 comes from tools/build_hdf5_mingw.sh, zlib from Debian.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

find_program(PLX_WINE NAMES wine64 PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(PLX_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${PLX_WINE})
endif()

# A library without its runtime beside it loads into any host.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)

# Headers and libraries of this machine are never those of Windows.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The one exception: libraries that are headers only and the same for every system. The modules let exactly
# these through.
list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/modules)
set(Eigen3_DIR /usr/share/eigen3/cmake CACHE PATH "Eigen's CMake files")

# Without its folder the machine's own h5cc would be asked.
if(NOT DEFINED PLX_HDF5_PREFIX)
    execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../../tools/build_hdf5_mingw.sh --print
                    OUTPUT_VARIABLE hdf5_prefix OUTPUT_STRIP_TRAILING_WHITESPACE)
    set(PLX_HDF5_PREFIX ${hdf5_prefix} CACHE PATH "Where HDF5 for Windows is installed")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES PLX_HDF5_PREFIX)
if(NOT EXISTS ${PLX_HDF5_PREFIX}/include/hdf5.h)
    message(FATAL_ERROR "There is no HDF5 for Windows in ${PLX_HDF5_PREFIX}: run tools/build_hdf5_mingw.sh first")
endif()
set(HDF5_DIR ${PLX_HDF5_PREFIX}/share/cmake CACHE PATH "HDF5's CMake files")
set(HDF5_USE_STATIC_LIBRARIES ON)
set(ZLIB_LIBRARY /usr/x86_64-w64-mingw32/lib/libz.a CACHE FILEPATH "Not the import library of a DLL")
