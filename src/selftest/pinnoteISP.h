// The self-test of the programmers that reach their target through a connector. It is never a pin map.
#pragma once

#include "selftest/connector_picture.h"
#include "selftest/selftest_frame.h"

namespace tamrix {

class pinnoteISP final : public selftest_frame {
public:
    pinnoteISP(session& plug_in, selftest_variables& variables);

    forms::picture Picture1{*this}, Picture2{*this};  // the programmer and its connector
    forms::label Label1{*this};                       // the pins of a calibration
    connector_picture connector{Picture1, Picture2};

    forms::layout arrangement() override;
    void clearpins() override;

private:
    using stage = stage_end (pinnoteISP::*)();

    void on_load() override;
    void show_option(const option_plan& option) override;
    void show_calibration(const option_plan& option);
    stage_end system_test() override;
    stage_end output_test() override;
    void signal_end() override;

    stage_end start();
    stage_end test_ram();
    stage_end let_read();
};

}  // namespace tamrix
