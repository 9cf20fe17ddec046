# calder_ui: the forms and what the desktop gives; and the program.
find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets Svg)
find_package(PkgConfig REQUIRED)
pkg_check_modules(CALDER_XCB REQUIRED IMPORTED_TARGET xcb)
# Linked in: a shared library costs every start the time to find, map and bind it.
find_library(CALDER_EWMH NAMES libxcb-ewmh.a xcb-ewmh REQUIRED)

add_library(calder_ui STATIC
  Application.cpp
  Application.h
  editor/MainWindow.cpp
  editor/MainWindow.h
  editor/MainWindow.ui
  editor/MainWindowCaptions.cpp
  editor/WaveformCanvas.cpp
  editor/WaveformCanvas.h
  editor/icons/icons.qrc
  platform/qt/QuietProxyStyle.cpp
  platform/qt/QuietProxyStyle.h
  platform/qt/Captions.cpp
  platform/qt/ComboBoxKeyFilter.cpp
  platform/qt/QtClipboard.cpp
  platform/qt/QtDesktop.cpp
  platform/qt/QtFileDialogs.cpp
  platform/qt/QtMessageBoxes.cpp
  platform/qt/QtWorker.cpp
  platform/qt/SvgIcon.cpp
  platform/qt/Theme.cpp
  platform/qt/ValueBox.cpp
  platform/qt/ValueBox.h
  platform/qt/XcbWindowList.cpp
  setup/Communication.cpp
  setup/FrmGPIBExit.cpp
  setup/FrmGPIBExit.h
  setup/FrmGPIBExit.ui
  setup/SystemCaptions.cpp
  setup/SystemDialog.cpp
  setup/SystemDialog.h
  setup/SystemDialog.ui
  tools/create/CreateCaptions.cpp
  tools/create/CreateDialog.cpp
  tools/create/CreateDialog.h
  tools/create/CreateDialog.ui
  tools/create/ExpressionBox.cpp
  tools/create/ExpressionBox.h
)
add_library(calder::ui ALIAS calder_ui)
set_target_properties(calder_ui PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
target_link_libraries(calder_ui
  PRIVATE $<BUILD_INTERFACE:calder_flags> ${CALDER_EWMH} PkgConfig::CALDER_XCB Qt6::Svg
  PUBLIC calder_core Qt6::Widgets)
target_compile_definitions(calder_ui PRIVATE QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS)
# Each form's captions are tables of the same names.
set_source_files_properties(editor/MainWindowCaptions.cpp setup/SystemCaptions.cpp tools/create/CreateCaptions.cpp
                            PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
if(NOT CMAKE_UNITY_BUILD)
  target_precompile_headers(calder_ui PRIVATE <QtWidgets> <string> <vector>)
endif()

add_executable(calder main.cpp)
target_link_libraries(calder PRIVATE calder_ui $<BUILD_INTERFACE:calder_flags>)

# Beside the program stand the files that it only reads, as an installed one finds them.
foreach(read IN ITEMS models data/USBTMC.ID)
  get_filename_component(name ${read} NAME)
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${read} ${CMAKE_CURRENT_BINARY_DIR}/${name} SYMBOLIC)
endforeach()
if(PROJECT_IS_TOP_LEVEL)
  include(GNUInstallDirs)
  install(TARGETS calder RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/models DESTINATION ${CMAKE_INSTALL_DATADIR}/calder)
  install(FILES ${PROJECT_SOURCE_DIR}/data/USBTMC.ID DESTINATION ${CMAKE_INSTALL_DATADIR}/calder)
  # Not below CMAKE_INSTALL_LIBDIR: udev knows this place only.
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/60-calder-usbtmc.rules DESTINATION lib/udev/rules.d)
endif()
