// The hardware of a simulated programmer: registers, pin drivers, supplies and the socket they reach.
#pragma once

#include "sim/function_board.h"
#include "sim/input_view.h"
#include "sim/socket.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace tamrix::sim {

class machine {
public:
    static constexpr int ports = 6;
    using port_bytes = std::array<std::uint8_t, ports>;

    /// `generation` of the hardware: 17 reaches the outermost pins in every state, others below model 40 only in some.
    machine(int model, int generation, const fault_set& faults, journal& log);
    machine(const machine&) = delete;
    machine& operator=(const machine&) = delete;

    // The operations. Each takes effect at once and needs no time.
    void set_vcc(std::int32_t millivolts);
    void set_vpp(std::int32_t millivolts, int channel);
    void ground(int code, bool on);
    void vcc(int code, bool on);
    void vpp(int code, bool on);
    /// By one code or two: see function_board.
    void select_board(int code);
    void select_board(int first, int second);
    void set_bus_mode(std::int32_t mode);
    bool tests_drivers() const { return board_.has_driver_test(); }
    /// Switches the VPP, VCC or ground driver of a pin on, the next time off, as the driver test does. Pins count from
    /// 1 as on a socket of 48.
    void toggle_driver(driver_kind kind, int pin);
    /// Register 2b is the data byte of port b, 2b + 1 its mask; 11 is the function switch too. 50 sets the pull of the
    /// inputs where the function board lets it. All others only keep their value.
    void write_register(std::uint8_t address, std::uint8_t value);
    /// All ports at once. Ports that can only pull low obey their masks where `masks_count` says so.
    void write_ports(const port_bytes& data, const port_bytes& masks, bool masks_count);
    /// Register 2b reads the pins of port b, any other its value.
    std::uint8_t read_register(std::uint8_t address);
    port_bytes read_ports() const;
    /// What signals do at the pins of port 0, P21 to P28.
    void set_outside(pin_levels levels);
    /// How port 0 reads signals as long as nothing changes at the pins but these.
    input_view view_of_inputs() const;
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
    bool is_connector(int code) const;
    struct supplies {
        bool ground = false, vcc = false, vpp = false;
    };
    /// What is wrong at one contact. Levels are worked out far more often than faults come and go.
    struct defects {
        std::array<std::optional<driver_fault>, driver_kinds> drivers{};
        std::optional<bool> stuck_input{};
        bool dead_pull_down = false;
    };
    void look_up_defects();
    supplies* at_code(int code);
    std::int32_t rail(std::int32_t generator) const;
    std::int32_t vpp_millivolts(int code) const;
    bool special_supply(int code) const;
    bool works(driver_kind kind, int contact, bool wanted) const;
    bool pulls_down(int contact) const;
    bool is_closed(int port) const;
    bool owned_by_supply(int contact) const;
    void supply(int contact, std::int32_t millivolts);
    void apply_supplies();
    void apply_port(int port);
    void apply_ports();
    void switch_supplies();
    template <class level_of>
    std::uint8_t read_pins(int port, level_of&& is_high) const;
    template <class level_of>
    std::uint8_t read_port(int port, level_of&& is_high) const;
    std::uint8_t port_levels(int port) const;

    int model_, generation_;
    wiring wires_;
    const fault_set& faults_;
    journal& log_;
    sim::socket socket_;
    function_board board_;
    std::array<std::uint8_t, 256> registers_{};
    pin_levels outside_{};
    bool masks_count_ = false;        // where ports can only pull low
    bool line_laid_ = false;          // from the supply of contact 108 to contact 107
    std::vector<defects> defects_;    // by contact
    std::vector<supplies> supplies_;  // by contact
    std::vector<supplies> tested_;    // by contact: what the driver test has switched on
    bool connector_vcc_ = false;
    std::int32_t vcc_millivolts_ = 0;
    std::array<std::int32_t, 2> vpp_millivolts_{};
};

}  // namespace tamrix::sim
