# Windows: plotwell.exe is a GUI program (no console window beside the
# editor) with its icon and version information in its resources;
# plotwell-map.exe stays a console program. The resources are compiled with
# windres by hand, so that the compiler options of the C++ code never reach it.
if(NOT WIN32)
  return()
endif()

set_target_properties(plotwell PROPERTIES WIN32_EXECUTABLE ON)

set(PLOTWELL_ICON ${PROJECT_SOURCE_DIR}/desktop/plotwell.ico)
configure_file(${PROJECT_SOURCE_DIR}/desktop/plotwell.rc.in ${CMAKE_CURRENT_BINARY_DIR}/plotwell.rc @ONLY)
if(NOT CMAKE_RC_COMPILER)
  find_program(CMAKE_RC_COMPILER NAMES windres REQUIRED)
endif()
set(resources ${CMAKE_CURRENT_BINARY_DIR}/plotwell_rc.o)
add_custom_command(OUTPUT ${resources}
  COMMAND ${CMAKE_RC_COMPILER} -O coff -i ${CMAKE_CURRENT_BINARY_DIR}/plotwell.rc -o ${resources}
  DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/plotwell.rc ${PLOTWELL_ICON}
  COMMENT "Compiling plotwell.exe's resources")
set_source_files_properties(${resources} PROPERTIES EXTERNAL_OBJECT TRUE GENERATED TRUE)
target_sources(plotwell PRIVATE ${resources})
