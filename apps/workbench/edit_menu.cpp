// The Edit menu of the main window.
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <utility>

#include <wx/filedlg.h>
#include <wx/menu.h>

namespace tamrix::workbench {

wxMenu* main_frame::edit_menu()
{
    auto* menu = new wxMenu;
    const auto edit = [&](const char* label, const char* help, std::function<void()> action) {
        needs_buffer(add(menu, label, help, std::move(action)));
    };
    undo_item_ = add(menu, "&Undo\tCtrl+Z", "Take the last change of the buffer back",
                     [this] { attempt("Undo failed", [&] { change_buffer([&] { editor_->undo(); }); }); });
    redo_item_ = add(menu, "&Redo\tCtrl+Shift+Z", "Make the change again that was taken back",
                     [this] { attempt("Redo failed", [&] { change_buffer([&] { editor_->redo(); }); }); });
    menu->AppendSeparator();
    using form = byte_editor::form;
    add(menu, "&Copy\tCtrl+C", "Copy the selected bytes as their column shows them", [this] { editor_->copy(); });
    auto* forms = new wxMenu;
    const auto copy_as = [&](const char* label, form as, const char* help) {
        add(forms, label, help, [this, as] { editor_->copy_as(as); });
    };
    copy_as("&Hexadecimal", form::hexadecimal, "Copy as pairs of digits");
    copy_as("&Characters", form::characters, "Copy as text, with a point for what is no character");
    copy_as("C &Array", form::c_array, "Copy as an array for a program in C");
    copy_as("&Intel HEX", form::intel_hex, "Copy as records with the addresses of the buffer");
    menu->AppendSubMenu(forms, "Copy A&s");
    add(menu, "&Paste\tCtrl+V", "Put the bytes of the clipboard over those at the cursor",
        [this] { editor_->paste(); });
    add(menu, "Select &All\tCtrl+A", "Select all bytes", [this] { editor_->select_all(); });
    menu->AppendSeparator();
    edit("&Find…\tCtrl+F", "Find bytes or a text in the buffer", [this] { editor_->find(); });
    edit("Find &Next\tF3", "Find the next place", [this] { editor_->find_next(editing::direction::forward); });
    edit("Find Prev&ious\tShift+F3", "Find the place before",
         [this] { editor_->find_next(editing::direction::backward); });
    edit("R&eplace…\tCtrl+H", "Put bytes or a text in place of others", [this] { editor_->replace(); });
    menu->AppendSeparator();
    edit("&Go to Address…\tCtrl+G", "Go to an address of the buffer", [this] { editor_->go_to(); });
    edit("&Mark\tCtrl+F2", "Mark the byte at the cursor, or take its mark away", [this] { editor_->toggle_mark(); });
    edit("Ne&xt Mark\tF2", "Go to the next marked byte", [this] { editor_->next_mark(); });
    menu->AppendSeparator();
    edit("Fi&ll…", "Fill the selection or the buffer with one value", [this] { editor_->fill(); });
    edit("Compare &with File…", "Show the buffer beside a file, and where they differ", [this] {
        ask_for_file("Compare with File", load_filter(), wxFD_OPEN | wxFD_FILE_MUST_EXIST,
                     [this](const std::string& path) { compare_with(path); });
    });
    menu->AppendSeparator();
    add_logic_call(menu, "Test &Vectors…", "Edit the test vectors of the device", "mnuEditeditvector0",
                   [](Clstamrix& plug_in, std::string& folder, bool16& hardware) {
                       std::uint8_t icsum = 0;
                       return plug_in.mnuEditeditvector0(icsum, hardware, folder);
                   });
    return menu;
}

}  // namespace tamrix::workbench
