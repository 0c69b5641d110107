#include "cli/standard_streams.h"

#include <cerrno>

#include <unistd.h>

namespace tamrix::cli {

std::size_t standard_input::read(std::span<std::uint8_t> target)
{
    std::size_t done = 0;
    while (done < target.size()) {
        const ssize_t got = ::read(STDIN_FILENO, target.data() + done, target.size() - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) throw file_error{"standard input", errno};
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

void standard_output::write(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t put = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) throw file_error{"standard output", errno};
        bytes = bytes.subspan(static_cast<std::size_t>(put));
    }
}

}  // namespace tamrix::cli
