#include "workbench/device_catalogue.h"

#include "host/data_folder.h"
#include "host/preset_text.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace tamrix::workbench {

namespace fs = std::filesystem;

namespace {

std::string own_file_path()
{
    const char* settings = std::getenv("XDG_CONFIG_HOME");
    if (settings != nullptr && *settings != '\0') return (fs::path{settings} / "tamrix" / "devices.txt").string();
    const char* home = std::getenv("HOME");
    return (fs::path{home != nullptr ? home : "."} / ".config" / "tamrix" / "devices.txt").string();
}

}  // namespace

device_catalogue::device_catalogue()
    : own_file_{own_file_path()}, shipped_{host::read_presets(host::data_folder() + "/devices.txt")}
{
    std::error_code none;
    if (fs::exists(own_file_, none)) own_ = host::read_presets(own_file_);
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
    std::error_code error;
    fs::create_directories(fs::path{own_file_}.parent_path(), error);
    if (error) throw std::runtime_error{own_file_ + ": " + error.message()};
    host::write_presets(own_file_, own);
    own_ = std::move(own);
    all_ = host::merge_presets(shipped_, own_);
}

}  // namespace tamrix::workbench
