// The files that the main window asks for.
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <utility>

#include <wx/filedlg.h>
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

void main_frame::ask_for_file(const wxString& title, const wxString& filter, long style,
                              const std::function<void(const std::string&)>& take)
{
    wxFileDialog dialog{this, title, "", "", filter, style};
    if (dialog.ShowModal() == wxID_OK) take(to_utf8(dialog.GetPath()));
}

}  // namespace tamrix::workbench
