# Fails when a file includes a header of a folder that its own folder may not
# use (see cmake/layers.cmake). Run as
#   cmake -DSOURCE_DIR=<the source folder> -P cmake/checklayers.cmake
cmake_minimum_required(VERSION 3.16)
include(${CMAKE_CURRENT_LIST_DIR}/layers.cmake)

set(faults "")
foreach(folder IN LISTS PLOTWELL_CHECKED_FOLDERS)
  set(allowed ${folder} ${PLOTWELL_USES_${folder}})
  if(folder STREQUAL "shell")
    file(GLOB_RECURSE files RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp)
  else()
    file(GLOB files RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp)
  endif()
  foreach(file IN LISTS files)
    file(STRINGS ${SOURCE_DIR}/${file} includes REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
    foreach(line IN LISTS includes)
      string(REGEX MATCH "\"([^\"]+)\"" quoted "${line}")
      set(header "${CMAKE_MATCH_1}")
      # The folder a header belongs to: its first part, but for the window's
      # dialogs in platform/widgets, which the core may not use.
      get_filename_component(used "${header}" DIRECTORY)
      if(used STREQUAL "" OR used MATCHES "_autogen")
        continue()
      endif()
      if(NOT used STREQUAL "platform/widgets")
        string(REGEX REPLACE "/.*" "" used "${used}")
      endif()
      if(NOT used IN_LIST allowed)
        string(APPEND faults "  ${file} includes ${header}: ${folder}/ may include only ${allowed}\n")
      endif()
    endforeach()
  endforeach()
endforeach()

if(faults)
  message(FATAL_ERROR "Includes against the layers (cmake/layers.cmake):\n${faults}")
endif()
