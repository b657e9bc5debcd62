# Strict warnings for this project's own targets; generated code and third-party headers are exempt.
function(merovanta_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(MEROVANTA_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
