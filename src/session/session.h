// One attached plug-in: the shared blocks, the messages in the host's language, and the module variables that outlive a
// dialog.
#pragma once

#include "base/diagnostic.h"
#include "blocks/sharemap.h"
#include "forms/shell.h"
#include "pld/pld_variables.h"
#include "programmer/door.h"
#include "tamrix/types.h"
#include "ttl/ttl_variables.h"

#include <cstdint>
#include <string>

namespace tamrix {

/// Where a load starts and which bytes it takes; set by the load and save dialogs, read by all readers and writers.
/// Addresses and lengths are in bytes.
struct transfer_variables {
    std::int64_t bufstart = 0;    // buffer address at which the load or save starts
    std::int64_t filestart = 0;   // file address from which the load starts
    std::int64_t loadlength = 0;  // upper limit of bytes to load
    std::int64_t savelength = 0;  // bytes to save; writers change it for their own progress count
    std::int16_t tomode = 0;      // index of the To Buffer Mode
    std::int16_t filestep = 1;    // every filestep-th file byte is taken ...
    std::int16_t filephase = 0;   // ... beginning at filephase
    std::int16_t bufstep = 1;     // it goes to every bufstep-th buffer byte ...
    std::int32_t bufphase = 0;    // ... beginning at bufphase
};

class session {
public:
    explicit session(forms::shell& screen, std::string name_space = {});

    /// The catalogue's text in the language of Language(0), looked up afresh. Throws resource_error.
    std::string text(int base_number) const;
    /// What stands on the button of a message box, in the same language.
    std::string text(forms::answer which) const;
    /// Bytes of the device's main area: wordmode(0) times tlength(0), recomputed at each use.
    std::int64_t devbytes() const;
    /// Shows a catalogue text with an OK button.
    void tell(int base_number);

    forms::shell& screen;
    sharemap blocks;
    hw::door hardware;
    transfer_variables transfer;
    pld_variables pld;
    ttl_variables ttl;
    diagnostic why_it_failed;  // of the last load or save; empty after a success

    std::int16_t rformat = 0;  // format option to preselect; after a load or save its status
    std::string fname;
    std::string syspath;
    std::string help_file;
    variant frommode;  // index of the From File Mode; empty until a load has run
    bool16 fwave = bool16_false;
    std::uint8_t pinmapmode = 0;
    std::uint8_t ttleditlib = 0;
    std::uint8_t wnote = 0;
    std::uint8_t icsum = 0;  // stored for the host, read by nothing here
    bool16 ok = bool16_false;
};

}  // namespace tamrix
