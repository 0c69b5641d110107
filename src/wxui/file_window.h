// The toolkit's file dialogs.
#pragma once

#include "forms/file_question.h"

#include <optional>
#include <string>

class wxWindow;

namespace tamrix::wxui {

enum class file_use { open, save };

/// The name that the person chose, UTF-8 with its folder; none where the dialog was cancelled. Opening asks for a file
/// that exists, saving asks before one is replaced. `parent` may be null.
std::optional<std::string> ask_for_file(wxWindow* parent, const forms::file_question& question, file_use use);

}  // namespace tamrix::wxui
