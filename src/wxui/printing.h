// Pages on the system's printer.
#pragma once

#include "forms/page.h"
#include "wxui/picture_panel.h"

#include <string>

#include <wx/print.h>

namespace tamrix::wxui {

/// A page on a device context; `size` is in twips.
class dc_page final : public forms::page {
public:
    dc_page(wxDC& target, forms::point size, double pixels_per_twip) : canvas_{target, pixels_per_twip}, size_{size} {}

    forms::point size() const override { return size_; }
    void clear(forms::colour background) override { canvas_.clear(background); }
    void line(forms::point from, forms::point to, forms::colour ink) override { canvas_.line(from, to, ink); }
    void text(forms::point at, std::string_view words, forms::colour ink) override { canvas_.text(at, words, ink); }
    void figure(forms::outline kind, const forms::area& place, std::optional<forms::colour> fill,
                forms::colour border) override
    {
        canvas_.figure(kind, place, fill, border);
    }

private:
    dc_canvas canvas_;
    forms::point size_;
};

/// The one page of a job, in the toolkit's terms. What the job throws is kept for rethrow(): the toolkit's loop, which
/// calls this, knows no exceptions.
class job_printout final : public wxPrintout {
public:
    explicit job_printout(const forms::print_job& job);

    /// Without it the toolkit prints 32000 pages, all but one of them empty.
    void GetPageInfo(int* first, int* last, int* from, int* to) override { *first = *last = *from = *to = 1; }
    bool HasPage(int number) override { return number == 1; }
    bool OnPrintPage(int number) override;
    void rethrow() { error_.rethrow(); }

private:
    const forms::print_job& job_;
    callback_guard error_;
};

/// Draws the page of a job on `target`, with `size` in twips; its text is six lines to the inch high.
void draw_page(const forms::print_job& job, wxDC& target, forms::point size, double pixels_per_twip);

struct print_outcome {
    forms::print_end end;
    std::string reason{};  // of a failure, as the system words it, each line after a line feed
};

/// Asks the person for a printer and its settings, and prints. `parent` may be null.
print_outcome print(wxWindow* parent, const forms::print_job& job);

}  // namespace tamrix::wxui
