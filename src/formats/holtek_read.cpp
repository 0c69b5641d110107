#include "files/file_io.h"
#include "formats/holtek.h"
#include "formats/holtek_segment.h"
#include "session/session.h"

namespace tamrix {

namespace {

class holtek_reader {
public:
    explicit holtek_reader(transfer_job& job) : job_{job}, file_{job.transfer.fname}, image_{file_.bytes()} {}
    status read();

private:
    status take(const holtek_segment& segment);
    status no_segment(std::size_t offset);

    transfer_job& job_;
    file_image file_;
    std::span<const std::uint8_t> image_;
    unsigned sum_ = 0;  // carried from segment to segment; 0 after a good check
};

/// Byte selection and the typed addresses mean nothing here: the file says where its data go.
status holtek_reader::read()
{
    transfer_variables& at = job_.transfer;
    const auto begin = first_holtek_segment(image_);
    if (!begin) return fail_at_offset(job_, 0, "no Holtek header", "the mark C0 with a header length below 8000");
    const auto first = holtek_segment_at(image_, *begin);
    if (!first) return no_segment(*begin);
    at.bufstart = first->address;
    if (const status outcome = take(*first); outcome != status::done) return outcome;
    const auto second = holtek_segment_at(image_, first->end());
    if (!second) return no_segment(first->end());
    // After the program words, rounded down to a multiple of 256; the file does not say it.
    at.bufstart = std::int64_t{job_.plug_in.blocks.tlength(0)} * 2 / 256 * 256;
    return take(*second);
}

status holtek_reader::take(const holtek_segment& segment)
{
    auto& ibuffer = job_.plug_in.blocks.ibuffer;
    const std::int64_t target = job_.transfer.bufstart;
    for (std::size_t at = segment.begin + 1; at < segment.data() && at < segment.end(); ++at) sum_ += image_[at];
    for (std::size_t i = 0; i < segment.data_bytes(); ++i) {
        const std::size_t at = segment.data() + i;
        if (at >= image_.size()) return fail_at_offset(job_, at, "the end of the file", "segment data");
        ibuffer(target + static_cast<std::int64_t>(i)) = image_[at];
        sum_ += image_[at];
    }
    if (segment.checksum() >= image_.size()) {
        return fail_at_offset(job_, segment.checksum(), "the end of the file", "a checksum");
    }
    if (segment.checksum() >= segment.data()) sum_ += image_[segment.checksum()];
    if ((sum_ & 0xFF) == 0) return status::done;
    return fail_at_offset(job_, segment.checksum(), "a wrong checksum", "a segment whose bytes add up to 0");
}

status holtek_reader::no_segment(std::size_t offset)
{
    const bool ended = offset >= image_.size();
    return fail_at_offset(job_, offset, ended ? "the end of the file" : "no segment",
                          "a segment that begins with \"e\"");
}

}  // namespace

status read_holtek(transfer_job& job) { return holtek_reader{job}.read(); }

}  // namespace tamrix
