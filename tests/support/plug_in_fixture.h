// A plug-in with a device and a buffer, in shared memory that no other process meets.
#pragma once

#include "entry/entry_methods.h"
#include "session/session.h"
#include "support/name_space.h"
#include "support/scripted_shell.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tamrix::tests {

/// What a host would have set before the first call.
struct device {
    std::int32_t buflength = 0x1000;
    std::int32_t tlength = 0x1000;  // in words
    std::uint8_t wordmode = 1;      // bytes of a word
    std::uint8_t spare_units = 0;   // 16-byte units after the main area
    std::uint8_t family = 0;        // typeformat(0)
    std::uint8_t clear = 2;         // typeformat(1): 0 fills with 0xFF, 1 with 0x00, 2 leaves the buffer
    std::string maker{};
};

struct plug_in_fixture {
    explicit plug_in_fixture(const device& chosen = {});

    scripted_shell shell;
    tamrix::session session{shell, fresh_name_space()};
    module_variables variables;
    entry_methods methods{session, variables};

    std::uint8_t& buffer(std::int64_t index) { return session.blocks.ibuffer(index); }
    /// `count` bytes of the buffer from `first` on.
    std::vector<std::uint8_t> bytes(std::int64_t first, std::int64_t count);
    std::string status_text() { return session.blocks.MainRtstr(0); }
    /// True while every byte of the buffer still has the value that the fixture gave it.
    bool buffer_untouched();
    static constexpr std::uint8_t untouched = 0x5A;
};

}  // namespace tamrix::tests
