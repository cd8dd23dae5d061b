# SPDX-License-Identifier: MIT
# Writes the moment of the build: cmake -DSOURCE=... -DFILE=... -P WriteBuildMetadata.cmake
# It is that of SOURCE_DATE_EPOCH where that is set, else the commit's where nothing was changed since, so that two builds
# of one commit are equal, else the present.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH} AND EXISTS ${SOURCE}/.git)
  execute_process(COMMAND git status --porcelain --untracked-files=no WORKING_DIRECTORY ${SOURCE}
    OUTPUT_VARIABLE changes RESULT_VARIABLE failure ERROR_QUIET)
  execute_process(COMMAND git log -1 --format=%ct WORKING_DIRECTORY ${SOURCE}
    OUTPUT_VARIABLE commit_time OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(NOT failure AND NOT changes AND commit_time)
    set(ENV{SOURCE_DATE_EPOCH} ${commit_time}) # the following command heeds it
  endif()
endif()
string(TIMESTAMP now "%Y-%m-%dT%H:%M:%SZ" UTC)
file(WRITE ${FILE} "{\"builtAt\": \"${now}\"}\n")
