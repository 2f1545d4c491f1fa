# Links programs with lld, which takes a second where GNU ld takes half a minute for tests under MinGW-w64. For the
# folder that includes this and those below it; not for what users get.
if(WIN32 AND CMAKE_HOST_UNIX)
    # GCC for MinGW-w64 knows no other linker than its own, so clang calls lld. clang does not recognise "12-posix" as
    # a version of GCC: links make a root that it understands.
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
