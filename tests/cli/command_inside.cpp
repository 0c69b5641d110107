#include "cli/command_inside.h"

#include "cli/command_line.h"

#include <cstdlib>

namespace tamrix::tests {

namespace {

/// Takes what is written to it.
class memory_stream {
public:
    memory_stream() : file_{::open_memstream(&bytes_, &length_)} {}
    ~memory_stream()
    {
        std::fclose(file_);
        std::free(bytes_);
    }
    memory_stream(const memory_stream&) = delete;
    memory_stream& operator=(const memory_stream&) = delete;

    std::FILE* file() const { return file_; }
    std::string text() const
    {
        std::fflush(file_);
        return {bytes_, length_};
    }

private:
    char* bytes_ = nullptr;
    std::size_t length_ = 0;
    std::FILE* file_;
};

}  // namespace

command_result command_inside(const std::vector<std::string>& arguments)
{
    const memory_stream out, err;
    cli::console con{out.file(), err.file()};
    const int status = cli::run(arguments, con);
    return {.status = status, .out = out.text(), .err = err.text(), .left_in_shared_memory = {}};
}

}  // namespace tamrix::tests
