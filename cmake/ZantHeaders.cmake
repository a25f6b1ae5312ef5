# Hosts see a copy of the public headers, in the build tree as in an installed one: include/zant/, made by
# StageHeaders.cmake. The tree's own sources see the headers where they are.
set(ZANT_HOST_HEADERS ${PROJECT_BINARY_DIR}/include)

set(folders own client modern)
if(TARGET zanttestkit)
    list(APPEND folders testkit)
endif()
set(headers)
foreach(folder IN LISTS folders)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/${folder}/*.h)
    list(APPEND headers ${found})
endforeach()
set(ZANT_INTERNAL_HEADERS bits childprocess decimaltables dlplatform environment lentblock libraryheader numbertext
    regularfile replacement stopsignals streams wide)
list(JOIN ZANT_INTERNAL_HEADERS "|" internal)
list(FILTER headers EXCLUDE REGEX "/generator/|^own/(${internal})[.]h")

list(TRANSFORM headers PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE sources)
foreach(record eventrecords rayrecords)  # for listeners of windows, and for hosts that cast rays
    list(APPEND headers engines/${record}.h)
    list(APPEND sources ${PROJECT_SOURCE_DIR}/engines/records/${record}.h)
endforeach()
list(APPEND headers client/protos/protos.h zant.h zant.hpp)
list(APPEND sources ${PROJECT_BINARY_DIR}/generated/client/protos/protos.h ${PROJECT_SOURCE_DIR}/cmake/zant.h
    ${PROJECT_SOURCE_DIR}/modern/zant.hpp)
foreach(group ${ZANT_GROUPS})
    list(APPEND headers modern/commands/${group}.h)
    list(APPEND sources ${PROJECT_BINARY_DIR}/generated/modern/commands/${group}.h)
endforeach()
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/headers.cmake CONTENT
    "set(headers ${headers})\nset(sources ${sources})\nset(target ${ZANT_HOST_HEADERS}/zant)\n")

set(stamp ${PROJECT_BINARY_DIR}/headers.stamp)
add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -P ${PROJECT_SOURCE_DIR}/cmake/StageHeaders.cmake ${PROJECT_BINARY_DIR}/headers.cmake
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${sources} zant_vocabulary ${PROJECT_BINARY_DIR}/headers.cmake
        ${PROJECT_SOURCE_DIR}/cmake/StageHeaders.cmake
    COMMENT "Laying out the headers for hosts"
    VERBATIM)
add_custom_target(zant_headers ALL DEPENDS ${stamp})
add_dependencies(zantclient zant_headers)
add_dependencies(zant zant_headers)
