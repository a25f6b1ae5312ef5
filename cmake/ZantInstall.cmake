# Installed layout: headers under include/zant with their folders kept, the libraries with a CMake package and a
# pkg-config file each, the engines and the program. The build tree has a CMake package as well.
include(CMakePackageConfigHelpers)

set(targets zant zant_static zantclient zantmodern)
foreach(target zanttestkit zant_program)
    if(TARGET ${target})
        list(APPEND targets ${target})
    endif()
endforeach()
install(TARGETS ${targets} EXPORT ZantTargets)
foreach(engine loopback preview)
    if(TARGET ${engine})
        install(TARGETS ${engine} EXPORT ZantTargets LIBRARY DESTINATION ${ZANT_ENGINES_SUBDIR}/${engine})
    endif()
endforeach()
install(DIRECTORY ${ZANT_HOST_HEADERS}/zant DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(TARGET zant_description)
    install(FILES ${ZANT_DESCRIPTION} DESTINATION ${CMAKE_INSTALL_DATADIR}/zant)
endif()

# The same package for an installed copy and for the build tree.
set(ZANT_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Zant)
set(package ${PROJECT_BINARY_DIR}/package)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZantConfigVersion.cmake COMPATIBILITY SameMajorVersion)
configure_package_config_file(cmake/ZantConfig.cmake.in ${package}/ZantConfig.cmake
    INSTALL_DESTINATION ${ZANT_CMAKE_DIR})
install(EXPORT ZantTargets NAMESPACE Zant:: DESTINATION ${ZANT_CMAKE_DIR})
install(FILES ${package}/ZantConfig.cmake ${PROJECT_BINARY_DIR}/ZantConfigVersion.cmake DESTINATION ${ZANT_CMAKE_DIR})
configure_package_config_file(cmake/ZantConfig.cmake.in ${PROJECT_BINARY_DIR}/ZantConfig.cmake
    INSTALL_DESTINATION . INSTALL_PREFIX ${PROJECT_BINARY_DIR})
export(EXPORT ZantTargets NAMESPACE Zant:: FILE ${PROJECT_BINARY_DIR}/ZantTargets.cmake)

# The .pc files find their prefix from where they lie, so that an installed tree can be moved.
file(RELATIVE_PATH ZANT_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
set(ZANT_PC_DL)
if(CMAKE_DL_LIBS)
    set(ZANT_PC_DL " -l${CMAKE_DL_LIBS}")
endif()
string(REGEX REPLACE "/$" "" ZANT_PC_TO_PREFIX "${ZANT_PC_TO_PREFIX}")
foreach(package zant zant_static zantclient)
    configure_file(cmake/${package}.pc.in ${PROJECT_BINARY_DIR}/${package}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

if(ZANT_IS_TOP_LEVEL)
    include(cmake/ZantPackages.cmake)
endif()
