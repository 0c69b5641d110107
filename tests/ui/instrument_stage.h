// A plug-in at the screen with an instrument's programmer and a buffer of samples.
#pragma once

#include "../instruments/instrument_programmer.h"
#include "blocks/sharemap.h"
#include "instruments/analyzer/analyzer.h"
#include "instruments/wave/recetwave.h"
#include "over_host.h"
#include "scenes.h"

#include <cstdint>
#include <functional>

#include <wx/window.h>

namespace tamrix::tests {

/// A binary counter at P21 to P26; P27 is low, P28 is high in every third of a turn.
inline std::uint8_t sample_at(std::size_t index)
{
    return static_cast<std::uint8_t>((index & 0x3F) | (index / 64 % 3 == 0 ? 0x80 : 0));
}

/// Four banks of samples. Use it after the stage, which has to go after it.
struct instruments {
    explicit instruments(stage& on) : stage_{on}
    {
        auto& blocks = on.session.blocks;
        blocks.buflength(0) = blocks.tlength(0) = 0x80000;
        blocks.attachbig(ibuffer_bytes(0x80000));
        blocks.usbable(0) = bool16_true;
        blocks.rambknum(0) = 4;
        const auto samples = blocks.ibuffer.span();
        for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = sample_at(i);
        on.session.hardware.source = programmer.source();
    }

    void show_analyzer(const std::function<void(analyzer&)>& script)
    {
        analyzer dialog{stage_.session, stage_.variables.analyzer, stage_.variables.transfer, [] {}};
        over_host(stage_.screen, dialog, [&] { script(dialog); });
    }
    void show_wave(bool meter, const std::function<void(recetwave&)>& script)
    {
        stage_.variables.wave.fwave = meter ? bool16_true : bool16_false;
        recetwave dialog{stage_.session, stage_.variables.wave, [](recetwave::pin_map) {}};
        over_host(stage_.screen, dialog, [&] { script(dialog); });
    }

    instrument_programmer programmer;

private:
    stage& stage_;
};

}  // namespace tamrix::tests
