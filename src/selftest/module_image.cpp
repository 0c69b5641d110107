#include "selftest/module_image.h"

#include "files/file_io.h"
#include "session/session.h"

#include <array>
#include <optional>
#include <string>

namespace tamrix {

namespace {

constexpr std::array<std::string_view, module_images> names{
    "ruvoio1.bin",   "ruvoepm1.bin", "ruvompu1.bin",  "ruvoepm2.bin",  "ruvoepm3.bin",  "ruvoepm4.bin",
    "ruvoepm5.bin",  "selkio1.bin",  "ruvompu2.bin",  "ruvompu3.bin",  "ruvompu4.bin",  "ruvoepm6.bin",
    "ruvoepm7.bin",  "ruvoepm8.bin", "ruvoepm9.bin",  "ruvompu5.bin",  "ruvoepm10.bin", "ruvompu6.bin",
    "ruvoepm11.bin", "ruvompu7.bin", "ruvoepm12.bin", "ruvoepm14.bin",
};

std::optional<std::vector<std::uint8_t>> bytes_of(const std::string& path)
{
    try {
        const file_image image{path};
        return std::vector<std::uint8_t>{image.bytes().begin(), image.bytes().end()};
    } catch (const file_error&) {
        return std::nullopt;
    }
}

}  // namespace

std::string_view name_of_module_image(std::uint8_t index) { return index < names.size() ? names[index] : ""; }

std::vector<std::uint8_t> read_module_image(const session& plug_in, std::uint8_t index)
{
    const std::string name{name_of_module_image(index)};
    if (name.empty()) return {};
    for (const std::string& folder : {std::string{"lib1/"}, plug_in.syspath + "lib1/"})
        if (const auto bytes = bytes_of(folder + name)) return *bytes;
    return {};
}

}  // namespace tamrix
