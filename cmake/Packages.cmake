# Debian packages: scripts/package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR Merovanta)
set(CPACK_PACKAGE_CONTACT "Merovanta maintainers <maintainers@merovanta.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${CMAKE_BINARY_DIR}/src/Qt/Quick ${CMAKE_BINARY_DIR}/src/Qt/QuickChat ${CMAKE_BINARY_DIR}/src/InMemory)

# merovanta_package(PART NAME SECTION SUMMARY [DEPENDS])
macro(merovanta_package part name section summary)
  list(APPEND CPACK_COMPONENTS_ALL ${part})
  string(TOUPPER ${part} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  # The first line is the summary.
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${summary}
An agent of a customer service sees the visitor's screen live, private views
blacked out, draws on it, taps in it and chats. The library is linked into the
visitor's application.")
  set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${ARGN}")
  install(FILES ${CMAKE_BINARY_DIR}/packages/copyright ${CMAKE_BINARY_DIR}/packages/changelog.gz
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${part})
endmacro()

set(same "(= ${PROJECT_VERSION})")
set(CPACK_COMPONENTS_ALL "")
merovanta_package(runtime libmerovanta${PROJECT_VERSION_MAJOR} libs "customer-engagement library for Qt Quick")
merovanta_package(chat libmerovanta-quickchat${PROJECT_VERSION_MAJOR} libs
                  "customer-engagement library for Qt Quick, chat")
merovanta_package(development libmerovanta-dev libdevel "customer-engagement library for Qt Quick, headers"
                  "libmerovanta${PROJECT_VERSION_MAJOR} ${same}")
merovanta_package(chat_development libmerovanta-quickchat-dev libdevel
                  "customer-engagement library for Qt Quick, headers of the chat"
                  "libmerovanta-dev ${same}, libmerovanta-quickchat${PROJECT_VERSION_MAJOR} ${same}")
merovanta_package(qml qml6-module-merovanta libs "customer-engagement library for Qt Quick, QML module")
if(MEROVANTA_DEVSERVICE)
  merovanta_package(devservice merovanta-devservice utils "development service for the customer-engagement library")
endif()
set(CPACK_DEBIAN_CHAT_PACKAGE_RECOMMENDS "poppler-utils, qml6-module-qtquick-dialogs, qml6-module-qt-labs-folderlistmodel")

string(TIMESTAMP today "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(cmake/debian/copyright packages/copyright COPYONLY)
configure_file(cmake/debian/changelog.in packages/changelog)
configure_file(cmake/debian/triggers packages/triggers COPYONLY)
execute_process(COMMAND gzip -9 -n -k -f packages/changelog WORKING_DIRECTORY ${CMAKE_BINARY_DIR} COMMAND_ERROR_IS_FATAL ANY)
foreach(part RUNTIME CHAT)
  set(CPACK_DEBIAN_${part}_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/packages/triggers)
endforeach()

include(CPack)
