# Stages the files for users and builds the archive, the installer and their checksums. The same commit always produces
# the same bytes: all times in them are the commit's.
# The plug-in's symbols lie beside them, for a release to keep.
#   cmake -D NAME= -D VERSION= -D PLUGIN= -D SYMBOLS= -D IMPORTHOST= -D AVIREPAIR= -D TEXTS= -D SCRIPTS= -D LIBPNG=
#       -D OUTPUT= -P Package.cmake
cmake_minimum_required(VERSION 3.25)

set(archive ${NAME}-${VERSION}-win64)
set(stage ${OUTPUT}/${archive})
file(REMOVE_RECURSE ${OUTPUT})
file(MAKE_DIRECTORY ${stage})

# --- The time of the commit -------------------------------------------------------------------------------------

execute_process(COMMAND git log -1 --format=%ct WORKING_DIRECTORY ${SCRIPTS}
    OUTPUT_VARIABLE seconds OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT seconds)
    set(seconds 1767225600)     # sources without history: the start of 2026
endif()
set(ENV{SOURCE_DATE_EPOCH} ${seconds})
set(ENV{TZ} UTC)

# --- The tools -------------------------------------------------------------------------------------------------

foreach(tool IN ITEMS zip makensis)
    find_program(found_${tool} ${tool})
    if(NOT found_${tool})
        message(FATAL_ERROR "${tool} is missing: install the Debian packages zip and nsis")
    endif()
endforeach()

# --- The files --------------------------------------------------------------------------------------------------

# Licenses of what is linked into the programs, and of the plug-in's compiler runtime.
set(licenses "")
foreach(package IN ITEMS libcli11-dev nlohmann-json3-dev libstb-dev libz-mingw-w64-dev mingw-w64-x86-64-dev
                         gcc-mingw-w64-base)
    file(READ /usr/share/doc/${package}/copyright text)
    string(APPEND licenses "==== ${package}, as packaged by Debian ====\n\n${text}\n")
endforeach()
file(READ ${LIBPNG}/LICENSE text)
string(APPEND licenses "==== libpng ====\n\n${text}\n")
file(WRITE ${OUTPUT}/licenses.txt "${licenses}")
configure_file(${OUTPUT}/licenses.txt ${stage}/third-party-licenses.txt COPYONLY)
file(REMOVE ${OUTPUT}/licenses.txt)

file(COPY ${PLUGIN} ${IMPORTHOST} ${AVIREPAIR} ${TEXTS}/README.txt ${TEXTS}/log-on.reg ${TEXTS}/log-off.reg
     DESTINATION ${stage})

# --- The archive ------------------------------------------------------------------------------------------------

file(CHMOD_RECURSE ${stage} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
     WORLD_EXECUTE)
file(GLOB files ${stage}/*)
execute_process(COMMAND touch -d @${seconds} ${files} COMMAND_ERROR_IS_FATAL ANY)
file(GLOB names RELATIVE ${OUTPUT} ${stage}/*)
list(SORT names)
# Without access times and owners, which differ each time.
execute_process(COMMAND zip -q -9 -X ${archive}.zip ${names} WORKING_DIRECTORY ${OUTPUT} COMMAND_ERROR_IS_FATAL ANY)

# --- The installer ----------------------------------------------------------------------------------------------

execute_process(
    COMMAND makensis -V2 -WX -NOCD -DVERSION=${VERSION} -DSTAGE=${stage} -DOUTPUT=${OUTPUT}/${NAME}-${VERSION}-setup.exe
        ${SCRIPTS}/setup.nsi
    COMMAND_ERROR_IS_FATAL ANY)

# --- The checksums ----------------------------------------------------------------------------------------------

set(symbols ${NAME}-${VERSION}.prm.debug)
configure_file(${SYMBOLS} ${OUTPUT}/${symbols} COPYONLY)
set(sums "")
foreach(file IN ITEMS ${archive}.zip ${NAME}-${VERSION}-setup.exe ${symbols})
    file(SHA256 ${OUTPUT}/${file} sum)
    string(APPEND sums "${sum}  ${file}\n")
endforeach()
file(WRITE ${OUTPUT}/SHA256SUMS "${sums}")
message(STATUS "Packages in ${OUTPUT}:\n${sums}")
