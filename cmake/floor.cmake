# SPDX-License-Identifier: GPL-3.0-or-later

# zqm_floor(NAME [FLOORS below...] [LIBRARIES outside...])
# One floor of the house: a static library of all sources in src/NAME. Its tests link this floor and
# those below only, so that a call upwards fails at link time.
function(zqm_floor name)
  cmake_parse_arguments(arg "" "" "FLOORS;LIBRARIES" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
       ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h)
  if(NOT sources)
    list(TRANSFORM arg_FLOORS PREPEND zqm_)
    add_library(zqm_${name} INTERFACE)
    target_link_libraries(zqm_${name} INTERFACE zqm_options ${arg_FLOORS})
    return()
  endif()
  add_library(zqm_${name} STATIC ${sources})
  target_include_directories(zqm_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  list(TRANSFORM arg_FLOORS PREPEND zqm_)
  target_link_libraries(zqm_${name} PUBLIC zqm_options Qt6::Core Qt6::Gui ${arg_FLOORS}
                                    PRIVATE ${arg_LIBRARIES})
  target_precompile_headers(zqm_${name} PRIVATE
    <algorithm> <array> <cstdint> <functional> <map> <memory> <optional> <span> <string> <vector>
    <QByteArray> <QDateTime> <QDir> <QFile> <QFileInfo> <QImage> <QList> <QLocale> <QString>
    <QStringList>)
endfunction()

# zqm_tests(NAME [FLOORS linked...] [LIBRARIES outside...])
# One test program for all of tests/NAME, its cases known to CTest one by one.
function(zqm_tests name)
  cmake_parse_arguments(arg "" "" "FLOORS;LIBRARIES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${name} ${sources})
  list(TRANSFORM arg_FLOORS PREPEND zqm_)
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(test_${name} PRIVATE ${arg_FLOORS} zqm_options ${arg_LIBRARIES}
                                     zqm_test_main GTest::gmock)
  target_precompile_headers(test_${name} REUSE_FROM zqm_test_main)
  gtest_discover_tests(test_${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300)
endfunction()
