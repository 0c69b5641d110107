// A self-test dialog with a drawn socket, which doubles as the pin map of other dialogs.
#pragma once

#include "selftest/selftest_frame.h"
#include "selftest/socket_picture.h"

namespace tamrix {

class socket_frame : public selftest_frame {
public:
    socket_frame(session& plug_in, selftest_variables& variables, selftest_plan plan, lamps::socket drawn,
                 int panels = 1);

    // Hints: at the top, beside pin 23, beside pin 24. The last two are drawn with the socket, to keep to their pins.
    forms::label Label2{*this}, Label3{*this}, Label4{*this};
    forms::picture Picture1{*this};
    socket_picture socket;
    forms::shape& Shape3 = socket.Shape3;
    forms::shape_array &Shape1 = socket.Shape1, &Shape2 = socket.Shape2;
    std::vector<std::string>& Label1 = socket.Label1;

    forms::layout arrangement() override;
    void clearpins() override;

protected:
    void on_load() override;
    /// The controls with a label above the drawn socket; null: without one.
    forms::layout around_socket(forms::label* above);
    void show_option(const option_plan& option) override;
    /// The lamps of a calibration.
    void show_calibration(const calibration_plan& plan);

private:
    void show_pin_map(std::uint8_t pinmapmode);
    void mark_pin(int lamp, forms::colour ink);
};

}  // namespace tamrix
