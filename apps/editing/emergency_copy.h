// Writes down what is not saved while a person works, so that a crash takes a few seconds of it at most.
#pragma once

#include "editing/document.h"
#include "editing/emergency_file.h"
#include "editing/emergency_format.h"

#include <optional>

namespace tamrix::editing {

/// One file a running program, which holds a lock on it. The file is only appended to, and begun anew when it is much
/// longer than what it holds. Against a crash of the program, not of the system: it does not wait for the disk.
class emergency_copy {
public:
    /// How long a change waits for others to be written with it.
    static constexpr std::chrono::milliseconds delay{2000};
    /// A folder that cannot be written is tried again after this.
    static constexpr std::chrono::seconds pause_after_failure{30};
    static constexpr std::size_t usual_slice_bytes = std::size_t{2} << 20;

    /// Of `edited`, which outlives it and calls note() after each change of bytes. The folder is made with the first
    /// copy. A slice of work takes `slice_bytes` of the document.
    emergency_copy(std::string folder, const document& edited, std::size_t slice_bytes = usual_slice_bytes);

    void note(std::size_t address, std::size_t length);
    /// Does one slice of what is to do, a few milliseconds; for a timer, once a second. Returns whether the next slice
    /// may follow as soon as the program is idle. Withdraws the copy when all is saved. Not to be called while
    /// document::watch() runs, whose bytes are half written.
    bool work(wall_time now);
    /// Removes the copy; a clean end of the program does so. Without it the copy stays for the next start.
    void withdraw();
    /// Whether the file has a whole state. Until then a copy that was recovered from is still needed: the program may
    /// crash again.
    bool has_state() const { return file_.has_value(); }

    /// Why nothing could be written, once; empty otherwise.
    std::string take_error() { return std::exchange(error_, {}); }

private:
    static constexpr std::size_t block_bytes = kept_bytes::block_bytes;
    /// A file up to this length is never too long.
    static constexpr std::size_t least_spare_bytes = std::size_t{1} << 20;

    copy_state state() const;
    std::size_t next_dirty(std::size_t from) const;
    bool is_due(wall_time now);
    void begin();
    bool too_long() const;
    void write_slice(wall_time now);
    void write_blocks();
    void fail(const std::string& why, wall_time now);

    std::string folder_;
    const document& edited_;
    std::size_t slice_bytes_;

    std::vector<bool> dirty_{};      // blocks that the file does not have as they are
    std::size_t first_dirty_ = 0;    // none before it
    std::vector<bool> has_bytes_{};  // blocks that are not of one value in the file
    std::size_t bytes_blocks_ = 0;   // how many
    std::optional<wall_time> changed_at_{};
    std::optional<wall_time> failed_at_{};
    bool writing_ = false;  // until the next commit

    std::optional<emergency_file> file_{};    // with a whole commit
    std::optional<emergency_file> coming_{};  // takes its place with the next commit
    copy_records records_{};
    copy_state committed_{};
    std::string error_{};
    bool error_was_given_ = false;
};

}  // namespace tamrix::editing
