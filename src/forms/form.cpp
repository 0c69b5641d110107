#include "forms/form.h"

#include <utility>

namespace tamrix::forms {

void form::caption(std::string text)
{
    caption_ = std::move(text);
    if (view_ != nullptr) view_->caption_changed();
}

void form::load()
{
    open_ = true;
    on_load();
}

void form::close()
{
    if (!std::exchange(open_, false)) return;
    if (view_ != nullptr) view_->closed();
}

void form::unload()
{
    open_ = false;
    on_unload();
}

void form::focus(control& which)
{
    focused_ = &which;
    if (view_ != nullptr) view_->focus_moved(which);
}

void form::ask_to_leave()
{
    if (button* cancel = cancel_button(); cancel != nullptr) {
        cancel->click();
    } else {
        close();
    }
}

std::function<void()> form::unless_busy(std::function<void()> action)
{
    return [this, action = std::move(action)] {
        if (!busy_) action();
    };
}

void form::accept()
{
    if (button* standard = default_button(); standard != nullptr) standard->click();
}

}  // namespace tamrix::forms
