#include "wxui/printing.h"

#include "wxui/text.h"

#include <wx/log.h>

namespace tamrix::wxui {

namespace {

constexpr double twips_per_millimetre = 1440 / 25.4;
constexpr double line_height_twips = 240;  // six lines to the inch

/// Letters whose line is so many pixels high on `target`. A font's own points are those of the screen, on paper too.
wxFont letters_on(wxDC& target, double pixels)
{
    const wxFont sample{wxFontInfo{10}};
    target.SetFont(sample);
    return sample.Scaled(static_cast<float>(pixels / target.GetCharHeight()));
}

/// Keeps what the toolkit would otherwise say in a window of its own; a sentence without its reason says nothing.
class log_reader final : public wxLog {
public:
    log_reader() : before_{wxLog::SetActiveTarget(this)} {}
    ~log_reader() override { wxLog::SetActiveTarget(before_); }
    log_reader(const log_reader&) = delete;
    log_reader& operator=(const log_reader&) = delete;
    std::string words() const { return to_utf8(words_); }

private:
    void DoLogText(const wxString& message) override
    {
        if (!message.EndsWith(": ")) words_ += "\n" + message;
    }

    wxLog* before_;
    wxString words_;
};

}  // namespace

job_printout::job_printout(const forms::print_job& job) : wxPrintout{to_wx(job.title)}, job_{job}, error_{[] {}} {}

bool job_printout::OnPrintPage(int)
{
    int width = 0, height = 0, pixels_across = 0, pixels_down = 0;
    GetPageSizeMM(&width, &height);
    GetPageSizePixels(&pixels_across, &pixels_down);
    const forms::point size{wxRound(width * twips_per_millimetre), wxRound(height * twips_per_millimetre)};
    bool drawn = false;
    error_([&] {
        draw_page(job_, *GetDC(), size, static_cast<double>(pixels_across) / size.x);
        drawn = true;
    });
    return drawn;
}

void draw_page(const forms::print_job& job, wxDC& target, forms::point size, double pixels_per_twip)
{
    target.SetFont(letters_on(target, line_height_twips * pixels_per_twip));
    dc_page page{target, size, pixels_per_twip};
    job.draw(page);
}

print_outcome print(wxWindow* parent, const forms::print_job& job)
{
    const log_reader said;
    wxPrintDialogData settings;
    settings.EnablePageNumbers(false);
    wxPrinter printer{&settings};
    job_printout pages{job};
    const bool printed = printer.Print(parent, &pages, true);
    pages.rethrow();
    if (printed) return {forms::print_end::printed};
    if (wxPrinter::GetLastError() == wxPRINTER_CANCELLED) return {forms::print_end::cancelled};
    return {forms::print_end::failed, said.words()};
}

}  // namespace tamrix::wxui
