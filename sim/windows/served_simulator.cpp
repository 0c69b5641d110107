// The one simulated programmer of a process, which lumbat.dll and its device object share.
#include "base/environment_win32.h"
#include "com/server/stay.h"
#include "sim/library/running.h"
#include "sim/windows/host_memory.h"
#include "sim/windows/served.h"

#include <memory>
#include <mutex>

#include <windows.h>

namespace tamrix::sim {

namespace {

/// Its clock has a thread, and a host may have read into its own memory: so the DLL stays loaded from here on.
void stay_for_good()
{
    HMODULE pinned = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                         reinterpret_cast<LPCWSTR>(com::module()), &pinned);
}

tamrix_programmer* make()
{
    const library_options options = read_options(environment_text(L"TAMRIX_SIMULATOR"));
    auto made = std::make_unique<tamrix_programmer>(options, place_at_host(options.host_instance));
    running_programmers::of_this_process().add(made.get());
    stay_for_good();
    return made.release();
}

/// Never deleted: when the process ends, its thread has already ended, and nothing could wait for it.
tamrix_programmer& the_programmer()
{
    static tamrix_programmer* const made = make();
    return *made;
}

}  // namespace

void serve(const std::function<void(hw::lumbat&, hw::devobj&)>& act)
{
    tamrix_programmer& which = the_programmer();
    const std::lock_guard call{which.busy};
    act(which.transport(), which.device());
    which.write_transcript();
}

}  // namespace tamrix::sim
