# tvx_module(NAME FOLDER DEPENDS...): one static library of every source file directly in FOLDER.
# A new file needs no edit here: the folder is looked at again at every build.
function(tvx_module name folder)
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h ${folder}/*.qrc)
  if(NOT sources MATCHES "\\.cpp")
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} INTERFACE tvx_flags ${ARGN})
  else()
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC tvx_flags ${ARGN})
  endif()
endfunction()

# tvx_qt_module: the same for a folder that uses Qt, with one precompiled header for all of them.
function(tvx_qt_module name folder)
  tvx_module(${name} ${folder} ${ARGN} Qt6::Widgets Qt6::Network)
  get_target_property(kind ${name} TYPE)
  if(NOT kind STREQUAL "INTERFACE_LIBRARY")
    tvx_use_qt(${name})
  endif()
endfunction()

# One precompiled header, built once, for every target that uses Qt.
file(WRITE ${CMAKE_BINARY_DIR}/QtHeaders.cpp "// Carries the precompiled header.\n")
function(tvx_qt_headers)
  add_library(tvx_qt_headers STATIC ${CMAKE_BINARY_DIR}/QtHeaders.cpp)
  target_link_libraries(tvx_qt_headers PRIVATE tvx_flags Qt6::Widgets Qt6::Network)
  target_precompile_headers(tvx_qt_headers PRIVATE ${CMAKE_SOURCE_DIR}/cmake/QtHeaders.h)
endfunction()

# What every target that uses Qt needs: its meta-object compiler and the precompiled header.
function(tvx_use_qt target)
  set_target_properties(${target} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_precompile_headers(${target} REUSE_FROM tvx_qt_headers)
endfunction()
