#include "sim/reply_pipe.h"

#include "base/other_side.h"

#include <utility>

namespace tamrix::sim {

reply_place place_in(const hw::reply_memory& memory)
{
    if (memory.ibuf1 == nullptr) return {};
    return [memory](std::span<const std::uint8_t> bytes) {
        for (std::size_t i = 0; i < bytes.size() && static_cast<std::int32_t>(i) < memory.ibuf1_length; ++i)
            hw::write_other_side(memory.ibuf1[i], bytes[i]);
    };
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

void reply_pipe::arrive()
{
    const auto bytes = std::exchange(on_its_way_, std::nullopt);
    if (!bytes) return;
    if (faults_.no_answer || faults_.lost_replies.take()) return log_.line("-> the reply is lost");
    came_ = true;
    if (!place_) return;
    place_(*bytes);
    log_.line("-> ibuf1 " + hex_text(*bytes));
}

void reply_pipe::let_arrive()
{
    if (by_itself_) arrive();
}

bool reply_pipe::receive()
{
    arrive();
    return std::exchange(came_, false);
}

}  // namespace tamrix::sim
