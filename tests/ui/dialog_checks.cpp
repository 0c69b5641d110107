#include "dialog_checks.h"

#include "gtk_window.h"

#include <gtest/gtest.h>

#include <wx/ctrlsub.h>
#include <wx/statbox.h>

namespace tamrix::tests {

namespace {

/// A frame does not name its caption in its least size.
void expect_caption_seen(const wxWindow& window)
{
    if (dynamic_cast<const wxStaticBox*>(&window) == nullptr) return;
    EXPECT_GE(window.GetSize().x, window.GetTextExtent(window.GetLabel()).x + 8) << window.GetLabel();
}

void expect_fits(wxSize screen, wxSize size)
{
    constexpr int of_frame = 10, of_title_and_tasks = 70;
    EXPECT_LE(size.x, screen.x - of_frame);
    EXPECT_LE(size.y, screen.y - of_title_and_tasks);
}

bool is_part(const wxWindow& child) { return child.IsShown() && !child.IsTopLevel(); }

/// Labels show their name in full but for those that give way in the middle, which are as wide as they are given room.
std::string name_of(const wxWindow& window) { return '"' + window.GetLabel().utf8_string() + '"'; }

}  // namespace

void expect_nothing_clipped(const wxWindow& parent)
{
    for (const wxWindow* child : parent.GetChildren()) {
        if (!is_part(*child)) continue;
        const wxRect room{wxPoint{}, parent.GetClientSize()};
        EXPECT_TRUE(room.Contains(child->GetRect())) << name_of(*child);
        const wxSize least = child->GetEffectiveMinSize();  // which names as much as a text of any length needs
        EXPECT_GE(child->GetSize().x, least.x) << name_of(*child);
        EXPECT_GE(child->GetSize().y, least.y) << name_of(*child);
        expect_caption_seen(*child);
        expect_nothing_clipped(*child);
    }
}

void expect_no_overlap(const wxWindow& parent)
{
    for (const wxWindow* one : parent.GetChildren()) {
        if (!is_part(*one)) continue;
        for (const wxWindow* other : parent.GetChildren()) {
            if (other == one) break;  // each pair once
            if (!is_part(*other)) continue;
            EXPECT_FALSE(one->GetRect().Intersects(other->GetRect()))
                << name_of(*one) << " lies on " << name_of(*other);
        }
        expect_no_overlap(*one);
    }
}

void expect_every_letter_drawn(const wxWindow& drawn_as, const std::string& text)
{
    EXPECT_EQ(letters_without_picture(drawn_as, text), 0) << text;
}

void expect_every_letter_drawn(const wxWindow& parent)
{
    expect_every_letter_drawn(parent, parent.GetLabel().utf8_string());
    if (const auto* items = dynamic_cast<const wxItemContainerImmutable*>(&parent)) {
        for (unsigned i = 0; i < items->GetCount(); ++i) {
            expect_every_letter_drawn(parent, items->GetString(i).utf8_string());
        }
    }
    for (const wxWindow* child : parent.GetChildren()) {
        if (is_part(*child)) expect_every_letter_drawn(*child);
    }
}

void expect_fits_common_screen(wxSize size) { expect_fits({1024, 768}, size); }

void expect_fits_small_screen(wxSize size) { expect_fits({800, 600}, size); }

void expect_room_for_title(const wxWindow& dialog)
{
    constexpr int of_frame_and_buttons = 60;
    EXPECT_GE(dialog.GetSize().x, dialog.GetTextExtent(dialog.GetLabel()).x + of_frame_and_buttons) << name_of(dialog);
}

}  // namespace tamrix::tests
