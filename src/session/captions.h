// A form's captions as a table: which control shows which message.
#pragma once

#include "forms/control.h"
#include "session/session.h"

#include <span>
#include <string>

namespace tamrix {

struct caption_line {
    forms::property<std::string>& caption;
    int message;
};

/// Sets each in the host's language.
inline void set_captions(const session& plug_in, std::span<const caption_line> lines)
{
    for (const caption_line& line : lines) line.caption = plug_in.text(line.message);
}

}  // namespace tamrix
