# The rules every target of our own is compiled by. Imported libraries are left alone.

# tamrix_target(TARGET): C++20 without extensions, position independent (the core goes into a shared library),
# every warning an error.
function(tamrix_target target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Werror)
    # gcc looks for memory to use again before it has taken a gigabyte, which costs a tenth of its time.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:--param=ggc-min-heapsize=1000000>)
endfunction()
