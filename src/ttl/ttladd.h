// Asks for the name and the pin count of a new logic IC.
#pragma once

#include "forms/form.h"
#include "plugin/session.h"

namespace tamrix {

class ttladd final : public forms::form {
public:
    explicit ttladd(session& plug_in);

    forms::label Label1{*this}, Label2{*this};
    forms::text_box Text1{*this};  // name
    forms::text_box Text2{*this};  // pin count
    forms::button OKButton{*this};

    forms::layout arrangement() override;
    forms::button* default_button() override { return &OKButton; }
    /// What follows needs a name and a pin count, so only valid ones lead out.
    bool may_be_left() const override { return false; }

private:
    void on_load() override;
    void confirm();

    session& plug_in_;
};

}  // namespace tamrix
