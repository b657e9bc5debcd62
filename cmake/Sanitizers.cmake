if(MEROVANTA_SANITIZE)
  add_compile_options(-fsanitize=${MEROVANTA_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${MEROVANTA_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC takes the instrumented standard library for uninitialised.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
  if(MEROVANTA_SANITIZE MATCHES "thread")
    # The server library's fences, which the sanitizer does not model, are no fault of ours.
    add_compile_options(-Wno-tsan)
  endif()
  if(MEROVANTA_SANITIZE MATCHES "undefined")
    # The web engine's items are built without type information.
    add_compile_options(-fno-sanitize-recover=undefined -fno-sanitize=vptr)
  endif()
endif()
