# A room is a folder of src/ and a library. Its headers are reached through a folder that holds
# nothing but a link to the room, so a room sees the headers of the rooms it links and no others:
# an include that goes sideways or upwards does not build.

# quorvelant_room(NAME [QT] [ROOMS room...] [LIBRARIES target...] [PRIVATE_LIBRARIES target...]). QT: its classes
# have signals.
function(quorvelant_room name)
  cmake_parse_arguments(ARG "QT" "" "ROOMS;LIBRARIES;PRIVATE_LIBRARIES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  set(door ${PROJECT_BINARY_DIR}/rooms/${name})
  file(MAKE_DIRECTORY ${door})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${door}/${name} SYMBOLIC)
  if(sources)
    add_library(${name} STATIC ${sources})
    set(scope PUBLIC)
    target_link_libraries(${name} PRIVATE quorvelant_flags ${ARG_PRIVATE_LIBRARIES})
    # The standard library's commonest headers, compiled once for all rooms. Rooms with definitions of their
    # own cannot share it. `./dev lint` builds without, so each file still includes what it uses.
    if(ARG_QT)
      string(REGEX MATCH "Widgets|Gui" qt_module "${ARG_LIBRARIES}")
      set(qt_header "<Qt${qt_module}>")
      set_target_properties(${name} PROPERTIES AUTOMOC ON)
      target_precompile_headers(${name} PRIVATE <algorithm> <array> <functional> <map> <memory> <optional> <span>
        <string> <string_view> <utility> <vector> <fmt/format.h> ${qt_header})
    elseif(name STREQUAL "base")
      target_precompile_headers(${name} PRIVATE <algorithm> <array> <cstdint> <filesystem> <functional> <map>
        <memory> <optional> <ranges> <span> <string> <string_view> <unordered_map> <utility> <vector>
        <fmt/format.h>)
    elseif(NOT ARG_PRIVATE_LIBRARIES)
      target_precompile_headers(${name} REUSE_FROM base)
    endif()
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${name} ${scope} ${door})
  target_link_libraries(${name} ${scope} ${ARG_ROOMS} ${ARG_LIBRARIES})
endfunction()

# quorvelant_tests(ROOM [OWN_MAIN] [LINK room...] [SHARDS n]): one test program a room, from every *_test.cpp beside, with
# the rooms that the tests alone use. A process a case would start a thousand; ctest runs the program whole, or
# in n processes that deal its cases among them.
function(quorvelant_tests room)
  cmake_parse_arguments(ARG "OWN_MAIN" "SHARDS" "LINK" ${ARGN})
  if(NOT ARG_SHARDS)
    set(ARG_SHARDS 1)
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${room}_tests ${sources})
  target_link_libraries(${room}_tests PRIVATE quorvelant_flags ${room} testing ${ARG_LINK}
    $<IF:$<BOOL:${ARG_OWN_MAIN}>,GTest::gmock,GTest::gmock_main>)
  target_precompile_headers(${room}_tests REUSE_FROM testing)
  set(leaks "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.txt:print_suppressions=0")
  foreach(shard RANGE 1 ${ARG_SHARDS})
    math(EXPR index "${shard} - 1")
    add_test(NAME ${room}_${shard}_of_${ARG_SHARDS} COMMAND ${room}_tests --gtest_brief=1)
    # The rooms with many shards take longest: they start first.
    set_tests_properties(${room}_${shard}_of_${ARG_SHARDS} PROPERTIES TIMEOUT 900 COST ${ARG_SHARDS}
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${ARG_SHARDS};GTEST_SHARD_INDEX=${index};${leaks}")
  endforeach()
endfunction()
