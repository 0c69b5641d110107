#include "files/file_io.h"
#include "formats/emc.h"
#include "session/session.h"

#include <string>

namespace tamrix {

/// Byte selection and the typed addresses mean nothing here: the image fills the buffer from its start.
status read_emc(transfer_job& job)
{
    constexpr std::size_t data_at = 2;
    const file_image file{job.transfer.fname};
    const auto image = file.bytes();
    if (image.size() < data_at) return fail_at_offset(job, image.size(), "the end of the file", "a word count");
    const std::size_t count = 2 * (image[0] + 256u * image[1]);
    const std::size_t pace = image.size() / 10;
    auto& ibuffer = job.plug_in.blocks.ibuffer;
    for (std::size_t i = 0; i < count; ++i) {
        if (i + data_at >= image.size()) {
            return fail_at_offset(job, image.size(), "the end of the file",
                                  "a data block of " + std::to_string(count) + " bytes");
        }
        ibuffer(static_cast<std::int64_t>(i)) = image[i + data_at];
        if (pace != 0 && i % pace == 0) job.progress(100.0 * static_cast<double>(i) / static_cast<double>(count + 1));
    }
    job.progress(100);
    return status::done;
}

}  // namespace tamrix
