// Single elements of the shared blocks that the other side (a thread of the transport, another program) reads or writes
// at the same time.
#pragma once

#include <atomic>
#include <type_traits>

namespace tamrix::hw {

/// Reads the element as the other side wrote it; all that it wrote before is then visible too.
template <class T>
T read_other_side(const T& element)
{
    return std::atomic_ref<T>{const_cast<T&>(element)}.load(std::memory_order_acquire);
}

/// Writes the element. Whoever reads this value also sees everything written before it.
template <class T>
void write_other_side(T& element, std::type_identity_t<T> value)
{
    std::atomic_ref<T>{element}.store(value, std::memory_order_release);
}

}  // namespace tamrix::hw
