#include "ttl/dialogs/ttledit.h"

#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"
#include "ttl/library/library.h"
#include "ttl/run/vecttest.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace tamrix {

namespace {

constexpr int rows_of_a_page = 12;
constexpr int most_pins = 40;
constexpr char not_tested = 'N';  // fills the rows of a programmable device

}  // namespace

ttledit::ttledit(session& plug_in, ttl_variables& ttl, pld_variables& pld, forms::list_box* names)
    : plug_in_{plug_in}, ttl_{ttl}, pld_{pld}, names_{names}
{
    Text1.page_rows = rows_of_a_page;
    Text2.page_rows = 2;
    Text1.on_select = [this] { follow_caret(); };
    Text1.on_press = [this](forms::point where) { follow_mouse(where); };
    Text1.on_key_down = [this](forms::grid_key key) { return is_busy() || key_down(key); };
    Text1.on_key_press = [this](char32_t letter) { return is_busy() || type(letter); };
    Command1.on_click = unless_busy([this] { test(); });
    const auto edits = [this](void (ttledit::*act)()) {
        return unless_busy([this, act] {
            (this->*act)();
            if (is_open()) focus(Text1);  // so that the caret is seen and the next letter gets there
        });
    };
    Command2.on_click = edits(&ttledit::insert_row_here);
    Command3.on_click = edits(&ttledit::copy_row);
    Command4.on_click = edits(&ttledit::delete_row);
    OKButton.on_click = unless_busy([this] { save_and_close(); });
    CancelButton.on_click = unless_busy([this] { close(); });
}

forms::layout ttledit::arrangement()
{
    using namespace forms;
    return column({
        stretched(row(
            {stretched(column({Text2, stretched(Text1)})),
             column({framed(Frame1, column({Label1, Label2, Label3, Label4, Label5, Label7, Label6, Label11, Label12})),
                     Command2, Command3, Command4, Command1})})),
        buttons({CancelButton, OKButton}),
    });
}

void ttledit::on_load()
{
    ttlcnt_before_ = ttl_.ttlcnt;
    ttlpin_before_ = ttl_.ttlpin;
    load_captions();
    if (edits_device()) take_device_vectors();
    grid_ = vector_grid{ttl_.ttlpin};
    lastrow = std::max(ttl_.ttlcnt - 2, -1);
    emptyrow.assign(static_cast<std::size_t>(grid_.pins()), edits_device() ? not_tested : 'X');
    yankrow = emptyrow;
    Text1.background = 0xFF80FF;
    Text2.background = 0x8080FF;
    Text1.locked = true;
    Text2.locked = true;
    show_rows();
    colmin = vector_grid::first_column;
    colmax = grid_.end_column();
    rowmin = 0;
    go_to(rowmin, colmin);
    focus(Text1);
}

void ttledit::on_unload()
{
    ttl_.ttlcnt = ttlcnt_before_;
    ttl_.ttlpin = ttlpin_before_;
}

void ttledit::load_captions()
{
    const bool device = edits_device();
    caption((device ? "PLD" : ttl_.ttlname) + plug_in_.text(message::test_vector_edit));
    const caption_line captions[] = {
        {Frame1.caption, message::edit_key},
        {Label1.caption, message::key_vih},
        {Label2.caption, message::key_vil},
        {Label3.caption, message::key_voh},
        {Label4.caption, message::key_vol},
        {Label6.caption, message::key_unused},
        {Label11.caption, device ? message::key_no_test : message::key_vcc_pin},
        {Label12.caption, device ? message::key_high_impedance : message::key_gnd_pin},
        {Command2.caption, message::insert},
        {Command3.caption, message::copy},
        {Command4.caption, message::cut},
        {OKButton.caption, message::done},
        {CancelButton.caption, message::exit},
        {Command1.caption, message::test},
    };
    set_captions(plug_in_, captions);
    Label5.caption = "C" + plug_in_.text(message::key_clock) + "_010";
    Label7.caption = "K" + plug_in_.text(message::key_clock) + "_101";
}

void ttledit::take_device_vectors()
{
    const int pins = std::clamp<int>(plug_in_.blocks.chippin(0), 0, most_pins);
    ttl_.ttlpin = static_cast<std::int16_t>(pins);
    const int count = std::min<int>(pld_.pldvectcnt, vector_list::entries + 1);
    if (count < 2) {
        ttl_.ttlvect.store(0, std::string(static_cast<std::size_t>(pins), not_tested));
        ttl_.ttlcnt = 2;
        return;
    }
    ttl_.ttlcnt = static_cast<std::int16_t>(count);
    for (std::size_t row = 0; row + 2 <= static_cast<std::size_t>(count); ++row) {
        ttl_.ttlvect.store(row, pld_.pldvect(row));
    }
}

void ttledit::show_rows()
{
    Text2.text(grid_.ruler());
    const char fill = edits_device() ? not_tested : vector_grid::unfilled;
    std::string text;
    for (int row = 0; row < row_count(); ++row) {
        text += vector_grid::line(row, grid_.fitted(ttl_.ttlvect(static_cast<std::size_t>(row)), fill));
    }
    Text1.text(std::move(text));
}

void ttledit::follow_caret()
{
    currow = Text1.selection_start() / (colmax + 1);
    curcol = Text1.selection_start() % (colmax + 1);
}

void ttledit::follow_mouse(forms::point where)
{
    curcol = where.x / forms::grid_text::cell_width;
    currow = where.y / forms::grid_text::cell_height;
}

