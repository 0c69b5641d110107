// What every dialog on the screen has to keep to, in every language.
#pragma once

#include <string>

#include <wx/window.h>

namespace tamrix::tests {

/// Every widget lies inside its parent and is as large as its content needs.
void expect_nothing_clipped(const wxWindow& parent);
/// No two widgets of one parent lie on each other.
void expect_no_overlap(const wxWindow& parent);
/// Every letter of every text has a picture in some font.
void expect_every_letter_drawn(const wxWindow& parent);
void expect_every_letter_drawn(const wxWindow& drawn_as, const std::string& text);
/// A window of this size finds its place on a common screen, 1024 x 768, beside its frame and a bar of tasks.
void expect_fits_common_screen(wxSize size);
/// The same for a screen of 800 x 600 and the inside of a window.
void expect_fits_small_screen(wxSize size);
/// The title is seen whole beside the buttons of a title bar.
void expect_room_for_title(const wxWindow& dialog);

}  // namespace tamrix::tests
