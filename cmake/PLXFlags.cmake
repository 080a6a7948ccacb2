# Flags that every target of the project shares: link to plx_flags.
add_library(plx_flags INTERFACE)
target_compile_features(plx_flags INTERFACE cxx_std_20)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

target_compile_options(plx_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion
    # Outputs are compared as text, so every compiler must round the same way.
    -ffp-contract=off)
# The x87 unit rounds in its own way, too.
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86")
    target_compile_options(plx_flags INTERFACE -msse2 -mfpmath=sse)
endif()
# Result files pass 4 GiB also where off_t is 32 bits wide by default.
target_compile_definitions(plx_flags INTERFACE _FILE_OFFSET_BITS=64)

if(WIN32)
    # Programs find the library beside them.
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endif()

if(PLX_WARNINGS_AS_ERRORS)
    target_compile_options(plx_flags INTERFACE -Werror)
endif()
if(PLX_SANITIZE)
    target_compile_options(plx_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                               -fno-omit-frame-pointer)
    target_link_options(plx_flags INTERFACE -fsanitize=address,undefined)
endif()
if(PLX_COVERAGE)
    target_compile_options(plx_flags INTERFACE --coverage)
    target_link_options(plx_flags INTERFACE --coverage)
endif()
if(PLX_BUILD_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "PLX_BUILD_FUZZ needs Clang, this is ${CMAKE_CXX_COMPILER_ID}")
    endif()
    target_compile_options(plx_flags INTERFACE -fsanitize=address,undefined,fuzzer-no-link
                                               -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(plx_flags INTERFACE -fsanitize=address,undefined)
endif()
