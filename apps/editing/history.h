// The steps that undo and redo go through.
#pragma once

#include "editing/kept_bytes.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::editing {

/// The bytes that are not shown on the other side of a step that dropped them.
struct dropped_rest {
    kept_bytes bytes{};
    std::uint64_t number = 0;  // which bytes they are
    kept_bytes saved{};        // those that were different when they were saved,
    std::uint64_t save = 0;    // unless another save followed
};

struct other_device {
    std::string name{};
    std::size_t buffer_bytes = 0;
};

/// What differs on the other side of a step: before it if it can be undone, after it if it can be redone.
struct step {
    std::string name{};
    kept_bytes bytes{};
    std::optional<other_device> device{};
    std::optional<dropped_rest> rest{};
    std::optional<std::string> file{};  // of a load: the file that the bytes come from
    bool begins_content = false;        // before it all is blank
    std::size_t counted = 0;            // what it took when the history counted it
    std::size_t memory() const;
};

/// Throws std::bad_alloc alone.
class history {
public:
    explicit history(std::size_t most_bytes) : most_bytes_{most_bytes} {}

    bool can_undo() const { return !undo_.empty(); }
    bool can_redo() const { return !redo_.empty(); }
    std::string undo_name() const { return can_undo() ? undo_.back().name : std::string{}; }
    std::string redo_name() const { return can_redo() ? redo_.back().name : std::string{}; }
    std::size_t memory() const { return memory_; }

    /// What could be redone is forgotten.
    void add(step made);
    /// The next step of undo or redo while it is carried out; there is one.
    step& next_undo() { return undo_.back(); }
    step& next_redo() { return redo_.back(); }
    /// It has been carried out.
    void undone();
    void redone();
    /// Takes the newest step away.
    void drop_newest();
    void forget();

    /// The step whose second digit is still to come, for the byte at `address`.
    step* half_typed(std::size_t address, std::string_view name);
    void typed_first_digit() { half_typed_ = true; }
    /// What is typed next is a step of its own.
    void close() { half_typed_ = false; }

private:
    void count(step& one);
    void limit();

    std::size_t most_bytes_;
    std::size_t memory_ = 0;
    std::deque<step> undo_{};
    std::vector<step> redo_{};
    bool half_typed_ = false;
};

}  // namespace tamrix::editing
