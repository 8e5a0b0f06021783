# The layers of Plotwell's code, from the bottom up: each folder and the
# folders its code may include besides its own. A core folder is a library of
# its own that links only the folders it may include, and the layer check
# (cmake/checklayers.cmake, run by every build and by ctest) fails on any
# include that reaches up or sideways:
#
#   document  <-  platform, view  <-  render, tools, palette  <-  editor  <-  shell
#
set(PLOTWELL_CORE_LAYERS document platform view render tools palette editor)
set(PLOTWELL_USES_document "")
set(PLOTWELL_USES_platform document)
set(PLOTWELL_USES_view document)
set(PLOTWELL_USES_render document platform view)
set(PLOTWELL_USES_tools document platform view)
set(PLOTWELL_USES_palette document platform)
set(PLOTWELL_USES_editor document platform view render tools palette)
# Outside the core: the window's Qt dialogs, the window, the command-line tool.
set(PLOTWELL_USES_platform/widgets document platform)
set(PLOTWELL_USES_shell ${PLOTWELL_CORE_LAYERS} platform/widgets)
set(PLOTWELL_USES_cli ${PLOTWELL_CORE_LAYERS})
# The stand-ins for the services that the tests, the soak and the benchmarks share.
set(PLOTWELL_USES_testing document platform)
set(PLOTWELL_CHECKED_FOLDERS ${PLOTWELL_CORE_LAYERS} platform/widgets shell cli testing)
