#include "wxui/file_window.h"

#include "wxui/text.h"

#include <wx/filedlg.h>
#include <wx/filename.h>

namespace tamrix::wxui {

namespace {

/// "*.*" shows every file, also one without a dot, which not every toolkit takes it for.
wxString filter_of(const forms::file_question& question)
{
    wxString filter = to_wx(question.filter);
    if (filter.EndsWith("|*.*")) filter.RemoveLast(3).append(wxALL_FILES_PATTERN);
    filter.Replace("|*.*|", wxString{"|"} + wxALL_FILES_PATTERN + "|");
    return filter;
}

}  // namespace

std::optional<std::string> ask_for_file(wxWindow* parent, const forms::file_question& question, file_use use)
{
    const bool names_file = question.name.find_first_of("*?") == std::string::npos;
    const wxFileName begin{names_file ? to_wx(question.name) : wxString{}};
    const long style = use == file_use::open ? wxFD_OPEN | wxFD_FILE_MUST_EXIST : wxFD_SAVE | wxFD_OVERWRITE_PROMPT;
    wxFileDialog window{parent, to_wx(question.title), begin.GetPath(), begin.GetFullName(), filter_of(question),
                        style};
    if (window.ShowModal() != wxID_OK) return std::nullopt;
    return to_utf8(window.GetPath());
}

}  // namespace tamrix::wxui
