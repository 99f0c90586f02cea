# find_package(Torvane) leads here: the target Torvane::engine.
include(CMakeFindDependencyMacro)
find_dependency(Threads)
include(${CMAKE_CURRENT_LIST_DIR}/TorvaneTargets.cmake)
