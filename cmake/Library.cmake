# What the installed libraries have in common, static and shared.

# Makes a library what hosts link: its name, its version and, when it is shared, nothing visible but the interface.
function(merovanta_library target name)
  add_library(Merovanta::${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  if(NOT BUILD_SHARED_LIBS)
    return()
  endif()
  string(TOLOWER ${name} lower)
  set_target_properties(${target} PROPERTIES
      OUTPUT_NAME merovanta-${lower} VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  # Definitions of its own are never replaced by a host's, nor those of the static libraries within seen by it.
  target_link_options(${target} PRIVATE LINKER:-Bsymbolic,--exclude-libs,ALL,-z,defs,--version-script=${PROJECT_SOURCE_DIR}/cmake/merovanta.map)
  set_target_properties(${target} PROPERTIES LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/merovanta.map)
endfunction()

# Makes parts, which are libraries to themselves in a static build, part of a shared one.
function(merovanta_contain target)
  foreach(part IN LISTS ARGN)
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:${part}>)
    target_link_libraries(${target} PRIVATE ${part})
  endforeach()
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
      $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endfunction()
