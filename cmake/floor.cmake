# SPDX-License-Identifier: GPL-3.0-or-later

# zqm_floor(NAME [FLOORS below...] [LIBRARIES outside...])
# One floor of the house: a static library of all sources in src/NAME but for its windows. Its tests
# link this floor and those below only, so that a call upwards fails at link time.
function(zqm_floor name)
  cmake_parse_arguments(arg "" "" "FLOORS;LIBRARIES" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
       ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h)
  list(FILTER sources EXCLUDE REGEX "/ui/")
  if(NOT sources)
    list(TRANSFORM arg_FLOORS PREPEND zqm_)
    add_library(zqm_${name} INTERFACE)
    target_link_libraries(zqm_${name} INTERFACE zqm_options ${arg_FLOORS})
    return()
  endif()
  add_library(zqm_${name} STATIC ${sources})
  set_target_properties(zqm_${name} PROPERTIES AUTOMOC ON)
  target_include_directories(zqm_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  list(TRANSFORM arg_FLOORS PREPEND zqm_)
  target_link_libraries(zqm_${name} PUBLIC zqm_options Qt6::Core Qt6::Gui ${arg_FLOORS}
                                    PRIVATE ${arg_LIBRARIES})
  target_precompile_headers(zqm_${name} PRIVATE
    <algorithm> <array> <cstdint> <functional> <map> <memory> <optional> <span> <string> <vector>
    <QByteArray> <QDateTime> <QDir> <QFile> <QFileInfo> <QImage> <QList> <QLocale> <QString>
    <QStringList>)
endfunction()

# zqm_ui_floor(NAME [FLOORS below...] [LIBRARIES outside...])
# The windows of a floor: a static library zqm_NAME_ui of src/NAME/ui. FLOORS are without "zqm_", so
# that a window may stand on its own floor and on the windows below.
function(zqm_ui_floor name)
  cmake_parse_arguments(arg "" "" "FLOORS;LIBRARIES" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/ui/*.cpp
       ${CMAKE_CURRENT_SOURCE_DIR}/${name}/ui/*.h ${CMAKE_CURRENT_SOURCE_DIR}/${name}/ui/*.qrc)
  list(TRANSFORM arg_FLOORS PREPEND zqm_)
  if(NOT sources)
    add_library(zqm_${name}_ui INTERFACE)
    target_link_libraries(zqm_${name}_ui INTERFACE zqm_options Qt6::Widgets ${arg_FLOORS})
    return()
  endif()
  add_library(zqm_${name}_ui STATIC ${sources})
  set_target_properties(zqm_${name}_ui PROPERTIES AUTOMOC ON AUTORCC ON)
  target_include_directories(zqm_${name}_ui PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(zqm_${name}_ui PUBLIC zqm_options Qt6::Widgets ${arg_FLOORS}
                                       PRIVATE ${arg_LIBRARIES})
  target_precompile_headers(zqm_${name}_ui PRIVATE
    <algorithm> <functional> <memory> <optional> <vector> <QBoxLayout> <QDialog> <QEvent> <QImage>
    <QLabel> <QListView> <QMainWindow> <QPainter> <QPushButton> <QString> <QStringList> <QTreeView>
    <QWidget>)
endfunction()

# zqm_tests(FOLDER [WINDOWS] [FLOORS linked...] [LIBRARIES outside...])
# One test program for all of tests/FOLDER, its cases known to CTest one by one. WINDOWS gives it an
# application that can show windows.
function(zqm_tests folder)
  cmake_parse_arguments(arg "WINDOWS" "" "FLOORS;LIBRARIES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  if(NOT sources)
    return()
  endif()
  string(REPLACE "/" "_" name ${folder})
  set(main zqm_test_main)
  if(arg_WINDOWS)
    set(main zqm_test_main_ui)
  endif()
  add_executable(test_${name} ${sources})
  set_target_properties(test_${name} PROPERTIES AUTOMOC OFF)
  list(TRANSFORM arg_FLOORS PREPEND zqm_)
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(test_${name} PRIVATE ${arg_FLOORS} zqm_options ${arg_LIBRARIES}
                                     ${main} GTest::gmock)
  target_precompile_headers(test_${name} REUSE_FROM ${main})
  gtest_discover_tests(test_${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300)
endfunction()
