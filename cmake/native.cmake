# The native build: the logic over the in-memory platform, with its tests, benches and fuzzers.
enable_testing()

file(GLOB OSTREL_HEADLESS_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/platform/headless/*.cpp)
list(JOIN OSTREL_LANGUAGES " " languages)

# The in-memory platform over a library of the logic, and the scene that tests, benches and fuzzers
# play on; the scene reads the compiled texts that are shipped.
function(ostrel_add_world logic headless world)
  add_library(${headless} STATIC ${OSTREL_HEADLESS_SOURCES})
  target_link_libraries(${headless} PUBLIC ${logic} PRIVATE ostrel_flags)
  add_library(${world} STATIC
    ${CMAKE_SOURCE_DIR}/tests/support/disk_files.cpp
    ${CMAKE_SOURCE_DIR}/tests/support/sheet_scene.cpp
    ${CMAKE_SOURCE_DIR}/tests/support/surface_picture.cpp
    ${CMAKE_SOURCE_DIR}/tests/support/test_world.cpp)
  target_include_directories(${world} PUBLIC ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(${world}
    PRIVATE
      OSTREL_COMPILED_RESOURCES="${CMAKE_BINARY_DIR}/resources"
      OSTREL_LANGUAGES="${languages}")
  target_link_libraries(${world} PUBLIC ${headless} PRIVATE ostrel_flags)
  add_dependencies(${world} ostrel_resources)
endfunction()
ostrel_add_world(ostrel_logic ostrel_headless ostrel_test_world)

if(OSTREL_FUZZ)
  include(fuzz/fuzzers.cmake)
  return()
endif()

# All of that once more under the sanitizers, built only when asked for (build preset asan).
ostrel_add_logic(ostrel_logic_asan)
ostrel_add_world(ostrel_logic_asan ostrel_headless_asan ostrel_test_world_asan)
foreach(library ostrel_logic_asan ostrel_headless_asan ostrel_test_world_asan)
  target_compile_options(${library} PRIVATE -O1 ${OSTREL_SANITIZERS})
  set_target_properties(${library} PROPERTIES EXCLUDE_FROM_ALL ON)
endforeach()
target_link_options(ostrel_logic_asan INTERFACE ${OSTREL_SANITIZERS})
add_custom_target(ostrel_asan)

# ---- Tests ----------------------------------------------------------------------------------------

find_package(GTest REQUIRED)

file(GLOB_RECURSE OSTREL_TEST_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/*_test.cpp)
list(FILTER OSTREL_TEST_SOURCES EXCLUDE REGEX "/tests/print_system/")

# The dialogs that the in-memory window system itself is tested with.
set(test_dialogs ${CMAKE_BINARY_DIR}/resources/test_dialogs.res)
add_custom_command(
  OUTPUT ${test_dialogs}
  COMMAND ${OSTREL_WINDRES} -c 65001 -O res
    -i ${CMAKE_SOURCE_DIR}/tests/platform/headless/test_dialogs.rc -o ${test_dialogs}
  DEPENDS ${CMAKE_SOURCE_DIR}/tests/platform/headless/test_dialogs.rc
    ${CMAKE_SOURCE_DIR}/tests/conformance/conformance_dialogs.rc
  COMMENT "Compiling the test dialogs"
  VERBATIM)
add_custom_target(ostrel_test_dialogs DEPENDS ${test_dialogs})

# There are many tests, and most of their building is the compiling of the same headers: so these are
# compiled once, and the tests themselves without optimisation and with lines alone for a debugger.
# What they prove is built as it always is. Both test programs are linked from the same tests: under
# the sanitizers stands what they prove.
add_library(ostrel_test_objects OBJECT
  ${OSTREL_TEST_SOURCES}
  ${CMAKE_SOURCE_DIR}/hosts/record_fields.cpp
  ${CMAKE_SOURCE_DIR}/tests/platform/headless/test_dialogs.cpp
  ${CMAKE_SOURCE_DIR}/tests/scenarios/scenario_player.cpp
  ${CMAKE_SOURCE_DIR}/tests/scenarios/sheet_scenario.cpp
  ${CMAKE_SOURCE_DIR}/tests/support/test_main.cpp)
target_include_directories(ostrel_test_objects PRIVATE
  ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/tests ${CMAKE_SOURCE_DIR}/hosts)
target_compile_definitions(ostrel_test_objects PRIVATE
  OSTREL_SCENARIOS="${CMAKE_SOURCE_DIR}/tests/scenarios"
  OSTREL_TEST_DIALOGS="${test_dialogs}")
target_link_libraries(ostrel_test_objects PRIVATE GTest::gmock GTest::gtest ostrel_flags)
target_compile_options(ostrel_test_objects PRIVATE -O0 -g1)
target_precompile_headers(ostrel_test_objects PRIVATE
  <gmock/gmock.h> <gtest/gtest.h> <algorithm> <functional> <map> <memory> <span> <string> <vector>)
add_dependencies(ostrel_test_objects ostrel_test_dialogs ostrel_resources)

function(ostrel_add_tests name world)
  add_executable(${name} $<TARGET_OBJECTS:ostrel_test_objects>)
  target_link_libraries(${name} PRIVATE ${world} GTest::gmock GTest::gtest)
endfunction()
ostrel_add_tests(ostrel_tests ostrel_test_world)
# A share for each core of a small machine.
function(ostrel_add_shares program label)
  set(shares 4)
  foreach(share RANGE 1 ${shares})
    math(EXPR index "${share} - 1")
    add_test(NAME ${program}_${share} COMMAND ${program} --gtest_brief=1)
    set_tests_properties(${program}_${share} PROPERTIES
      LABELS "${label}"
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${shares};GTEST_SHARD_INDEX=${index}")
  endforeach()
endfunction()
ostrel_add_shares(ostrel_tests native)
ostrel_add_tests(ostrel_tests_asan ostrel_test_world_asan)
set_target_properties(ostrel_tests_asan PROPERTIES EXCLUDE_FROM_ALL ON)
add_dependencies(ostrel_asan ostrel_tests_asan)
ostrel_add_shares(ostrel_tests_asan asan)

add_test(NAME shipped_texts COMMAND ${OSTREL_PYTHON} ${CMAKE_SOURCE_DIR}/tools/check-strings.py)
add_test(NAME shipped_texts_check
  COMMAND ${OSTREL_PYTHON} ${CMAKE_SOURCE_DIR}/tests/tools/check_strings_test.py)
add_test(NAME stamp_expectations
  COMMAND ${OSTREL_PYTHON} ${CMAKE_SOURCE_DIR}/tests/job/expected/stamp_model.py --check)
foreach(subject compiled_dialogs compiled_pictures layout_pictures)
  add_test(NAME ${subject}
    COMMAND ${OSTREL_PYTHON} ${CMAKE_SOURCE_DIR}/tests/resources/${subject}_test.py
      ${CMAKE_BINARY_DIR}/resources)
endforeach()

# The native side of tools/test-peers.
add_executable(store_peer tests/peers/native_peer.cpp tests/peers/store_script.cpp)
target_link_libraries(store_peer PRIVATE ostrel_test_world ostrel_flags)

include(fuzz/fuzzers.cmake)

# ---- Benches --------------------------------------------------------------------------------------

find_package(benchmark REQUIRED)
find_package(pugixml REQUIRED)  # a peer
file(GLOB OSTREL_BENCH_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/bench/native/*_bench.cpp)
add_executable(ostrel_bench ${OSTREL_BENCH_SOURCES})
target_link_libraries(ostrel_bench
  PRIVATE
    ostrel_test_world
    benchmark::benchmark
    benchmark::benchmark_main
    pugixml::pugixml
    ostrel_flags)
