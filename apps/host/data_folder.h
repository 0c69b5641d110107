// The folder of the program's data: device presets and samples.
#pragma once

#include <string>

namespace tamrix::host {

/// The folder that TAMRIX_DATA names, else share/tamrix beside the program's own folder, else the one of the sources
/// from which it was built. Ends without a separator.
std::string data_folder();

}  // namespace tamrix::host
