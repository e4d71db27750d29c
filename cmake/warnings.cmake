# Our own code is compiled with these; third-party code is not.
function(quillon_warnings target)
  target_compile_options(${target} PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wconversion
      -Woverloaded-virtual -Wimplicit-fallthrough -Werror>)
endfunction()
