# mingw_root: Debian's MinGW-w64 as clang wants to find it. clang does not recognise "12-posix" as a version of GCC:
# links make a root that it understands.
execute_process(COMMAND x86_64-w64-mingw32-g++-posix -print-libgcc-file-name
    OUTPUT_VARIABLE libgcc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(libgcc_folder ${libgcc} DIRECTORY)
set(mingw_root ${CMAKE_BINARY_DIR}/mingw_root)
file(MAKE_DIRECTORY ${mingw_root}/lib/gcc/x86_64-w64-mingw32)
file(CREATE_LINK ${libgcc_folder} ${mingw_root}/lib/gcc/x86_64-w64-mingw32/12 SYMBOLIC)
file(CREATE_LINK /usr/x86_64-w64-mingw32 ${mingw_root}/x86_64-w64-mingw32 SYMBOLIC)
