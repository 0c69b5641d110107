#include "workbench/byte_editor.h"

#include "editing/clipboard_texts.h"
#include "host/image_text.h"
#include "workbench/text.h"
#include "workbench/value_dialogs.h"

#include <span>

#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/textentry.h>

namespace tamrix::workbench {

namespace {

/// The text that has the keyboard; null where something else has it.
wxTextEntry* text_in_focus() { return dynamic_cast<wxTextEntry*>(wxWindow::FindFocus()); }

bool put_on_clipboard(const std::string& text)
{
    const wxClipboardLocker open;
    return wxTheClipboard->SetData(new wxTextDataObject{to_wx(text)});
}

std::string text_on_clipboard()
{
    const wxClipboardLocker open;
    wxTextDataObject text;
    return wxTheClipboard->GetData(text) ? to_utf8(text.GetText()) : std::string{};
}

std::string text_of(byte_editor::form as, std::span<const std::uint8_t> bytes, std::size_t address)
{
    switch (as) {
    case byte_editor::form::hexadecimal: return editing::hexadecimal_text(bytes);
    case byte_editor::form::characters: return editing::characters_text(bytes);
    case byte_editor::form::c_array: return editing::c_array_text(bytes);
    case byte_editor::form::intel_hex: return editing::intel_hex_text(bytes, address);
    }
    return {};
}

hexview::row_bits bits_of(const std::vector<bool>& flags)
{
    hexview::row_bits bits = 0;
    for (std::size_t i = 0; i < flags.size(); ++i) {
        if (flags[i]) bits = static_cast<hexview::row_bits>(bits | 1U << i);
    }
    return bits;
}

}  // namespace

byte_editor::byte_editor(wxWindow& window, editing::document& document, hexview::hex_view& view)
    : window_{window}, document_{document}, view_{view}
{
    view_.on_type = [this](std::size_t address, std::uint8_t byte) { type(address, byte); };
    view_.different = [this](std::size_t address) {
        return bits_of(document_.differs_from_saved(address, editing::bytes_in_row));
    };
    view_.marked = [this](std::size_t address) {
        hexview::row_bits bits = 0;
        const auto end = marks_.lower_bound(address + editing::bytes_in_row);
        for (auto mark = marks_.lower_bound(address); mark != end; ++mark) {
            bits = static_cast<hexview::row_bits>(bits | 1U << (*mark - address));
        }
        return bits;
    };
}

void byte_editor::show(bool attached)
{
    attached_ = attached;
    view_.show(attached ? document_.bytes() : std::span<const std::uint8_t>{});
}

void byte_editor::notice(const wxString& words)
{
    if (on_notice) on_notice(words);
}

/// The view has moved its cursor already: after the second digit it is in no byte's middle any more.
void byte_editor::type(std::size_t address, std::uint8_t byte)
{
    const bool second_digit =
        view_.cursor().side() == editing::column::hexadecimal && !view_.cursor().in_second_digit();
    notice({});
    document_.replace(address, {&byte, 1}, "Typing",
                      second_digit ? editing::document::typed::second_digit : editing::document::typed::whole_bytes);
}

void byte_editor::undo()
{
    if (auto* text = text_in_focus()) return text->Undo();
    if (!can_edit()) return;
    notice({});
    document_.undo();
}

void byte_editor::redo()
{
    if (auto* text = text_in_focus()) return text->Redo();
    if (!can_edit()) return;
    notice({});
    document_.redo();
}

void byte_editor::select_all()
{
    if (auto* text = text_in_focus()) return text->SelectAll();
    view_.select_all();
}

void byte_editor::copy()
{
    if (auto* text = text_in_focus()) return text->Copy();
    copy_as(view_.cursor().side() == editing::column::characters ? form::characters : form::hexadecimal);
}

void byte_editor::copy_as(form as)
{
    const editing::byte_range range = view_.cursor().selection_or_byte();
    if (range.length > editing::most_copied_bytes) {
        return notice(wxString::Format("At most %zu MiB can be copied; save the buffer to a file instead.",
                                       editing::most_copied_bytes / 0x100000));
    }
    if (range.empty()) return;
    if (!put_on_clipboard(text_of(as, document_.bytes().subspan(range.first, range.length), range.first)))
        return notice("The clipboard does not take the bytes.");
    notice(to_wx(host::bytes_text(range.length)) + " copied");
}

void byte_editor::paste()
{
    if (auto* text = text_in_focus()) return text->Paste();
    if (!can_edit()) return;
    const editing::pasted_bytes pasted = editing::bytes_of_text(text_on_clipboard(), view_.cursor().side());
    if (!pasted.trouble.empty()) return notice("Nothing pasted: " + to_wx(pasted.trouble));
    const std::size_t address = view_.cursor().selection_or_byte().first;
    const std::size_t room = document_.bytes().size() - address;
    if (pasted.bytes.size() > room) {
        return notice("Nothing pasted: the clipboard has " + to_wx(host::bytes_text(pasted.bytes.size())) +
                      ", and the buffer ends after " + to_wx(host::bytes_text(room)) + ".");
    }
    document_.replace(address, pasted.bytes, "Paste");
    view_.select({address, pasted.bytes.size()});
    notice(to_wx(host::bytes_text(pasted.bytes.size())) + " pasted");
}

void byte_editor::fill()
{
    if (!can_edit()) return;
    const auto choice = ask_for_fill(&window_, view_.cursor().selection(), fill_value_);
    if (!choice) return;
    using unseen = editing::document::unseen;
    const editing::byte_range selected = view_.cursor().selection();
    if (!choice->selection && !may_lose_changes("The whole buffer is to be filled.")) return;
    fill_value_ = choice->value;
    const editing::byte_range range = choice->selection ? selected : editing::byte_range{0, document_.bytes().size()};
    document_.fill(range.first, range.length, choice->value, choice->selection ? unseen::stays : unseen::is_dropped);
    const wxString where =
        choice->selection ? wxString::Format("%08zX to %08zX", range.first, range.end() - 1) : "Buffer";
    on_remark(to_utf8(where + wxString::Format(" filled with %02X", static_cast<unsigned>(choice->value))));
    view_.SetFocus();
}

void byte_editor::go_to()
{
    if (!can_edit()) return;
    const auto address = ask_for_address(&window_, view_.cursor().address(), document_.bytes().size(), marks_);
    if (address) view_.go_to(*address);
    view_.SetFocus();
}

void byte_editor::toggle_mark()
{
    if (!can_edit()) return;
    const std::size_t address = view_.cursor().address();
    if (marks_.erase(address) == 0) marks_.insert(address);
    view_.refresh();
}

void byte_editor::next_mark()
{
    const auto in_buffer = marks_.lower_bound(document_.bytes().size());
    if (marks_.begin() == in_buffer) return notice("There are no marks; Ctrl+F2 sets one.");
    auto next = marks_.upper_bound(view_.cursor().address());
    if (next == in_buffer || next == marks_.end()) next = marks_.begin();
    view_.go_to(*next);
    view_.SetFocus();
}

}  // namespace tamrix::workbench
