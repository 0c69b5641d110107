#include "files/background_io.h"

#include <algorithm>
#include <utility>

namespace tamrix {

namespace {

constexpr std::size_t block_bytes = std::size_t{1} << 20;

}  // namespace

bool block_queue::push(block full)
{
    std::unique_lock lock{mutex_};
    changed_.wait(lock, [this] { return stopped_ || waiting_.size() < most_waiting; });
    if (stopped_) return false;
    waiting_.push_back(std::move(full));
    changed_.notify_all();
    return true;
}

block_queue::block block_queue::pop()
{
    std::unique_lock lock{mutex_};
    changed_.wait(lock, [this] { return finished_ || stopped_ || !waiting_.empty(); });
    if (waiting_.empty()) {
        if (error_) std::rethrow_exception(error_);
        return {};
    }
    block next = std::move(waiting_.front());
    waiting_.pop_front();
    changed_.notify_all();
    return next;
}

block_queue::block block_queue::spare()
{
    const std::lock_guard lock{mutex_};
    if (spare_.empty()) return {};
    block found = std::move(spare_.back());
    spare_.pop_back();
    return found;
}

void block_queue::give_back(block used)
{
    const std::lock_guard lock{mutex_};
    spare_.push_back(std::move(used));
}

void block_queue::finish(std::exception_ptr error)
{
    const std::lock_guard lock{mutex_};
    error_ = std::move(error);
    finished_ = true;
    changed_.notify_all();
}

void block_queue::stop()
{
    const std::lock_guard lock{mutex_};
    stopped_ = true;
    changed_.notify_all();
}

read_ahead::~read_ahead()
{
    queue_.stop();
    if (reader_.joinable()) reader_.join();
}

/// False at the end.
bool read_ahead::next()
{
    given_ = 0;
    if (!reader_.joinable()) {
        current_.resize(block_bytes);
        current_.resize(from_->read(current_));
        if (current_.size() < block_bytes) {
            at_end_ = true;
            return !current_.empty();
        }
        reader_ = std::thread{[this] {
            try {
                for (;;) {
                    block_queue::block read = queue_.spare();
                    read.resize(block_bytes);
                    read.resize(from_->read(read));
                    const bool last = read.size() < block_bytes;
                    if (!queue_.push(std::move(read)) || last) break;
                }
                queue_.finish();
            } catch (...) {
                queue_.finish(std::current_exception());
            }
        }};
        return true;
    }
    queue_.give_back(std::exchange(current_, {}));
    current_ = queue_.pop();
    at_end_ = current_.empty();
    return !at_end_;
}

std::size_t read_ahead::read(std::span<std::uint8_t> target)
{
    std::size_t done = 0;
    while (done < target.size()) {
        if (!has_more()) break;
        const std::size_t count = std::min(target.size() - done, current_.size() - given_);
        std::copy_n(current_.begin() + static_cast<std::ptrdiff_t>(given_), count,
                    target.begin() + static_cast<std::ptrdiff_t>(done));
        given_ += count;
        done += count;
    }
    return done;
}

std::span<const std::uint8_t> read_ahead::lend(std::span<std::uint8_t>)
{
    if (!has_more()) return {};
    return std::span{current_}.subspan(std::exchange(given_, current_.size()));
}

std::span<const std::uint8_t> read_ahead::head(std::size_t most)
{
    if (!has_more()) return {};
    return std::span{current_}.first(std::min(most, current_.size()));
}

write_later::~write_later()
{
    queue_.finish();
    if (writer_.joinable()) writer_.join();
}

void write_later::write(std::span<const std::uint8_t> bytes)
{
    gathered_.insert(gathered_.end(), bytes.begin(), bytes.end());
    if (gathered_.size() >= block_bytes) pass_on();
}

void write_later::pass_on()
{
    block_queue::block full = std::exchange(gathered_, queue_.spare());
    gathered_.clear();
    gathered_.reserve(block_bytes + block_bytes / 4);
    if (!writer_.joinable()) {
        writer_ = std::thread{[this] {
            try {
                for (auto block = queue_.pop(); !block.empty(); block = queue_.pop()) {
                    to_.write(block);
                    queue_.give_back(std::move(block));
                }
            } catch (...) {
                const std::lock_guard lock{error_mutex_};
                error_ = std::current_exception();
                queue_.stop();
            }
        }};
    }
    if (queue_.push(std::move(full))) return;
    const std::lock_guard lock{error_mutex_};
    std::rethrow_exception(error_);
}

void write_later::finish()
{
    if (writer_.joinable()) {
        if (!gathered_.empty()) pass_on();
        queue_.finish();
        writer_.join();
        if (error_) std::rethrow_exception(error_);
    } else if (!gathered_.empty()) {
        to_.write(std::exchange(gathered_, {}));
    }
}

}  // namespace tamrix
