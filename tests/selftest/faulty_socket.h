// The levels at the pins of one socket whose programmer has faults.
#pragma once

#include "seen_faults.h"
#include "tested_model.h"

#include <array>
#include <bit>
#include <set>
#include <utility>
#include <vector>

namespace tamrix::tests {

/// The faults of one socket by kind and place, and what is connected by them and by the test board.
struct faulty_socket {
    faulty_socket(const tested_model& model, int module, std::span<const single_fault> faults, bool board);

    places of(fault_kind kind) const { return by_kind[static_cast<std::size_t>(kind)]; }
    /// With the places that are connected to them.
    places spread(places some) const;

    const tested_model& model;
    int module;
    std::array<places, static_cast<std::size_t>(fault_kind::bad_register)> by_kind{};
    std::vector<places> nets{};  // of more than one place
    std::set<std::pair<int, int>> bad_registers{};

private:
    void join(places some);
};

/// What the programmer does at the moment.
struct moment {
    bool vpp_rail = false, vcc_rail = false;  // there is a voltage that drivers can switch
    bool pulled_down = false;
    places vpp = 0, vcc = 0;   // drivers that should be on
    places low = 0, high = 0;  // what the ports should drive
    places closed = 0;         // what no port reaches
};

/// What is read. Ground wins, then a supply, then a port that drives low, one that drives high, and the pull.
places levels_of(const faulty_socket& socket, const moment& now);

/// Calls `act` with each place of a set, in order.
template <class Act>
void for_each_place(places some, Act act)
{
    for (; some != 0; some &= some - 1) act(std::countr_zero(some));
}

/// Adds what reads otherwise than it should.
void add_findings(std::vector<finding>& seen, selftest_stage stage, const faulty_socket& socket, int driven,
                  places wrong, places read);

}  // namespace tamrix::tests
