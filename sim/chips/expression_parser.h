// Reads one expression of a chip file.
#pragma once

#include "chips/tokens.h"

namespace tamrix::sim {

/// From the strongest: ! and the reductions &{..} |{..} ^{..}; + -; == != < >; &; ^; |; ? :
expression read_expression(token_walk& in);

/// The names of a list in braces, ranges written out, or a single name.
std::vector<std::string> read_names(token_walk& in);

}  // namespace tamrix::sim
