# SPDX-License-Identifier: MIT
# Makes Lumenvale.app of the target `lumenvale`. Included where that target is made.
set(bundle ${PROJECT_SOURCE_DIR}/packaging/macos)
configure_file(${bundle}/Info.plist.in ${CMAKE_CURRENT_BINARY_DIR}/Info.plist @ONLY)
set_target_properties(lumenvale PROPERTIES
  OUTPUT_NAME Lumenvale MACOSX_BUNDLE ON MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_BINARY_DIR}/Info.plist)
add_dependencies(lumenvale icon_file)
# The signature comes last, for it covers the resources. It is made for this Mac only; without any, the system would not
# take the program as a login item.
set(resources $<TARGET_BUNDLE_CONTENT_DIR:lumenvale>/Resources)
add_custom_command(TARGET lumenvale POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E make_directory ${resources}
  COMMAND icon_file ${PROJECT_SOURCE_DIR}/packaging/icons/app.lumenvale.Lumenvale.svg ${resources}/Lumenvale.icns
  COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR} -DFILE=${resources}/BuildMetadata.json
          -P ${PROJECT_SOURCE_DIR}/cmake/WriteBuildMetadata.cmake
  COMMAND codesign --force --sign - $<TARGET_BUNDLE_DIR:lumenvale>
  VERBATIM)
# Copied as it is: installing it as a target would change load paths and break the signature.
if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
  set(CMAKE_INSTALL_PREFIX /Applications CACHE PATH "Where the bundle is installed" FORCE)
endif()
install(DIRECTORY $<TARGET_BUNDLE_DIR:lumenvale> DESTINATION . USE_SOURCE_PERMISSIONS)
