# plx_precompile(std|test TARGET...): with PLX_PRECOMPILE, the targets take the headers of the standard library, and
# for tests those of GoogleTest too, from one compiled file. Without it each source shows that it includes what it
# needs, so builds for people leave it off.
option(PLX_PRECOMPILE "Precompile common headers, for builds that happen once" OFF)

function(plx_precompile kind)
    if(NOT PLX_PRECOMPILE)
        return()
    endif()
    set(host plx_headers_${kind})
    if(NOT TARGET ${host})
        set(headers <algorithm> <array> <cmath> <cstdint> <cstdio> <cstdlib> <cstring> <filesystem> <fstream>
                    <functional> <limits> <map> <memory> <optional> <set> <sstream> <string> <string_view>
                    <utility> <vector>)
        set(source ${PROJECT_BINARY_DIR}/${host}.cpp)
        file(CONFIGURE OUTPUT ${source} CONTENT "// Carries the precompiled headers.\n")
        add_library(${host} OBJECT ${source})
        target_link_libraries(${host} PRIVATE plx_flags)
        if(kind STREQUAL "test")
            list(APPEND headers <gmock/gmock.h> <gtest/gtest.h>)
            target_link_libraries(${host} PRIVATE GTest::gtest GTest::gmock)
        endif()
        target_precompile_headers(${host} PRIVATE ${headers})
    endif()
    foreach(target ${ARGN})
        target_precompile_headers(${target} REUSE_FROM ${host})
    endforeach()
endfunction()
