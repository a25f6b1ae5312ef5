# Included by the toolchain files: what the program and the tests need of the build machine that is the same for every
# platform. Headers by a folder of links to them alone: /usr/include as a whole is for the build machine.
set(ZANT_PORTABLE_HEADERS ${CMAKE_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${ZANT_PORTABLE_HEADERS})
foreach(folder CLI fmt nlohmann)
    if(EXISTS /usr/include/${folder})
        file(CREATE_LINK /usr/include/${folder} ${ZANT_PORTABLE_HEADERS}/${folder} SYMBOLIC)
    endif()
endforeach()
foreach(package CLI11 fmt nlohmann_json GTest)
    set(${package}_DIR ${CMAKE_CURRENT_LIST_DIR}/packages)
endforeach()
