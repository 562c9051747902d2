# The fuzzers. With clang they are libFuzzer programs; in the other native builds a small driver
# replays their corpora as tests, so that no input that once mattered is forgotten.
file(GLOB OSTREL_FUZZERS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/fuzz/*_fuzz.cpp)

foreach(source IN LISTS OSTREL_FUZZERS)
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/fuzz)
  target_link_libraries(${name} PRIVATE ostrel_test_world ostrel_flags)
  if(OSTREL_FUZZ)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  else()
    target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/fuzz/replay_main.cpp)
    add_test(NAME replay_${name} COMMAND ${name} ${CMAKE_SOURCE_DIR}/fuzz/corpus/${name})
  endif()
endforeach()
if(OSTREL_FUZZ)
  # Coverage feedback for the code under test, not for the harness alone.
  target_compile_options(ostrel_logic PRIVATE -fsanitize=fuzzer-no-link)
endif()
