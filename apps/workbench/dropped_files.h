// Files that a person drops on the window.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <wx/dnd.h>
#include <wx/window.h>

namespace tamrix::workbench {

class file_target final : public wxFileDropTarget {
public:
    /// `take` gets the paths, at least one.
    explicit file_target(std::function<void(const std::vector<std::string>&)> take) : take_{std::move(take)} {}
    bool OnDropFiles(wxCoord, wxCoord, const wxArrayString& files) override;

private:
    std::function<void(const std::vector<std::string>&)> take_;
};

/// The one of several files that the person wants to load; none if it is none of them.
std::optional<std::string> choose_file(wxWindow* parent, const std::vector<std::string>& paths);

}  // namespace tamrix::workbench
