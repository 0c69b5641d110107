#include "chips/gate_builder.h"

#include <utility>

namespace tamrix::sim {

namespace {
constexpr std::size_t most_gates = 20000;
}

gate_builder::gate_builder(std::vector<gate>& gates) : gates_{gates}
{
    make({gate_kind::constant_0, 0, 0});
    make({gate_kind::constant_1, 0, 0});
}

bool gate_builder::too_many() const { return gates_.size() > most_gates; }

gate_id gate_builder::make(gate what)
{
    const auto [place, fresh] = made_.try_emplace({what.kind, what.a, what.b}, static_cast<gate_id>(gates_.size()));
    if (fresh) gates_.push_back(what);
    return place->second;
}

gate_id gate_builder::invert(gate_id a)
{
    if (a <= one) return a == zero ? one : zero;
    if (gates_[a].kind == gate_kind::invert) return gates_[a].a;
    return make({gate_kind::invert, a, 0});
}

gate_id gate_builder::both(gate_id a, gate_id b)
{
    if (a > b) std::swap(a, b);
    if (a == zero) return zero;
    if (a == one || a == b) return b;
    return make({gate_kind::both, a, b});
}

gate_id gate_builder::either(gate_id a, gate_id b)
{
    if (a > b) std::swap(a, b);
    if (a == one) return one;
    if (a == zero || a == b) return b;
    return make({gate_kind::either, a, b});
}

gate_id gate_builder::differ(gate_id a, gate_id b)
{
    if (a > b) std::swap(a, b);
    if (a == b) return zero;
    if (a == zero) return b;
    if (a == one) return invert(b);
    return make({gate_kind::differ, a, b});
}

gate_id gate_builder::choose(gate_id which, gate_id yes, gate_id no)
{
    if (yes == no) return yes;
    return either(both(which, yes), both(invert(which), no));
}

bits gate_builder::number(std::uint32_t value)
{
    bits made{{}, true};
    for (auto rest = value; rest != 0 || made.of.empty(); rest >>= 1)
        made.of.insert(made.of.begin(), rest & 1 ? one : zero);
    return made;
}

bits gate_builder::add(const bits& a, const bits& b, gate_id carry)
{
    bits sum = a;
    for (auto i = a.size(); i-- > 0;) {
        const auto half = differ(a.of[i], b.of[i]);
        sum.of[i] = differ(half, carry);
        carry = either(both(a.of[i], b.of[i]), both(half, carry));
    }
    return sum;
}

gate_id gate_builder::below(const bits& a, const bits& b)
{
    gate_id result = zero;
    for (auto i = a.size(); i-- > 0;) result = choose(differ(a.of[i], b.of[i]), b.of[i], result);
    return result;
}

bits gate_builder::decode(const bits& index)
{
    bits made{{one}, false};
    for (const auto bit : index.of) {
        std::vector<gate_id> wider;
        for (const auto so_far : made.of) {
            wider.push_back(both(so_far, invert(bit)));
            wider.push_back(both(so_far, bit));
        }
        made.of = std::move(wider);
    }
    return made;
}

}  // namespace tamrix::sim
