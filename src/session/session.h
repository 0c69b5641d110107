// One attached plug-in: the shared blocks, the messages in the host's language, the screen and the programmer. What a
// subject remembers is no part of it.
#pragma once

#include "blocks/sharemap.h"
#include "forms/shell.h"
#include "messages/catalogue.h"
#include "programmer/door.h"

#include <cstdint>
#include <string>

namespace tamrix {

class session {
public:
    explicit session(forms::shell& screen, std::string name_space = {});

    /// The catalogue's text in the language of Language(0), looked up at each call. UTF-8. Throws resource_error
    /// if there is none.
    std::string text(int base_number) const;
    /// The caption of a button of a message box, in the same language.
    std::string text(forms::answer which) const;
    /// What a field takes, in the same language.
    std::string text(hint which) const;
    /// Bytes of the device's main area: wordmode(0) times tlength(0), recomputed at each use.
    std::int64_t devbytes() const;
    /// Shows a catalogue text with an OK button.
    void tell(int base_number);

    forms::shell& screen;
    sharemap blocks;
    hw::door hardware;
    std::string syspath;    // the host's folder, with its separator
    std::string help_file;  // a host's path, then the page after "::"
};

}  // namespace tamrix
