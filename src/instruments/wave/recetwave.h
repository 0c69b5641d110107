// Frequency meter and signal generator, one dialog for both: the signal is at pin 23 of the socket, the ground at
// pin 24.
#pragma once

#include "channel/model.h"
#include "forms/form.h"
#include "instruments/wave/wave_variables.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace tamrix {

class session;

namespace hw {
class devobj;
}

class recetwave final : public forms::form {
public:
    /// Which pins the map marks.
    enum class pin_map : std::uint8_t { input, output };

    /// `show_pin_map` shows where the leads go, modally.
    recetwave(session& plug_in, wave_variables& variables, std::function<void(pin_map)> show_pin_map);

    forms::label Label1{*this};    // "Frequency:"
    forms::text_box Text1{*this};  // the count, or the hertz to make
    forms::frame Frame1{*this};    // around the note
    forms::label Text2{*this};     // the note, an item a line
    forms::button bigan{*this};    // starts
    forms::button stopButton{*this}, CancelButton{*this};
    forms::timer Timer1{*this};  // of the meter

    forms::layout arrangement() override;
    forms::button* default_button() override { return &bigan; }
    forms::button* cancel_button() override { return &CancelButton; }

private:
    void on_load() override;
    void on_unload() override;
    void bigan_Click();
    void stopButton_Click();
    void Timer1_Timer();
    void start_meter();
    void start_generator();

    bool is_meter() const { return variables_.fwave != 0; }
    bool by_usb() const;
    hw::model model() const;
    hw::devobj& device();
    void show(std::string_view text);
    void enable(forms::control& which, bool on);
    void run_timer(bool on);
    void say(const std::string& line) const;

    session& plug_in_;
    wave_variables& variables_;
    std::function<void(pin_map)> show_pin_map_;
};

}  // namespace tamrix
