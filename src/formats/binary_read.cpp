#include "files/file_io.h"
#include "formats/binary.h"
#include "formats/fill.h"
#include "messages/message_numbers.h"
#include "session/session.h"

#include <algorithm>

namespace tamrix {

namespace {

status read_whole(transfer_job& job, input_file& file)
{
    auto& blocks = job.plug_in.blocks;
    const std::span<std::uint8_t> buffer = blocks.ibuffer.span();
    file.read_zero_padded(0, buffer);
    if (file.length() < blocks.buflength(0) && job.clear == clear_option::fill_ff) {
        fill(buffer, file.length(), blocks.buflength(0), 0xFF);
    }
    return status::done;
}

/// Moves selected bytes number `first` to `last` - 1. An address outside the buffer throws when its turn comes.
void move_selected(const transfer_job& job, std::span<const std::uint8_t> image, std::int64_t first, std::int64_t last)
{
    const transfer_variables& at = job.transfer;
    auto& ibuffer = job.plug_in.blocks.ibuffer;
    const std::span<std::uint8_t> buffer = ibuffer.span();
    const std::int64_t target = at.bufstart + first;
    if (at.filestep == 1 && at.bufstep == 1 && target + (last - first) <= static_cast<std::int64_t>(buffer.size())) {
        std::copy_n(image.begin() + at.filestart + first, last - first, buffer.begin() + target);
        return;
    }
    for (std::int64_t i = first; i < last; ++i) {
        ibuffer(at.bufstart + at.bufstep * i) = image[static_cast<std::size_t>(at.filestart + at.filestep * i)];
    }
}

status read_selected(transfer_job& job, input_file& file)
{
    const file_image image{file};
    const std::int64_t count = selected_bytes(job, file.length());
    const std::int64_t pace = count / 10 + 1;
    for (std::int64_t i = 0; i < count; i += pace) {
        job.progress(100.0 * static_cast<double>(i) / static_cast<double>(count + 1));
        move_selected(job, image.bytes(), i, std::min(i + pace, count));
    }
    return status::done;
}

}  // namespace

std::int64_t selected_bytes(transfer_job& job, std::int64_t file_length)
{
    transfer_variables& at = job.transfer;
    std::int64_t count = (file_length - at.filestart) / at.filestep;
    count = std::min(count, (job.plug_in.devbytes() - at.bufstart) / at.bufstep);
    at.bufstart += at.bufphase;
    at.filestart += at.filephase;
    return std::min(count, at.loadlength);
}

status reject_file_address(transfer_job& job)
{
    job.plug_in.tell(message::from_file_address_beyond_file);
    return status::rejected;
}

detection detect_binary(const file_start&) { return detection::maybe; }

std::optional<address_range> measure_binary(const std::string& path)
{
    return address_range{0, input_file{path}.length()};
}

status read_binary(transfer_job& job)
{
    auto& blocks = job.plug_in.blocks;
    if (blocks.tlength(0) >= large_image_bytes && blocks.buflength(0) >= large_chunk_bytes) {
        return read_binary_large(job);
    }
    const transfer_variables& at = job.transfer;
    input_file file{job.transfer.fname};
    if (at.filestart > file.length()) return reject_file_address(job);
    // A whole file into a whole buffer is one read; it does not look at loadlength and the phases.
    const bool whole = at.bufstep == 1 && at.bufstart == 0 && at.filestart == 0 && at.filestep == 1 &&
                       job.clear != clear_option::disabled;
    const status outcome = whole ? read_whole(job, file) : read_selected(job, file);
    job.progress(100);
    return outcome;
}

}  // namespace tamrix
