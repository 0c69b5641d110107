// Sessions with settings of their own, and small devices for them.
#pragma once

#include "support/own_settings.h"
#include "workbench/host_session.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tamrix::tests {

using workbench::host_session;

class sessions : public testing::Test {
protected:
    const tests::own_settings settings;
    const host::device_preset small{.name = "small", .words = 0x100, .buffer_bytes = 0x100};
    const host::device_preset large{.name = "large", .words = 0x400, .buffer_bytes = 0x400};
    const host::device_preset logic{
        .name = "logic", .words = 16, .buffer_bytes = 64, .clear = host::clear_choice::fill_00};

    std::string write(const char* name, const std::string& content) const
    {
        std::filesystem::create_directories(settings.folder);
        const std::filesystem::path path = settings.folder / name;
        std::ofstream{path, std::ios::binary} << content;
        return path;
    }
    static std::size_t shared_objects()
    {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator{"/dev/shm"}) {
            count += entry.path().filename().string().starts_with(std::getenv("TAMRIX_NAMESPACE")) ? 1 : 0;
        }
        return count;
    }
};

inline std::vector<std::uint8_t> content(host_session& session)
{
    return {session.buffer().begin(), session.buffer().end()};
}

}  // namespace tamrix::tests
