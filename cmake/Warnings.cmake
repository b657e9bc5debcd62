# Strict warnings for this project's own targets; generated code and third-party headers are exempt.
function(merovanta_warnings target)
  # Records give every field a default, so designated initialisers may leave fields out.
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                           -Wno-missing-field-initializers)
  if(MEROVANTA_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
