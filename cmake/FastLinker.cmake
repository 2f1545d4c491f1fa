# Links programs with lld: a second instead of half a minute with GNU ld for tests under MinGW-w64. Applies to the
# including folder and those below it; not for what users get.
if(WIN32 AND CMAKE_HOST_UNIX AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC for MinGW-w64 supports only its own linker, so clang calls lld.
    find_program(QUORVANE_CLANG clang++ REQUIRED)
    include(${CMAKE_CURRENT_LIST_DIR}/MinGWRoot.cmake)
    set(CMAKE_CXX_LINK_EXECUTABLE "${QUORVANE_CLANG} --target=x86_64-w64-mingw32 --sysroot=${mingw_root} -fuse-ld=lld \
<LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES> -lpthread")
elseif(UNIX)
    add_link_options(-fuse-ld=lld)
endif()
