#include "recording_lumbat.h"

#include "com/server/served_class.h"
#include "sim/windows/device_dispatch.h"
#include "sim/windows/served.h"

#include <objbase.h>

namespace tamrix {

namespace {

hw::programmer* programmer_of_test = nullptr;

}  // namespace

void sim::serve(const std::function<void(hw::lumbat&, hw::devobj&)>& act)
{
    if (programmer_of_test == nullptr) throw hw::programmer_error{"the test has no programmer"};
    act(programmer_of_test->transport(), programmer_of_test->device());
}

const com::served_class& com::the_served_class()
{
    static const com::served_class the_class = [] {
        com::served_class made{};
        ::CLSIDFromString(L"{a2a0ed49-89a0-4e5c-9f8b-0f9c6f5a7d11}", &made.id);
        made.make = com::make_object<sim::device_dispatch>;
        made.entries = [] { return std::vector<com::registry_entry>{}; };
        made.own_keys = [] { return std::vector<std::wstring>{}; };
        return made;
    }();
    return the_class;
}

}  // namespace tamrix

extern "C" void use_programmer(tamrix::hw::programmer* which) { tamrix::programmer_of_test = which; }
