#include "wxui/widgets.h"

#include "wxui/picture_panel.h"
#include "wxui/progress_panel.h"
#include "wxui/text.h"

#include <optional>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/timer.h>

namespace tamrix::wxui {

namespace {

/// The common part: a window that is enabled and shown as its control is.
template <class Control, class Window>
class window_widget : public widget {
public:
    window_widget(Control& control, Window* window) : control_{control}, window_{window} {}
    wxWindow* window() const final { return window_; }

    bool update() override
    {
        window_->Enable(control_.enabled());
        return window_->Show(control_.visible());
    }

protected:
    /// True where the caption was another one.
    bool show_caption()
    {
        const wxString caption = shown_caption(control_.caption());
        if (caption == window_->GetLabel()) return false;
        window_->SetLabel(caption);
        window_->InvalidateBestSize();
        return true;
    }

    Control& control_;
    Window* window_;
};

class label_widget final : public window_widget<forms::label, wxStaticText> {
public:
    label_widget(forms::label& control, wxWindow* parent, label_use use)
        : window_widget{control, new wxStaticText{parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                                  use == label_use::value ? wxST_ELLIPSIZE_MIDDLE : 0}},
          use_{use}
    {
        if (use == label_use::value) window_->SetMinSize({18 * window_->GetCharWidth(), -1});
    }

    bool update() override
    {
        bool other_room = window_widget::update();
        if (shown_ == control_.caption()) return other_room;
        shown_ = control_.caption();
        if (use_ == label_use::value) {
            window_->SetLabelText(to_wx(*shown_));
            window_->SetToolTip(to_wx(*shown_));
            return other_room;
        }
        show_caption();
        if (use_ == label_use::note) window_->Wrap(72 * window_->GetCharWidth());
        return true;
    }

private:
    label_use use_;
    std::optional<std::string> shown_;
};

class frame_widget final : public window_widget<forms::frame, wxWindow> {
public:
    using window_widget::window_widget;

    bool update() override
    {
        const bool other_room = window_widget::update() | show_caption();
        // The toolkit asks only the widgets inside for their width.
        const int width_of_caption = window_->GetTextExtent(window_->GetLabel()).x + 2 * window_->GetCharWidth();
        if (wxSizer* const inside = window_->GetContainingSizer()) inside->SetMinSize({width_of_caption, 0});
        return other_room;
    }
};

class button_widget final : public window_widget<forms::button, wxButton> {
public:
    button_widget(forms::button& control, wxWindow* parent, callback_guard& guard)
        : window_widget{control, new wxButton{parent, wxID_ANY, " "}}
    {
        window_->Bind(wxEVT_BUTTON, [this, &guard](wxCommandEvent&) { guard([this] { control_.click(); }); });
    }
    bool update() override { return window_widget::update() | show_caption(); }
};

class combo_box_widget final : public window_widget<forms::combo_box, wxChoice> {
public:
    combo_box_widget(forms::combo_box& control, wxWindow* parent, callback_guard& guard)
        : window_widget{control, new wxChoice{parent, wxID_ANY}}
    {
        window_->Bind(wxEVT_CHOICE,
                      [this, &guard](wxCommandEvent& event) { guard([&] { control_.pick(event.GetSelection()); }); });
    }

    bool update() override
    {
        bool other_room = window_widget::update();
        if (items_ != control_.items()) {
            items_ = control_.items();
            wxArrayString shown;
            for (const std::string& item : items_) shown.push_back(to_wx(item));
            window_->Set(shown);
            window_->InvalidateBestSize();
            other_room = true;
        }
        if (window_->GetSelection() != control_.index()) window_->SetSelection(control_.index());
        return other_room;
    }

private:
    std::vector<std::string> items_;
};

class option_widget final : public window_widget<forms::option, wxRadioButton> {
public:
    /// A hidden button opens each group: it parts the group from its neighbours, and is the one that is set while no
    /// option is.
    option_widget(forms::option& control, wxWindow* parent, callback_guard& guard)
        : window_widget{control, make_button(control, parent)}
    {
        window_->Bind(wxEVT_RADIOBUTTON, [this, &guard](wxCommandEvent&) { guard([this] { control_.click(); }); });
    }

    bool update() override
    {
        const bool other_room = window_widget::update() | show_caption();
        if (control_.value() && !window_->GetValue()) window_->SetValue(true);
        return other_room;
    }

private:
    static wxRadioButton* make_button(forms::option& control, wxWindow* parent)
    {
        if (control.index() == 0) {
            auto* none = new wxRadioButton{parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxRB_GROUP};
            none->Hide();
            none->SetValue(true);
        }
        return new wxRadioButton{parent, wxID_ANY, " "};
    }
};

class progress_widget final : public window_widget<forms::progress_bar, progress_panel> {
public:
    progress_widget(forms::progress_bar& control, wxWindow* parent) : window_widget{control, new progress_panel{parent}}
    {}

    bool update() override
    {
        const bool other_room = window_widget::update();
        window_->show(control_.value());
        return other_room;
    }
};

class picture_widget final : public window_widget<forms::picture, picture_panel> {
public:
    picture_widget(forms::picture& control, wxWindow* parent, callback_guard& guard)
        : window_widget{control, new picture_panel{parent, control, guard}}
    {}

    bool update() override
    {
        const bool shown = window_widget::update();
        const wxSize before = window_->GetMinClientSize();
        window_->SetMinClientSize(window_->least_size());
        window_->Refresh(false);
        return shown || before != window_->GetMinClientSize();
    }
};

class timer_widget final : public widget {
public:
    timer_widget(forms::timer& control, callback_guard& guard) : control_{control}
    {
        timer_.Bind(wxEVT_TIMER, [this, &guard](wxTimerEvent&) { guard([this] { control_.tick(); }); });
    }

    bool update() override
    {
        if (!control_.running()) {
            timer_.Stop();
        } else if (!timer_.IsRunning() || timer_.GetInterval() != control_.interval_ms()) {
            timer_.Start(control_.interval_ms());
        }
        return false;
    }
    wxWindow* window() const override { return nullptr; }

private:
    forms::timer& control_;
    wxTimer timer_;
};

}  // namespace

widget_ptr make_label(forms::label& control, wxWindow* parent, label_use use)
{
    return std::make_unique<label_widget>(control, parent, use);
}

widget_ptr make_frame(forms::frame& control, wxWindow* box) { return std::make_unique<frame_widget>(control, box); }

widget_ptr make_button(forms::button& control, wxWindow* parent, callback_guard& guard)
{
    return std::make_unique<button_widget>(control, parent, guard);
}

widget_ptr make_combo_box(forms::combo_box& control, wxWindow* parent, callback_guard& guard)
{
    return std::make_unique<combo_box_widget>(control, parent, guard);
}

widget_ptr make_option(forms::option& control, wxWindow* parent, callback_guard& guard)
{
    return std::make_unique<option_widget>(control, parent, guard);
}

widget_ptr make_progress_bar(forms::progress_bar& control, wxWindow* parent)
{
    return std::make_unique<progress_widget>(control, parent);
}

widget_ptr make_picture(forms::picture& control, wxWindow* parent, callback_guard& guard)
{
    return std::make_unique<picture_widget>(control, parent, guard);
}

widget_ptr make_timer(forms::timer& control, callback_guard& guard)
{
    return std::make_unique<timer_widget>(control, guard);
}

}  // namespace tamrix::wxui
