#include "support/shared_objects.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {

std::vector<std::string> shared_objects(std::string_view prefix)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator{"/dev/shm"}) {
        std::string name = entry.path().filename().string();
        if (name.starts_with(prefix)) names.push_back(std::move(name));
    }
    std::ranges::sort(names);
    return names;
}

plain_object::plain_object(std::string name, std::size_t length_bytes)
    : name_{"/" + std::move(name)}, length_bytes_{length_bytes}
{
    const int file = ::shm_open(name_.c_str(), O_RDWR | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (file < 0 || ::ftruncate(file, static_cast<off_t>(length_bytes)) != 0) throw std::runtime_error{name_};
    if (length_bytes > 0) address_ = ::mmap(nullptr, length_bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    ::close(file);
}

plain_object::~plain_object()
{
    if (address_ != nullptr) ::munmap(address_, length_bytes_);
    ::shm_unlink(name_.c_str());
}

foreign_object::foreign_object(std::string name, mode_t rights) : name_{"/" + std::move(name)}
{
    constexpr uid_t nobody = 65534;
    const int file = ::shm_open(name_.c_str(), O_RDWR | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    const bool root = ::geteuid() == 0;
    const bool made = file >= 0 && ::ftruncate(file, 100) == 0 && (!root || ::fchown(file, nobody, nobody) == 0) &&
                      ::fchmod(file, root ? rights : rights & S_ISVTX) == 0;
    ::close(file);
    if (!made) throw std::runtime_error{name_};
}

foreign_object::~foreign_object() { ::shm_unlink(name_.c_str()); }

void line_end::signal() const
{
    const char one = '.';
    if (::write(write_to_, &one, 1) != 1) throw std::runtime_error{"the other process is gone"};
}

bool line_end::wait_for_signal() const
{
    char one = 0;
    return ::read(read_from_, &one, 1) == 1;
}

child_process::child_process(const std::function<int(const line_end& parent)>& body)
{
    int down[2], up[2];
    if (::pipe2(down, O_CLOEXEC) != 0 || ::pipe2(up, O_CLOEXEC) != 0) throw std::runtime_error{"pipe"};
    pid_ = ::fork();
    if (pid_ < 0) throw std::runtime_error{"fork"};
    if (pid_ == 0) {
        ::close(down[1]);
        ::close(up[0]);
        int status = 255;
        try {
            status = body(line_end{down[0], up[1]});
        } catch (...) {  // the status says so
        }
        ::_exit(status);
    }
    ::close(down[0]);
    ::close(up[1]);
    ends_[0] = down[1];
    ends_[1] = up[0];
    line_ = line_end{up[0], down[1]};
}

child_process::~child_process()
{
    crash();
    ::close(ends_[0]);
    ::close(ends_[1]);
}

int child_process::wait()
{
    if (pid_ == 0) return -1;
    int status = 0;
    ::waitpid(std::exchange(pid_, 0), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void child_process::crash()
{
    if (pid_ == 0) return;
    ::kill(pid_, SIGKILL);
    wait();
}

}  // namespace tamrix::tests
