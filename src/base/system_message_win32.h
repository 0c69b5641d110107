// The texts of Windows for its own errors.
#pragma once

#include <string>

namespace tamrix {

/// The system's text for an error number or an HRESULT, followed by the number: "Module not found. (126)", "Class
/// not registered. (0x80040154)".
std::string system_message(unsigned long error);

}  // namespace tamrix
