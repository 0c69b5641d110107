#include "sim/bulk_pipe.h"

#include "base/other_side.h"
#include "channel/bulk_read.h"

#include <algorithm>
#include <utility>

namespace tamrix::sim {

namespace {

constexpr std::uint8_t arrived = 2;
/// Long enough that a reader sees the one without the other now and then.
constexpr microseconds marker_after{200};

}  // namespace

void bulk_pipe::start(std::vector<std::uint8_t> data, std::uint8_t* buffer, std::uint8_t* status, microseconds when,
                      bool marker)
{
    cancel();
    std::uint8_t* const behind = buffer + data.size();
    data_ = time_->at(when, [data = std::move(data), buffer, status] {
        std::copy_n(data.data(), data.size(), buffer);
        hw::write_other_side(*status, arrived);
    });
    if (!marker) return;
    marker_ = time_->at(when + marker_after, [behind] { hw::write_other_side(*behind, hw::end_marker); });
}

void bulk_pipe::cancel()
{
    time_->cancel(std::exchange(data_, 0));
    time_->cancel(std::exchange(marker_, 0));
}

}  // namespace tamrix::sim
