// A programmer with signals at its pins, and what a host does with its instruments.
#pragma once

#include "sim/bench.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace tamrix::tests {

struct instruments_on_sim : bench {
    using bench::bench;

    void put_on(const std::vector<std::string>& signals)
    {
        for (const std::string& one : signals) programmer.add_signal(one);
    }
    /// As every instrument begins.
    void begin()
    {
        device.hwreset();
        device.busmode(0);
        device.gndpin(5, 1);
        device.regout(255, 1);
        device.delayms(100);
    }
    void start(int mode = 0, int mask = 1, int level = 0)
    {
        ibuf1.fill(0);
        usbpip0readresult = 0;
        frame({33, 1, static_cast<std::uint8_t>(mode), static_cast<std::uint8_t>(mask),
               static_cast<std::uint8_t>(level)});
    }
    void stop()
    {
        frame({33, 0, 0, 0, 0});
        device.hwreset();
    }
    /// Waits for a reply that comes by itself; the time until then, none if none comes.
    std::optional<sim::microseconds> wait(sim::microseconds limit = std::chrono::seconds{10})
    {
        const auto from = time->now();
        while (time->now() - from < limit) {
            if (usbpip0readresult == -1) {
                usbpip0readresult = 0;
                return time->now() - from;
            }
            time->advance(std::chrono::milliseconds{1});
        }
        return std::nullopt;
    }
    /// The samples of a bank; none if they do not come.
    std::vector<std::uint8_t> bank(int number, std::int32_t bytes = 32768)
    {
        frame({10, static_cast<std::uint8_t>(number), 64, 0, 0, 0, 0, 0});
        std::vector<std::uint8_t> samples(static_cast<std::size_t>(bytes) + 1);
        std::uint8_t status = 0;
        usb.usbbulkread(samples.data(), bytes + 1, &status);
        time->advance(std::chrono::seconds{8});
        samples.pop_back();
        return status == 2 ? samples : std::vector<std::uint8_t>{};
    }
    /// What the counter shows, as it comes by itself.
    int hertz_by_itself() const { return ibuf1[0] + 256 * ibuf1[1] + 65536 * ibuf1[2]; }
    int hertz_by_registers() { return device.ctlin(45) + 256 * device.ctlin(46) + 65536 * device.ctlin(47); }
};

}  // namespace tamrix::tests
