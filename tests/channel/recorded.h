// A plug-in whose programmer writes every call down.
#pragma once

#include "support/plug_in_fixture.h"
#include "support/recording_programmer.h"

namespace tamrix::tests {

struct recorded : plug_in_fixture {
    recorded()
    {
        session.hardware.source = recording_programmer(log);
        for (std::int64_t i = 0; i < 20; ++i) session.blocks.ubuf1(i) = 0xCC;
    }

    recording log;
};

}  // namespace tamrix::tests
