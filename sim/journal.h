// What happened on a simulated programmer: the transcript of its calls, hazards, notes.
#pragma once

#include "sim/clock.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tamrix::sim {

struct event {
    microseconds time;
    std::string text;
};

/// It outlives the programmer, so that a test can read what was left on at the end. For one thread.
class journal {
public:
    explicit journal(std::shared_ptr<const clock> time) : time_{std::move(time)} {}
    virtual ~journal() = default;
    journal(const journal&) = delete;
    journal& operator=(const journal&) = delete;

    /// Starts or stops the transcript.
    void record(bool on) { recording_ = on; }
    bool recording() const { return recording_; }
    void line(std::string text);
    /// Something that can harm a part or the hardware. A test fails on it.
    virtual void hazard(std::string text);
    /// Something odd but harmless: a frame that the hardware does not know, a part that oscillates.
    virtual void note(std::string text);

    const std::vector<event>& hazards() const { return hazards_; }
    const std::vector<event>& notes() const { return notes_; }
    const std::vector<event>& lines() const { return lines_; }
    /// The transcript as text, one entry a line; with times as "12.345 ms  line". Hazards and notes are in it at their
    /// time.
    std::string transcript(bool with_times = false) const;
    void clear_transcript() { lines_.clear(); }

private:
    std::shared_ptr<const clock> time_;
    bool recording_ = false;
    std::vector<event> lines_, hazards_, notes_;
};

/// "05 FF 00"; beyond `most` bytes "05 FF .. (crc 1234ABCD)".
std::string hex_text(std::span<const std::uint8_t> bytes, std::size_t most = 32);

}  // namespace tamrix::sim
