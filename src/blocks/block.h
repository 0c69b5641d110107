// Typed views of the shared blocks: bounds-checked elements, and the raw bytes for the hot paths.
#pragma once

#include "base/errors.h"
#include "blocks/clsMemMapped.h"
#include "blocks/clsSafeArray.h"
#include "blocks/safe_array.h"
#include "tamrix/blocks.h"
#include "tamrix/types.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace tamrix {

/// What all blocks share: the array's descriptor, its private one-element store, the mapping and the overlay that turns
/// the array onto it.
class block_base {
public:
    block_base(const block_info& info, std::uint16_t features);
    virtual ~block_base();
    block_base(const block_base&) = delete;
    block_base& operator=(const block_base&) = delete;

    std::string_view name() const { return info_->name; }
    const block_info& info() const { return *info_; }
    /// Elements that the view offers.
    std::uint32_t count() const { return array_.bounds[0].count; }
    /// True while the view reads and writes shared memory; false while it uses its private element.
    bool attached() const { return reach_bytes_ != 0; }
    const clsMemMapped* mapping() const { return mapping_.get(); }

    /// Opens or creates the object and turns the view onto it with `count` elements. Returns false on failure; the view
    /// then uses its private element.
    bool attach(const std::string& name_space, const std::string& object, std::int32_t mapped_bytes,
                std::uint32_t count);
    /// Makes the view private again, then gives the mapping back.
    void release();

protected:
    /// Address of element `index`; throws subscript_error outside the view or outside what is really mapped.
    void* element(std::int64_t index) const
    {
        if (index < 0 || index >= static_cast<std::int64_t>(count()) ||
            (static_cast<std::uint64_t>(index) + 1) * array_.header.element_bytes > reachable_bytes()) {
            throw_subscript(index);
        }
        return static_cast<unsigned char*>(array_.header.data) + index * array_.header.element_bytes;
    }
    /// Elements that can be touched: all of the view, unless an existing mapping was smaller.
    std::size_t reachable_count() const;
    virtual void clear_private_element();

    alignas(8) unsigned char private_element_[8] = {};

private:
    [[noreturn]] void throw_subscript(std::int64_t index) const;
    std::size_t reachable_bytes() const { return attached() ? reach_bytes_ : array_.header.element_bytes; }

    const block_info* info_;
    array_descriptor<1> array_;
    std::size_t reach_bytes_ = 0;
    std::unique_ptr<clsMemMapped> mapping_;
    std::unique_ptr<clsSafeArray> overlay_;
};

/// The table's line of a block, found while compiling.
constexpr const block_info& block_line(std::string_view name)
{
    for (const auto& line : small_blocks) {
        if (line.name == name) return line;
    }
    for (const auto& line : big_blocks) {
        if (line.name == name) return line;
    }
    throw subscript_error{"no such block"};
}

/// A view of numbers. `T` is the element's type in the table.
template <class T>
class block final : public block_base {
public:
    explicit block(const block_info& info) : block_base{info, 0} {}

    T& operator()(std::int64_t index) { return *static_cast<T*>(element(index)); }
    const T& operator()(std::int64_t index) const { return *static_cast<const T*>(element(index)); }
    /// All elements that can be touched.
    std::span<T> span() { return {static_cast<T*>(element(0)), reachable_count()}; }
    std::span<const T> span() const { return {static_cast<const T*>(element(0)), reachable_count()}; }
};

/// One element of a text block. Reading gives UTF-8; assigning frees the old text.
class text_element {
public:
    explicit text_element(std::uint32_t& handle) : handle_{&handle} {}

    operator std::string() const { return str(); }
    std::string str() const;
    text_element& operator=(std::string_view text);
    text_element& operator+=(std::string_view text) { return *this = str().append(text); }

private:
    std::uint32_t* handle_;
};

/// A view of texts, flagged as holding handles of the host's heap.
class text_block final : public block_base {
public:
    explicit text_block(const block_info& info);
    ~text_block() override;

    text_element operator()(std::int64_t index) const
    {
        return text_element{*static_cast<std::uint32_t*>(element(index))};
    }

private:
    void clear_private_element() override;
};

namespace detail {

template <element kind>
struct view;
template <>
struct view<element::byte> : std::type_identity<block<std::uint8_t>> {};
template <>
struct view<element::int16> : std::type_identity<block<std::int16_t>> {};
template <>
struct view<element::int32> : std::type_identity<block<std::int32_t>> {};
template <>
struct view<element::boolean> : std::type_identity<block<bool16>> {};
template <>
struct view<element::real> : std::type_identity<block<double>> {};
template <>
struct view<element::text> : std::type_identity<text_block> {};

}  // namespace detail

/// The view of a block whose elements are of this kind.
template <element kind>
using view_of = typename detail::view<kind>::type;

}  // namespace tamrix
