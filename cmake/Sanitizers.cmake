if(MEROVANTA_SANITIZE)
  add_compile_options(-fsanitize=${MEROVANTA_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${MEROVANTA_SANITIZE})
  # GCC takes the instrumented standard library for uninitialised.
  add_compile_options(-Wno-maybe-uninitialized)
  if(MEROVANTA_SANITIZE MATCHES "thread")
    # The server library's fences, which the sanitizer does not model, are no fault of ours.
    add_compile_options(-Wno-tsan)
  endif()
  if(MEROVANTA_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()
