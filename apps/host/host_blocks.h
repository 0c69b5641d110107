// The shared blocks of a host: creates them under the names that the plug-in opens, and gives typed access.
#pragma once

#include "host/shared_object.h"
#include "tamrix/blocks.h"
#include "tamrix/text_heap.h"
#include "tamrix/types.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tamrix::host {

class host_blocks {
public:
    /// Opens or creates the 60 small blocks of instance `num`. `name_space` is put before every object name, as
    /// TAMRIX_NAMESPACE is in the plug-in; `texts` is the plug-in's text heap. Throws std::runtime_error.
    host_blocks(std::string name_space, std::int16_t num, text_heap_functions texts);
    /// Frees the texts of the blocks that it created, and releases all blocks.
    ~host_blocks();
    host_blocks(const host_blocks&) = delete;
    host_blocks& operator=(const host_blocks&) = delete;

    std::int16_t num() const { return num_; }

    /// Element `index` of a block of numbers. Throws std::out_of_range for a name or an index that does not exist, and
    /// std::invalid_argument if the elements have another type: std::uint8_t, std::int16_t (also of booleans),
    /// std::int32_t or double.
    template <class T>
    T& value(std::string_view name, std::size_t index = 0)
    {
        return *reinterpret_cast<T*>(element(name, index, kind_of<T>()));
    }
    template <class T>
    const T& value(std::string_view name, std::size_t index = 0) const
    {
        return *reinterpret_cast<const T*>(element(name, index, kind_of<T>()));
    }
    /// Element `index` of a text block, UTF-8. Throws as value() does.
    std::string text(std::string_view name, std::size_t index = 0) const;
    /// Replaces a text and frees the old one. Throws std::runtime_error if memory is short.
    void set_text(std::string_view name, std::size_t index, std::string_view text);

    /// Sets buflength(0) and creates the data buffer for `buflength` bytes. An older buffer is released first; the
    /// plug-in must have released it before. Throws std::runtime_error, also if another program has a smaller one open.
    void create_buffer(std::int32_t buflength);
    void drop_buffer();
    /// The data buffer with its margin, ibuffer_bytes(buflength) in total; empty while there is none.
    std::span<std::uint8_t> buffer();

    /// Removes all names after the plug-in is attached, the buffer's included: nobody else can then join, and nothing
    /// is left over if this process is killed.
    void withdraw_names();

private:
    template <class T>
    static constexpr element kind_of()
    {
        if constexpr (std::is_same_v<T, std::uint8_t>) return element::byte;
        if constexpr (std::is_same_v<T, std::int16_t>) return element::int16;
        if constexpr (std::is_same_v<T, std::int32_t>) return element::int32;
        if constexpr (std::is_same_v<T, double>) return element::real;
    }
    unsigned char* element(std::string_view name, std::size_t index, tamrix::element kind) const;
    std::uint32_t& handle(std::string_view name, std::size_t index) const;

    std::string name_space_;
    std::int16_t num_;
    text_heap_functions texts_;
    std::vector<std::unique_ptr<shared_object>> small_;  // in the order of small_blocks
    std::unique_ptr<shared_object> ibuffer_, ibuffer66_;
};

/// The lowest instance number, from 0, that nobody uses. Throws std::runtime_error if all 101 are taken.
std::int16_t first_free_instance(const std::string& name_space);

}  // namespace tamrix::host
