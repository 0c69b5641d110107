#include "host/device_preset.h"

#include "base/pin_code.h"

#include <algorithm>
#include <iterator>

namespace tamrix::host {

std::int64_t image_bytes(const device_preset& device)
{
    return std::int64_t{device.words} * device.word_bytes + 16 * std::int64_t{device.spare_units};
}

std::uint8_t pin_code(std::int64_t pin, std::int64_t pins)
{
    if (pin < 1 || pin > pins) return 0;
    return pin_code_of_position(static_cast<int>(pin - 1), static_cast<int>(pins / 2));
}

void apply(const device_preset& device, host_blocks& blocks)
{
    blocks.set_text("wtype", 0, device.name);
    blocks.set_text("wcompany", 0, device.maker);
    blocks.set_text("algo", 0, device.algorithm);
    blocks.value<std::int32_t>("tlength") = device.words;
    blocks.value<std::uint8_t>("wordmode", 0) = device.word_bytes;
    blocks.value<std::uint8_t>("wordmode", 1) = device.spare_units;
    blocks.value<std::int16_t>("chippin") = device.pins;
    blocks.value<std::uint8_t>("bvccpin") = pin_code(device.vcc_pin, device.pins);
    blocks.value<std::uint8_t>("bgndpin") = pin_code(device.gnd_pin, device.pins);
    blocks.value<std::int16_t>("bvcc") = device.vcc_centivolts;
    blocks.value<std::int16_t>("bvpp") = device.vpp_centivolts;
    blocks.value<std::int16_t>("pagelength") = device.page_length;
    blocks.value<std::int32_t>("pwte", 0) = device.pulse_us;
    blocks.value<std::int32_t>("pwte", 1) = 0;  // not touched by hand yet
    blocks.value<std::int16_t>("wretry") = device.retries;
    blocks.value<std::uint8_t>("prgmode") = device.program_mode;
    blocks.value<std::uint8_t>("typeformat", 0) = device.family;
    blocks.value<std::uint8_t>("typeformat", 1) = static_cast<std::uint8_t>(device.clear);
    blocks.value<std::uint8_t>("wwarnno") = device.note;
    blocks.value<std::int16_t>("bvcch") = device.vcc_high;
    const std::uint8_t options[] = {device.option_0, device.option_1, device.option_2, device.option_3};
    for (std::size_t i = 0; i < std::size(options); ++i) blocks.value<std::uint8_t>("woption", i) = options[i];
}

const device_preset* find_preset(std::span<const device_preset> list, std::string_view name)
{
    const auto found = std::ranges::find(list, name, &device_preset::name);
    return found != list.end() ? &*found : nullptr;
}

std::vector<device_preset> merge_presets(std::vector<device_preset> base, std::span<const device_preset> changes)
{
    for (const device_preset& change : changes) {
        const auto same = std::ranges::find(base, change.name, &device_preset::name);
        if (same != base.end()) {
            *same = change;
        } else {
            base.push_back(change);
        }
    }
    return base;
}

}  // namespace tamrix::host
