// The dialogs of the instruments.
#pragma once

#include "scenes.h"

#include <span>

namespace tamrix::tests {

std::span<const scene> instrument_scenes();

}  // namespace tamrix::tests
