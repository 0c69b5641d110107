# The rules every target of our own is compiled by. Imported libraries are left alone.

# tamrix_target(TARGET): C++20 without extensions, position independent (the core goes into a shared library),
# every warning an error.
function(tamrix_target target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Werror)
    # What a sanitizer adds hides from gcc that an empty std::optional is not read; the other presets keep this warning.
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
        target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
    # gcc looks for memory to use again before it has taken a gigabyte, which costs a tenth of its time.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:--param=ggc-min-heapsize=1000000>)
endfunction()
