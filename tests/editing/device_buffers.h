// Buffers of devices as a host makes them: one at a time, each at another place.
#pragma once

#include "editing/document.h"

#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>

namespace tamrix::tests {

class device_buffers {
public:
    struct device {
        std::size_t bytes = 0;
        std::uint8_t blank = 0xFF;
    };
    std::map<std::string, device> devices{
        {"small", {100, 0xFF}},  {"page", {1024, 0x00}},  {"odd", {1500, 0xFF}},
        {"large", {5000, 0x00}}, {"whole", {8192, 0xFF}}, {"largest", {9001, 0xFF}},
    };
    bool fails = false;
    int made = 0;

    editing::buffer_maker maker()
    {
        return [this](const std::string& name) { return make(name); };
    }
    std::span<std::uint8_t> make(const std::string& name)
    {
        if (fails) throw std::runtime_error{"no memory for " + name};
        ++made;
        const device& one = devices.at(name);
        bytes_ = std::make_unique_for_overwrite<std::uint8_t[]>(one.bytes);
        std::fill_n(bytes_.get(), one.bytes, one.blank);
        length_ = one.bytes;
        return buffer();
    }
    /// As a plug-in sees it.
    std::span<std::uint8_t> buffer() { return {bytes_.get(), length_}; }
    /// The same bytes at another place.
    std::span<std::uint8_t> move()
    {
        auto elsewhere = std::make_unique_for_overwrite<std::uint8_t[]>(length_);
        std::copy_n(bytes_.get(), length_, elsewhere.get());
        std::fill_n(bytes_.get(), length_, std::uint8_t{0xDD});
        bytes_ = std::move(elsewhere);
        return buffer();
    }

private:
    std::unique_ptr<std::uint8_t[]> bytes_{};
    std::size_t length_ = 0;
};

}  // namespace tamrix::tests
