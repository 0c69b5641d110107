#include "files/file_guard.h"

#include "files/file_io.h"

#include <exception>
#include <new>

namespace tamrix {

bool guard_file(session& plug_in, const std::string& fname, const std::function<void()>& work)
{
    diagnostic& why = plug_in.why_it_failed;
    why = {};
    try {
        work();
        return true;
    } catch (const file_error& error) {
        why = error.why();
    } catch (const std::bad_alloc&) {
        why = {.file = fname, .found = "more than the memory can hold"};
    } catch (const std::exception& error) {
        why = {.file = fname, .found = error.what()};
    }
    return false;
}

}  // namespace tamrix
