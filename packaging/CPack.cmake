# SPDX-License-Identifier: MIT
# Packages, by `./dev package`: on Debian's relatives a .deb of the command line and one of the desktop program, on
# Fedora's an .rpm of each, on a Mac a zip of the signed bundle.
set(CPACK_PACKAGE_NAME lumenvale)
set(CPACK_PACKAGE_VENDOR "The Lumenvale developers")
set(CPACK_PACKAGE_CONTACT "The Lumenvale developers <developers@lumenvale.app>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://lumenvale.app)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "brightness of every connected display in one small panel")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(about "Lumenvale sets built-in panels through the system's backlight and external
monitors over DDC/CI. Every value is read back and verified.
")
set(about_desktop "${about}
This package has the desktop program: a panel with a slider for each display,
presets with keyboard shortcuts, and settings that say why a display cannot be
controlled.")
set(about_cli "${about}
This package has the command line, which needs no desktop, and the rule that
lets the user at the machine reach the monitors' channels.")
set(debian ${PROJECT_SOURCE_DIR}/packaging/debian)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PRE_BUILD_SCRIPTS ${debian}/PlaceCompletions.cmake)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME lumenvale)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_DESKTOP_DESCRIPTION "${about_desktop}")
# The SVG plug-ins are loaded at run time: no library dependency names them.
set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS "lumenvale-cli (= ${PROJECT_VERSION}-1), libqt6svg6, default-dbus-session-bus | dbus-session-bus")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_RECOMMENDS "qt6-wayland, xdg-desktop-portal")
set(CPACK_DEBIAN_CLI_PACKAGE_NAME lumenvale-cli)
set(CPACK_DEBIAN_CLI_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_CLI_DESCRIPTION "${about_cli}")
set(CPACK_COMPONENT_CLI_DESCRIPTION "${about_cli}")
set(CPACK_DEBIAN_CLI_PACKAGE_RECOMMENDS "udev, kmod")
set(CPACK_DEBIAN_CLI_PACKAGE_SUGGESTS "lumenvale, libxcb-randr0")
set(CPACK_DEBIAN_CLI_PACKAGE_CONTROL_EXTRA ${debian}/postinst ${debian}/postrm)
set(CPACK_DEBIAN_CLI_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_RPM_COMPONENT_INSTALL ON)
set(CPACK_RPM_FILE_NAME RPM-DEFAULT)
set(CPACK_RPM_PACKAGE_LICENSE MIT)
set(CPACK_RPM_DESKTOP_PACKAGE_NAME lumenvale)
set(CPACK_RPM_DESKTOP_PACKAGE_REQUIRES "lumenvale-cli = ${PROJECT_VERSION}, qt6-qtsvg")
set(CPACK_RPM_DESKTOP_PACKAGE_SUGGESTS qt6-qtwayland)
set(CPACK_RPM_CLI_PACKAGE_NAME lumenvale-cli)
set(CPACK_RPM_CLI_POST_INSTALL_SCRIPT_FILE ${PROJECT_SOURCE_DIR}/packaging/rpm/post)
set(CPACK_RPM_CLI_POST_UNINSTALL_SCRIPT_FILE ${PROJECT_SOURCE_DIR}/packaging/rpm/postun)
# Folders that other packages own.
set(CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION
  /usr/lib/udev /usr/lib/udev/rules.d /usr/lib/modules-load.d /usr/share/applications /usr/share/dbus-1
  /usr/libexec /usr/share/dbus-1/interfaces /usr/share/dbus-1/services /usr/share/icons /usr/share/icons/hicolor /usr/share/metainfo /usr/share/man
  /usr/share/man/man1 /usr/share/bash-completion /usr/share/bash-completion/completions /usr/share/zsh
  /usr/share/zsh/site-functions /usr/share/fish /usr/share/fish/vendor_completions.d)

if(APPLE)
  set(CPACK_GENERATOR ZIP) # of the bundle as it was signed: nothing may change in it
else()
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_COMPONENTS_ALL cli desktop)
  set(CPACK_STRIP_FILES ON)
  find_program(dpkg_deb dpkg-deb)
  find_program(rpmbuild rpmbuild)
  set(CPACK_GENERATOR "")
  if(dpkg_deb)
    list(APPEND CPACK_GENERATOR DEB)
  endif()
  if(rpmbuild)
    list(APPEND CPACK_GENERATOR RPM)
  endif()
endif()
include(CPack)
