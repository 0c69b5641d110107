// The programming parameters of the selected device, to look at and to change.
#pragma once

#include "forms/form.h"

#include <cstdint>

namespace tamrix {

class session;

class algoparameter final : public forms::form {
public:
    explicit algoparameter(session& plug_in);

    forms::frame Frame1{*this};
    forms::label Label1{*this}, Label5{*this};  // VCC and its unit
    forms::text_box Text1{*this};
    forms::label Label2{*this}, Label6{*this};  // pulse width and its unit
    forms::text_box Text2{*this};
    forms::label Label3{*this}, Label7{*this};  // VPP and its unit, or the page length
    forms::text_box Text3{*this};
    forms::label Label4{*this};  // retries, or the address of a serial memory
    forms::text_box Text4{*this};
    forms::button OKButton{*this}, CancelButton{*this};

    forms::layout arrangement() override;
    forms::button* default_button() override { return &OKButton; }
    forms::button* cancel_button() override { return &CancelButton; }

private:
    void on_load() override;
    void load_captions();
    void show_vpp_or_page();
    void show_retry();
    void show_pulse();

    void left();
    void check();
    void check_vpp();
    void hold_whole(forms::text_box& box, std::int16_t of_device);
    void confirm();

    session& plug_in_;
    bool page_ = false;                 // Text3 holds the page length
    bool milliseconds_ = false;         // Text2 is in milliseconds
    std::int16_t retry_of_device_ = 0;  // what Text4 began with
};

}  // namespace tamrix
