# Installing the game as a desktop program, and its Debian package.
#
# The program reads its pictures, sounds and songs from the folder that holds
# it, so the executable and everything under media/ go together into
# lib/tavolata; a launcher on the PATH starts it from there. The desktop entry,
# the icons and the AppStream data go where the desktop looks for them.
include(GNUInstallDirs)

set(TAVOLATA_ID io.github.tavolata.Tavolata)
set(TAVOLATA_CARTELLA lib/tavolata)
set(TAVOLATA_ICONA ${CMAKE_SOURCE_DIR}/ui/risorse/tavolata.png)
set(TAVOLATA_ICONA_SVG ${CMAKE_SOURCE_DIR}/ui/risorse/tavolata.svg)
set(TAVOLATA_DIMENSIONI_ICONA 16 32 48 64 128 256)

# `install` and the package take what has been built; they build nothing
# themselves (otherwise packaging would first compile every test).
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

install(TARGETS tavolata RUNTIME DESTINATION ${TAVOLATA_CARTELLA})
# media/ is read when installing, so whatever pictures, sounds and songs it
# holds by then go along.
install(DIRECTORY ${CMAKE_SOURCE_DIR}/media/ DESTINATION ${TAVOLATA_CARTELLA}
  PATTERN ".*" EXCLUDE)

file(RELATIVE_PATH TAVOLATA_DA_BIN /${CMAKE_INSTALL_BINDIR} /${TAVOLATA_CARTELLA})
configure_file(${CMAKE_SOURCE_DIR}/packaging/tavolata.sh.in ${CMAKE_BINARY_DIR}/packaging/tavolata @ONLY)
install(PROGRAMS ${CMAKE_BINARY_DIR}/packaging/tavolata DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES ${CMAKE_SOURCE_DIR}/packaging/${TAVOLATA_ID}.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/${TAVOLATA_ID}.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# The icon in the theme's sizes, scaled at build time from the painted picture.
add_executable(tavolata_icone ${CMAKE_SOURCE_DIR}/packaging/icone.cpp)
target_link_libraries(tavolata_icone PRIVATE Qt6::Gui)
set_target_properties(tavolata_icone PROPERTIES AUTOMOC OFF)
set(TAVOLATA_ICONE_FATTE)
foreach(lato ${TAVOLATA_DIMENSIONI_ICONA})
  list(APPEND TAVOLATA_ICONE_FATTE ${CMAKE_BINARY_DIR}/icone/${lato}x${lato}/apps/${TAVOLATA_ID}.png)
endforeach()
add_custom_command(OUTPUT ${TAVOLATA_ICONE_FATTE}
  COMMAND tavolata_icone ${TAVOLATA_ICONA} ${CMAKE_BINARY_DIR}/icone ${TAVOLATA_ID} ${TAVOLATA_DIMENSIONI_ICONA}
  DEPENDS tavolata_icone ${TAVOLATA_ICONA}
  COMMENT "Scaling the application icon")
add_custom_target(icone_applicazione ALL DEPENDS ${TAVOLATA_ICONE_FATTE})
install(DIRECTORY ${CMAKE_BINARY_DIR}/icone/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${TAVOLATA_ICONA_SVG} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
  RENAME ${TAVOLATA_ID}.svg)

# The Debian package. dpkg-shlibdeps works out the libraries the program links
# (Qt Core, Gui, Widgets and Multimedia, FluidSynth, libsndfile). Named here is
# what it needs without linking it: the General MIDI sound font the songs are
# played with (an .sf2 one: FluidSynth would settle for the .sf3 font, the game
# looks for .sf2 files); the Liberation fonts that stand in for the fonts its
# labels and panels ask for; and DejaVu, because where Liberation is the only
# font, the desktop's default sans-serif (menus, the name box) turns out to be
# Liberation Mono. Qt Multimedia and FluidSynth both play through a PulseAudio
# server (PipeWire's will do); without one the game runs silently.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavolata)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Tavolata")
set(CPACK_PACKAGE_CONTACT "Tavolata developers <tavolata@users.noreply.github.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Italian rummy for one player against the computer")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Tavolata is the classic Italian rummy for two, played with two packs of 54
French cards and four jollies: draw, lay down straights and sets worth 40
points to open, attach cards to any combination on the table, win back a
jolly with the real card, and close by discarding your last card. Whoever
reaches 101 penalty points loses the game.

Played with the mouse alone; the rules come in English and in Italian.")
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://github.com/tavolata/tavolata")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "timgm6mb-soundfont, fonts-liberation, fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "pulseaudio | pipewire-pulse")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
include(CPack)
