#include "dialog_checks.h"
#include "person.h"

#include <string>

#include <gtest/gtest.h>

#include <wx/button.h>
#include <wx/display.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>
#include <wx/tooltip.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

/// The shape of the load dialog with captions as long as other languages have them.
class wordy final : public scripted_form {
public:
    forms::label file_label{*this}, file{*this}, address_label{*this}, mode_label{*this};
    forms::text_box address{*this};
    forms::combo_box mode{*this};
    forms::frame box{*this};
    forms::option_group format{*this, 4};
    forms::button accept_button{*this}, leave_button{*this};

    wordy()
    {
        file_label.caption = "Dateiname:";
        file.caption = "/home/anna/" + std::string(300, 'x') + "/bild & ton.hex";
        address_label.caption = "      Anfangsadresse im Puffer (hexadezimal, ohne Vorsatz):";
        mode_label.caption = "Auswahl der Bytes aus der Datei:";
        mode.items = {"Normal", "Erstes Byte von je vier Bytes der Datei"};
        mode.index(0);
        box.caption = "Selbsttätig erkanntes Dateiformat";
        for (int i = 0; i < 4; ++i) format(i).caption = "Motorola S, mit einer langen Erläuterung dahinter";
        accept_button.caption = "Datei in den Puffer laden";
        leave_button.caption = "Nein";
    }

    forms::layout arrangement() override
    {
        using namespace forms;
        return column({fields({file_label, file}),
                       row({stretched(fields({address_label, address, mode_label, mode})),
                            framed(box, column({format(0), format(1), format(2), format(3)}))}),
                       buttons({accept_button, leave_button})});
    }
    forms::button* default_button() override { return &accept_button; }
    forms::button* cancel_button() override { return &leave_button; }
};

class layouts : public testing::Test {
protected:
    wxui::wx_shell screen;
    wordy form;
};

}  // namespace

TEST_F(layouts, no_long_caption_is_clipped)
{
    during(screen, form, [] { expect_nothing_clipped(dialog()); });
}

TEST_F(layouts, a_long_file_name_makes_no_wider_dialog_and_stands_whole_in_the_tooltip)
{
    const std::string long_name = form.file.caption();
    int width = 0;
    form.file.caption = "a.hex";
    during(screen, form, [&] { width = dialog().GetSize().x; });
    form.file.caption = long_name;
    during(screen, form, [&] {
        EXPECT_EQ(dialog().GetSize().x, width);
        EXPECT_EQ(shown_as(long_name).GetToolTipText().utf8_string(), long_name);
    });
}

TEST_F(layouts, blanks_that_align_a_caption_are_not_shown)
{
    during(screen, form, [] { shown_as("Anfangsadresse im Puffer (hexadezimal, ohne Vorsatz):"); });
}

TEST_F(layouts, the_buttons_are_equally_wide_and_end_at_the_right)
{
    during(screen, form, [] {
        const wxRect accept = shown_as("Datei in den Puffer laden").GetRect();
        const wxRect leave = shown_as("Nein").GetRect();
        EXPECT_EQ(accept.width, leave.width);
        EXPECT_EQ(accept.y, leave.y);
        EXPECT_GT(accept.x, leave.x);  // where this platform has the button of the Enter key
        EXPECT_EQ(accept.GetRight(), dialog().GetClientSize().x - dialog().FromDIP(12) - 1);
    });
}

TEST_F(layouts, a_wider_dialog_gives_the_room_to_the_fields)
{
    during(screen, form, [&] {
        const int box_before = shown_as("").GetSize().x;
        const wxSize before = dialog().GetSize();
        dialog().SetSize({before.x + 120, before.y});
        comes_true([&] { return shown_as("").GetSize().x > box_before; });
        EXPECT_EQ(shown_as("").GetSize().x, box_before + 120);
        EXPECT_EQ(dialog().GetMinSize(), before);
        expect_nothing_clipped(dialog());
    });
}

TEST_F(layouts, a_caption_that_grows_while_it_is_shown_gets_its_room)
{
    during(screen, form, [&] {
        form.mode_label.caption = std::string(45, 'w');
        EXPECT_TRUE(comes_true([&] {
            const wxWindow& label = shown_as(form.mode_label.caption());
            return label.GetSize().x >= label.GetBestSize().x;
        }));
        expect_nothing_clipped(dialog());
    });
}
