// Single elements of the shared blocks that the other side (a transport's own context, another program) reads or
// writes while we do.
#pragma once

#include <atomic>
#include <type_traits>

namespace tamrix::hw {

/// Sees the element as the other side left it, and all that it wrote before.
template <class T>
T read_other_side(const T& element)
{
    return std::atomic_ref<T>{const_cast<T&>(element)}.load(std::memory_order_acquire);
}

/// Whoever sees this value also sees all that we wrote before.
template <class T>
void write_other_side(T& element, std::type_identity_t<T> value)
{
    std::atomic_ref<T>{element}.store(value, std::memory_order_release);
}

}  // namespace tamrix::hw
