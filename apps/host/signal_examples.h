// Signals for the simulated programmer to choose from.
#pragma once

#include <string>
#include <vector>

namespace tamrix::host {

/// One of each kind, with all that it takes, for a person to change. They use pins that none of the signals `taken`
/// has; a kind for which too few are free begins at P21. simulator::add_signals takes them.
std::vector<std::string> signal_examples(const std::vector<std::string>& taken);

}  // namespace tamrix::host
