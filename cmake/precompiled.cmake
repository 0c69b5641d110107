# Headers that most files include are parsed once for all targets of a kind. It is for speed only: every file includes what
# it uses itself, and the presets `release` and `windows`, which leave this off, prove it.
option(TAMRIX_PRECOMPILED "Parse the headers that most files include once" ON)

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
    if(TAMRIX_PRECOMPILED)
        target_precompile_headers(${target} REUSE_FROM tamrix_precompiled_${kind})
    endif()
endfunction()
