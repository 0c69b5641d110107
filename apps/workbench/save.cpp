// How the main window saves, and what it asks before changes are lost.
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <filesystem>

#include <wx/filedlg.h>
#include <wx/msgdlg.h>

namespace tamrix::workbench {

namespace {

std::string name_of(const std::string& path) { return std::filesystem::path{path}.filename().string(); }

}  // namespace

/// True if nothing is lost, or the person wants it. `reason` says what is about to happen.
bool main_frame::may_lose_changes(const wxString& reason)
{
    if (!document_.changed()) return true;
    const wxString what = document_.file().empty() ? wxString{"the buffer"} : to_wx(name_of(document_.file()));
    wxMessageDialog question{this, reason + " The changes of " + what + " are not saved.", "Unsaved Changes",
                             wxYES_NO | wxCANCEL | wxICON_WARNING};
    question.SetYesNoCancelLabels("&Save", "&Discard", "&Cancel");
    switch (question.ShowModal()) {
    case wxID_YES: return save();
    case wxID_NO: return true;
    default: return false;
    }
}

void main_frame::on_close(wxCloseEvent& event)
{
    if (event.CanVeto() && !may_lose_changes("The workbench is to be closed.")) return event.Veto();
    keeper_->end();
    event.Skip();
}

/// Returns whether it was saved; so do the others.
bool main_frame::save()
{
    const std::string file = document_.file();
    if (file.empty()) return save_as();
    const bool fuses = fuse_files_.contains(file) || session_.library().detect_pld(file.c_str()) == TAMRIX_JEDEC;
    return fuses ? save_jedec(file) : save_to(file);
}

bool main_frame::save_as()
{
    wxFileDialog dialog{this, "Save Buffer", "", "", save_filter(), wxFD_SAVE | wxFD_OVERWRITE_PROMPT};
    if (const std::string& file = document_.file(); !file.empty()) {
        dialog.SetDirectory(to_wx(std::filesystem::absolute(file).parent_path().string()));
        dialog.SetFilename(to_wx(name_of(file)));
    }
    if (dialog.ShowModal() != wxID_OK) return false;
    return save_to(to_utf8(dialog.GetPath()));
}

bool main_frame::save_to(const std::string& path)
{
    bool done = false;
    const wxString trouble = "The buffer cannot be saved";
    attempt(trouble, [&] {
        const outcome told = session_.save(path);
        tell(trouble, told);
        done = !told.cancelled() && !told.failed();
        if (!done) return;
        fuse_files_.erase(path);
        document_.saved_as(path);
        remember(path);
        tell_saved(path);
    });
    hex_view_->SetFocus();
    return done;
}

/// Reads what was written, so that the log says what the file holds and not what it should hold.
void main_frame::tell_saved(const std::string& path)
{
    const int detected = session_.library().detect_format(path.c_str(), nullptr);
    tamrix_format format{};
    if (detected < 0 || session_.library().describe_format(detected, &format) == 0) return;
    log_->remark("Saved:");
    tell_content(inspect(path, format.name));
}

bool main_frame::save_jedec(const std::string& path)
{
    if (!run_routine("Save JEDEC", [&] { return session_.save_jedec(path); })) return false;
    fuse_files_.insert(path);
    document_.saved_as(path);
    remember(path);
    log_->remark(path + ": written in the form of the standard, JESD3-C");
    attempt("The file cannot be read again", [&] { tell_content(inspect(path, "jedec")); });
    return true;
}

/// In a form that other programs may not read, so it is a copy: the buffer is not saved by it.
void main_frame::save_jedec_as_plug_in(const std::string& path)
{
    if (run_routine("Save JEDEC", [&] { return session_.save_jedec_as_plug_in(path); }))
        log_->remark(path + ": written in the form of the plug-in");
}

}  // namespace tamrix::workbench
