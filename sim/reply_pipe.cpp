#include "sim/reply_pipe.h"

#include "base/other_side.h"
#include "tamrix/types.h"

#include <utility>

namespace tamrix::sim {

reply_place place_in(const hw::reply_memory& memory)
{
    reply_place place;
    if (memory.ibuf1 != nullptr) {
        place.put = [memory](std::span<const std::uint8_t> reply, bool unasked) {
            for (std::size_t i = 0; i < reply.size() && static_cast<std::int32_t>(i) < memory.ibuf1_length; ++i)
                hw::write_other_side(memory.ibuf1[i], reply[i]);
            if (unasked && memory.usbpip0readresult != nullptr)
                hw::write_other_side(*memory.usbpip0readresult, bool16_true);
        };
    }
    if (memory.ubuf1 != nullptr) {
        place.ubuf1 = [memory](std::size_t index) {
            return index < static_cast<std::size_t>(memory.ubuf1_length) ? memory.ubuf1[index] : std::uint8_t{0};
        };
    }
    return place;
}

void reply_pipe::send(std::vector<std::uint8_t> bytes, bool by_itself)
{
    on_its_way_ = std::move(bytes);
    by_itself_ = by_itself;
    came_ = false;
}

void reply_pipe::clear()
{
    on_its_way_.reset();
    came_ = false;
}

void reply_pipe::arrive(bool unasked)
{
    const auto bytes = std::exchange(on_its_way_, std::nullopt);
    if (!bytes) return;
    if (faults_.no_answer || faults_.lost_replies.take()) return log_.line("-> the reply is lost");
    came_ = true;
    if (!place_.put) return;
    place_.put(*bytes, unasked);
    log_.line("-> ibuf1 ", hex_word{*bytes});
}

void reply_pipe::let_arrive()
{
    if (by_itself_) arrive(true);
}

bool reply_pipe::receive()
{
    arrive(false);
    return std::exchange(came_, false);
}

}  // namespace tamrix::sim
