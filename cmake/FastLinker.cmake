# Links programs with lld: a second instead of half a minute with GNU ld for tests under MinGW-w64. Applies to the
# including folder and those below it; not for what users get.
if(WIN32 AND CMAKE_HOST_UNIX)
    # GCC for MinGW-w64 supports only its own linker, so clang calls lld. clang does not recognise "12-posix" as a GCC
    # version, so symbolic links provide a root that it understands.
    find_program(QUORVANE_CLANG clang++ REQUIRED)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name
        OUTPUT_VARIABLE libgcc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    get_filename_component(libgcc_folder ${libgcc} DIRECTORY)
    set(lld_root ${CMAKE_BINARY_DIR}/lld_root)
    file(MAKE_DIRECTORY ${lld_root}/lib/gcc/x86_64-w64-mingw32)
    file(CREATE_LINK ${libgcc_folder} ${lld_root}/lib/gcc/x86_64-w64-mingw32/12 SYMBOLIC)
    file(CREATE_LINK ${CMAKE_FIND_ROOT_PATH} ${lld_root}/x86_64-w64-mingw32 SYMBOLIC)
    set(CMAKE_CXX_LINK_EXECUTABLE "${QUORVANE_CLANG} --target=x86_64-w64-mingw32 --sysroot=${lld_root} -fuse-ld=lld \
<LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES> -lpthread")
elseif(UNIX)
    add_link_options(-fuse-ld=lld)
endif()
