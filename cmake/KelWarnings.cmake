# Warnings as errors on our own code only; third-party headers come in as SYSTEM.
function(kel_target_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
endfunction()
