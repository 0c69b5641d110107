// The errors that code inside the plug-in throws. A reader, writer or entry method turns them into its status or reply.
#pragma once

#include <stdexcept>
#include <string>

namespace tamrix {

/// An element outside a view or a control array.
class subscript_error : public std::out_of_range {
public:
    using std::out_of_range::out_of_range;
};

/// A message number without a text.
class resource_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace tamrix
