# SPDX-License-Identifier: MIT
# How the project's libraries and tests are made: one of each per folder, from all the sources in it.

add_library(lumenvale_options INTERFACE)
target_compile_features(lumenvale_options INTERFACE cxx_std_20)
target_compile_options(lumenvale_options INTERFACE
  -Wall -Wextra -Wno-missing-field-initializers -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Wunused -Wcast-align
  # GCC 12, optimising, sees overlapping and overlong copies where texts are joined (GCC bug 105651); with precompiled
  # headers it forgets that they happen in the standard library.
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict -Wno-array-bounds -Wno-stringop-overflow>
  # GCC spends a tenth of its time looking for memory that it can use again. Without that a joined source needs 1 GiB
  # instead of 0.8.
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:--param=ggc-min-heapsize=524288>
  # In continuous integration only (see CMakePresets.json): warnings of compilers and of Qts that the project has not met
  # yet must not stop anybody's build. It has not met a Mac's.
  $<$<AND:$<BOOL:${LUMENVALE_WERROR}>,$<NOT:$<PLATFORM_ID:Darwin>>>:-Werror>)
# Release builds are hardened, and equal wherever they are made: no path of the build's own machine is in them.
if(NOT LUMENVALE_SANITIZE)
  target_compile_options(lumenvale_options INTERFACE $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:
    -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
    -ffile-prefix-map=${PROJECT_BINARY_DIR}=build>)
  if(NOT APPLE)
    target_compile_options(lumenvale_options INTERFACE $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-fstack-clash-protection>)
    target_link_options(lumenvale_options INTERFACE LINKER:-z,relro,-z,now)
  endif()
endif()
if(LUMENVALE_SANITIZE)
  target_compile_options(lumenvale_options INTERFACE
    -fsanitize=${LUMENVALE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(lumenvale_options INTERFACE -fsanitize=${LUMENVALE_SANITIZE})
  # GCC 12 takes an empty std::optional<std::string> for uninitialised memory when its code is instrumented.
  target_compile_options(lumenvale_options INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-maybe-uninitialized>)
endif()

# lumenvale_precompile(TARGET HEADER): parses a header of cmake/precompiled, and what it includes, once for all sources
# of the target, which takes most of the compiler's time away. HEADER may name a library instead, compiled with the same
# options, to take what was parsed for it. Sources include what they use all the same: with LUMENVALE_PCH=OFF they must
# build.
function(lumenvale_precompile target header)
  if(LUMENVALE_PCH AND TARGET ${header})
    target_precompile_headers(${target} REUSE_FROM ${header})
  elseif(LUMENVALE_PCH)
    target_precompile_headers(${target} PRIVATE
      $<$<COMPILE_LANGUAGE:CXX>:${PROJECT_SOURCE_DIR}/cmake/precompiled/${header}.h>)
  endif()
endfunction()

# lumenvale_join(TARGET): hands sixteen sources at once to the compiler, so that what templates cost is paid once for
# them. Each must compile alone, too: with LUMENVALE_JOIN=OFF.
function(lumenvale_join target)
  if(LUMENVALE_JOIN)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16)
    # GCC takes a joined source for a header, where a type of an unnamed namespace would be a mistake.
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-subobject-linkage>)
  endif()
endfunction()

# lumenvale_library(NAME): a static library `lumenvale_<NAME>` of every source directly in this folder, with ROOMS also
# in the folders below it, or with FOLDERS of those directly in the folders named there instead. LINK names what its
# headers need, PRECOMPILE what to give to lumenvale_precompile. QT says that it uses Qt, MOC that its classes have
# Q_OBJECT. A source ends with #include "moc_<its header>.cpp" then: what Qt generates shares its templates.
function(lumenvale_library name)
  cmake_parse_arguments(arg "ROOMS;QT;MOC" "PRECOMPILE" "LINK;FOLDERS" ${ARGN})
  if(arg_ROOMS)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp *.h *.mm)
  elseif(arg_FOLDERS)
    list(TRANSFORM arg_FOLDERS APPEND "/*" OUTPUT_VARIABLE patterns)
    file(GLOB sources CONFIGURE_DEPENDS ${patterns})
    list(FILTER sources INCLUDE REGEX "\\.(cpp|h)$")
  else()
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h *.mm)
  endif()
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(lumenvale_${name} STATIC ${sources})
  target_include_directories(lumenvale_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(lumenvale_${name} PUBLIC lumenvale_options ${arg_LINK})
  set_target_properties(lumenvale_${name} PROPERTIES AUTOMOC ${arg_MOC})
  if(arg_QT)
    target_compile_definitions(lumenvale_${name} PUBLIC QT_NO_KEYWORDS QT_NO_CAST_FROM_BYTEARRAY)
  endif()
  lumenvale_join(lumenvale_${name})
  if(arg_PRECOMPILE)
    lumenvale_precompile(lumenvale_${name} ${arg_PRECOMPILE})
  endif()
endfunction()

# lumenvale_test(NAME): the executable `<NAME>_tests` of every source in this folder. LINK names the libraries
# under test, and nothing else is linked: that proves the layers. With WIDGETS the tests get an application object;
# with QT they bring their own main function.
function(lumenvale_test name)
  cmake_parse_arguments(arg "QT;WIDGETS" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  if(NOT sources)
    return()
  endif()
  add_executable(${name}_tests ${sources})
  target_include_directories(${name}_tests PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name}_tests PRIVATE ${arg_LINK} lumenvale_options)
  if(arg_WIDGETS)
    target_sources(${name}_tests PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/WidgetTestMain.cpp)
    target_link_libraries(${name}_tests PRIVATE Qt6::Widgets)
  endif()
  if(arg_QT OR arg_WIDGETS)
    target_link_libraries(${name}_tests PRIVATE GTest::gtest)
  else()
    target_link_libraries(${name}_tests PRIVATE GTest::gtest_main)
  endif()
  # One precompiled header for those with widgets and one for the others, which therefore all are compiled like Qt's
  # users.
  target_compile_options(${name}_tests PRIVATE -fPIC)
  set(first base_tests)
  set(header tests)
  if(arg_WIDGETS)
    set(first ui_tests)
    set(header tests-widgets)
  endif()
  if(TARGET ${first} AND NOT first STREQUAL ${name}_tests)
    set(header ${first})
  endif()
  lumenvale_precompile(${name}_tests ${header})
  lumenvale_join(${name}_tests)
  lumenvale_discover_tests(${name}_tests ${name}.)
endfunction()

# lumenvale_discover_tests(TARGET PREFIX): makes each test of the executable one of ctest's. Those with "Slow" in
# their names carry the label "slow" and run last; `ctest -LE slow` leaves them out.
function(lumenvale_discover_tests target prefix)
  set(temporary "")
  if(EXISTS /dev/shm) # on a busy disk a save can take longer than others wait for their turn
    set(temporary ENVIRONMENT TMPDIR=/dev/shm)
  endif()
  gtest_discover_tests(${target} TEST_PREFIX ${prefix} TEST_FILTER "-*Slow*" DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 120 ${temporary})
  gtest_discover_tests(${target} TEST_PREFIX ${prefix} TEST_FILTER "*Slow*" DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 120 LABELS slow COST -1 ${temporary})
endfunction()
