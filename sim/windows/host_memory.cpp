#include "sim/windows/host_memory.h"

#include "base/environment_win32.h"
#include "base/other_side.h"
#include "tamrix/blocks.h"
#include "tamrix/named_memory.h"

#include <algorithm>
#include <string>

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
    void write(std::span<const std::uint8_t> bytes) const
    {
        const std::size_t count = std::min(bytes.size(), reach_);
        for (std::size_t i = 0; i < count; ++i) hw::write_other_side(bytes_[i], bytes[i]);
    }

private:
    std::string object_;
    named_memory::handle file_;
    std::uint8_t* bytes_;
    std::size_t reach_;
};

bool write_to(int instance, std::span<const std::uint8_t> bytes)
{
    const open_block ibuf1{environment_text(L"TAMRIX_NAMESPACE") + small_block_object("ibuf1", instance)};
    if (ibuf1.there()) ibuf1.write(bytes);
    return ibuf1.there();
}

}  // namespace

reply_place place_at_host(std::optional<int> instance)
{
    return [instance](std::span<const std::uint8_t> bytes) {
        constexpr int last = 101;  // the highest number that a host finds for itself
        if (instance) {
            write_to(*instance, bytes);
            return;
        }
        for (int number = 0; number <= last && !write_to(number, bytes); ++number) {
        }
    };
}

}  // namespace tamrix::sim
