// What the self-test dialogs go by.
#pragma once

#include <cstdint>

namespace tamrix {

struct selftest_variables {
    std::uint8_t pinmapmode = 0;  // 0: the self-test; 4: the pin map that some models show before a logic test
};

}  // namespace tamrix
