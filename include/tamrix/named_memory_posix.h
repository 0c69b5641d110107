// The part of tamrix/named_memory.h for systems with POSIX shared memory; include that one.
//
// Every user holds a shared lock on the object, and the last one to close it removes the name. An object without a lock
// was left by a crashed process and counts as missing. The sticky bit marks objects that follow this rule; an object
// without it was made by other means: it is opened as it is and never removed. An object of another user account is
// neither opened nor removed: otherwise that account could read and change what host and plug-in share.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tamrix::named_memory {

/// A handle of an open object; 0 is none.
using handle = int;

namespace detail {

inline constexpr mode_t managed = S_ISVTX;

inline std::string path_of(const std::string& object) { return "/" + object; }

/// Moves a descriptor above those of the standard streams, so that no handle is 0.
inline handle as_handle(int fd)
{
    if (fd < 0 || fd > STDERR_FILENO) return fd < 0 ? 0 : fd;
    const int moved = ::fcntl(fd, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::close(fd);
    return moved < 0 ? 0 : moved;
}

inline int lock(handle file, int operation)
{
    int result = 0;
    do {
        result = ::flock(file, operation);
    } while (result != 0 && errno == EINTR);
    return result;
}

}  // namespace detail

/// Releases a handle; the last user removes the name.
inline void close(handle file, const std::string& object) noexcept
{
    if (file == 0) return;
    struct stat info {};
    const bool last = ::fstat(file, &info) == 0 && (info.st_mode & detail::managed) != 0 && info.st_nlink > 0 &&
                      detail::lock(file, LOCK_EX | LOCK_NB) == 0 && ::fstat(file, &info) == 0 && info.st_nlink > 0;
    if (last) ::shm_unlink(detail::path_of(object).c_str());
    ::close(file);
}

/// Opens an existing object; 0 if there is none or it cannot be opened.
inline handle open(const std::string& object)
{
    for (;;) {
        const handle file = detail::as_handle(::shm_open(detail::path_of(object).c_str(), O_RDWR | O_CLOEXEC, 0));
        if (file == 0) return 0;
        struct stat info {};
        if (::fstat(file, &info) != 0 || info.st_uid != ::geteuid()) {
            ::close(file);
            return 0;
        }
        if ((info.st_mode & detail::managed) == 0) return file;
        if (detail::lock(file, LOCK_EX | LOCK_NB) == 0) {  // nobody holds it: left by a crash, or about to be made
            close(file, object);
            return 0;
        }
        if (detail::lock(file, LOCK_SH) == 0 && ::fstat(file, &info) == 0 && info.st_nlink > 0 && info.st_size > 0) {
            return file;
        }
        ::close(file);  // it was removed, or is not complete yet, between the two calls
    }
}

/// Creates an object of `length_bytes` zero bytes; 0 if the name is taken or it fails.
inline handle create(const std::string& object, std::uint32_t length_bytes)
{
    const std::string path = detail::path_of(object);
    for (;;) {
        // Marked from the start, so that nobody takes an incomplete object for one made by other means.
        const handle file = detail::as_handle(
            ::shm_open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR | detail::managed));
        if (file == 0) return 0;
        struct stat info {};
        if (detail::lock(file, LOCK_SH) == 0 && ::ftruncate(file, length_bytes) == 0 && ::fstat(file, &info) == 0) {
            if (info.st_nlink > 0) return file;
            ::close(file);  // another process took it for a leftover before the lock was set: try again
            continue;
        }
        ::shm_unlink(path.c_str());
        ::close(file);
        return 0;
    }
}

/// Opens an object, or creates it with `length_bytes` bytes if there is none; 0 if neither is possible. A length of 0
/// creates nothing.
inline handle open_or_create(const std::string& object, std::uint32_t length_bytes)
{
    // Another process may create or remove the object between the two calls. A name that is taken and can never be
    // opened belongs to something else.
    for (int attempt = 0; attempt < 100; ++attempt) {
        if (const handle file = open(object); file != 0 || length_bytes == 0) return file;
        if (const handle file = create(object, length_bytes); file != 0) return file;
        if (errno != EEXIST) return 0;
    }
    return 0;
}

/// Bytes that can be reached through a mapping: the length of the object, rounded up to whole pages.
inline std::size_t reach_bytes(handle file)
{
    struct stat info {};
    if (file == 0 || ::fstat(file, &info) != 0 || info.st_size <= 0) return 0;
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return (static_cast<std::size_t>(info.st_size) + page - 1) / page * page;
}

/// Maps the whole object for reading and writing; null on failure.
inline void* map(handle file)
{
    const std::size_t length = reach_bytes(file);
    if (length == 0) return nullptr;
    void* address = ::mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    return address == MAP_FAILED ? nullptr : address;
}

inline bool unmap(void* address, std::size_t length_bytes) noexcept
{
    return address != nullptr && ::munmap(address, length_bytes) == 0;
}

}  // namespace tamrix::named_memory
