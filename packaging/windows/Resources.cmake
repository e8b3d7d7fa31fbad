# The program's icon, version and manifest.
set(icon ${CMAKE_CURRENT_BINARY_DIR}/torvex-control.ico)
set(pictures)
foreach(size 16 32 48 64 256)
  set(picture ${CMAKE_CURRENT_BINARY_DIR}/icon-${size}.png)
  add_custom_command(
    OUTPUT ${picture}
    COMMAND rsvg-convert -w ${size} -h ${size} -o ${picture} ${CMAKE_SOURCE_DIR}/packaging/torvex-control.svg
    DEPENDS ${CMAKE_SOURCE_DIR}/packaging/torvex-control.svg)
  list(APPEND pictures ${picture})
endforeach()
add_custom_command(OUTPUT ${icon} COMMAND convert ${pictures} ${icon} DEPENDS ${pictures})
enable_language(RC)
configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/torvex-control.rc.in ${CMAKE_CURRENT_BINARY_DIR}/torvex-control.rc @ONLY)
set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/torvex-control.rc PROPERTIES OBJECT_DEPENDS ${icon})
target_sources(torvex-control PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/torvex-control.rc)
set_target_properties(torvex-control PROPERTIES WIN32_EXECUTABLE ON)
