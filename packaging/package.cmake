# What an installation holds beside the program, and the Debian package (cpack -G DEB in a release build's folder).
include(GNUInstallDirs)
set(share ${CMAKE_INSTALL_DATADIR})
install(FILES packaging/calder.desktop DESTINATION ${share}/applications)
install(FILES packaging/calder-mime.xml DESTINATION ${share}/mime/packages RENAME calder.xml)
install(FILES packaging/org.orvo.calder.metainfo.xml DESTINATION ${share}/metainfo)
install(FILES src/editor/icons/calder.svg DESTINATION ${share}/icons/hicolor/scalable/apps)
install(FILES packaging/calder-256.png DESTINATION ${share}/icons/hicolor/256x256/apps RENAME calder.png)
# Not below CMAKE_INSTALL_LIBDIR: udev knows this place only.
install(FILES packaging/70-calder-usbtmc.rules DESTINATION lib/udev/rules.d)

# Pages and change lists are packed, as the distribution's rules want them; without a date, so that two packages are equal.
find_program(GZIP gzip REQUIRED)
foreach(page IN ITEMS calder.1 changelog)
  set(packed ${PROJECT_BINARY_DIR}/packaging/${page}.gz)
  add_custom_command(OUTPUT ${packed} DEPENDS packaging/${page} VERBATIM
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/packaging
    COMMAND sh -c "\"$1\" -9nc \"$2\" >\"$3\"" - ${GZIP} ${PROJECT_SOURCE_DIR}/packaging/${page} ${packed})
  list(APPEND pages ${packed})
endforeach()
add_custom_target(packed_pages ALL DEPENDS ${pages})
install(FILES ${PROJECT_BINARY_DIR}/packaging/calder.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${PROJECT_BINARY_DIR}/packaging/changelog.gz packaging/copyright DESTINATION ${share}/doc/calder)

set(CPACK_PACKAGE_NAME calder)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "The makers of Orvo Calder <calder@orvo.org>")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "editor for arbitrary waveforms
Calder builds waveforms of up to 524288 points for function generators, from
standard functions, expressions, control points and arithmetic between
waveforms. It shows them at any zoom with two markers, edits them, prints
them, keeps them in files, and sends them over GPIB, USB488 or USBTMC.")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The icons and the toolkit's own texts, the Japanese font, and the window systems without X.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-translations-l10n, fonts-liberation, fonts-ipafont-gothic")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_GENERATOR DEB)
include(CPack)
