// A programmer for the tests of the instruments: sound, unless a test gives it other answers.
#pragma once

#include "programmer/programmer.h"

#include <cstdint>
#include <functional>

namespace tamrix::tests {

/// How a bank arrives.
enum class bank_end : std::uint8_t { arrives, fails, hangs };

/// It has to outlive the programmers made of it.
struct instrument_programmer {
    std::function<std::int32_t()> hwreset = [] { return 0; };
    /// The port of the instruments, read number `k`.
    std::function<std::int32_t(std::int64_t k)> regin = [](std::int64_t k) {
        return static_cast<std::int32_t>((7 * k + 3) % 256);
    };
    std::function<std::int32_t()> boardsel = [] { return 0; };
    std::function<std::int32_t(std::uint8_t address)> ctlin = [](std::uint8_t) { return 0; };
    /// The result of each frame.
    std::function<std::int32_t(const std::uint8_t* frame)> usbcomwrite = [](const std::uint8_t*) { return 0; };
    std::function<bank_end(int bank)> read_bank = [](int) { return bank_end::arrives; };
    /// Called at each operation, by name; may throw.
    std::function<void(const char*)> at_operation = [](const char*) {};

    hw::reply_memory replies{};
    int made = 0;             // how many were made
    std::int64_t reads = 0;   // of the port
    int announced_bank = -1;  // by the last frame

    /// The unasked reply.
    void reply(std::uint8_t first_byte) const;
    hw::programmer_source source();
};

/// Sample `i` of a bank as it arrives.
constexpr std::uint8_t sample_of(int bank, int i) { return static_cast<std::uint8_t>(31 * bank + i * 5 + i / 251); }

}  // namespace tamrix::tests
