#include "workbench/dropped_files.h"

#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <filesystem>
#include <set>

#include <wx/choicdlg.h>

namespace tamrix::workbench {

namespace {

/// The names alone, unless two files have the same one.
wxArrayString names_of(const std::vector<std::string>& paths)
{
    wxArrayString names;
    std::set<wxString> different;
    for (const std::string& path : paths) {
        names.push_back(to_wx(std::filesystem::path{path}.filename().string()));
        different.insert(names.back());
    }
    if (different.size() == paths.size()) return names;
    for (std::size_t i = 0; i < paths.size(); ++i) names[i] = to_wx(paths[i]);
    return names;
}

}  // namespace

bool file_target::OnDropFiles(wxCoord, wxCoord, const wxArrayString& files)
{
    if (files.empty()) return false;
    std::vector<std::string> paths;
    for (const wxString& file : files) paths.push_back(to_utf8(file));
    take_(paths);
    return true;
}

std::optional<std::string> choose_file(wxWindow* parent, const std::vector<std::string>& paths)
{
    wxSingleChoiceDialog dialog{parent,
                                wxString::Format("The buffer holds one file. Which of these %zu?", paths.size()),
                                "Load One of Several Files", names_of(paths)};
    if (dialog.ShowModal() != wxID_OK) return std::nullopt;
    return paths.at(static_cast<std::size_t>(dialog.GetSelection()));
}

void main_frame::load_one_of(const std::vector<std::string>& files)
{
    if (files.size() == 1) return load_file(files.front());
    if (const auto chosen = choose_file(this, files)) load_file(*chosen);
}

}  // namespace tamrix::workbench
