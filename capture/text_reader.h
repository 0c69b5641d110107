// A text file as tokens between blanks, or by lines, of any length of the file. Used by this folder only.
#pragma once

#include "capture/formats.h"
#include "files/byte_source.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::capture {

class text_reader {
public:
    /// Throws file_error.
    explicit text_reader(const std::string& path) : path_{path}, file_{path}, text_(capacity) {}

    /// The next token, until the next call; empty at the end.
    std::string_view token()
    {
        for (;;) {
            while (at_ < end_ && is_blank(text_[at_])) line_ += text_[at_++] == '\n';
            if (at_ < end_ || !fill()) break;
        }
        std::size_t length = 0;
        for (;; ++length) {
            if (at_ + length == end_ && !fill()) break;
            if (is_blank(text_[at_ + length])) break;
        }
        return taken(length);
    }
    /// What is left of a line, without its end, until the next call; also empty at the end of the file.
    std::string_view line()
    {
        std::size_t length = 0;
        for (;; ++length) {
            if (at_ + length == end_ && !fill()) break;
            if (text_[at_ + length] == '\n') break;
        }
        std::string_view line = taken(length);
        skip_line_end();
        if (line.ends_with('\r')) line.remove_suffix(1);
        return line;
    }
    bool at_end() { return at_ == end_ && !fill(); }
    /// Of the last token or line, from 1.
    std::uint64_t line_number() const { return line_of_last_; }
    double share() const
    {
        const auto length = static_cast<double>(file_.length());
        return length > 0 ? static_cast<double>(read_ - static_cast<std::int64_t>(end_ - at_)) / length : 1;
    }
    [[noreturn]] void fail(std::string found, std::string expected = {}) const
    {
        fail_at(path_, line_of_last_, std::move(found), std::move(expected));
    }

private:
    // A line of 1024 channels with their names fits.
    static constexpr std::size_t capacity = 1 << 18;

    static bool is_blank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
    std::string_view taken(std::size_t length)
    {
        line_of_last_ = line_;
        const std::string_view text{text_.data() + at_, length};
        at_ += length;
        return text;
    }
    /// The text of the last call stays where it is.
    void skip_line_end()
    {
        if (at_ == end_) return;
        ++at_;
        ++line_;
    }
    /// More after what is there, which moves to the front; false at the end of the file.
    bool fill()
    {
        std::memmove(text_.data(), text_.data() + at_, end_ - at_);
        end_ -= at_;
        at_ = 0;
        if (end_ == capacity) {
            line_of_last_ = line_;
            fail("a word of more than 256 KiB");
        }
        const auto room = std::span{text_}.subspan(end_);
        const std::size_t count = file_.read_at(read_, {reinterpret_cast<std::uint8_t*>(room.data()), room.size()});
        read_ += static_cast<std::int64_t>(count);
        end_ += count;
        return count > 0;
    }

    std::string path_;
    input_file file_;
    std::vector<char> text_;
    std::size_t at_ = 0, end_ = 0;
    std::int64_t read_ = 0;
    std::uint64_t line_ = 1, line_of_last_ = 1;
};

/// A word of a file as it may be in a message.
inline std::string in_quotes(std::string_view word)
{
    std::string text{word.substr(0, 40)};
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ' || static_cast<unsigned char>(c) > '~') c = '?';
    }
    return "\"" + text + (word.size() > 40 ? "..\"" : "\"");
}

}  // namespace tamrix::capture
