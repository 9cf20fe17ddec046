# calder_room(NAME [SOURCES ...] [USES ...] [LIBS ...]): a folder of src as a static library, calder_NAME, that may use the
# rooms after USES and what those use, and no other. LIBS: libraries from outside.
#
# A static library links with anything, so each room is also linked once by itself against what it names, with nothing
# left undefined: a call into a room that is not named does not link.
function(calder_room name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES;LIBS" ${ARGN})
  list(TRANSFORM ARG_USES PREPEND calder_)
  add_library(calder_${name} STATIC ${ARG_SOURCES})
  target_compile_features(calder_${name} PUBLIC cxx_std_20)
  target_include_directories(calder_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(calder_${name} PRIVATE $<BUILD_INTERFACE:calder_flags> PUBLIC ${ARG_USES} ${ARG_LIBS})
  # The sanitizers' own functions are in no library.
  if(PROJECT_IS_TOP_LEVEL AND CALDER_BUILD_TESTS AND NOT CALDER_SANITIZE AND NOT CALDER_COVERAGE)
    add_library(floor_${name} MODULE $<TARGET_OBJECTS:calder_${name}>)
    set_target_properties(floor_${name} PROPERTIES LINKER_LANGUAGE CXX LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/floors)
    target_link_libraries(floor_${name} PRIVATE ${ARG_USES} ${ARG_LIBS})
    target_link_options(floor_${name} PRIVATE -Wl,-z,defs)
  endif()
endfunction()

# The same for a folder's windows: the rooms whose names end in _ui, which alone see the toolkit.
function(calder_window_room name)
  calder_room(${name} ${ARGN})
  set_target_properties(calder_${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
  target_link_libraries(calder_${name} PUBLIC Qt6::Widgets)
  target_compile_definitions(calder_${name} PRIVATE QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS)
  if(TARGET floor_${name})
    target_link_libraries(floor_${name} PRIVATE Qt6::Widgets)
  endif()
  if(NOT CMAKE_UNITY_BUILD)
    target_precompile_headers(calder_${name} PRIVATE <QtWidgets> <string> <vector>)
  endif()
endfunction()
