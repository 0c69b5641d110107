// What the main window asks the person for: files, addresses, bytes.
#include "editing/byte_search.h"
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <algorithm>
#include <filesystem>

#include <wx/filedlg.h>
#include <wx/msgdlg.h>
#include <wx/textdlg.h>
#include <wx/tokenzr.h>

namespace tamrix::workbench {

namespace {

/// "*.hex;*.HEX;*.ihx;*.IHX" of "hex ihx".
wxString patterns(const wxString& extensions)
{
    wxString result;
    wxStringTokenizer words{extensions, " "};
    while (words.HasMoreTokens()) {
        const wxString extension = words.GetNextToken();
        result += (result.empty() ? "*." : ";*.") + extension + ";*." + extension.Upper();
    }
    return result;
}

wxString filter_line(const tamrix_format& format)
{
    wxString shown{format.extensions};
    shown.Replace(" ", " *.");
    return to_wx(format.caption) + " (*." + shown + ")|" + patterns(format.extensions);
}

/// What the person typed as hexadecimal, with or without a prefix; none where it is nothing of the kind.
bool parse_hexadecimal(wxString text, unsigned long long& value)
{
    text = text.Trim().Trim(false);
    return text.ToULongLong(&value, 16);
}

}  // namespace

wxString main_frame::load_filter() const
{
    wxString lines = "All files|*";
    tamrix_format format{};
    for (int index = 0; session_.library().describe_format(index, &format) != 0; ++index) {
        if (format.loads != 0) lines += "|" + filter_line(format);
    }
    return lines;
}

wxString main_frame::save_filter() const
{
    wxString lines;
    tamrix_format format{};
    for (int index = 0; session_.library().describe_format(index, &format) != 0; ++index) {
        if (format.saves != 0) lines += filter_line(format) + "|";
    }
    return lines + "All files|*";
}

void main_frame::ask_for_file_to_load()
{
    ask_for_file("Load File", load_filter(), wxFD_OPEN | wxFD_FILE_MUST_EXIST,
                 [this](const std::string& path) { load_file(path); });
}

void main_frame::save_buffer()
{
    wxFileDialog dialog{this, "Save Buffer", "", "", save_filter(), wxFD_SAVE | wxFD_OVERWRITE_PROMPT};
    if (!file_.empty()) dialog.SetDirectory(to_wx(std::filesystem::absolute(file_).parent_path().string()));
    if (dialog.ShowModal() != wxID_OK) return;
    const std::string path = to_utf8(dialog.GetPath());
    const wxString trouble = "The buffer cannot be saved";
    attempt(trouble, [&] {
        const outcome told = session_.save(path);
        tell(trouble, told);
        if (told.cancelled() || told.failed()) return;
        file_ = path;
        update_title();
    });
}

void main_frame::ask_for_file(const wxString& title, const wxString& filter, long style,
                              const std::function<void(const std::string&)>& take)
{
    wxFileDialog dialog{this, title, "", "", filter, style};
    if (dialog.ShowModal() == wxID_OK) take(to_utf8(dialog.GetPath()));
}

void main_frame::go_to_address()
{
    wxTextEntryDialog dialog{this, "Address (hexadecimal):", "Go to Address"};
    unsigned long long address = 0;
    while (dialog.ShowModal() == wxID_OK) {
        if (parse_hexadecimal(dialog.GetValue(), address) && address < session_.buffer().size()) {
            hex_view_->go_to(address);
            break;
        }
        wxMessageBox(wxString::Format("The buffer has the addresses 0 to %llX.",
                                      static_cast<unsigned long long>(session_.buffer().size()) - 1),
                     "Go to Address", wxOK | wxICON_WARNING, this);
    }
    hex_view_->SetFocus();
}

void main_frame::find()
{
    wxTextEntryDialog dialog{
        this, "Bytes in hexadecimal, such as 55 AA, or a text; in quotes it is always a text:", "Find", sought_};
    if (dialog.ShowModal() != wxID_OK || dialog.GetValue().empty()) return;
    sought_ = dialog.GetValue();
    find_next();
}

void main_frame::find_next()
{
    if (sought_.empty()) return find();
    const auto pattern = editing::search_pattern(to_utf8(sought_));
    const std::span<const std::uint8_t> bytes = session_.buffer();
    editing::byte_finder finder{bytes, pattern, {0, bytes.size()}, hex_view_->cursor().address() + 1};
    while (!finder.look()) continue;
    if (finder.found()) {
        hex_view_->select({*finder.found(), pattern.size()});
    } else {
        wxMessageBox("This stands nowhere in the buffer: " + sought_, "Find", wxOK | wxICON_INFORMATION, this);
    }
    hex_view_->SetFocus();
}

void main_frame::fill_buffer()
{
    wxTextEntryDialog dialog{this, "Value of every byte (hexadecimal, 00 to FF):", "Fill Buffer", "FF"};
    unsigned long long value = 0;
    while (dialog.ShowModal() == wxID_OK) {
        if (parse_hexadecimal(dialog.GetValue(), value) && value <= 0xFF) {
            std::ranges::fill(session_.buffer(), static_cast<std::uint8_t>(value));
            session_.buffer_is_in_use();
            log_->remark(to_utf8(wxString::Format("Buffer filled with %02X", static_cast<unsigned>(value))));
            buffer_changed();
            break;
        }
        wxMessageBox("A value from 00 to FF is needed.", "Fill Buffer", wxOK | wxICON_WARNING, this);
    }
}

}  // namespace tamrix::workbench
