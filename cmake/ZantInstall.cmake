# Installed layout: headers under include/zant with their folders kept, the two libraries with a CMake package and a
# pkg-config file each, the loopback engine and the program.
include(CMakePackageConfigHelpers)

install(TARGETS zant zantclient zanttestkit EXPORT ZantTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY own client testkit DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zant
    FILES_MATCHING PATTERN "*.h" PATTERN "generator" EXCLUDE PATTERN "catalogue" EXCLUDE)
install(DIRECTORY ${PROJECT_BINARY_DIR}/generated/client DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zant
    FILES_MATCHING PATTERN "*.h")

install(FILES ${ZANT_DESCRIPTION} DESTINATION ${CMAKE_INSTALL_DATADIR}/zant)

set(ZANT_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Zant)
install(EXPORT ZantTargets NAMESPACE Zant:: DESTINATION ${ZANT_CMAKE_DIR})
configure_package_config_file(cmake/ZantConfig.cmake.in ${PROJECT_BINARY_DIR}/ZantConfig.cmake
    INSTALL_DESTINATION ${ZANT_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZantConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZantConfig.cmake ${PROJECT_BINARY_DIR}/ZantConfigVersion.cmake
    DESTINATION ${ZANT_CMAKE_DIR})

# The .pc files find their prefix from where they lie, so that an installed tree can be moved.
file(RELATIVE_PATH ZANT_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" ZANT_PC_TO_PREFIX "${ZANT_PC_TO_PREFIX}")
foreach(package zant zantclient)
    configure_file(cmake/${package}.pc.in ${PROJECT_BINARY_DIR}/${package}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
