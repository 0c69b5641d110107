#include "wxui/print_preview.h"

#include "wxui/callback_guard.h"
#include "wxui/printing.h"
#include "wxui/text.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/cmndata.h>
#include <wx/dcbuffer.h>
#include <wx/dialog.h>
#include <wx/paper.h>
#include <wx/scrolwin.h>
#include <wx/settings.h>
#include <wx/sizer.h>

namespace tamrix::wxui {

namespace {

constexpr double twips_per_tenth_of_millimetre = 144 / 25.4;
constexpr double nearest_zoom = 8;  // times the whole page
constexpr int edge = 8;             // pixels around the paper

/// The paper that the system chooses when nobody does.
forms::point usual_paper()
{
    const wxPrintData settings;
    wxSize tenths = wxThePrintPaperDatabase->GetSize(settings.GetPaperId());
    if (tenths.x <= 0 || tenths.y <= 0) tenths = {2100, 2970};
    return {wxRound(tenths.x * twips_per_tenth_of_millimetre), wxRound(tenths.y * twips_per_tenth_of_millimetre)};
}

/// The paper, whole at first.
class sheet final : public wxScrolledCanvas {
public:
    sheet(wxWindow* parent, const forms::print_job& job, callback_guard& guard)
        : wxScrolledCanvas{parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_THEME},
          job_{job},
          guard_{guard},
          paper_{usual_paper()}
    {
        SetBackgroundStyle(wxBG_STYLE_PAINT);
        SetMinClientSize(FromDIP(wxSize{420, 440}));
        Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
        Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
            event.Skip();
            fit();
        });
    }
    bool AcceptsFocus() const override { return false; }

    void zoom(double factor)
    {
        zoom_ = std::clamp(zoom_ * factor, 1.0, nearest_zoom);
        fit();
    }

private:
    double pixels_per_twip() const
    {
        const wxSize room = GetSize() - wxSize{2 * edge, 2 * edge};
        return zoom_ * std::max(0.001, std::min(1.0 * room.x / paper_.x, 1.0 * room.y / paper_.y));
    }
    wxSize pixels() const
    {
        return {static_cast<int>(paper_.x * pixels_per_twip()), static_cast<int>(paper_.y * pixels_per_twip())};
    }
    void fit()
    {
        constexpr int step = 10;
        const wxSize all = zoom_ > 1 ? pixels() + wxSize{2 * edge, 2 * edge} : wxSize{0, 0};
        SetScrollbars(step, step, (all.x + step - 1) / step, (all.y + step - 1) / step, GetViewStart().x,
                      GetViewStart().y, true);
        Refresh();
    }
    void paint()
    {
        wxAutoBufferedPaintDC dc{this};
        dc.SetBackground(wxSystemSettings::GetColour(wxSYS_COLOUR_APPWORKSPACE));
        dc.Clear();
        DoPrepareDC(dc);
        const wxSize size = pixels();
        const wxPoint corner{std::max(edge, (GetClientSize().x - size.x) / 2), edge};
        dc.SetDeviceOrigin(dc.LogicalToDeviceX(corner.x), dc.LogicalToDeviceY(corner.y));
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(*wxWHITE_BRUSH);
        dc.DrawRectangle({0, 0}, size);
        dc.SetClippingRegion({0, 0}, size);
        guard_([&] { draw_page(job_, dc, paper_, pixels_per_twip()); });
    }

    const forms::print_job& job_;
    callback_guard& guard_;
    forms::point paper_;
    double zoom_ = 1;
};

class preview_dialog final : public wxDialog {
public:
    preview_dialog(wxWindow* parent, const forms::print_job& job)
        : wxDialog{parent,           wxID_ANY,
                   to_wx(job.title), wxDefaultPosition,
                   wxDefaultSize,    wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER},
          guard_{[this] { EndModal(wxID_CANCEL); }},
          sheet_{new sheet{this, job, guard_}}
    {
        auto* const row = new wxBoxSizer{wxHORIZONTAL};
        const auto button = [&](int id, const std::string& caption) {
            auto* const made = new wxButton{this, id, shown_caption(caption)};
            row->Add(made, wxSizerFlags{1}.Border(wxLEFT, row->IsEmpty() ? 0 : FromDIP(6)));
            return made;
        };
        button(wxID_ZOOM_IN, job.captions.zoom_in)->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { sheet_->zoom(1.5); });
        button(wxID_ZOOM_OUT, job.captions.zoom_out)->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
            sheet_->zoom(1 / 1.5);
        });
        auto* const print = button(wxID_OK, job.captions.print);
        button(wxID_CANCEL, job.captions.leave);
        print->SetDefault();
        auto* const column = new wxBoxSizer{wxVERTICAL};
        column->Add(sheet_, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(12)));
        column->Add(row, wxSizerFlags{}.Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(12)));
        SetSizerAndFit(column);
        CentreOnParent();
        print->SetFocus();
        Bind(wxEVT_CHAR_HOOK, &preview_dialog::on_key, this);
        CallAfter([this] {
            if (!IsActive()) Raise();  // where nobody else hands the keyboard on
        });
    }
    void rethrow() { guard_.rethrow(); }

private:
    void on_key(wxKeyEvent& event)
    {
        switch (event.GetKeyCode()) {
        case '+':
        case '=':
        case WXK_NUMPAD_ADD: return sheet_->zoom(1.5);
        case '-':
        case WXK_NUMPAD_SUBTRACT: return sheet_->zoom(1 / 1.5);
        default: event.Skip();
        }
    }

    callback_guard guard_;
    sheet* sheet_;
};

}  // namespace

bool preview(wxWindow* parent, const forms::print_job& job)
{
    preview_dialog shown{parent, job};
    const bool wanted = shown.ShowModal() == wxID_OK;
    shown.rethrow();
    return wanted;
}

}  // namespace tamrix::wxui
