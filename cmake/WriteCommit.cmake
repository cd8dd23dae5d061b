# SPDX-License-Identifier: MIT
# Writes the commit that is built, as the version tells it, where the sources are a checkout:
# cmake -DSOURCE=... -DFILE=... -P WriteCommit.cmake
cmake_minimum_required(VERSION 3.25)
set(text "")
if(EXISTS ${SOURCE}/.git)
  execute_process(COMMAND git rev-parse --short=8 HEAD WORKING_DIRECTORY ${SOURCE}
    OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  execute_process(COMMAND git status --porcelain --untracked-files=no WORKING_DIRECTORY ${SOURCE}
    OUTPUT_VARIABLE changes ERROR_QUIET)
  if(commit)
    set(text ", commit ${commit}")
    if(changes)
      string(APPEND text " with changes")
    endif()
  endif()
endif()
file(CONFIGURE OUTPUT ${FILE} CONTENT "#define LUMENVALE_COMMIT \"@text@\"\n" @ONLY) # as it was, when it says the same
