// Loads a file into the shared buffer: format, addresses and byte selection, then the reader of the format.
#pragma once

#include "formats/formats.h"
#include "forms/form.h"

namespace tamrix {

class session;

class readfile final : public forms::form {
public:
    readfile(session& plug_in, transfer_variables& transfer);

    forms::label rfileLabel1{*this};
    forms::label rfileLabel2{*this};  // the file's name
    forms::label rfileLabel3{*this}, rfileLabel4{*this}, rfileLabel5{*this}, rfileLabel6{*this}, rfileLabel7{*this};
    forms::combo_box rfilecombo1{*this};  // From File Mode
    forms::combo_box rfileCombo2{*this};  // To Buffer Mode
    forms::text_box rfileText1{*this};    // to-buffer address
    forms::text_box rfileText2{*this};    // from-file address
    forms::text_box rfileText3{*this};    // size
    forms::frame rfilebufFrame1{*this};
    forms::option_group rfileOption1{*this, 3};  // 0 fills with 0xFF, 1 with 0x00, 2 leaves the buffer
    forms::frame rfileformatFrame2{*this};
    forms::option_group rfileOption2{*this, static_cast<int>(formats().size())};  // the format
    forms::progress_bar ProgressBar1{*this};
    forms::button okcom{*this}, exitcom{*this};

    /// What the last load found in its file.
    const load_extent& met() const { return met_; }

    forms::layout arrangement() override;
    forms::button* default_button() override { return &okcom; }
    forms::button* cancel_button() override { return &exitcom; }

private:
    void on_load() override;
    void load_captions();
    void adjust_format_to_maker();
    void choose_format(int index);
    void confirm();
    bool take_addresses();
    void take_byte_selection();
    void clear_buffer();
    status run_reader();

    session& plug_in_;
    transfer_variables& transfer_;
    load_extent met_;
};

}  // namespace tamrix
