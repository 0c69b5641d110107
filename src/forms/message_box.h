// A message box as a routine asks for it, and how a person may answer.
#pragma once

#include <cstdint>
#include <string>

namespace tamrix::forms {

enum class icon : std::uint8_t { none, information, warning, error, question };
enum class buttons_of_box : std::uint8_t { ok, ok_cancel, yes_no, retry_cancel, abort_retry_ignore };
enum class answer : std::uint8_t { ok, cancel, yes, no, abort, retry, ignore };

/// How the lines of a box belong together. A screen may show them as a table, in which nothing depends on blanks.
enum class lines_of_box : std::uint8_t {
    free,
    letters,  // each letter behind the colon belongs to those above and below it
    cells,    // a label up to its colon, and cells that two blanks or more part
};

struct message_box {
    std::string text{};   // UTF-8
    std::string title{};  // empty: the program's name
    icon picture = icon::none;
    buttons_of_box buttons = buttons_of_box::ok;
    lines_of_box lines = lines_of_box::free;

    bool operator==(const message_box&) const = default;
};

}  // namespace tamrix::forms
