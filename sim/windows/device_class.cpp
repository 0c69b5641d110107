// The class of the simulated device object, under the ProgID by which the plug-in asks for it.
#include "com/server/served_class.h"
#include "com/server/stay.h"
#include "sim/windows/device_dispatch.h"
#include "tamrix/windows_programmer.h"

namespace tamrix::com {

namespace {

constexpr GUID device_class_id{0x8c037568, 0x3eb3, 0x4ffa, {0xbe, 0x7b, 0x5c, 0x9f, 0xaf, 0xe6, 0xc5, 0x7d}};

std::vector<std::wstring> own_keys() { return {TAMRIX_DEVOBJ_PROG_ID, L"CLSID\\" + text_of(device_class_id)}; }

std::vector<registry_entry> entries()
{
    const std::wstring name = TAMRIX_DEVOBJ_PROG_ID, of_class = L"CLSID\\" + text_of(device_class_id);
    return {{name, L"", L"simulated programmer"},
            {name + L"\\Clsid", L"", text_of(device_class_id)},
            {of_class, L"", L"simulated programmer"},
            {of_class + L"\\InprocServer32", L"", module_path()},
            {of_class + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
            {of_class + L"\\ProgID", L"", name}};
}

}  // namespace

const served_class& the_served_class()
{
    static const served_class the_class{device_class_id, make_object<sim::device_dispatch>, entries, own_keys};
    return the_class;
}

}  // namespace tamrix::com
