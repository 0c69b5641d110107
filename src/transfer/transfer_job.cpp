#include "transfer/transfer_job.h"

#include <exception>
#include <new>
#include <utility>

namespace tamrix {

status run_guarded(transfer_job& job, transfer_routine routine)
{
    diagnostic& why = job.plug_in.why_it_failed;
    why = {};
    try {
        return routine(job);
    } catch (const file_error& error) {
        why = error.why();
    } catch (const std::bad_alloc&) {
        why = {.file = job.plug_in.fname, .found = "more than the memory can hold"};
    } catch (const std::exception& error) {
        why = {.file = job.plug_in.fname, .found = error.what()};
    }
    return status::failed;
}

status fail_in_text(transfer_job& job, file_window& file, std::int64_t offset, std::string found, std::string expected)
{
    return fail_in_line(job, file.line_at(offset), std::move(found), std::move(expected));
}

status fail_in_line(transfer_job& job, std::uint64_t line, std::string found, std::string expected)
{
    job.plug_in.why_it_failed = {
        .file = job.plug_in.fname, .line = line, .found = std::move(found), .expected = std::move(expected)};
    return status::failed;
}

status fail_at_offset(transfer_job& job, std::size_t offset, std::string found, std::string expected)
{
    job.plug_in.why_it_failed = {
        .file = job.plug_in.fname, .offset = offset, .found = std::move(found), .expected = std::move(expected)};
    return status::failed;
}

}  // namespace tamrix
