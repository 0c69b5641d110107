#include "verify/intel_records.h"
#include "verify/verifiers.h"

namespace tamrix {

verification verify_intel16(byte_source& from, const std::string& name, data_taker& data)
{
    return intel_records{from, name, data, 2}.read();
}

}  // namespace tamrix
