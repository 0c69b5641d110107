#include "person.h"

#include "program.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include <wx/app.h>
#include <wx/choice.h>
#include <wx/clipbrd.h>
#include <wx/control.h>
#include <wx/evtloop.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

namespace tamrix::tests {

namespace {

using namespace std::chrono_literals;
using clock = std::chrono::steady_clock;

void run(const std::string& command)
{
    if (std::system(command.c_str()) != 0) throw std::runtime_error{"failed: " + command};
}

/// One round of the message pump, and what the program does when it is idle.
void let_work()
{
    if (auto* loop = wxEventLoopBase::GetActive()) {
        loop->YieldFor(wxEVT_CATEGORY_ALL);
        loop->ProcessIdle();
    }
    std::this_thread::sleep_for(2ms);
}

/// Keys pass through the display and come back, which takes a moment.
void let_answer()
{
    for (const auto end = clock::now() + 80ms; clock::now() < end;) let_work();
}

std::string shown_text(const wxWindow& window)
{
    if (const auto* box = wxDynamicCast(&window, wxTextCtrl)) return box->GetValue().utf8_string();
    if (const auto* list = wxDynamicCast(&window, wxChoice)) return list->GetStringSelection().utf8_string();
    const auto* control = wxDynamicCast(&window, wxControl);
    return (control != nullptr ? control->GetLabelText() : window.GetLabel()).utf8_string();
}

wxWindow* find_below(wxWindow& parent, const std::string& words)
{
    for (wxWindow* child : parent.GetChildren()) {
        if (child->IsShown() && shown_text(*child) == words) return child;
        if (wxWindow* found = find_below(*child, words)) return found;
    }
    return nullptr;
}

void press_button(const wxWindow& window, wxPoint inside, const std::string& button)
{
    const wxPoint place = window.ClientToScreen(inside);
    run("xdotool mousemove " + std::to_string(place.x) + " " + std::to_string(place.y) + " click " + button);
    let_answer();
}

std::string region(const wxWindow& window)
{
    const wxRect area{window.ClientToScreen(wxPoint{0, 0}), window.GetClientSize()};
    const auto text = [](int number) { return std::to_string(number); };
    return "import -silent -window root -crop " + text(area.width) + "x" + text(area.height) + "+" + text(area.x) +
           "+" + text(area.y) + " +repage -depth 8 ";
}

}  // namespace

scripted_form::scripted_form()
{
    starter_.on_tick = [this] {
        starter_.enabled = false;
        comes_true([] { return static_cast<wxTopLevelWindow&>(dialog()).IsActive(); });
        let_answer();
        try {
            script();
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
        }
        close();
    };
}

void scripted_form::on_load()
{
    starter_.interval_ms = 20;
    starter_.enabled = true;
}

void during(forms::shell& screen, scripted_form& shown, const std::function<void()>& script)
{
    shown.script = script;
    screen.show_modal(shown);
}

void press(const std::string& keys)
{
    run("xdotool key --delay 30 " + keys);
    let_answer();
}

void type(const std::string& letters)
{
    run("xdotool type --delay 30 '" + letters + "'");
    let_answer();
}

void click(const wxWindow& window) { click(window, wxPoint{window.GetSize().x / 2, window.GetSize().y / 2}); }

void click(const wxWindow& window, wxPoint inside) { press_button(window, inside, "1"); }

void drag(const wxWindow& window, wxPoint from, wxPoint to, const std::string& held)
{
    const auto at = [&](wxPoint inside) {
        const wxPoint place = window.ClientToScreen(inside);
        return "mousemove " + std::to_string(place.x) + " " + std::to_string(place.y) + " ";
    };
    if (!held.empty()) run("xdotool keydown " + held);
    run("xdotool " + at(from) + "mousedown 1");
    let_answer();
    run("xdotool " + at(to));
    let_answer();
    let_answer();
    run("xdotool mouseup 1");
    if (!held.empty()) run("xdotool keyup " + held);
    let_answer();
}

void turn_wheel(const wxWindow& window, int steps)
{
    const wxPoint middle{window.GetSize().x / 2, window.GetSize().y / 2};
    press_button(window, middle, "--repeat " + std::to_string(std::abs(steps)) + (steps > 0 ? " 4" : " 5"));
}

void copy(const std::string& text)
{
    const wxClipboardLocker open;
    wxTheClipboard->SetData(new wxTextDataObject{wxString::FromUTF8(text)});
}

std::string copied()
{
    const wxClipboardLocker open;
    wxTextDataObject text;
    wxTheClipboard->GetData(text);
    return text.GetText().utf8_string();
}

bool comes_true(const std::function<bool()>& done)
{
    const auto end = clock::now() + 5s;
    while (!done() && clock::now() < end) let_work();
    return done();
}

std::string focused()
{
    const wxWindow* window = wxWindow::FindFocus();
    return window != nullptr ? shown_text(*window) : "a list";  // which does not say that it has the keyboard
}

wxWindow& dialog()
{
    for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
        if (node->GetData()->IsShown()) return *node->GetData();
    }
    throw std::runtime_error{"no dialog is shown"};
}

wxWindow& shown_as(const std::string& words)
{
    wxWindow* found = find_below(dialog(), words);
    if (found == nullptr) throw std::runtime_error{"nothing in the dialog shows \"" + words + "\""};
    return *found;
}

std::string picture_of(const wxWindow& window) { return output_of(region(window) + "rgb:-"); }

std::string colour_at(const wxWindow& window, wxPoint inside)
{
    const std::string picture = picture_of(window);
    const auto at = static_cast<std::size_t>((inside.y * window.GetClientSize().x + inside.x) * 3);
    if (at + 3 > picture.size()) throw std::runtime_error{"no pixel there"};
    std::array<char, 8> text{};
    const auto part = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(picture[at + i])); };
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X", part(0), part(1), part(2));
    return text.data();
}

}  // namespace tamrix::tests
