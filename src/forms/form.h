// A dialog as a view model: its controls, its layout and its handlers, without a toolkit.
#pragma once

#include "forms/canvas.h"
#include "forms/controls.h"
#include "forms/layout.h"
#include "forms/menu.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tamrix::forms {

/// Whoever draws a form. Called on every change while the form is shown.
class form_view {
public:
    virtual ~form_view() = default;
    virtual void control_changed(control& which) = 0;
    virtual void caption_changed() = 0;
    virtual void beep() = 0;
    /// The program hands the keyboard to a control.
    virtual void focus_moved(control& /*to*/) {}
    /// The form was closed by its program; the modal loop ends.
    virtual void closed() = 0;
};

/// Keys that a form may use whichever control has the keyboard.
enum class form_key : std::uint8_t { left, right, page_up, page_down, home, end, plus, minus, space };

class form {
public:
    form() = default;
    virtual ~form() = default;
    form(const form&) = delete;
    form& operator=(const form&) = delete;

    const std::string& caption() const { return caption_; }
    void caption(std::string text);

    /// The arrangement of the controls on the screen.
    virtual layout arrangement() = 0;
    /// From left to right, above the controls.
    virtual std::vector<menu*> menus() { return {}; }
    /// Enter presses this one; may be null.
    virtual button* default_button() { return nullptr; }
    /// Escape and the window's own close button press this one; without one they close the form.
    virtual button* cancel_button() { return nullptr; }

    /// Hands the keyboard to a control; before the form is shown, to the one that it begins with.
    void focus(control& which);
    /// The control that received the keyboard last; null if the renderer chooses.
    control* focused() const { return focused_; }

    bool is_open() const { return open_; }
    /// Runs the load handler; the form is open from then on.
    void load();
    /// Ends the modal loop.
    void close();
    /// Runs the unload handler.
    void unload();
    /// The person asks to leave: Escape, or the window's close button.
    virtual void ask_to_leave();
    /// The person presses Enter.
    void accept();
    /// The person presses one of these keys. Returns false if the key is the focused control's.
    virtual bool press_key(form_key) { return false; }

    const std::vector<control*>& controls() const { return controls_; }
    void show_on(form_view* view) { view_ = view; }
    form_view* view() const { return view_; }

protected:
    virtual void on_load() {}
    virtual void on_unload() {}

    /// The form is busy for as long as this exists.
    class busy_time {
    public:
        explicit busy_time(form& of) : form_{of} { form_.busy_ = true; }
        ~busy_time() { form_.busy_ = false; }
        busy_time(const busy_time&) = delete;
        busy_time& operator=(const busy_time&) = delete;

    private:
        form& form_;
    };
    bool is_busy() const { return busy_; }
    /// `action`, which does nothing while the form is busy.
    std::function<void()> unless_busy(std::function<void()> action);

private:
    friend class control;

    std::vector<control*> controls_;
    std::string caption_;
    form_view* view_ = nullptr;
    control* focused_ = nullptr;
    bool open_ = false;
    bool busy_ = false;
};

}  // namespace tamrix::forms
