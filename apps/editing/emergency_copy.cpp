#include "editing/emergency_copy.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace tamrix::editing {

emergency_copy::emergency_copy(std::string folder, const document& edited, std::size_t slice_bytes)
    : folder_{std::move(folder)}, edited_{edited}, slice_bytes_{slice_bytes}
{}

void emergency_copy::note(std::size_t address, std::size_t length)
{
    if (length == 0) return;
    const std::size_t first = address / block_bytes, end = (address + length - 1) / block_bytes + 1;
    if (dirty_.size() < end) dirty_.resize(end, true);
    std::fill(dirty_.begin() + static_cast<std::ptrdiff_t>(first), dirty_.begin() + static_cast<std::ptrdiff_t>(end),
              true);
    first_dirty_ = std::min(first_dirty_, first);
}

copy_state emergency_copy::state() const
{
    return {edited_.device(), edited_.file(), edited_.bytes().size(), edited_.whole().length()};
}

std::size_t emergency_copy::next_dirty(std::size_t from) const
{
    return static_cast<std::size_t>(
        std::find(dirty_.begin() + static_cast<std::ptrdiff_t>(std::min(from, dirty_.size())), dirty_.end(), true) -
        dirty_.begin());
}

/// Changes are collected for a while; a clock that was set back does not stop them.
bool emergency_copy::is_due(wall_time now)
{
    if (failed_at_ && now >= *failed_at_ && now - *failed_at_ < pause_after_failure) return false;
    if (writing_) return true;
    if (!changed_at_) changed_at_ = now;
    return now < *changed_at_ || now - *changed_at_ >= delay;
}

bool emergency_copy::work(wall_time now)
{
    if (!edited_.changed()) {
        withdraw();
        return false;
    }
    dirty_.resize((edited_.whole().length() + block_bytes - 1) / block_bytes, true);
    first_dirty_ = next_dirty(std::min(first_dirty_, dirty_.size()));
    if (file_ && first_dirty_ == dirty_.size() && state() == committed_) return false;
    if (!is_due(now)) return false;
    try {
        if (!writing_) begin();
        write_slice(now);
    } catch (const std::exception& reason) {
        fail(reason.what(), now);
    }
    return writing_;
}

bool emergency_copy::too_long() const
{
    const std::size_t record_bytes = block_bytes + 16;
    return file_->length() > 2 * bytes_blocks_ * record_bytes + least_spare_bytes;
}

void emergency_copy::begin()
{
    writing_ = true;
    if (file_ && !failed_at_ && !too_long()) return;
    coming_.emplace(folder_);
    records_ = {};
    dirty_.assign(dirty_.size(), true);
    first_dirty_ = 0;
    has_bytes_.clear();
    bytes_blocks_ = 0;
}

void emergency_copy::write_blocks()
{
    const all_bytes whole = edited_.whole();
    std::array<std::uint8_t, block_bytes> room{};
    kept_bytes::run values{0, kept_piece{0, 0}};  // blocks side by side that are of one value
    const auto write_values = [&] {
        const kept_piece& piece = values.piece;
        if (piece.length() > 0) records_.add_value(values.address, piece.length(), piece.value());
    };
    has_bytes_.resize(dirty_.size());
    std::size_t& block = first_dirty_;
    for (std::size_t taken = 0; taken < slice_bytes_ && block < dirty_.size(); block = next_dirty(block + 1)) {
        const std::size_t address = block * block_bytes, length = std::min(block_bytes, whole.length() - address);
        const std::span<std::uint8_t> bytes = std::span{room}.first(length);
        whole.read(address, bytes);
        const bool one_value = is_one_value(bytes);
        if (!one_value) {
            records_.add_bytes(address, bytes);
        } else if (values.end() == address && values.piece.value() == bytes[0] && values.piece.length() > 0) {
            values.piece.grow(length);
        } else {
            write_values();
            values = {address, kept_piece{bytes[0], length}};
        }
        bytes_blocks_ = bytes_blocks_ - (has_bytes_[block] ? 1 : 0) + (one_value ? 0 : 1);
        has_bytes_[block] = !one_value;
        dirty_[block] = false;
        taken += length;
    }
    write_values();
}

void emergency_copy::write_slice(wall_time now)
{
    write_blocks();
    const bool all_written = first_dirty_ == dirty_.size();
    copy_state present = state();
    if (all_written) records_.commit(present, now);
    emergency_file& target = coming_ ? *coming_ : *file_;
    target.append(records_.take());
    if (!all_written) return;
    if (coming_) {
        coming_->publish(file_ ? &*file_ : nullptr);
        file_ = std::move(coming_);
        coming_.reset();
    }
    file_->keep();
    committed_ = std::move(present);
    writing_ = false;
    changed_at_.reset();
    failed_at_.reset();
}

/// The last whole commit stays. What was written after it counts no more, so the next attempt begins a new file.
void emergency_copy::fail(const std::string& why, wall_time now)
{
    if (coming_) coming_->remove();
    coming_.reset();
    if (file_) file_->cut_to_kept();
    if (!error_was_given_) error_ = why;
    error_was_given_ = true;
    writing_ = false;
    failed_at_ = now;
}

void emergency_copy::withdraw()
{
    if (coming_) coming_->remove();
    if (file_) file_->remove();
    coming_.reset();
    file_.reset();
    changed_at_.reset();
    failed_at_.reset();
    writing_ = false;
    error_was_given_ = false;
}

}  // namespace tamrix::editing
