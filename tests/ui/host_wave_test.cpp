// The signal generator and the frequency meter of a host, on the simulated programmer with a lead between them.
#include "host/simulator.h"
#include "over_host.h"
#include "support/own_settings.h"
#include "workbench/host_session.h"

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include <wx/toplevel.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

class wave_of_host : public testing::Test {
protected:
    const own_settings settings;
    wxui::wx_shell screen;
    host::simulator socket{SIMULATOR, DATA "/chips"};
    workbench::host_session session{PLUG_IN};

    void attach(int model, bool usb)
    {
        session.use_programmer({.library = socket.library_path(),
                                .options = socket.options(model),
                                .model = static_cast<std::int16_t>(model),
                                .usb = usb});
    }

    /// Opens an instrument, closes its pin map, and calls `work` until it says that all is done.
    void use(bool16 meter, const std::string& title, const std::function<bool()>& work)
    {
        host_window host;
        during(screen, host, [&] {
            const onlooker person{[&] {
                if (!static_cast<wxTopLevelWindow&>(dialog()).IsActive()) return;
                if (dialog().GetLabel() != title) {
                    if (shows("OK")) press("Return");
                } else if (work()) {
                    press("Escape");
                }
            }};
            EXPECT_EQ(session.run([&](Clstamrix& plug_in) { return plug_in.recetwave0(meter); }).result.error, "");
        });
    }
    void generate(const std::string& hertz)
    {
        use(bool16_false, "Signal Generator", [&] {
            type(hertz);
            press("Return");
            return true;
        });
    }
    std::string measured()
    {
        std::string reading;
        int looks = 0;
        use(bool16_true, "Frequency Meter", [&] {
            if (looks++ == 0) press("Return");
            reading = readout();
            return reading != "000000" || looks == 40;
        });
        return reading;
    }
    static std::string readout()
    {
        for (wxWindow* child : dialog().GetChildren()) {
            if (const auto* text = dynamic_cast<wxTextCtrl*>(child)) return text->GetValue().utf8_string();
        }
        return "no readout";
    }
};

TEST_F(wave_of_host, is_measured_through_the_lead)
{
    socket.set_lead("P23");
    attach(40, true);
    generate("12000");
    EXPECT_EQ(measured(), "012000");
}

TEST_F(wave_of_host, is_measured_through_the_device_object_too)
{
    socket.set_lead("P21 P23");
    attach(40, false);
    generate("440");
    EXPECT_EQ(measured(), "000440");
}

TEST_F(wave_of_host, does_not_reach_the_meter_without_a_lead)
{
    attach(40, true);
    generate("12000");
    EXPECT_EQ(measured(), "000000");
}

TEST_F(wave_of_host, gives_way_to_a_signal_that_is_put_on_while_the_programmer_runs)
{
    attach(40, true);
    generate("12000");
    EXPECT_TRUE(socket.add_signals("P23 square 750")) << "the programmer runs since";
    EXPECT_EQ(measured(), "000750");
}

}  // namespace
