#include "sim/windows/host_memory.h"

#include "base/environment_win32.h"
#include "base/other_side.h"
#include "tamrix/blocks.h"
#include "tamrix/named_memory.h"
#include "tamrix/types.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tamrix::sim {

namespace {

/// A block that somebody else made, open as long as this lives.
class open_block {
public:
    explicit open_block(std::string object)
        : object_{std::move(object)},
          file_{named_memory::open(object_)},
          bytes_{static_cast<std::uint8_t*>(named_memory::map(file_))},
          reach_{bytes_ != nullptr ? named_memory::reach_bytes(file_) : 0}
    {}
    ~open_block()
    {
        named_memory::unmap(bytes_, reach_);
        named_memory::close(file_, object_);
    }
    open_block(const open_block&) = delete;
    open_block& operator=(const open_block&) = delete;

    bool there() const { return bytes_ != nullptr; }
    template <class T>
    std::span<T> elements() const
    {
        return {reinterpret_cast<T*>(bytes_), reach_ / sizeof(T)};
    }

private:
    std::string object_;
    named_memory::handle file_;
    std::uint8_t* bytes_;
    std::size_t reach_;
};

open_block block_of(int instance, std::string_view name)
{
    return open_block{environment_text(L"TAMRIX_NAMESPACE") + small_block_object(name, instance)};
}

/// The host that was named, else the first one that has made its blocks.
int host_of(std::optional<int> told)
{
    constexpr int last = 101;  // the highest number that a host finds for itself
    int instance = told.value_or(0);
    while (!told && instance < last && !block_of(instance, "ibuf1").there()) ++instance;
    return instance;
}

void put(int instance, std::span<const std::uint8_t> reply, bool unasked)
{
    const open_block ibuf1 = block_of(instance, "ibuf1");
    const auto bytes = ibuf1.elements<std::uint8_t>();
    const std::size_t count = std::min(reply.size(), bytes.size());
    for (std::size_t i = 0; i < count; ++i) hw::write_other_side(bytes[i], reply[i]);
    if (!unasked) return;
    const open_block usbpip0readresult = block_of(instance, "usbpip0readresult");
    if (usbpip0readresult.there()) hw::write_other_side(usbpip0readresult.elements<bool16>()[0], bool16_true);
}

std::uint8_t byte_of_ubuf1(int instance, std::size_t index)
{
    const open_block ubuf1 = block_of(instance, "ubuf1");
    const auto bytes = ubuf1.elements<const std::uint8_t>();
    return index < bytes.size() ? bytes[index] : std::uint8_t{0};
}

}  // namespace

reply_place place_at_host(std::optional<int> instance)
{
    return {.put = [instance](std::span<const std::uint8_t> reply,
                              bool unasked) { put(host_of(instance), reply, unasked); },
            .ubuf1 = [instance](std::size_t index) { return byte_of_ubuf1(host_of(instance), index); }};
}

}  // namespace tamrix::sim
