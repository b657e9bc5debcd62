# Installs the library so that find_package(Merovanta COMPONENTS Quick) finds it.
include(CMakePackageConfigHelpers)

set(merovanta_targets merovanta_proto merovanta_core merovanta_inmemory)
if(MEROVANTA_QT)
  list(APPEND merovanta_targets merovanta_qt_foundation merovanta_qt_quick)
endif()
set_target_properties(merovanta_proto PROPERTIES EXPORT_NAME Proto)
set_target_properties(merovanta_core PROPERTIES EXPORT_NAME Core)
set_target_properties(merovanta_inmemory PROPERTIES EXPORT_NAME InMemory)
if(MEROVANTA_QT)
  set_target_properties(merovanta_qt_foundation PROPERTIES EXPORT_NAME QtFoundation)
  set_target_properties(merovanta_qt_quick PROPERTIES EXPORT_NAME Quick)
endif()
install(TARGETS ${merovanta_targets} EXPORT MerovantaTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT MerovantaTargets NAMESPACE Merovanta:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Merovanta)
install(DIRECTORY include/Merovanta DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# What a host's own tests need of the in-memory platform.
install(DIRECTORY src/Platform src/InMemory DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/MerovantaInMemory
        FILES_MATCHING PATTERN "*.h")
install(FILES src/General/StringError.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/MerovantaInMemory/General)

configure_package_config_file(cmake/MerovantaConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/MerovantaConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Merovanta)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/MerovantaConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/MerovantaConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/MerovantaConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Merovanta)
