// Makes gates out of operations on single bits and on rows of bits; what is constant is folded.
#pragma once

#include "chips/circuit.h"

#include <map>
#include <tuple>

namespace tamrix::sim {

/// The leftmost is the most significant. A number has as many bits as it needs, and grows beside wider bits.
struct bits {
    std::vector<gate_id> of;
    bool number = false;

    std::size_t size() const { return of.size(); }
};

class gate_builder {
public:
    static constexpr gate_id zero = 0, one = 1;

    explicit gate_builder(std::vector<gate>& gates);

    gate_id input(gate_kind kind, gate_id index) { return make({kind, index, 0}); }
    gate_id invert(gate_id a);
    gate_id both(gate_id a, gate_id b);
    gate_id either(gate_id a, gate_id b);
    gate_id differ(gate_id a, gate_id b);
    gate_id choose(gate_id which, gate_id yes, gate_id no);

    static bits number(std::uint32_t value);
    /// `a` + `b` + `carry`, as wide as both are; the last carry is dropped.
    bits add(const bits& a, const bits& b, gate_id carry);
    gate_id below(const bits& a, const bits& b);
    /// One bit for every value of `index`, that of 0 first.
    bits decode(const bits& index);
    bool too_many() const;

private:
    gate_id make(gate what);

    std::vector<gate>& gates_;
    std::map<std::tuple<gate_kind, gate_id, gate_id>, gate_id> made_;
};

}  // namespace tamrix::sim
