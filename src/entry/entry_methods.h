// The plug-in's class as a host sees it: each method stores its arguments and shows one dialog or runs one routine.
#pragma once

#include "entry/dialogs.h"
#include "entry/module_variables.h"
#include "tamrix/clstamrix.h"

#include <string_view>

namespace tamrix {

class session;

class entry_methods : public Clstamrix {
public:
    /// `dialogs` holds those of all methods but load and save; a method without its dialog returns at
    /// once.
    entry_methods(session& plug_in, module_variables& variables, dialog_table dialogs = {});

    /// True if the method named `method` has a dialog or a routine on the model in use.
    bool offers(std::string_view method) const;

    reply readfile0(std::string& fname, std::int16_t& rformat, std::string& syspath0) override;
    reply wfile(std::string& fname, std::string& syspath0) override;
    reply algoparameter0() override;
    reply analyzer0() override;
    reply recetwave0(bool16& fwave) override;
    reply mnutesttestksm() override;
    reply mnutestttltest0(std::uint8_t& icsum0, bool16& ok0, std::string& syspath0) override;
    reply mnuEditeditvector0(std::uint8_t& icsum0, bool16& ok0, std::string& syspath0) override;
    reply mnutesteditttllib0(std::uint8_t& icsum0, bool16& ok0, std::string& syspath0) override;
    reply mnutestautofind0(std::string& syspath0) override;
    reply warn(std::uint8_t& no, bool16& extpower0) override;
    reply vecttest0(std::uint8_t& mode, std::uint8_t& ttlcnt0, std::uint8_t& wnote0, bool16& ok0) override;
    reply readpldfile(std::string& fname) override;
    reply writepldfile(std::string& fname) override;
    reply readsvffile(std::string& fname, std::string& syspath0) override;
    reply bufcomopt(std::int16_t& num) override;
    reply buffercomopt(std::int16_t& num) override;
    reply freesharebufferopt() override;

private:
    reply show(std::string_view dialog);
    void show_pin_map_before_logic_test();
    void store(std::uint8_t icsum, bool16 ok, const std::string& syspath);

    session& plug_in_;
    module_variables& variables_;
    dialog_table dialogs_;
};

}  // namespace tamrix
