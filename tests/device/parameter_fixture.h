// The parameter dialog on a device that a test describes.
#pragma once

#include "device/algoparameter.h"
#include "support/plug_in_fixture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

namespace tamrix::tests {

// What a person fills in.
constexpr auto vcc = &algoparameter::Text1, pulse = &algoparameter::Text2, vpp = &algoparameter::Text3,
               retry = &algoparameter::Text4;

struct programming {
    std::int16_t bvcc = 500, bvpp = 1300, pagelength = 0;
    std::int32_t pulse_us = 100;
    std::int16_t wretry = 10;
    std::uint8_t prgmode = 0;
    std::string algo{};

    bool operator==(const programming&) const = default;
};

class algoparameter_dialog : public testing::Test, public plug_in_fixture {
protected:
    void select(const programming& device)
    {
        auto& blocks = session.blocks;
        blocks.bvcc(0) = device.bvcc;
        blocks.bvpp(0) = device.bvpp;
        blocks.pagelength(0) = device.pagelength;
        blocks.pwte(0) = device.pulse_us;
        blocks.wretry(0) = device.wretry;
        blocks.prgmode(0) = device.prgmode;
        blocks.algo(0) = device.algo;
    }
    programming stored() const
    {
        const auto& blocks = session.blocks;
        return {.bvcc = blocks.bvcc(0),
                .bvpp = blocks.bvpp(0),
                .pagelength = blocks.pagelength(0),
                .pulse_us = blocks.pwte(0),
                .wretry = blocks.wretry(0),
                .prgmode = blocks.prgmode(0),
                .algo = blocks.algo(0)};
    }
    std::int32_t touched() const { return session.blocks.pwte(1); }

    /// Shows the dialog for the device of the blocks and runs `steps` meanwhile.
    void open(const std::function<void(algoparameter&)>& steps)
    {
        algoparameter dialog{session};
        shell.during(dialog, [&] { steps(dialog); });
    }
    /// What a box holds after a text was entered and the box was left.
    std::string after_leaving(forms::text_box algoparameter::*box, const std::string& text)
    {
        std::string held;
        open([&](algoparameter& d) {
            (d.*box).text(text);  // by whatever way it came there, past the filter of keys
            (d.*box).leave();
            held = (d.*box).text();
        });
        return held;
    }
    /// Enters a text, presses OK without leaving the box first.
    void confirm_with(forms::text_box algoparameter::*box, const std::string& text)
    {
        open([&](algoparameter& d) {
            (d.*box).text(text);
            d.OKButton.click();
            EXPECT_FALSE(d.is_open());
        });
    }
};

}  // namespace tamrix::tests
