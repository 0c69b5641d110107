// Where a session finds its programmer.
#pragma once

#include "programmer/programmer.h"

namespace tamrix::hw {

class door {
public:
    /// Where the programmer comes from; set by the host before the first use. One that has been made stays in use until
    /// forget().
    programmer_source source;
    /// Handed to the programmer when it is made.
    std::function<reply_memory()> replies;

    /// Both make the programmer on first use and keep it. Throw programmer_error where there is none.
    lumbat& transport() { return open().transport(); }
    devobj& device() { return open().device(); }

    /// Lets the programmer go; the next use makes one anew. Needed wherever the memory that it writes to goes.
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
