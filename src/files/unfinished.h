// What a program must not leave lying around when a signal ends it: files that are half written, temporary folders.
// POSIX only.
#pragma once

#include <csignal>
#include <string>

namespace tamrix {

/// While it exists, this thread takes no signal that ends the program, and a handler on another thread waits. So what
/// is created under it is registered before anything can end the program. For short times only;
/// one inside another does nothing more.
class ending_held {
public:
    ending_held();
    ~ending_held();
    ending_held(const ending_held&) = delete;
    ending_held& operator=(const ending_held&) = delete;

private:
    sigset_t before_{};
};

/// A file, or a folder with files in it, that goes away if a signal ends the program while this object holds its name.
class unfinished {
public:
    unfinished() = default;
    ~unfinished() { release(); }
    unfinished(const unfinished&) = delete;
    unfinished& operator=(const unfinished&) = delete;

    /// An absolute path, or one of the current folder. Without effect if as many names as the program can hold, 16, are
    /// held already.
    void hold(const std::string& path);
    void release();

private:
    int place_ = -1;
};

/// From now on a signal that ends the program (SIGHUP, SIGINT, SIGTERM, SIGPIPE) first removes what is unfinished, then
/// ends it as it would have. A signal that is ignored stays so.
void remove_unfinished_at_signals();

}  // namespace tamrix
