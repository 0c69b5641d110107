// A message box as a routine asks for it, and how a person may answer.
#pragma once

#include "forms/box_table.h"

#include <cstdint>
#include <string>

namespace tamrix::forms {

enum class icon : std::uint8_t { none, information, warning, error, question };
enum class buttons_of_box : std::uint8_t { ok, ok_cancel, yes_no, retry_cancel, abort_retry_ignore };
enum class answer : std::uint8_t { ok, cancel, yes, no, abort, retry, ignore };

struct message_box {
    std::string text{};   // UTF-8
    std::string title{};  // empty: the program's name
    icon picture = icon::none;
    buttons_of_box buttons = buttons_of_box::ok;
    /// Enter does not choose the first button but what closing the box means.
    bool enter_refuses = false;
    /// The text in rows and columns, for a screen that can show a table; empty: the text alone.
    box_table table{};

    bool operator==(const message_box&) const = default;
};

}  // namespace tamrix::forms
