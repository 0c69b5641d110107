// The self-test of the programmers with a 48-pin socket.
#pragma once

#include "selftest/model_plan.h"
#include "selftest/socket_frame.h"

namespace tamrix {

/// The options of a model.
selftest_plan pinnote_plan(const selftest_model& model);

class pinnote final : public socket_frame {
public:
    pinnote(session& plug_in, selftest_variables& variables);

private:
    stage_end system_test() override;
    stage_end output_test() override;
    void show_end(stage_end end) override;
};

}  // namespace tamrix
