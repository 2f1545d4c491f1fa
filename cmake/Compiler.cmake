# Flags for all of our own targets, which link to `project_options`; third-party targets do not.
# Warnings are errors, except with compilers that nobody has tried yet.
option(QUORVANE_WARNINGS_ARE_ERRORS "Warnings in our own code are errors" ON)
add_library(project_options INTERFACE)

if(MSVC)
    # Callbacks of the host are extern "C" and may throw: /EHc- takes back what CMake's own /EHsc assumes of them.
    target_compile_options(project_options INTERFACE /W4 /permissive- /utf-8 /EHs /EHc-
        $<$<BOOL:${QUORVANE_WARNINGS_ARE_ERRORS}>:/WX>)
    target_compile_definitions(project_options INTERFACE _CRT_SECURE_NO_WARNINGS NOMINMAX WIN32_LEAN_AND_MEAN)
    # A runtime that needs no DLL beside Windows' own.
    set(CMAKE_MSVC_RUNTIME_LIBRARY MultiThreaded$<$<CONFIG:Debug>:Debug>)
else()
    target_compile_options(project_options INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wformat=2 -Wconversion -Wno-sign-conversion
        -Wnon-virtual-dtor -Woverloaded-virtual
        $<$<BOOL:${QUORVANE_WARNINGS_ARE_ERRORS}>:-Werror>
        # GCC 12 wrongly reports overlapping copies in std::string, and mistakes a source included by a unity
        # build for a header.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-subobject-linkage>)
endif()

if(MINGW)
    # Standard printf formats (%lld, %zu), and a runtime that needs no DLLs other than Windows' own.
    target_compile_definitions(project_options INTERFACE
        __USE_MINGW_ANSI_STDIO=1 _WIN32_WINNT=0x0601 UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
    # Without time stamps, the same sources produce the same bytes.
    add_link_options(-static -Wl,--no-insert-timestamp)
endif()

if(QUORVANE_SANITIZE)
    add_compile_options(-fsanitize=${QUORVANE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QUORVANE_SANITIZE})
    # In instrumented code GCC 12 reports false warnings inside the standard library.
    target_compile_options(project_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# For fuzzed code: the engine tracks its branches. The host's side is not instrumented, so that it adds no coverage.
set(fuzzed_code_options)
if(QUORVANE_FUZZERS)
    set(fuzzed_code_options -fsanitize=fuzzer-no-link)
endif()

if(UNIX)
    # Unique symbols would prevent a shared library from being unloaded, and ours is loaded and unloaded many times.
    target_compile_options(project_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
endif()
