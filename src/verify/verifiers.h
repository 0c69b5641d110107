// The verifiers of the buffer formats, one a file.
#pragma once

#include "verify/verification.h"

namespace tamrix {

verification verify_binary(byte_source& from, const std::string& name, data_taker& data);
verification verify_intel(byte_source& from, const std::string& name, data_taker& data);
verification verify_motorola(byte_source& from, const std::string& name, data_taker& data);
verification verify_tektronix(byte_source& from, const std::string& name, data_taker& data);
verification verify_holtek(byte_source& from, const std::string& name, data_taker& data);
verification verify_emc(byte_source& from, const std::string& name, data_taker& data);
verification verify_intel16(byte_source& from, const std::string& name, data_taker& data);
verification verify_texas(byte_source& from, const std::string& name, data_taker& data);

}  // namespace tamrix
