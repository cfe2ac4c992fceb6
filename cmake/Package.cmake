# What is installed beside the program and its library, and the Debian package of all that. The version
# is the project's, the date is the one below; files that name them are configured here.
set(TESSARY_RELEASE_DATE 2026-11-23)

set(TESSARY_UPDATE_FEED "" CACHE STRING "Address of the feed that announces new versions")
set(TESSARY_UPDATE_PUBLIC_KEY "" CACHE STRING "Ed25519 key of the packages, its 32 bytes in base64")
set(TESSARY_UPDATE_INTERVAL 86400 CACHE STRING "Seconds between scheduled checks, at least 3600")
option(TESSARY_UPDATE_AUTOMATIC_CHECKS "Check on schedule until the user chooses" OFF)

# With a mistake in these a program would be published that never finds an update.
if(TESSARY_UPDATE_FEED MATCHES "[\"\\\\\n]")
  message(FATAL_ERROR "TESSARY_UPDATE_FEED holds a quotation mark, a backslash or a line break.")
endif()
string(LENGTH "${TESSARY_UPDATE_PUBLIC_KEY}" key_length)
if(key_length AND NOT (key_length EQUAL 44 AND TESSARY_UPDATE_PUBLIC_KEY MATCHES "^[A-Za-z0-9+/]+=$"))
  message(FATAL_ERROR "TESSARY_UPDATE_PUBLIC_KEY is not 32 bytes in base64.")
endif()
if(NOT TESSARY_UPDATE_INTERVAL MATCHES "^[0-9]+$" OR TESSARY_UPDATE_INTERVAL LESS 3600)
  message(FATAL_ERROR "TESSARY_UPDATE_INTERVAL is no number of seconds from 3600 on.")
endif()
if(TESSARY_UPDATE_AUTOMATIC_CHECKS)
  set(automatic_checks true)
else()
  set(automatic_checks false)
endif()

# No mail can reach this address: the domain "invalid" is reserved for such use.
set(maintainer "The Tessary project <tessary@tessary.invalid>")
set(summary "switches the resolution of displays from the panel or by keys")
execute_process(COMMAND date --utc --rfc-email --date ${TESSARY_RELEASE_DATE}
  OUTPUT_VARIABLE changelog_date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(READ LICENSE license_text)
string(REGEX REPLACE "^.*(Permission is hereby)" "\\1" license_text "${license_text}")
string(REPLACE "\n\n" "\n.\n" license_text "${license_text}")
string(REGEX REPLACE "\n(.)" "\n \\1" license_text " ${license_text}")
set(package_folder ${PROJECT_BINARY_DIR}/package-files)

# Independent of the umask: the program trusts no file in a folder that others may write to.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# install_configured(file destination): Packaging/<file>.in with its variables filled in.
function(install_configured file destination)
  configure_file(Packaging/${file}.in ${package_folder}/${file} @ONLY)
  install(FILES ${package_folder}/${file} DESTINATION ${destination})
endfunction()

# install_compressed(file name destination): a file as <name>.gz, the same bytes at every build.
find_program(GZIP gzip REQUIRED)
function(install_compressed file name destination)
  set(compressed ${package_folder}/${name}.gz)
  add_custom_command(OUTPUT ${compressed} DEPENDS ${file}
    COMMAND ${GZIP} -9n --stdout ${file} > ${compressed} VERBATIM)
  set_property(GLOBAL APPEND PROPERTY tessary_compressed ${compressed})
  install(FILES ${compressed} DESTINATION ${destination})
endfunction()

install(FILES Packaging/org.tessary.Tessary.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install_configured(org.tessary.Tessary.service ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
install_configured(org.tessary.Tessary.metainfo.xml ${CMAKE_INSTALL_DATADIR}/metainfo)
install_configured(updates.conf ${CMAKE_INSTALL_DATADIR}/tessary)
install_configured(copyright ${CMAKE_INSTALL_DATADIR}/doc/tessary)
install(FILES Packaging/lintian-overrides RENAME tessary
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides)
configure_file(Packaging/tessary.1.in ${package_folder}/tessary.1 @ONLY)
install_compressed(${package_folder}/tessary.1 tessary.1 ${CMAKE_INSTALL_MANDIR}/man1)
configure_file(Packaging/changelog.Debian.in ${package_folder}/changelog.Debian @ONLY)
install_compressed(${package_folder}/changelog.Debian changelog.Debian
  ${CMAKE_INSTALL_DATADIR}/doc/tessary)
install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog ${CMAKE_INSTALL_DATADIR}/doc/tessary)
get_property(compressed GLOBAL PROPERTY tessary_compressed)
add_custom_target(package_files ALL DEPENDS ${compressed})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessary)
set(CPACK_PACKAGE_CONTACT "${maintainer}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${summary}")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION x11)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, libcanberra0, xdg-utils, file, shared-mime-info, ca-certificates")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Each display of the desktop (X11, GNOME on Wayland) has two presets. One key
switches the display under the pointer to its first preset, another key to its
second, and the displays beside it move along. The menu of an icon in the panel
has the presets and all the other resolutions.

What was chosen last comes back after the next log-in.")
include(CPack)
