# The compiler's static thread library and exception library are made for programs: what they take from the system they
# keep to the end of the process. In a DLL that comes and goes they take it from src/com/server/run_time_leftovers.cpp
# instead, which gives it back.

# tamrix_returning_run_time(TARGET): modules with TARGET in them are linked with copies of those libraries whose calls
# for memory, handles, critical sections and places for data of threads go to the functions of that file.
function(tamrix_returning_run_time target)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/run_time)
    file(MAKE_DIRECTORY ${folder})
    set(renamed ${PROJECT_SOURCE_DIR}/cmake/run_time_symbols.txt)
    set(copies "")
    foreach(name pthread gcc_eh)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=lib${name}.a OUTPUT_VARIABLE original
                        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        set(copy ${folder}/lib${name}.a)
        add_custom_command(OUTPUT ${copy} COMMAND ${CMAKE_OBJCOPY} --redefine-syms=${renamed} ${original} ${copy}
                           DEPENDS ${renamed} ${original} VERBATIM)
        list(APPEND copies ${copy})
    endforeach()
    add_custom_target(${target}_run_time DEPENDS ${copies})
    add_dependencies(${target} ${target}_run_time)
    target_link_directories(${target} INTERFACE ${folder})
endfunction()
