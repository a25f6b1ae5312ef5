# Commands in text and binary: the peers that are installed take part.
zant_bench(commands SOURCES peers/text_peers.cpp peers/handwritten.cpp)
find_package(fmt QUIET)
if(fmt_FOUND)
    target_compile_definitions(commands_bench PRIVATE ZANT_BENCH_FMT)
    target_link_libraries(commands_bench PRIVATE fmt::fmt-header-only)
endif()

# zant_binary_peer(name GENERATED files LIBRARIES targets): generated code is compiled without this project's warnings.
function(zant_binary_peer name)
    cmake_parse_arguments(ARG "" "" "GENERATED;LIBRARIES" ${ARGN})
    string(TOUPPER ${name} upper)
    add_library(${name}_peer STATIC peers/${name}_peer.cpp ${ARG_GENERATED})
    target_compile_features(${name}_peer PRIVATE cxx_std_17)
    target_include_directories(${name}_peer PRIVATE ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_BINARY_DIR})
    target_link_libraries(${name}_peer PUBLIC ${ARG_LIBRARIES})
    target_link_libraries(commands_bench PRIVATE ${name}_peer)
    target_compile_definitions(commands_bench PRIVATE ZANT_BENCH_${upper})
endfunction()

find_package(Protobuf QUIET)
if(Protobuf_FOUND)
    protobuf_generate_cpp(sources headers peers/command.proto)
    zant_binary_peer(protobuf GENERATED ${sources} ${headers} LIBRARIES protobuf::libprotobuf)
endif()

find_package(FlatBuffers QUIET NAMES FlatBuffers Flatbuffers flatbuffers)
find_program(ZANT_FLATC flatc)
if(FlatBuffers_FOUND AND ZANT_FLATC)
    add_custom_command(OUTPUT command_generated.h
        COMMAND ${ZANT_FLATC} --cpp -o ${CMAKE_CURRENT_BINARY_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/peers/command.fbs
        DEPENDS peers/command.fbs)
    zant_binary_peer(flatbuffers GENERATED ${CMAKE_CURRENT_BINARY_DIR}/command_generated.h LIBRARIES flatbuffers::flatbuffers)
endif()

find_path(ZANT_MSGPACK_INCLUDE msgpack.hpp)
if(ZANT_MSGPACK_INCLUDE)
    zant_binary_peer(msgpack)
endif()

find_package(CapnProto QUIET)
if(CapnProto_FOUND)
    set(CAPNPC_SRC_PREFIX ${CMAKE_CURRENT_SOURCE_DIR}/peers)
    set(CAPNPC_OUTPUT_DIR ${CMAKE_CURRENT_BINARY_DIR})
    capnp_generate_cpp(sources headers peers/command.capnp)
    zant_binary_peer(capnproto GENERATED ${sources} ${headers} LIBRARIES CapnProto::capnp)
endif()

# Pixels: OpenImageIO's own package file wants its programs installed as well.
zant_bench(pixels)
find_path(ZANT_OPENIMAGEIO_INCLUDE OpenImageIO/imageio.h)
find_library(ZANT_OPENIMAGEIO_LIBRARY OpenImageIO)
find_library(ZANT_OPENIMAGEIO_UTIL_LIBRARY OpenImageIO_Util)
if(ZANT_OPENIMAGEIO_INCLUDE AND ZANT_OPENIMAGEIO_LIBRARY AND ZANT_OPENIMAGEIO_UTIL_LIBRARY)
    target_compile_definitions(pixels_bench PRIVATE ZANT_BENCH_OPENIMAGEIO)
    target_link_libraries(pixels_bench PRIVATE ${ZANT_OPENIMAGEIO_LIBRARY} ${ZANT_OPENIMAGEIO_UTIL_LIBRARY})
endif()
