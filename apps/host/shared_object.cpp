#include "host/shared_object.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <sys/statvfs.h>

namespace tamrix::host {

namespace {

[[noreturn]] void fail(const std::string& object, const std::string& why)
{
    throw std::runtime_error{"shared memory " + object + ": " + why};
}

/// If shared memory is short, the system sends a deadly signal when a page is touched. So this asks for the space
/// first.
void check_room(const std::string& object, std::uint32_t length_bytes)
{
    struct statvfs room {};
    if (::statvfs("/dev/shm", &room) != 0) return;
    const std::uint64_t free_bytes = std::uint64_t{room.f_bavail} * room.f_frsize;
    if (room.f_blocks == 0 || free_bytes >= length_bytes) return;  // 0 blocks: without a limit
    fail(object,
         std::to_string(length_bytes) + " bytes are needed, /dev/shm has room for " + std::to_string(free_bytes));
}

}  // namespace

shared_object::shared_object(std::string object, std::uint32_t length_bytes)
    : object_{std::move(object)}, file_{named_memory::open(object_)}
{
    if (file_ == 0) {
        check_room(object_, length_bytes);
        file_ = named_memory::create(object_, length_bytes);
        created_ = file_ != 0;
        // Another process made it between the two calls.
        if (file_ == 0 && errno == EEXIST) file_ = named_memory::open_or_create(object_, length_bytes);
    }
    if (file_ == 0) fail(object_, std::strerror(errno));
    bytes_ = static_cast<unsigned char*>(named_memory::map(file_));
    if (bytes_ == nullptr) {
        const int error = errno;
        named_memory::close(file_, object_);
        fail(object_, std::strerror(error));
    }
    reach_bytes_ = named_memory::reach_bytes(file_);
}

shared_object::~shared_object()
{
    named_memory::unmap(bytes_, reach_bytes_);
    named_memory::close(file_, object_);
}

void shared_object::withdraw_name() const { ::shm_unlink(named_memory::detail::path_of(object_).c_str()); }

}  // namespace tamrix::host
