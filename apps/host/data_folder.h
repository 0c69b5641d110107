// Where the program's data stands: device presets and samples.
#pragma once

#include <string>

namespace tamrix::host {

/// The folder that TAMRIX_DATA names, else share/tamrix beside the program's own folder, else the one it was built
/// from. Ends without a separator.
std::string data_folder();

}  // namespace tamrix::host
