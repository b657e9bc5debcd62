# Installs the library so that find_package(Merovanta COMPONENTS Quick) finds it, in the parts that become packages.
include(CMakePackageConfigHelpers)

set(merovanta_cmake ${CMAKE_INSTALL_LIBDIR}/cmake/Merovanta)

# merovanta_install(EXPORT RUNTIME_PART DEVELOPMENT_PART TARGET…)
function(merovanta_install export runtime development)
  install(TARGETS ${ARGN} EXPORT ${export}
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${development}
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${runtime} NAMELINK_COMPONENT ${development})
  install(EXPORT ${export} NAMESPACE Merovanta:: DESTINATION ${merovanta_cmake} COMPONENT ${development})
endfunction()

set(merovanta_targets merovanta_inmemory)
if(MEROVANTA_QT)
  list(APPEND merovanta_targets merovanta_qt_quick)
endif()
if(NOT BUILD_SHARED_LIBS)
  list(APPEND merovanta_targets merovanta_proto merovanta_url merovanta_core)
  set_target_properties(merovanta_proto PROPERTIES EXPORT_NAME Proto)
  set_target_properties(merovanta_core PROPERTIES EXPORT_NAME Core)
  set_target_properties(merovanta_url PROPERTIES EXPORT_NAME Url)
  if(MEROVANTA_QT)
    list(APPEND merovanta_targets merovanta_qt_foundation)
    set_target_properties(merovanta_qt_foundation PROPERTIES EXPORT_NAME QtFoundation)
  endif()
endif()
merovanta_install(MerovantaTargets runtime development ${merovanta_targets})
install(DIRECTORY include/Merovanta DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
        PATTERN QuickChat.h EXCLUDE)

# Apart, so that a machine may have the rest alone.
if(MEROVANTA_QT AND MEROVANTA_CHAT)
  merovanta_install(MerovantaQuickChatTargets chat chat_development merovanta_qt_quickchat)
  install(FILES include/Merovanta/QuickChat.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Merovanta
          COMPONENT chat_development)
endif()

# What a host's own tests need of the in-memory platform.
install(DIRECTORY src/Platform src/InMemory DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/MerovantaInMemory
        COMPONENT development FILES_MATCHING PATTERN "*.h")
install(FILES src/General/StringError.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/MerovantaInMemory/General
        COMPONENT development)

configure_package_config_file(cmake/MerovantaConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/MerovantaConfig.cmake
                              INSTALL_DESTINATION ${merovanta_cmake})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/MerovantaConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/MerovantaConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/MerovantaConfigVersion.cmake
        DESTINATION ${merovanta_cmake} COMPONENT development)
