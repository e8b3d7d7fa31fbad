# What is installed, and the Debian package of it (scripts/deb).
include(GNUInstallDirs)
set(TVX_SHARE ${CMAKE_INSTALL_DATADIR}/torvex-control)
install(TARGETS torvex-control virtual-cockpit RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(PROGRAMS ${CMAKE_CURRENT_LIST_DIR}/torvex-cockpit DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_CURRENT_LIST_DIR}/torvex-control.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/torvex-control.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/demo DESTINATION ${TVX_SHARE} PATTERN comports EXCLUDE
        PATTERN .gitattributes EXCLUDE PATTERN "*.bak" EXCLUDE PATTERN TVXDumpFile.txt EXCLUDE PATTERN CMakeLists.txt EXCLUDE)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR})  # the manual, its pictures, what it links to

# Who may use the hardware, and the kernel's module for keystrokes.
install(FILES ${CMAKE_CURRENT_LIST_DIR}/70-torvex-cockpit.rules DESTINATION lib/udev/rules.d)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/torvex-control.modules DESTINATION lib/modules-load.d RENAME torvex-control.conf)

# What Debian wants of every package: copyright, manual pages, changes; the latter two packed.
set(packed ${CMAKE_BINARY_DIR}/packaging)
function(tvx_pack file name destination)
  add_custom_command(OUTPUT ${packed}/${name}.gz
                     COMMAND ${CMAKE_COMMAND} -E make_directory ${packed}
                     COMMAND gzip -9nc ${file} > ${packed}/${name}.gz
                     DEPENDS ${file} VERBATIM)
  set_property(GLOBAL APPEND PROPERTY TVX_PACKED ${packed}/${name}.gz)
  install(FILES ${packed}/${name}.gz DESTINATION ${destination})
endfunction()
foreach(program torvex-control virtual-cockpit torvex-cockpit)
  tvx_pack(${CMAKE_CURRENT_LIST_DIR}/${program}.1 ${program}.1 ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
# Whoever publishes the package says who answers for it.
set(TVX_CONTACT "torvex-control maintainers <maintainers@torvex-control.invalid>" CACHE STRING "Maintainer of the package")
string(TIMESTAMP TVX_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(CONFIGURE OUTPUT ${packed}/changelog CONTENT
     "torvex-control (${PROJECT_VERSION}) unstable; urgency=medium\n\n  * Built from its sources; see CHANGELOG.md there.\n\n -- ${TVX_CONTACT}  ${TVX_PACKAGE_DATE}\n")
tvx_pack(${packed}/changelog changelog ${CMAKE_INSTALL_DOCDIR})
install(FILES ${CMAKE_CURRENT_LIST_DIR}/debian/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
get_property(all_packed GLOBAL PROPERTY TVX_PACKED)
add_custom_target(package_files ALL DEPENDS ${all_packed})

set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_NAME torvex-control)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "control program for home-cockpit instruments beside X-Plane")
set(CPACK_PACKAGE_DESCRIPTION
    "Takes the values of the X-Plane flight simulator over the network,
 turns each into a needle's position with the calibration of its face,
 and sends it over serial lines to the instruments of a home cockpit;
 their knobs and switches act on the simulator. The package lets whoever
 sits at the computer use serial adapters and keystrokes through the kernel.")
set(CPACK_PACKAGE_CONTACT "${TVX_CONTACT}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core, udev, kmod")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/postinst ${CMAKE_CURRENT_LIST_DIR}/debian/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
