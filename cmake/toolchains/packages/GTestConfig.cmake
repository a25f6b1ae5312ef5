# From the sources in the package googletest.
set(BUILD_GMOCK OFF)
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(library gtest gtest_main)
    if(NOT TARGET GTest::${library})
        add_library(GTest::${library} ALIAS ${library})
    endif()
endforeach()
