#include "transfer/transfer_job.h"

#include "transfer/file_io.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

namespace tamrix {

namespace {

/// Lines end with CR, LF or both.
std::uint64_t line_at(std::span<const std::uint8_t> file, std::size_t offset)
{
    std::uint64_t line = 1;
    for (std::size_t at = 0; at < std::min(offset, file.size()); ++at) {
        const bool pair = file[at] == '\r' && at + 1 < file.size() && file[at + 1] == '\n';
        if (file[at] == '\n' || (file[at] == '\r' && !pair)) ++line;
    }
    return line;
}

}  // namespace

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

status fail_in_text(transfer_job& job, std::span<const std::uint8_t> file, std::size_t offset, std::string found,
                    std::string expected)
{
    job.plug_in.why_it_failed = {.file = job.plug_in.fname,
                                 .line = line_at(file, offset),
                                 .found = std::move(found),
                                 .expected = std::move(expected)};
    return status::failed;
}

}  // namespace tamrix
