// Asks for the name and the pin count of a new logic IC.
#pragma once

#include "forms/form.h"
#include "ttl/ttl_variables.h"

namespace tamrix {

class session;

class ttladd final : public forms::form {
public:
    ttladd(session& plug_in, ttl_variables& ttl);

    forms::label Label1{*this}, Label2{*this};
    forms::text_box Text1{*this};  // name
    forms::text_box Text2{*this};  // pin count
    forms::button OKButton{*this};

    forms::layout arrangement() override;
    forms::button* default_button() override { return &OKButton; }
    /// False where the person left without a valid entry: nothing has changed then.
    bool accepted() const { return accepted_; }

private:
    void on_load() override;
    void confirm();

    session& plug_in_;
    ttl_variables& ttl_;
    bool accepted_ = false;
};

}  // namespace tamrix
