#include "wxui/arranger.h"

#include <algorithm>
#include <vector>

#include <wx/statbox.h>

namespace tamrix::wxui {

namespace {

using forms::layout;
using kind = forms::layout::kind;

constexpr int margin = 12;        // around the dialog, and between its groups
constexpr int line_gap = 6;       // between lines that belong together
constexpr int option_gap = 2;     // between the options of a column
constexpr int label_gap = 9;      // between a label and its field
constexpr int beside_gap = 18;    // between things side by side
constexpr int least_button = 88;  // width of a button, so that "OK" is no stub

template <class Control>
Control* as(const layout& part)
{
    return part.what == kind::item ? dynamic_cast<Control*>(part.item) : nullptr;
}

/// Boxes and lists have heights of their own, which looks uneven in a column.
void make_equally_high(const std::vector<wxWindow*>& fields)
{
    int height = 0;
    for (const wxWindow* field : fields) height = std::max(height, field->GetBestSize().y);
    for (wxWindow* field : fields) field->SetMinSize({field->GetMinSize().x, height});
}

bool is_row(const layout& part) { return part.what == kind::row; }

int gap_between(const layout& before, const layout& after, bool in_row)
{
    if (in_row) return as<forms::label>(before) != nullptr ? label_gap : beside_gap;
    if (before.stretch && after.stretch) return 0;  // they share the whole height evenly
    if (as<forms::option>(before) != nullptr && as<forms::option>(after) != nullptr) return option_gap;
    if (as<forms::grid_text>(before) != nullptr && as<forms::grid_text>(after) != nullptr) return option_gap;
    const bool both_items = before.what == kind::item && after.what == kind::item;
    return both_items ? line_gap : margin;
}

/// Puts the button of the Enter key and the one of the Escape key where the platform's people look for them.
std::vector<forms::control*> in_order_of_platform(const layout& part, forms::button* standard, forms::button* cancel)
{
    std::vector<forms::control*> buttons;
    for (const layout& child : part.children) buttons.push_back(child.item);
#if defined(__WXGTK__) || defined(__WXMAC__)
    const auto rank = [&](forms::control* one) { return one == standard ? 2 : one == cancel ? 1 : 0; };
#else
    const auto rank = [&](forms::control* one) { return one == standard ? 1 : one == cancel ? 2 : 0; };
#endif
    std::ranges::stable_sort(buttons, {}, rank);
    return buttons;
}

}  // namespace

arranger::arranger(forms::form& shown, wxWindow& window, callback_guard& guard, widget_table& widgets)
    : shown_{shown}, window_{window}, maker_{guard, widgets}
{}

wxSizer* arranger::arrange()
{
    auto* outer = new wxBoxSizer{wxVERTICAL};
    if (const auto menus = shown_.menus(); !menus.empty()) {
        auto* strip = new wxBoxSizer{wxHORIZONTAL};
        for (forms::menu* one : menus) strip->Add(maker_.make(*one, &window_, label_use::caption));
        outer->Add(strip);
    }
    outer->Add(nested(shown_.arrangement(), &window_), wxSizerFlags{1}.Expand().Border(wxALL, pixels(margin)));
    for (forms::control* control : shown_.controls()) {
        if (dynamic_cast<forms::timer*>(control) != nullptr) maker_.make(*control, &window_, label_use::caption);
    }
    return outer;
}

int arranger::pixels(int at_96_dpi) const { return window_.FromDIP(at_96_dpi); }

void arranger::add(wxSizer& into, const layout& part, wxWindow* parent)
{
    const auto* box = dynamic_cast<wxBoxSizer*>(&into);
    const bool in_row = box != nullptr && box->GetOrientation() == wxHORIZONTAL;
    const bool picture = as<forms::picture>(part) != nullptr;
    if (picture || (part.stretch && !in_row)) grows_down_ = true;
    wxSizerFlags flags{part.stretch || picture ? 1 : 0};
    if (part.what != kind::item && part.children.empty()) {
        into.AddStretchSpacer(flags.GetProportion());  // an empty sizer would count as hidden
    } else if (part.what != kind::item) {
        into.Add(nested(part, parent), flags.Expand());
    } else if (in_row && !picture) {
        into.Add(maker_.make(*part.item, parent, label_use::caption), flags.CenterVertical());
    } else {
        into.Add(maker_.make(*part.item, parent, label_use::note), flags.Expand());
    }
}

wxSizer* arranger::nested(const layout& part, wxWindow* parent)
{
    const int direction = is_row(part) ? wxHORIZONTAL : wxVERTICAL;
    if (part.border == nullptr) {
        if (part.what == kind::fields) return table(part, parent, 2);
        if (part.what == kind::measures) return table(part, parent, 3);
        if (part.what == kind::buttons) return button_row(part, parent);
        return line_up(part, parent, new wxBoxSizer{direction});
    }
    auto* framed = new wxStaticBoxSizer{wxVERTICAL, parent};
    wxStaticBox* box = framed->GetStaticBox();
    maker_.make(*part.border, box, label_use::caption);
    layout inside = part;
    inside.border = nullptr;
    framed->Add(nested(inside, box), wxSizerFlags{1}.Expand().Border(wxALL, pixels(line_gap)));
    return framed;
}

wxSizer* arranger::line_up(const layout& part, wxWindow* parent, wxSizer* into)
{
    const layout* before = nullptr;
    for (const layout& child : part.children) {
        if (before != nullptr) into->AddSpacer(pixels(gap_between(*before, child, is_row(part))));
        add(*into, child, parent);
        before = &child;
    }
    return into;
}

/// A label, its field and, in three columns, the unit.
wxSizer* arranger::table(const layout& part, wxWindow* parent, int columns)
{
    constexpr int field_column = 1;
    auto* grid = new wxFlexGridSizer{columns, wxSize{pixels(label_gap), pixels(line_gap)}};
    grid->AddGrowableCol(field_column);
    int column = 0;
    std::vector<wxWindow*> boxes;
    for (const layout& child : part.children) {
        const bool field = column == field_column;
        wxSizerFlags flags;
        if (field) {
            flags.Expand();
        } else {
            flags.CenterVertical();
            if (column == 0) flags.Right();
        }
        if (child.what != kind::item) {
            grid->Add(nested(child, parent), flags);
        } else {
            wxWindow* made = maker_.make(*child.item, parent, field ? label_use::value : label_use::caption);
            grid->Add(made, flags);
            if (field && as<forms::label>(child) == nullptr) boxes.push_back(made);
        }
        column = (column + 1) % columns;
    }
    make_equally_high(boxes);
    return grid;
}

wxSizer* arranger::button_row(const layout& part, wxWindow* parent)
{
    auto* row = new wxBoxSizer{wxHORIZONTAL};
    row->AddStretchSpacer();
    std::vector<wxWindow*> made;
    int width = pixels(least_button);
    for (forms::control* button : in_order_of_platform(part, shown_.default_button(), shown_.cancel_button())) {
        wxWindow* window = maker_.make(*button, parent, label_use::caption);
        width = std::max(width, window->GetBestSize().x);
        row->Add(window, wxSizerFlags{}.Border(wxLEFT, made.empty() ? 0 : pixels(line_gap)));
        made.push_back(window);
    }
    for (wxWindow* window : made) window->SetMinSize({width, -1});
    return row;
}

}  // namespace tamrix::wxui
