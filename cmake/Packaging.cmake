# Installation and packages. An installation has the build tree's shape: the command in bin, the tray
# application and the sound player in libexec/tovrin, the payload in share/tovrin; the desktop, systemd,
# man and the shells find their files in their own places under the prefix.

set(TOVRIN_APP_ID app.tovrin.Tovrin)

install(TARGETS tovrin RUNTIME DESTINATION bin)
install(TARGETS tovrin_desktop tovrin_play RUNTIME DESTINATION libexec/tovrin)

# resources/ is copied whole beside the build's executable; the payload proper leaves out the
# integration files installed below and the sound generator.
install(DIRECTORY ${TOVRIN_SHARE_DIR}/ DESTINATION share/tovrin USE_SOURCE_PERMISSIONS
        PATTERN "*.desktop" EXCLUDE
        PATTERN "*.metainfo.xml" EXCLUDE
        PATTERN "*.py" EXCLUDE
        PATTERN "icons" EXCLUDE
        PATTERN "systemd" EXCLUDE
        PATTERN "man" EXCLUDE
        PATTERN "completions" EXCLUDE)

install(FILES resources/${TOVRIN_APP_ID}.desktop DESTINATION share/applications)
install(FILES resources/${TOVRIN_APP_ID}.metainfo.xml DESTINATION share/metainfo)
install(FILES resources/icons/tovrin.svg DESTINATION share/icons/hicolor/scalable/apps)
# Found there by the user's service manager for every prefix it searches: /usr and /usr/local.
install(FILES resources/systemd/tovrin-watch.service DESTINATION lib/systemd/user)
install(FILES resources/completions/tovrin.bash DESTINATION share/bash-completion/completions RENAME tovrin)
install(FILES resources/completions/_tovrin DESTINATION share/zsh/vendor-completions)
install(FILES resources/completions/tovrin.fish DESTINATION share/fish/vendor_completions.d)

# The manual page carries the version, and is compressed as Debian's policy asks.
configure_file(resources/man/tovrin.1.in ${CMAKE_BINARY_DIR}/man/tovrin.1 @ONLY)
find_program(GZIP_PROGRAM gzip REQUIRED)
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/man/tovrin.1.gz
    COMMAND ${GZIP_PROGRAM} -9 -n -c ${CMAKE_BINARY_DIR}/man/tovrin.1 > ${CMAKE_BINARY_DIR}/man/tovrin.1.gz
    DEPENDS ${CMAKE_BINARY_DIR}/man/tovrin.1
    COMMENT "Compressing the manual page")
add_custom_target(tovrin_man ALL DEPENDS ${CMAKE_BINARY_DIR}/man/tovrin.1.gz)
install(FILES ${CMAKE_BINARY_DIR}/man/tovrin.1.gz DESTINATION share/man/man1)

# Only a self-contained installation may replace itself on an update; it says so in this file,
# which neither the Debian package nor `make install` carries.
file(WRITE ${CMAKE_BINARY_DIR}/install-kind/archive "archive")
install(FILES ${CMAKE_BINARY_DIR}/install-kind/archive DESTINATION share/tovrin RENAME install-kind
        COMPONENT archive EXCLUDE_FROM_ALL)

set(CPACK_PACKAGE_NAME tovrin)
set(CPACK_PACKAGE_VENDOR Tovrin)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Watch your AI coding agents and hear when one waits for you")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://${TOVRIN_WEBSITE}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_BINARY_DIR}/CPackPerGenerator.cmake)
set(TOVRIN_ARCHIVE_NAME "tovrin-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR}")
configure_file(cmake/CPackPerGenerator.cmake.in ${CMAKE_BINARY_DIR}/CPackPerGenerator.cmake @ONLY)

set(TOVRIN_PACKAGE_MAINTAINER "Tovrin <packages@${TOVRIN_WEBSITE}>" CACHE STRING
    "Maintainer named in the Debian package")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${TOVRIN_PACKAGE_MAINTAINER})
# The long description; cpack puts the summary above it.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Tovrin keeps watch over many AI coding agents at once (Claude Code,
Codex CLI, Copilot CLI, Copilot in VS Code, Cursor, Antigravity) and tells
you the moment a session starts waiting for you: in the system tray, in a
floating chip, by sound, desktop notification or Telegram. The command line
shows the sessions, manages the agents' hooks and alerts without a desktop.")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The status writer runs jq; sound is played through libraries opened only when needed.
set(CPACK_DEBIAN_PACKAGE_DEPENDS jq)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libpulse0, libvorbisfile3, sound-theme-freedesktop")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS tmux)

include(CPack)
