// The files with what a module's FPGA is loaded with.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tamrix {

class session;

inline constexpr std::uint8_t module_images = 22;
/// "" from index 22 on.
std::string_view name_of_module_image(std::uint8_t index);

/// The bytes of the image in "lib1" under the current directory, or else in "lib1/" under `syspath`. Empty where there
/// is no such file, or none with bytes in it.
std::vector<std::uint8_t> read_module_image(const session& plug_in, std::uint8_t index);

}  // namespace tamrix
