include(CMakeFindDependencyMacro)
find_dependency(Threads)
find_dependency(X11)
# FLTK is named by -lfltk: its own package for CMake demands tools that nobody needs here.
include(${CMAKE_CURRENT_LIST_DIR}/wagonsTargets.cmake)
