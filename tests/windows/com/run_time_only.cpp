// A library that is nothing but the compiler's run time, put to the uses that any program makes of it. What a load and
// unload of it costs is the measure for tamrix.dll.
#include <mutex>
#include <stdexcept>
#include <string>

#include <windows.h>

extern "C" __declspec(dllexport) int use_run_time()
{
    static std::once_flag once;
    static std::string text;
    std::call_once(once, [] { text = "made at the first use"; });
    try {
        throw std::runtime_error{text};
    } catch (const std::exception& error) {
        return error.what()[0];
    }
}
