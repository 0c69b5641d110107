// The bytes that a person edits, with everything that leads back: history, the last saved state, bytes that the buffer
// of the device in use is too small to show.
#pragma once

#include "editing/history.h"
#include "editing/saved_bytes.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::editing {

/// Makes the buffer of a device, blank; the buffer before it is gone then. May throw std::runtime_error; the buffer
/// before it is still there then.
using buffer_maker = std::function<std::span<std::uint8_t>(const std::string& device)>;

class document {
public:
    static constexpr std::size_t usual_history_bytes = std::size_t{512} << 20;
    /// The oldest steps are forgotten when all take more than `history_bytes`; the newest one always stays.
    explicit document(buffer_maker make_buffer, std::size_t history_bytes = usual_history_bytes);

    /// Empty before the first change_device().
    std::span<const std::uint8_t> bytes() const { return bytes_; }
    const std::string& device() const { return device_; }
    /// The bytes that the buffer is too small to show, by their addresses, the first of which is that after its last
    /// one.
    const kept_bytes& hidden() const { return hidden_; }
    /// All bytes, those that are not shown as well.
    all_bytes whole() const { return {bytes_, &hidden_}; }
    /// Whether something was loaded or edited; otherwise all is blank.
    bool has_content() const { return has_content_; }

    /// Typing one byte takes two digits, which are one step when one follows the other.
    enum class typed : std::uint8_t { whole_bytes, second_digit };
    /// Throws std::out_of_range where the buffer does not reach; nothing has changed then.
    void replace(std::size_t address, std::span<const std::uint8_t> bytes, std::string_view name,
                 typed how = typed::whole_bytes);
    /// The same bytes at several places, in ascending order and apart from each other, in one step.
    void replace_each(std::span<const std::size_t> addresses, std::span<const std::uint8_t> bytes,
                      std::string_view name);
    /// What becomes of the bytes that are not shown: a step that replaces the whole content drops them; undo brings
    /// them back.
    enum class unseen : std::uint8_t { stays, is_dropped };
    void fill(std::size_t address, std::size_t length, std::uint8_t value, unseen rest = unseen::stays);
    /// For what writes into the buffer itself, anywhere: one step of all that differs after it. `action` returns
    /// whether that is kept; otherwise, and if it throws, the former bytes come back. Returns what `action` returned.
    bool watch(std::string_view name, const std::function<bool()>& action, unseen rest = unseen::stays);

    /// While the action of watch() or load() runs: the bytes are half written.
    bool is_watching() const { return watching_; }
    /// As watch(), for a file that replaces the whole content: after it the bytes are as saved in `file`. Undo brings
    /// back the file before as well.
    bool load(const std::string& file, const std::function<bool()>& action);
    /// Where the bytes came from or were saved; empty without a file.
    const std::string& file() const { return file_; }

    /// The bytes stay, as far as the buffer of the device reaches; those that it does not show are kept. Without
    /// content the bytes are those of the new buffer. A step, except for the first device. What the buffer_maker throws
    /// goes on; nothing has changed then.
    void change_device(const std::string& name);
    /// The same bytes are elsewhere now. Throws std::invalid_argument if there are more of them, or fewer.
    void moved(std::span<std::uint8_t> bytes);
    /// A content with all of its bytes, such as that of an emergency copy, in place of everything. It has no history
    /// and is not saved. What the buffer_maker throws goes on; nothing has changed then.
    void restore(const std::string& device, const std::string& file, std::span<const std::uint8_t> all);

    bool can_undo() const { return history_.can_undo(); }
    bool can_redo() const { return history_.can_redo(); }
    /// Of the next step; empty without one.
    std::string undo_name() const { return history_.undo_name(); }
    std::string redo_name() const { return history_.redo_name(); }
    /// Without effect if there is no step. After a buffer_maker that throws the step is still there. If it makes a
    /// buffer of another length than before, earlier steps no longer fit and are forgotten.
    void undo();
    void redo();

    /// Whether anything differs from what was saved last; another device alone does not change that.
    bool changed() const { return !saved_.empty() || rest_ != saved_rest_; }
    void saved();
    void saved_as(const std::string& file);
    /// For each of `length` bytes from `address` on; bytes after the buffer's end do not differ. Quick: takes time for
    /// the bytes asked for alone.
    std::vector<bool> differs_from_saved(std::size_t address, std::size_t length) const;

    /// What history, saved state and bytes that are not shown take.
    std::size_t memory() const { return history_.memory() + saved_.memory() + hidden_.memory(); }

    /// After each change of bytes, undo included. The addresses after bytes().size() are those of bytes not shown.
    std::function<void(std::size_t address, std::size_t length)> on_bytes{};
    /// After a change of device: the buffer is another one.
    std::function<void()> on_device{};
    /// When mark or names may have changed.
    std::function<void()> on_state{};

private:
    void require_inside(std::size_t address, std::size_t length) const;
    /// What is saved right after the step need not be compared with what was saved before it.
    enum class after : std::uint8_t { differs, is_saved };
    bool watch_step(step made, const std::function<bool()>& action, unseen rest, after state = after::differs);
    /// Whether it is a step.
    bool finish(step made, unseen rest, after state = after::differs);
    void exchange(step& one);
    void exchange_rest(dropped_rest& rest);
    std::size_t place(const std::string& device, std::span<std::uint8_t> buffer, kept_bytes shown);
    bool enter(const std::string& device, std::size_t expected_length);
    bool carry_out(step& one, bool content_after);
    void take_back(kept_bytes former);
    void report_bytes(const kept_bytes& changed) const;
    void report_bytes(std::size_t address, std::size_t end) const;
    void report_state() const;

    buffer_maker make_buffer_;
    std::span<std::uint8_t> bytes_{};
    std::string device_{}, file_{};
    kept_bytes hidden_{};
    bool has_content_ = false, watching_ = false;
    history history_;
    saved_bytes saved_{};
    // Which bytes follow those that are shown: each time that some are dropped has a number of its own.
    std::uint64_t rest_ = 0, saved_rest_ = 0, last_rest_ = 0;
    std::uint64_t saves_ = 0;  // how often it was saved
};

}  // namespace tamrix::editing
