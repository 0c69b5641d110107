// Files of emergency copies in their folder: made and locked by the program that writes them, found by the next one.
#pragma once

#include "editing/emergency_format.h"

#include <utility>

namespace tamrix::editing {

/// An open file with the lock that says its program lives. Closes it at the end; the file stays.
class locked_file {
public:
    explicit locked_file(int descriptor) : descriptor_{descriptor} {}
    locked_file(locked_file&& other) noexcept : descriptor_{std::exchange(other.descriptor_, -1)} {}
    locked_file& operator=(locked_file&& other) noexcept
    {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~locked_file();

    int descriptor() const { return descriptor_; }
    /// False if another program has the lock, or the name is already another file's.
    bool lock() const;

private:
    int descriptor_;
};

/// A file that is being written. All members throw std::runtime_error, with the reason, where nothing is said.
class emergency_file {
public:
    /// A new one under a name that no reader looks for. Makes the folder.
    explicit emergency_file(const std::string& folder);

    std::size_t length() const { return length_; }
    void append(std::span<const std::uint8_t> bytes);
    /// From now on readers find it, in place of `former`.
    void publish(const emergency_file* former);
    /// What was appended since the last call of this does not count any more after a failure.
    void keep() { kept_ = length_; }
    void cut_to_kept() noexcept;
    void remove() noexcept;

private:
    std::string path_{};
    locked_file file_;
    std::size_t length_ = 0, kept_ = 0;
};

/// What a program that died left. While this exists, no other program is offered it.
struct abandoned_copy {
    std::string path{};
    copy_state state{};
    wall_time time{};     // of its last commit
    std::string fault{};  // why nothing can be recovered; empty if it can
    locked_file lock;
};

/// The copies of programs that do not run any more, the newest first. Files in the making that nobody finishes are
/// removed. Throws nothing; a folder that cannot be read has none.
std::vector<abandoned_copy> abandoned_copies(const std::string& folder);

/// All bytes, for document::restore(). Throws std::runtime_error with the reason.
std::vector<std::uint8_t> recover(const abandoned_copy& copy);

void discard(const abandoned_copy& copy) noexcept;

}  // namespace tamrix::editing
