# SPDX-License-Identifier: MIT
# Writes the moment of the build: cmake -DFILE=... -P WriteBuildMetadata.cmake
string(TIMESTAMP now "%Y-%m-%dT%H:%M:%SZ" UTC)
file(WRITE ${FILE} "{\"builtAt\": \"${now}\"}\n")
