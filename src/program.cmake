# calder::ui: the whole program on a desktop's services, and the program itself.
calder_window_room(application
  SOURCES Application.cpp Application.h
  USES editor_ui print_ui setup_ui create_ui interpolate_ui operate_ui elastic_ui pwf_ui import_ui)
add_library(calder_ui INTERFACE)
add_library(calder::ui ALIAS calder_ui)
target_link_libraries(calder_ui INTERFACE calder_application)

add_executable(calder main.cpp)
target_link_libraries(calder PRIVATE calder_ui $<BUILD_INTERFACE:calder_flags>)
add_dependencies(calder calder_printing calder-plugin-host)

# Beside the program stand the files that it only reads, as an installed one finds them.
foreach(read IN ITEMS models data/USBTMC.ID data/pwf.fnc)
  get_filename_component(name ${read} NAME)
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${read} ${CMAKE_CURRENT_BINARY_DIR}/${name} SYMBOLIC)
endforeach()
if(PROJECT_IS_TOP_LEVEL)
  include(GNUInstallDirs)
  install(TARGETS calder RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(TARGETS calder_printing LIBRARY DESTINATION lib/calder)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/models DESTINATION ${CMAKE_INSTALL_DATADIR}/calder)
  install(FILES ${PROJECT_SOURCE_DIR}/data/USBTMC.ID ${PROJECT_SOURCE_DIR}/data/pwf.fnc
          DESTINATION ${CMAKE_INSTALL_DATADIR}/calder)
endif()
