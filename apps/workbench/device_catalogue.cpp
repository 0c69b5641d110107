#include "workbench/device_catalogue.h"

#include "host/data_folder.h"
#include "host/preset_text.h"
#include "workbench/settings_folder.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace tamrix::workbench {

device_catalogue::device_catalogue()
    : own_file_{settings_folder() + "/devices.txt"}, shipped_{host::read_presets(host::data_folder() + "/devices.txt")}
{
    std::error_code none;
    if (std::filesystem::exists(own_file_, none)) own_ = host::read_presets(own_file_);
    all_ = host::merge_presets(shipped_, own_);
}

bool device_catalogue::is_own(std::string_view name) const { return host::find_preset(own_, name) != nullptr; }

void device_catalogue::save(const host::device_preset& device)
{
    write(host::merge_presets(own_, std::vector{device}));
}

void device_catalogue::remove(std::string_view name)
{
    std::vector<host::device_preset> rest = own_;
    std::erase_if(rest, [&](const host::device_preset& one) { return one.name == name; });
    write(std::move(rest));
}

void device_catalogue::write(std::vector<host::device_preset> own)
{
    make_settings_folder();
    host::write_presets(own_file_, own);
    own_ = std::move(own);
    all_ = host::merge_presets(shipped_, own_);
}

}  // namespace tamrix::workbench
