// The load of an image that does not fit the mapping: through a temporary file under `syspath`.
#include "files/file_io.h"
#include "formats/binary.h"
#include "formats/fill.h"
#include "session/session.h"

#include <algorithm>
#include <vector>

namespace tamrix {

namespace {

void copy_in_chunks(transfer_job& job, input_file& source, output_file& image)
{
    auto& blocks = job.plug_in.blocks;
    const std::span<std::uint8_t> buffer = blocks.ibuffer.span();
    std::int64_t left = source.length();
    const std::int64_t last_of_device = blocks.tlength(0) / large_chunk_bytes - 1;
    const std::int64_t last = std::min((left - 1) / large_chunk_bytes, last_of_device);
    const auto percent = [last](std::int64_t step) {
        return 100.0 * static_cast<double>(step) / static_cast<double>(3 + 2 * last);
    };
    const auto report = [&](std::int64_t step) {
        job.progress(percent(step));
        job.plug_in.screen.doevents();
    };
    for (std::int64_t k = 0; k <= last; ++k) {
        report(2 * k + 1);
        source.read_zero_padded(job.transfer.filestart + k * large_chunk_bytes, buffer);
        if (left < blocks.buflength(0) && job.clear == clear_option::fill_ff) {
            // From the byte after next on: the byte at `left` itself keeps the 0 of the read.
            fill(buffer, left + 1, blocks.buflength(0), 0xFF);
        }
        report(2 * k + 2);
        image.write_at(k * large_chunk_bytes, buffer);
        left -= large_chunk_bytes;
    }
    if (last != 0) source.read_zero_padded(0, buffer);  // the buffer shows the image's start
    job.progress(100);
}

/// Moves `count` single bytes between two files of which each is touched at a fixed stride, a window of both in memory.
class byte_mover {
public:
    byte_mover(input_file& source, output_file& target) : source_{source}, target_{target} {}

    void move(std::int64_t from, std::int64_t from_step, std::int64_t to, std::int64_t to_step, std::int64_t count)
    {
        constexpr std::int64_t window_bytes = 1 << 20;
        const std::int64_t at_once = window_bytes / std::max(from_step, to_step);
        for (std::int64_t done = 0; done < count; done += at_once) {
            const std::int64_t n = std::min(at_once, count - done);
            read_.resize(static_cast<std::size_t>((n - 1) * from_step + 1));
            written_.assign(static_cast<std::size_t>((n - 1) * to_step + 1), 0);  // gaps of a new file are 0
            source_.read_zero_padded(from + done * from_step, read_);
            for (std::int64_t i = 0; i < n; ++i) {
                written_[static_cast<std::size_t>(i * to_step)] = read_[static_cast<std::size_t>(i * from_step)];
            }
            target_.write_at(to + done * to_step, written_);
        }
    }

private:
    input_file& source_;
    output_file& target_;
    std::vector<std::uint8_t> read_, written_;
};

void copy_by_bytes(transfer_job& job, input_file& source, output_file& image)
{
    const transfer_variables& at = job.transfer;
    const std::int64_t count = selected_bytes(job, source.length());
    const std::int64_t pace = count / 100;
    byte_mover mover{source, image};
    for (std::int64_t i = 0; i < count;) {
        if (pace != 0) {
            job.plug_in.screen.doevents();
            job.progress(100.0 * static_cast<double>(i) / static_cast<double>(count + 1));
        }
        const std::int64_t n = std::min(pace != 0 ? pace : count, count - i);
        // The two sides are crossed against the ordinary load: the source is walked by the buffer's steps, the image by
        // the file's. Images on disk were made so and must come out the same.
        mover.move(at.bufstart + at.bufstep * i, at.bufstep, at.filestart + at.filestep * i, at.filestep, n);
        i += n;
    }
    source.read_zero_padded(0, job.plug_in.blocks.ibuffer.span());
}

}  // namespace

status read_binary_large(transfer_job& job)
{
    const transfer_variables& at = job.transfer;
    input_file source{job.transfer.fname};
    if (at.filestart > source.length()) return reject_file_address(job);
    output_file image{job.plug_in.syspath + "tmpbuf.bin"};
    if (at.bufstep == 1 && at.bufstart == 0 && at.filestart == 0 && at.filestep == 1 &&
        at.loadlength >= job.plug_in.devbytes()) {
        copy_in_chunks(job, source, image);
    } else {
        copy_by_bytes(job, source, image);
    }
    image.close();
    job.progress(100);
    return status::done;
}

}  // namespace tamrix
