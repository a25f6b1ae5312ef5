# `cpack` in a build tree makes a Debian package and an archive of all that is installed.
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME zant)
set(CPACK_PACKAGE_CONTACT "The Zant developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
    "Headers and libraries for hosts, a stand-in for the engine for their tests, and the program that drives engines \
with command files.")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
include(CPack)
