#include "files/file_guard.h"

#include "files/file_io.h"

#include <exception>
#include <new>

namespace tamrix {

bool guard_file(diagnostic& why_it_failed, const std::string& fname, const std::function<void()>& work)
{
    why_it_failed = {};
    try {
        work();
        return true;
    } catch (const file_error& error) {
        why_it_failed = error.why();
    } catch (const std::bad_alloc&) {
        why_it_failed = {.file = fname, .found = "more than the memory can hold"};
    } catch (const std::exception& error) {
        why_it_failed = {.file = fname, .found = error.what()};
    }
    return false;
}

}  // namespace tamrix
