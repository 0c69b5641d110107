// What the main window does with a file that a person opens: reading it strictly, asking, loading, and what the log
// says.
#include "host/device_fit.h"
#include "host/image_text.h"
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include <wx/msgdlg.h>
#include <wx/utils.h>

namespace tamrix::workbench {

namespace {

const char* clear_text(host::clear_choice clear)
{
    switch (clear) {
    case host::clear_choice::fill_ff: return "the rest of the buffer is FF";
    case host::clear_choice::fill_00: return "the rest of the buffer is 00";
    case host::clear_choice::none: break;
    }
    return "the rest of the buffer is as it was";
}

}  // namespace

void main_frame::load_file(const std::string& path)
{
    const tamrix_pld_format logic = session_.library().detect_pld(path.c_str());
    if (logic != TAMRIX_SVF && !session_.buffer_is_attached())
        return fail("The file cannot be loaded", "The buffer is released. Attach it with Tools | For Developers of "
                                                 "Hosts, or choose a device.");
    if (logic != TAMRIX_SVF && !may_lose_changes("Another file is to be loaded.")) return;
    switch (logic) {
    case TAMRIX_JEDEC: return load_jedec(path);
    case TAMRIX_SVF: return import_svf(path);
    case TAMRIX_NO_PLD: return load_buffer_file(path);
    }
}

/// Reads a file strictly, before anything of it reaches the buffer, and shows its damage.
host::file_report main_frame::inspect(const std::string& path, const char* format)
{
    const wxBusyCursor reading;
    host::file_report report = host::report_on(path, format);
    for (const std::string& remark : report.remarks) log_->trouble(printable(remark));
    return report;
}

/// Whether a damaged file is to be used; the person is asked once for a file.
bool main_frame::accepts(const host::file_report& report, const wxString& use, const char* refused)
{
    if (report.damaged_places == 0) return true;
    wxMessageDialog question{this, to_wx(host::damage_text(report)) + " " + use + " all the same?", "Damaged File",
                             wxYES_NO | wxNO_DEFAULT | wxICON_WARNING};
    const bool accepted = question.ShowModal() == wxID_YES;
    log_->remark(report.path + ": " + (accepted ? "the damage is accepted" : refused));
    return accepted;
}

void main_frame::load_buffer_file(const std::string& path)
{
    const wxString trouble = "The file cannot be loaded";
    attempt(trouble, [&] {
        const plug_in_library& library = session_.library();
        const int detected = library.detect_format(path.c_str(), nullptr);
        if (detected < 0) return fail(trouble, path + " cannot be read.");
        tamrix_format format{};
        library.describe_format(detected, &format);
        const host::file_report report = inspect(path, format.name);
        if (!accepts(report)) return;
        outcome told;
        keeper_->flush();
        document_.load(path, [&] {
            told = session_.load(path, static_cast<std::int16_t>(detected));
            return !told.failed() && !told.cancelled();
        });
        tell(trouble, told);
        buffer_changed();
        if (!told.cancelled()) show_load(path, to_wx(format.caption), !told.failed());
        if (told.failed()) {
            log_->remark("The buffer is as it was before.");
        } else if (!told.cancelled()) {
            show_mode(told.result.value);
            tell_content(report);
            tell_fit(report, 0);
        }
        hex_view_->SetFocus();
    });
}

void main_frame::tell_content(const host::file_report& report)
{
    for (const std::string& line : report.lines) log_->remark(printable(line));
}

/// After a load from file address `start` on. Offers to load the bytes that lie outside the device.
void main_frame::tell_fit(const host::file_report& report, std::uint64_t start)
{
    const host::device_fit fit = host::fit_of(report, start, session_.device_memory());
    log_->remark(fit.line);
    if (!fit.next) return offer_rest({});
    offer_rest(rest_of_file{report.path, report.format, report.remarks, *fit.next, fit.outside});
}

void main_frame::offer_rest(std::optional<rest_of_file> rest)
{
    rest_ = std::move(rest);
    if (!rest_) return log_->withdraw_offer();
    const std::string name = std::filesystem::path{rest_->path}.filename().string();
    log_->offer(name + ": " + host::bytes_text(rest_->bytes) + " outside the device.",
                "Load &It from " + host::address_text(rest_->start), [this] { load_rest(); });
}

/// The load dialog begins with From File Address 0, whatever its host wants, so the workbench loads these by itself.
void main_frame::load_rest()
{
    attempt("The file cannot be loaded", [&] {
        const rest_of_file wanted = *rest_;
        const host::file_report report = inspect(wanted.path, wanted.format.c_str());
        if (report.remarks != wanted.accepted_remarks && !accepts(report)) return;
        host::clear_choice clear{};
        document_.load(wanted.path, [&] {
            clear = session_.load_from(report.image, wanted.start);
            return true;
        });
        buffer_changed();
        log_->remark(report.path + ": loaded by the workbench itself, from file address " +
                     host::address_text(wanted.start) + " on; " + clear_text(clear));
        tell_fit(report, wanted.start);
        SetStatusText("From file: " + to_wx(host::address_text(wanted.start)), mode_field);
        hex_view_->SetFocus();
    });
}

void main_frame::load_jedec(const std::string& path)
{
    attempt("Load JEDEC failed", [&] {
        const host::file_report report = inspect(path, "jedec");
        if (!accepts(report)) return;
        const bool done =
            document_.load(path, [&] { return run_routine("Load JEDEC", [&] { return session_.load_jedec(path); }); });
        buffer_changed();
        fuse_files_.insert(path);
        offer_rest({});
        show_load(path, "JEDEC", done);
        if (done) {
            tell_content(report);
            const auto fuses = static_cast<std::uint64_t>(std::max(session_.device().words, 0));
            const std::string outside = host::fuses_outside_text(report, fuses);
            if (!outside.empty()) log_->trouble(outside);
        }
        hex_view_->SetFocus();
    });
}

/// The buffer does not change, so it keeps the name of its file.
void main_frame::import_svf(const std::string& path)
{
    attempt("Import SVF failed", [&] {
        const host::file_report report = inspect(path, "svf");
        if (!accepts(report)) return;
        if (!run_routine("Import SVF", [&] { return session_.import_svf(path); })) return;
        remember(path);
        tell_content(report);
    });
}

}  // namespace tamrix::workbench
