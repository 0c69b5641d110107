// What happened on a simulated programmer: the transcript of its calls, hazards, notes.
#pragma once

#include "sim/clock.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace tamrix::sim {

struct event {
    microseconds time;
    std::string text;
};

/// Bytes as a word of a line: "05 FF 00"; beyond `most` bytes "05 FF .. (crc 1234ABCD)".
struct hex_word {
    std::span<const std::uint8_t> bytes;
    std::size_t most = 32;
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
    /// Texts, letters, numbers and bytes one after the other. They become a text only while a transcript is wanted,
    /// since a long run has thousands of lines.
    template <class... Words>
    void line(const Words&... words)
    {
        if (!recording_) return;
        std::string text;
        (append(text, words), ...);
        add_line(std::move(text));
    }
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
    static void append(std::string& text, const std::string& word) { text += word; }
    static void append(std::string& text, const char* word) { text += word; }
    static void append(std::string& text, char letter) { text += letter; }
    template <std::integral Number>
    static void append(std::string& text, Number number)
    {
        text += std::to_string(number);
    }
    static void append(std::string& text, const hex_word& word);
    void add_line(std::string text);

    std::shared_ptr<const clock> time_;
    bool recording_ = false;
    std::vector<event> lines_, hazards_, notes_;
};

}  // namespace tamrix::sim
