# plx_headers_of_host(TARGET FOLDER): an imported target for one folder of headers of the building machine, and
# for nothing else that stands beside it.
function(plx_headers_of_host target folder)
    set(links ${CMAKE_BINARY_DIR}/headers_of_host/${folder})
    if(EXISTS /usr/include/${folder} AND NOT TARGET ${target})
        file(MAKE_DIRECTORY ${links})
        file(CREATE_LINK /usr/include/${folder} ${links}/${folder} SYMBOLIC)
        add_library(${target} INTERFACE IMPORTED)
        target_include_directories(${target} SYSTEM INTERFACE ${links})
    endif()
endfunction()
