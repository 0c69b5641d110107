#include "files/file_io.h"
#include "formats/binary.h"
#include "formats/buffer_range.h"
#include "session/session.h"

#include <algorithm>

namespace tamrix {

namespace {

constexpr std::int64_t block_bytes = 200;

/// Writes blocks of 200 bytes, `first` to `last` - 1, at one stroke where the buffer holds them all. Where it does not,
/// what it holds in whole blocks reaches the file before the error.
void write_blocks(const transfer_job& job, output_file& out, std::int64_t first, std::int64_t last)
{
    const std::int64_t start = job.transfer.bufstart;
    session& plug_in = job.plug_in;
    const auto held = static_cast<std::int64_t>(plug_in.blocks.ibuffer.span().size()) - start;
    const std::int64_t whole = std::clamp(held / block_bytes, first, last);
    out.write(buffer_bytes(plug_in, start + first * block_bytes, (whole - first) * block_bytes));
    if (whole < last) buffer_bytes(plug_in, start + whole * block_bytes, block_bytes);
}

void write_tail(session& plug_in, output_file& out, std::int64_t address, std::int64_t count)
{
    const auto held = static_cast<std::int64_t>(plug_in.blocks.ibuffer.span().size()) - address;
    out.write(buffer_bytes(plug_in, address, std::clamp<std::int64_t>(held, 0, count)));
    if (held < count) buffer_bytes(plug_in, address, count);
}

void write_range(transfer_job& job, output_file& out)
{
    const transfer_variables& at = job.transfer;
    const std::int64_t blocks = at.savelength / block_bytes;
    const std::int64_t pace = at.savelength / 2000 + 1;
    for (std::int64_t i = 0; i < blocks; i += pace) {
        job.progress(10.0 * static_cast<double>(i) / static_cast<double>(pace));
        job.plug_in.screen.doevents();
        write_blocks(job, out, i, std::min(i + pace, blocks));
    }
    write_tail(job.plug_in, out, at.bufstart + blocks * block_bytes, at.savelength - blocks * block_bytes);
}

/// The image is in the temporary file that the load of a large image left; the buffer only carries its parts.
void write_large_image(transfer_job& job, output_file& out)
{
    constexpr std::int64_t more_than_a_margin = 2201;
    const std::span<std::uint8_t> buffer = job.plug_in.blocks.ibuffer.span();
    input_file image{job.plug_in.syspath + "\\tmpbuf.bin"};
    if (image.length() != 0) {
        const std::int64_t last = (image.length() - more_than_a_margin) / large_chunk_bytes;
        const auto percent = [last](std::int64_t step) {
            return 100.0 * static_cast<double>(step) / static_cast<double>(3 + 2 * last);
        };
        for (std::int64_t k = 0; k <= last; ++k) {
            image.read_zero_padded(k * large_chunk_bytes, buffer);
            job.progress(percent(2 * k + 1));
            out.write_at(k * large_chunk_bytes, buffer);
            job.progress(percent(2 * k + 2));
        }
        if (last != 0) image.read_zero_padded(0, buffer);  // the buffer shows the image's start
    }
    job.progress(100);
}

}  // namespace

status write_binary(transfer_job& job)
{
    output_file out{job.transfer.fname};
    if (job.plug_in.devbytes() < large_image_bytes || job.plug_in.blocks.buflength(0) < large_chunk_bytes) {
        write_range(job, out);
    } else {
        write_large_image(job, out);
    }
    out.close();
    return status::done;
}

}  // namespace tamrix
