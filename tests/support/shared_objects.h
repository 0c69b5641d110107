// What a test needs to look at shared memory from outside: which names there are, objects made by other means, and
// other processes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace tamrix::tests {

/// The names of the system's shared objects that begin with `prefix`, sorted.
std::vector<std::string> shared_objects(std::string_view prefix);

/// An object as a program makes it that knows nothing of our rule for names: it stays until it is removed.
class plain_object {
public:
    plain_object(std::string name, std::size_t length_bytes);
    ~plain_object();
    plain_object(const plain_object&) = delete;
    plain_object& operator=(const plain_object&) = delete;

    std::uint8_t* bytes() const { return static_cast<std::uint8_t*>(address_); }

private:
    std::string name_;
    std::size_t length_bytes_;
    void* address_ = nullptr;
};

/// An object of 100 bytes that belongs to another user. Only root can give one away; for everybody else it is one that
/// nobody may open, as objects of other users mostly are.
class foreign_object {
public:
    /// `rights` are those of its owner, its group and all others, and may hold the sticky bit.
    foreign_object(std::string name, mode_t rights);
    ~foreign_object();
    foreign_object(const foreign_object&) = delete;
    foreign_object& operator=(const foreign_object&) = delete;

private:
    std::string name_;
};

/// One end of a line between two processes; each call passes one signal.
class line_end {
public:
    line_end(int read_from, int write_to) : read_from_{read_from}, write_to_{write_to} {}
    void signal() const;
    /// False where the other side is gone.
    bool wait_for_signal() const;

private:
    int read_from_, write_to_;
};

/// A copy of this process that runs `body`; its result is the exit status. It is killed where the test ends before.
class child_process {
public:
    explicit child_process(const std::function<int(const line_end& parent)>& body);
    ~child_process();
    child_process(const child_process&) = delete;
    child_process& operator=(const child_process&) = delete;

    const line_end& line() const { return line_; }
    /// Waits for its end. Yields the exit status, -1 where a signal ended it.
    int wait();
    /// Ends it as a crash does: nothing in it runs any more.
    void crash();

private:
    line_end line_{-1, -1};
    int ends_[2] = {-1, -1};
    pid_t pid_ = 0;
};

}  // namespace tamrix::tests
