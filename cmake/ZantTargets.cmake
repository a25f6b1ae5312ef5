# The two library targets and the settings that every target of the tree shares.

# What is built lies as it is installed, so that the program finds the loopback engine by the same relative path in both.
if(ZANT_IS_TOP_LEVEL)
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
    set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})
    set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})
endif()
set(ZANT_ENGINES_SUBDIR ${CMAKE_INSTALL_LIBDIR}/zant)
set(ZANT_LOOPBACK_SUBDIR ${ZANT_ENGINES_SUBDIR}/loopback)
set(ZANT_PREVIEW_SUBDIR ${ZANT_ENGINES_SUBDIR}/preview)

# Numbers, geometry and pixels are defined operation by operation: whatever flags a host builds the tree with, nothing is
# contracted to fused operations or reordered, and a NaN stays one. Square roots set no errno, so that they are the
# processor's: those of mingw's library are rounded twice. These flags stand after the host's.
set(ZANT_EXACT_ARITHMETIC -fno-fast-math -fno-unsafe-math-optimizations -fno-finite-math-only -ffp-contract=off
    -fno-math-errno)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    list(APPEND ZANT_EXACT_ARITHMETIC -Wno-overriding-t-option)  # taking back a host's flag is what they are for
endif()

# Which sources of own/ are built; no other folder asks for the platform.
if(WIN32)
    set(ZANT_PLATFORM windows)
    enable_language(RC)
else()
    set(ZANT_PLATFORM posix)
endif()

# The groups of the catalogue: a source of typed functions each, and a header of commands for scenes.
set(ZANT_GROUPS geometry looks lights rendering files)

# Sources of the tree include from its root.
include_directories(${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/generated)

# Exact arithmetic, strict warnings and the language standard, for every target.
add_library(zant_settings INTERFACE)
target_compile_features(zant_settings INTERFACE cxx_std_17 c_std_99)
target_compile_options(zant_settings INTERFACE
    ${ZANT_EXACT_ARITHMETIC} -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
    $<$<BOOL:${ZANT_WERROR}>:-Werror>)

# The same for what hosts link, whose packages must not ask for zant_settings.
function(zant_apply_settings target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_compile_options(${target} PRIVATE $<TARGET_PROPERTY:zant_settings,INTERFACE_COMPILE_OPTIONS>)
    set_target_properties(${target} PROPERTIES
        POSITION_INDEPENDENT_CODE ON
        C_VISIBILITY_PRESET hidden
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# What a library's hosts see of the headers, <zant/client/zant.h> and "client/zant.h".
function(zant_host_headers target)
    target_include_directories(${target} INTERFACE
        $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
        $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include/zant>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zant>)
endfunction()

# The classes and typed command functions; the folders add their sources.
add_library(zantclient STATIC)
add_library(Zant::client ALIAS zantclient)
set_target_properties(zantclient PROPERTIES EXPORT_NAME client)
zant_apply_settings(zantclient)
zant_host_headers(zantclient)
target_compile_options(zantclient PRIVATE -ffunction-sections -fdata-sections)
target_compile_definitions(zantclient PRIVATE ZANT_ENGINE_SUFFIX="${ZANT_ENGINE_SUFFIX}"
    PUBLIC $<$<BOOL:${ZANT_PLAIN_CODE}>:ZANT_PLAIN_CODE>)
target_link_libraries(zantclient PUBLIC ${CMAKE_DL_LIBS})
# A plug-in that is built without optimisation exports the inline functions of our headers. Its own calls stay inside it:
# two plug-ins in one host would otherwise share them, and crash when the first one leaves.
target_link_options(zantclient INTERFACE
    "$<$<IN_LIST:$<TARGET_PROPERTY:TYPE>,MODULE_LIBRARY;SHARED_LIBRARY>:LINKER:-Bsymbolic-functions>")

# The face <zant/zant.hpp>: headers over the client, and nothing to link beside it.
add_library(zantmodern INTERFACE)
add_library(Zant::modern ALIAS zantmodern)
set_target_properties(zantmodern PROPERTIES EXPORT_NAME modern)
target_link_libraries(zantmodern INTERFACE zantclient)

# The shared library: the sixteen exported C functions and nothing else.
add_library(zant SHARED)
add_library(Zant::zant ALIAS zant)
set_target_properties(zant PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    LINK_DEPENDS ${PROJECT_SOURCE_DIR}/client/capi/zant.map)
zant_apply_settings(zant)
zant_host_headers(zant)
target_link_libraries(zant PRIVATE $<BUILD_INTERFACE:zantclient>)
target_link_options(zant PRIVATE
    -Wl,--version-script=${PROJECT_SOURCE_DIR}/client/capi/zant.map -Wl,--gc-sections
    $<$<NOT:$<BOOL:${ZANT_SANITIZED}>>:-Wl,--no-undefined>)

# The sixteen C functions for a host that links statically, whole in one file: what of the client they need is in it. The
# C names are in no other static library, so that a plug-in that links Zant::client has none of them.
add_library(zant_static STATIC $<FILTER:$<TARGET_OBJECTS:zantclient>,EXCLUDE,/protos_>)
add_library(Zant::zant_static ALIAS zant_static)
set_target_properties(zant_static PROPERTIES OUTPUT_NAME zant)
zant_apply_settings(zant_static)
zant_host_headers(zant_static)
target_compile_definitions(zant_static PRIVATE ZANT_STATIC)
target_link_libraries(zant_static PUBLIC ${CMAKE_DL_LIBS} INTERFACE stdc++ m)  # named, since a C project links it
