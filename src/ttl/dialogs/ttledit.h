// Edits test vectors in place: those of a logic IC in the library, or those of the programmable device in the host.
#pragma once

#include "forms/form.h"
#include "forms/grid_text.h"
#include "forms/list_box.h"
#include "pld/pld_variables.h"
#include "ttl/dialogs/vector_grid.h"
#include "ttl/ttl_variables.h"

#include <cstdint>
#include <string>

namespace tamrix {

class session;

class ttledit final : public forms::form {
public:
    /// `names` is the list in which a new logic IC is to appear; null where none is shown.
    ttledit(session& plug_in, ttl_variables& ttl, pld_variables& pld, forms::list_box* names = nullptr);

    forms::frame Frame1{*this};
    forms::label Label1{*this}, Label2{*this}, Label3{*this}, Label4{*this}, Label5{*this}, Label6{*this},
        Label7{*this}, Label11{*this}, Label12{*this};
    forms::grid_text Text2{*this};  // the pin numbers
    forms::grid_text Text1{*this};  // the rows
    forms::button Command1{*this};  // test
    forms::button Command2{*this};  // insert
    forms::button Command3{*this};  // copy
    forms::button Command4{*this};  // delete
    forms::button OKButton{*this}, CancelButton{*this};

    forms::layout arrangement() override;
    forms::button* cancel_button() override { return &CancelButton; }

private:
    void on_load() override;
    void on_unload() override;
    void load_captions();
    void take_device_vectors();
    void show_rows();

    void follow_caret();
    void follow_mouse(forms::point where);
    bool key_down(forms::grid_key key);
    bool step(int& place, int by, bool inside);
    void go_to(int row, int column);
    void go_to_end();
    bool type(char32_t letter);
    bool takes(char32_t letter) const;

    void insert_row(int after);
    void insert_row_here();
    void copy_row();
    void delete_row();
    void test();
    void save_and_close();
    void save();

    bool edits_device() const { return ttl_.wnote == 1; }
    int row_count() const { return lastrow + 1; }

    session& plug_in_;
    ttl_variables& ttl_;
    pld_variables& pld_;
    forms::list_box* names_;
    vector_grid grid_{0};
    std::int16_t ttlcnt_before_ = 0, ttlpin_before_ = 0;  // of the device in work, which has them back at the end

    int curcol = 0, currow = 0;  // the caret
    int colmin = 0, colmax = 0;  // the first letter, and the column after the last
    int rowmin = 0;
    std::int32_t lastrow = -1;
    std::string emptyrow, yankrow;  // a new row as it begins, and the copied one
};

}  // namespace tamrix
