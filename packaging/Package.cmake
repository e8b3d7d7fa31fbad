# What is installed, and the Debian package of it (scripts/deb).
include(GNUInstallDirs)
set(TVX_SHARE ${CMAKE_INSTALL_DATADIR}/torvex-control)
install(TARGETS torvex-control virtual-cockpit RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(PROGRAMS ${CMAKE_CURRENT_LIST_DIR}/torvex-cockpit DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_CURRENT_LIST_DIR}/torvex-control.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/torvex-control.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/demo DESTINATION ${TVX_SHARE} PATTERN comports EXCLUDE
        PATTERN "*.bak" EXCLUDE PATTERN TVXDumpFile.txt EXCLUDE)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR})  # the manual, its pictures, what it links to

set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_NAME torvex-control)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Control program for home-cockpit instruments beside X-Plane")
# Whoever publishes the package says who answers for it.
set(TVX_CONTACT "torvex-control maintainers <maintainers@torvex-control.invalid>" CACHE STRING "Maintainer of the package")
set(CPACK_PACKAGE_CONTACT "${TVX_CONTACT}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core")
include(CPack)
