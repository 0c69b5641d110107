// Shows which devices of the library a chip could be.
#pragma once

#include "forms/form.h"
#include "forms/grid_text.h"
#include "forms/list_box.h"
#include "ttl/ttl_variables.h"

namespace tamrix {

class session;

class ttlautotest final : public forms::form {
public:
    ttlautotest(session& plug_in, const ttl_variables& ttl);

    forms::label Label2{*this};     // heading of the list
    forms::list_box List1{*this};   // the devices that auto find found, in the order in which they were tried
    forms::label Label1{*this};     // heading of the families
    forms::grid_text Text1{*this};  // the families, which pass one another's vectors
    forms::button OKButton{*this};

    forms::layout arrangement() override;
    forms::button* default_button() override { return &OKButton; }
    forms::button* cancel_button() override { return &OKButton; }

private:
    void on_load() override;

    session& plug_in_;
    const ttl_variables& ttl_;
};

}  // namespace tamrix
