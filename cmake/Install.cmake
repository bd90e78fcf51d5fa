# What an agent's developer gets: libraries, headers under one folder, and a
# CMake package with the same targets as this build.
include(CMakePackageConfigHelpers)

set(ZK_PACKAGE ${CMAKE_INSTALL_LIBDIR}/cmake/zk_quornex)
set(ZK_HEADERS ${CMAKE_INSTALL_INCLUDEDIR}/zk_quornex)

foreach(part idl contract common platform)
  set_target_properties(zk_quornex_${part} PROPERTIES EXPORT_NAME ${part})
endforeach()
install(
  TARGETS zk_quornex_idl zk_quornex_contract zk_quornex_common zk_quornex_platform zk_orb zk_ace
  EXPORT zk_quornex
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS zk-agent zk-nms RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# All headers but those that stay here.
file(STRINGS ${PROJECT_SOURCE_DIR}/cmake/internal-headers.txt internal)
list(TRANSFORM internal PREPEND ${PROJECT_SOURCE_DIR}/)
file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/zk_quornex/*.h)
list(REMOVE_ITEM headers ${internal})
foreach(header ${headers})
  file(RELATIVE_PATH path ${PROJECT_SOURCE_DIR} ${header})
  get_filename_component(folder ${path} DIRECTORY)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder})
endforeach()
install(
  DIRECTORY ${PROJECT_BINARY_DIR}/zk_quornex/idl/stubs/
  DESTINATION ${ZK_HEADERS}/stubs
  FILES_MATCHING
  PATTERN "*.hh"
  PATTERN "*.h"
  PATTERN "*.inl")
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/zk_quornex/idl/
  DESTINATION ${CMAKE_INSTALL_DATADIR}/idl/zk_quornex
  FILES_MATCHING
  PATTERN "*.idl")

install(EXPORT zk_quornex NAMESPACE zk_quornex:: DESTINATION ${ZK_PACKAGE})
configure_package_config_file(cmake/zk_quornexConfig.cmake.in zk_quornexConfig.cmake
                              INSTALL_DESTINATION ${ZK_PACKAGE})
write_basic_package_version_file(zk_quornexConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zk_quornexConfig.cmake
              ${PROJECT_BINARY_DIR}/zk_quornexConfigVersion.cmake DESTINATION ${ZK_PACKAGE})
