// The numbered message catalogue: 12 language blocks of 3000 numbers each.
#pragma once

#include "forms/message_box.h"

#include <cstdint>
#include <string>

namespace tamrix {

/// The text of `number`, a language offset (a multiple of 3000) plus a base number. UTF-8. Throws resource_error for a
/// number without a text.
std::string LoadResString(int number);

/// The caption of the button for an answer, with its mnemonic, in the language with that offset. UTF-8. Throws
/// resource_error for an offset without a language.
std::string answer_text(int language, forms::answer which);

/// What a person may enter into a field.
enum class hint : std::uint8_t { device_name, pin_count, hexadecimal };

/// The text of a hint in the language with that offset. UTF-8. Throws resource_error for an offset without a language.
std::string hint_text(int language, hint which);

/// True if there are texts under a language offset, a multiple of 3000.
bool has_language(int offset);

}  // namespace tamrix
