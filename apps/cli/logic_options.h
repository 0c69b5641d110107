// The options of tamrix ttl and tamrix vectors.
#pragma once

#include "cli/logic_test.h"

namespace CLI {
class App;
}

namespace tamrix::cli {

/// Adds both commands.
void add_ttl_commands(CLI::App& app, ttl_words& words);

}  // namespace tamrix::cli
