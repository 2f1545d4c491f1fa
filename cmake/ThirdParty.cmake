# Libraries for the tools and tests, all from Debian packages; on Windows libpng and zlib come with the compiler.
# The plug-in itself uses none of them.
#   third_party_headers   CLI11, nlohmann-json and stb, header only
#   PNG::PNG, ZLIB::ZLIB  libpng and zlib
#   gtest                 GoogleTest, built with our flags

set(QUORVANE_HEADER_FOLDER /usr/include CACHE PATH "Folder with CLI, nlohmann and stb as Debian's packages have them")
foreach(folder IN ITEMS CLI nlohmann stb)
    if(NOT EXISTS ${QUORVANE_HEADER_FOLDER}/${folder})
        message(FATAL_ERROR "${QUORVANE_HEADER_FOLDER}/${folder} is missing: "
            "install libcli11-dev, nlohmann-json3-dev and libstb-dev, or set QUORVANE_HEADER_FOLDER")
    endif()
endforeach()
set(third_party_include ${QUORVANE_HEADER_FOLDER})
if(NOT CMAKE_HOST_WIN32)
    # Found through symbolic links: a cross build must not see /usr/include.
    set(third_party_include ${CMAKE_BINARY_DIR}/third_party)
    file(MAKE_DIRECTORY ${third_party_include})
    foreach(folder IN ITEMS CLI nlohmann stb)
        file(CREATE_LINK ${QUORVANE_HEADER_FOLDER}/${folder} ${third_party_include}/${folder} SYMBOLIC)
    endforeach()
endif()
add_library(third_party_headers INTERFACE)
target_include_directories(third_party_headers SYSTEM INTERFACE ${third_party_include})

set(ZLIB_USE_STATIC_LIBS ${WIN32})
if(MINGW AND CMAKE_HOST_WIN32)
    set(CMAKE_FIND_LIBRARY_SUFFIXES .a)     # no DLLs other than Windows' own here either
endif()
find_package(ZLIB REQUIRED)

if(WIN32 AND NOT CMAKE_HOST_WIN32)
    # Debian packages no libpng for MinGW-w64, so its source package is built here.
    set(libpng_source ${CMAKE_SOURCE_DIR}/build/packages/libpng1.6)
    if(NOT EXISTS ${libpng_source}/png.c)
        message(FATAL_ERROR "${libpng_source} is missing: ./demo and ./check fetch it")
    endif()
    enable_language(C)
    set(PNG_SHARED OFF CACHE BOOL "" FORCE)
    set(PNG_TESTS OFF CACHE BOOL "" FORCE)
    set(SKIP_INSTALL_ALL ON)
    add_subdirectory(${libpng_source} third_party_build/libpng EXCLUDE_FROM_ALL SYSTEM)
    set_target_properties(png_static PROPERTIES UNITY_BUILD OFF)
    target_compile_options(png_static PRIVATE -O1)
    target_include_directories(png_static SYSTEM INTERFACE
        ${libpng_source} ${CMAKE_BINARY_DIR}/third_party_build/libpng)
    add_library(PNG::PNG ALIAS png_static)
else()
    find_package(PNG REQUIRED)
endif()

if(QUORVANE_BUILD_TESTS)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    add_subdirectory(/usr/src/googletest third_party_build/googletest EXCLUDE_FROM_ALL SYSTEM)
    target_compile_options(gtest PRIVATE -O0 -g0)
    if(QUORVANE_SANITIZE MATCHES "address")
        target_compile_options(gtest PRIVATE -fno-sanitize=all)
    endif()
endif()
