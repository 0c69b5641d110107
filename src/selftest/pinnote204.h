// The self-test of the programmers that are a unit with four modules.
#pragma once

#include "selftest/pin_access.h"
#include "selftest/socket_frame.h"

namespace tamrix {

class pinnote204 final : public socket_frame {
public:
    pinnote204(session& plug_in, selftest_variables& variables);

    forms::layout arrangement() override;

private:
    using stage = stage_end (pinnote204::*)();

    void hint(const std::string& words) override;
    void show_option(const option_plan& option) override;
    void Option1_Click(int index) override;
    void show_end(stage_end end) override;
    stage_end system_test() override;
    stage_end output_test() override;

    stage_end start();
    stage_end test_unit_ram();
    stage_end test_module();
    stage_end start_module();
    stage_end test_module_ram();
    stage_end read_low_inputs();
    stage_end load_fpga();
    stage_end read_high_inputs();
    stage_end drive_high_and_release();
    stage_end test_ground();
    stage_end start_for_outputs();
    stage_end test_vpp();
    stage_end test_vcc();

    stage_end reset_module(std::int32_t wait_ms);
    stage_end reset_and_start_module(std::int32_t reset_wait_ms, std::int32_t start_wait_ms);
    void bad_ram_level(const std::string& words, std::int32_t wait_ms);
    stage_end test_module_outputs();
    void show_module_result(stage_end end);
    stage_end wait_for_board();
    std::string module_number() const;

    pin_access access_;
    double started_seconds_ = 0;
    std::uint8_t signalled_ = 0;  // the module that shows a result, until the output test is left
};

}  // namespace tamrix
