#include "wxui/form_dialog.h"

#include "forms/grid_text.h"
#include "wxui/text.h"

#include <algorithm>
#include <optional>

#include <wx/button.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

namespace tamrix::wxui {

namespace {

constexpr long style = wxCAPTION | wxRESIZE_BORDER | wxSYSTEM_MENU | wxCLOSE_BOX;

/// By the keys of every keyboard: "+" and "=" share one on many.
std::optional<forms::form_key> form_key_of(int key)
{
    using enum forms::form_key;
    switch (key) {
    case WXK_LEFT: return left;
    case WXK_RIGHT: return right;
    case WXK_PAGEUP: return page_up;
    case WXK_PAGEDOWN: return page_down;
    case WXK_HOME: return home;
    case WXK_END: return end;
    case '+':
    case '=':
    case WXK_NUMPAD_ADD: return plus;
    case '-':
    case WXK_NUMPAD_SUBTRACT: return minus;
    case WXK_SPACE: return space;
    default: return std::nullopt;
    }
}

}  // namespace

form_dialog::form_dialog(forms::form& shown, wxWindow* parent)
    : wxDialog{parent, wxID_ANY, to_wx(shown.caption()), wxDefaultPosition, wxDefaultSize, style},
      shown_{shown},
      view_before_{shown.view()},
      guard_{[this] { shown_.close(); }}
{
    SetEscapeId(wxID_NONE);  // the form decides what Escape and Enter do
    arranger builder{shown_, *this, guard_, widgets_};
    SetSizer(builder.arrange());
    key_holder_ = new wxWindow{this, wxID_ANY, wxPoint{0, 0}, wxSize{1, 1}};
    key_holder_->Hide();  // so that nobody finds it who walks through the controls
    grows_down_ = builder.grows_down();
    if (const auto standard = widgets_.find(shown_.default_button()); standard != widgets_.end()) {
        static_cast<wxButton*>(standard->second->window())->SetDefault();
    }
    shown_.show_on(this);  // before the pictures hear how large they are: what the form does then is to be seen
    take_room();
    CentreOnParent();
    Bind(wxEVT_CHAR_HOOK, &form_dialog::on_key, this);
    Bind(wxEVT_CHILD_FOCUS, [this](wxChildFocusEvent& event) {
        event.Skip();
        if (event.GetWindow() != key_holder_) key_holder_->Hide();
    });
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { guard_([this] { shown_.ask_to_leave(); }); });
    if (shown_.focused() != nullptr) focus_moved(*shown_.focused());
}

form_dialog::~form_dialog()
{
    shown_.show_on(view_before_);
    widgets_.clear();  // no timer and no handler outlives the form
    DestroyChildren();
}

void form_dialog::run()
{
    CallAfter([this] {
        if (!IsActive()) Raise();  // a host without windows of its own has no focus to hand on
    });
    if (shown_.is_open()) ShowModal();
    guard_.rethrow();
}

void form_dialog::control_changed(forms::control& which)
{
    const auto found = widgets_.find(&which);
    if (found == widgets_.end()) return;
    const bool had_keyboard = control_with_focus() == &which;
    if (found->second->update()) take_room();
    keep_keyboard(which, had_keyboard);
}

/// Toolkits leave the keyboard nowhere when the control that has it goes off; the keys of the form would be dead. The
/// control gets it back when it is on again, unless the person has taken it elsewhere.
void form_dialog::keep_keyboard(forms::control& which, bool had_it)
{
    if (had_it && !which.usable()) {
        without_ = &which;
        key_holder_->Show();
        key_holder_->SetFocus();
    } else if (&which == without_ && which.usable()) {
        without_ = nullptr;
        if (wxWindow::FindFocus() == key_holder_) focus_moved(which);
    }
}

void form_dialog::caption_changed() { SetTitle(to_wx(shown_.caption())); }

void form_dialog::beep() { wxBell(); }

void form_dialog::focus_moved(forms::control& to)
{
    const auto found = widgets_.find(&to);
    if (found == widgets_.end() || found->second->window() == nullptr) return;
    found->second->window()->SetFocus();
    // What is typed next replaces the text, as after the Tab key; not every toolkit sees to it here.
    if (auto* const text = dynamic_cast<wxTextCtrl*>(found->second->window())) text->SelectAll();
}

void form_dialog::closed()
{
    if (IsModal()) EndModal(wxID_CLOSE);
}

/// Lays the widgets out anew, in a window that is large enough for them.
void form_dialog::take_room()
{
    const wxSize least = GetSizer()->ComputeFittingWindowSize(this);
    SetSizeHints(least, grows_down_ ? wxDefaultSize : wxSize{-1, least.y});
    wxSize room = GetSize();
    room.IncTo(least);
    SetSize(grows_down_ ? room : wxSize{room.x, least.y});
    Layout();
}

void form_dialog::on_key(wxKeyEvent& event)
{
    const bool plain = !event.HasAnyModifiers();
    const int key = event.GetKeyCode();
    if (plain && key == WXK_ESCAPE) {
        guard_([this] { shown_.ask_to_leave(); });
    } else if (plain && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER)) {
        guard_([this] { press_enter(); });
    } else if (plain && key == WXK_F10 && !shown_.menus().empty()) {
        open_menu(*shown_.menus().front());
    } else if (!takes(event)) {
        event.Skip();
    }
}

/// As the key does in any window with menus; not each of ours has a letter of its own.
void form_dialog::open_menu(forms::menu& which)
{
    wxWindow* const title = widgets_.at(&which)->window();
    wxCommandEvent click{wxEVT_BUTTON, title->GetId()};
    if (which.usable()) title->ProcessWindowEvent(click);
}

/// The form goes before the control with the focus. Shift is no reason to leave it a key: some keyboards need it for
/// "+".
bool form_dialog::takes(const wxKeyEvent& event)
{
    const auto key = event.HasModifiers() ? std::nullopt : form_key_of(event.GetKeyCode());
    bool taken = false;
    if (key) guard_([&] { taken = shown_.press_key(*key); });
    return taken;
}

/// A button with the focus is the one that Enter presses, and some fields use the key themselves. From elsewhere it is
/// the form's, as if the person had gone there: a box that was being edited is left first, so that what depends on it
/// is up to date.
void form_dialog::press_enter()
{
    forms::control* focused = control_with_focus();
    if (auto* button = dynamic_cast<forms::button*>(focused)) return button->click();
    if (auto* grid = dynamic_cast<forms::grid_text*>(focused)) return grid->key_down(forms::grid_key::enter);
    auto* box = dynamic_cast<forms::text_box*>(focused);
    if (box != nullptr && box->on_enter_key) return box->press_enter();
    if (box != nullptr) box->leave();
    if (shown_.is_open()) shown_.accept();
}

forms::control* form_dialog::control_with_focus() const
{
    const wxWindow* focused = wxWindow::FindFocus();
    const auto found = std::ranges::find_if(
        widgets_, [&](const auto& entry) { return focused != nullptr && entry.second->window() == focused; });
    return found != widgets_.end() ? found->first : nullptr;
}

}  // namespace tamrix::wxui
