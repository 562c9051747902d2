# The Windows build: the driver library, and the programs that drive it inside a print system.
#
# Everything that a driver package consists of lies side by side in ${CMAKE_BINARY_DIR}/bin: the
# driver library, its resource libraries and the printer description. The programs look for the
# package beside themselves.
enable_language(RC)
set(CMAKE_RC_FLAGS "${CMAKE_RC_FLAGS} -c 65001")  # our resource sources are UTF-8

# One set of definitions for every piece of code that sees the platform's headers.
add_library(ostrel_windows INTERFACE)
target_link_libraries(ostrel_windows INTERFACE ostrel_flags)
target_include_directories(ostrel_windows INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_definitions(ostrel_windows INTERFACE
  UNICODE _UNICODE STRICT NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601 NTDDI_VERSION=0x06010000)

# The stack protector of ostrel_flags has its code in a library of the compiler's, which the linker
# adds when told again. No time stamps in what we build: the same sources give the same bytes.
set(OSTREL_STATIC_LINK
  -static -static-libgcc -static-libstdc++ -fstack-protector-strong -Wl,--no-insert-timestamp)

# ---- The driver library ---------------------------------------------------------------------------

file(GLOB OSTREL_WIN32_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/platform/win32/*.cpp)
add_library(ostrel_win32 STATIC ${OSTREL_WIN32_SOURCES})
target_link_libraries(ostrel_win32 PUBLIC ostrel_windows PRIVATE winspool advapi32 shell32)

add_library(ostrelPCL6ui MODULE
  src/driver/exports.cpp
  src/driver/ostrelPCL6ui.def
  src/driver/ostrelPCL6ui.rc)
set_target_properties(ostrelPCL6ui PROPERTIES
  PREFIX ""
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set_source_files_properties(src/driver/ostrelPCL6ui.rc PROPERTIES
  OBJECT_DEPENDS ${CMAKE_SOURCE_DIR}/src/driver/ostrelPCL6ui.manifest)
target_include_directories(ostrelPCL6ui PRIVATE ${CMAKE_SOURCE_DIR}/resources)
target_link_libraries(ostrelPCL6ui PRIVATE ostrel_logic ostrel_win32 winspool)
target_link_options(ostrelPCL6ui PRIVATE ${OSTREL_STATIC_LINK})
add_dependencies(ostrelPCL6ui ostrel_resources)

# ---- Neighbours ----------------------------------------------------------------------------------

# Stand-ins for what the driver only calls: test and demonstration equipment. The companion library
# waits in a folder of its own for hosts/print_system_setup to install it; the common property sheet
# is far enough from the programs for none of them to load it by accident.
add_library(olunidrvui MODULE
  neighbours/companion/companion.cpp
  neighbours/companion/olunidrvui.def
  neighbours/companion/olunidrvui.rc)
set_target_properties(olunidrvui PROPERTIES
  PREFIX ""
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/neighbours)
target_include_directories(olunidrvui
  PRIVATE
    ${CMAKE_SOURCE_DIR}/neighbours
    ${CMAKE_SOURCE_DIR}/neighbours/companion
    ${CMAKE_SOURCE_DIR}/resources)
target_link_libraries(olunidrvui PRIVATE ostrel_windows winspool)
target_link_options(olunidrvui PRIVATE ${OSTREL_STATIC_LINK})

add_library(compstui MODULE neighbours/compstui/compstui.cpp neighbours/compstui/compstui.def)
set_target_properties(compstui PROPERTIES
  PREFIX ""
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/common_sheet)
target_link_libraries(compstui PRIVATE ostrel_windows comctl32)
target_link_options(compstui PRIVATE ${OSTREL_STATIC_LINK})

# A program without a console that waits to be installed.
function(ostrel_add_neighbour name output)
  add_executable(${name} WIN32 ${ARGN})
  set_target_properties(${name} PROPERTIES
    OUTPUT_NAME ${output}
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/neighbours)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/neighbours)
  target_link_libraries(${name} PRIVATE ostrel_windows)
  target_link_options(${name} PRIVATE -municode ${OSTREL_STATIC_LINK})
endfunction()
ostrel_add_neighbour(ostrel_envelope_program ostrelPCL6EnvDlg
  neighbours/envelope_program/envelope_program.cpp)
ostrel_add_neighbour(ostrel_status_monitor ostrelsm neighbours/status_monitor/status_monitor.cpp)

# ---- Programs -------------------------------------------------------------------------------------

# A console program that runs beside the package.
function(ostrel_add_program name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE ostrel_windows)
  target_link_options(${name} PRIVATE -municode ${OSTREL_STATIC_LINK})
  add_dependencies(${name}
    ostrelPCL6ui ostrel_resources olunidrvui compstui
    ostrel_envelope_program ostrel_status_monitor)
endfunction()

# nlohmann-json is headers alone, but Debian keeps it among the native ones. A link to that one
# folder lets the cross compiler see it without seeing its neighbours.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/json_include)
find_path(OSTREL_JSON_HEADERS nlohmann/json.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(CREATE_LINK ${OSTREL_JSON_HEADERS}/nlohmann ${CMAKE_BINARY_DIR}/json_include/nlohmann SYMBOLIC)

add_library(ostrel_print_system_setup STATIC
  hosts/import_patch.cpp hosts/print_system_setup.cpp)
target_link_libraries(ostrel_print_system_setup PUBLIC ostrel_windows winspool)
target_include_directories(ostrel_print_system_setup PUBLIC ${CMAKE_SOURCE_DIR}/hosts)

# Opens a property sheet and drives it by its windows.
add_library(ostrel_sheet_driver STATIC hosts/sheet_driver.cpp)
target_link_libraries(ostrel_sheet_driver PUBLIC ostrel_print_system_setup)

configure_file(hosts/ostrel_hazel_2.ppd ${CMAKE_BINARY_DIR}/bin/ostrel_hazel_2.ppd COPYONLY)
configure_file(resources/ostrelConfig.ini ${CMAKE_BINARY_DIR}/bin/ostrelConfig.ini COPYONLY)

ostrel_add_program(driver_report
  hosts/driver_report.cpp hosts/report_data.cpp hosts/report_kept.cpp hosts/report_text.cpp
  hosts/report_json.cpp)
target_link_libraries(driver_report PRIVATE ostrel_print_system_setup ostrel_logic ostrel_win32)
target_include_directories(driver_report SYSTEM PRIVATE ${CMAKE_BINARY_DIR}/json_include)

# Shows the dialogs and checks that everything in them fits: tools/show-dialogs runs it.
ostrel_add_program(dialog_gallery
  hosts/dialog_gallery.cpp hosts/dialog_measure.cpp hosts/dialog_states.cpp hosts/screenshot.cpp)
target_link_libraries(dialog_gallery PRIVATE ostrel_print_system_setup comctl32 gdi32 msimg32)
add_dependencies(dialog_gallery ${OSTREL_RESOURCE_LIBRARIES})

ostrel_add_program(printing_preferences
  hosts/printing_preferences.cpp hosts/record_fields.cpp hosts/report_kept.cpp hosts/screenshot.cpp)
target_link_libraries(printing_preferences
  PRIVATE ostrel_sheet_driver ostrel_logic ostrel_win32 gdi32)

# Plays an application and the graphics engine that print a document: tools/print-pages runs it.
ostrel_add_program(print_document
  hosts/job_settings.cpp hosts/print_document.cpp hosts/print_job.cpp hosts/record_fields.cpp
  hosts/render_driver_link.cpp hosts/sample_document.cpp
  neighbours/render_driver/render_driver.cpp)
add_dependencies(print_document ${OSTREL_RESOURCE_LIBRARIES})
target_include_directories(print_document PRIVATE ${CMAKE_SOURCE_DIR}/neighbours)
target_link_libraries(print_document
  PRIVATE ostrel_print_system_setup ostrel_logic ostrel_win32 gdi32)

ostrel_add_program(print_system_bench
  bench/print_system/print_system_bench.cpp bench/print_system/sheet_cost.cpp
  bench/print_system/stamp_cost.cpp bench/print_system/store_cost.cpp)
target_link_libraries(print_system_bench
  PRIVATE ostrel_print_system_setup ostrel_logic ostrel_win32 gdi32)

# ---- Tests ----------------------------------------------------------------------------------------

set(INSTALL_GTEST OFF)
set(BUILD_GMOCK OFF)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# The in-memory platform stands beside the real one here: a test draws on both and compares.
file(GLOB OSTREL_HEADLESS_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/platform/headless/*.cpp)
add_library(ostrel_headless STATIC EXCLUDE_FROM_ALL ${OSTREL_HEADLESS_SOURCES})
target_link_libraries(ostrel_headless PUBLIC ostrel_logic PRIVATE ostrel_flags)

file(GLOB OSTREL_PRINT_SYSTEM_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/print_system/*.cpp)
ostrel_add_program(print_system_tests
  ${OSTREL_PRINT_SYSTEM_TESTS}
  hosts/record_fields.cpp
  tests/conformance/conformance_dialogs.rc
  tests/scenarios/scenario_player.cpp
  tests/scenarios/sheet_scenario.cpp)
target_include_directories(print_system_tests
  PRIVATE ${CMAKE_SOURCE_DIR}/tests ${CMAKE_SOURCE_DIR}/neighbours)
target_link_libraries(print_system_tests
  PRIVATE ostrel_print_system_setup ostrel_sheet_driver ostrel_headless ostrel_logic
    ostrel_win32 gtest -lcompstui comctl32 comdlg32 psapi version)

# Language libraries that hold a page for each dialog, or one alone.
function(ostrel_add_test_pages name)
  add_library(${name} MODULE tests/print_system/${name}.rc)
  set_target_properties(${name} PROPERTIES
    PREFIX ""
    LINKER_LANGUAGE C
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/test_libraries)
  target_link_options(${name} PRIVATE -nostdlib -Wl,--entry=0 -Wl,--no-insert-timestamp)
  add_dependencies(print_system_tests ${name})
endfunction()
ostrel_add_test_pages(test_pages)
ostrel_add_test_pages(test_device_page)

file(GLOB_RECURSE scenarios CONFIGURE_DEPENDS
  RELATIVE ${CMAKE_SOURCE_DIR}/tests ${CMAKE_SOURCE_DIR}/tests/scenarios/*.txt)
foreach(scenario IN LISTS scenarios)
  configure_file(tests/${scenario} ${CMAKE_BINARY_DIR}/bin/${scenario} COPYONLY)
endforeach()

# Programs that work on a settings file beside others: tools/test-peers runs them.
ostrel_add_program(store_peer tests/peers/windows_peer.cpp tests/peers/store_script.cpp)
ostrel_add_program(store_stress tests/peers/store_stress.cpp tests/peers/stress_file.cpp)
foreach(program store_peer store_stress)
  target_link_libraries(${program} PRIVATE ostrel_logic ostrel_win32 psapi)
endforeach()
