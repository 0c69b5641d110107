// A programmer as a session holds it: found on first use and kept from then on.
#pragma once

#include "programmer/devobj.h"
#include "programmer/lumbat.h"

#include <functional>
#include <memory>
#include <stdexcept>

namespace tamrix::hw {

/// There is no programmer, or a call of it failed.
class programmer_error : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

class programmer {
public:
    virtual ~programmer() = default;
    virtual lumbat& transport() = 0;
    virtual devobj& device() = 0;
};

/// Makes the programmer of a host. Throws programmer_error.
using programmer_source = std::function<std::unique_ptr<programmer>(const reply_memory&)>;

}  // namespace tamrix::hw
