// Turns a form's arrangement into sizers and widgets, in reading order, which is the order of the Tab key.
#pragma once

#include "forms/form.h"
#include "wxui/widget_maker.h"

#include <wx/sizer.h>

namespace tamrix::wxui {

class arranger {
public:
    arranger(forms::form& shown, wxWindow& window, callback_guard& guard, widget_table& widgets);

    /// Creates the widgets of the form and returns the sizer that holds them.
    wxSizer* arrange();
    /// True if the form can use more than its least height.
    bool grows_down() const { return grows_down_; }

private:
    void add(wxSizer& into, const forms::layout& part, wxWindow* parent);
    wxSizer* nested(const forms::layout& part, wxWindow* parent);
    wxSizer* line_up(const forms::layout& part, wxWindow* parent, wxSizer* into);
    wxSizer* table(const forms::layout& part, wxWindow* parent, int columns);
    wxSizer* button_row(const forms::layout& part, wxWindow* parent);
    int pixels(int at_96_dpi) const;

    forms::form& shown_;
    wxWindow& window_;
    widget_maker maker_;
    bool grows_down_ = false;
};

}  // namespace tamrix::wxui
