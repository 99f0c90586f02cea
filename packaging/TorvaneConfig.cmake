# find_package(Torvane) leads here: the target Torvane::engine.
include(CMakeFindDependencyMacro)
find_dependency(Threads)
find_dependency(ZLIB)
if(NOT WIN32)
  find_dependency(EXPAT)
endif()
include(${CMAKE_CURRENT_LIST_DIR}/TorvaneTargets.cmake)
