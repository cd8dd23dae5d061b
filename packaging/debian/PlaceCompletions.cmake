# SPDX-License-Identifier: MIT
# CPack runs this on what it has installed for a package. Debian's zsh does not read the completions of packages where
# that of other systems does.
if(CPACK_GENERATOR STREQUAL DEB)
  file(GLOB folders ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/zsh)
  foreach(folder IN LISTS folders)
    file(RENAME ${folder}/site-functions ${folder}/vendor-completions)
  endforeach()
endif()
