# A header of the building machine that comes first in a cross build compiles, and the program fails later.
function(plx_refuse_host_headers)
    if(NOT CMAKE_CROSSCOMPILING)
        return()
    endif()
    foreach(folder ${ARGN})
        if(folder MATCHES "^/usr/(local/)?(include|lib)(/|$)")
            message(FATAL_ERROR "Cross-compiling for ${CMAKE_SYSTEM_NAME}, but a package was found in ${folder}, "
                                "which holds headers of this machine. Use a toolchain file such as "
                                "cmake/toolchains/mingw-w64-x86_64.cmake in an empty build folder.")
        endif()
    endforeach()
endfunction()
