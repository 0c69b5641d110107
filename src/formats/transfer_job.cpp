#include "formats/transfer_job.h"

#include "files/file_guard.h"

#include <utility>

namespace tamrix {

status run_guarded(transfer_job& job, transfer_routine routine)
{
    status outcome = status::failed;
    guard_file(job.transfer.why_it_failed, job.transfer.fname, [&] { outcome = routine(job); });
    return outcome;
}

status fail_in_text(transfer_job& job, file_window& file, std::int64_t offset, std::string found, std::string expected)
{
    return fail_in_line(job, file.line_at(offset), std::move(found), std::move(expected));
}

status fail_in_line(transfer_job& job, std::uint64_t line, std::string found, std::string expected)
{
    job.transfer.why_it_failed = {
        .file = job.transfer.fname, .line = line, .found = std::move(found), .expected = std::move(expected)};
    return status::failed;
}

status fail_at_offset(transfer_job& job, std::size_t offset, std::string found, std::string expected)
{
    job.transfer.why_it_failed = {
        .file = job.transfer.fname, .offset = offset, .found = std::move(found), .expected = std::move(expected)};
    return status::failed;
}

}  // namespace tamrix
