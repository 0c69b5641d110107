// The self-test dialogs and the pin maps.
#pragma once

#include "scenes.h"

#include <span>

namespace tamrix::tests {

std::span<const scene> selftest_scenes();

}  // namespace tamrix::tests
