# cmake -DNM=... -DREADELF=... -DOBJDUMP=... -DLIBRARY=libzant.so -DSANITIZED=... -P exported_symbols.cmake
# Fails unless the shared library exports exactly the sixteen C functions, has the version name that hosts are linked
# to, and needs only the run-time libraries.
set(windows OFF)
if(LIBRARY MATCHES "[.]dll$")
    set(windows ON)
    execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE ".*\\[Ordinal/Name Pointer\\] Table[^\n]*\n" "" exported "${headers}")
    string(REGEX MATCHALL "\t\\[ *[0-9]+\\] [^\n]+" exported "${exported}")
    list(TRANSFORM exported REPLACE ".* " "")
else()
    execute_process(COMMAND ${NM} -D --defined-only --format=just-symbols ${LIBRARY}
        OUTPUT_VARIABLE exported OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "\n" ";" exported "${exported}")
endif()
list(SORT exported)

set(expected
    ZantCreateDirectProto ZantGetHostVersion ZantGetInfoInt ZantGetInfoString ZantGetLibApiVersion
    ZantInstanceGetObjectByName ZantInstanceGetStringSymbolValue ZantInstanceGetSymbolValue ZantInstanceParse
    ZantInstanceSendBackEvent ZantLibraryCreateInstance ZantLibraryCreateInstanceWithEventHandler ZantLibraryLoad
    ZantLibraryReleaseInstance ZantLibraryUnload ZantReleaseProto)
if(NOT exported STREQUAL expected)
    message(FATAL_ERROR "exported: ${exported}\nexpected: ${expected}")
endif()

if(windows)
    string(REGEX MATCHALL "DLL Name: [^\n]+" needed "${headers}")
    list(LENGTH needed count)
    foreach(library IN LISTS needed)
        if(NOT library MATCHES "KERNEL32[.]dll|msvcrt[.]dll")
            message(FATAL_ERROR "needs more than the system's libraries: ${library}")
        endif()
    endforeach()
    if(count EQUAL 0)
        message(FATAL_ERROR "no needed libraries found in:\n${headers}")
    endif()
    return()
endif()

execute_process(COMMAND ${READELF} -d ${LIBRARY} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
# docs/versions.md says when this name changes; then, and only then, it changes here.
if(NOT dynamic MATCHES "soname: \\[libzant\\.so\\.3\\]")
    message(FATAL_ERROR "the version name is not libzant.so.3 in:\n${dynamic}")
endif()
string(REGEX MATCHALL "\\(NEEDED\\)[^\n]*" needed "${dynamic}")
list(LENGTH needed count)
if(count EQUAL 0)
    message(FATAL_ERROR "no needed libraries found in:\n${dynamic}")
endif()
foreach(library IN LISTS needed)
    if(NOT SANITIZED AND NOT library MATCHES "\\[(libstdc\\+\\+|libc|libm|libgcc_s|libdl|ld-linux[^]]*)\\.so")
        message(FATAL_ERROR "needs more than the run-time libraries: ${library}")
    endif()
endforeach()