/// True where the key goes no further; else the caret moves as in any text, and curcol and currow follow it.
bool ttledit::key_down(forms::grid_key key)
{
    using forms::grid_key;
    switch (key) {
    case grid_key::backspace: return true;
    case grid_key::left: return step(curcol, -1, curcol > colmin);
    case grid_key::right: return step(curcol, 1, curcol < colmax);
    case grid_key::up: return step(currow, -1, currow > rowmin);
    case grid_key::down: return step(currow, 1, currow < lastrow);
    case grid_key::page_up: return step(currow, -rows_of_a_page, currow >= rows_of_a_page);
    case grid_key::page_down: return step(currow, rows_of_a_page, currow + rows_of_a_page <= lastrow);
    case grid_key::insert: insert_row(0); return true;
    case grid_key::enter: insert_row(1); return true;
    case grid_key::remove: delete_row(); return true;
    case grid_key::home: go_to(0, colmin); return true;
    case grid_key::end: go_to_end(); return true;
    }
    return true;
}

bool ttledit::step(int& place, int by, bool inside)
{
    if (inside) place += by;
    return !inside;
}

void ttledit::go_to(int row, int column)
{
    Text1.select(grid_.offset(row, column));
    currow = row;
    curcol = column;
}

/// The caret itself goes to the start of the last row only; intentional: curcol still says the end, which refuses
/// letters.
void ttledit::go_to_end()
{
    Text1.select(grid_.offset(std::max(lastrow, 0), 0));
    curcol = colmax;
}

bool ttledit::takes(char32_t letter) const
{
    constexpr std::u32string_view always = U"01HLXCKhlxck", of_device = U"NZnz", of_library = U"GVgv";
    const auto in = [letter](std::u32string_view letters) { return letters.find(letter) != letters.npos; };
    return in(always) || in(edits_device() ? of_device : of_library);
}

/// Typing overwrites the letter at the caret.
bool ttledit::type(char32_t letter)
{
    if (!takes(letter)) {
        plug_in_.screen.beep();
        return true;
    }
    const int caret = Text1.selection_start();
    const int column_of_caret = caret % grid_.line_length();  // End leaves it elsewhere than curcol says
    const auto on_letter = [this](int column) { return column >= colmin && column < colmax; };
    if (!on_letter(curcol) || !on_letter(column_of_caret)) return true;
    if (letter > 96) letter -= 32;
    ++curcol;
    Text1.select(caret, 1);
    Text1.replace_selection(std::string(1, static_cast<char>(letter)));
    return true;
}

/// `after` 0 puts the new row before the caret's row, 1 after it; at the last row it always goes after.
void ttledit::insert_row(int after)
{
    if (row_count() >= static_cast<int>(vector_list::entries)) return plug_in_.screen.beep();
    const int row = currow >= lastrow ? lastrow + 1 : currow + after;
    std::string text = Text1.text();
    text.insert(static_cast<std::size_t>(grid_.offset(row, 0)), vector_grid::line(row, yankrow));
    grid_.renumber(text, row + 1, ++lastrow);
    ttl_.ttlcnt = static_cast<std::int16_t>(lastrow + 2);
    Text1.text(std::move(text));
    go_to(row, colmin);
}

void ttledit::insert_row_here() { insert_row(0); }

void ttledit::copy_row()
{
    if (row_count() == 0) return;
    Text1.select(grid_.offset(std::min(currow, lastrow), colmin), grid_.pins());
    yankrow = Text1.selected();
}

/// The only row stays, but unfilled.
void ttledit::delete_row()
{
    if (row_count() == 0) return;
    int row = std::min(currow, lastrow);
    std::string text = Text1.text();
    if (row_count() == 1) {
        text = vector_grid::line(0, vector_grid::unfilled_row(grid_.pins()));
    } else {
        text.erase(static_cast<std::size_t>(grid_.offset(row, 0)), static_cast<std::size_t>(grid_.line_length()));
        grid_.renumber(text, row, --lastrow);
        ttl_.ttlcnt = static_cast<std::int16_t>(lastrow + 2);
        row = std::min(row, lastrow);
    }
    Text1.text(std::move(text));
    go_to(row, colmin);
}

/// The test plays 100 rows at most and then counts so many; the editor keeps its rows.
void ttledit::test()
{
    const busy_time testing{*this};
    struct at_end {
        ttl_variables& ttl;
        std::int16_t rows_plus_one, pins;
        ~at_end()
        {
            ttl.ttlcnt = rows_plus_one;
            ttl.ttlpin = pins;
        }
    } const restore{ttl_, ttl_.ttlcnt, ttl_.ttlpin};
    vecttest(plug_in_, ttl_, pld_, 0, grid_.rows(Text1.text(), row_count()));
}

/// A device with rows that are not filled in is dropped without a word.
void ttledit::save_and_close()
{
    const bool filled = Text1.text().find(vector_grid::unfilled) == std::string::npos;
    if (filled && row_count() > 0) save();
    close();
}

void ttledit::save()
{
    const std::vector<std::string> rows = grid_.rows(Text1.text(), row_count());
    if (edits_device()) {
        for (std::size_t row = 0; row < rows.size(); ++row) pld_.pldvect.store(row, rows[row]);
        pld_.pldvectcnt = ttl_.ttlcnt;
        return;
    }
    std::vector<std::string> listed = names_ != nullptr ? names_->items() : std::vector<std::string>{};
    ttlinsert(plug_in_, ttl_, listed, rows);
    if (names_ != nullptr) names_->items(std::move(listed));
}

}  // namespace tamrix
