# SPDX-License-Identifier: GPL-3.0-or-later
# Installing the game, and its Debian package.
#
# Laid out as Debian lays out its games: the program in games/, its pictures,
# sounds and songs in share/games/tavolata (the program looks there when they
# are not beside it, as they are in the build folder). The desktop entry, the
# icons, the AppStream data, the manual page, the licence and the changelog go
# where the desktop, man and the package tools look for them.
include(GNUInstallDirs)

set(TAVOLATA_ID io.github.tavolata.Tavolata)
set(TAVOLATA_GIOCHI games)
set(TAVOLATA_DATI ${CMAKE_INSTALL_DATAROOTDIR}/games/tavolata)
set(TAVOLATA_DOC ${CMAKE_INSTALL_DATAROOTDIR}/doc/tavolata)
set(TAVOLATA_ICONA ${CMAKE_SOURCE_DIR}/ui/risorse/tavolata.png)
set(TAVOLATA_ICONA_SVG ${CMAKE_SOURCE_DIR}/ui/risorse/tavolata.svg)
set(TAVOLATA_DIMENSIONI_ICONA 16 32 48 64 128 256)

# `install` and the package take what has been built; they build nothing
# themselves (otherwise packaging would first compile every test).
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# Linked as Debian hardens its programs: the whole relocation table read-only
# once loaded.
target_link_options(tavolata PRIVATE -Wl,-z,relro -Wl,-z,now)
install(TARGETS tavolata RUNTIME DESTINATION ${TAVOLATA_GIOCHI})
# A stripped program (the package's) also loses the compilers' notes, as
# Debian's own packages do.
install(CODE "
  if(CMAKE_INSTALL_DO_STRIP)
    execute_process(COMMAND \"${CMAKE_STRIP}\" --remove-section=.comment --remove-section=.note
      \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${TAVOLATA_GIOCHI}/tavolata\" COMMAND_ERROR_IS_FATAL ANY)
  endif()")
# media/ is read when installing, so whatever pictures, sounds and songs it
# holds by then go along.
install(DIRECTORY ${CMAKE_SOURCE_DIR}/media/ DESTINATION ${TAVOLATA_DATI}
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
  PATTERN ".*" EXCLUDE)

install(FILES ${CMAKE_SOURCE_DIR}/packaging/${TAVOLATA_ID}.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/${TAVOLATA_ID}.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# The manual page and the changelog, compressed as Debian wants them: at the
# highest level and without a time stamp, so that every build gives the same
# bytes.
find_program(TAVOLATA_GZIP gzip REQUIRED)
set(TAVOLATA_MANUALE ${CMAKE_BINARY_DIR}/packaging/tavolata.6.gz)
set(TAVOLATA_CAMBIAMENTI ${CMAKE_BINARY_DIR}/packaging/changelog.Debian.gz)
add_custom_command(OUTPUT ${TAVOLATA_MANUALE}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/packaging
  COMMAND ${TAVOLATA_GZIP} -9nc ${CMAKE_SOURCE_DIR}/packaging/tavolata.6 > ${TAVOLATA_MANUALE}
  DEPENDS ${CMAKE_SOURCE_DIR}/packaging/tavolata.6
  COMMENT "Compressing the manual page")
add_custom_command(OUTPUT ${TAVOLATA_CAMBIAMENTI}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/packaging
  COMMAND ${TAVOLATA_GZIP} -9nc ${CMAKE_SOURCE_DIR}/packaging/changelog > ${TAVOLATA_CAMBIAMENTI}
  DEPENDS ${CMAKE_SOURCE_DIR}/packaging/changelog
  COMMENT "Compressing the changelog")
add_custom_target(documenti_installati ALL DEPENDS ${TAVOLATA_MANUALE} ${TAVOLATA_CAMBIAMENTI})
install(FILES ${TAVOLATA_MANUALE} DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
install(FILES ${TAVOLATA_CAMBIAMENTI} ${CMAKE_SOURCE_DIR}/packaging/copyright DESTINATION ${TAVOLATA_DOC})
install(FILES ${CMAKE_SOURCE_DIR}/packaging/lintian-overrides
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME tavolata)

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
# (Qt Core, Gui and Widgets, FluidSynth, libsndfile, libsamplerate, libpulse). Named here is
# what it needs without linking it: a General MIDI sound font for the songs (an
# .sf2 one, which is what the game looks for: TimGM6mb, or FluidR3 in its
# place); the Liberation fonts that stand in for the fonts its labels and
# panels ask for; and DejaVu, because where Liberation is the only font, the
# desktop's default sans-serif (menus, the name box) turns out to be
# Liberation Mono. The songs and the sounds play through a PulseAudio server
# (PipeWire's will do); without one the game runs silently. Qt's Wayland
# plugin lets the game run as a native window on a Wayland desktop rather
# than through XWayland.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavolata)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Tavolata developers")
# The project takes no mail: the address is in a domain reserved never to exist.
set(CPACK_PACKAGE_CONTACT "The Tavolata developers <tavolata@developers.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Italian rummy for one player against the computer")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Tavolata is the classic Italian rummy for two, played with two packs of 54
French cards and four jollies: draw, lay down straights and sets worth 40
points to open, attach cards to any combination on the table, win back a
jolly with the real card, and close by discarding your last card. Whoever
reaches 101 penalty points loses the game.

Played with the mouse alone; the rules come in English and in Italian. Card
sounds and ten songs of its own play through the desktop's sound server.")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "timgm6mb-soundfont | fluid-soundfont-gm, fonts-liberation, fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "pulseaudio | pipewire-pulse, qt6-wayland")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
include(CPack)
