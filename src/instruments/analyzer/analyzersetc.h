// The settings of the trigger. Each control stores its setting at once, so there is nothing to cancel.
#pragma once

#include "forms/form.h"
#include "instruments/analyzer/analyzer_settings.h"

namespace tamrix {

class session;

class analyzersetc final : public forms::form {
public:
    analyzersetc(session& plug_in, analyzer_settings& settings);

    forms::frame Frame2{*this};  // trigger mode
    forms::option_group Option2{*this, 2};
    forms::frame Frame1{*this};  // trigger level
    forms::option_group Option1{*this, 2};
    forms::label Label1{*this};  // trigger pin
    forms::combo_box Combo1{*this};
    forms::button Command1{*this};

    forms::layout arrangement() override;
    forms::button* default_button() override { return &Command1; }

private:
    void on_load() override;
    void Option2_Click(int index);
    void show_trigger();

    session& plug_in_;
    analyzer_settings& settings_;
};

}  // namespace tamrix
