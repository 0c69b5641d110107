// Where a session finds its programmer.
#pragma once

#include "programmer/programmer.h"

namespace tamrix::hw {

class door {
public:
    /// Where the programmer comes from; the host sets it before the first use. A programmer stays in use until
    /// forget().
    programmer_source source;
    /// Handed to the programmer when it is made.
    std::function<reply_memory()> replies;

    /// Both make the programmer on first use and keep it. Both throw programmer_error if there is none.
    lumbat& transport() { return open().transport(); }
    devobj& device() { return open().device(); }

    /// Destroys the programmer; the next use makes a new one. To be called before the memory that it writes to goes.
    void forget() { opened_.reset(); }

private:
    programmer& open()
    {
        if (opened_ == nullptr) {
            if (!source) throw programmer_error{"no programmer is attached"};
            opened_ = source(replies());
        }
        return *opened_;
    }

    std::unique_ptr<programmer> opened_;
};

}  // namespace tamrix::hw
