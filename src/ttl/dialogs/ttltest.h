// Picks a logic IC from the vector library: to test it in the socket, or to add, edit and delete records.
#pragma once

#include "forms/form.h"
#include "forms/list_box.h"
#include "pld/pld_variables.h"
#include "ttl/ttl_variables.h"

#include <cstdint>
#include <string>

namespace tamrix {

class session;

class ttltest final : public forms::form {
public:
    ttltest(session& plug_in, ttl_variables& ttl, pld_variables& pld);

    forms::label Label1{*this};    // "Search:"
    forms::text_box Text1{*this};  // search field
    forms::label Label2{*this};    // heading of the list
    forms::list_box List1{*this};  // names of the devices
    forms::label Label3{*this};    // total
    forms::button add{*this}, del{*this};
    forms::button OKButton{*this}, CancelButton{*this};

    forms::layout arrangement() override;
    // Enter in the search field only searches, so no button is the default.
    forms::button* cancel_button() override { return &CancelButton; }

private:
    void on_load() override;
    void load_captions();
    void power_up();
    void fill_list();

    bool edits_library() const { return ttl_.ttleditlib == 1; }
    int listed() const;
    void select_typed();
    void search();
    void test_in_loop();
    bool passes(const std::string& name);
    bool wants_repetition();
    void edit_selected();
    bool asks_to_add();
    /// Asks for name and pins and opens the editor, which looks at `wnote`. Nothing changes where the person gives
    /// none.
    void edit_new_device(std::string proposed_name, std::uint8_t wnote);
    void delete_selected();

    session& plug_in_;
    ttl_variables& ttl_;
    pld_variables& pld_;  // for the editor
};

}  // namespace tamrix
