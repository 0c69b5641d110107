// Saves a range of the shared buffer to a file in one of the formats that can be saved.
#pragma once

#include "formats/formats.h"
#include "forms/form.h"

namespace tamrix {

class session;

class writefile final : public forms::form {
public:
    writefile(session& plug_in, transfer_variables& transfer);

    forms::label wfileLabel1{*this};
    forms::label wfileLabel2{*this};  // the file's name
    forms::frame wfileformatFrame2{*this};
    forms::option_group wfileOption2{*this, static_cast<int>(save_formats().size())};
    forms::label wfileLabel5{*this}, wfileLabel6{*this}, wfileLabel7{*this};
    forms::text_box wfileText1{*this};  // start
    forms::text_box wfileText2{*this};  // size
    forms::text_box wfileText3{*this};  // end, the last address
    forms::progress_bar ProgressBar1{*this};
    forms::button okcom{*this}, exitcom{*this};

    /// The option of a format of the table. Throws subscript_error for one that cannot be saved.
    forms::option& option_of(const format& which);

    forms::layout arrangement() override;
    forms::button* default_button() override { return &okcom; }
    forms::button* cancel_button() override { return &exitcom; }

private:
    void on_load() override;
    int format_of_name();
    void derive_size();
    void derive_end();
    /// One past the last address that may be saved.
    std::int64_t limit() const;
    std::int64_t savelimit() const;
    void confirm();
    bool take_range();
    status run_writer();

    session& plug_in_;
    transfer_variables& transfer_;
};

}  // namespace tamrix
