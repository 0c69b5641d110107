# Headers that most files include are parsed once for all targets of a kind. It is for speed only: every file includes what
# it uses itself. The preset `windows`, which leaves this off for all but tests, proves it for src and sim.
option(TAMRIX_PRECOMPILED "Parse the headers that most files of libraries and programs include once" ON)

set(standard_headers <algorithm> <array> <cstdint> <filesystem> <functional> <map> <memory> <optional> <span> <stdexcept> <string>
    <string_view> <utility> <vector>)

# tamrix_precompiled_kind(KIND HEADER...): compiled with the flags of the targets that will use it.
function(tamrix_precompiled_kind kind)
    set(empty ${CMAKE_BINARY_DIR}/precompiled_${kind}.cpp)
    file(CONFIGURE OUTPUT ${empty} CONTENT "")
    add_library(tamrix_precompiled_${kind} OBJECT ${empty})
    tamrix_target(tamrix_precompiled_${kind})
    target_precompile_headers(tamrix_precompiled_${kind} PRIVATE ${standard_headers} ${ARGN})
endfunction()

# tamrix_precompiled(TARGET KIND): the target uses them.
function(tamrix_precompiled target kind)
    if(TAMRIX_PRECOMPILED OR kind STREQUAL "tests")
        target_precompile_headers(${target} REUSE_FROM tamrix_precompiled_${kind})
    endif()
endfunction()

# Files are compiled some at a time: what their headers make of templates is most of the work, and is the same in all of
# them. With a file that does not go together with its neighbours the compiler says which name both have.
option(TAMRIX_JOINED_TESTS "Compile several test files as one" ON)
# The presets `release` and `windows` compile each of these by itself, with all warnings, and so find what one lacks.
option(TAMRIX_JOINED_SOURCES "Compile several files of a library or program as one" OFF)

# tamrix_join(TARGET): its files are compiled by up to six neighbours of one folder, the same ones in each target and on
# each system, so that files which do not go together are noticed everywhere. What a file has in an unnamed namespace may
# then be part of a class in a named one, or have the name of a variable in another file, which are warnings.
function(tamrix_join target)
    get_target_property(sources ${target} SOURCES)
    foreach(source ${sources})
        cmake_path(ABSOLUTE_PATH source NORMALIZE)
        cmake_path(GET source PARENT_PATH folder)
        file(GLOB neighbours ${folder}/*.cpp)
        list(FIND neighbours ${source} place)
        if(place EQUAL -1)  # the build makes it
            continue()
        endif()
        math(EXPR group "${place} / 6")
        cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
        string(REPLACE "/" "_" folder ${folder})
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder}_${group})
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    target_compile_options(${target} PRIVATE -Wno-subobject-linkage -Wno-shadow)
endfunction()

# tamrix_joined_tests(TARGET): for tests.
function(tamrix_joined_tests target)
    if(TAMRIX_JOINED_TESTS)
        tamrix_join(${target})
    endif()
endfunction()

# tamrix_joined(TARGET [FILE...]): for all others; these files have names of their neighbours and stay by themselves.
function(tamrix_joined target)
    if(TAMRIX_JOINED_SOURCES)
        tamrix_join(${target})
        set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    endif()
endfunction()
