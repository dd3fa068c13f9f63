# Warnings as errors on our own code only; third-party headers come in as SYSTEM.
function(kel_target_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
    # GCC 12's -Wrestrict misreads short std::string concatenations inlined at -O2/-O3 as
    # overlapping copies (fixed in GCC 13); it stays a warning there instead of failing the build.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE -Wno-error=restrict)
    endif()
endfunction()
