# What a host application gets: the shared library, its public headers, and a package that
# find_package(zorutils) finds.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS zorutils zor_options EXPORT zorutils
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
foreach(folder core zortext formats fs xml zorsys)
  install(DIRECTORY zorutils/${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zorutils
    FILES_MATCHING PATTERN "*.h" PATTERN "*_internal.h" EXCLUDE)
endforeach()
install(FILES zorutils/zorutils.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zorutils)
install(FILES zorutils/platform/target.h zorutils/platform/win_types.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zorutils/platform)
if(NOT WIN32)
  # What a host sets and calls of the port itself: the headers that export something.
  file(GLOB zor_port_headers CONFIGURE_DEPENDS zorutils/platform/posix/*.h)
  foreach(header ${zor_port_headers})
    file(STRINGS ${header} exported REGEX "ZOR_API")
    if(exported)
      install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zorutils/platform/posix)
    endif()
  endforeach()
endif()

set(zor_package ${CMAKE_INSTALL_LIBDIR}/cmake/zorutils)
install(EXPORT zorutils NAMESPACE zorutils:: FILE zorutilsTargets.cmake DESTINATION ${zor_package})
# The log's lock and the threads' base stand in public headers.
file(WRITE ${CMAKE_BINARY_DIR}/zorutilsConfig.cmake "include(CMakeFindDependencyMacro)
set(Boost_NO_BOOST_CMAKE ON)
find_dependency(Boost 1.74 COMPONENTS thread)
include(\${CMAKE_CURRENT_LIST_DIR}/zorutilsTargets.cmake)
")
write_basic_package_version_file(${CMAKE_BINARY_DIR}/zorutilsConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/zorutilsConfig.cmake
  ${CMAKE_BINARY_DIR}/zorutilsConfigVersion.cmake DESTINATION ${zor_package})
