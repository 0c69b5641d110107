// Message boxes on the screen, with the answers in the language of their text.
#pragma once

#include "forms/message_box.h"

#include <functional>
#include <span>
#include <string>

class wxString;
class wxWindow;

namespace tamrix::wxui {

/// The caption of the button for an answer, UTF-8, with its mnemonic.
using answer_texts = std::function<std::string(forms::answer)>;

std::string english_text(forms::answer which);

/// The answers that a box offers. Enter chooses the first, unless it refuses.
std::span<const forms::answer> answers_of(forms::buttons_of_box buttons);
/// The answer of Escape and of the window's close button: Abort if the box has it, else the last one.
forms::answer answer_of_closing(forms::buttons_of_box buttons);

/// The title and the text of a box; line feeds separate the lines of the text.
wxString title_of(const forms::message_box& box);
wxString text_of(const forms::message_box& box);

/// Shows the box until the person answers. `parent` may be null.
forms::answer ask(wxWindow* parent, const forms::message_box& box, const answer_texts& texts);

}  // namespace tamrix::wxui
