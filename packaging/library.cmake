# The library as others use it: the archive, the public headers, what CMake and pkg-config find it by, and the examples.
include(CMakePackageConfigHelpers)
set(cmake_package lib/cmake/Torvane)
set(library_generated ${CMAKE_BINARY_DIR}/generated)

set_target_properties(torvane_engine PROPERTIES EXPORT_NAME engine)
write_basic_package_version_file(${library_generated}/TorvaneConfigVersion.cmake COMPATIBILITY SameMajorVersion)
configure_file(packaging/torvane.pc.in ${library_generated}/torvane.pc @ONLY)

install(TARGETS torvane_engine EXPORT TorvaneTargets ARCHIVE DESTINATION lib COMPONENT development)
install(EXPORT TorvaneTargets NAMESPACE Torvane:: DESTINATION ${cmake_package} COMPONENT development)
install(FILES packaging/TorvaneConfig.cmake ${library_generated}/TorvaneConfigVersion.cmake
        DESTINATION ${cmake_package} COMPONENT development)
install(FILES ${library_generated}/torvane.pc DESTINATION lib/pkgconfig COMPONENT development)
install(DIRECTORY include/torvane DESTINATION include COMPONENT development)
install(FILES docs/library.md DESTINATION share/doc/libtorvane-dev COMPONENT development)
install(DIRECTORY examples DESTINATION share/doc/libtorvane-dev COMPONENT development)
