#include "wxui/printing.h"

#include "wxui/text.h"

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
        const double pixels_per_twip = static_cast<double>(pixels_across) / size.x;
        GetDC()->SetFont(letters_on(*GetDC(), line_height_twips * pixels_per_twip));
        dc_page target{*GetDC(), size, pixels_per_twip};
        job_.draw(target);
        drawn = true;
    });
    return drawn;
}

forms::print_end print(wxWindow* parent, const forms::print_job& job)
{
    wxPrintDialogData settings;
    settings.EnablePageNumbers(false);
    wxPrinter printer{&settings};
    job_printout pages{job};
    const bool printed = printer.Print(parent, &pages, true);
    pages.rethrow();
    if (printed) return forms::print_end::printed;
    return wxPrinter::GetLastError() == wxPRINTER_CANCELLED ? forms::print_end::cancelled : forms::print_end::failed;
}

}  // namespace tamrix::wxui
