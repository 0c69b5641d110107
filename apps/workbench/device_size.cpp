#include "workbench/device_size.h"

namespace tamrix::workbench {

std::string size_text(std::int64_t bytes)
{
    constexpr std::int64_t kibi = 0x400, mebi = 0x100000;
    if (bytes >= mebi && bytes % mebi == 0) return std::to_string(bytes / mebi) + " MiB";
    if (bytes >= kibi && bytes % kibi == 0) return std::to_string(bytes / kibi) + " KiB";
    return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
}

bool has_fuses(const host::device_preset& device) { return device.algorithm == "GAL"; }

std::string size_text(const host::device_preset& device)
{
    return has_fuses(device) ? std::to_string(device.words) + " fuses" : size_text(host::image_bytes(device));
}

std::string buffer_text(const host::device_preset& device)
{
    return has_fuses(device) ? size_text(device) : "buffer of " + size_text(std::int64_t{device.buffer_bytes});
}

}  // namespace tamrix::workbench
