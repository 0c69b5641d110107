// The hardware of a simulated programmer: registers, pin drivers, supplies and the socket they reach.
#pragma once

#include "sim/socket.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>

namespace tamrix::sim {

class machine {
public:
    static constexpr int ports = 6;
    using port_bytes = std::array<std::uint8_t, ports>;

    machine(int model, const fault_set& faults, journal& log);
    machine(const machine&) = delete;
    machine& operator=(const machine&) = delete;

    // The operations. Each takes effect at once and needs no time.
    void set_vcc(std::int32_t millivolts);
    void set_vpp(std::int32_t millivolts, int channel);
    void ground(int code, bool on);
    void vcc(int code, bool on);
    void vpp(int code, bool on);
    /// Register 2b is the data byte of port b, 2b + 1 its mask. All others only keep their value.
    void write_register(std::uint8_t address, std::uint8_t value);
    /// All ports at once.
    void write_ports(const port_bytes& data, const port_bytes& masks);
    /// Register 2b reads the pins of port b, any other its value.
    std::uint8_t read_register(std::uint8_t address);
    port_bytes read_ports() const;
    /// Drivers, voltages and registers as after switching on. The part loses its supply.
    void reset();

    /// Time passes, so a conflict that exists now is a hazard.
    void settle_down() { socket_.look_for_hazards(); }
    /// A voltage or driver that is still on is a hazard.
    void check_idle();

    sim::socket& socket() { return socket_; }
    const wiring& wires() const { return wires_; }
    void insert(std::unique_ptr<part> what);
    /// Call this after a fault was added or removed.
    void update();

private:
    struct supplies {
        bool ground = false, vcc = false, vpp = false;
    };
    supplies* at_code(int code);
    std::int32_t vpp_millivolts(int code) const;
    bool special_supply(int code) const;
    int fed_contact(int contact) const;
    void apply_supplies();
    void apply_port(int port);
    void switch_supplies();
    std::uint8_t port_levels(int port) const;

    int model_;
    wiring wires_;
    journal& log_;
    sim::socket socket_;
    std::array<std::uint8_t, 256> registers_{};
    std::vector<supplies> supplies_;  // by contact
    std::int32_t vcc_millivolts_ = 0;
    std::array<std::int32_t, 2> vpp_millivolts_{};
};

}  // namespace tamrix::sim
