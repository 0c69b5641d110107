// A document with its emergency copy, and a clock.
#pragma once

#include "editing/device_buffers.h"
#include "editing/emergency_copy.h"

#include <array>
#include <filesystem>

namespace tamrix::tests {

struct copied_document {
    device_buffers buffers{};
    editing::document edited{buffers.maker()};
    editing::emergency_copy copy;
    editing::wall_time now{std::chrono::seconds{1'700'000'000}};

    explicit copied_document(const std::string& folder,
                             std::size_t slice_bytes = editing::emergency_copy::usual_slice_bytes)
        : copy{folder, edited, slice_bytes}
    {
        edited.on_bytes = [this](std::size_t address, std::size_t length) { copy.note(address, length); };
        edited.change_device("largest");
    }
    void type(std::size_t address, std::uint8_t value) { edited.replace(address, std::array{value}, "Typing"); }
    /// As a timer does, once a second. Returns how many slices it took.
    int wait(int seconds = 4)
    {
        int slices = 0;
        for (; seconds > 0; --seconds) {
            now += std::chrono::seconds{1};
            while (copy.work(now)) ++slices;
        }
        return slices;
    }
    std::vector<std::uint8_t> all() const
    {
        std::vector<std::uint8_t> bytes(edited.whole().length());
        edited.whole().read(0, bytes);
        return bytes;
    }
};

/// A lock is free as soon as its file is closed, so a copy of the same program is abandoned when its owner is gone.
inline std::vector<std::filesystem::path> files_in(const std::string& folder)
{
    std::vector<std::filesystem::path> found;
    if (!std::filesystem::exists(folder)) return found;
    for (const auto& one : std::filesystem::directory_iterator{folder}) found.push_back(one.path());
    return found;
}

}  // namespace tamrix::tests
