// The simulated programmer as commands use it: its model and route, the chip in its socket, its signals and faults.
#pragma once

#include "cli/attached_plug_in.h"
#include "cli/console.h"
#include "sim/programmer.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tamrix::cli {

/// The words of the command line as typed; none for an option that was not given.
struct socket_words {
    std::optional<std::string> model, route, wfig, socket;
    std::vector<std::string> faults, signals;
};

inline constexpr const char* programmer_is_silent = "the programmer does not answer; check its cable and its supply";

struct socket_options {
    std::int16_t model = 40;
    bool usb = true;
    std::uint8_t generation = 0;
    std::string chip{};  // empty: nothing in the socket
    std::vector<std::string> faults{}, signals{};
};

/// Throws command_error.
socket_options check(const socket_words& words);

/// The chip in the socket; pins count from 1.
struct package {
    int pins, vcc_pin, gnd_pin;
};

/// The programmer of a plug-in, from construction on. Its time is virtual, so no wait takes real time.
class simulated_socket {
public:
    /// Throws command_error for a chip that is unknown or does not fit, or a fault or signal that is not understood.
    simulated_socket(attached_plug_in& plug_in, const socket_options& options);
    ~simulated_socket();
    simulated_socket(const simulated_socket&) = delete;
    simulated_socket& operator=(const simulated_socket&) = delete;

    /// Puts the test board into the socket. Call it before the programmer is first used.
    void insert_test_board() { test_board_ = true; }
    sim::journal& log() { return *log_; }
    void let_pass(std::chrono::milliseconds time) { time_->advance(time); }
    /// None if no chip is in the socket.
    const std::optional<package>& chip() const { return chip_; }
    /// What could have harmed a real chip or programmer, each kind once.
    void tell_hazards(console& con) const;

private:
    attached_plug_in& plug_in_;
    std::shared_ptr<sim::virtual_clock> time_;
    std::shared_ptr<sim::journal> log_;
    std::optional<package> chip_;
    bool test_board_ = false;
};

}  // namespace tamrix::cli
