// Reading and writing of long files while the command works: a second thread has the next block ready.
#pragma once

#include "files/byte_source.h"
#include "files/byte_target.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

namespace tamrix {

/// Blocks on their way between two threads, few of them at a time, and the error that ended one.
class block_queue {
public:
    using block = std::vector<std::uint8_t>;

    /// Waits while the queue is full. False once the other side has stopped.
    bool push(block full);
    /// Waits for the next one; an empty one at the end. Throws the error of the other side, after the blocks before it.
    block pop();
    /// A block to fill, of any content; memory that went through already costs no more page faults.
    block spare();
    void give_back(block used);
    /// No more blocks come, or are taken.
    void finish(std::exception_ptr error = nullptr);
    void stop();

private:
    static constexpr std::size_t most_waiting = 4;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<block> waiting_;
    std::vector<block> spare_;
    std::exception_ptr error_;
    bool finished_ = false, stopped_ = false;
};

/// Reads ahead from a source that gives fewer bytes than are asked for only at its end, and is one itself. The thread
/// starts after the first block, so that a short file needs none.
class read_ahead final : public byte_source {
public:
    explicit read_ahead(std::unique_ptr<byte_source> from) : from_{std::move(from)} {}
    ~read_ahead() override;
    std::size_t read(std::span<std::uint8_t> target) override;
    /// Whole blocks; `room` is not used.
    std::span<const std::uint8_t> lend(std::span<std::uint8_t> room) override;
    /// What the source begins with, at most `most` bytes, which may be a block of 1 MiB. To be called before all
    /// others, which begin there, too.
    std::span<const std::uint8_t> head(std::size_t most);

private:
    bool next();
    /// False at the end.
    bool has_more() { return given_ < current_.size() || (!at_end_ && next()); }

    std::unique_ptr<byte_source> from_;
    block_queue queue_;
    std::thread reader_;
    block_queue::block current_;
    std::size_t given_ = 0;  // of the current block
    bool at_end_ = false;
};

/// Writes in the background; the thread starts with the second block.
class write_later final : public byte_target {
public:
    explicit write_later(byte_target& to) : to_{to} {}
    ~write_later() override;
    /// May throw the error of an earlier block.
    void write(std::span<const std::uint8_t> bytes) override;
    /// Waits until all is written. To be called once.
    void finish();

private:
    void pass_on();

    byte_target& to_;
    block_queue queue_;
    std::thread writer_;
    block_queue::block gathered_;
    std::mutex error_mutex_;
    std::exception_ptr error_;
};

}  // namespace tamrix
